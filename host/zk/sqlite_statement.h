#pragma once

#include <QByteArray>
#include <QSqlError>
#include <QString>

#include <memory>
#include <string_view>
#include <vector>

struct sqlite3_stmt;
struct sqlite3_value;

namespace zk::sqlite {

class connection;

/// A value of a row.
class cell
{
public:
    enum class kind
    {
        integer,
        text,
        null,
        other ///< a floating-point number or a blob
    };

    explicit cell(sqlite3_value * value) : m_pValue(value) {}

    [[nodiscard]] kind kindOf() const;
    [[nodiscard]] bool isNull() const { return kindOf() == kind::null; }
    /// An integer as it is; anything else as the engine converts it.
    [[nodiscard]] qint64 number() const;
    /// UTF-8, as the engine converts it if it is no text; no data at all when there is not enough memory.
    [[nodiscard]] std::string_view bytes() const;
    [[nodiscard]] QString text() const;
    /// Whether the value is the same, its kind included.
    friend bool operator==(const cell & a, const cell & b);

private:
    friend class statement;

    sqlite3_value * m_pValue;
};

/// A prepared statement of the engine itself, for where rows are many: values are neither copied into
/// variants nor turned into another encoding on their way.
class statement
{
public:
    /// Prepares `sql` on the open `file`, which must outlive the statement; see error().
    statement(const connection & file, const QString & sql);
    ~statement();
    statement(const statement &) = delete;
    statement & operator=(const statement &) = delete;

    /// Sets the value at `index` (0-based) for the next run.
    void bind(int index, qint64 number);
    void bind(int index, const QString & text);
    void bindNull(int index);
    void bind(int index, const cell & value);

    /// Runs the statement, which gives no rows, and makes it ready for another run.
    bool run();
    /// Goes to the next row; false at the end and on a failure.
    bool next();

    [[nodiscard]] int columnCount() const;
    /// The value of `column` (0-based) in the row; valid until the next one.
    [[nodiscard]] cell at(int column) const;

    /// The first failure, that of the preparation included, as "file: reason"; invalid when all went well.
    [[nodiscard]] const QSqlError & error() const { return m_error; }

private:
    void check(int result);

    const connection & m_connection;
    std::unique_ptr<sqlite3_stmt, int (*)(sqlite3_stmt *)> m_statement;
    std::vector<QByteArray> m_lstText; ///< what is bound, as long as the engine may read it
    QSqlError m_error;
};

} // namespace zk::sqlite
