#pragma once

#include "check/finding/finding.h"
#include "check/remedy/patch_writer.h"

#include "database/facts/facts.h"

#include <memory>
#include <span>

namespace model {
class relationship;
}

namespace check {

/// What a change of the model for a finding starts from.
struct patch_place
{
    const finding & of;
    const model::project & now;
    const database::facts & known;
    patch_writer & to;
    // What the finding is about, as far as the model has it; else null.
    std::shared_ptr<model::entity> entity;
    std::shared_ptr<model::property> property;
    std::shared_ptr<model::relationship> relation;

    /// One of the names that the texts of the finding were filled with.
    [[nodiscard]] QString word(const char * name) const { return of.words.value(QString::fromLatin1(name)); }
};

/// How the model can be changed when a rule tells something.
struct patch_rule
{
    const char * code;
    void (*change)(const patch_place & at);
};

[[nodiscard]] std::span<const patch_rule> namePatches();  ///< names
[[nodiscard]] std::span<const patch_rule> fieldPatches(); ///< types, keys and what else a property says

/// The entity of that name, or the property of a name such as "gig.length"; null when there is none.
[[nodiscard]] std::shared_ptr<model::entity> entityNamed(const patch_place & at, const QString & name);
[[nodiscard]] std::shared_ptr<model::property> propertyNamed(const patch_place & at, const QString & name);
/// The property of the finding's entity that has the column, whatever the case of its letters.
[[nodiscard]] std::shared_ptr<model::property> propertyOfColumn(const patch_place & at,
                                                                const QString & column);
/// An id that no object of the model has.
[[nodiscard]] long freeId(const patch_place & at);

} // namespace check
