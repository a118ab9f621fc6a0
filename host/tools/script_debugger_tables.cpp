#include "tools/script_debugger_tables.h"

#include "tools/script_values.h"
#include "tools/table_column.h"
#include "zk/visible_text.h"

#include <QCoreApplication>
#include <QHeaderView>
#include <QTreeWidget>

namespace tools::debugger_tables {

namespace {

class titles // apart from the folder's reasons
{
    Q_DECLARE_TR_FUNCTIONS(tools::debugger_tables)
};

const table_column<detail> StepColumns[] = {
    {QT_TRANSLATE_NOOP("tools::debugger_tables", "Step"), [](const detail & d) { return d.first; }},
    {QT_TRANSLATE_NOOP("tools::debugger_tables", "Value"),
     [](const detail & d) { return zk::visibleText(d.second); }, true},
};

const table_column<script_frame> StackColumns[] = {
    {QT_TRANSLATE_NOOP("tools::debugger_tables", "Function"),
     [](const script_frame & f) {
         return f.function.isEmpty() ? titles::tr("(without a name)") : f.function;
     }},
    {QT_TRANSLATE_NOOP("tools::debugger_tables", "Line"),
     [](const script_frame & f) { return QString::number(f.line); }},
};

const table_column<script_variable> VariableColumns[] = {
    {QT_TRANSLATE_NOOP("tools::debugger_tables", "Variable"),
     [](const script_variable & v) { return v.name; }},
    {QT_TRANSLATE_NOOP("tools::debugger_tables", "Value"),
     [](const script_variable & v) { return zk::visibleText(describe(v.value)); }, true},
};

template <class Columns>
QTreeWidget * create(const Columns & columns)
{
    auto * const table = new QTreeWidget;
    table->setHeaderLabels(titlesOf(columns, [](const char * title) { return titles::tr(title); }));
    table->setRootIsDecorated(false);
    table->setAlternatingRowColors(true);
    table->setUniformRowHeights(true);
    table->header()->setStretchLastSection(true);
    return table;
}

template <class Columns, class Row>
void showRows(QTreeWidget & table, const Columns & columns, const QList<Row> & rows)
{
    table.clear();
    for (const Row & row : rows) {
        auto * const item = new QTreeWidgetItem(&table, textsOf(columns, row));
        for (int i = 0; i < item->columnCount(); ++i) {
            item->setToolTip(i, columns[i].isLong ? item->text(i) : QString());
        }
    }
    table.resizeColumnToContents(0);
}

} // namespace

QTreeWidget * createStep()
{
    return create(StepColumns);
}

QTreeWidget * createStack()
{
    return create(StackColumns);
}

QTreeWidget * createVariables()
{
    return create(VariableColumns);
}

void show(QTreeWidget & table, const QList<detail> & rows)
{
    showRows(table, StepColumns, rows);
}

void show(QTreeWidget & table, const QList<script_frame> & rows)
{
    showRows(table, StackColumns, rows);
}

void show(QTreeWidget & table, const QList<script_variable> & rows)
{
    showRows(table, VariableColumns, rows);
}

} // namespace tools::debugger_tables
