// The messages of a file of translations, read as Linguist's format has them.
#pragma once

#include <QFile>
#include <QList>
#include <QString>
#include <QXmlStreamReader>

namespace support {

struct message
{
    QString context;
    QString source;
    QString comment;
    QString translation;
    QString type;

    [[nodiscard]] QString id() const
    {
        return context + QLatin1Char('|') + comment + QLatin1Char('|') + source;
    }
};

/// The file of the translations into `language`, as it stands in the sources.
inline QString translationFile(const QString & language)
{
    return QStringLiteral(KORVANE_SOURCE_DIR "/translations/korvane_%1.ts").arg(language);
}

/// The messages of `fileName` in its order; ends the program when the file cannot be read.
inline QList<message> readMessages(const QString & fileName)
{
    QFile file(fileName);
    if (!file.open(QIODevice::ReadOnly)) {
        qFatal("cannot read %s", qPrintable(fileName));
    }
    QList<message> result;
    QXmlStreamReader xml(&file);
    QString context;
    while (!xml.atEnd()) {
        if (xml.readNext() != QXmlStreamReader::StartElement) {
            continue;
        }
        if (xml.name() == QLatin1String("name")) {
            context = xml.readElementText();
        } else if (xml.name() == QLatin1String("message")) {
            result.append({context, {}, {}, {}, {}});
        } else if (xml.name() == QLatin1String("source")) {
            result.last().source = xml.readElementText();
        } else if (xml.name() == QLatin1String("comment")) {
            result.last().comment = xml.readElementText();
        } else if (xml.name() == QLatin1String("translation")) {
            result.last().type = xml.attributes().value(QLatin1String("type")).toString();
            result.last().translation = xml.readElementText(QXmlStreamReader::IncludeChildElements);
        }
    }
    if (xml.hasError()) {
        qFatal("%s: %s", qPrintable(fileName), qPrintable(xml.errorString()));
    }
    return result;
}

} // namespace support
