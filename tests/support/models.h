#pragma once

#include <QFile>
#include <QString>

namespace support {

inline constexpr const char * NoPublicModels =
    "the public models are not beside the project; KORVANE_MODELS names their folder";

/// The text of a model: one of the samples, or a public one from beside the project; empty when it is not
/// there.
inline QByteArray modelText(const QString & name)
{
    const QString elsewhere =
        qEnvironmentVariable("KORVANE_MODELS", QStringLiteral(KORVANE_SOURCE_DIR "/../shared/models"));
    for (const QString & folder : {QStringLiteral(KORVANE_SOURCE_DIR "/samples"), elsewhere}) {
        QFile file(folder + QLatin1Char('/') + name + QStringLiteral(".json"));
        if (file.open(QIODevice::ReadOnly)) {
            return file.readAll();
        }
    }
    return {};
}

} // namespace support
