#include "app/terminal_question.h"

#include <iostream>
#include <string>

#include <termios.h>
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

std::optional<QString> askPasswordAtTerminal(const QString & question)
{
    termios shown{};
    const bool isTerminal = tcgetattr(STDIN_FILENO, &shown) == 0;
    if (isTerminal) {
        termios hidden = shown;
        hidden.c_lflag &= ~static_cast<tcflag_t>(ECHO);
        tcsetattr(STDIN_FILENO, TCSANOW, &hidden);
    }
    std::cerr << question.toStdString() << std::flush;
    std::string line;
    const bool isGiven = static_cast<bool>(std::getline(std::cin, line));
    if (isTerminal) {
        tcsetattr(STDIN_FILENO, TCSANOW, &shown);
    }
    std::cerr << '\n';
    return isGiven ? std::optional(QString::fromStdString(line)) : std::nullopt;
}

} // namespace app
