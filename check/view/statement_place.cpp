#include "check/view/statement_place.h"

#include "database/statement/reader.h"

namespace check {

statement_place placeOf(const plugin::statement_record & record, const database::statement & read)
{
    statement_place place;
    place.script = record.script;
    place.line = record.line + static_cast<int>(QStringView(record.text).left(read.position).count(u'\n'));
    place.lines = 1 + static_cast<int>(read.text.count(u'\n'));
    place.action = record.action;
    place.text = read.text;
    const qsizetype end = read.position + read.text.size();
    if (end < record.text.size() && record.text.at(end) == u';') {
        place.text += u';';
    }
    place.isCustom = record.isReplaced();
    return place;
}

} // namespace check
