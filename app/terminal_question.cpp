#include "app/terminal_question.h"

#include <iostream>
#include <string>

#include <unistd.h>

namespace app {

bool hasTerminal()
{
    return isatty(STDIN_FILENO) == 1;
}

std::optional<bool> askAtTerminal(const QString & question, bool defaultIsYes)
{
    for (;;) {
        std::cerr << question.toStdString() << (defaultIsYes ? " [Y/n] " : " [y/N] ") << std::flush;
        std::string line;
        if (!std::getline(std::cin, line)) {
            return {};
        }
        const QString reply = QString::fromStdString(line).trimmed().toLower();
        if (reply.isEmpty()) {
            return defaultIsYes;
        }
        if (reply == QLatin1String("y") || reply == QLatin1String("yes")) {
            return true;
        }
        if (reply == QLatin1String("n") || reply == QLatin1String("no")) {
            return false;
        }
    }
}

} // namespace app
