#pragma once

#include "app/described_command.h"

#include <QList>
#include <QString>
#include <QStringList>

#include <functional>
#include <optional>

/// What shells are told of the program.
namespace app::shell {

/// A word that a shell may put in, and what it means; empty for nothing to say.
struct offered_word
{
    QString word;
    QString about;
};

/// What can stand in the place of a word that is being typed.
struct completion
{
    QList<offered_word> words;
    /// Names of files that can stand there as well: file, folder, project or source; none for no file.
    value_kind files = value_kind::none;
};

/// What has to be asked for, as the program's own data does not tell it.
struct outside_words
{
    /// The versions of a project file, newest last; nothing when it cannot be read.
    std::function<QList<offered_word>(const QString & project)> versions;
    /// The plug-ins that are installed.
    std::function<QList<offered_word>()> plugins;
};

/// What can stand in the place of the last of `words`, which follow the name of the program.
[[nodiscard]] completion complete(const QList<described_command> & commands, const QStringList & words,
                                  const outside_words & outside);

} // namespace app::shell
