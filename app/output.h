#pragma once

#include <QString>

/// What the commands say: on standard output, and their failures on standard error.
namespace app {

/// Writes `text` as one line to standard error, with line ends and control characters made harmless.
void printError(const QString & text);
/// From now on printError() has "***" in the place of `password` where it stands as in a URL.
void leaveOutOfErrors(const QString & password);
/// Writes `text` like printError(), as the reason of a failure; the exit status for it.
[[nodiscard]] int failed(const QString & text);
/// Writes `text` and a line end to standard output.
void printLine(const QString & text);
/// Writes `bytes` to standard output as they are.
void printBytes(const QByteArray & bytes);
/// Writes `text`, which tells of something that is kept in a file, like printLine(). Should the output turn
/// out to be unwritable, the failure says that it was done all the same: who repeats the command does it
/// twice.
void printDone(const QString & text);
/// Writes `text`, which tells how the work goes, as one line to standard output.
void printNotice(const QString & text);
/// Writes `text`, which tells what to look at next, like printError().
void printHint(const QString & text);
/// From now on only results, warnings and errors are printed: nothing of what was done, how it went and what
/// to do next.
void printResultsOnly();
[[nodiscard]] bool areResultsPrintedAlone();
/// `text` as one line: a blank for each line end and control character, and what would turn the direction of
/// the line shown by its number.
[[nodiscard]] QString oneLine(const QString & text);
/// Takes the places of standard streams that the program was started without, so that no file that is opened
/// later gets one and is written into; what uses such a stream still fails. Belongs before everything else.
void holdStandardStreams();
/// Writes out what printLine() holds back until now. Whether that failed finishOutput() says.
void sendOutput();
/// Writes out what printLine() holds back. `status`, or Failed with the reason on standard error when not
/// everything could be written; a reader that has gone away is no failure.
[[nodiscard]] int finishOutput(int status);

} // namespace app
