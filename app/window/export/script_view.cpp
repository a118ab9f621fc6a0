#include "app/window/export/script_view.h"

#include "app/shown_text.h"
#include "app/window/export/script_text.h"

#include "zk/visible_text.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QLocale>
#include <QStringDecoder>

#include <algorithm>

namespace app {

namespace {

/// A path to read and to copy: elided in its middle, and whole while it has the focus.
class path_field : public QLineEdit
{
public:
    explicit path_field(const QString & path) : m_sPath(path)
    {
        setReadOnly(true);
        setFrame(false);
        setToolTip(plainToolTipLine(path));
        setAccessibleDescription(path);
        QPalette plain;
        plain.setBrush(QPalette::Base, Qt::NoBrush);
        setPalette(plain);
        showPath();
    }

protected:
    void resizeEvent(QResizeEvent * event) override
    {
        QLineEdit::resizeEvent(event);
        showPath();
    }
    void focusInEvent(QFocusEvent * event) override
    {
        setText(m_sPath);
        QLineEdit::focusInEvent(event); // which selects all when the focus came by a key
    }
    void focusOutEvent(QFocusEvent * event) override
    {
        QLineEdit::focusOutEvent(event);
        showPath();
    }

private:
    void showPath()
    {
        if (!hasFocus()) {
            const QMargins margins = textMargins();
            const int room = contentsRect().width() - margins.left() - margins.right() - Frame;
            setText(fontMetrics().elidedText(zk::visibleText(m_sPath), Qt::ElideMiddle, room));
        }
    }

    /// What a line edit keeps free on both sides of its text, in pixels.
    static constexpr int Frame = 6;
    QString m_sPath;
};

QString dataSize(qint64 bytes)
{
    return QLocale().formattedDataSize(bytes, 1, QLocale::DataSizeTraditionalFormat);
}

QLabel * newLabel(const char * name)
{
    auto * const label = new QLabel;
    label->setObjectName(QString::fromLatin1(name));
    label->setTextFormat(Qt::PlainText);
    label->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    return label;
}

} // namespace

script_view::script_view(const QString & file, QWidget * parent)
    : QWidget(parent), m_txtScript(new script_text), m_lblSize(newLabel("m_lblSize")),
      m_lblNote(newLabel("m_lblNote")), m_lblProblem(newLabel("m_lblProblem"))
{
    m_txtScript->setObjectName(QStringLiteral("m_txtScript"));
    m_txtScript->setAccessibleName(tr("Script %1").arg(QFileInfo(file).fileName()));
    m_lblSize->setTextInteractionFlags(Qt::TextSelectableByMouse); // no stop on the way from path to text
    m_lblNote->setWordWrap(true);
    m_lblNote->hide();
    m_lblProblem->setWordWrap(true);
    m_lblProblem->setAlignment(Qt::AlignCenter);
    m_lblProblem->hide();

    auto * const layout = new QVBoxLayout(this);
    QMargins margins = layout->contentsMargins();
    margins.setLeft(0);
    margins.setRight(0);
    margins.setBottom(0);
    layout->setContentsMargins(margins); // the text is to be as wide as its tab
    layout->addWidget(createHead(file));
    layout->addWidget(m_lblNote);
    layout->addWidget(m_txtScript, 1);
    layout->addWidget(m_lblProblem, 1);
    read(file);
}

QWidget * script_view::createHead(const QString & file)
{
    auto * const path = new path_field(QDir::toNativeSeparators(file));
    path->setObjectName(QStringLiteral("m_txtFile"));
    path->setAccessibleName(tr("File of the script"));
    m_txtFile = path;
    auto * const head = new QWidget;
    auto * const layout = new QHBoxLayout(head);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(path, 1);
    layout->addWidget(m_lblSize);
    return head;
}

void script_view::read(const QString & name)
{
    const QFileInfo info(name);
    // A pipe would hold up the window until somebody writes into it.
    if (!info.isFile()) {
        showProblem(info.exists() ? tr("This is a folder or a special file, not a script.")
                                  : tr("The file is not there. It may have been moved or deleted."));
        return;
    }
    QFile file(name);
    const bool isOpen = file.open(QIODevice::ReadOnly);
    QByteArray bytes = isOpen ? file.read(LongestRead + 1) : QByteArray();
    if (!isOpen || file.error() != QFileDevice::NoError) {
        showProblem(tr("The file cannot be read: %1").arg(file.errorString()));
        return;
    }
    const bool isWhole = bytes.size() <= LongestRead;
    if (!isWhole) {
        const qsizetype lastLine = bytes.lastIndexOf('\n', LongestRead - 1);
        bytes.truncate(lastLine < 0 ? LongestRead : lastLine + 1);
        addNote(tr("The script is very large. Only the first %1 of %2 are shown here.")
                    .arg(dataSize(bytes.size()), dataSize(file.size())));
    }
    take(bytes, isWhole);
    showSize(file.size());
    cutLongLines();
    m_txtScript->setScript(m_sText, sqlDialectOf(info.fileName()));
}

void script_view::take(const QByteArray & bytes, bool isWhole)
{
    m_bWhole = isWhole;
    // A character that is cut off at the end is an error of the file, but not where this program cut it off.
    QStringDecoder decode(QStringDecoder::Utf8,
                          isWhole ? QStringDecoder::Flag::Stateless : QStringDecoder::Flag::Default);
    m_sText = decode(bytes);
    if (decode.hasError()) {
        addNote(tr("The file has bytes that are not UTF-8. They are shown as %1.").arg(QChar(0xfffd)));
    }
    m_sText.replace(QLatin1String("\r\n"), QLatin1String("\n"));
}

/// Drawing a line takes time for all that it holds, however little of it is in view.
void script_view::cutLongLines()
{
    QString shown;
    qsizetype taken = 0; // how much of the text is in `shown`, or left out
    qsizetype longest = 0;
    for (qsizetype begin = 0, end = 0; begin < m_sText.size(); begin = end + 1) {
        const qsizetype found = m_sText.indexOf(QLatin1Char('\n'), begin);
        end = found < 0 ? m_sText.size() : found;
        longest = std::max(longest, end - begin);
        if (end - begin > LongestLine) {
            shown += QStringView(m_sText).mid(taken, begin + LongestLine - taken);
            taken = end;
        }
    }
    const QLocale locale;
    if (taken > 0) {
        shown += QStringView(m_sText).mid(taken);
        m_sText = shown;
        m_bWhole = false;
        addNote(tr("Lines of more than %1 characters are cut off here.").arg(locale.toString(LongestLine)));
    }
    if (longest > sql_highlighter::LongestColored) {
        addNote(tr("Only the first %1 characters of a line are coloured.")
                    .arg(locale.toString(sql_highlighter::LongestColored)));
    }
}

void script_view::showSize(qint64 bytes)
{
    const QLocale locale;
    const bool endsWithin = !m_sText.isEmpty() && !m_sText.endsWith(QLatin1Char('\n'));
    const qsizetype lines = m_sText.count(QLatin1Char('\n')) + (endsWithin ? 1 : 0);
    const QString count = lines == 1 ? tr("1 line") : tr("%1 lines").arg(locale.toString(lines));
    m_lblSize->setText(tr("%1, %2", "lines, size").arg(count, dataSize(bytes)));
}

void script_view::showProblem(const QString & text)
{
    m_txtScript->hide();
    m_lblProblem->setText(text);
    m_lblProblem->show();
}

void script_view::addNote(const QString & text)
{
    const QString before = m_lblNote->text();
    m_lblNote->setText(before.isEmpty() ? text : before + QLatin1Char('\n') + text);
    m_lblNote->show();
}

QString script_view::selectedText() const
{
    const QString text = m_txtScript->textCursor().selectedText();
    return text.contains(QChar::ParagraphSeparator) ? QString() : text;
}

void script_view::setWrapped(bool wrapped)
{
    m_txtScript->setWrapped(wrapped);
}

void script_view::showLine(int line)
{
    m_txtScript->selectLines(line, 1);
}

void script_view::focusText()
{
    m_txtScript->setFocus(Qt::OtherFocusReason);
}

void script_view::placeInTabOrder(QWidget * before)
{
    setTabOrder(before, m_txtFile);
    setTabOrder(m_txtFile, m_txtScript);
}

void script_view::findAll(const QString & what, Qt::CaseSensitivity sensitivity)
{
    m_matches.clear();
    m_iCurrent = -1;
    m_iWhatLength = static_cast<int>(what.size());
    if (!what.isEmpty()) {
        qsizetype at = m_sText.indexOf(what, 0, sensitivity);
        while (at >= 0) {
            m_matches.push_back(static_cast<int>(at));
            at = m_sText.indexOf(what, at + what.size(), sensitivity);
        }
    }
    m_txtScript->setMarks(m_matches, m_iWhatLength, m_iCurrent);
}

void script_view::goTo(qsizetype match)
{
    m_iCurrent = match;
    m_txtScript->setMarks(m_matches, m_iWhatLength, match);
}

void script_view::findFrom(int position)
{
    if (m_matches.empty()) {
        return;
    }
    const auto found = std::lower_bound(m_matches.cbegin(), m_matches.cend(), position);
    goTo(found == m_matches.cend() ? 0 : found - m_matches.cbegin());
}

void script_view::findHere()
{
    findFrom(m_txtScript->textCursor().selectionStart());
}

void script_view::findNext()
{
    findFrom(m_txtScript->textCursor().selectionEnd());
}

void script_view::findPrevious()
{
    if (m_matches.empty()) {
        return;
    }
    const int position = m_txtScript->textCursor().selectionStart();
    const auto after = std::lower_bound(m_matches.cbegin(), m_matches.cend(), position);
    goTo((after == m_matches.cbegin() ? m_matches.cend() : after) - m_matches.cbegin() - 1);
}

} // namespace app
