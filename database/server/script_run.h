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

/// Runs the statements of `script` until one is refused: then false, with its line and the database's words.
bool runScript(target_database & target, const QString & script, QString & why);

} // namespace database::server
