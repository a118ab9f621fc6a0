#include "app/document/text_width.h"

#include <QList>
#include <QStringView>

namespace app {

namespace {

constexpr QChar Ellipsis(0x2026);

bool isWide(char32_t c)
{
    switch (QChar::script(c)) {
    case QChar::Script_Han:
    case QChar::Script_Hangul:
    case QChar::Script_Hiragana:
    case QChar::Script_Katakana:
    case QChar::Script_Bopomofo:
    case QChar::Script_Yi:
        return true;
    default:
        return c >= 0x1f000; // pictures
    }
}

qreal widthOf(char32_t c)
{
    constexpr QStringView Narrow = u"iljtfrI.,:;'|!()[] ";
    constexpr QStringView Broad = u"mwMW@%\u2026\u2192";
    if (QChar::isMark(c)) {
        return 0;
    }
    if (c < 0x10000 && Narrow.contains(QChar(static_cast<char16_t>(c)))) {
        return 0.42;
    }
    if (isWide(c) || (c < 0x10000 && Broad.contains(QChar(static_cast<char16_t>(c))))) {
        return 1;
    }
    return QChar::isUpper(c) ? 0.75 : 0.64;
}

} // namespace

qreal textWidth(const QString & text)
{
    qreal width = 0;
    for (const char32_t c : text.toUcs4()) {
        width += widthOf(c);
    }
    return width;
}

QString fittingText(const QString & text, qreal most)
{
    // A width that was multiplied by a size and divided again is not always what it was.
    constexpr qreal Rounding = 0.001;
    if (textWidth(text) <= most + Rounding) {
        return text;
    }
    QString beginning;
    qreal width = widthOf(Ellipsis.unicode());
    for (const char32_t c : text.toUcs4()) {
        width += widthOf(c);
        if (width > most) {
            break;
        }
        beginning += QString::fromUcs4(&c, 1);
    }
    return beginning + Ellipsis;
}

} // namespace app
