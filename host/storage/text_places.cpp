#include "storage/text_places.h"

#include "model/project.h"

#include <QString>

#include <algorithm>
#include <iterator>
#include <string>
#include <vector>

#include <nlohmann/json.hpp>

namespace storage {

namespace {

using json = nlohmann::json;

/// Walks over bytes and tells how many were taken: the parser's events do not say where they are.
class counted_bytes
{
public:
    using iterator_category = std::input_iterator_tag;
    using value_type = char;
    using difference_type = std::ptrdiff_t;
    using pointer = const char *;
    using reference = const char &;

    counted_bytes(const char * at, qsizetype * taken) : m_pAt(at), m_pTaken(taken) {}

    reference operator*() const { return *m_pAt; }
    counted_bytes & operator++()
    {
        ++m_pAt;
        ++*m_pTaken;
        return *this;
    }
    counted_bytes operator++(int)
    {
        const counted_bytes before = *this;
        ++*this;
        return before;
    }
    friend bool operator==(const counted_bytes & a, const counted_bytes & b) { return a.m_pAt == b.m_pAt; }

private:
    const char * m_pAt;
    qsizetype * m_pTaken;
};

struct property_offsets
{
    qsizetype begin = 0;
    qsizetype relationship = 0; ///< 0 for none
};

struct entity_offsets
{
    qsizetype begin = 0;
    std::vector<property_offsets> properties;
};

/// Notes where objects begin, in the order of the text.
class offset_reader : public nlohmann::json_sax<json>
{
public:
    explicit offset_reader(const qsizetype & taken) : m_taken(taken) {}

    std::vector<qsizetype> enumerations;
    std::vector<entity_offsets> entities;

    bool null() override { return true; }
    bool boolean(bool) override { return true; }
    bool number_integer(number_integer_t) override { return true; }
    bool number_unsigned(number_unsigned_t) override { return true; }
    bool number_float(number_float_t, const string_t &) override { return true; }
    bool string(string_t &) override { return true; }
    bool binary(binary_t &) override { return false; }
    bool start_object(std::size_t) override
    {
        note(m_taken - 1);
        m_fields.emplace_back();
        return true;
    }
    bool key(string_t & name) override
    {
        m_fields.back() = name;
        return true;
    }
    bool end_object() override { return close(); }
    bool start_array(std::size_t) override
    {
        m_fields.emplace_back();
        return true;
    }
    bool end_array() override { return close(); }
    bool parse_error(std::size_t, const std::string &, const json::exception &) override { return false; }

private:
    bool close()
    {
        m_fields.pop_back();
        return true;
    }
    /// An object begins at `offset`.
    void note(qsizetype offset)
    {
        const std::size_t depth = m_fields.size();
        if (depth == 2 && m_fields[0] == "enumerations") {
            enumerations.push_back(offset);
        } else if (depth == 2 && m_fields[0] == "entities") {
            entities.push_back({offset, {}});
        } else if (depth == 4 && m_fields[0] == "entities" && m_fields[2] == "properties") {
            entities.back().properties.push_back({offset, 0});
        } else if (depth == 5 && m_fields[0] == "entities" && m_fields[2] == "properties" &&
                   m_fields[4] == "relationship") {
            entities.back().properties.back().relationship = offset;
        }
    }

    const qsizetype & m_taken;
    std::vector<std::string> m_fields; ///< that is being read of each open object, empty for a list
};

} // namespace

text_places::text_places(const QByteArray & text, const model::project & project) : m_text(text)
{
    using model::object_kind;
    qsizetype taken = 0;
    offset_reader reader(taken);
    json::sax_parse(counted_bytes(text.constData(), &taken),
                    counted_bytes(text.constData() + text.size(), &taken), &reader);
    for (qsizetype end = text.indexOf('\n'); end >= 0; end = text.indexOf('\n', end + 1)) {
        m_lineBegins.push_back(end + 1);
    }
    auto enumerationAt = reader.enumerations.cbegin();
    for (const auto & enumeration : project.getListOfEnumeration()->values()) {
        of(object_kind::enumeration).insert(enumeration->getId(), *enumerationAt++);
    }
    auto entityAt = reader.entities.cbegin();
    for (const auto & entity : project.getListOfAllEntities()->values()) {
        of(object_kind::entity).insert(entity->getId(), entityAt->begin);
        auto propertyAt = entityAt->properties.cbegin();
        for (const auto & property : entity->getListOfProperty(true, true, false)->values()) {
            of(object_kind::property).insert(property->getId(), propertyAt->begin);
            if (property->hasRelationship()) {
                of(object_kind::relationship)
                    .insert(property->getRelation()->getId(), propertyAt->relationship);
            }
            ++propertyAt;
        }
        ++entityAt;
    }
}

std::optional<text_place> text_places::find(model::object_kind kind, long id) const
{
    const offsets & known = m_offsets[static_cast<std::size_t>(kind)];
    const auto it = known.constFind(id);
    if (it == known.constEnd()) {
        return std::nullopt;
    }
    const auto line = std::upper_bound(m_lineBegins.cbegin(), m_lineBegins.cend(), *it) - 1;
    return text_place{static_cast<int>(line - m_lineBegins.cbegin()) + 1,
                      static_cast<int>(QString::fromUtf8(m_text.mid(*line, *it - *line)).size()) + 1};
}

} // namespace storage
