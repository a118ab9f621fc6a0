#include "database/server/server_url.h"

#include <QUrl>

#include <algorithm>
#include <cstring>
#include <iterator>

namespace database::server {

namespace {

const QString Sqlite = QStringLiteral("sqlite");
/// A kind of server, and what it says to who comes without the password that it wants.
struct server_scheme
{
    QLatin1String key;
    QLatin1String wantsPassword;
};
constexpr server_scheme ServerSchemes[] = {
    {QLatin1String("postgresql"), QLatin1String("no password supplied")},
    {QLatin1String("mysql"), QLatin1String("(using password: NO)")},
    {QLatin1String("mariadb"), QLatin1String("(using password: NO)")},
};

const server_scheme * serverScheme(const QString & key)
{
    const auto * const found = std::find_if(std::begin(ServerSchemes), std::end(ServerSchemes),
                                            [&key](const server_scheme & each) { return each.key == key; });
    return found == std::end(ServerSchemes) ? nullptr : found;
}

/// What is wrong with a URL although its parts could be told apart in some way; empty for nothing. The reason
/// repeats none of them: which is the password is not certain.
QString whyAmbiguous(const QString & text)
{
    const QString behind = text.section(QStringLiteral("://"), 1);
    const QString path = behind.section(QLatin1Char('/'), 1);
    if (path.contains(QLatin1Char('@'))) {
        return QStringLiteral(
            "a '@', '/', '?' or '#' in a name or a password is written %40, %2F, %3F or %23");
    }
    if (path.contains(QLatin1Char('?')) || path.contains(QLatin1Char('#'))) {
        return QStringLiteral("options behind '?' or '#' are not taken; in the name of a database these are "
                              "written %3F and %23");
    }
    const QString place =
        behind.section(QLatin1Char('/'), 0, 0).section(QLatin1Char('@'), -1).section(QLatin1Char(']'), -1);
    const qsizetype colon = place.indexOf(QLatin1Char(':'));
    bool isNumber = false;
    const int port = place.mid(colon + 1).toInt(&isNumber);
    return colon < 0 || (isNumber && port >= 1 && port <= 65535)
               ? QString()
               : QStringLiteral("its port is no number from 1 to 65535");
}

// A folder in the place of a host is no name of one: everything is taken from between the slashes.
void readFolderUrl(const QString & text, server_url & url)
{
    const QString behind = text.section(QStringLiteral("://"), 1);
    const QString authority = behind.section(QLatin1Char('/'), 0, 0);
    const QString place = authority.section(QLatin1Char('@'), -1);
    url.host = QUrl::fromPercentEncoding(place.section(QLatin1Char(':'), 0, 0).toUtf8());
    url.port = place.section(QLatin1Char(':'), 1).toInt();
    if (authority.contains(QLatin1Char('@'))) {
        const QString who = authority.section(QLatin1Char('@'), 0, -2);
        url.user = QUrl::fromPercentEncoding(who.section(QLatin1Char(':'), 0, 0).toUtf8());
        url.password = QUrl::fromPercentEncoding(who.section(QLatin1Char(':'), 1).toUtf8());
    }
    url.database = QUrl::fromPercentEncoding(behind.section(QLatin1Char('/'), 1).toUtf8());
}

} // namespace

QString server_url::shown() const
{
    if (scheme == Sqlite) {
        return scheme + QLatin1Char(':') + database;
    }
    const QString who = user.isEmpty() ? QString() : user + QLatin1Char('@');
    const QString place = host.contains(QLatin1Char(':')) ? QStringLiteral("[%1]").arg(host) : host;
    const QString where = port == 0 ? place : QStringLiteral("%1:%2").arg(place, QString::number(port));
    return QStringLiteral("%1://%2%3/%4").arg(scheme, who, where, database);
}

QString withoutPassword(QString text, const server_url & place)
{
    return place.password.isEmpty() ? text : text.replace(place.password, QStringLiteral("***"));
}

bool wantsPassword(const server_url & place, const QString & reason)
{
    const server_scheme * const scheme = serverScheme(place.scheme);
    return scheme && place.password.isEmpty() && reason.contains(scheme->wantsPassword);
}

QByteArray hidePassword(char * text)
{
    char * const who = std::strstr(text, "://");
    char * const colon = who ? std::strpbrk(who + 3, ":/") : nullptr;
    // The last one, since a password may have been written with signs that belong encoded.
    char * const end = colon && *colon == ':' ? std::strrchr(colon, '@') : nullptr;
    QByteArray password;
    if (end) {
        password = QByteArray(colon + 1, end - colon - 1);
        std::fill(colon + 1, end, '*');
    }
    return password;
}

bool isUrl(const QString & text)
{
    const QString scheme = text.section(QLatin1Char(':'), 0, 0);
    return text.startsWith(Sqlite + QLatin1Char(':')) || text.contains(QLatin1String("://")) ||
           (serverScheme(scheme) != nullptr && text.startsWith(scheme + QLatin1Char(':')));
}

std::optional<server_url> readUrl(const QString & text, QString & why)
{
    const QString scheme = text.section(QLatin1Char(':'), 0, 0);
    server_url url;
    url.scheme = scheme;
    if (scheme == Sqlite) {
        url.database = text.mid(scheme.size() + 1);
        why = url.database.isEmpty() ? QStringLiteral("'%1' names no file").arg(text) : QString();
        return why.isEmpty() ? std::optional(url) : std::nullopt;
    }
    if (serverScheme(scheme) == nullptr) {
        why = QStringLiteral("it begins with '%1'; URLs begin with postgresql, mysql, mariadb or sqlite")
                  .arg(scheme);
        return std::nullopt;
    }
    if (why = whyAmbiguous(text); !why.isEmpty()) {
        return std::nullopt;
    }
    const QUrl parsed(text, QUrl::StrictMode);
    url.host = QUrl::fromPercentEncoding(parsed.host(QUrl::FullyEncoded).toLatin1());
    if (url.host.isEmpty()) {
        readFolderUrl(text, url);
    } else {
        url.port = parsed.port(0);
        url.user = parsed.userName();
        url.password = parsed.password();
        url.database = parsed.path().mid(1);
    }
    if (url.host.isEmpty() || url.database.isEmpty()) {
        why = QStringLiteral("it names no %1; a URL is %2://[user@]host[:port]/database")
                  .arg(url.host.isEmpty() ? QStringLiteral("host") : QStringLiteral("database"), scheme);
        return std::nullopt;
    }
    return url;
}

} // namespace database::server
