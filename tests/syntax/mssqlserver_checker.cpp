#include "support/program.h"
#include "syntax/syntax_checker.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

namespace syntax {

namespace {

const QString Parser = QStringLiteral("sqlfluff");
// Another version misjudges other statements.
const QByteArray Version = "sqlfluff, version 1.4.5";

class mssqlserver_checker : public syntax_checker
{
public:
    bool check(const QStringList & files, QList<syntax_error> & errors, QString & why) const override
    {
        // No way to ask for no rule at all; the parse errors are picked out of what one cheap rule adds.
        const QStringList options{QStringLiteral("lint"),
                                  QStringLiteral("--config"),
                                  QStringLiteral(KORVANE_SOURCE_DIR "/tests/syntax/sqlfluff.cfg"),
                                  QStringLiteral("--ignore-local-config"),
                                  QStringLiteral("--disable-progress-bar"),
                                  QStringLiteral("--rules"),
                                  QStringLiteral("L001"),
                                  QStringLiteral("--format"),
                                  QStringLiteral("json")};
        const support::program_result result = support::runProcess(Parser, options + files, {}, {});
        const QJsonDocument found = QJsonDocument::fromJson(result.output);
        if ((result.status != 0 && result.status != 1) || !found.isArray()) {
            why = QString::fromUtf8(result.errors + result.output);
            return false;
        }
        for (const QJsonValue & file : found.array()) {
            for (const QJsonValue & violation : file[QStringLiteral("violations")].toArray()) {
                if (violation[QStringLiteral("code")].toString() != QStringLiteral("L001")) {
                    errors.append({file[QStringLiteral("filepath")].toString(),
                                   violation[QStringLiteral("line_no")].toInt(),
                                   violation[QStringLiteral("description")].toString()});
                }
            }
        }
        return true;
    }

    QList<misjudgement> misjudgements() const override
    {
        return {
            // The parser knows only the other form of the statement, with ON.
            {QRegularExpression(QStringLiteral("^DROP INDEX (\\w+)\\.(\\w+);$"),
                                QRegularExpression::MultilineOption),
             QStringLiteral("DROP INDEX \\2 ON \\1;")},
        };
    }

    QStringList wrongStatements() const override
    {
        return {
            QStringLiteral("CREATE TBL t_venue (id INT NOT NULL);"),
            QStringLiteral("CREATE TABLE t_venue (id INT NOT);"),
            QStringLiteral("CREATE TABLE t_venue ();"),
            QStringLiteral("CREATE TABLE t_venue (id INT NOT NULL PRIMARY KEY AUTOINCREMENT);"),
            QStringLiteral("CREATE TABLE t_venue (x|y INT);"),
            QStringLiteral("CREATE TABLE order (id INT);"),
            QStringLiteral("CREATE TABLE t_venue (id INT, CONSTRAINT pk PRIMARY KEY id);"),
            QStringLiteral("ALTER TABLE t_venue DROP city;"),
            QStringLiteral("ALTER TABLE t_venue RENAME COLUMN city TO town;"),
            QStringLiteral("RENAME TABLE t_venue TO t_place;"),
            QStringLiteral("ALTER TABLE t_venue ADD CONSTRAINT fk FOREIGN KEY c REFERENCES t_city (id);"),
            QStringLiteral("CREATE INDEX idx_t_venue_city ON t_venue city;"),
            QStringLiteral("DROP TBL t_venue;"),
        };
    }
};

} // namespace

std::unique_ptr<syntax_checker> mssqlserverChecker(QString & why)
{
    const support::program_result result = support::runProcess(Parser, {QStringLiteral("--version")}, {}, {});
    if (result.output.trimmed() != Version) {
        why = QStringLiteral("The parser for SQL Server, %1, is not installed")
                  .arg(QString::fromLatin1(Version));
        return nullptr;
    }
    return std::make_unique<mssqlserver_checker>();
}

} // namespace syntax
