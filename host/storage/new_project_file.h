#pragma once

#include <QSqlError>
#include <QString>

#include <functional>

namespace zk::sqlite {
class connection;
}

/// Project files that do not exist yet.
namespace storage::new_project_file {

/// Writes something into a new project file, within its transaction.
using filler = std::function<QSqlError(const zk::sqlite::connection &)>;

/// What became of a new file.
struct outcome
{
    QSqlError error;
    bool isTaken = false; ///< something has that name already, or has got it meanwhile; it is as it was
};

/// Makes the project file `file` with what `fill` writes into its tables. It appears under its name when it
/// is whole, and never in place of anything. Through a link that leads nowhere the file that it names is
/// made.
[[nodiscard]] outcome create(const QString & file, const filler & fill);

/// The bytes of a project file with what `fill` writes into its tables. It exists in a temporary folder only
/// as long as this takes.
[[nodiscard]] QSqlError bytesOf(const filler & fill, QByteArray & bytes);

} // namespace storage::new_project_file
