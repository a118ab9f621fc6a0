#pragma once

#include "app/window/recent_files.h"

#include "storage/history.h"

#include <QObject>

#include <optional>

class QFileInfo;
class QWidget;

namespace app {

class message_panel;
class project_session;
class version_comparison;

/// What the commands of the window do with projects: open, import, save, tag. They ask what they have to
/// know, tell of failures, and leave it to the window to show what comes of it.
class project_commands : public QObject
{
    Q_OBJECT

public:
    /// @param window the parent of the dialogs, and of this; all others outlive it
    project_commands(project_session & session, message_panel & messages, version_comparison & comparison,
                     QWidget * window);

    [[nodiscard]] QStringList recentFiles() const { return m_recent.files(); }

    /// Where files are looked for first: the folder of the open project, or of the last one.
    [[nodiscard]] QString folderToStartIn() const;
    /// Asks into which project file `source`, a name for people, is to be imported: one that is there, or a
    /// new one. The empty text when the person thinks better of it.
    /// @param proposed the new one, when no project is open
    [[nodiscard]] QString chooseTarget(const QString & source, const QString & proposed) const;

    /// Opens a project file; a failure is shown, and what was open stays open.
    void openFile(const QString & file);
    /// Imports a model in text form into a project file that the person names.
    void importModel(const QString & modelFile);
    void chooseAndOpen();
    /// Makes a project, and beside it the text of its model, where the person says.
    void chooseAndBegin();
    /// Copies the sample project to where the person says, and opens it.
    void chooseAndTrySample();
    void chooseAndImport();
    void chooseAndSaveText();
    void reload();
    void close();
    void tag();
    void showVersions();
    void clearRecentFiles();

Q_SIGNALS:
    void recentFilesChanged();
    /// There are messages that the person has to see.
    void messagesWanted();
    /// The person wants to see what changed between two versions, or to the state for `Now`.
    void comparisonWanted(int from, int to);
    /// There is one version more.
    void tagged();
    /// What was done, on one line.
    void statusTold(const QString & text);

private:
    using list_of_versions = QList<storage::history::version>;

    [[nodiscard]] QString chooseNewFile(const QString & title, const QString & objectName,
                                        const QString & proposed) const;
    [[nodiscard]] bool isReplacementWanted(const QFileInfo & text, const QString & target);
    bool refresh(const QString & title);
    [[nodiscard]] std::optional<list_of_versions> listVersions(const QString & title);

    project_session & m_session;
    message_panel & m_messages;
    version_comparison & m_comparison;
    QWidget * m_pWindow;
    recent_files m_recent;
};

} // namespace app
