#include "database/facts/reserved_words.h"

#include "database/facts/facts.h"
#include "reserved_word_lists.h"

#include <algorithm>

namespace database {

namespace {

// Which comes first: a word of a list, which is in small letters, or a name, whatever the case of A to Z.
int compare(QLatin1String entry, QStringView name)
{
    const qsizetype both = std::min(entry.size(), name.size());
    for (qsizetype i = 0; i < both; ++i) {
        const char16_t c = name[i].unicode();
        const int small = c >= u'A' && c <= u'Z' ? c + (u'a' - u'A') : c;
        if (const int order = static_cast<unsigned char>(entry.data()[i]) - small; order != 0) {
            return order;
        }
    }
    const bool isPart = entry.size() < name.size();
    return entry.size() == name.size() ? 0 : (isPart ? -1 : 1);
}

} // namespace

bool isReserved(const facts & known, QStringView word, name_place place)
{
    const auto list =
        std::find_if(std::begin(ReservedWordLists), std::end(ReservedWordLists),
                     [&known](const reserved_word_list & of) { return of.database == known.key; });
    if (list == std::end(ReservedWordLists)) {
        return false;
    }
    const auto found = std::lower_bound(
        list->words.begin(), list->words.end(), word,
        [](const reserved_word & entry, QStringView asked) { return compare(entry.word, asked) < 0; });
    return found != list->words.end() && compare(found->word, word) == 0 &&
           (place == name_place::table || place == name_place::index || !found->onlyFirst);
}

} // namespace database
