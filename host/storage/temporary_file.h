#pragma once

#include "os/unfinished_files.h"

#include <QString>

namespace storage {

/// An empty file of a name that nobody else uses, for what is not finished yet. It is removed when this
/// object goes, and when a signal ends the program.
///
/// As long as the program works on it, it is locked: by this removeLeftovers() tells the files of a program
/// that was killed from those that are still in use.
class temporary_file
{
public:
    enum class readers
    {
        owner, ///< for folders that others can look into
        as_usual
    };
    enum class purpose
    {
        contents, ///< holds what it is made for
        claim     ///< names another file, whose name is not ours to choose
    };

    temporary_file() = default;
    ~temporary_file();
    temporary_file(const temporary_file &) = delete;
    temporary_file & operator=(const temporary_file &) = delete;

    /// Makes the file in `folder`. Gives the system's reason when it cannot be made, else an empty text.
    [[nodiscard]] QString create(const QString & folder, readers mayRead, purpose use = purpose::contents);
    /// Appends `bytes`; false when they could not be written whole.
    [[nodiscard]] bool append(const QByteArray & bytes) const;
    /// The file's absolute name.
    [[nodiscard]] QString name() const { return m_sName; }
    /// The file has got another name, or is gone: there is nothing to remove.
    void keep();

private:
    QString m_sName;
    os::unfinished_file m_unfinished;
    int m_iDescriptor = -1; ///< holds the lock
};

/// Removes from `folder` what killed programs of this user have left there: temporary files, and the restored
/// versions that claims name. What a living program uses, what others own, and what merely has such a name
/// stays. Nothing is told: what cannot be removed now may be the next time.
void removeLeftovers(const QString & folder);

/// Ties the text of a claim to the file that it names.
/// @param name the file's name within the claim's folder
/// @param identity empty until the file is there
struct claim_text
{
    static QByteArray begin(const QString & name);
    static QByteArray identity(const QString & file);
};

} // namespace storage
