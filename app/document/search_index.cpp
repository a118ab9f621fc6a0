#include "app/document/search_index.h"

#include "app/diagram/diagram_contents.h"
#include "app/document/page_names.h"

#include "check/view/model_names.h"
#include "model/project.h"

#include <nlohmann/json.hpp>

namespace app {

namespace {

/// The rows, a line each.
class index_rows
{
public:
    void add(const char * kind, const QString & name, const QString & about, const QString & page)
    {
        const nlohmann::json row = {kind, textOf(name), textOf(about), page.toStdString()};
        m_rows += m_rows.isEmpty() ? "\n" : ",\n";
        m_rows += QByteArray::fromStdString(row.dump(-1, ' ', true)); // ASCII, whatever a reader takes it for
    }

    [[nodiscard]] QByteArray script() const { return "window.korvaneSearchIndex = [" + m_rows + "\n];\n"; }

private:
    static std::string textOf(const QString & text) { return drawable(text).toStdString(); }

    QByteArray m_rows;
};

/// `parts` that are not empty, with commas between.
QString joined(QStringList parts)
{
    parts.removeAll(QString());
    return parts.join(QStringLiteral(", "));
}

/// What was called otherwise is found by that, too.
QString formerly(const QStringList & names)
{
    return names.isEmpty() ? QString() : QStringLiteral("formerly ") + joined(names);
}

void addProperties(const documented_model & of, const model::entity & entity, const QString & table,
                   index_rows & rows)
{
    for (const auto & property : propertiesOf(entity)) {
        const QStringList columns = of.columnsOf(*property);
        const QString word = columns.size() == 1 ? QStringLiteral("column") : QStringLiteral("columns");
        const QString stored =
            columns.isEmpty()
                ? QString()
                : QStringLiteral("%1 %2.%3").arg(word, table, columns.join(QStringLiteral(", ")));
        const QStringList names = of.formerNames().ofProperty(property->getId(), property->getName());
        rows.add("property", check::nameOf(*property), joined({stored, formerly(names)}),
                 propertyPage(entity.getId(), property->getId()));
    }
}

QString valuesOf(const model::enumeration & of)
{
    QStringList names;
    for (const model::enumeration::value & each : of.getValues()) {
        names << each.name;
    }
    return names.join(QStringLiteral(", "));
}

} // namespace

QByteArray searchIndex(const documented_model & of)
{
    index_rows rows;
    for (const auto & entity : of.entities()) {
        const QString table = of.sql().tables.value(entity->getId()).name;
        const QStringList names = of.formerNames().ofEntity(entity->getId(), entity->getName());
        rows.add("entity", entity->getName(),
                 joined({table.isEmpty() ? QString() : QStringLiteral("table ") + table, formerly(names)}),
                 entityPage(entity->getId()));
    }
    for (const auto & [relationship, table] : of.sql().linkTables) {
        QStringList columns;
        for (const sql_column & column : table.columns) {
            columns << column.name;
        }
        rows.add("link table", table.name, columns.join(QStringLiteral(", ")),
                 placeIn(IndexPage, linkAnchor(relationship)));
    }
    for (const auto & enumeration : of.enumerations()) {
        rows.add("enumeration", enumeration->getName(), valuesOf(*enumeration),
                 placeIn(EnumerationPage, enumerationAnchor(enumeration->getId())));
    }
    for (const auto & entity : of.entities()) {
        addProperties(of, *entity, of.sql().tables.value(entity->getId()).name, rows);
    }
    return rows.script();
}

} // namespace app
