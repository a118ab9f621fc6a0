#pragma once

#include <QString>

#include <optional>

namespace database::server {

/// Where a server of somebody is, and as whom it is spoken to.
struct server_url
{
    QString scheme;   ///< key of the database: "postgresql", "mysql", "mariadb", "sqlite"
    QString host;     ///< name, address, or the folder of a socket
    int port = 0;     ///< 0 for the usual one
    QString user;     ///< empty for the one that the server's own ways name
    QString password; ///< likewise; never shown
    QString database; ///< that exists already; of SQLite the file

    /// The URL without its password, for messages.
    [[nodiscard]] QString shown() const;
};

/// What somebody says of `place`, which may repeat what it was told, without the password.
[[nodiscard]] QString withoutPassword(QString text, const server_url & place);

/// Whether `reason`, with which the server of `place` refused who came without a password, asks for one.
[[nodiscard]] bool wantsPassword(const server_url & place, const QString & reason);

/// Overwrites the password of the URL `text`, or at its end; gives it as it stood there, empty when there is
/// none.
[[nodiscard]] QByteArray hidePassword(char * text);

/// Whether `text` begins like a URL of a database, so that it is not meant as a file.
[[nodiscard]] bool isUrl(const QString & text);

/// Reads "postgresql://[user[:password]@]host[:port]/database", the same with mysql and mariadb, or
/// "sqlite:FILE"; a socket's folder as host is percent-encoded. Nothing, with the reason, for another text.
[[nodiscard]] std::optional<server_url> readUrl(const QString & text, QString & why);

} // namespace database::server
