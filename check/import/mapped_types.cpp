#include "check/import/mapped_types.h"

#include <algorithm>
#include <iterator>

namespace check {

namespace {

// Of several types with one SQL type the one that stands first.
constexpr QLatin1String UsualTypes[] = {
    QLatin1String("int"),    QLatin1String("long long"), QLatin1String("short"),      QLatin1String("bool"),
    QLatin1String("double"), QLatin1String("float"),     QLatin1String("QString"),    QLatin1String("QDate"),
    QLatin1String("QTime"),  QLatin1String("QDateTime"), QLatin1String("QByteArray"), QLatin1String("QUuid"),
};

struct nearest_type
{
    const char * word; ///< the type's first word, in capitals
    const char * cppType;
    const char * ifUnsigned; ///< none: the same
};

// clang-format off
constexpr nearest_type NearestTypes[] = {
    {"BOOL", "bool", nullptr}, {"BOOLEAN", "bool", nullptr},
    {"TINYINT", "short", "unsigned short"}, {"SMALLINT", "short", "unsigned short"}, {"INT2", "short", nullptr},
    {"SMALLSERIAL", "short", nullptr},
    {"MEDIUMINT", "int", "unsigned int"}, {"INT", "int", "unsigned int"}, {"INTEGER", "int", "unsigned int"},
    {"INT4", "int", nullptr}, {"SERIAL", "int", nullptr}, {"YEAR", "int", nullptr},
    {"BIGINT", "long long", "unsigned long long"}, {"INT8", "long long", nullptr}, {"BIGSERIAL", "long long", nullptr},
    {"OID", "unsigned int", nullptr},
    {"DECIMAL", "double", nullptr}, {"DEC", "double", nullptr}, {"NUMERIC", "double", nullptr}, {"FIXED", "double", nullptr},
    {"NUMBER", "double", nullptr}, {"MONEY", "double", nullptr}, {"DOUBLE", "double", nullptr},
    {"FLOAT", "float", nullptr}, {"REAL", "float", nullptr},
    {"DATE", "QDate", nullptr}, {"TIME", "QTime", nullptr}, {"TIMESTAMP", "QDateTime", nullptr}, {"DATETIME", "QDateTime", nullptr},
    {"BLOB", "QByteArray", nullptr}, {"TINYBLOB", "QByteArray", nullptr}, {"MEDIUMBLOB", "QByteArray", nullptr},
    {"LONGBLOB", "QByteArray", nullptr}, {"BINARY", "QByteArray", nullptr}, {"VARBINARY", "QByteArray", nullptr},
    {"BYTEA", "QByteArray", nullptr}, {"BIT", "QByteArray", nullptr},
    {"UUID", "QUuid", nullptr},
};
// clang-format on

const QString Text = QStringLiteral("QString");
const QString Uuid = QStringLiteral("QUuid");
/// Holds texts as well, and is none of those that a script indexes by their first characters.
const QString AnyValue = QStringLiteral("QVariant");
const QString TypeOfEnumerations = QStringLiteral("INTEGER"); // what the exporter makes of them

QString nearest(const QString & sqlType)
{
    const database::declared_type declared = database::partsOf(sqlType);
    const auto * const row =
        std::find_if(std::begin(NearestTypes), std::end(NearestTypes),
                     [&](const nearest_type & each) { return declared.word == QLatin1String(each.word); });
    if (declared.isArray || row == std::end(NearestTypes)) {
        return Text;
    }
    const bool isUnsigned = declared.rest.contains(QLatin1String("UNSIGNED")) && row->ifUnsigned != nullptr;
    return QLatin1String(isUnsigned ? row->ifUnsigned : row->cppType);
}

} // namespace

mapped_types::mapped_types(const database::facts & known, const QList<std::pair<QString, QString>> & mapping)
    : m_types(known)
{
    for (const auto & [cppType, sqlType] : mapping) {
        m_shown.insert(cppType, m_types.shown(sqlType));
    }
    for (const QLatin1String usual : UsualTypes) {
        const QString shown = m_shown.value(usual);
        if (!shown.isEmpty() && !m_exact.contains(shown)) {
            m_exact.insert(shown, usual);
        }
    }
    for (const auto & [cppType, sqlType] : mapping) {
        const QString shown = m_shown.value(cppType);
        if (!m_exact.contains(shown) && !cppType.startsWith(u'<')) {
            m_exact.insert(shown, cppType);
        }
    }
}

QString mapped_types::shown(const mapped_type & type) const
{
    return type.forced.isEmpty() ? m_shown.value(type.cppType) : m_types.shown(type.forced);
}

QString mapped_types::shownOfEnumeration(const QString & forced) const
{
    return m_types.shown(forced.isEmpty() ? TypeOfEnumerations : forced);
}

mapped_type mapped_types::typeFor(const QString & sqlType, bool isInKey) const
{
    if (const auto exact = m_exact.constFind(sqlType); exact != m_exact.constEnd()) {
        return {*exact, {}};
    }
    mapped_type type{nearest(sqlType), sqlType};
    // Scripts take the first characters of a text into an index, which a text with a bound does not allow.
    const bool isText = type.cppType == Text || type.cppType == Uuid;
    if (isInKey && isText && m_types.known().keys.prefixes.value && !m_types.of(sqlType).isLarge()) {
        type.cppType = AnyValue;
    }
    return type;
}

} // namespace check
