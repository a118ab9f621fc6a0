#include "check/view/schema_difference.h"

#include <QSet>

#include <algorithm>
#include <iterator>
#include <map>

namespace check {

namespace {

QStringList columnsOf(const std::vector<database::key_part> & parts)
{
    QStringList columns;
    for (const database::key_part & each : parts) {
        columns += each.column;
    }
    return columns;
}

QStringList columnsOf(const database::index & of)
{
    return columnsOf(of.parts);
}

QStringList columnsOf(const database::foreign_key & of)
{
    return of.columns;
}

/// What tells indexes apart beside their names.
QString wordsOf(const database::index & of)
{
    QStringList parts;
    for (const database::key_part & each : of.parts) {
        parts += each.prefix > 0 ? QStringLiteral("%1(%2)").arg(each.column, QString::number(each.prefix))
                                 : each.column;
    }
    return QStringLiteral("%1(%2)").arg(QLatin1String(of.unique ? "UNIQUE " : ""),
                                        parts.join(QStringLiteral(", ")));
}

QString wordsOf(const database::foreign_key & of)
{
    return QStringLiteral("(%1) → %2 (%3)")
        .arg(of.columns.join(QStringLiteral(", ")), of.target, of.targetColumns.join(QStringLiteral(", ")));
}

QString wordsOf(const std::optional<database::primary_key> & of)
{
    return of ? QStringLiteral("(%1)").arg(columnsOf(of->parts).join(QStringLiteral(", "))) : QString();
}

/// Compares one table that both have.
class table_comparison
{
public:
    table_comparison(const database::table & expected, const database::table & found,
                     std::vector<schema_difference> & told)
        : m_expected(expected), m_found(found), m_told(told)
    {
    }

    void compare()
    {
        compareColumns();
        compareKeys();
        compareIndexes();
        compareForeignKeys();
        compareNames();
    }

private:
    void tell(difference_kind kind, const QStringList & columns, const QString & expected,
              const QString & found, const QString & expectedName = {}, const QString & foundName = {})
    {
        m_told.push_back({kind, m_expected.name, columns, expected, found, expectedName, foundName});
    }

    static const database::column * find(const database::table & in, const QString & name)
    {
        const auto found = std::find_if(in.columns.begin(), in.columns.end(),
                                        [&](const database::column & each) { return each.name == name; });
        return found == in.columns.end() ? nullptr : &*found;
    }

    void compareColumns()
    {
        for (const database::column & each : m_expected.columns) {
            const database::column * const other = find(m_found, each.name);
            if (other == nullptr) {
                tell(difference_kind::column_missing, {each.name}, each.type, {});
                continue;
            }
            if (each.type != other->type) {
                tell(difference_kind::type, {each.name}, each.type, other->type);
            }
            if (each.notNull != other->notNull) {
                tell(difference_kind::null, {each.name}, nullWords(each), nullWords(*other));
            }
            if (each.counted != other->counted) {
                tell(difference_kind::counter, {each.name}, countWords(each), countWords(*other));
            }
        }
        for (const database::column & each : m_found.columns) {
            if (find(m_expected, each.name) == nullptr) {
                tell(difference_kind::column_left, {each.name}, {}, each.type);
            }
        }
        compareOrder();
    }

    static QString nullWords(const database::column & of)
    {
        return of.notNull ? QStringLiteral("NOT NULL") : QStringLiteral("NULL");
    }
    static QString countWords(const database::column & of)
    {
        return of.counted ? QStringLiteral("auto-increment") : QStringLiteral("not auto-increment");
    }

    void compareOrder()
    {
        const auto namesIn = [](const database::table & in, const database::table & also) {
            QStringList names;
            for (const database::column & each : in.columns) {
                if (find(also, each.name) != nullptr) {
                    names += each.name;
                }
            }
            return names;
        };
        const QStringList expected = namesIn(m_expected, m_found);
        const QStringList found = namesIn(m_found, m_expected);
        if (expected != found) {
            tell(difference_kind::order, {}, expected.join(QStringLiteral(", ")),
                 found.join(QStringLiteral(", ")));
        }
    }

    void compareKeys()
    {
        const QString expected = wordsOf(m_expected.key);
        const QString found = wordsOf(m_found.key);
        if (expected != found) {
            const std::optional<database::primary_key> & key = m_expected.key ? m_expected.key : m_found.key;
            tell(difference_kind::key, key ? columnsOf(key->parts) : QStringList(), expected, found);
        }
    }

    /// Takes what is expected as it is found out of `left`: of parts that say the same those of one name
    /// first, since a table can have several. What is found by another name is noted.
    /// @return what is expected and not found
    template <class Part>
    std::vector<const Part *> takeFound(const QList<Part> & expected,
                                        std::multimap<QString, const Part *> & left)
    {
        std::vector<const Part *> others;
        for (const Part & each : expected) {
            const auto [begin, end] = left.equal_range(wordsOf(each));
            const auto same =
                std::find_if(begin, end, [&each](const auto & one) { return one.second->name == each.name; });
            if (same == end) {
                others.push_back(&each);
            } else {
                left.erase(same);
            }
        }
        std::vector<const Part *> missing;
        for (const Part * const each : others) {
            const auto same = left.find(wordsOf(*each));
            if (same == left.end()) {
                missing.push_back(each);
                continue;
            }
            addNames(columnsOf(*each), each->name, same->second->name);
            left.erase(same);
        }
        return missing;
    }

    void compareIndexes()
    {
        std::multimap<QString, const database::index *> left;
        for (const database::index & each : m_found.indexes) {
            left.emplace(wordsOf(each), &each);
        }
        for (const database::index * const each : takeFound(m_expected.indexes, left)) {
            tell(each->unique ? difference_kind::unique_missing : difference_kind::index_missing,
                 columnsOf(*each), wordsOf(*each), {}, each->name);
        }
        for (const auto & [words, each] : left) {
            tell(each->unique ? difference_kind::unique_left : difference_kind::index_left, columnsOf(*each),
                 {}, words, {}, each->name);
        }
    }

    void compareForeignKeys()
    {
        std::multimap<QString, const database::foreign_key *> left;
        for (const database::foreign_key & each : m_found.foreignKeys) {
            left.emplace(wordsOf(each), &each);
        }
        tellForeignKeys(takeFound(m_expected.foreignKeys, left), left);
    }

    /// One that has the same columns and leads elsewhere is one difference.
    void tellForeignKeys(const std::vector<const database::foreign_key *> & missing,
                         std::multimap<QString, const database::foreign_key *> & left)
    {
        for (const database::foreign_key * const each : missing) {
            const auto other = std::find_if(left.begin(), left.end(), [&](const auto & one) {
                return one.second->columns == each->columns;
            });
            if (other == left.end()) {
                tell(difference_kind::foreign_key_missing, each->columns, wordsOf(*each), {}, each->name);
                continue;
            }
            tell(difference_kind::foreign_key_target, each->columns, wordsOf(*each), other->first, each->name,
                 other->second->name);
            left.erase(other);
        }
        for (const auto & [words, each] : left) {
            tell(difference_kind::foreign_key_left, each->columns, {}, words, {}, each->name);
        }
    }

    void addNames(const QStringList & columns, const QString & expected, const QString & found)
    {
        if (expected != found) {
            m_names.push_back(
                {difference_kind::names, m_expected.name, columns, expected, found, expected, found});
        }
    }

    void compareNames()
    {
        if (m_expected.key && m_found.key && wordsOf(m_expected.key) == wordsOf(m_found.key)) {
            addNames(columnsOf(m_expected.key->parts), m_expected.key->name, m_found.key->name);
        }
        for (const database::sequence & each : m_expected.sequences) {
            const auto other =
                std::find_if(m_found.sequences.begin(), m_found.sequences.end(),
                             [&](const database::sequence & one) { return one.column == each.column; });
            if (other != m_found.sequences.end()) {
                addNames({each.column}, each.name, other->name);
            }
        }
        m_told.insert(m_told.end(), m_names.begin(), m_names.end());
    }

    const database::table & m_expected;
    const database::table & m_found;
    std::vector<schema_difference> & m_told;
    std::vector<schema_difference> m_names;
};

/// What the kinds of differences are about, in the order of the kinds.
struct kind_subject
{
    difference_kind kind;
    const char * word;
};

constexpr kind_subject Subjects[] = {
    {difference_kind::table_missing, "table"},
    {difference_kind::table_left, "table"},
    {difference_kind::column_missing, "column"},
    {difference_kind::column_left, "column"},
    {difference_kind::type, "type of column"},
    {difference_kind::null, "null of column"},
    {difference_kind::counter, "counter of column"},
    {difference_kind::key, "key of"},
    {difference_kind::index_missing, "index of"},
    {difference_kind::index_left, "index of"},
    {difference_kind::unique_missing, "unique of"},
    {difference_kind::unique_left, "unique of"},
    {difference_kind::foreign_key_missing, "foreign key of"},
    {difference_kind::foreign_key_left, "foreign key of"},
    {difference_kind::foreign_key_target, "target of the foreign key of"},
    {difference_kind::names, "names of"},
    {difference_kind::order, "order of columns of"},
    {difference_kind::sequence_left, "sequence"},
};

} // namespace

QString subjectOf(const schema_difference & of)
{
    const auto * const subject =
        std::find_if(std::begin(Subjects), std::end(Subjects),
                     [&of](const kind_subject & each) { return each.kind == of.kind; });
    const QString word = subject == std::end(Subjects) ? QString() : QString::fromLatin1(subject->word);
    if (of.table.isEmpty()) {
        return word + u' ' + of.found;
    }
    const bool isColumn = word.endsWith(QLatin1String("column"));
    return of.columns.isEmpty() ? QStringLiteral("%1 %2").arg(word, of.table)
           : isColumn
               ? QStringLiteral("%1 %2.%3").arg(word, of.table, of.columns.constFirst())
               : QStringLiteral("%1 %2 (%3)").arg(word, of.table, of.columns.join(QStringLiteral(", ")));
}

void compareTables(const database::table & expected, const database::table & found,
                   std::vector<schema_difference> & told)
{
    if (!(expected == found)) {
        table_comparison(expected, found, told).compare();
    }
}

std::vector<schema_difference> compareSchemas(const database::catalogue & expected,
                                              const database::catalogue & found)
{
    std::vector<schema_difference> told;
    for (const auto & [name, table] : expected.tables) {
        const auto other = found.tables.find(name);
        if (other == found.tables.end()) {
            told.push_back({difference_kind::table_missing, table.name, {}, table.name, {}, {}, {}});
        } else {
            compareTables(table, other->second, told);
        }
    }
    for (const auto & [name, table] : found.tables) {
        if (!expected.tables.contains(name)) {
            told.push_back({difference_kind::table_left, table.name, {}, {}, table.name, {}, {}});
        }
    }
    QSet<QString> sequences;
    for (const database::sequence & each : expected.sequences) {
        sequences.insert(each.name);
    }
    for (const database::sequence & each : found.sequences) {
        if (!sequences.contains(each.name)) {
            told.push_back({difference_kind::sequence_left, {}, {}, {}, each.name, {}, each.name});
        }
    }
    return told;
}

} // namespace check
