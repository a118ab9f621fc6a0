#include "database/facts/reserved_words.h"

#include "database/facts/facts.h"
#include "reserved_word_lists.h"

#include <algorithm>

namespace database {

bool isReserved(const facts & known, QStringView word, name_place place)
{
    const auto list =
        std::find_if(std::begin(ReservedWordLists), std::end(ReservedWordLists),
                     [&known](const reserved_word_list & of) { return of.database == known.key; });
    if (list == std::end(ReservedWordLists)) {
        return false;
    }
    const QString folded = word.toString().toLower();
    const auto found = std::lower_bound(list->words.begin(), list->words.end(), folded,
                                        [](const reserved_word & entry, const QString & asked) {
                                            return QString::compare(entry.word, asked) < 0;
                                        });
    return found != list->words.end() && found->word == folded &&
           (place == name_place::table || !found->onlyAsTable);
}

} // namespace database
