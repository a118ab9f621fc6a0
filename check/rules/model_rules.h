#pragma once

#include "check/finding/finding.h"
#include "check/view/script.h"

#include "database/catalogue/catalogue.h"
#include "database/facts/known_types.h"

#include <QSet>

#include <functional>

namespace check {

/// What the export is set to, as far as it has a say in what the model means.
struct export_settings
{
    QSet<QString> mappedTypes; ///< C++ types that the type mapping has; empty when that is not known
    bool relationships = true; ///< become foreign keys
};

/// A model beside what its full script makes of it.
struct made_model
{
    const database::facts & known;
    const database::known_types & types;
    const script & full;
    const database::catalogue & made; ///< as the script made it
    const export_settings & settings;
    const QSet<long> & refused; ///< properties of which a statement was refused, which says enough
};

/// Tells what a new database has otherwise than the model says though every statement runs, and what is
/// unwise, one finding after another: a large model has many.
void explainModel(const made_model & of, const std::function<void(finding)> & tell);

} // namespace check
