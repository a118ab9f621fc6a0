#pragma once

#include <QFile>
#include <QString>
#include <QTemporaryDir>

namespace support {

/// A program in a folder of its own that does what a few lines of shell say. It goes away with this object.
class shell_program
{
public:
    explicit shell_program(const QByteArray & lines)
    {
        QFile file(path());
        if (!file.open(QIODevice::WriteOnly) || file.write("#!/bin/sh\n" + lines + '\n') < 0 ||
            !file.flush()) {
            qFatal("the program of the test could not be written");
        }
        file.close();
        file.setPermissions(QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    }

    [[nodiscard]] QString path() const { return m_folder.filePath(QStringLiteral("program")); }
    /// A file beside the program, to leave word in; its name is the shell's "$(dirname "$0")/" + name.
    [[nodiscard]] QString file(const QString & name) const { return m_folder.filePath(name); }

private:
    QTemporaryDir m_folder;
};

} // namespace support
