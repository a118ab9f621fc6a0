#pragma once

#include "support/program.h"

#include <QFile>
#include <QFileInfo>
#include <QList>
#include <QRegularExpression>
#include <QString>

/// The pages of the manual as what they have people type.
namespace support {

inline const QString Docs = QStringLiteral(KORVANE_SOURCE_DIR "/docs/");

/// A fenced block: its kind, such as "sh", and what it says.
struct block
{
    QString kind;
    QString text;
};

inline QString contentOf(const QString & name)
{
    QFile file(Docs + name);
    return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
}

/// The fenced blocks of a page.
inline QList<block> blocksOf(const QString & page)
{
    static const QRegularExpression fence(QStringLiteral("^```(\\w+)\\n(.*?)^```$"),
                                          QRegularExpression::MultilineOption |
                                              QRegularExpression::DotMatchesEverythingOption);
    QList<block> blocks;
    QRegularExpressionMatchIterator matches = fence.globalMatch(contentOf(page));
    while (matches.hasNext()) {
        const QRegularExpressionMatch match = matches.next();
        blocks.append({match.captured(1), match.captured(2)});
    }
    return blocks;
}

/// Where the shell finds the program that was built.
inline QHash<QString, QString> programInPath()
{
    return {{QStringLiteral("PATH"), QFileInfo(QStringLiteral(KORVANE_PROGRAM)).path() + QLatin1Char(':') +
                                         qEnvironmentVariable("PATH")}};
}

/// Runs a block of shell in a folder, as a person types it: it ends with the first command that fails, and
/// what is told of errors stands between the rest.
inline program_result runBlock(const block & typed, const QString & folder)
{
    return runShell(QStringLiteral("set -eu\ncd '%1'\nexec 2>&1\n").arg(folder) + typed.text,
                    programInPath());
}

} // namespace support
