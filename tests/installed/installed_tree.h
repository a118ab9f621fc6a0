#pragma once

#include "support/program.h"

#include <QTemporaryDir>

namespace support {

/// What is installed, in a folder of its own that goes with this object.
class installed_tree
{
public:
    /// Installs; the result of that.
    [[nodiscard]] program_result install() const
    {
        return runProcess(QStringLiteral("cmake"),
                          {QStringLiteral("--install"), QStringLiteral(KORVANE_BUILD_DIR),
                           QStringLiteral("--prefix"), m_prefix.path()},
                          {}, {});
    }
    [[nodiscard]] QString path(const QString & name = QString()) const { return m_prefix.filePath(name); }
    /// Configures and builds the project of `source` in `folder` as somebody else would, with what is
    /// installed.
    [[nodiscard]] program_result build(const QString & source, const QString & folder) const
    {
        const program_result configured = runProcess(
            QStringLiteral("cmake"),
            {QStringLiteral("-G"), QStringLiteral("Ninja"), QStringLiteral("-S"), source,
             QStringLiteral("-B"), folder, QStringLiteral("-DCMAKE_PREFIX_PATH=") + m_prefix.path(),
             QStringLiteral("-DCMAKE_CXX_FLAGS=-Wall -Wextra -Werror")},
            {}, {});
        return configured.status != 0
                   ? configured
                   : runProcess(QStringLiteral("cmake"), {QStringLiteral("--build"), folder}, {}, {});
    }
    /// Builds the sample plug-in that is installed.
    [[nodiscard]] program_result buildSamplePlugin(const QString & folder) const
    {
        return build(path(QStringLiteral("share/korvane/samples/plugin")), folder);
    }

private:
    QTemporaryDir m_prefix;
};

} // namespace support
