// Writes the pages of all commands for man(1), in Markdown: write_man_pages MANUAL.md FOLDER

#include "app/program/command_table.h"
#include "docs/man/man_page.h"

#include <QDir>
#include <QFile>

namespace {

bool write(const QString & file, const QString & text)
{
    QFile page(file);
    const QByteArray bytes = text.toUtf8();
    return page.open(QIODevice::WriteOnly) && page.write(bytes) == bytes.size() && page.flush();
}

} // namespace

int main(int argc, char ** argv)
{
    if (argc != 3) {
        qFatal("usage: write_man_pages MANUAL.md FOLDER");
    }
    QFile file(QString::fromLocal8Bit(argv[1]));
    if (!file.open(QIODevice::ReadOnly)) {
        qFatal("%s: %s", argv[1], qPrintable(file.errorString()));
    }
    const QString text = QString::fromUtf8(file.readAll());
    const QList<app::described_command> commands = app::describeCommands();
    for (const app::described_command & command : commands) {
        const QString name = command.name == commands.constFirst().name
                                 ? command.name
                                 : commands.constFirst().name + QLatin1Char('-') + command.name;
        const QString page = QDir(QString::fromLocal8Bit(argv[2])).filePath(name + QLatin1String(".md"));
        if (!write(page, manual::manPage(command, commands, text))) {
            qFatal("%s cannot be written", qPrintable(page));
        }
    }
    return 0;
}
