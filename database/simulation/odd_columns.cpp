#include "database/simulation/odd_columns.h"

#include "database/facts/known_types.h"

namespace database {

namespace {

/// Whether there is nothing but a name, not in quotes, which is `word`, and a type.
bool isBare(const column_definition & asked, QStringView word)
{
    column_definition bare;
    bare.name = asked.name;
    bare.type = asked.type;
    return asked.name.quote.isNull() && asked.name.text.compare(word, Qt::CaseInsensitive) == 0 &&
           bare == asked;
}

} // namespace

std::span<const column_definition> columnsOf(const facts & known, const QString & table,
                                             std::span<const column_definition> columns, losses & lost)
{
    if (columns.size() < 2 || !known.names.bareConstraintIsNoColumn.value) {
        return columns;
    }
    const column_definition & last = columns.back();
    if (!isBare(last, u"constraint") || last.type.contains(u'(') || last.type.contains(u' ')) {
        return columns;
    }
    lost.push_back({loss_kind::column_not_made, columnObject(table, last.name.text)});
    return columns.first(columns.size() - 1);
}

refusal copiedTable(const facts & known, const column_definition & asked)
{
    if (!known.names.likeCopiesTable.value || !isBare(asked, u"like")) {
        return {};
    }
    const declared_type type = partsOf(asked.type);
    const bool isCopy = type.rest.isEmpty() && type.arguments.isEmpty() && !type.word.isEmpty();
    return isCopy ? refusal{refusal_cause::table_missing, tableObject(type.word.toLower()), false}
                  : refusal();
}

/// Whether the type has a quotation that reaches into the next column.
bool hasOtherColumns(const QString & type)
{
    const auto begin = type.indexOf(u'`');
    return begin >= 0 && QStringView(type).mid(begin, type.indexOf(u'`', begin + 1) - begin).contains(u',');
}

} // namespace database
