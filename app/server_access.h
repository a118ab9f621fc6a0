#pragma once

#include "app/terminal_question.h"

#include "database/server/server_url.h"

#include <QString>

namespace app {

/// What `open` makes of `place`: null with the reason. Where the server wants a password that nobody gave,
/// the person at the terminal is asked for it.
template <class Open>
[[nodiscard]] auto openAsking(database::server::server_url place, QString & why, const Open & open)
{
    auto opened = open(place, why);
    if (!opened && database::server::wantsPassword(place, why) && hasTerminal()) {
        const auto password = askPasswordAtTerminal(QStringLiteral("Password for %1: ").arg(place.shown()));
        if (password) {
            place.password = *password;
            opened = open(place, why);
        }
    }
    return opened;
}

} // namespace app
