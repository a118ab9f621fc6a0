#include "check/view/kept_names.h"

#include "check/view/made_objects.h"

#include "database/statement/reader.h"
#include "database/statement/token.h"

#include <algorithm>

namespace check {

namespace {

/// A name that a statement writes, and the one that is meant by it.
struct corrected_name
{
    QString written;
    QString kept; ///< empty when nothing is known of it
};

corrected_name droppedName(const database::change & asked, const plugin::statement_record & record,
                           const made_objects & made)
{
    if (const auto * const index = std::get_if<database::drop_index>(&asked)) {
        return {index->index.text, made.indexOf(record.property)};
    }
    if (const auto * const key = std::get_if<database::drop_constraint>(&asked)) {
        return {key->constraint.text, made.foreignKeyOf(record.relationship)};
    }
    return {};
}

/// The same name as part of what it belongs to, where it is written so: "table.index".
void qualify(corrected_name & name)
{
    if (!name.kept.isEmpty() && !name.kept.contains(u'.')) {
        name.kept.prepend(name.written.left(name.written.lastIndexOf(u'.') + 1));
    }
}

/// The statement with another name.
QString withName(const QString & text, const corrected_name & name)
{
    const std::vector<database::token> tokens = database::tokensOf(text);
    const auto found = std::find_if(tokens.begin(), tokens.end(), [&name](const database::token & each) {
        return each.inside == name.written;
    });
    if (found == tokens.end()) {
        return text;
    }
    return QString(text).replace(found->inside.data() - text.constData(), name.written.size(), name.kept);
}

} // namespace

void useKeptNames(const made_objects & made, std::vector<plugin::statement_record> & records)
{
    using plugin::statement_action;
    for (plugin::statement_record & record : records) {
        const bool isDrop = record.action == statement_action::drop_index ||
                            record.action == statement_action::drop_foreign_key;
        if (!isDrop || record.isReplaced()) {
            continue;
        }
        const std::vector<database::statement> read =
            database::readStatements(record.text, database::writer::exporter);
        // Of a property with several indexes only the name of the last is known.
        corrected_name name =
            read.size() == 1 ? droppedName(read.front().asked, record, made) : corrected_name();
        qualify(name);
        if (!name.kept.isEmpty() && name.kept != name.written) {
            record.text = withName(record.text, name);
            record.defaultText = record.text;
        }
    }
}

} // namespace check
