#include "app/window/export/find_bar.h"

#include <QCheckBox>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QLocale>
#include <QPushButton>

namespace app {

find_bar::find_bar(QWidget * parent)
    : QWidget(parent), m_txtFind(new QLineEdit), m_chkCase(new QCheckBox(tr("Match case"))),
      m_lblFound(new QLabel)
{
    m_txtFind->setObjectName(QStringLiteral("m_txtFind"));
    m_txtFind->setAccessibleName(tr("Text to find"));
    m_txtFind->setClearButtonEnabled(true);
    m_chkCase->setObjectName(QStringLiteral("m_chkCase"));
    m_chkCase->setAccessibleName(tr("Match case"));
    m_lblFound->setObjectName(QStringLiteral("m_lblFound"));
    m_lblFound->setAccessibleName(tr("Matches"));
    m_lblFound->setTextFormat(Qt::PlainText);

    auto * const label = new QLabel(tr("Find:"));
    label->setBuddy(m_txtFind);
    auto * const layout = new QHBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(label);
    layout->addWidget(m_txtFind, 1);
    layout->addWidget(m_lblFound);
    connect(addButton("m_btnPrevious", tr("Previous"), tr("Previous match (Shift+F3)")),
            &QPushButton::clicked, this, &find_bar::previousRequested);
    connect(addButton("m_btnNext", tr("Next"), tr("Next match (F3)")), &QPushButton::clicked, this,
            &find_bar::nextRequested);
    layout->addWidget(m_chkCase);
    connect(addButton("m_btnCloseFind", tr("Close"), tr("Close the search (Escape)")), &QPushButton::clicked,
            this, &find_bar::dismiss);
    connect(m_txtFind, &QLineEdit::textChanged, this, &find_bar::changed);
    connect(m_chkCase, &QCheckBox::toggled, this, &find_bar::changed);
    hide();
}

QPushButton * find_bar::addButton(const char * name, const QString & text, const QString & tip)
{
    auto * const button = new QPushButton(text);
    button->setObjectName(QString::fromLatin1(name));
    button->setAccessibleName(tip);
    button->setToolTip(tip);
    button->setAutoDefault(false);
    layout()->addWidget(button);
    return button;
}

void find_bar::open(const QString & text)
{
    if (!text.isEmpty()) {
        m_txtFind->setText(text);
    }
    show();
    m_txtFind->setFocus(Qt::ShortcutFocusReason);
    m_txtFind->selectAll();
}

QString find_bar::text() const
{
    return m_txtFind->text();
}

Qt::CaseSensitivity find_bar::sensitivity() const
{
    return m_chkCase->isChecked() ? Qt::CaseSensitive : Qt::CaseInsensitive;
}

void find_bar::tell(int current, int count)
{
    const QLocale locale;
    if (text().isEmpty()) {
        m_lblFound->clear();
    } else if (count == 0) {
        m_lblFound->setText(tr("No match"));
    } else if (current > 0) {
        m_lblFound->setText(tr("%1 of %2", "matches").arg(locale.toString(current), locale.toString(count)));
    } else {
        m_lblFound->setText(count == 1 ? tr("1 match") : tr("%1 matches").arg(locale.toString(count)));
    }
}

void find_bar::dismiss()
{
    hide();
    Q_EMIT closed();
}

void find_bar::keyPressEvent(QKeyEvent * event)
{
    const bool isReturn = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    if (isReturn && m_txtFind->hasFocus()) {
        if (event->modifiers().testFlag(Qt::ShiftModifier)) {
            Q_EMIT previousRequested();
        } else {
            Q_EMIT nextRequested();
        }
        return;
    }
    QWidget::keyPressEvent(event);
}

} // namespace app
