#include "database/facts/reserved_words.h"

#include "database/facts/facts.h"
#include "reserved_word_lists.h"

#include <algorithm>
#include <array>
#include <vector>

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

/// Which lengths and last letters the words of a list have, by their first letters. Most names are no word by
/// that alone.
class word_shapes
{
public:
    explicit word_shapes(const reserved_word_list & of)
    {
        for (const reserved_word & each : of.words) {
            const std::size_t first = placeOf(QLatin1Char(each.word.front()));
            m_lengths[first] |= bitOf(each.word.size());
            m_ends[first] |= quint32{1} << placeOf(QLatin1Char(each.word.back()));
        }
    }

    [[nodiscard]] bool mayHave(QStringView word) const
    {
        if (word.isEmpty()) {
            return false;
        }
        const std::size_t first = placeOf(word.front());
        return (m_lengths[first] & bitOf(word.size())) != 0 &&
               (m_ends[first] & (quint32{1} << placeOf(word.back()))) != 0;
    }

private:
    static constexpr std::size_t Letters = 26;

    /// Of the letter, whatever its case; of all else the last one.
    static std::size_t placeOf(QChar c)
    {
        const char16_t small = c.unicode() | 0x20;
        return small >= u'a' && small <= u'z' ? static_cast<std::size_t>(small - u'a') : Letters;
    }
    static quint32 bitOf(qsizetype length) { return quint32{1} << std::min<qsizetype>(length, 31); }

    std::array<quint32, Letters + 1> m_lengths{};
    std::array<quint32, Letters + 1> m_ends{};
};

/// Of all lists, in their order.
const std::vector<word_shapes> & shapesOfLists()
{
    static const std::vector<word_shapes> all(std::begin(ReservedWordLists), std::end(ReservedWordLists));
    return all;
}

} // namespace

bool isReserved(const facts & known, QStringView word, name_place place)
{
    const auto list =
        std::find_if(std::begin(ReservedWordLists), std::end(ReservedWordLists),
                     [&known](const reserved_word_list & of) { return of.database == known.key; });
    if (list == std::end(ReservedWordLists) ||
        !shapesOfLists()[static_cast<std::size_t>(list - std::begin(ReservedWordLists))].mayHave(word)) {
        return false;
    }
    const auto found = std::lower_bound(
        list->words.begin(), list->words.end(), word,
        [](const reserved_word & entry, QStringView asked) { return compare(entry.word, asked) < 0; });
    return found != list->words.end() && compare(found->word, word) == 0 &&
           (place == name_place::table || place == name_place::index || !found->onlyFirst);
}

} // namespace database
