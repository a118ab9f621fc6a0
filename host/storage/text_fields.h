#pragma once

#include "storage/text_cache.h"
#include "storage/text_tree.h"

#include <boost/container/small_vector.hpp>

#include <limits>
#include <optional>

/// The fields of the objects of a text, each of the kind that it must have.
namespace storage::text_tree {

/// An object's place in the text, put into words only when an error needs it.
struct place
{
    const place * parent;
    const char * list;
    std::size_t index;
    const value & object;

    [[nodiscard]] QString text() const;
};

/// Whose fields are read; a relationship has no place of its own, but that of its property.
enum class owner
{
    project,
    listed, ///< an entry of a list
    relationship
};

/// The fields of one object of the text. What was not asked for until finish() is unknown. What is missing or
/// of another kind than it is asked for is refused with a text_error.
class fields
{
public:
    static constexpr long MaxNumber = std::numeric_limits<long>::max();

    /// @param where place of the object, null for the project itself
    fields(const value & object, const place * where, text_cache & texts, owner kind = owner::listed);

    [[noreturn]] void fail(const QString & reason) const;
    /// The field `name` as sentences call it.
    [[nodiscard]] QString called(const char * name) const;
    /// @param reason a sentence about the field, which is its %1
    [[noreturn]] void failField(const char * name, const QString & reason) const;

    /// The field `name`, null when it is absent.
    [[nodiscard]] const value * find(std::string_view name);
    [[nodiscard]] const value & require(const char * name);

    [[nodiscard]] QString textOf(const char * name, const value & v) const;
    /// A text, empty when it is absent.
    [[nodiscard]] QString text(const char * name);
    [[nodiscard]] QString requiredText(const char * name) { return textOf(name, require(name)); }
    [[nodiscard]] QString nonEmptyText(const char * name);

    [[nodiscard]] long numberOf(const char * name, const value & v, long min, long max = MaxNumber) const;
    [[nodiscard]] long idOf(const char * name, const value & v) const;
    /// An id, 0 when it is absent.
    [[nodiscard]] long id(const char * name);

    [[nodiscard]] bool flagOf(const char * name, const value & v) const;
    [[nodiscard]] bool flag(const char * name, bool whenAbsent);

    /// A list, empty when it is absent.
    [[nodiscard]] const value::list & list(const char * name);

    /// Refuses what nobody has asked for.
    void finish() const;

private:
    [[nodiscard]] bool isKnown(const member & m) const;

    static constexpr std::size_t UsualCount = 16;

    const value & m_object;
    const place * m_where;
    text_cache & m_texts;
    owner m_kind;
    boost::container::small_vector<const value *, UsualCount> m_known;
};

/// The integer that `v` is, as far as it fits.
[[nodiscard]] std::optional<std::int64_t> integerOf(const value & v);

} // namespace storage::text_tree
