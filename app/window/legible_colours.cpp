#include "app/window/legible_colours.h"

#include <QApplication>
#include <QColor>
#include <QEvent>
#include <QPalette>
#include <QScopedValueRollback>

#include <algorithm>
#include <cmath>

namespace app {

namespace {

/// What ordinary text needs to be read with weak eyes is 4.5; styles shade a ground by a little.
constexpr double Wanted = 5;

/// How bright a colour is to the eye, from 0 to 1.
double brightnessOf(const QColor & color)
{
    constexpr double Knee = 0.03928;
    const auto linear = [](double part) {
        return part <= Knee ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * linear(color.redF()) + 0.7152 * linear(color.greenF()) + 0.0722 * linear(color.blueF());
}

double contrastOf(const QColor & a, const QColor & b)
{
    const auto [darker, lighter] = std::minmax({brightnessOf(a), brightnessOf(b)});
    return (lighter + 0.05) / (darker + 0.05);
}

/// `part` of `a` over the rest of `b`.
QColor mixed(const QColor & a, const QColor & b, double part)
{
    const auto of = [part](float x, float y) { return static_cast<float>(part * x + (1 - part) * y); };
    return QColor::fromRgbF(of(a.redF(), b.redF()), of(a.greenF(), b.greenF()), of(a.blueF(), b.blueF()));
}

/// `color`, or as much nearer to `clear` as it takes to stand out from `ground`.
QColor standingOut(const QColor & color, const QColor & clear, const QColor & ground)
{
    constexpr double Step = 0.05;
    QColor result = mixed(color, ground, color.alphaF());
    for (double part = Step; contrastOf(result, ground) < Wanted && part < 1; part += Step) {
        result = mixed(clear, mixed(color, ground, color.alphaF()), part);
    }
    return result;
}

} // namespace

legible_colours::legible_colours(QObject * parent) : QObject(parent)
{
    apply();
    qApp->installEventFilter(this);
}

bool legible_colours::eventFilter(QObject * watched, QEvent * event)
{
    if (watched == qApp && event->type() == QEvent::ApplicationPaletteChange && !m_isApplying) {
        apply();
    }
    return false;
}

void legible_colours::apply()
{
    const QScopedValueRollback applying(m_isApplying, true);
    const QPalette theme = QApplication::palette();
    QPalette own = theme; // it knows which of its colours were set, and the others stay the theme's
    for (const QPalette::ColorGroup group : {QPalette::Active, QPalette::Inactive}) {
        const auto color = [&](QPalette::ColorRole role) { return theme.color(group, role); };
        own.setColor(
            group, QPalette::PlaceholderText,
            standingOut(color(QPalette::PlaceholderText), color(QPalette::Text), color(QPalette::Base)));
        const QColor text = color(QPalette::HighlightedText);
        const QColor away =
            brightnessOf(text) > brightnessOf(color(QPalette::Highlight)) ? Qt::black : Qt::white;
        own.setColor(group, QPalette::Highlight, standingOut(color(QPalette::Highlight), away, text));
    }
    QApplication::setPalette(own);
}

} // namespace app
