#pragma once

#include "storage/model_check.h"

#include <QByteArray>

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

/// JSON text as a tree, with the errors that a person needs to find the place.
namespace storage::text_tree {

/// Thrown inside the reading of a text only; storage::text_form::read() turns it into its result.
struct text_error
{
    model_check::finding finding;
};

struct member;

/// A value of the text.
struct value
{
    using list = std::vector<value>;
    using object = std::vector<member>; ///< in the order of the text, no name twice

    /// Numbers are signed when they are negative, else unsigned, and double with a fraction or an exponent.
    std::variant<std::nullptr_t, bool, std::int64_t, std::uint64_t, double, std::string, list, object>
        content;

    /// The content when it is of the type T, else null.
    template <class T>
    [[nodiscard]] const T * as() const
    {
        return std::get_if<T>(&content);
    }
    /// The member `name` of an object; null when it is none or has none.
    [[nodiscard]] const value * find(std::string_view name) const;
};

struct member
{
    std::string name;
    value content;
};

/// Lists within the entries of a list, whose entries are not kept in the tree: each is given away as soon as
/// it is whole, so that a large text costs little memory.
struct given_away
{
    const char * outer; ///< field of the root
    const char * inner; ///< field of an entry of the outer list
    /// Takes an object of the inner list of the entry `index` of the outer list.
    std::function<void(std::size_t index, const value & entry)> take;
};

/// The tree of `text`. Refused with a text_error: what is no JSON, a field given twice, nesting that is too
/// deep.
[[nodiscard]] value parse(const QByteArray & text, const given_away * entries = nullptr);

/// The text under "name" in `object`, as far as there is one.
[[nodiscard]] QString nameIn(const value & object);

} // namespace storage::text_tree
