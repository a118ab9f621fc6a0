#include "check/finding/values.h"

#include <algorithm>

namespace check {

namespace {

constexpr std::size_t UsualCount = 8;

} // namespace

values::values(std::initializer_list<entry> of)
{
    m_entries.reserve(UsualCount);
    for (const auto & [name, value] : of) {
        insert(name, value);
    }
}

void values::insert(const QString & name, const QString & value)
{
    (*this)[name] = value;
}

void values::insert(const values & more)
{
    for (const auto & [name, value] : more.m_entries) {
        insert(name, value);
    }
}

QString & values::operator[](const QString & name)
{
    const auto found = std::find_if(m_entries.begin(), m_entries.end(),
                                    [&name](const entry & each) { return each.first == name; });
    return found == m_entries.end() ? m_entries.emplace_back(name, QString()).second : found->second;
}

const QString * values::find(QStringView name) const
{
    const auto found = std::find_if(m_entries.begin(), m_entries.end(),
                                    [name](const entry & each) { return each.first == name; });
    return found == m_entries.end() ? nullptr : &found->second;
}

QString values::value(QStringView name) const
{
    const QString * const found = find(name);
    return found == nullptr ? QString() : *found;
}

} // namespace check
