#pragma once

#include <QString>
#include <QStringList>

namespace database::server {

class target_database;

/// A statement of a script of somebody.
struct script_statement
{
    QString text;
    int line = 0; ///< on which it begins; 1 is the first
};

/// The statements of a script for the database with that key, as its own command-line program would run them:
/// bodies of routines and triggers stay whole, and its commands of that program are heeded or left out.
[[nodiscard]] QList<script_statement> statementsOfScript(const QString & script, const QString & key);

/// Runs the statements of `script`.
/// @param refused receives for each statement that the database refuses its line and the database's words;
/// when it is null, the first such ends the run
/// @return false, with the reason, when it was ended before its end
bool runScript(target_database & target, const QString & script, QStringList * refused, QString & why);

} // namespace database::server
