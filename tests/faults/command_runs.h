#pragma once

#include "support/project_support.h"

#include "storage/history.h"

#include <QDirIterator>
#include <QHash>
#include <QTemporaryDir>
#include <QTest>

namespace faults {

/// The commands that change something, by the names that the tests give them.
inline const QStringList Commands = {QStringLiteral("import new"), QStringLiteral("import over"),
                                     QStringLiteral("tag"), QStringLiteral("export"),
                                     QStringLiteral("settings")};

/// How a command ended.
struct ended
{
    bool normally = false;
    int status = -1;
    QByteArray out;
    QByteArray err;
};

/// A folder in which commands are run again and again from the same beginning: a project with a version, a
/// model, and files of the user's, one with a name that is much like those of unfinished files.
class command_runs
{
public:
    /// Makes the project, and runs each command once to know what it does. False, with a warning, when one
    /// fails.
    [[nodiscard]] bool init();

    /// The folder as it is before `command`.
    void prepare(const QString & command) const;
    /// Runs `command` to its end.
    [[nodiscard]] ended run(const QString & command, const QStringList & environment = {}) const;
    /// Begins `command`.
    void start(QProcess & process, const QString & command, const QStringList & environment = {}) const;

    /// What `command` is there to change, as it is now, before and after it.
    [[nodiscard]] QByteArray state(const QString & command) const;
    [[nodiscard]] QByteArray before(const QString & command) const { return m_before.value(command); }
    [[nodiscard]] QByteArray after(const QString & command) const { return m_after.value(command); }
    /// Time of a whole run in microseconds.
    [[nodiscard]] qint64 duration(const QString & command) const { return m_duration.value(command); }

    /// Whether nothing of the user's was touched.
    [[nodiscard]] bool usersFilesAreWhole() const;
    /// Runs the command once more without a fault; the empty text when it then left all as it should be, else
    /// what is wrong.
    [[nodiscard]] QString wrongAfterNextRun(const QString & command) const;

    [[nodiscard]] QString workFolder() const { return m_folder.filePath(QStringLiteral("work")); }
    [[nodiscard]] QString path(const QString & name) const { return m_folder.filePath(name); }

private:
    [[nodiscard]] QString work(const QString & name) const
    {
        return m_folder.filePath(QStringLiteral("work/") + name);
    }
    [[nodiscard]] QStringList commandLine(const QString & command) const;
    [[nodiscard]] QStringList entries() const;

    QTemporaryDir m_folder;
    QHash<QString, QByteArray> m_before;
    QHash<QString, QByteArray> m_after;
    QHash<QString, QStringList> m_entries;
    QHash<QString, qint64> m_duration;
};

} // namespace faults
