#include "app/window/diagram/diagram_image.h"

#include "app/window/diagram/diagram_scene.h"

#include "app/whole_file.h"

#include <QBuffer>
#include <QCoreApplication>
#include <QDir>
#include <QImage>
#include <QPainter>
#include <QSvgGenerator>

#include <algorithm>
#include <cmath>

namespace app::diagram_image {

namespace {

constexpr qreal PixelsPerPoint = 2;
constexpr qreal LargestSide = 12000;      // pixels
constexpr qreal LargestArea = 32000000.0; // pixels: 128 MB of memory, what Qt programs read at the most
constexpr int ScreenResolution = 96;      // pixels per inch, what SVG and browsers count with
constexpr qreal InchesPerMetre = 39.37;

struct texts
{
    Q_DECLARE_TR_FUNCTIONS(app::diagram_image)
};

QString failure(const QString & file, const QString & why)
{
    return texts::tr("The diagram was not written to %1: %2").arg(QDir::toNativeSeparators(file), why);
}

QString notDrawn(const QString & file)
{
    return failure(file, texts::tr("it cannot be drawn"));
}

bool writePicture(const QString & file, const QByteArray & bytes, QString & reason)
{
    const zk::ZkBool written = writeWholeFile(file, bytes);
    reason = written ? QString() : failure(file, written.getDesc());
    return written.getValue();
}

/// A browser that does not have the font takes another one without serifs.
QByteArray withFallbackFont(QByteArray svg, const QFont & font)
{
    // In texts the quotation marks are written as references, so that only attributes can match.
    const QByteArray family = font.family().toHtmlEscaped().toUtf8();
    return svg.replace("font-family=\"" + family + '"', "font-family=\"" + family + ", sans-serif\"");
}

} // namespace

bool saveSvg(const diagram_picture & picture, const QFont & font, const QString & title,
             const QString & description, const QString & file, QString & reason)
{
    const diagram_style style = diagram_style::printed(font);
    diagram_scene scene(picture, style);
    const QRectF place(QPointF(), scene.sceneRect().size());
    QBuffer buffer;
    QSvgGenerator generator;
    generator.setOutputDevice(&buffer);
    generator.setResolution(ScreenResolution);
    generator.setSize(place.size().toSize());
    generator.setViewBox(place);
    generator.setTitle(drawable(title).toHtmlEscaped());
    generator.setDescription(drawable(description).toHtmlEscaped());
    QPainter painter;
    if (!painter.begin(&generator)) {
        reason = notDrawn(file);
        return false;
    }
    painter.fillRect(place, Qt::white);
    scene.render(&painter, place, scene.sceneRect());
    painter.end();
    return writePicture(file, withFallbackFont(buffer.data(), style.text), reason);
}

bool savePng(const diagram_picture & picture, const QFont & font, const QString & file, QString & reason)
{
    diagram_scene scene(picture, diagram_style::printed(font));
    const QSizeF size = scene.sceneRect().size();
    const qreal scale = std::min({PixelsPerPoint, LargestSide / std::max(size.width(), size.height()),
                                  std::sqrt(LargestArea / (size.width() * size.height()))});
    const QSize pixels(static_cast<int>(size.width() * scale), static_cast<int>(size.height() * scale));
    QImage image(pixels.expandedTo({1, 1}), QImage::Format_RGB32);
    if (image.isNull()) {
        reason = failure(file, texts::tr("there is not enough memory for the picture"));
        return false;
    }
    image.fill(Qt::white);
    const int resolution = qRound(ScreenResolution * scale * InchesPerMetre);
    image.setDotsPerMeterX(resolution);
    image.setDotsPerMeterY(resolution);
    QPainter painter(&image);
    painter.setRenderHints(QPainter::Antialiasing | QPainter::TextAntialiasing);
    scene.render(&painter, image.rect(), scene.sceneRect());
    painter.end();
    QBuffer buffer;
    if (!image.save(&buffer, "PNG")) {
        reason = notDrawn(file);
        return false;
    }
    if (!writePicture(file, buffer.data(), reason)) {
        return false;
    }
    if (scale < PixelsPerPoint) {
        reason = texts::tr("The diagram is large: the picture was made smaller, %1 × %2 pixels")
                     .arg(grouped(image.width()), grouped(image.height()));
    }
    return true;
}

} // namespace app::diagram_image
