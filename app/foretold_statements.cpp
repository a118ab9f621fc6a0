#include "app/foretold_statements.h"

#include "model/object_kind.h"

namespace app {

foretold_statements::foretold_statements(const check::report & report)
{
    for (const check::finding & each : report.findings) {
        add(each);
    }
}

void foretold_statements::add(const check::finding & found)
{
    const bool isRefusal = found.what == check::effect::refused;
    if (isRefusal && found.statement) {
        const place_key key = keyOf(*found.statement);
        const bool isAlways = found.when == check::occasion::always;
        QString & code = (isAlways ? m_always : m_withRows)[key];
        code = code.isEmpty() ? QString(found.code) : code;
        if (isAlways || found.weight == check::severity::error) {
            m_certain.insert(key);
        }
    }
    for (const QString & difference : found.differences) {
        m_differences.insert(difference, found.code);
    }
    const bool isOfValues = isRefusal || found.what == check::effect::loss ||
                            found.what == check::effect::silent || found.what == check::effect::differs;
    if (isOfValues) {
        for (const check::object & each : found.objects) {
            m_objects.insert({static_cast<int>(each.kind), each.id}, found.code);
        }
    }
}

QString foretold_statements::refusal(const check::statement_place & of, bool withRows) const
{
    const QString always = m_always.value(keyOf(of));
    return always.isEmpty() && withRows ? m_withRows.value(keyOf(of)) : always;
}

bool foretold_statements::isCertain(const check::statement_place & of) const
{
    return m_certain.contains(keyOf(of));
}

QString foretold_statements::loss(long entity, long property) const
{
    const QString own = m_objects.value({static_cast<int>(model::object_kind::property), property});
    return own.isEmpty() ? m_objects.value({static_cast<int>(model::object_kind::entity), entity}) : own;
}

} // namespace app
