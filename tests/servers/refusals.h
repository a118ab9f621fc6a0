#pragma once

#include <QList>
#include <QMap>
#include <QStringList>

namespace servers {

/// A model whose scripts are refused by a database, or leave something else there than the model says.
struct refusal
{
    const char * name;
    /// The entities of each version of the project, as text, oldest first.
    QStringList versions;
    bool relationships = false;
    /// The number of the only database that the row is about; 0 for all.
    int onlyOn = 0;
    /// What stands in the database before the last script runs: statements.
    QStringList rows = {};
    /// Statements that run after the last script.
    QStringList afterwards = {};
    /// For each database, by its number, how the refused statements of the last script, and of those after
    /// it, begin.
    QMap<int, QStringList> refused = {};
    /// Lines of the catalogue that are there in the end.
    QMap<int, QStringList> found = {};
    /// Lines of the catalogue that are not there, although the model says so.
    QMap<int, QStringList> missing = {};
};

/// Every claim of the manual's page on what the databases refuse has its row here.
[[nodiscard]] QList<refusal> refusals();

} // namespace servers
