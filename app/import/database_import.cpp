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

/// Whether there is a table of such a name.
ZkBool checkChoice(const held_schema & held, const table_choice & choice)
{
    constexpr qsizetype shown = 10;
    QStringList names;
    for (const auto & [key, table] : held.found.tables) {
        if (choice.holds(table.name)) {
            return ZkBool::success();
        }
        names += table.name;
    }
    const QString all = names.size() <= shown ? names.join(QStringLiteral(", "))
                                              : names.mid(0, shown).join(QStringLiteral(", ")) +
                                                    QStringLiteral(" and %1 more").arg(names.size() - shown);
    return ZkBool::failure(
        QStringLiteral("%1: no table is called as --tables says; there are %2").arg(held.name, all));
}

/// One import, from what was read to the project.
class importing
{
public:
    importing(const held_schema & held, const import_choice & choice, plugin::statement_source & statements,
              database_import_result & done)
        : m_held(held), m_choice(choice), m_statements(statements), m_done(done)
    {
    }

    ZkBool run()
    {
        ZkBool result = existingProject(m_choice.projectFile, m_existing);
        if (result) {
            result = prepare();
        }
        if (result) {
            result = m_choice.isPlan ? plan() : store();
        }
        return result ? tellRest() : result;
    }

private:
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
        check::schema_import import{m_held.found,      *m_held.known,       *m_types, m_meant,
                                    m_choice.isChosen, m_choice.tellsLinks, {}};
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
            former.setName(QFileInfo(m_choice.projectFile).completeBaseName());
        }
        m_done.renames = check::mergeSchema(import, former, next);
        return storage::text_form::follow(next, m_held.name, existing);
    }

    [[nodiscard]] ZkBool plan()
    {
        m_next = std::make_shared<model::project>(1);
        const ZkBool merged = merge(m_existing.get(), *m_next);
        if (merged) {
            m_done.plan = plannedChanges(m_choice.projectFile, m_existing, m_held.name, m_next);
            if (m_existing) {
                m_next->setFileName(m_choice.projectFile); // whose settings count
            }
        }
        return merged;
    }

    [[nodiscard]] ZkBool store()
    {
        const QSqlError error = storage::project_file::replace(
            m_choice.projectFile, [this](const model::project * existing, model::project & next) {
                const ZkBool merged = merge(existing, next);
                return merged ? QSqlError()
                              : QSqlError(QString(), merged.getDesc(), QSqlError::StatementError);
            });
        return error.isValid() ? ZkBool::failure(error.text()) : openProject(m_choice.projectFile, m_next);
    }

    /// Compares what the scripts of the model make with what is there.
    [[nodiscard]] ZkBool tellRest()
    {
        database::catalogue made;
        const ZkBool result = scriptedSchema(m_statements, m_next, *m_held.known, made);
        m_done.leftOut = madeOtherwise(m_held, made, m_choice.isChosen);
        for (const database::left_out & each : m_held.leftOut) {
            if (each.table.isEmpty() || m_choice.isChosen(each.table)) {
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

    const held_schema & m_held;
    const import_choice & m_choice;
    plugin::statement_source & m_statements;
    database_import_result & m_done;
    std::shared_ptr<model::project> m_existing; ///< null for a new project
    std::shared_ptr<model::project> m_next;
    std::optional<database::catalogue> m_meant; ///< what the scripts of the existing one make
    std::unique_ptr<check::mapped_types> m_types;
};

} // namespace

database_import_result importSchema(const held_schema & held, const import_choice & choice,
                                    plugin::statement_source & statements)
{
    database_import_result done;
    done.result = importing(held, choice, statements, done).run();
    return done;
}

database_import_result importDatabase(const database_import_request & request,
                                      plugin::statement_source & statements)
{
    const table_choice choice(request.tables);
    held_schema held;
    database_import_result done;
    done.result = readSchema(request.from, held);
    if (done.result) {
        done.result = checkChoice(held, choice);
    }
    const auto isChosen = [&choice](const QString & table) { return choice.holds(table); };
    return done.result
               ? importSchema(held, {request.projectFile, isChosen, request.tellsLinks, request.isPlan},
                              statements)
               : done;
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
