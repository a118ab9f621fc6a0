#pragma once

#include "korvane_global.h"

#include <QString>
#include <QStringList>

#include <optional>

namespace model {
class entity;
class enumeration;
class project;
class property;
} // namespace model

/// What must hold in every model, whichever form it was read from.
namespace storage::model_check {

/// Something wrong in a model: where, and what.
struct finding
{
    QString place; ///< such as "entities[0] 'customer' / properties[5] 'country'", empty for the project
    QString reason;

    /// The line "source: place: reason".
    [[nodiscard]] QString text(const QString & source) const;
};

/// "list[index] 'name'", the form in which places name an object; without a name "list[index]".
[[nodiscard]] QString placeOf(const QString & list, qsizetype index, const QString & name);
[[nodiscard]] QString placeOfEntity(qsizetype index, const QString & name);
/// Place of a property within the place of its entity.
[[nodiscard]] QString placeOfProperty(const QString & entity, qsizetype index, const QString & name);
[[nodiscard]] QString placeOfEnumeration(qsizetype index, const QString & name);

/// `text` fit for a message of one line: control characters replaced or shown, shortened when very long.
[[nodiscard]] QString printable(const QString & text);

/// `name` as printable text in quotation marks.
[[nodiscard]] QString quotedName(const QString & name);

/// Why `name` cannot name a project, whose name becomes part of file names; empty when it can.
[[nodiscard]] KORVANE_EXPORT QString projectNameProblem(const QString & name);

/// `problem`, which projectNameProblem() gave, said of `what`: "what must not be empty", "what: 'a/b' must
/// ...".
[[nodiscard]] QString namedProblem(const QString & what, const QString & problem);

/// What has ids of its own.
enum class id_kind
{
    enumeration,
    entity,
    property,
    relationship,
    type
};

/// The text for an id that two objects of one kind have.
[[nodiscard]] QString usedTwice(id_kind kind, long id);

/// The first rule that `project` breaks.
[[nodiscard]] std::optional<finding> firstError(const model::project & project);

/// What is allowed, but hardly meant: one line each, without the source.
[[nodiscard]] KORVANE_EXPORT QStringList warnings(const model::project & project);

} // namespace storage::model_check
