#include "app/shell/completion.h"

#include "app/database_choice.h"

#include "check/finding/rule.h"
#include "database/facts/facts.h"
#include "database/server/target_database.h"

#include <algorithm>
#include <utility>

namespace app::shell {

namespace {

/// A command line up to the word that is being typed.
struct typed_line
{
    const described_command * command;
    QString current;                            ///< what there is of the word
    const described_option * awaited = nullptr; ///< the option whose value it is; null for none
    QStringList byPlace;                        ///< the arguments before it that are no options
    QStringList options;                        ///< the options before it
    bool isOptionsEnd = false;                  ///< after "--" nothing is an option
};

const described_option * optionNamed(const described_command & command, const QString & name)
{
    const auto found = std::find_if(command.options.cbegin(), command.options.cend(),
                                    [&](const described_option & each) { return each.names.contains(name); });
    return found == command.options.cend() ? nullptr : &*found;
}

bool isOption(const typed_line & line, const QString & word)
{
    return !line.isOptionsEnd && word.size() > 1 && word.startsWith(QLatin1Char('-'));
}

typed_line read(const described_command & command, QStringList words)
{
    typed_line line{&command, words.takeLast(), nullptr, {}, {}, false};
    for (const QString & word : std::as_const(words)) {
        if (line.awaited != nullptr) {
            line.awaited = nullptr;
        } else if (word == QLatin1String("--")) {
            line.isOptionsEnd = true;
        } else if (isOption(line, word)) {
            line.options << word.section(QLatin1Char('='), 0, 0);
            const described_option * const option = optionNamed(command, word);
            line.awaited = option && option->kind != value_kind::none ? option : nullptr;
        } else {
            line.byPlace << word;
        }
    }
    return line;
}

bool isDatabaseList(value_kind kind)
{
    return kind == value_kind::databases || kind == value_kind::runnable_databases;
}

/// The keys that a value of `kind` is made of.
QStringList databaseKeysOf(value_kind kind)
{
    if (kind == value_kind::runnable_database || kind == value_kind::runnable_databases) {
        return database::server::runnableKeys();
    }
    QStringList keys;
    for (const database::facts * const known : database::allFacts()) {
        if (known->isDatabase || !isDatabaseList(kind)) {
            keys << known->key;
        }
    }
    return keys;
}

QList<offered_word> databases(const described_option & option, const QString & current)
{
    // In a list the last key is the one that is being typed.
    const qsizetype comma = current.lastIndexOf(QLatin1Char(','));
    const bool isList = isDatabaseList(option.kind);
    const QString before = isList ? current.left(comma + 1) : QString();
    const QStringList given = before.split(QLatin1Char(','), Qt::SkipEmptyParts);
    QList<offered_word> words;
    const QStringList keys = databaseKeysOf(option.kind);
    for (const database::facts * const known : database::allFacts()) {
        if (!given.contains(known->key) && keys.contains(known->key)) {
            words.append({before + known->key, known->label});
        }
    }
    if (option.kind == value_kind::databases && given.isEmpty()) {
        words.append({AllDatabases, QStringLiteral("every one of them")});
    }
    return words;
}

QList<offered_word> rules()
{
    QList<offered_word> words;
    for (const check::rule & each : check::allRules()) {
        words.append({each.code, QString::fromUtf8(each.title)});
    }
    return words;
}

/// The versions of the project that the line names, and the state.
QList<offered_word> versions(const typed_line & line, const outside_words & outside)
{
    QList<offered_word> words;
    if (!line.byPlace.isEmpty()) {
        words = outside.versions(line.byPlace.constFirst());
    }
    words.append({QStringLiteral("now"), QStringLiteral("the state of the project")});
    return words;
}

/// What `option` takes in the place of `current`.
completion valuesOf(const described_option & option, const typed_line & line, const QString & current,
                    const outside_words & outside)
{
    completion found;
    switch (option.kind) {
    case value_kind::none:
    case value_kind::text:
        break;
    case value_kind::file:
    case value_kind::folder:
    case value_kind::project:
    case value_kind::source:
        found.files = option.kind;
        break;
    case value_kind::version:
    case value_kind::version_or_source:
        found.words = versions(line, outside);
        found.files = option.kind == value_kind::version ? value_kind::none : value_kind::source;
        break;
    case value_kind::words:
        for (const QString & word : option.words) {
            found.words.append({word, {}});
        }
        break;
    case value_kind::database:
    case value_kind::databases:
    case value_kind::runnable_database:
    case value_kind::runnable_databases:
        found.words = databases(option, current);
        break;
    case value_kind::plugin:
        found.words = outside.plugins();
        found.files = value_kind::file;
        break;
    case value_kind::rule:
        found.words = rules();
        break;
    }
    return found;
}

/// The options that are not there yet: the long name of each.
QList<offered_word> optionsFor(const typed_line & line)
{
    QList<offered_word> words;
    for (const described_option & option : line.command->options) {
        const bool isGiven = std::any_of(option.names.cbegin(), option.names.cend(),
                                         [&](const QString & name) { return line.options.contains(name); });
        if (!option.isByPlace() && (option.isRepeatable || !isGiven)) {
            words.append({option.names.constLast(), option.what});
        }
    }
    words.append({QStringLiteral("--help"), QStringLiteral("Print this help and exit")});
    return words;
}

completion completeByPlace(const typed_line & line, const outside_words & outside)
{
    QList<const described_option *> places;
    for (const described_option & option : line.command->options) {
        if (option.isByPlace()) {
            places << &option;
        }
    }
    const qsizetype place = line.byPlace.size();
    return place < places.size() ? valuesOf(*places[place], line, line.current, outside) : completion();
}

/// Leaves the words that begin as `current` does.
completion beginning(completion found, const QString & current)
{
    QList<offered_word> fitting;
    std::copy_if(found.words.cbegin(), found.words.cend(), std::back_inserter(fitting),
                 [&current](const offered_word & each) { return each.word.startsWith(current); });
    found.words = fitting;
    return found;
}

completion completeLine(const typed_line & line, const outside_words & outside)
{
    if (line.awaited != nullptr) {
        return valuesOf(*line.awaited, line, line.current, outside);
    }
    if (!isOption(line, line.current) && line.current != QLatin1String("-")) {
        return completeByPlace(line, outside);
    }
    const qsizetype equals = line.current.indexOf(QLatin1Char('='));
    const QString name = line.current.left(equals);
    const described_option * const option = equals < 0 ? nullptr : optionNamed(*line.command, name);
    if (option == nullptr) {
        return {optionsFor(line)};
    }
    completion found = valuesOf(*option, line, line.current.mid(equals + 1), outside);
    for (offered_word & each : found.words) {
        each.word.prepend(name + QLatin1Char('='));
    }
    return found;
}

} // namespace

completion complete(const QList<described_command> & commands, const QStringList & words,
                    const outside_words & outside)
{
    const described_command & window = commands.constFirst();
    QStringList rest = words;
    const auto named =
        std::find_if(commands.cbegin() + 1, commands.cend(),
                     [&rest](const described_command & each) { return each.name == rest.constFirst(); });
    const bool isNamed = rest.size() > 1 && named != commands.cend();
    if (isNamed) {
        rest.removeFirst();
    }
    const QString current = rest.constLast();
    completion found = completeLine(read(isNamed ? *named : window, rest), outside);
    if (words.size() == 1) {
        if (current.startsWith(QLatin1Char('-'))) {
            found.words.append({QStringLiteral("--version"), QStringLiteral("Print the versions and exit")});
        } else {
            for (auto each = commands.cbegin() + 1; each != commands.cend(); ++each) {
                found.words.append({each->name, each->description});
            }
        }
    }
    return beginning(found, current);
}

} // namespace app::shell
