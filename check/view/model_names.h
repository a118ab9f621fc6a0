#pragma once

#include "check/model/tables.h"

#include "database/facts/facts.h"

#include <QMultiHash>
#include <QString>
#include <QStringList>

#include <memory>
#include <vector>

namespace model {
class entity;
class project;
class property;
class relationship;
} // namespace model

namespace check {

/// The names of the property's columns; none for one that has no column of its own.
[[nodiscard]] QStringList columnNamesOf(const model::property & of);
/// The name for people: "gig.length".
[[nodiscard]] QString nameOf(const model::property & of);

/// The property of that id, in the entity when it is there, else anywhere.
[[nodiscard]] std::shared_ptr<model::property> findProperty(const model::project & in, long entity, long id);

/// The tables of a model by the names that a database makes of them, cut and folded.
class model_names
{
public:
    model_names(const database::facts & known, const model::project & of);

    /// The entities whose tables have the name.
    [[nodiscard]] std::vector<std::shared_ptr<model::entity>> entitiesOf(const QString & table) const;
    /// The many-to-many relationships whose link tables have the name.
    [[nodiscard]] std::vector<std::shared_ptr<model::relationship>> linksOf(const QString & table) const;

private:
    [[nodiscard]] QString keyOf(const QString & name) const;

    const database::facts & m_known;
    QMultiHash<QString, std::shared_ptr<model::entity>> m_entities;
    QMultiHash<QString, std::shared_ptr<model::relationship>> m_links;
};

} // namespace check
