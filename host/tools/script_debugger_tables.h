#pragma once

#include "tools/script_stop.h"

#include <QList>
#include <QString>

#include <utility>

class QTreeWidget;

/// The tables of the debugger's window: what they show of a step, of a call stack and of variables.
namespace tools::debugger_tables {

using detail = std::pair<QString, QString>;

/// Empty tables with the titles of their columns.
[[nodiscard]] QTreeWidget * createStep();
[[nodiscard]] QTreeWidget * createStack();
[[nodiscard]] QTreeWidget * createVariables();

/// Show these rows in place of those before. The table is one made above for them.
void show(QTreeWidget & table, const QList<detail> & rows);
void show(QTreeWidget & table, const QList<script_frame> & rows);
void show(QTreeWidget & table, const QList<script_variable> & rows);

} // namespace tools::debugger_tables
