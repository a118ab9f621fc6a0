#include "database/statement/alter_reader.h"

#include "database/statement/table_reader.h"

#include <algorithm>

namespace database {

namespace {

constexpr std::string_view AfterNewType[] = {"USING", "COLLATE"};

// After UNIQUE: INDEX, KEY and a name may stand before the columns.
reading readUnique(token_cursor & at, const identifier & table, identifier name)
{
    if (!at.take({"INDEX"})) {
        at.take({"KEY"});
    }
    if (!at.isAt(token_kind::open)) {
        name = at.takeName().value_or(name);
    }
    auto parts = readParts(at);
    return parts ? reading(add_key{table, false, {name, std::move(*parts)}}) : std::nullopt;
}

reading readConstraint(token_cursor & at, const identifier & table, const identifier & name)
{
    if (at.isAt({"FOREIGN", "KEY"})) {
        auto reference = readReference(at);
        if (!reference) {
            return std::nullopt;
        }
        reference->name = name;
        return add_foreign_key{table, std::move(*reference)};
    }
    if (at.take({"PRIMARY", "KEY"})) {
        auto parts = readParts(at);
        return parts ? reading(add_key{table, true, {name, std::move(*parts)}}) : std::nullopt;
    }
    return at.take({"UNIQUE"}) ? readUnique(at, table, name) : std::nullopt;
}

reading readAdd(token_cursor & at, const identifier & table)
{
    if (at.take({"CONSTRAINT"})) {
        const auto name = at.takeName();
        const reading asked = name ? readConstraint(at, table, *name) : std::nullopt;
        return asked ? asked : reading(unknown_statement{{}, table});
    }
    if (at.isAt({"PRIMARY", "KEY"}) || at.isAt({"UNIQUE"})) {
        return readConstraint(at, table, {});
    }
    at.take({"COLUMN"});
    const bool ifNotExists = at.take({"IF", "NOT", "EXISTS"});
    const auto column = readColumn(at);
    return column ? reading(add_column{table, ifNotExists, *column}) : std::nullopt;
}

reading readAlterDrop(token_cursor & at, const identifier & table)
{
    if (at.take({"PRIMARY", "KEY"})) {
        return drop_key{table};
    }
    // A column can be called so, too.
    const token * const afterWord = at.peek(1);
    if (at.isAt({"UNIQUE"}) && afterWord != nullptr && afterWord->kind == token_kind::open) {
        at.take({"UNIQUE"});
        auto columns = readParts(at);
        return columns ? reading(drop_unique{table, std::move(*columns)}) : std::nullopt;
    }
    const bool isForeignKey = at.take({"FOREIGN", "KEY"});
    if (isForeignKey || at.take({"CONSTRAINT"})) {
        const bool ifExists = at.take({"IF", "EXISTS"});
        const auto name = at.takeName();
        return name ? reading(drop_constraint{table, ifExists, isForeignKey, *name}) : std::nullopt;
    }
    at.take({"COLUMN"});
    const bool ifExists = at.take({"IF", "EXISTS"});
    const auto column = at.takeName();
    return column ? reading(drop_column{table, ifExists, *column}) : std::nullopt;
}

reading readAlterRename(token_cursor & at, const identifier & table)
{
    if (at.take({"TO"})) {
        const auto to = at.takeName();
        return to ? reading(rename_table{table, *to}) : std::nullopt;
    }
    // A column can be called so, too.
    const token * const afterName = at.peek(2);
    const bool isIndex = at.isAt({"INDEX"}) && afterName != nullptr && afterName->isWord("TO");
    at.take({isIndex ? "INDEX" : "COLUMN"});
    const auto from = at.takeName();
    const auto to = at.take({"TO"}) ? at.takeName() : std::nullopt;
    if (!from || !to) {
        return std::nullopt;
    }
    return isIndex ? reading(rename_index{table, *from, *to}) : reading(rename_column{table, *from, *to});
}

// ALTER COLUMN x INT NOT NULL. What is not said to be NOT NULL may be null from then on.
reading readRestatedInPlace(token_cursor & at, const identifier & table)
{
    const auto definition = readColumn(at);
    return definition ? reading(alter_column{table, definition->name, definition->type, true,
                                             definition->notNull, true})
                      : std::nullopt;
}

reading readAlterColumn(token_cursor & at, const identifier & table)
{
    constexpr std::string_view Actions[] = {"SET", "DROP", "TYPE", "ADD", "RESTART"};
    const bool isNamed = at.take({"COLUMN"});
    const token * const next = at.peek(1);
    if (isNamed && next != nullptr && next->kind == token_kind::word &&
        std::none_of(std::begin(Actions), std::end(Actions),
                     [next](std::string_view action) { return next->isWord(action); })) {
        return readRestatedInPlace(at, table);
    }
    const auto column = at.takeName();
    if (!column) {
        return std::nullopt;
    }
    alter_column asked{table, *column, {}, false, {}};
    if (at.take({"SET", "NOT", "NULL"}) || at.isAt({"DROP", "NOT", "NULL"})) {
        asked.notNull = !at.take({"DROP", "NOT", "NULL"});
        return asked;
    }
    if (at.take({"TYPE"}) || at.take({"SET", "DATA", "TYPE"})) {
        asked.type = at.takeUntil(AfterNewType);
        asked.isConverted = at.take({"USING"});
        at.takeRest();
        return asked.type.isEmpty() ? std::nullopt : reading(asked);
    }
    if (at.take({"DROP", "DEFAULT"}) || at.take({"SET", "DEFAULT"})) {
        at.takeRest();
        return asked;
    }
    return std::nullopt;
}

reading readRestated(token_cursor & at, const identifier & table, bool isRenamed)
{
    at.take({"COLUMN"});
    const token * const next = at.peek();
    const identifier own = next == nullptr ? identifier() : identifier{next->text(), next->quote};
    const auto from = isRenamed ? at.takeName() : std::optional(own);
    const auto definition = readColumn(at);
    return from && definition ? reading(change_column{table, *from, *definition}) : std::nullopt;
}

reading readAlterIndex(token_cursor & at)
{
    const auto from = at.takeName();
    const auto to = at.take({"RENAME", "TO"}) ? at.takeName() : std::nullopt;
    return from && to ? reading(rename_index{std::nullopt, *from, *to}) : std::nullopt;
}

} // namespace

reading readAlter(token_cursor & at)
{
    if (at.take({"INDEX"})) {
        return readAlterIndex(at);
    }
    const auto table = at.take({"TABLE"}) ? at.takeName() : std::nullopt;
    if (!table) {
        return std::nullopt;
    }
    if (at.take({"ADD"})) {
        return readAdd(at, *table);
    }
    if (at.take({"DROP"})) {
        return readAlterDrop(at, *table);
    }
    if (at.take({"RENAME"})) {
        return readAlterRename(at, *table);
    }
    if (at.take({"ALTER"})) {
        return readAlterColumn(at, *table);
    }
    const bool isModified = at.take({"MODIFY"});
    return isModified || at.take({"CHANGE"}) ? readRestated(at, *table, !isModified) : std::nullopt;
}

} // namespace database
