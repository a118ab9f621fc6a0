#pragma once

#include <QString>
#include <QStringList>

namespace tools {

/// A column of a table whose rows show objects of one type. The columns of a table are one array, in their
/// order: titles, texts and widths are read from there alone.
template <class Row>
struct table_column
{
    const char * title; ///< to be translated
    QString (*text)(const Row & row);
    bool isLong = false; ///< the text may need more room than there is, and is shown as a tool tip, too
};

/// The titles of `columns`, translated by `translate`.
template <class Columns, class Translate>
QStringList titlesOf(const Columns & columns, const Translate & translate)
{
    QStringList titles;
    for (const auto & column : columns) {
        titles << translate(column.title);
    }
    return titles;
}

/// What `columns` say of `row`.
template <class Columns, class Row>
QStringList textsOf(const Columns & columns, const Row & row)
{
    QStringList texts;
    for (const auto & column : columns) {
        texts << column.text(row);
    }
    return texts;
}

} // namespace tools
