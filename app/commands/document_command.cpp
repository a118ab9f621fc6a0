#include "app/command.h"
#include "app/command_options.h"
#include "app/commands/commands.h"
#include "app/database_choice.h"
#include "app/document/site.h"
#include "app/output.h"
#include "app/source.h"
#include "app/statement_plugin.h"

#include <QDir>
#include <QLocale>

namespace app {

namespace {

const char Help[] =
    "DIR is made when it is not there. Pages that this command wrote there before are replaced, and\n"
    "removed when they belong to nothing any more; other files stay. DIR/korvane-pages.txt lists what\n"
    "was written.\n"
    "\n"
    "The pages need no server: open DIR/index.html. SQL types are those of an export without the\n"
    "custom script.\n"
    "A text form has no versions, so its pages tell no history.\n"
    "\n"
    "Examples:\n"
    "  korvane document shop.korv -o site\n"
    "  korvane document shop.korv -o site --db sqlite,postgresql";

/// Documents a model as web pages.
class document_command : public command
{
public:
    document_command()
        : command("document", "Write web pages about the model of a project", surroundings::plugins)
    {
    }

    void declare(command_options & options) override;
    [[nodiscard]] QString whyWrong() const override;
    [[nodiscard]] int run() override;

private:
    QString m_source;
    QString m_folder;
    QString m_databases = AllDatabases;
    plugin_request m_plugin;
};

void document_command::declare(command_options & options)
{
    options.addSource(m_source);
    options.addText("-o,--output", "DIR", "The folder for the pages", m_folder, value_kind::folder);
    options.addText("--db", "LIST", "Databases whose types are told, with commas between; all is the default",
                    m_databases, value_kind::databases);
    options.addPlugin(m_plugin.name);
    options.setFooter(Help);
}

QString document_command::whyWrong() const
{
    return m_folder.isEmpty() ? QStringLiteral("-o is missing: name the folder for the pages")
                              : whyNoDatabase(databaseKeys(m_databases));
}

int document_command::run()
{
    // Numbers are written in the language of the pages, whatever the reader of messages speaks.
    QLocale::setDefault(QLocale::c());
    statement_plugin plugin;
    if (const int status = plugin.load(m_plugin); status != Done) {
        return status;
    }
    source of;
    made_site made;
    zk::ZkBool result = of.open(m_source);
    if (result) {
        result = makeSite(of, plugin.statements(), databaseKeys(m_databases), made);
    }
    if (result) {
        result = writeSite(m_folder, made.files);
    }
    if (!result) {
        return failed(result.getDesc());
    }
    if (!made.note.isEmpty()) {
        printError(made.note);
    }
    printDone(QStringLiteral("%1: %2 written")
                  .arg(QDir::toNativeSeparators(QDir(m_folder).filePath(QStringLiteral("index.html"))),
                       made.entities == 1 ? QStringLiteral("1 entity")
                                          : QStringLiteral("%1 entities").arg(made.entities)));
    return Done;
}

} // namespace

std::unique_ptr<command> makeDocumentCommand()
{
    return std::make_unique<document_command>();
}

} // namespace app
