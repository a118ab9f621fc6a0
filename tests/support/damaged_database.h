#pragma once

#include "support/project_support.h"

#include <QByteArray>
#include <QString>

namespace support {

/// Where the first page of a table lies in the file of a database, in bytes, and the size of a page.
struct page_place
{
    qsizetype begin = 0;
    qsizetype size = 0;
};

inline page_place firstPageOf(const QString & file, const QString & table)
{
    const auto ask = [&file](const QString & statement) {
        return run("sqlite3", {file, statement}).out.trimmed().toInt();
    };
    const qsizetype size = ask("PRAGMA page_size");
    return {(ask("SELECT rootpage FROM sqlite_master WHERE name = '" + table + "'") - 1) * size, size};
}

/// Makes the first page of a table one that no table can have.
inline bool spoilTable(const QString & file, const QString & table)
{
    const page_place page = firstPageOf(file, table);
    QByteArray bytes = bytesOf(file);
    return page.begin > 0 && bytes.size() >= page.begin + page.size &&
           writeBytes(file, bytes.replace(page.begin, page.size, QByteArray(page.size, '\xff')));
}

/// Swaps the first two rows of a table in the file of a database, as a flipped disk block might. False when
/// the table has not got two rows in one page.
inline bool swapRows(const QString & file, const QString & table)
{
    const auto [page, pageSize] = firstPageOf(file, table);
    QByteArray bytes = bytesOf(file);
    constexpr char leafOfATable = 13;
    constexpr qsizetype rowCountAt = 4; // its low byte
    constexpr qsizetype firstPointerAt = 8;
    if (page < 0 || bytes.size() < page + pageSize || bytes.at(page) != leafOfATable ||
        bytes.at(page + rowCountAt) < 2) {
        return false;
    }
    const QByteArray first = bytes.mid(page + firstPointerAt, 2);
    const QByteArray second = bytes.mid(page + firstPointerAt + 2, 2);
    bytes.replace(page + firstPointerAt, 4, second + first);
    return writeBytes(file, bytes);
}

} // namespace support
