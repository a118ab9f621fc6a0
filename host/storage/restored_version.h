#pragma once

#include "korvane_global.h"

#include <QByteArray>
#include <QString>

#include <memory>

namespace storage {

/// The project file of a tagged version, restored into a folder that others can write to. Only this user can
/// read it; what others put beside it is never looked at; it is removed when this object goes, when a signal
/// ends the program, and by the next run after the program was killed.
class KORVANE_EXPORT restored_version
{
public:
    restored_version();
    ~restored_version();
    restored_version(const restored_version &) = delete;
    restored_version & operator=(const restored_version &) = delete;

    enum class outcome
    {
        restored,
        damaged,  ///< what is compressed is not whole, or too large
        unwritten ///< the file cannot be written whole
    };
    /// Writes what `compressed` holds, the bytes of model::project_historic, into a new file in `folder`. Its
    /// name is `start`, the present moment and ".korv"; what has such a name already, a link included, is not
    /// touched, and a later moment taken. When it is not restored there is no file, and fileName() is the one
    /// that was tried last.
    [[nodiscard]] outcome restore(const QString & folder, const QString & start,
                                  const QByteArray & compressed);
    [[nodiscard]] QString fileName() const { return m_sFileName; }

private:
    [[nodiscard]] bool create(const QString & folder, const QString & start, const QByteArray & bytes);

    QString m_sFileName;
    struct data;
    std::unique_ptr<data> m_data;
};

/// Removes from `folder` what killed programs of this user have left there; what living ones use, and what
/// others have put there, stays.
KORVANE_EXPORT void removeLeftVersions(const QString & folder);

} // namespace storage
