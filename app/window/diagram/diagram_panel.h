#pragma once

#include "app/diagram/diagram_contents.h"
#include "app/diagram/diagram_graph.h"

#include <QWidget>

#include <functional>
#include <memory>

class QAction;
class QComboBox;
class QLabel;
class QMenu;
class QToolBar;

namespace model {
class project;
}

namespace app {

class diagram_changes;
class diagram_layout;
class diagram_view;

/// The diagram of a project: boxes for entities, lines for relationships. A small project is shown as a
/// whole, of a large one the neighbourhood of the entity that was chosen last.
///
/// Nothing of a project is kept: what is shown was copied, and the project may go away at any time.
class diagram_panel : public QWidget
{
    Q_OBJECT

public:
    explicit diagram_panel(QWidget * parent = nullptr);
    ~diagram_panel() override;

    /// Shows the model of `project`; null empties the diagram. No entity is selected after it.
    void setProject(const std::shared_ptr<model::project> & project);
    /// Shows `shown` in the place of the project's model, with what changed in it.
    /// @param about what the status line says of that
    void showChanges(const model::project & shown, const diagram_changes & changes, const QString & about);
    /// Shows the project's model as it is; the status line says `why` nothing is marked.
    void hideChanges(const QString & why = QString());
    /// Whether the person wants changes to be marked.
    [[nodiscard]] bool wantsChanges() const;

    /// Marks the entity and brings it into sight without emitting entitySelected(); 0, or an id that the
    /// project does not have, marks none.
    void selectEntity(long id);
    /// Id of the entity that is marked, 0 when none is.
    [[nodiscard]] long selectedEntity() const { return m_iSelected; }

    /// Write what is laid out as a file, in dark colours on white. False with one line of reason (what,
    /// where, why); nothing is left of a file that could not be written whole.
    bool saveSvg(const QString & file, QString & reason) const;
    /// As saveSvg(). The picture has two pixels a point; where that is more than programs can open, it has
    /// fewer, and `reason` says so after a success.
    bool savePng(const QString & file, QString & reason) const;

    /// For the window's menu: zoom in, zoom out, fit, 100 %, changes, distance (a submenu), save.
    [[nodiscard]] QList<QAction *> diagramActions() const;

    /// Name or path of the program that lays out, "dot" unless it is set.
    void setLayoutProgram(const QString & program);
    /// How long that program may take, in milliseconds.
    void setLayoutTimeLimit(int milliseconds);

Q_SIGNALS:
    /// A click, or the keyboard, chose this entity; 0 for none.
    void entitySelected(long id);
    /// The person wants changes to be marked, or no longer.
    void changesWanted(bool wanted);
    /// What is to be seen now is laid out. After setProject() it comes in any case, but never before that
    /// returns.
    void layoutFinished();

protected:
    void changeEvent(QEvent * event) override;

private:
    QAction * addCommand(const QString & name, const QString & text, const QString & tip,
                         const QList<QKeySequence> & keys, const std::function<void()> & command);
    void createCommands();
    void createDistances();
    [[nodiscard]] QToolBar * createToolBar();
    [[nodiscard]] QLayout * createStatusLine();
    void dressCommands();
    void updateCommands();

    [[nodiscard]] bool isLarge() const;
    void takeChoice(long id);
    void showNeighboursOf(int index);
    void setDistance(int distance);
    void setGraph(const diagram_graph & graph, const QString & about);
    void setOpened(long id, bool isOpened);
    void refresh();
    void showPlaces(const diagram_places & places);
    [[nodiscard]] QString reasonOfEmptiness() const;
    [[nodiscard]] diagram_piece pieceToShow() const;
    [[nodiscard]] QString lineAbout(const diagram_piece & piece) const;
    [[nodiscard]] QString countLine(const diagram_piece & piece) const;
    void showLegend();
    void showNote(const QString & note);
    void showZoom();

    [[nodiscard]] bool isSavable(QString & reason) const;
    void askForFile();
    void saveChosen(const QString & file, const QString & suffix);
    void savePicture(const QString & file);
    void tellFailure(const QString & reason);

    diagram_graph m_model; // of the project as it is
    diagram_graph m_graph; // what is shown: that, or a version with its changes
    bool m_bChanges = false;
    QString m_sAbout;    // what there is to say of changes
    QSet<long> m_opened; // entities that show all of their properties
    QString m_sProject;
    QString m_sLocation;
    QString m_sFolder; // where pictures are saved: the project's, or the last one that was chosen since
    bool m_bProject = false;
    long m_iSelected = 0;
    int m_iCentre = -1; // index of the entity whose neighbourhood is shown, in a large project
    int m_iDistance = 1;

    diagram_contents m_pending; // what is laid out just now
    QString m_sPending;         // and the line about it
    diagram_picture m_shown;
    QString m_sShown;

    diagram_layout * m_pLayout;
    diagram_view * m_grvDiagram;
    QComboBox * m_cboDistance = nullptr;
    QLabel * m_lblShown = nullptr;
    QLabel * m_lblNote = nullptr;
    QLabel * m_lblLegend = nullptr;
    QLabel * m_lblZoom = nullptr;
    QList<QAction *> m_lstCommand;
    QAction * m_pChanges = nullptr;
    QMenu * m_pDistanceMenu = nullptr;
    QList<QAction *> m_lstDistance;
};

} // namespace app
