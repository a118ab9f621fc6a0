#pragma once

#include "support/program.h"

#include <QString>
#include <QStringList>

namespace support {

/// Makes the sample project, with its three versions, as `file`; what went wrong, empty when nothing did.
inline QByteArray makeFestival(const QString & file)
{
    const QString samples = QStringLiteral(KORVANE_SOURCE_DIR "/samples/");
    const QList<QStringList> commands{
        {"import", samples + "festival_v1.json", file}, {"tag", file, "-m", "first season"},
        {"import", samples + "festival_v2.json", file}, {"tag", file, "-m", "volunteers and badges"},
        {"import", samples + "festival_v3.json", file}, {"tag", file, "-m", "gigs are called concerts"},
        {"import", samples + "festival.json", file},
    };
    for (const QStringList & command : commands) {
        if (const program_result result = runProgram(command); result.status != 0) {
            return result.errors;
        }
    }
    return {};
}

} // namespace support
