#pragma once

#include <QString>
#include <QStringList>

#include <random>

namespace support {

/// Chance with a seed: the same seed gives the same everywhere.
class dice
{
public:
    explicit dice(unsigned seed) : m_random(seed) {}

    [[nodiscard]] int below(int limit) { return static_cast<int>(m_random() % static_cast<unsigned>(limit)); }
    [[nodiscard]] bool oneIn(int n) { return below(n) == 0; }
    template <class List>
    [[nodiscard]] const auto & of(const List & list)
    {
        return *(std::begin(list) + below(static_cast<int>(std::size(list))));
    }

private:
    std::mt19937 m_random;
};

/// Names as a person gives them who knows what databases take.
[[nodiscard]] QString plainTable(dice & chance);
[[nodiscard]] QString plainColumn(dice & chance);
/// Names that databases cut, fold, clash on or do not take: few short ones that meet each other again,
/// reserved words, lengths about the limits, letters beyond ASCII, marks in the middle.
[[nodiscard]] QString wildName(dice & chance);

/// SQL types that each of the databases knows.
[[nodiscard]] QString plainSqlType(dice & chance);
/// Types of all kinds of databases, with lengths that some do not take.
[[nodiscard]] QString wildSqlType(dice & chance);
/// A C++ type; one in many has no row in the lists of types.
[[nodiscard]] QString cppType(dice & chance);

} // namespace support
