#include "support/program.h"
#include "syntax/syntax_checker.h"

#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QStandardPaths>

namespace syntax {

namespace {

const QString ParserFolder = QStringLiteral(KORVANE_BUILD_DIR "/tests/syntax/parser");

class oracle_checker : public syntax_checker
{
public:
    bool check(const QStringList & files, QList<syntax_error> & errors, QString & why) const override
    {
        const support::program_result result = support::runProcess(
            QStringLiteral("node"),
            QStringList{QStringLiteral(KORVANE_SOURCE_DIR "/tests/syntax/plsql_errors.mjs"), ParserFolder} +
                files,
            {}, {});
        const QJsonDocument found = QJsonDocument::fromJson(result.output);
        if (result.status != 0 || !found.isArray()) {
            why = QString::fromUtf8(result.errors);
            return false;
        }
        for (const QJsonValue & error : found.array()) {
            errors.append({error[QStringLiteral("file")].toString(), error[QStringLiteral("line")].toInt(),
                           error[QStringLiteral("text")].toString().left(120)});
        }
        return true;
    }

    QList<misjudgement> misjudgements() const override
    {
        return {
            // DESCRIPTION is a free name in Oracle, the parser takes it for a keyword.
            {QRegularExpression(QStringLiteral("^(CREATE TABLE \\w+ \\(.*)\\bdescription\\b(.*;)$"),
                                QRegularExpression::MultilineOption),
             QStringLiteral("\\1description_text\\2")},
        };
    }

    QStringList wrongStatements() const override
    {
        return {
            QStringLiteral("CREATE TBL t_venue (id INTEGER NOT NULL);"),
            QStringLiteral("CREATE TABLE t_venue (id INTEGER NOT NULL,);"),
            QStringLiteral("CREATE TABLE t_venue ();"),
            QStringLiteral("CREATE TABLE t_venue (id INTEGER NOT NULL PRIMARY KEY AUTOINCREMENT);"),
            QStringLiteral("CREATE TABLE t_venue (x|y INTEGER);"),
            QStringLiteral("CREATE TABLE t_venue (id INTEGER, CONSTRAINT pk PRIMARY KEY id);"),
            QStringLiteral("CREATE SEQUENCE seq_inc_t_venue START 1 INCREMENT BY 1;"),
            QStringLiteral(
                "CREATE OR REPLACE TRIGGER trigger_inc_t_venue\n\tBEFORE INSERT ON t_venue\n\tFOR EACH "
                "ROW\n\tBEGIN\n\t\tIF ( :NEW.id = 0 )\n\t\tEND IF;\n\tEND;\n\t/\n"),
            QStringLiteral("ALTER TABLE t_venue ADD COLUMN city CLOB;"),
            QStringLiteral("ALTER TABLE t_venue RENAME COLUMN city town;"),
            QStringLiteral("ALTER TABLE t_venue ADD CONSTRAINT fk FOREIGN KEY c REFERENCES t_city (id);"),
            QStringLiteral("CREATE INDEX idx_t_venue_city ON t_venue city;"),
            QStringLiteral("DROP INDEX idx_t_venue_city ON t_venue;"),
            QStringLiteral("DROP TBL t_venue;"),
        };
    }
};

} // namespace

std::unique_ptr<syntax_checker> oracleChecker(QString & why)
{
    if (QStandardPaths::findExecutable(QStringLiteral("node")).isEmpty() ||
        !QFile::exists(ParserFolder + QStringLiteral("/installed.json"))) {
        why = QStringLiteral("node and the parser for Oracle are not installed");
        return nullptr;
    }
    return std::make_unique<oracle_checker>();
}

} // namespace syntax
