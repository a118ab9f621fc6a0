#include "app/command.h"
#include "app/command_options.h"
#include "app/commands/commands.h"
#include "app/output.h"

#include <QDir>
#include <QFile>

namespace app {

namespace {

/// The folder of the schemas, and how their names end, inside the program.
constexpr QLatin1String Folder(":/korvane/schema/");
constexpr QLatin1String Suffix(".schema.json");
/// The form that is meant when none is named.
constexpr QLatin1String TextForm("project");

/// The forms that have a schema, by name.
QStringList formNames()
{
    QStringList names;
    for (const QString & file : QDir(Folder).entryList(QDir::Files, QDir::Name)) {
        names << file.chopped(Suffix.size());
    }
    return names;
}

/// Prints the JSON Schema of a form that the program reads or writes.
class schema_command : public command
{
public:
    schema_command() : command("schema", "Print the JSON Schema of a form that the program reads or writes")
    {
    }

    void declare(command_options & options) override
    {
        options.addOptionalWord(
            "NAME", "project (the text form, which is the default), check, diff, explain, status or verify",
            formNames(), m_sName);
    }
    [[nodiscard]] QString whyWrong() const override
    {
        return m_sName.isEmpty() || formNames().contains(m_sName)
                   ? QString()
                   : QStringLiteral("There is no schema '%1'; they are %2")
                         .arg(m_sName, formNames().join(QStringLiteral(", ")));
    }
    [[nodiscard]] int run() override
    {
        QFile schema(Folder + (m_sName.isEmpty() ? QString(TextForm) : m_sName) + Suffix);
        if (!schema.open(QIODevice::ReadOnly)) {
            return failed(schema.errorString());
        }
        printBytes(schema.readAll());
        return Done;
    }

private:
    QString m_sName;
};

} // namespace

std::unique_ptr<command> makeSchemaCommand()
{
    return std::make_unique<schema_command>();
}

} // namespace app
