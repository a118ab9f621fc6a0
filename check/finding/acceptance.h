#pragma once

#include "check/finding/finding.h"
#include "zk/zk_bool.h"

#include <QDate>
#include <QHash>

#include <vector>

namespace check {

/// A finding that a person has looked at and lives with.
struct accepted_entry
{
    QString code;
    long entity = 0; ///< ids of objects; 0 for any
    long property = 0;
    long relationship = 0;
    QString database; ///< empty for any
    QString step;     ///< "v2-v3"; empty for any
    QString why;
    QDate until; ///< the last day; invalid for no end
};

/// What an acceptance file says.
struct accepted_findings
{
    QString file; ///< as it is told
    std::vector<accepted_entry> entries;
    QHash<QString, severity> severities; ///< by code, in the place of the rule's own
};

/// Reads `text`, whose name is `file`. On failure, one line "file: reason", `read` stays as it was.
[[nodiscard]] zk::ZkBool readAcceptance(const QByteArray & text, const QString & file,
                                        accepted_findings & read);

/// Gives findings their severities and marks those that are accepted on the day `today`. An entry that
/// matches nothing though all that it names was judged, and one that is past its date, are findings of their
/// own.
void accept(const accepted_findings & by, const QDate & today, report & in);

} // namespace check
