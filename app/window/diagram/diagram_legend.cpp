#include "app/window/diagram/diagram_legend.h"

#include "app/diagram/diagram_contents.h"
#include "app/window/diagram/diagram_style.h"

#include <QCoreApplication>
#include <QStringList>

namespace app {

namespace {

struct texts
{
    Q_DECLARE_TR_FUNCTIONS(app::diagram_legend)
};

struct legend_entry
{
    QString sign;
    QString meaning;
    QColor color;
};

QList<legend_entry> entriesOf(const diagram_style & style, bool withChanges)
{
    const auto [notNull, unique, indexed] = traitSigns({true, true, true});
    QList<legend_entry> entries{
        {markText(diagram_mark::key), texts::tr("primary key"), style.key},
        {markText(diagram_mark::reference), texts::tr("foreign key"), style.reference},
        {notNull, texts::tr("not null"), style.trait},
        {unique, texts::tr("unique"), style.trait},
        {indexed, texts::tr("index"), style.trait},
        {markText(diagram_mark::one_to_many) + QStringLiteral(", ") + markText(diagram_mark::many_to_many),
         texts::tr("relationship without a column"), style.collection}};
    if (withChanges) {
        for (const diagram_change change : {diagram_change::added, diagram_change::dropped,
                                            diagram_change::changed, diagram_change::renamed}) {
            entries.append({changeSign(change), changeWord(change), style.colorOf(change)});
        }
    }
    return entries;
}

} // namespace

QString diagramLegend(const diagram_style & style, bool withChanges)
{
    QStringList parts;
    for (const legend_entry & entry : entriesOf(style, withChanges)) {
        // An entry does not break within itself.
        parts << QStringLiteral("<span style='white-space:nowrap'><b style='color:%1'>%2</b>&nbsp;%3</span>")
                     .arg(entry.color.name(), entry.sign,
                          entry.meaning.toHtmlEscaped().replace(QLatin1Char(' '), QLatin1String("&nbsp;")));
    }
    return parts.join(QStringLiteral(" &nbsp; "));
}

QString toldLegend(bool withChanges)
{
    QStringList parts;
    for (const legend_entry & entry : entriesOf({}, withChanges)) {
        parts << QStringLiteral("%1 %2").arg(entry.sign, entry.meaning);
    }
    return parts.join(QStringLiteral("; "));
}

} // namespace app
