#include "database/statement/reader.h"

#include "database/facts/facts.h"
#include "database/statement/alter_reader.h"
#include "database/statement/table_reader.h"

#include <algorithm>

namespace database {

namespace {

// What is read so far is kept in `into`, for a statement whose rest cannot be read.
bool readCreateTable(token_cursor & at, reading & into)
{
    create_table asked;
    asked.ifNotExists = at.take({"IF", "NOT", "EXISTS"});
    const auto name = at.takeName();
    if (!name) {
        return false;
    }
    asked.table = *name;
    const bool isWhole = readTable(at, asked);
    into = std::move(asked);
    if (isWhole && at.take({"WITH"})) {
        // The tail that PostgreSQL's tables have.
        return at.take(token_kind::open) && at.take({"OIDS", "=", "FALSE"}) && at.take(token_kind::close);
    }
    return isWhole;
}

reading readCreateIndex(token_cursor & at, bool unique)
{
    create_index asked;
    asked.unique = unique;
    asked.ifNotExists = at.take({"IF", "NOT", "EXISTS"});
    const auto index = at.takeName();
    if (!index || !at.take({"ON"})) {
        return std::nullopt;
    }
    const auto table = at.takeName();
    auto parts = readParts(at);
    if (!table || !parts) {
        return std::nullopt;
    }
    asked.index = *index;
    asked.table = *table;
    asked.parts = std::move(*parts);
    return asked;
}

// The body of a trigger is its own affair.
reading readCreateTrigger(token_cursor & at)
{
    create_trigger asked;
    const auto trigger = at.takeName();
    if (at.take({"BEFORE", "INSERT", "OR", "UPDATE", "OF"})) {
        do {
            asked.columns.push_back(at.takeName().value_or(identifier()));
        } while (at.take(token_kind::comma));
    }
    while (!at.isAtEnd() && !at.take({"ON"})) {
        if (!at.takeName() && !at.take(token_kind::comma) && !at.take(token_kind::open) &&
            !at.take(token_kind::close)) {
            return std::nullopt;
        }
    }
    const auto table = at.takeName();
    if (!trigger || !table) {
        return std::nullopt;
    }
    asked.trigger = *trigger;
    asked.table = *table;
    return asked;
}

reading readCreateSequence(token_cursor & at)
{
    const auto name = at.takeName();
    const bool isOurs = name && at.take({"START", "WITH", "1", "INCREMENT", "BY", "1"});
    return isOurs ? reading(create_sequence{*name}) : std::nullopt;
}

bool readCreate(token_cursor & at, reading & into)
{
    if (at.take({"TABLE"})) {
        return readCreateTable(at, into);
    }
    if (at.take({"INDEX"})) {
        into = readCreateIndex(at, false);
    } else if (at.take({"UNIQUE", "INDEX"})) {
        into = readCreateIndex(at, true);
    } else if (at.take({"SEQUENCE"})) {
        into = readCreateSequence(at);
    } else if (at.take({"TRIGGER"}) || at.take({"OR", "REPLACE", "TRIGGER"})) {
        into = readCreateTrigger(at);
        return into.has_value();
    }
    return into && at.isAtEnd();
}

reading readDrop(token_cursor & at)
{
    if (at.take({"TABLE"})) {
        const bool ifExists = at.take({"IF", "EXISTS"});
        const auto table = at.takeName();
        return table ? reading(drop_table{*table, ifExists}) : std::nullopt;
    }
    if (!at.take({"INDEX"})) {
        return std::nullopt;
    }
    drop_index asked;
    asked.ifExists = at.take({"IF", "EXISTS"});
    const auto index = at.takeName();
    if (!index) {
        return std::nullopt;
    }
    asked.index = *index;
    if (at.take({"ON"})) {
        asked.table = at.takeName();
        return asked.table ? reading(asked) : std::nullopt;
    }
    return asked;
}

reading readRenameTable(token_cursor & at)
{
    const auto from = at.takeName();
    const auto to = at.take({"TO"}) ? at.takeName() : std::nullopt;
    return from && to ? reading(rename_table{*from, *to}) : std::nullopt;
}

// EXEC sp_rename 'a', 'b' for tables, 'a.x', 'y', 'COLUMN' for columns.
reading readProcedure(token_cursor & at)
{
    const auto from = at.take({"sp_rename"}) ? at.takeText() : std::nullopt;
    const auto to = at.take(token_kind::comma) ? at.takeText() : std::nullopt;
    if (!from || !to) {
        return std::nullopt;
    }
    // The new name is taken as it stands, whatever it is; the old one is read as a name, but no word in it as
    // anything else.
    static constexpr QChar Literal = u'[';
    const auto old = [](const QString & text) {
        return identifier{text, text.contains(u'.') ? QChar() : Literal};
    };
    if (!at.take(token_kind::comma)) {
        return rename_table{old(*from), {*to, Literal}};
    }
    if (at.takeText() != QLatin1String("COLUMN")) {
        return std::nullopt;
    }
    return rename_column{old(from->section(u'.', 0, -2)), old(from->section(u'.', -1)), {*to, Literal}};
}

bool isWithoutChange(const token_cursor & at)
{
    constexpr std::string_view Words[] = {"PRAGMA", "BEGIN",  "COMMIT", "END", "START",  "INSERT",
                                          "UPDATE", "DELETE", "SELECT", "SET", "VACUUM", "ANALYZE"};
    return std::any_of(std::begin(Words), std::end(Words),
                       [&at](std::string_view word) { return at.isAt({word}); });
}

// Gives whether all of the statement was read.
bool readForm(token_cursor & at, reading & into)
{
    if (at.take({"CREATE"})) {
        return readCreate(at, into);
    }
    if (at.take({"DROP"})) {
        into = readDrop(at);
    } else if (at.take({"RENAME", "TABLE"})) {
        into = readRenameTable(at);
    } else if (at.take({"ALTER"})) {
        into = readAlter(at);
    } else if (at.take({"EXEC"})) {
        into = readProcedure(at);
    } else if (isWithoutChange(at)) {
        into = no_change{};
    }
    return into.has_value();
}

QString beginningOf(const QString & text)
{
    return text.simplified().section(u' ', 0, 2);
}

statement readStatement(const QString & text, std::span<const token> tokens, writer by, bool quotedTypes)
{
    statement found;
    found.position = tokens.front().begin;
    found.text = text.sliced(found.position, tokens.back().end - found.position);
    found.isCutShort = std::any_of(tokens.begin(), tokens.end(),
                                   [](const token & each) { return each.kind == token_kind::unfinished; });
    token_cursor at(text, tokens, quotedTypes);
    reading asked;
    const bool isWhole = readForm(at, asked);
    const bool isTrigger = asked && std::holds_alternative<create_trigger>(*asked);
    const bool hasNothingAfter =
        at.isAtEnd() || isTrigger || (asked && std::holds_alternative<no_change>(*asked));
    found.isCutShort = found.isCutShort || (by == writer::exporter && !(asked && isWhole && hasNothingAfter));
    if (asked && (found.isCutShort || (isWhole && hasNothingAfter))) {
        found.asked = std::move(*asked);
    } else {
        found.asked = unknown_statement{{}, {}};
    }
    if (auto * const unknown = std::get_if<unknown_statement>(&found.asked)) {
        unknown->beginning = beginningOf(found.text);
        found.isCutShort = found.isCutShort || by == writer::exporter;
    }
    return found;
}

// A trigger's body has semicolons of its own; a line with a slash ends it.
bool isTrigger(std::span<const token> tokens)
{
    const std::size_t last = std::min<std::size_t>(tokens.size(), 4);
    return !tokens.empty() && tokens.front().isWord("CREATE") &&
           std::any_of(tokens.begin(), tokens.begin() + static_cast<std::ptrdiff_t>(last),
                       [](const token & each) { return each.isWord("TRIGGER"); });
}

} // namespace

statement_reader::statement_reader(const facts & known) : m_hasQuotedTypes(known.types.quotedWords.value) {}

std::vector<statement> statement_reader::read(const QString & text, writer by)
{
    readTokens(text, m_tokens);
    const std::span<const token> all(m_tokens);
    std::vector<statement> statements;
    std::size_t first = 0;
    for (std::size_t i = 0; i <= all.size(); ++i) {
        const auto part = all.subspan(first, i - first);
        const bool isEnd = i == all.size() || all[i].kind == token_kind::line_of_slash ||
                           (all[i].kind == token_kind::semicolon && !isTrigger(part));
        if (isEnd && !part.empty()) {
            statements.push_back(readStatement(text, part, by, m_hasQuotedTypes));
        }
        first = isEnd ? i + 1 : first;
    }
    return statements;
}

std::vector<statement> readStatements(const QString & text, writer by)
{
    return statement_reader().read(text, by);
}

} // namespace database
