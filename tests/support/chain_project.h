#pragma once

#include "support/random_chain.h"

#include "model/project.h"
#include "model/property_type.h"
#include "storage/history.h"
#include "storage/project_file.h"

#include <QSqlError>

#include <optional>

namespace support {

/// A project file takes no other counted keys.
inline void leaveCountersToIntegers(const model::project & version)
{
    for (const auto & entity : version.getListOfAllEntities()->values()) {
        for (const auto & property : entity->getListOfProperty(true, true, false)->values()) {
            const QStringList types =
                property->getType() ? property->getType()->getCppTypes() : QStringList();
            if (types != QStringList{QStringLiteral("long")} && types != QStringList{QStringLiteral("int")}) {
                property->setAutoIncrement(std::nullopt);
            }
        }
    }
}

/// Writes a project whose versions are those of the chain but the last, which is its state. An error of a
/// file.
[[nodiscard]] inline QSqlError writeChain(const random_chain & chain, const QString & project)
{
    const auto & versions = chain.versions();
    QSqlError error;
    for (std::size_t i = 0; i < versions.size() && !error.isValid(); ++i) {
        leaveCountersToIntegers(*versions[i]);
        error = storage::project_file::write(project, *versions[i]);
        int number = 0;
        if (!error.isValid() && i + 1 < versions.size()) {
            error = storage::history::tag(project, QString(), number);
        }
    }
    return error;
}

} // namespace support
