#pragma once

#include <QList>
#include <QString>
#include <QStringList>

#include <map>
#include <optional>
#include <vector>

/// What is known about databases: what they hold, what they take, and what a statement does to them.
namespace database {

struct column
{
    QString name;
    QString type; ///< as declared, or as the server shows it once the catalogue is in normal form
    bool notNull = false;
    bool counted = false; ///< the database gives the value when a row brings none

    bool operator==(const column &) const = default;
};

/// A column in a key or in an index.
struct key_part
{
    QString column;
    int prefix = 0; ///< how many characters of the value count; 0 for all of it

    bool operator==(const key_part &) const = default;
};

struct primary_key
{
    QString name; ///< empty where the database gives keys no name of their own
    std::vector<key_part> parts;

    bool operator==(const primary_key &) const = default;
};

struct index
{
    QString name; ///< empty where the database numbers it when it shows it
    std::vector<key_part> parts;
    bool unique = false;
    bool madeByForeignKey = false; ///< gives way to an index that is asked for
    bool isConstraint = false;     ///< it can be dropped as a constraint, and as nothing else

    bool operator==(const index &) const = default;
};

struct foreign_key
{
    QString name;
    QStringList columns;
    QString target; ///< table that it refers to, which need not exist on every database
    QStringList targetColumns;

    bool operator==(const foreign_key &) const = default;
};

/// Gives the values of a counted column.
struct sequence
{
    QString name;
    QString column; ///< that it belongs to and goes with; empty when it stands alone

    bool operator==(const sequence &) const = default;
};

struct trigger
{
    QString name;
    QStringList counted; ///< columns that its text names and gives their values

    bool operator==(const trigger &) const = default;
};

struct table
{
    QString name;
    // Lists, since a copy of one shares what it holds until one of both changes.
    QList<column> columns;
    std::optional<primary_key> key;
    QList<index> indexes;
    QList<foreign_key> foreignKeys;
    QList<sequence> sequences; ///< those of its columns
    QList<trigger> triggers;

    bool operator==(const table &) const = default;
};

/// All that a database, or a schema of it, holds. A value: copies are independent of each other.
struct catalogue
{
    std::map<QString, table> tables; ///< by the name as the database tells tables apart
    QList<sequence> sequences;       ///< those that belong to no column

    bool operator==(const catalogue &) const = default;
};

/// The catalogue as sorted lines, one an object, such as "column a.id int(11) NOT NULL counted". Two
/// catalogues of one database that hold the same have the same lines, whatever order things were made in.
[[nodiscard]] QStringList linesOf(const catalogue & held);

struct catalogue_difference
{
    QStringList onlyFirst;
    QStringList onlySecond;

    [[nodiscard]] bool isEmpty() const { return onlyFirst.isEmpty() && onlySecond.isEmpty(); }
    bool operator==(const catalogue_difference &) const = default;
};

/// The lines that one catalogue has and the other has not. Both are to be in normal form.
[[nodiscard]] catalogue_difference difference(const catalogue & first, const catalogue & second);

} // namespace database
