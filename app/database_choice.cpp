#include "app/database_choice.h"

#include "app/nearest_word.h"

#include "database/facts/facts.h"

#include <algorithm>

namespace app {

namespace {

QStringList knownKeys()
{
    QStringList keys;
    for (const database::facts * const known : database::allFacts()) {
        keys << known->key;
    }
    return keys;
}

/// Says that `key` is none of `words`.
QString noDatabase(const QString & key, const QStringList & words)
{
    const QString meant = nearestWord(key, words);
    return QStringLiteral("'%1' is not a database; they are %2%3")
        .arg(key, words.join(QStringLiteral(", ")),
             meant.isEmpty() ? QString() : QStringLiteral(" (did you mean %1?)").arg(meant));
}

} // namespace

QStringList databaseKeys(const QString & list)
{
    QStringList keys;
    for (const QString & each : list.split(QLatin1Char(','))) {
        const QString key = each.trimmed();
        if (key != AllDatabases) {
            keys << key;
            continue;
        }
        for (const database::facts * const known : database::allFacts()) {
            if (known->isDatabase) {
                keys << known->key;
            }
        }
    }
    keys.removeDuplicates();
    return keys;
}

QString whyNoDatabase(const QStringList & keys)
{
    const QStringList words = knownKeys() << AllDatabases;
    const auto unknown =
        std::find_if(keys.begin(), keys.end(), [&](const QString & key) { return !words.contains(key); });
    return unknown == keys.end() ? QString() : noDatabase(*unknown, words);
}

QString whyNotOneDatabase(const QString & key)
{
    const QStringList words = knownKeys();
    return words.contains(key) ? QString() : noDatabase(key, words);
}

} // namespace app
