// Stands in for the command line until it is there.
#include "app/commands.h"

#include <QCoreApplication>

#include <cstdio>

void app::printError(const QString & text)
{
    std::fprintf(stderr, "%s\n", qUtf8Printable(text));
}

void app::printLine(const QString & text)
{
    std::printf("%s\n", qUtf8Printable(text));
}

int main(int argc, char ** argv)
{
    const QCoreApplication application(argc, argv);
    const QStringList args = QCoreApplication::arguments();
    if (args.size() < 3) {
        return 2;
    }
    if (args.at(1) == QStringLiteral("import") && args.size() == 4) {
        return app::importModel(args.at(2), args.at(3));
    }
    if (args.at(1) == QStringLiteral("dump")) {
        return app::dumpProject(args.at(2));
    }
    if (args.at(1) == QStringLiteral("tag")) {
        return app::tagProject(args.at(2), args.value(4));
    }
    return args.at(1) == QStringLiteral("log") ? app::logVersions(args.at(2)) : 2;
}
