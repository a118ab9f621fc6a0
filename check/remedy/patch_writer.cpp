#include "check/remedy/patch_writer.h"

#include "model/entity.h"
#include "model/project.h"
#include "model/property.h"

#include <algorithm>
#include <iterator>

namespace check {

namespace {

using operation = patch_operation::kind;

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
    if (at.isEmpty()) {
        return {};
    }
    if (m_lastEntity != owner->getId()) {
        m_lastEntity = owner->getId();
        m_lastProperties.clear();
        for (const auto & each : owner->getListOfProperty(true, true, false)->values()) {
            m_lastProperties.push_back(each->getId());
        }
    }
    const auto found = std::find(m_lastProperties.begin(), m_lastProperties.end(), of.getId());
    return found == m_lastProperties.end()
               ? QString()
               : at + QStringLiteral("/properties/") +
                     QString::number(std::distance(m_lastProperties.begin(), found));
}

void patch_writer::change(patch_operation::kind what, const QString & path, const json & value)
{
    m_changes.push_back({what, path, value, {}});
}

void patch_writer::test(const QString & at, long id)
{
    const QString path = at + QStringLiteral("/id");
    const bool isTested = std::any_of(m_tests.begin(), m_tests.end(),
                                      [&path](const patch_operation & each) { return each.path == path; });
    if (!isTested) {
        m_tests.push_back({operation::test, path, id, {}});
    }
}

void patch_writer::touch(const model::entity & of, const QString & at)
{
    if (std::find(m_touched.begin(), m_touched.end(), of.getId()) == m_touched.end()) {
        m_touched.push_back(of.getId());
        change(operation::remove, at + QStringLiteral("/version"));
    }
}

QString patch_writer::begin(const model::entity & of)
{
    const QString at = m_at.entity(of.getId());
    if (!at.isEmpty()) {
        test(at, of.getId());
        touch(of, at);
    }
    return at;
}

QString patch_writer::begin(const model::property & of)
{
    const QString at = m_at.property(of);
    const auto owner = of.getEntity();
    if (!at.isEmpty()) {
        const QString atOwner = m_at.entity(owner->getId());
        test(atOwner, owner->getId());
        test(at, of.getId());
        touch(*owner, atOwner);
    }
    return at;
}

void patch_writer::set(const model::entity & of, const char * field, const json & value)
{
    if (const QString at = begin(of); !at.isEmpty()) {
        change(operation::add, at + u'/' + QLatin1String(field), value);
    }
}

void patch_writer::countUp(const model::entity & of)
{
    const QString at = m_at.entity(of.getId());
    if (!at.isEmpty()) {
        test(at, of.getId());
        change(operation::replace, at + QStringLiteral("/version"), of.getVersion() + 1);
    }
}

void patch_writer::remove(const model::entity & of, const char * field)
{
    if (const QString at = begin(of); !at.isEmpty()) {
        change(operation::remove, at + u'/' + QLatin1String(field));
    }
}

void patch_writer::setMetaData(const model::entity & of, const char * key, const json & value)
{
    const QString entity = begin(of);
    if (entity.isEmpty()) {
        return;
    }
    const QString at = entity + QStringLiteral("/metaData");
    if (value.is_null()) {
        change(operation::remove, at + u'/' + escaped(key));
    } else if (of.getAllMetaData().isEmpty()) {
        change(operation::add, at, {{key, value}});
    } else {
        change(operation::add, at + u'/' + escaped(key), value);
    }
}

void patch_writer::set(const model::property & of, const char * field, const json & value)
{
    if (const QString at = begin(of); !at.isEmpty()) {
        change(operation::add, at + u'/' + QLatin1String(field), value);
    }
}

void patch_writer::remove(const model::property & of, const char * field)
{
    if (const QString at = begin(of); !at.isEmpty()) {
        change(operation::remove, at + u'/' + QLatin1String(field));
    }
}

void patch_writer::addProperty(const model::entity & to, int place, const json & property)
{
    if (const QString at = begin(to); !at.isEmpty()) {
        const QString where = place < 0 ? QStringLiteral("-") : QString::number(place);
        change(operation::add, at + QStringLiteral("/properties/") + where, property);
    }
}

void patch_writer::move(const model::entity & what, const model::entity & before)
{
    const QString from = m_at.entity(what.getId());
    const QString to = m_at.entity(before.getId());
    if (!from.isEmpty() && !to.isEmpty()) {
        test(from, what.getId());
        test(to, before.getId());
        m_changes.push_back({operation::move, to, {}, from});
    }
}

void patch_writer::move(const model::property & what, const model::property & before)
{
    const QString from = begin(what);
    const QString to = from.isEmpty() ? QString() : begin(before);
    if (!to.isEmpty()) {
        m_changes.push_back({operation::move, to, {}, from});
    }
}

std::vector<patch_operation> patch_writer::take()
{
    if (m_changes.empty()) {
        return {};
    }
    std::vector<patch_operation> patch = std::move(m_tests);
    patch.insert(patch.end(), std::make_move_iterator(m_changes.begin()),
                 std::make_move_iterator(m_changes.end()));
    return patch;
}

} // namespace check
