// Names that a database does not take, or takes for one another.

#include "check/rules/found_words.h"
#include "check/rules/refusal_rules.h"
#include "check/view/told_statement.h"
#include "check/view/written_names.h"

#include "model/column_list.h"
#include "model/entity.h"
#include "model/property.h"
#include "model/relationship.h"

#include <QRegularExpression>

#include <algorithm>
#include <iterator>

namespace check {

namespace {

using database::refusal_cause;

/// The first name of the statement that cannot be read.
std::optional<written_name> unreadableName(const told_statement & of)
{
    if (!of.isFor(refusal_cause::syntax)) {
        return {};
    }
    const std::vector<written_name> names = writtenNames(of.read().asked);
    const auto bad = std::find_if(names.begin(), names.end(), [&](const written_name & each) {
        return database::understood(of.known(), each.name, each.place).refused == refusal_cause::syntax;
    });
    return bad == names.end() ? std::nullopt : std::optional(*bad);
}

found reservedWord(const told_statement & of, bool whereOthersAreQuoted)
{
    const std::optional<written_name> bad = unreadableName(of);
    const bool isWord =
        bad && bad->name.quote.isNull() && database::isReserved(of.known(), bad->name.text, bad->place);
    return isWord && of.in().quotesNames() == whereOthersAreQuoted ? found(with("word", bad->name.text))
                                                                   : std::nullopt;
}

found reservedWord(const told_statement & of)
{
    return reservedWord(of, false);
}

found unquotedWord(const told_statement & of)
{
    return reservedWord(of, true);
}

/// A property that is neither key nor relationship and has several columns.
std::shared_ptr<model::property> manyColumned(const told_statement & of)
{
    const auto isOne = [](const std::shared_ptr<model::property> & each) {
        return each && !each->isIdentifier() && !each->hasRelationship() && columnNamesOf(*each).size() > 1;
    };
    const std::shared_ptr<model::property> own = of.property();
    if (isOne(own)) {
        return own;
    }
    const std::shared_ptr<model::entity> entity = of.entity();
    if (own || !entity || of.asks<database::create_table>() == nullptr) {
        return nullptr;
    }
    const auto properties = entity->getListOfProperty(false, false, true)->values();
    const auto first = std::find_if(properties.begin(), properties.end(), isOne);
    return first == properties.end() ? nullptr : *first;
}

found severalColumns(const told_statement & of)
{
    const std::optional<written_name> bad = unreadableName(of);
    const std::shared_ptr<model::property> own =
        bad && bad->name.text.contains(model::ColumnSeparator) ? manyColumned(of) : nullptr;
    return own ? found(with("property", nameOf(*own))) : std::nullopt;
}

/// The name of the entity, or of something of it, that no database reads without quotes; empty for none.
QString oddName(const told_statement & of)
{
    static const QRegularExpression plain(QStringLiteral("^[\\w$\\x{80}-\\x{10ffff}]+$"));
    const std::shared_ptr<model::entity> entity = of.entity();
    QStringList names =
        entity ? QStringList({tableNameOf(*entity), entity->getSoftDeleteColumn()}) : QStringList();
    if (entity) {
        for (const auto & each : entity->getListOfProperty(true, false, true)->values()) {
            names += columnNamesOf(*each);
        }
    }
    if (const auto relation = of.relationship()) {
        names += {relation->getExtraTable(), relation->getForeignKey(), relation->getForeignKeyOwner()};
    }
    const auto first = std::find_if(names.begin(), names.end(), [](const QString & name) {
        return !name.isEmpty() && !plain.match(name).hasMatch();
    });
    return first == names.end() ? QString() : *first;
}

found oddWord(const told_statement & of, const QString & word)
{
    const bool mayLead = of.known().names.lowLineMayLead.value;
    return values{{QStringLiteral("word"), word},
                  {QStringLiteral("beginning"), mayLead ? QStringLiteral("a letter or a low line")
                                                        : QStringLiteral("a letter, not with a low line")}};
}

found needsQuotes(const told_statement & of)
{
    if (const QString odd = of.read().isCutShort ? oddName(of) : QString(); !odd.isEmpty()) {
        return oddWord(of, odd);
    }
    if (const std::optional<written_name> bad = unreadableName(of)) {
        // A mark in a name can end it for the reader: the whole of it is what is wrong.
        const QString odd = oddName(of);
        return oddWord(of, odd.startsWith(bad->name.text) ? odd : bad->name.text);
    }
    constexpr refusal_cause Others[] = {
        refusal_cause::table_name_ends_blank, refusal_cause::column_name_ends_blank,
        refusal_cause::table_name_in_column,  refusal_cause::database_name_in_column,
        refusal_cause::name_not_encodable,    refusal_cause::database_named};
    const bool isOther =
        std::any_of(std::begin(Others), std::end(Others), [&](refusal_cause each) { return of.isFor(each); });
    return isOther ? oddWord(of, of.said().object.section(QLatin1Char(' '), 1)) : std::nullopt;
}

found schemaQualified(const told_statement & of)
{
    const auto * const index = of.asks<database::create_index>();
    // An index lies in the schema of its table, which is not looked for under its whole name.
    const bool isOfIndex = index != nullptr &&
                           of.said().object == QLatin1String("table ") + index->table.text &&
                           index->table.quote.isNull() && index->table.text.contains(QLatin1Char('.'));
    if (!of.isFor(refusal_cause::schema_missing) && !isOfIndex) {
        return {};
    }
    const std::vector<written_name> names = writtenNames(of.read().asked);
    const auto bad = std::find_if(names.begin(), names.end(), [&](const written_name & each) {
        return database::isOfTable(each.place) && each.name.text.contains(QLatin1Char('.'));
    });
    const QString name = bad == names.end() ? of.said().object : bad->name.text;
    return values{{QStringLiteral("word"), name},
                  {QStringLiteral("schema"), name.section(QLatin1Char('.'), 0, 0)},
                  {QStringLiteral("plain"), name.section(QLatin1Char('.'), 1)}};
}

found nameTooLong(const told_statement & of)
{
    if (!of.isFor(refusal_cause::name_too_long) && !of.isFor(refusal_cause::table_name_too_long)) {
        return {};
    }
    QString longest;
    for (const written_name & each : writtenNames(of.read().asked)) {
        longest = each.name.text.size() > longest.size() ? each.name.text : longest;
    }
    return values{{QStringLiteral("word"), longest},
                  {QStringLiteral("length"), QString::number(longest.toUcs4().size())},
                  {QStringLiteral("most"), QString::number(of.known().names.longest.value)}};
}

found systemColumn(const told_statement & of)
{
    const bool isSystem = of.isFor(refusal_cause::system_column_added) ||
                          of.isFor(refusal_cause::system_column_changed) ||
                          of.isFor(refusal_cause::system_column_indexed);
    return isSystem ? found(with("word", of.said().object.section(QLatin1Char('.'), -1))) : std::nullopt;
}

/// The other entity of the model whose table has the name that this one asks for.
std::shared_ptr<model::entity> namesake(const told_statement & of, moment when)
{
    const auto * const asked = of.asks<database::create_table>();
    const model_names * const names = of.in().names(when);
    if (asked == nullptr || names == nullptr || !of.isFor(refusal_cause::relation_exists) ||
        of.record().action != plugin::statement_action::create_table) {
        return nullptr;
    }
    for (const std::shared_ptr<model::entity> & each : names->entitiesOf(asked->table.text)) {
        if (each->getId() != of.record().entity) {
            return each;
        }
    }
    return nullptr;
}

/// Two columns of a table that the database takes for one.
struct equal_columns
{
    QString first;
    QString second;
};

std::optional<equal_columns> equalColumns(const told_statement & of)
{
    const auto * const asked = of.asks<database::create_table>();
    if (asked == nullptr || !of.isFor(refusal_cause::column_exists)) {
        return {};
    }
    QHash<QString, QString> seen;
    for (const database::column_definition & each : asked->columns) {
        const QString name = each.name.text;
        const QString key = database::nameKey(of.known(), each.name, database::name_place::other);
        if (seen.contains(key)) {
            return equal_columns{seen.value(key), name};
        }
        seen.insert(key, name);
    }
    return {};
}

found softDeleteTwice(const told_statement & of)
{
    const std::shared_ptr<model::entity> entity = of.entity();
    const std::optional<equal_columns> pair = equalColumns(of);
    const bool isSoftDelete = entity && pair &&
                              differOnlyInCase(entity->getSoftDeleteColumn(), pair->second) &&
                              of.record().action == plugin::statement_action::create_table;
    return isSoftDelete ? found(with("column", pair->second)) : std::nullopt;
}

found differInCase(const told_statement & of)
{
    if (const std::shared_ptr<model::entity> other = namesake(of, moment::now)) {
        const QString name = of.asks<database::create_table>()->table.text;
        return differOnlyInCase(tableNameOf(*other), name)
                   ? found(values{{QStringLiteral("first"), tableNameOf(*other)},
                                  {QStringLiteral("second"), name},
                                  {QStringLiteral("kind"), QStringLiteral("tables")}})
                   : std::nullopt;
    }
    const std::optional<equal_columns> pair = equalColumns(of);
    return pair && differOnlyInCase(pair->first, pair->second) &&
                   of.record().action == plugin::statement_action::create_table
               ? found(values{{QStringLiteral("first"), pair->first},
                              {QStringLiteral("second"), pair->second},
                              {QStringLiteral("kind"), QStringLiteral("columns")}})
               : std::nullopt;
}

values cutValues(const told_statement & of, const QString & first, const QString & second)
{
    return {{QStringLiteral("first"), first},
            {QStringLiteral("second"), second},
            {QStringLiteral("most"), QString::number(of.known().names.longest.value)}};
}

/// The object of this script that has the name which an index, or a foreign key, asks for.
const made_objects::origin * rivalInScript(const told_statement & of, QString & asked)
{
    const made_objects::origin * rival = nullptr;
    if (const auto * const index = of.asks<database::create_index>();
        index != nullptr && of.isFor(refusal_cause::index_exists)) {
        asked = index->index.text;
        rival = of.in().made().indexNamed(asked);
    } else if (const auto * const key = of.asks<database::add_foreign_key>();
               key != nullptr && of.isFor(refusal_cause::foreign_key_exists)) {
        asked = key->reference.name.text;
        rival = of.in().made().foreignKeyNamed(asked);
    }
    return rival != nullptr && rival->script == of.record().script ? rival : nullptr;
}

found equalWhenCut(const told_statement & of)
{
    if (const std::shared_ptr<model::entity> other = namesake(of, moment::now)) {
        return cutValues(of, tableNameOf(*other), of.asks<database::create_table>()->table.text);
    }
    if (const std::optional<equal_columns> pair = equalColumns(of);
        pair && of.record().action == plugin::statement_action::create_table) {
        return cutValues(of, pair->first, pair->second);
    }
    QString asked;
    const made_objects::origin * const rival = rivalInScript(of, asked);
    return rival != nullptr && !differOnlyInCase(rival->name, asked)
               ? found(cutValues(of, rival->name, asked))
               : std::nullopt;
}

found foreignKeyTwice(const told_statement & of)
{
    QString asked;
    return of.isFor(refusal_cause::foreign_key_exists) && rivalInScript(of, asked) != nullptr
               ? found(values())
               : std::nullopt;
}

found indexTwice(const told_statement & of)
{
    QString asked;
    const bool isTable =
        of.asks<database::create_table>() != nullptr && of.isFor(refusal_cause::relation_exists);
    if (isTable && of.said().object.startsWith(QLatin1String("index "))) {
        return with("index", of.said().object.section(QLatin1Char(' '), 1));
    }
    const auto * const index = of.asks<database::create_index>();
    if (index == nullptr || !of.isFor(refusal_cause::index_exists)) {
        return {};
    }
    const bool isOfScript = rivalInScript(of, asked) != nullptr;
    const bool isOfTable = of.in().made().indexNamed(index->index.text) == nullptr;
    return isOfScript || isOfTable ? found(values()) : std::nullopt;
}

const refusal_rule Rules[] = {
    {{QLatin1String("KV107"), effect::refused,
      "{db} refuses table or column of '{property}': its column name has a bar, and it is neither a key nor "
      "a relationship.",
      "Only identifiers and relationships are split into several columns; for other properties the bar "
      "becomes part of one name, which would have to stand in quotes.",
      "Make one property for each column."},
     severalColumns},
    {{QLatin1String("KV101"), effect::refused,
      "{db} refuses the statement about '{subject}': '{word}' is one of its reserved words.",
      "The script writes names without quotes, and a reserved word is not read as a name.",
      "Give the table another name in \"tableName\", or the column in \"columnName\"; names in the program "
      "can stay."},
     reservedWord},
    {{QLatin1String("KV128"), effect::refused,
      "{db} refuses the statement about '{subject}': '{word}' is one of its reserved words and stands "
      "without quotes.",
      "The script quotes tables and columns of entities, but not link tables with their columns, soft-delete "
      "columns and the names of indexes and foreign keys.",
      "Choose another name in \"extraTable\", \"foreignKey\", \"foreignKeyOwner\" or \"softDeleteColumn\"."},
     unquotedWord},
    {{QLatin1String("KV102"), effect::refused,
      "{db} refuses the statement about '{subject}': it cannot read the name '{word}' without quotes.",
      "A name without quotes begins with {beginning}, and only letters, digits, low lines and dollar signs "
      "follow; the script does not quote this one.",
      "Choose a name of such characters in \"tableName\" or \"columnName\"."},
     needsQuotes},
    {{QLatin1String("KV103"), effect::refused,
      "{db} refuses the statement about '{subject}': the name '{word}' has {length} characters, {most} are "
      "the most.",
      "Names of indexes and foreign keys are made of those of table and columns, so that they get long "
      "soonest.",
      "Shorten \"tableName\" or \"columnName\"."},
     nameTooLong},
    {{QLatin1String("KV124"), effect::refused,
      "{db} refuses the statement about '{subject}' unless there is a schema '{schema}': the name '{word}' "
      "has a dot.",
      "What stands before the dot is read as the name of a schema.",
      "Make the schema before the script, or use the plain name '{plain}'."},
     schemaQualified},
    {{QLatin1String("KV131"), effect::refused,
      "{db} refuses the statement about '{subject}': '{word}' is the name of a column that it has in every "
      "table.",
      "System columns cannot be made, changed or indexed.", "Choose another name in \"columnName\"."},
     systemColumn},
    {{QLatin1String("KV106"), effect::refused,
      "{db} refuses to make table '{table}': the column '{column}' is there twice, as soft-delete column and "
      "as that of a property.",
      "The soft-delete column is written in addition to the columns of the properties.",
      "Drop the property, or give \"softDeleteColumn\" another name."},
     softDeleteTwice},
    {{QLatin1String("KV105"), effect::refused,
      "{db} refuses to make table '{table}': the {kind} '{first}' and '{second}' are one to it.",
      "The database does not tell capital letters from small ones here.", "Rename one of them."},
     differInCase},
    {{QLatin1String("KV104"), effect::refused,
      "{db} refuses '{second}': cut to {most}, it is the same name as '{first}'.",
      "Longer names are cut without a word, so that names with the same beginning become one.",
      "Shorten \"tableName\" or \"columnName\" of one of them, so that they differ in what is left."},
     equalWhenCut},
    {{QLatin1String("KV125"), effect::refused,
      "{db} refuses the foreign key of '{subject}': '{constraint}' is the name of another one already.",
      "The name is made of table and columns with low lines between, so that different pairs can give one "
      "name, and it has to be the only one of the whole database.",
      "Rename one of the tables or columns."},
     foreignKeyTwice},
    {{QLatin1String("KV126"), effect::refused,
      "{db} refuses the statement about '{subject}': '{index}' is the name of another index, or of a table.",
      "The name is made of table and column with low lines between, so that different pairs can give one "
      "name, and indexes share their names with each other and with tables.",
      "Rename one of the tables or columns."},
     indexTwice},
};

} // namespace

std::span<const refusal_rule> nameRules()
{
    return Rules;
}

} // namespace check
