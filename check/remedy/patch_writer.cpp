#include "check/remedy/patch_writer.h"

#include "model/entity.h"
#include "model/project.h"
#include "model/property.h"

namespace check {

namespace {

/// A part of a JSON Pointer.
QString escaped(const char * part)
{
    return QString::fromUtf8(part).replace(u'~', QLatin1String("~0")).replace(u'/', QLatin1String("~1"));
}

} // namespace

text_positions::text_positions(const model::project & of)
{
    const auto entities = of.getListOfAllEntities();
    int place = 0;
    for (const auto & each : entities ? entities->values() : std::vector<std::shared_ptr<model::entity>>()) {
        m_entities.insert(each->getId(), place++);
    }
}

QString text_positions::entity(long id) const
{
    const auto found = m_entities.constFind(id);
    return found == m_entities.constEnd() ? QString() : QStringLiteral("/entities/%1").arg(*found);
}

QString text_positions::property(const model::property & of) const
{
    const auto owner = of.getEntity();
    const QString at = owner ? entity(owner->getId()) : QString();
    int place = 0;
    for (const auto & each : at.isEmpty() ? std::vector<std::shared_ptr<model::property>>()
                                          : owner->getListOfProperty(true, true, false)->values()) {
        if (each->getId() == of.getId()) {
            return QStringLiteral("%1/properties/%2").arg(at, QString::number(place));
        }
        ++place;
    }
    return {};
}

void patch_writer::add(const char * op, const QString & path, const json & value)
{
    json made = {{"op", op}, {"path", path.toStdString()}};
    if (!value.is_discarded()) {
        made["value"] = value;
    }
    m_changes.push_back(std::move(made));
}

void patch_writer::test(const QString & at, long id)
{
    if (!m_tested.contains(at)) {
        m_tested.insert(at);
        m_tests.push_back(
            {{"op", "test"}, {"path", (at + QStringLiteral("/id")).toStdString()}, {"value", id}});
    }
}

void patch_writer::touch(const model::entity & of)
{
    if (!m_touched.contains(of.getId())) {
        m_touched.insert(of.getId());
        add("remove", m_at.entity(of.getId()) + QStringLiteral("/version"), json(json::value_t::discarded));
    }
}

bool patch_writer::begin(const model::entity & of)
{
    const QString at = m_at.entity(of.getId());
    if (!at.isEmpty()) {
        test(at, of.getId());
        touch(of);
    }
    return !at.isEmpty();
}

bool patch_writer::begin(const model::property & of)
{
    const QString at = m_at.property(of);
    const auto owner = of.getEntity();
    if (!at.isEmpty()) {
        test(m_at.entity(owner->getId()), owner->getId());
        test(at, of.getId());
        touch(*owner);
    }
    return !at.isEmpty();
}

void patch_writer::set(const model::entity & of, const char * field, const json & value)
{
    if (begin(of)) {
        add("add", m_at.entity(of.getId()) + u'/' + QLatin1String(field), value);
    }
}

void patch_writer::countUp(const model::entity & of)
{
    const QString at = m_at.entity(of.getId());
    if (!at.isEmpty()) {
        test(at, of.getId());
        add("replace", at + QStringLiteral("/version"), of.getVersion() + 1);
    }
}

void patch_writer::remove(const model::entity & of, const char * field)
{
    if (begin(of)) {
        add("remove", m_at.entity(of.getId()) + u'/' + QLatin1String(field), json(json::value_t::discarded));
    }
}

void patch_writer::setMetaData(const model::entity & of, const char * key, const json & value)
{
    if (!begin(of)) {
        return;
    }
    const QString at = m_at.entity(of.getId()) + QStringLiteral("/metaData");
    if (value.is_null()) {
        add("remove", at + u'/' + escaped(key), json(json::value_t::discarded));
    } else if (of.getAllMetaData().isEmpty()) {
        add("add", at, {{key, value}});
    } else {
        add("add", at + u'/' + escaped(key), value);
    }
}

void patch_writer::set(const model::property & of, const char * field, const json & value)
{
    if (begin(of)) {
        add("add", m_at.property(of) + u'/' + QLatin1String(field), value);
    }
}

void patch_writer::remove(const model::property & of, const char * field)
{
    if (begin(of)) {
        add("remove", m_at.property(of) + u'/' + QLatin1String(field), json(json::value_t::discarded));
    }
}

void patch_writer::addProperty(const model::entity & to, int place, const json & property)
{
    if (begin(to)) {
        const QString where = place < 0 ? QStringLiteral("-") : QString::number(place);
        add("add", m_at.entity(to.getId()) + QStringLiteral("/properties/") + where, property);
    }
}

void patch_writer::move(const model::entity & what, const model::entity & before)
{
    const QString from = m_at.entity(what.getId());
    const QString to = m_at.entity(before.getId());
    if (!from.isEmpty() && !to.isEmpty()) {
        test(from, what.getId());
        test(to, before.getId());
        m_changes.push_back({{"op", "move"}, {"from", from.toStdString()}, {"path", to.toStdString()}});
    }
}

void patch_writer::move(const model::property & what, const model::property & before)
{
    if (begin(what) && begin(before)) {
        m_changes.push_back({{"op", "move"},
                             {"from", m_at.property(what).toStdString()},
                             {"path", m_at.property(before).toStdString()}});
    }
}

patch_writer::json patch_writer::take()
{
    const bool isEmpty = m_changes.empty();
    json patch = isEmpty ? json() : std::move(m_tests);
    for (json & each : m_changes) {
        patch.push_back(std::move(each));
    }
    return patch;
}

} // namespace check
