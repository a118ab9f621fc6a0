#include "app/nearest_word.h"

#include <algorithm>
#include <vector>

namespace app {

namespace {

/// How many letters have to be changed, added, left out or swapped with their neighbour to make `b` of `a`.
int distance(const QString & a, const QString & b)
{
    const auto columns = static_cast<std::size_t>(b.size()) + 1;
    std::vector<std::vector<int>> d(static_cast<std::size_t>(a.size()) + 1, std::vector<int>(columns));
    for (std::size_t i = 0; i < d.size(); ++i) {
        for (std::size_t j = 0; j < columns; ++j) {
            if (i == 0 || j == 0) {
                d[i][j] = static_cast<int>(i + j);
                continue;
            }
            const auto at = [](const QString & text, std::size_t k) {
                return text.at(static_cast<qsizetype>(k) - 1);
            };
            const int changed = at(a, i) == at(b, j) ? 0 : 1;
            d[i][j] = std::min({d[i - 1][j] + 1, d[i][j - 1] + 1, d[i - 1][j - 1] + changed});
            if (i > 1 && j > 1 && at(a, i) == at(b, j - 1) && at(a, i - 1) == at(b, j)) {
                d[i][j] = std::min(d[i][j], d[i - 2][j - 2] + 1);
            }
        }
    }
    return d.back().back();
}

} // namespace

QString nearestWord(const QString & typed, const QStringList & words)
{
    constexpr qsizetype longest = 32; // what is longer was not meant to be a word of ours
    if (typed.size() > longest) {
        return {};
    }
    QString nearest;
    int least = 0;
    for (const QString & word : words) {
        const int n = distance(typed.toLower(), word.toLower());
        // Of a short word two letters are most of it.
        if (n <= (word.size() < 5 ? 1 : 2) && (nearest.isEmpty() || n < least)) {
            nearest = word;
            least = n;
        }
    }
    return nearest;
}

} // namespace app
