#pragma once

#include <QList>
#include <QPair>
#include <QString>
#include <QStringList>

/// The commands of the program. Each prints what it has to say and returns the exit status: 0 done, 1 it
/// failed, with one line on standard error that says what and where.
namespace app {

/// Creates the project file `project` from the text form in `modelFile`, or replaces its model.
int importModel(const QString & modelFile, const QString & projectFile);
/// Prints the text form of a project.
int dumpProject(const QString & projectFile);
/// Stores the state of a project as a new version; with `ifChanged` only when the model is another one than
/// that of the newest version.
int tagProject(const QString & projectFile, const QString & message, bool ifChanged);
/// Lists the versions of a project.
int logVersions(const QString & projectFile);

struct export_request
{
    QString projectFile;
    QString pluginName; ///< name of the plug-in, or a path of its file; empty for the only one found
    bool answerYes = false;
    bool noCustomScript = false;                  ///< runs no custom script, whoever names one
    QList<QPair<QString, QString>> pluginOptions; ///< "--Plugin_option" and its value
};
/// Runs an export plug-in on a project. Needs a QApplication.
int exportProject(const export_request & request);
/// Lists the plug-ins found, with their description and command-line help. Needs a QApplication.
int listPlugins();
/// Shows the main window, with a project open if `projectFile` is not empty, until it is closed. Needs a
/// QApplication.
int showWindow(const QString & projectFile);

/// Writes `text` as one line to standard error, with line ends and control characters made harmless.
void printError(const QString & text);
/// Writes `text` and a line end to standard output.
void printLine(const QString & text);
/// Writes `text`, which tells of something that is kept in a file, like printLine(). Should the output turn
/// out to be unwritable, the failure says that it was done all the same: who repeats the command does it
/// twice.
void printDone(const QString & text);
/// `text` as one line: a blank for each line end and control character, and what would turn the direction of
/// the line shown by its number.
[[nodiscard]] QString oneLine(const QString & text);
/// Takes the places of standard streams that the program was started without, so that no file that is opened
/// later gets one and is written into; what uses such a stream still fails. Belongs before everything else.
void holdStandardStreams();
/// Writes out what printLine() holds back. `status`, or 1 with the reason on standard error when not
/// everything could be written; a reader that has gone away is no failure.
[[nodiscard]] int finishOutput(int status);

} // namespace app
