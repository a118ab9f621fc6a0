#include "app/import/database_import.h"

#include "app/import/import_plan.h"
#include "app/import/scripted_schema.h"
#include "app/project_work.h"

#include "database/facts/facts.h"
#include "model/project.h"
#include "storage/id_marks.h"
#include "storage/project_file.h"
#include "storage/text_form.h"

#include <QFileInfo>
#include <QRegularExpression>

#include <algorithm>

namespace app {

namespace {

using zk::ZkBool;

/// Which names the patterns mean.
class table_choice
{
public:
    explicit table_choice(const QStringList & patterns)
    {
        for (const QString & each : patterns) {
            m_patterns.append(QRegularExpression::fromWildcard(each, Qt::CaseInsensitive));
        }
    }

    [[nodiscard]] bool holds(const QString & table) const
    {
        return m_patterns.isEmpty() ||
               std::any_of(m_patterns.begin(), m_patterns.end(), [&table](const QRegularExpression & each) {
                   return each.match(table).hasMatch();
               });
    }

private:
    QList<QRegularExpression> m_patterns;
};

/// One import, from the database to the project.
class importing
{
public:
    importing(const database_import_request & request, plugin::statement_source & statements,
              database_import_result & done)
        : m_request(request), m_statements(statements), m_choice(request.tables), m_done(done)
    {
    }

    ZkBool run()
    {
        ZkBool result = readSchema(m_request.from, m_held);
        if (result) {
            result = checkChoice();
        }
        if (result) {
            result = existingProject(m_request.projectFile, m_existing);
        }
        if (result) {
            result = prepare();
        }
        if (!result) {
            return result;
        }
        result = m_request.isPlan ? plan() : store();
        return result ? tellRest() : result;
    }

private:
    [[nodiscard]] ZkBool checkChoice() const
    {
        const auto & tables = m_held.found.tables;
        const bool isAny = std::any_of(tables.begin(), tables.end(), [this](const auto & each) {
            return m_choice.holds(each.second.name);
        });
        return isAny ? ZkBool::success()
                     : ZkBool::failure(QStringLiteral("%1: no table is called as --tables says; there are %2")
                                           .arg(m_held.name, tableNames()));
    }

    [[nodiscard]] QString tableNames() const
    {
        constexpr qsizetype shown = 10;
        QStringList names;
        for (const auto & [key, table] : m_held.found.tables) {
            names += table.name;
        }
        return names.size() <= shown ? names.join(QStringLiteral(", "))
                                     : names.mid(0, shown).join(QStringLiteral(", ")) +
                                           QStringLiteral(" and %1 more").arg(names.size() - shown);
    }

    /// Asks what depends on the settings of the project, which nobody may read while it is written.
    [[nodiscard]] ZkBool prepare()
    {
        QList<std::pair<QString, QString>> mapping;
        const auto settings = m_existing ? m_existing : std::make_shared<model::project>(1);
        ZkBool result = mappingOf(m_statements, settings, m_held.known->scripts, mapping);
        if (result && m_existing) {
            result = scriptedSchema(m_statements, m_existing, *m_held.known, m_meant.emplace());
        }
        m_types = std::make_unique<check::mapped_types>(*m_held.known, mapping);
        return result;
    }

    /// Makes the model that follows `existing`.
    [[nodiscard]] ZkBool merge(const model::project * existing, model::project & next)
    {
        model::project former(1);
        check::schema_import import{m_held.found,
                                    *m_held.known,
                                    *m_types,
                                    m_meant,
                                    [this](const QString & table) { return m_choice.holds(table); },
                                    m_request.tellsLinks,
                                    {}};
        if (existing) {
            // A copy, since the objects are taken apart.
            const ZkBool copied =
                storage::text_form::read(storage::text_form::write(*existing), m_held.name, nullptr, former);
            if (!copied) {
                return copied;
            }
            const storage::id_marks marks = storage::marksOf(*existing);
            import.ids = {marks.entity + 1, marks.property + 1, marks.relationship + 1};
        } else {
            former.setName(QFileInfo(m_request.projectFile).completeBaseName());
        }
        m_done.renames = check::mergeSchema(import, former, next);
        return storage::text_form::follow(next, m_held.name, existing);
    }

    [[nodiscard]] ZkBool plan()
    {
        m_next = std::make_shared<model::project>(1);
        const ZkBool merged = merge(m_existing.get(), *m_next);
        if (merged) {
            m_done.plan = planOf(m_request.projectFile, m_existing, m_held.name, m_next);
            if (m_existing) {
                m_next->setFileName(m_request.projectFile); // whose settings count
            }
        }
        return merged;
    }

    [[nodiscard]] ZkBool store()
    {
        const QSqlError error = storage::project_file::replace(
            m_request.projectFile, [this](const model::project * existing, model::project & next) {
                const ZkBool merged = merge(existing, next);
                return merged ? QSqlError()
                              : QSqlError(QString(), merged.getDesc(), QSqlError::StatementError);
            });
        return error.isValid() ? ZkBool::failure(error.text()) : openProject(m_request.projectFile, m_next);
    }

    /// Compares what the scripts of the model make with what is there.
    [[nodiscard]] ZkBool tellRest()
    {
        database::catalogue made;
        const ZkBool result = scriptedSchema(m_statements, m_next, *m_held.known, made);
        const auto isSelected = [this](const QString & table) { return m_choice.holds(table); };
        m_done.leftOut = madeOtherwise(m_held, made, isSelected);
        for (const database::left_out & each : m_held.leftOut) {
            if (each.table.isEmpty() || isSelected(each.table)) {
                m_done.leftOut.append(each);
            }
        }
        std::stable_sort(
            m_done.leftOut.begin(), m_done.leftOut.end(),
            [](const database::left_out & a, const database::left_out & b) { return a.table < b.table; });
        m_done.projectName = m_next->getName();
        m_done.entities = m_next->getListOfAllEntities()->count();
        return result;
    }

    const database_import_request & m_request;
    plugin::statement_source & m_statements;
    table_choice m_choice;
    database_import_result & m_done;
    held_schema m_held;
    std::shared_ptr<model::project> m_existing; ///< null for a new project
    std::shared_ptr<model::project> m_next;
    std::optional<database::catalogue> m_meant; ///< what the scripts of the existing one make
    std::unique_ptr<check::mapped_types> m_types;
};

} // namespace

database_import_result importDatabase(const database_import_request & request,
                                      plugin::statement_source & statements)
{
    database_import_result done;
    done.result = importing(request, statements, done).run();
    return done;
}

QStringList renameLines(const std::vector<check::possible_rename> & renames, bool isPlan)
{
    QStringList lines;
    for (const check::possible_rename & each : renames) {
        const bool isEntity = each.kind == model::object_kind::entity;
        const QString what = isEntity ? QStringLiteral("entity") : QStringLiteral("property");
        QString line = QStringLiteral("Possible rename: %1 (%2 %3) is gone, %4 is new; if it was renamed, ")
                           .arg(each.former, what, QString::number(each.formerId), each.current);
        if (isPlan) {
            line +=
                QStringLiteral("first give %1 %2 the %3 \"%4\" in the text (korvane dump) and import that")
                    .arg(what, QString::number(each.formerId),
                         isEntity ? QStringLiteral("tableName") : QStringLiteral("columnName"),
                         isEntity ? each.current : each.current.section(QLatin1Char('.'), -1));
        } else {
            line += QStringLiteral("write in the text (korvane dump) %1 for %2 %3")
                        .arg(QString::number(each.formerId), what, QString::number(each.id));
            QStringList properties;
            for (const auto & [former, id] : each.properties) {
                properties += QStringLiteral("%1 for %2").arg(former).arg(id);
            }
            line += properties.isEmpty()
                        ? QString()
                        : QStringLiteral(", and of its properties ") + properties.join(QStringLiteral(", "));
            line += QStringLiteral(", and import that");
        }
        lines += line;
    }
    return lines;
}

} // namespace app
