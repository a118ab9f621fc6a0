#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>

#include <map>
#include <vector>

/// The page of a rule, docs/rules/CODE.md, taken apart: its models are run and its claims compared.
namespace check_pages {

/// What a database does, as the page says it.
struct claim
{
    QStringList databases;
    QString statement; ///< empty for a change that no statement follows
    QString what;      ///< "refused", "refused with rows", "runs", "silent", "told"
    QString error;     ///< the server's code, of what is refused
    QString words;     ///< how its message begins; the message of the finding that is told
};

/// Statements that the page wants to be run.
struct own_statements
{
    QString when; ///< "before", "after", "instead"
    QString database;
    QStringList statements;
};

struct page
{
    QString code;
    QString name;
    QString title;
    std::map<QString, QByteArray> versions; ///< "v1" …
    std::map<QString, QByteArray> remedies; ///< versions that take the place of those of the same name
    QByteArray script;                      ///< custom script of the example; empty for none
    QByteArray remedyScript;                ///< the one that takes its place; empty for none
    QByteArray acceptance;                  ///< acceptance file of the example; empty for none
    QByteArray remedyAcceptance;            ///< the one that takes its place; empty for none
    QStringList settings;                   ///< lines "option value" that are stored before the last version
    QStringList remedySettings;             ///< that are stored in their place; empty for none
    std::vector<claim> claims;
    std::vector<own_statements> statements;
    bool relationships = true;
    QString wrong; ///< why the page cannot be read; empty when it can
};

[[nodiscard]] page readPage(const QString & file);

} // namespace check_pages
