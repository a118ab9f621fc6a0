#pragma once

#include <QString>

class QFileDialog;
class QWidget;

namespace tools {
template <class D>
class held_dialog;
} // namespace tools

/// What the window asks and tells in dialogs. Texts may hold names of any kind, which are no mark-up.
namespace app {

class project_session;

/// Tells of a failure.
void warn(QWidget * parent, const QString & title, const QString & text);
/// Asks Yes or No; No unless the person says otherwise.
[[nodiscard]] bool isConfirmed(QWidget * parent, const QString & title, const QString & question);
/// Asks for one file, with `name` as the dialog's object name; the empty text when the person has none.
[[nodiscard]] QString chosenFile(const tools::held_dialog<QFileDialog> & dialog, const QString & name);

/// Makes sure that the open project is as its file says; false, after the reason was shown under `title`,
/// when it is not, or none is open.
[[nodiscard]] bool refreshProject(project_session & session, QWidget * parent, const QString & title);

} // namespace app
