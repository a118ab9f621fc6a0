#include "app/window/export/sql_highlighter.h"

#include <QRegularExpression>
#include <QTextBlock>
#include <QTextDocument>

#include <algorithm>
#include <array>
#include <string_view>

namespace app {

namespace {

// In capitals. Words that are far more often names of columns than keywords are left out.
constexpr std::string_view KeywordText =
    "ACTION ADD AFTER ALL ALTER AND ANY AS ASC AUTHORIZATION AUTOINCREMENT AUTO_INCREMENT BEFORE BEGIN "
    "BETWEEN BY CACHE CASCADE CASE CHANGE CHARSET CHECK CLUSTERED COLLATE COLUMN COMMENT COMMIT "
    "CONSTRAINT CREATE CROSS CURRENT_DATE CURRENT_TIME CURRENT_TIMESTAMP CYCLE DATABASE DECLARE DEFAULT "
    "DEFERRABLE DEFERRED DELETE DELIMITER DESC DISABLE DISTINCT DO DOMAIN DROP DUAL EACH ELSE ELSIF "
    "ENABLE END ENGINE EXCEPTION EXEC EXECUTE EXISTS FALSE FETCH FOR FOREIGN FROM FULL FUNCTION "
    "GENERATED GO GRANT GROUP HAVING IDENTITY IF IGNORE IMMEDIATE IN INCREMENT INDEX INHERITS INITIALLY "
    "INNER INSERT INSTEAD INTERSECT INTO IS JOIN KEY LANGUAGE LEFT LIKE LIMIT LOOP MATERIALIZED MAXVALUE "
    "MERGE MINVALUE MODIFY NATURAL NEXTVAL NO NOCACHE NOCOUNT NOCYCLE NONCLUSTERED NOT NULL OF OFF "
    "OFFSET OIDS ON OR ORDER OUTER OWNED PARTITION PRAGMA PRIMARY PRINT PRIVILEGES PROCEDURE RAISE "
    "REFERENCES REFERENCING RENAME REPLACE RESTRICT RETURN RETURNS REVOKE RIGHT ROLLBACK ROW ROWID "
    "SAVEPOINT SCHEMA SELECT SEQUENCE SET START STORED STRICT TABLE TABLESPACE TEMP TEMPORARY THEN TO "
    "TRANSACTION TRIGGER TRUE TRUNCATE UNION UNIQUE UNSIGNED UPDATE USE USING VALUES VIEW VIRTUAL WHEN "
    "WHERE WHILE WITH WITHOUT ZEROFILL";

constexpr std::string_view TypeText =
    "BFILE BIGINT BIGSERIAL BINARY BINARY_DOUBLE BINARY_FLOAT BIT BLOB BOOL BOOLEAN BYTEA CHAR CHARACTER "
    "CIDR CLOB DATE DATETIME DATETIME2 DATETIMEOFFSET DEC DECIMAL DOUBLE ENUM FLOAT GEOGRAPHY GEOMETRY "
    "HIERARCHYID HSTORE IMAGE INET INT INT2 INT4 INT8 INTEGER INTERVAL JSON JSONB LONGBLOB LONGTEXT "
    "MACADDR MEDIUMBLOB MEDIUMINT MEDIUMTEXT MONEY NCHAR NCLOB NTEXT NUMBER NUMERIC NVARCHAR NVARCHAR2 "
    "PRECISION RAW REAL ROWVERSION SERIAL SMALLDATETIME SMALLINT SMALLMONEY SMALLSERIAL SQL_VARIANT TEXT "
    "TIME TIMESTAMP TIMESTAMPTZ TIMETZ TINYBLOB TINYINT TINYTEXT UNIQUEIDENTIFIER UROWID UUID VARBINARY "
    "VARCHAR VARCHAR2 VARYING XML YEAR";

constexpr std::size_t countWords(std::string_view text)
{
    return static_cast<std::size_t>(std::count(text.begin(), text.end(), ' ')) + 1;
}

/// The words of `text`, sorted.
template <std::size_t Count>
constexpr std::array<std::string_view, Count> words(std::string_view text)
{
    std::array<std::string_view, Count> result;
    for (std::string_view & word : result) {
        const std::size_t length = std::min(text.find(' '), text.size());
        word = text.substr(0, length);
        text.remove_prefix(std::min(length + 1, text.size()));
    }
    std::sort(result.begin(), result.end());
    return result;
}

constexpr auto Keywords = words<countWords(KeywordText)>(KeywordText);
constexpr auto Types = words<countWords(TypeText)>(TypeText);

constexpr int HalfLightness = 128;

/// What a line may begin in. A comment that holds others is Comment + how many of them are open.
enum line_state : int
{
    Plain = 0,
    String,
    DoubleQuoted,
    BackQuoted,
    Comment
};

bool isWordBegin(QChar c)
{
    const char16_t u = c.unicode();
    return (u >= 'a' && u <= 'z') || (u >= 'A' && u <= 'Z') || u == '_' || u == '@' ||
           (u >= 0x80 && c.isLetter());
}

bool isDigit(QChar c)
{
    return c >= QLatin1Char('0') && c <= QLatin1Char('9');
}

/// Whether `c` may be in a number such as 12, 1.5e3 or 0xFF.
bool isInNumber(QChar c)
{
    return isDigit(c) || QStringView(u".xXabcdefABCDEF").contains(c);
}

bool isInWord(QChar c)
{
    return isWordBegin(c) || isDigit(c) || c == QLatin1Char('$') || c == QLatin1Char('#') ||
           (c.unicode() >= 0x80 && (c.isNumber() || c.isMark() || c.isSurrogate()));
}

/// Reads one line from its begin to its end.
class scanner
{
public:
    scanner(QStringView line, sql_dialect dialect, int state, QList<sql_part> * parts)
        : m_line(line), m_pParts(parts), m_iState(state), m_dialect(dialect)
    {
    }

    int run()
    {
        goOn(0);
        while (m_iAt < m_line.size()) {
            step();
        }
        return m_iState;
    }

private:
    [[nodiscard]] QChar at(qsizetype i) const { return i < m_line.size() ? m_line[i] : QChar(); }

    [[nodiscard]] bool isMySql() const { return m_dialect == sql_dialect::mysql; }
    [[nodiscard]] bool hasBrackets() const
    {
        return m_dialect == sql_dialect::mssqlserver || m_dialect == sql_dialect::sqlite ||
               m_dialect == sql_dialect::generic;
    }
    [[nodiscard]] bool nestsComments() const
    {
        return m_dialect == sql_dialect::postgresql || m_dialect == sql_dialect::mssqlserver;
    }

    void report(qsizetype start, sql_kind kind)
    {
        if (m_pParts && m_iAt > start) {
            m_pParts->append({static_cast<int>(start), static_cast<int>(m_iAt - start), kind});
        }
    }

    /// Reads on in what the state tells; what began at `start` is a part up to where it ends.
    void goOn(qsizetype start)
    {
        switch (m_iState) {
        case Plain:
            return;
        case String:
            quoted(start, QLatin1Char('\''), sql_kind::string);
            return;
        case DoubleQuoted:
            quoted(start, QLatin1Char('"'), sql_kind::identifier);
            return;
        case BackQuoted:
            quoted(start, QLatin1Char('`'), sql_kind::identifier);
            return;
        default:
            comment(start);
        }
    }

    void enter(int state, int width)
    {
        const qsizetype start = m_iAt;
        m_iAt += width;
        m_iState = state;
        goOn(start);
    }

    /// A doubled quote needs no care: it ends one part, and begins the next at the same place.
    void quoted(qsizetype start, QChar quote, sql_kind kind)
    {
        const bool escapes = isMySql() && quote != QLatin1Char('`');
        while (m_iAt < m_line.size()) {
            const QChar c = m_line[m_iAt++];
            if (c == quote) {
                m_iState = Plain;
                break;
            }
            if (escapes && c == QLatin1Char('\\') && m_iAt < m_line.size()) {
                ++m_iAt;
            }
        }
        report(start, kind);
    }

    void comment(qsizetype start)
    {
        while (m_iAt < m_line.size() && m_iState != Plain) {
            const QChar c = m_line[m_iAt++];
            if (c == QLatin1Char('*') && at(m_iAt) == QLatin1Char('/')) {
                ++m_iAt;
                m_iState = m_iState == Comment ? static_cast<int>(Plain) : m_iState - 1;
            } else if (c == QLatin1Char('/') && at(m_iAt) == QLatin1Char('*') && nestsComments()) {
                ++m_iAt;
                ++m_iState;
            }
        }
        report(start, sql_kind::comment);
    }

    void step()
    {
        const QChar c = m_line[m_iAt];
        const QChar next = at(m_iAt + 1);
        if (isWordBegin(c)) {
            word();
        } else if (isDigit(c)) {
            number();
        } else if (c == QLatin1Char('\'')) {
            enter(String, 1);
        } else if (c == QLatin1Char('"')) {
            enter(DoubleQuoted, 1);
        } else if (c == QLatin1Char('`')) {
            enter(BackQuoted, 1);
        } else if (c == QLatin1Char('/') && next == QLatin1Char('*')) {
            enter(Comment, 2);
        } else if ((c == QLatin1Char('-') && next == c) || (c == QLatin1Char('#') && isMySql())) {
            const qsizetype start = m_iAt;
            m_iAt = m_line.size();
            report(start, sql_kind::comment);
        } else if (c == QLatin1Char('[') && hasBrackets()) {
            bracketed();
        } else {
            ++m_iAt;
        }
    }

    void bracketed()
    {
        const qsizetype start = m_iAt;
        const qsizetype end = m_line.indexOf(QLatin1Char(']'), start);
        m_iAt = (end < 0 ? start : end) + 1;
        if (end >= 0) {
            report(start, sql_kind::identifier);
        }
    }

    void number()
    {
        const qsizetype start = m_iAt;
        bool isNumber = true; // but "1st_price" is a name where names may begin so
        for (; m_iAt < m_line.size() && (isInWord(m_line[m_iAt]) || m_line[m_iAt] == QLatin1Char('.'));
             ++m_iAt) {
            isNumber = isNumber && isInNumber(m_line[m_iAt]);
        }
        if (isNumber) {
            report(start, sql_kind::number);
        }
    }

    void word()
    {
        const qsizetype start = m_iAt;
        while (m_iAt < m_line.size() && isInWord(m_line[m_iAt])) {
            ++m_iAt;
        }
        // The parts of a name with dots are names, however they are spelled.
        const bool isDotted =
            at(m_iAt) == QLatin1Char('.') || (start > 0 && m_line[start - 1] == QLatin1Char('.'));
        if (m_pParts && !isDotted) {
            reportWord(start);
        }
    }

    void reportWord(qsizetype start)
    {
        std::array<char, 20> upper{};
        const QStringView text = m_line.mid(start, m_iAt - start);
        if (text.size() > static_cast<qsizetype>(upper.size())) {
            return;
        }
        std::transform(text.begin(), text.end(), upper.begin(),
                       [](QChar c) { return QChar(c.toUpper()).toLatin1(); });
        const std::string_view key(upper.data(), static_cast<std::size_t>(text.size()));
        if (std::binary_search(Keywords.begin(), Keywords.end(), key)) {
            report(start, sql_kind::keyword);
        } else if (std::binary_search(Types.begin(), Types.end(), key)) {
            report(start, sql_kind::type);
        }
    }

    QStringView m_line;
    QList<sql_part> * m_pParts;
    qsizetype m_iAt = 0;
    int m_iState;
    sql_dialect m_dialect;
};

} // namespace

sql_dialect sqlDialectOf(const QString & fileName)
{
    static constexpr std::array names{std::pair{"_sqlite_db_schema", sql_dialect::sqlite},
                                      std::pair{"_mysql_db_schema", sql_dialect::mysql},
                                      std::pair{"_postgresql_db_schema", sql_dialect::postgresql},
                                      std::pair{"_oracle_db_schema", sql_dialect::oracle},
                                      std::pair{"_mssqlserver_db_schema", sql_dialect::mssqlserver}};
    for (const auto & [name, dialect] : names) {
        if (fileName.contains(QLatin1String(name))) {
            return dialect;
        }
    }
    return sql_dialect::generic;
}

int sqlScan(QStringView line, sql_dialect dialect, int state, QList<sql_part> * parts)
{
    return scanner(line, dialect, state, parts).run();
}

bool destroysData(const QString & line)
{
    // Indexes and constraints hold no values.
    static const QRegularExpression form(
        QStringLiteral(
            "^\\s*(?:DROP\\s+TABLE|TRUNCATE|DELETE\\s+FROM|ALTER\\s+TABLE\\s+.+\\sDROP\\s+COLUMN)\\b"),
        QRegularExpression::CaseInsensitiveOption);
    return form.match(line.left(sql_highlighter::LongestColored)).hasMatch();
}

QColor sqlColor(sql_kind kind, const QPalette & palette)
{
    const bool isDark = palette.color(QPalette::Base).lightness() < HalfLightness;
    switch (kind) {
    case sql_kind::keyword:
        return isDark ? QColor(0x7f, 0xb4, 0xff) : QColor(0x0b, 0x4f, 0xa8);
    case sql_kind::type:
        return isDark ? QColor(0x6f, 0xd3, 0xc1) : QColor(0x00, 0x69, 0x5c);
    case sql_kind::string:
        return isDark ? QColor(0xf0, 0xa6, 0x7a) : QColor(0x9c, 0x2b, 0x00);
    case sql_kind::identifier:
        return isDark ? QColor(0xc9, 0xa7, 0xff) : QColor(0x6a, 0x3d, 0x9a);
    case sql_kind::number:
        return isDark ? QColor(0xe6, 0xc5, 0x6b) : QColor(0x7a, 0x52, 0x00);
    case sql_kind::comment:
        return isDark ? QColor(0x9a, 0xa8, 0x9a) : QColor(0x5a, 0x66, 0x5a);
    }
    return {};
}

sql_highlighter::sql_highlighter(QTextDocument * document, sql_dialect dialect, const QPalette & palette)
    : QSyntaxHighlighter(document), m_palette(palette), m_dialect(dialect)
{
    (void)document->documentLayout(); // without one a document does not tell of its changes
}

void sql_highlighter::setPalette(const QPalette & palette)
{
    m_palette = palette;
    m_colored.clear();
}

void sql_highlighter::colorLines(int first, int last)
{
    const int end = std::min(last + 1, document()->blockCount());
    if (m_colored.size() < static_cast<std::size_t>(std::max(0, end))) {
        m_colored.resize(static_cast<std::size_t>(end));
    }
    QTextBlock block = document()->findBlockByNumber(std::max(0, first));
    for (; block.isValid() && block.blockNumber() < end; block = block.next()) {
        std::vector<bool>::reference isColored = m_colored[static_cast<std::size_t>(block.blockNumber())];
        if (!isColored) {
            isColored = true;
            rehighlightBlock(block);
        }
    }
}

void sql_highlighter::highlightBlock(const QString & text)
{
    const int before = std::max<int>(Plain, previousBlockState());
    const auto number = static_cast<std::size_t>(currentBlock().blockNumber());
    QList<sql_part> parts;
    const bool isAskedFor = number < m_colored.size() && m_colored[number];
    setCurrentBlockState(sqlScan(text, m_dialect, before, isAskedFor ? &parts : nullptr));
    for (const sql_part & part : std::as_const(parts)) {
        if (part.start >= LongestColored) {
            break;
        }
        QTextCharFormat format;
        format.setForeground(sqlColor(part.kind, m_palette));
        setFormat(part.start, std::min(part.length, LongestColored - part.start), format);
    }
}

} // namespace app
