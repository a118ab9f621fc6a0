#pragma once

#include "plugin/statement_source.h"

#include <QString>
#include <QStringList>

#include <memory>
#include <vector>

namespace model {
class project;
}

namespace check {

/// One script and the models that it lies between.
struct script
{
    QString name; ///< by which an export writes it
    QString from; ///< "v2"; empty for a script that begins with nothing
    QString to;   ///< "v3", "now"
    QString step; ///< how acceptance files name it: "v2-v3" also while v3 is not tagged yet, "v1", "full"
    std::shared_ptr<model::project> before; ///< null for a script that begins with nothing
    std::shared_ptr<model::project> now;
    bool isCurrent = false; ///< `now` is the state of the project, which its text form has
    bool isFull = false;    ///< makes the whole schema of a new database; else it is a part of the history
    std::vector<plugin::statement_record> records;
    /// What settings of the export were when `from` was tagged, where they are stored otherwise now.
    QStringList otherSettings;
};

} // namespace check
