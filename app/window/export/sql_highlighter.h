#pragma once

#include <QList>
#include <QPalette>
#include <QStringView>
#include <QSyntaxHighlighter>

#include <vector>

namespace app {

/// The databases that quote and comment in different ways.
enum class sql_dialect : quint8
{
    generic,
    sqlite,
    mysql,
    postgresql,
    oracle,
    mssqlserver
};

enum class sql_kind : quint8
{
    keyword,
    type,
    string,
    identifier, ///< in quotes of any sort
    number,
    comment
};

/// A stretch of a line.
struct sql_part
{
    int start;
    int length;
    sql_kind kind;

    bool operator==(const sql_part &) const = default;
};

/// The database of a script by the name of its file ("shop_mysql_db_schema_full.sql"); generic where the name
/// tells none.
[[nodiscard]] sql_dialect sqlDialectOf(const QString & fileName);

/// Reads one line, without its line end. `state` is what the line before it returned, 0 for the first line.
/// Strings, names in "" and ``, and comments go on over line ends; names in [] do not.
/// @param parts takes what has a colour, in order; null when only the state is wanted, which is faster
/// @return the state at the end of the line
int sqlScan(QStringView line, sql_dialect dialect, int state, QList<sql_part> * parts);

/// Whether a statement that begins on this line takes values or a table away.
[[nodiscard]] bool destroysData(const QString & line);

/// The colour of `kind`, legible on the base colour of `palette`.
[[nodiscard]] QColor sqlColor(sql_kind kind, const QPalette & palette);

/// Colours SQL, but only those lines that it was asked for: a script may have hundreds of thousands.
///
/// Of a line only the first LongestColored characters are coloured: more would be slow to draw each time.
class sql_highlighter : public QSyntaxHighlighter
{
    Q_OBJECT

public:
    static constexpr int LongestColored = 50'000;

    /// @param document still empty, so that its text is read when it comes, not later by a timer
    sql_highlighter(QTextDocument * document, sql_dialect dialect, const QPalette & palette);

    /// Takes other colours; every line has to be asked for again.
    void setPalette(const QPalette & palette);
    /// Colours the lines `first` to `last`, counted from 0, as far as they are not coloured.
    void colorLines(int first, int last);

protected:
    void highlightBlock(const QString & text) override;

private:
    QPalette m_palette;
    std::vector<bool> m_colored; ///< by line; shorter than the document when the rest is not coloured
    sql_dialect m_dialect;
};

} // namespace app
