#include "database/statement/table_reader.h"

namespace database {

namespace {

// A type ends before these. Those that no form of ours has make the statement an unknown one.
constexpr std::string_view AfterType[] = {
    "NOT",     "NULL",  "PRIMARY",    "AUTOINCREMENT", "AUTO_INCREMENT", "UNIQUE",  "IDENTITY",
    "DEFAULT", "CHECK", "REFERENCES", "COLLATE",       "CONSTRAINT",     "COMMENT", "GENERATED"};

bool readIdentity(token_cursor & at)
{
    if (!at.take({"IDENTITY"})) {
        return false;
    }
    // The numbers say where counting begins and how it goes on.
    return at.take(token_kind::open) && at.takeName() && at.take(token_kind::comma) && at.takeName() &&
           at.take(token_kind::close);
}

// DEFAULT, with something after it.
bool hasValue(const token_cursor & at)
{
    const token * const value = at.peek(1);
    return at.isAt({"DEFAULT"}) && value != nullptr && value->kind != token_kind::comma &&
           value->kind != token_kind::close;
}

bool readClause(token_cursor & at, column_definition & column)
{
    if (!at.isAt(token_kind::word)) {
        return false;
    }
    if (at.take({"NOT", "NULL"})) {
        column.notNull = true;
    } else if (at.take({"PRIMARY", "KEY"})) {
        column.primaryKey = true;
    } else if (at.take({"UNIQUE"})) {
        column.unique = true;
    } else if (hasValue(at)) {
        at.take({"DEFAULT"});
        at.takeUntil(AfterType);
        column.hasDefault = true;
    } else if (at.take({"AUTOINCREMENT"}) || at.take({"AUTO_INCREMENT"}) || readIdentity(at)) {
        column.counted = true;
    } else {
        return at.take({"NULL"});
    }
    return true;
}

// What happens to rows that refer to one that goes or changes.
bool takeAction(token_cursor & at)
{
    for (const std::string_view event : {"DELETE", "UPDATE"}) {
        if (at.take({"ON", event, "CASCADE"}) || at.take({"ON", event, "RESTRICT"}) ||
            at.take({"ON", event, "SET", "NULL"}) || at.take({"ON", event, "NO", "ACTION"}) ||
            at.take({"ON", event, "SET", "DEFAULT"})) {
            return true;
        }
    }
    return false;
}

bool isAtNamedKey(const token_cursor & at)
{
    const token * const kind = at.peek(2);
    return at.isAt({"CONSTRAINT"}) && kind != nullptr && (kind->isWord("PRIMARY") || kind->isWord("FOREIGN"));
}

bool readKey(token_cursor & at, create_table & into, const identifier & name)
{
    auto parts = readParts(at);
    if (!parts || into.key) {
        return false;
    }
    into.key = key_definition{name, std::move(*parts)};
    return true;
}

bool readItem(token_cursor & at, create_table & into)
{
    identifier name;
    if (isAtNamedKey(at)) {
        at.take({"CONSTRAINT"});
        const auto taken = at.takeName();
        if (!taken) {
            return false;
        }
        name = *taken;
    }
    if (at.take({"PRIMARY", "KEY"})) {
        return readKey(at, into, name);
    }
    if (at.isAt({"FOREIGN", "KEY"})) {
        auto reference = readReference(at);
        if (reference) {
            reference->name = name;
            into.references.push_back(std::move(*reference));
        }
        return reference.has_value();
    }
    auto column = readColumn(at);
    if (column) {
        into.columns.push_back(std::move(*column));
    }
    return column.has_value();
}

} // namespace

std::optional<column_definition> readColumn(token_cursor & at)
{
    auto name = at.takeName();
    if (!name || at.isAt(token_kind::open)) {
        return std::nullopt;
    }
    column_definition column;
    column.name = std::move(*name);
    column.type = at.takeTypeUntil(AfterType);
    while (readClause(at, column)) {
    }
    return column;
}

std::optional<std::vector<named_part>> readParts(token_cursor & at)
{
    std::vector<named_part> parts;
    if (!at.take(token_kind::open)) {
        return std::nullopt;
    }
    if (at.take(token_kind::close)) {
        return parts;
    }
    do {
        // Where a name is missing there is one without letters, which no database takes.
        const bool isMissing = at.isAt(token_kind::comma) || at.isAt(token_kind::close);
        const auto name = isMissing ? std::optional<identifier>(identifier()) : at.takeName();
        if (!name) {
            return std::nullopt;
        }
        parts.push_back({*name, at.takeNumberInBrackets().value_or(0)});
    } while (at.take(token_kind::comma));
    return at.take(token_kind::close) ? std::optional(std::move(parts)) : std::nullopt;
}

std::optional<std::vector<identifier>> readNames(token_cursor & at)
{
    auto parts = readParts(at);
    if (!parts) {
        return std::nullopt;
    }
    std::vector<identifier> names;
    for (named_part & part : *parts) {
        if (part.prefix != 0) {
            return std::nullopt;
        }
        names.push_back(std::move(part.column));
    }
    return names;
}

std::optional<reference_definition> readReference(token_cursor & at)
{
    if (!at.take({"FOREIGN", "KEY"})) {
        return std::nullopt;
    }
    auto columns = readNames(at);
    if (!columns || !at.take({"REFERENCES"})) {
        return std::nullopt;
    }
    const auto target = at.takeName();
    auto targetColumns = readNames(at);
    if (!target || !targetColumns) {
        return std::nullopt;
    }
    while (takeAction(at)) {
    }
    return reference_definition{{}, std::move(*columns), *target, std::move(*targetColumns)};
}

bool readTable(token_cursor & at, create_table & into)
{
    if (!at.take(token_kind::open)) {
        return false;
    }
    if (at.take(token_kind::close)) {
        return true;
    }
    constexpr std::size_t FewestTokens = 3; // of a column: a name, a type, a comma
    into.columns.reserve(at.left() / FewestTokens);
    do {
        if (!readItem(at, into)) {
            return false;
        }
    } while (at.take(token_kind::comma));
    return at.take(token_kind::close);
}

} // namespace database
