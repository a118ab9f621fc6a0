#include "app/document/change_rows.h"

#include "app/document/page_names.h"

#include "model/project.h"

#include <algorithm>

namespace app {

namespace {

/// Which step of the history `step` is, as a word for people.
QString nameOf(const history_step & step)
{
    return step.what.number == 0 ? QStringLiteral("Not tagged yet") : step.word;
}

page_data rowOf(const outline_line & line, int depth, const QString & page)
{
    QStringList classes{depth == 0   ? QStringLiteral("whole")
                        : depth == 1 ? QStringLiteral("below")
                                     : QStringLiteral("far-below")};
    if (line.text.startsWith(QLatin1String("+ "))) {
        classes << QStringLiteral("added");
    } else if (line.text.startsWith(QLatin1String("- "))) {
        classes << QStringLiteral("removed");
    }
    page_data row;
    put(row, "changeClass", classes.join(QLatin1Char(' ')));
    put(row, "changeText", line.text);
    put(row, "changePage", page);
    return row;
}

} // namespace

void putStep(page_data & data, const history_step & step)
{
    put(data, "stepName", nameOf(step));
    put(data, "stepAnchor", step.word);
    put(data, "stepPage", placeIn(HistoryPage, step.word));
    // In the time of no place in particular: the pages are the same wherever they are made.
    put(data, "stepDate",
        step.what.number == 0 ? QString() : step.what.created.toUTC().toString(QStringLiteral("yyyy-MM-dd")));
    put(data, "stepMessage", step.what.message);
}

page_list changeRows(const documented_model & of, const history_step & step)
{
    page_list rows;
    for (const outline_line & line : step.lines) {
        const bool isLink = line.depth == 0 && of.project()->getEntityById(line.entity);
        rows.push_back(rowOf(line, line.depth, isLink ? entityPage(line.entity) : QString()));
    }
    return rows;
}

page_list changeRows(const model::entity & entity, const entity_step & step)
{
    // The line that names the entity says nothing when others are below it.
    const bool hasOthers = std::any_of(step.lines.begin(), step.lines.end(),
                                       [](const outline_line * line) { return line->depth > 0; });
    page_list rows;
    for (const outline_line * const line : step.lines) {
        if (line->depth > 0 || !hasOthers) {
            const bool isLink = line->property != 0 && entity.getPropertyById(line->property);
            rows.push_back(rowOf(*line, std::max(1, line->depth),
                                 isLink ? QLatin1Char('#') + propertyAnchor(line->property) : QString()));
        }
    }
    return rows;
}

} // namespace app
