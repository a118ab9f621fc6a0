#include "app/window/diagram/diagram_icons.h"

#include <QFile>
#include <QPainter>
#include <QPixmap>
#include <QSvgRenderer>

/// A static library's resources are there only when something refers to them, from outside of namespaces.
static void loadDiagramResources()
{
    Q_INIT_RESOURCE(diagram);
}

namespace app {

namespace {

constexpr const char * DrawnIn = "#000000";

QPixmap drawn(QByteArray svg, const QColor & color, int size)
{
    QSvgRenderer renderer(svg.replace(DrawnIn, color.name().toLatin1()));
    QPixmap pixmap(size, size);
    pixmap.fill(Qt::transparent);
    QPainter painter(&pixmap);
    renderer.render(&painter);
    return pixmap;
}

} // namespace

QIcon diagramIcon(const QString & name, const QPalette & palette)
{
    loadDiagramResources();
    QFile file(QStringLiteral(":/korvane/window/icons/diagram_%1.svg").arg(name));
    if (!file.open(QIODevice::ReadOnly)) {
        return {};
    }
    const QByteArray svg = file.readAll();
    QIcon icon;
    for (const int size : {16, 20, 24, 32, 40, 48, 64}) { // of tool bars at the usual scale factors
        icon.addPixmap(drawn(svg, palette.color(QPalette::Active, QPalette::ButtonText), size),
                       QIcon::Normal);
        icon.addPixmap(drawn(svg, palette.color(QPalette::Disabled, QPalette::ButtonText), size),
                       QIcon::Disabled);
    }
    return icon;
}

} // namespace app
