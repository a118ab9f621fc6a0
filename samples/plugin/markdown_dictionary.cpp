#include "markdown_dictionary.h"

#include <context/ctx_global.h>
#include <context/ctx_project.h>
#include <model/entity.h>
#include <model/enumeration.h>
#include <model/project.h>
#include <model/property.h>
#include <model/property_type.h>
#include <model/relationship.h>
#include <view/main_wnd.h>

#include <QSaveFile>
#include <QStringList>

namespace {

const QString FileOption = QStringLiteral("--MarkdownDictionary_file");

/// `text` as it may stand in a cell of a table.
QString cell(QString text)
{
    return text.replace(QLatin1Char('|'), QStringLiteral("\\|")).replace(QLatin1Char('\n'), QLatin1Char(' '));
}

/// What a property holds: another entity, or a value of a type.
QString typeOf(const model::property & p)
{
    const auto target = p.hasRelationship() ? p.getRelation()->getEntityTarget() : nullptr;
    if (target) {
        const bool isMany = !p.getRelation()->hasColumns();
        return QStringLiteral("%1[%2](#%3)")
            .arg(isMany ? QStringLiteral("many ") : QString(), target->getName(), target->getName().toLower());
    }
    return p.getType() ? p.getType()->getPrimitiveType(-1) : QString();
}

/// The columns that hold the property; what is not stored has none, and "many" is stored with the others.
QString columnsOf(const model::property & p)
{
    if (p.isTransient() || p.getColumnNameCount() == 0) {
        return {};
    }
    // Several have "|" between; a property that names none has one that is called as it is itself.
    const QString given = p.getColumnName();
    return given.isEmpty() ? p.getName() : QString(given).replace(QLatin1Char('|'), QStringLiteral(", "));
}

/// What else is to be known of a property: key, null, unique, index.
QString marksOf(const model::property & p)
{
    QStringList marks;
    if (p.isIdentifier()) {
        marks << QStringLiteral("key");
    }
    if (!p.getAllowNull() && !p.isIdentifier()) {
        marks << QStringLiteral("not null");
    }
    if (p.getUnique()) {
        marks << QStringLiteral("unique");
    }
    if (p.isIndex()) {
        marks << QStringLiteral("indexed");
    }
    if (p.isTransient()) {
        marks << QStringLiteral("not stored");
    }
    return marks.join(QStringLiteral(", "));
}

QString describe(const model::entity & entity)
{
    QString text = QStringLiteral("\n## %1\n\nTable `%2`\n\n"
                                  "| property | column | type | |\n"
                                  "| --- | --- | --- | --- |\n")
                       .arg(entity.getName(), entity.getTableName());
    for (const auto & p : entity.getListOfProperty(true, true, false)->values()) {
        text += QStringLiteral("| %1 | %2 | %3 | %4 |\n")
                    .arg(cell(p->getName()), cell(columnsOf(*p)), cell(typeOf(*p)), marksOf(*p));
    }
    return text;
}

QString describe(const model::enumeration & enumeration)
{
    QStringList values;
    for (const model::enumeration::value & value : enumeration.getValues()) {
        values << QStringLiteral("`%1`").arg(value.name);
    }
    return QStringLiteral("| %1 | %2 |\n").arg(cell(enumeration.getName()), cell(values.join(QStringLiteral(", "))));
}

QString pageOf(const model::project & project)
{
    QString text = QStringLiteral("# %1\n").arg(project.getName());
    for (const auto & entity : project.getListOfAllEntities()->values()) {
        text += describe(*entity);
    }
    const auto enumerations = project.getListOfEnumeration();
    if (!enumerations->isEmpty()) {
        text += QStringLiteral("\n## Enumerations\n\n| name | values |\n| --- | --- |\n");
        for (const auto & enumeration : enumerations->values()) {
            text += describe(*enumeration);
        }
    }
    return text;
}

} // namespace

QString markdown_dictionary::getGuid() const
{
    return QStringLiteral("0D3F2C1B-7B53-4C60-9E1A-5A8B6E0C4D21");
}

QString markdown_dictionary::getName() const
{
    return QStringLiteral("MarkdownDictionary");
}

QString markdown_dictionary::getShortDesc() const
{
    return QStringLiteral("Export a data dictionary");
}

QString markdown_dictionary::getDescription() const
{
    return QStringLiteral("Writes a Markdown page with a table for each entity.");
}

QString markdown_dictionary::getVersion() const
{
    return QStringLiteral("1.0.0");
}

QString markdown_dictionary::getCommandLineInfos() const
{
    return QStringLiteral("\n  %1=<file> : the page; by default PROJECT.md beside the project file").arg(FileOption);
}

QIcon markdown_dictionary::getIcon() const
{
    return {};
}

QIcon markdown_dictionary::getIconSettings() const
{
    return {};
}

zk::ZkBool markdown_dictionary::exportProject(model::project & project)
{
    // The host's window holds what the command line says of this plug-in; it has none in the main window.
    const view::main_wnd * const window = context::ctx_global::getMainWnd();
    const QStringList given = window ? window->getAppArg(FileOption) : QStringList();
    const QString name = given.isEmpty() ? project.getName() + QStringLiteral(".md") : given.constLast();
    // A relative path is taken from the project's folder.
    QSaveFile file(context::ctx_project::getSingleton().getPathFromProjectFile(name));
    const QByteArray page = pageOf(project).toUtf8();
    if (!file.open(QIODevice::WriteOnly) || file.write(page) != page.size() || !file.flush() ||
        !file.commit()) {
        return zk::ZkBool::failure(QStringLiteral("%1: %2").arg(file.fileName(), file.errorString()));
    }
    Q_EMIT onMessage(QStringLiteral("Data dictionary written: %1").arg(file.fileName()), plugin::ProgressMessage,
                     plugin::MessageTimeout);
    Q_EMIT onFileWritten(file.fileName());
    return zk::ZkBool::success();
}
