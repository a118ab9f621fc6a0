#pragma once

#include <QLatin1String>
#include <QString>

namespace app {

// How the files of a document are called, and the places in them. Ids tell objects apart wherever names do
// not: names may repeat, differ in case only, or be no names of files.

inline constexpr QLatin1String IndexPage("index.html");
inline constexpr QLatin1String DiagramPage("diagram.html");
inline constexpr QLatin1String DiagramPicture("diagram.svg");
inline constexpr QLatin1String EnumerationPage("enumerations.html");
inline constexpr QLatin1String HistoryPage("history.html");

inline QString entityPage(long id)
{
    return QStringLiteral("entity-%1.html").arg(id);
}

inline QString propertyAnchor(long id)
{
    return QStringLiteral("property-%1").arg(id);
}

inline QString propertyPage(long entity, long property)
{
    return entityPage(entity) + QLatin1Char('#') + propertyAnchor(property);
}

inline QString enumerationAnchor(long id)
{
    return QStringLiteral("enumeration-%1").arg(id);
}

inline QString linkAnchor(long relationship)
{
    return QStringLiteral("link-%1").arg(relationship);
}

/// The place of `anchor` in `page`.
inline QString placeIn(const QString & page, const QString & anchor)
{
    return page + QLatin1Char('#') + anchor;
}

} // namespace app
