#pragma once

#include "app/unknown_types.h"

#include "storage/history.h"
#include "zk/zk_bool.h"

#include <QString>
#include <QStringList>

#include <memory>

namespace model {
class project;
}

/// What can be done with project files, for the command line and for the window alike. Every failure is one
/// line that says what, where and why; nothing is printed or shown here.
namespace app {

/// How the names of files with a text form end, after the dot.
inline constexpr QLatin1String TextSuffix("json");

/// Whether the file `name` is named as a project, or as a text form.
[[nodiscard]] bool isProjectName(const QString & name);
[[nodiscard]] bool isTextName(const QString & name);

/// The name that stands for standard input where a text form is read.
inline constexpr QLatin1String StandardInput("-");

/// What messages call the text `name`: a file, or standard input.
[[nodiscard]] QString shownName(const QString & name);

/// Reads the text form in the file `name`, or from standard input.
[[nodiscard]] zk::ZkBool readText(const QString & name, QByteArray & text);

/// Loads the project of the file `file`. On failure `project` stays as it was.
[[nodiscard]] zk::ZkBool openProject(const QString & file, std::shared_ptr<model::project> & project);

struct import_result
{
    zk::ZkBool result;
    QString projectName;
    long entities = 0;
    QList<column_type> types;
    QStringList warnings; ///< one line each, beginning with the name of the text
};
/// Creates the project file `projectFile` from the text form in `modelFile` ("-" is standard input), or
/// replaces its model; settings and versions stay.
[[nodiscard]] import_result importText(const QString & modelFile, const QString & projectFile);

/// Reads the text form `text`, called `source` in messages, into the empty `project`, as one that replaces
/// `existing` (null for none). What is allowed, but hardly meant, is added to `warnings`.
[[nodiscard]] zk::ZkBool readModel(const QByteArray & text, const QString & source,
                                   const model::project * existing, model::project & project,
                                   QStringList & warnings);

/// Whether an import into `projectFile` would replace the model of what is there.
[[nodiscard]] bool replacesModel(const QString & projectFile);

/// Writes the text form of `project` to `file`. A file that could not be written whole stays as it was.
[[nodiscard]] zk::ZkBool saveText(const model::project & project, const QString & file);

/// Stores the state of a project file as a new version.
[[nodiscard]] zk::ZkBool tagState(const QString & projectFile, const QString & message,
                                  storage::history::tag_when when, storage::history::tag_result & tagged);

} // namespace app
