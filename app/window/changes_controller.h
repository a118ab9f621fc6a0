#pragma once

#include <QObject>
#include <QString>

class QWidget;

namespace app {

class changes_panel;
class diagram_panel;
class project_session;
class version_comparison;

/// Keeps the panel of changes up to date while it is in view, and the changes that the diagram marks.
class changes_controller : public QObject
{
    Q_OBJECT

public:
    /// @param window the parent of this; all others outlive it
    changes_controller(project_session & session, changes_panel & panel, diagram_panel & diagram,
                       version_comparison & comparison, QWidget * window);

    /// Compares anew if anything has changed that counts, and if it is to be seen.
    void refresh();
    /// The diagram shows the project that is open now.
    void projectChanged();

private:
    /// What the diagram marks follows from this alone.
    [[nodiscard]] QString stateOfVersions() const;
    /// What the panel shows follows from this alone.
    [[nodiscard]] QString stateOfAll() const;
    /// False when there is nothing to compare with, which is shown then.
    [[nodiscard]] bool listVersions();
    void compare();
    void markChanges();
    void setMarked(bool isWanted);

    project_session & m_session;
    changes_panel & m_panel;
    diagram_panel & m_diagram;
    version_comparison & m_comparison;
    QString m_sShownFile;
    QString m_sShown;  ///< see stateOfAll(); empty when nothing is shown
    QString m_sMarked; ///< see stateOfVersions(); empty when nothing is marked
};

} // namespace app
