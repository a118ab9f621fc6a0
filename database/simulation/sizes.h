#pragma once

#include "database/simulation/state.h"

/// How large tables, rows, keys and indexes are, and how large they may be.
namespace database {

/// A prefix that is as long as the text is no prefix.
[[nodiscard]] int keptPrefix(const known_types & types, const QString & type, int prefix);
/// How much of a column an index keeps that asks for so many characters, or for all: 0 for all of it.
[[nodiscard]] int indexedPart(const known_types & types, const QString & type, int asked);
/// Bytes that a column takes in a key, with as many characters of it as the prefix says.
[[nodiscard]] int bytesInKey(const known_types & types, const QString & type, int prefix);
/// Whether a column of the type can be in a key only by the beginning of its values.
[[nodiscard]] bool isUnboundedInKey(const known_types & types, const QString & type);

/// Whether a table can have so many columns, as far as that is looked at before anything else is.
[[nodiscard]] refusal checkColumnCount(const facts & known, const QString & table, std::size_t columns);
/// Whether a key, an index or a foreign key can have so many columns.
[[nodiscard]] refusal checkPartCount(const facts & known, const QString & object, std::size_t parts);
/// Whether the table can have so many keys and indexes more than it has.
[[nodiscard]] refusal checkIndexCount(const facts & known, const table & owner, std::size_t more);
/// Whether the table can be stored: the length of its rows, and the columns that are counted last.
/// @param newHashes unique indexes that are kept as a hash, beside those that it has
[[nodiscard]] refusal checkStorage(const known_types & types, const table & owner, int newHashes);
/// Whether a row of a table that is made finds room in a page; of columns that are added that is not asked.
[[nodiscard]] refusal checkPage(const known_types & types, const table & owner);

} // namespace database
