#pragma once

#include "check/finding/finding.h"

#include <QHash>
#include <QString>

#include <memory>
#include <vector>

namespace model {
class entity;
class project;
class property;
} // namespace model

namespace check {

/// Where objects stand in the text form of a model, as a dump writes it.
class text_positions
{
public:
    explicit text_positions(const model::project & of);

    /// As a JSON Pointer: "/entities/2"; empty when the model has it not.
    [[nodiscard]] QString entity(long id) const;
    /// "/entities/2/properties/1".
    [[nodiscard]] QString property(const model::property & of) const;

private:
    QHash<long, int> m_entities;
    // Of the entity that was asked about last: findings come entity by entity.
    mutable long m_lastEntity = 0;
    mutable std::vector<long> m_lastProperties; ///< ids, in their order
};

/// Puts a JSON Patch together that changes the text form of a model. Before it changes an object it tests the
/// object's id, so that it never meets another one; an entity that changes loses its version number, which
/// then counts up by itself.
class patch_writer
{
public:
    using json = nlohmann::ordered_json;

    explicit patch_writer(const text_positions & at) : m_at(at) {}

    void set(const model::entity & of, const char * field, const json & value);
    void remove(const model::entity & of, const char * field);
    /// The meta-data of that key; removed for null.
    void setMetaData(const model::entity & of, const char * key, const json & value);
    /// @param field of the property, or "relationship/extraTable" for one of its relationship
    void set(const model::property & of, const char * field, const json & value);
    void remove(const model::property & of, const char * field);
    /// @param place among the properties of the entity; -1 for the end
    void addProperty(const model::entity & to, int place, const json & property);
    /// Puts an entity, or a property of the same entity, before another one.
    void move(const model::entity & what, const model::entity & before);
    void move(const model::property & what, const model::property & before);

    /// Counts the entity's version number up, where nothing else of it changes.
    void countUp(const model::entity & of);

    /// The patch; empty when there is nothing to change.
    [[nodiscard]] std::vector<patch_operation> take();

private:
    void test(const QString & at, long id);
    void touch(const model::entity & of, const QString & at);
    void change(patch_operation::kind what, const QString & path, const json & value = {});
    /// Where the object stands in the text form, so that it can be changed; its id is tested then. Empty when
    /// it is not there.
    QString begin(const model::entity & of);
    QString begin(const model::property & of);

    const text_positions & m_at;
    std::vector<long> m_touched;
    std::vector<patch_operation> m_tests;
    std::vector<patch_operation> m_changes;
};

} // namespace check
