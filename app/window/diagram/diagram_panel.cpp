#include "app/window/diagram/diagram_panel.h"

#include "app/diagram/diagram_layout.h"
#include "app/window/diagram/diagram_image.h"
#include "app/window/diagram/diagram_legend.h"
#include "app/window/diagram/diagram_view.h"

#include "model/project.h"

#include <QAction>
#include <QComboBox>
#include <QEvent>
#include <QLabel>
#include <QMenu>

namespace app {

namespace {

constexpr int LargestWhole = 40; // entities: a project with more is shown in pieces
constexpr int LargestPiece = 60; // entities of a neighbourhood: more of them make no picture

} // namespace

void diagram_panel::setProject(const std::shared_ptr<model::project> & project)
{
    m_graph = m_model = project ? diagram_graph(*project) : diagram_graph();
    m_bChanges = false;
    m_sAbout.clear();
    if (const QString name = project ? project->getName() : QString(); name != m_sProject) {
        m_sProject = name;
        m_opened.clear();
    }
    m_bProject = project != nullptr;
    if (const QString folder = project ? project->getLocation() : QString(); folder != m_sLocation) {
        m_sLocation = m_sFolder = folder;
        m_opened.clear();
    }
    m_iSelected = 0;
    m_iCentre = -1;
    // A box of the former project must not be taken for an entity of this one.
    m_shown = {};
    m_sShown.clear();
    m_grvDiagram->choose(0);
    m_grvDiagram->setPicture({});
    m_grvDiagram->fit();
    m_cboDistance->setEnabled(isLarge());
    m_pDistanceMenu->setEnabled(isLarge());
    refresh();
}

void diagram_panel::showChanges(const model::project & shown, const diagram_changes & changes,
                                const QString & about)
{
    m_bChanges = true;
    setGraph(diagram_graph(shown, changes), about);
}

void diagram_panel::hideChanges(const QString & why)
{
    m_bChanges = false;
    setGraph(m_model, why);
}

void diagram_panel::setGraph(const diagram_graph & graph, const QString & about)
{
    const long centre = m_iCentre < 0 ? 0 : m_graph.entities()[m_iCentre].id;
    m_graph = graph;
    m_sAbout = about;
    m_iCentre = m_graph.indexOf(centre);
    m_cboDistance->setEnabled(isLarge());
    m_pDistanceMenu->setEnabled(isLarge());
    refresh();
}

void diagram_panel::setOpened(long id, bool isOpened)
{
    if (isOpened) {
        m_opened.insert(id);
    } else {
        m_opened.remove(id);
    }
    refresh();
}

bool diagram_panel::isLarge() const
{
    return m_graph.count() > LargestWhole;
}

void diagram_panel::selectEntity(long id)
{
    const int index = m_graph.indexOf(id);
    m_iSelected = index < 0 ? 0 : id;
    m_grvDiagram->choose(m_iSelected);
    showNeighboursOf(index);
}

void diagram_panel::takeChoice(long id)
{
    m_iSelected = id;
    showNeighboursOf(m_graph.indexOf(id));
    Q_EMIT entitySelected(id);
}

void diagram_panel::showNeighboursOf(int index)
{
    // Without a selection the neighbourhood stays: a click beside the boxes must not take the diagram away.
    if (isLarge() && index >= 0 && index != m_iCentre) {
        m_iCentre = index;
        refresh();
    }
}

void diagram_panel::setDistance(int distance)
{
    m_cboDistance->setCurrentIndex(distance - 1);
    m_lstDistance[distance - 1]->setChecked(true);
    if (distance != std::exchange(m_iDistance, distance) && m_iCentre >= 0) {
        refresh();
    }
}

diagram_piece diagram_panel::pieceToShow() const
{
    if (!isLarge()) {
        return m_graph.everything();
    }
    return m_iCentre >= 0 ? m_graph.neighbourhood(m_iCentre, m_iDistance, LargestPiece)
                          : m_graph.changed(LargestPiece);
}

void diagram_panel::refresh()
{
    const diagram_piece piece = pieceToShow();
    m_pending = contentsOf(m_graph, piece, m_opened);
    m_sPending = lineAbout(piece);
    const diagram_style style = m_grvDiagram->diagramStyle();
    diagram_request request;
    for (const diagram_box & box : std::as_const(m_pending.boxes)) {
        request.boxes.append(boxSize(box, style));
    }
    for (const diagram_line & line : std::as_const(m_pending.lines)) {
        request.lines.append({line.from, line.to, labelSize(line, style)});
    }
    const QString busy = tr("Laying out…");
    if (m_pending.boxes.isEmpty()) {
        m_lblShown->setText(m_sPending);
        m_grvDiagram->setHint(reasonOfEmptiness());
    } else {
        m_lblShown->setText(busy);
        m_grvDiagram->setHint(m_shown.contents.boxes.isEmpty() ? busy : QString());
    }
    showNote({});
    showLegend();
    m_pLayout->start(request);
    updateCommands();
}

void diagram_panel::showPlaces(const diagram_places & places)
{
    m_shown = {std::exchange(m_pending, {}), places};
    m_sShown = m_sPending;
    m_grvDiagram->setPicture(m_shown);
    m_grvDiagram->setHint(reasonOfEmptiness());
    m_lblShown->setText(m_sShown);
    showNote(places.note);
    updateCommands();
    Q_EMIT layoutFinished();
}

QString diagram_panel::reasonOfEmptiness() const
{
    if (!m_bProject) {
        return tr("No project is open.");
    }
    if (m_graph.count() == 0) {
        return tr("The project has no entities.");
    }
    return isLarge() && m_shown.contents.boxes.isEmpty()
               ? tr("Select an entity in the tree to see it and its neighbours here.")
               : QString();
}

QString diagram_panel::lineAbout(const diagram_piece & piece) const
{
    if (!m_bProject) {
        return {};
    }
    const QString line = countLine(piece);
    return m_sAbout.isEmpty() ? line : QStringLiteral("%1; %2").arg(line, m_sAbout);
}

QString diagram_panel::countLine(const diagram_piece & piece) const
{
    const QString all = grouped(m_graph.count());
    if (!isLarge()) {
        return m_graph.count() == 1 ? tr("1 entity") : tr("All %1 entities").arg(all);
    }
    const QString shown = grouped(piece.entities.size());
    if (m_iCentre < 0) {
        return tr("%1 of %2 entities").arg(shown, all);
    }
    const QString name = drawable(m_graph.entities()[m_iCentre].name);
    QString line = m_iDistance == 1 ? tr("%1 of %2 entities: the neighbours of %3").arg(shown, all, name)
                                    : tr("%1 of %2 entities: the neighbours of %3 up to distance %4")
                                          .arg(shown, all, name, QString::number(m_iDistance));
    if (piece.leftOut > 0) {
        line += tr("; not shown: %1").arg(grouped(piece.leftOut));
    }
    return line;
}

void diagram_panel::updateCommands()
{
    const bool isSomething = !m_shown.contents.boxes.isEmpty();
    for (QAction * const command : std::as_const(m_lstCommand)) {
        if (command != m_pDistanceMenu->menuAction()) {
            command->setEnabled(command == m_pChanges ? m_bProject : isSomething);
        }
    }
}

void diagram_panel::showNote(const QString & note)
{
    m_lblNote->setText(note);
    m_lblNote->setVisible(!note.isEmpty());
}

void diagram_panel::showLegend()
{
    m_lblLegend->setVisible(!m_pending.boxes.isEmpty());
    m_lblLegend->setText(diagramLegend(m_grvDiagram->diagramStyle(), m_bChanges));
    m_lblLegend->setAccessibleName(tr("Legend: %1").arg(toldLegend(m_bChanges)));
}

void diagram_panel::showZoom()
{
    m_lblZoom->setText(tr("%1 %").arg(qRound(m_grvDiagram->zoom() * 100)));
}

bool diagram_panel::saveSvg(const QString & file, QString & reason) const
{
    return isSavable(reason) &&
           diagram_image::saveSvg(m_shown, m_grvDiagram->font(), m_sProject, m_sShown, file, reason);
}

bool diagram_panel::savePng(const QString & file, QString & reason) const
{
    return isSavable(reason) && diagram_image::savePng(m_shown, m_grvDiagram->font(), file, reason);
}

bool diagram_panel::isSavable(QString & reason) const
{
    if (m_shown.contents.boxes.isEmpty()) {
        reason = tr("There is no diagram to save.");
        return false;
    }
    return true;
}

void diagram_panel::setLayoutProgram(const QString & program)
{
    m_pLayout->setProgram(program);
}

void diagram_panel::setLayoutTimeLimit(int milliseconds)
{
    m_pLayout->setTimeLimit(milliseconds);
}

QList<QAction *> diagram_panel::diagramActions() const
{
    return m_lstCommand;
}

void diagram_panel::changeEvent(QEvent * event)
{
    QWidget::changeEvent(event);
    if (event->type() == QEvent::PaletteChange) {
        dressCommands();
        showLegend();
    } else if (event->type() == QEvent::FontChange && m_graph.count() > 0) {
        refresh(); // the boxes have other sizes
    }
}

} // namespace app
