#pragma once

#include "support/model_builder.h"

#include <QAbstractItemModel>
#include <QString>
#include <QStringList>

#include <memory>

namespace support {

/// A model with one of everything that the tree shows in its own way.
inline std::shared_ptr<model::project> treeShop()
{
    using model::relationship;
    const model_builder shop = [] {
        model_builder b;
        auto country = b.entity(1, "country").table("t_country").softDelete("gone_at").version(7);
        country.identifier(11, "code", "QString").notNull();
        country.property(12, "title", "QString").unique();
        country.relation(13, "people", 131, relationship::one_to_many, 2).relation()->setInverseId(24);
        auto customer = b.entity(2, "customer");
        customer.identifier(21, "id", "long long").columns("customer_id");
        customer.property(22, "name", "QString").indexed().notNull().forced("VARCHAR(80)");
        customer.property(23, "place", "").columns("lat|lon").types({"double", "float"});
        customer.relation(24, "home", 241, relationship::many_to_one, 1).columns("country_code");
        customer.relation(25, "tags", 251, relationship::many_to_many, 3)
            .linkTable("customer_tag", "customer", "tag", 32);
        customer.property(26, "cache", "QVariant").transient();
        const auto mood = std::make_shared<model::enumeration>(5);
        mood->setName("mood");
        customer.property(27, "state", "").enumeration(mood);
        customer.property(28, "bare", "").withoutType();
        auto tag = b.entity(3, "tag").table("t_tag");
        tag.relation(32, "owners", 321, relationship::many_to_many, 2);
        tag.relation(33, "twin", 331, relationship::one_to_one, 3);
        tag.relation(34, "lost", 341, relationship::many_to_one, 99);
        b.entity(4, "empty");
        return b;
    }();
    return shop.get();
}

/// Every row below `parent`: a blank a level, then the texts of its columns.
inline QStringList rowsOf(const QAbstractItemModel & model, int role = Qt::DisplayRole,
                          const QModelIndex & parent = {}, const QString & indent = {})
{
    QStringList rows;
    for (int row = 0; row < model.rowCount(parent); ++row) {
        QStringList texts;
        for (int column = 0; column < model.columnCount(parent); ++column) {
            texts << model.index(row, column, parent).data(role).toString();
        }
        rows << indent + texts.join(QStringLiteral(" | "));
        rows += rowsOf(model, role, model.index(row, 0, parent), indent + QLatin1Char(' '));
    }
    return rows;
}

} // namespace support
