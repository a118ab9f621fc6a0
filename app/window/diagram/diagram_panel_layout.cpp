#include "app/window/diagram/diagram_panel.h"

#include "app/diagram/diagram_layout.h"
#include "app/window/diagram/diagram_icons.h"
#include "app/window/diagram/diagram_view.h"

#include <QAction>
#include <QActionGroup>
#include <QComboBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QMenu>
#include <QToolBar>
#include <QVBoxLayout>

namespace app {

namespace {

constexpr int LargestDistance = 3;

} // namespace

diagram_panel::diagram_panel(QWidget * parent)
    : QWidget(parent), m_pLayout(new diagram_layout(this)), m_grvDiagram(new diagram_view)
{
    m_grvDiagram->setObjectName(QStringLiteral("m_grvDiagram"));
    m_grvDiagram->setAccessibleName(tr("Diagram of the project"));
    createCommands();
    auto * const layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addWidget(createToolBar());
    layout->addWidget(m_grvDiagram, 1);
    layout->addLayout(createStatusLine());
    dressCommands();
    connect(m_pLayout, &diagram_layout::finished, this, &diagram_panel::showPlaces);
    connect(m_grvDiagram, &diagram_view::chosen, this, &diagram_panel::takeChoice);
    connect(m_grvDiagram, &diagram_view::rowsWanted, this, &diagram_panel::setOpened);
    connect(m_grvDiagram, &diagram_view::zoomChanged, this, &diagram_panel::showZoom);
    setProject(nullptr);
}

diagram_panel::~diagram_panel() = default;

QAction * diagram_panel::addCommand(const QString & name, const QString & text, const QString & tip,
                                    const QList<QKeySequence> & keys, const std::function<void()> & command)
{
    auto * const action = new QAction(text, this);
    action->setObjectName(name);
    action->setShortcuts(keys);
    action->setToolTip(keys.isEmpty() ? tip
                                      : QStringLiteral("%1 (%2)").arg(
                                            tip, keys.constFirst().toString(QKeySequence::NativeText)));
    action->setStatusTip(tip);
    connect(action, &QAction::triggered, this, command);
    addAction(action);
    m_lstCommand << action;
    return action;
}

void diagram_panel::createCommands()
{
    addCommand(QStringLiteral("m_actZoomIn"), tr("Zoom &in"), tr("Enlarge the diagram"),
               {QKeySequence(Qt::CTRL | Qt::Key_Plus), QKeySequence(Qt::CTRL | Qt::Key_Equal)},
               [this] { m_grvDiagram->zoomIn(); });
    addCommand(QStringLiteral("m_actZoomOut"), tr("Zoom &out"), tr("Shrink the diagram"),
               {QKeySequence(Qt::CTRL | Qt::Key_Minus)}, [this] { m_grvDiagram->zoomOut(); });
    addCommand(QStringLiteral("m_actFit"), tr("&Fit"), tr("Show the whole diagram"),
               {QKeySequence(Qt::CTRL | Qt::Key_0)}, [this] { m_grvDiagram->fit(); });
    addCommand(QStringLiteral("m_actActualSize"), tr("&Actual size (100 %)"), tr("Show the diagram at 100 %"),
               {QKeySequence(Qt::CTRL | Qt::Key_1)}, [this] { m_grvDiagram->showActualSize(); });
    createDistances();
    m_pChanges = addCommand(QStringLiteral("m_actMarkChanges"), tr("Mar&k changes"),
                            tr("Mark what changed between the versions that are chosen under Changes"), {},
                            [this] { Q_EMIT changesWanted(m_pChanges->isChecked()); });
    m_pChanges->setCheckable(true);
    addCommand(QStringLiteral("m_actSaveDiagram"), tr("&Save diagram…"),
               tr("Save the diagram as an SVG or PNG file"), {}, [this] { askForFile(); });
}

bool diagram_panel::wantsChanges() const
{
    return m_pChanges->isChecked();
}

void diagram_panel::createDistances()
{
    m_pDistanceMenu = new QMenu(tr("&Distance"), this);
    m_pDistanceMenu->menuAction()->setObjectName(QStringLiteral("m_actDistance"));
    m_cboDistance = new QComboBox;
    m_cboDistance->setObjectName(QStringLiteral("m_cboDistance"));
    m_cboDistance->setAccessibleName(tr("Distance of the neighbours that are shown"));
    m_cboDistance->setToolTip(
        tr("How many relationships away from the selected entity to show (large projects only)"));
    auto * const group = new QActionGroup(this);
    for (int distance = 1; distance <= LargestDistance; ++distance) {
        const QString text = QString::number(distance);
        m_cboDistance->addItem(text);
        QAction * const action = m_pDistanceMenu->addAction(QLatin1Char('&') + text);
        action->setObjectName(QStringLiteral("m_actDistance%1").arg(distance));
        action->setCheckable(true);
        action->setActionGroup(group);
        connect(action, &QAction::triggered, this, [this, distance] { setDistance(distance); });
        m_lstDistance << action;
    }
    m_lstDistance.constFirst()->setChecked(true);
    connect(m_cboDistance, &QComboBox::currentIndexChanged, this,
            [this](int index) { setDistance(index + 1); });
    m_lstCommand << m_pDistanceMenu->menuAction();
}

QToolBar * diagram_panel::createToolBar()
{
    auto * const bar = new QToolBar(tr("Diagram"));
    bar->setObjectName(QStringLiteral("m_toolBarDiagram"));
    bar->setIconSize(QSize(20, 20));
    for (QAction * const command : std::as_const(m_lstCommand)) {
        if (command != m_pDistanceMenu->menuAction()) {
            bar->addAction(command);
            QWidget * const button = bar->widgetForAction(command);
            button->setFocusPolicy(Qt::TabFocus);
            button->setAccessibleName(command->text().remove(QLatin1Char('&')));
            button->setAccessibleDescription(command->toolTip());
            continue;
        }
        auto * const label = new QLabel(tr("Distance:"));
        label->setBuddy(m_cboDistance);
        label->setContentsMargins(4, 0, 4, 0);
        bar->addSeparator();
        bar->addWidget(label);
        bar->addWidget(m_cboDistance);
        bar->addSeparator();
    }
    return bar;
}

QLayout * diagram_panel::createStatusLine()
{
    const auto label = [](const char * name, const QString & accessibleName) {
        auto * const result = new QLabel;
        result->setObjectName(QLatin1String(name));
        result->setAccessibleName(accessibleName);
        result->setTextFormat(Qt::PlainText); // names of entities are in it
        return result;
    };
    m_lblShown = label("m_lblShown", tr("What the diagram shows"));
    m_lblNote = label("m_lblNote", tr("Note on the diagram"));
    m_lblZoom = label("m_lblZoom", tr("Zoom"));
    m_lblLegend = label("m_lblLegend", tr("Legend"));
    m_lblLegend->setTextFormat(Qt::RichText); // its texts are ours
    m_lblLegend->setWordWrap(true);
    m_lblShown->setWordWrap(true);
    m_lblNote->setWordWrap(true);
    m_lblZoom->setAlignment(Qt::AlignRight | Qt::AlignTop);
    auto * const first = new QHBoxLayout;
    first->addWidget(m_lblShown, 1);
    first->addWidget(m_lblZoom);
    auto * const lines = new QVBoxLayout;
    lines->setContentsMargins(6, 3, 6, 3);
    lines->setSpacing(2);
    lines->addLayout(first);
    lines->addWidget(m_lblNote);
    lines->addWidget(m_lblLegend);
    return lines;
}

void diagram_panel::dressCommands()
{
    const QStringList icons{QStringLiteral("zoom_in"),
                            QStringLiteral("zoom_out"),
                            QStringLiteral("fit"),
                            QStringLiteral("actual_size"),
                            QString(),
                            QStringLiteral("changes"),
                            QStringLiteral("save")};
    for (qsizetype i = 0; i < m_lstCommand.size(); ++i) {
        if (!icons[i].isEmpty()) {
            m_lstCommand[i]->setIcon(diagramIcon(icons[i], palette()));
        }
    }
}

} // namespace app
