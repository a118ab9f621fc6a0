#include "storage/text_fields.h"

#include "storage/id_marks.h"
#include "storage/texts.h"

#include <algorithm>

namespace storage::text_tree {

namespace {

QString notAnObject(owner kind)
{
    switch (kind) {
    case owner::project:
        return texts::tr("the project must be an object");
    case owner::relationship:
        return texts::tr("relationship must be an object");
    case owner::listed:
        break;
    }
    return texts::tr("must be an object");
}

} // namespace

QString place::text() const
{
    const QString own =
        model_check::placeOf(QString::fromLatin1(list), static_cast<qsizetype>(index), nameIn(object));
    return parent ? parent->text() + QStringLiteral(" / ") + own : own;
}

fields::fields(const value & object, const place * where, text_cache & cache, owner kind)
    : m_object(object), m_where(where), m_texts(cache), m_kind(kind)
{
    if (!object.as<value::object>()) {
        fail(notAnObject(kind));
    }
}

void fields::fail(const QString & reason) const
{
    throw text_error{{m_where ? m_where->text() : QString(), reason}};
}

QString fields::called(const char * name) const
{
    const QString field =
        m_kind == owner::relationship ? texts::tr("relationship field '%1'") : texts::tr("field '%1'");
    return field.arg(QString::fromLatin1(name));
}

void fields::failField(const char * name, const QString & reason) const
{
    fail(reason.arg(called(name)));
}

const value * fields::find(std::string_view name)
{
    const value * const found = m_object.find(name);
    if (found) {
        m_known.push_back(found);
    }
    return found;
}

const value & fields::require(const char * name)
{
    const value * const found = find(name);
    if (!found) {
        failField(name, texts::tr("%1 is missing"));
    }
    return *found;
}

QString fields::textOf(const char * name, const value & v) const
{
    const auto * const text = v.as<std::string>();
    if (!text) {
        failField(name, texts::tr("%1 must be a string"));
    }
    return m_texts.shared(*text);
}

QString fields::text(const char * name)
{
    const value * const found = find(name);
    return found ? textOf(name, *found) : QString();
}

QString fields::nonEmptyText(const char * name)
{
    const QString text = requiredText(name);
    if (text.isEmpty()) {
        failField(name, texts::tr("%1 must not be empty"));
    }
    return text;
}

long fields::numberOf(const char * name, const value & v, long min, long max) const
{
    const std::optional<std::int64_t> number = integerOf(v);
    if (!number || *number < min || *number > max) {
        fail(texts::tr("%1 must be an integer from %2 to %3")
                 .arg(called(name), QString::number(min), QString::number(max)));
    }
    return static_cast<long>(*number);
}

long fields::idOf(const char * name, const value & v) const
{
    return numberOf(name, v, 1, LargestId);
}

long fields::id(const char * name)
{
    const value * const found = find(name);
    return found ? idOf(name, *found) : 0;
}

bool fields::flagOf(const char * name, const value & v) const
{
    const bool * const flag = v.as<bool>();
    if (!flag) {
        failField(name, texts::tr("%1 must be true or false"));
    }
    return *flag;
}

bool fields::flag(const char * name, bool whenAbsent)
{
    const value * const found = find(name);
    return found ? flagOf(name, *found) : whenAbsent;
}

const value::list & fields::list(const char * name)
{
    static const value::list none;
    const value * const found = find(name);
    const auto * const list = found ? found->as<value::list>() : &none;
    if (!list) {
        failField(name, texts::tr("%1 must be an array"));
    }
    return *list;
}

void fields::finish() const
{
    const std::string * unknown = nullptr;
    for (const member & m : *m_object.as<value::object>()) {
        // Of several the same one is told however they are arranged.
        if (!isKnown(m) && (!unknown || m.name < *unknown)) {
            unknown = &m.name;
        }
    }
    if (unknown) {
        const QString reason = m_kind == owner::relationship ? texts::tr("unknown relationship field '%1'")
                                                             : texts::tr("unknown field '%1'");
        fail(reason.arg(model_check::printable(QString::fromStdString(*unknown))));
    }
}

bool fields::isKnown(const member & m) const
{
    return std::find(m_known.begin(), m_known.end(), &m.content) != m_known.end();
}

std::optional<std::int64_t> integerOf(const value & v)
{
    if (const auto * const number = v.as<std::int64_t>()) {
        return *number;
    }
    const auto * const number = v.as<std::uint64_t>();
    return number && *number <= static_cast<std::uint64_t>(std::numeric_limits<std::int64_t>::max())
               ? std::optional(static_cast<std::int64_t>(*number))
               : std::nullopt;
}

} // namespace storage::text_tree
