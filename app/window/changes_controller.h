#pragma once

#include <QObject>
#include <QString>

class QWidget;

namespace app {

class changes_panel;
class project_session;
class version_comparison;

/// Keeps the panel of changes up to date while it is in view.
class changes_controller : public QObject
{
    Q_OBJECT

public:
    /// @param window the parent of this; all others outlive it
    changes_controller(project_session & session, changes_panel & panel, version_comparison & comparison,
                       QWidget * window);

    /// Compares anew if anything has changed that counts, and if the panel is in view.
    void refresh();

private:
    void projectChanged();
    /// What the panel shows follows from this alone.
    [[nodiscard]] QString stateOfAll() const;
    void compare();

    project_session & m_session;
    changes_panel & m_panel;
    version_comparison & m_comparison;
    QString m_sShownFile;
    QString m_sShown; ///< see stateOfAll(); empty when nothing is shown
};

} // namespace app
