#pragma once

#include <QList>
#include <QRegularExpression>
#include <QString>
#include <QStringList>

#include <memory>

namespace syntax {

struct syntax_error
{
    QString file;
    int line = 0;
    QString text;
};

/// A kind of right statement that the parser rejects.
struct misjudgement
{
    /// Matches one whole statement.
    QRegularExpression statement;
    /// What stands in for it, so that the parser reads the rest of the script; \1 and so on are the captures.
    QString replacement;
};

/// An independent parser of one database's language.
class syntax_checker
{
public:
    virtual ~syntax_checker() = default;

    /// Parses files and gives all errors found; false, with the reason, when the parser did not run.
    virtual bool check(const QStringList & files, QList<syntax_error> & errors, QString & why) const = 0;
    [[nodiscard]] virtual QList<misjudgement> misjudgements() const = 0;
    /// Wrong statements, each of which the parser must reject.
    [[nodiscard]] virtual QStringList wrongStatements() const = 0;
};

/// The parser for Oracle; null, with the reason, when it is not installed.
[[nodiscard]] std::unique_ptr<syntax_checker> oracleChecker(QString & why);
/// The parser for SQL Server; null, with the reason, when it is not installed in the version known here.
[[nodiscard]] std::unique_ptr<syntax_checker> mssqlserverChecker(QString & why);

} // namespace syntax
