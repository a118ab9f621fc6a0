#pragma once

#include "support/model_builder.h"

namespace support {

/// customer <- order -> product, and an entity "note" alone; ids 1 to 4.
inline model_builder smallShop()
{
    using model::relationship;
    model_builder model(QStringLiteral("shop"));
    auto customer = model.entity(1, QStringLiteral("customer")).table(QStringLiteral("t_customer"));
    customer.identifier(11, QStringLiteral("id"), QStringLiteral("long"));
    customer.property(12, QStringLiteral("name"), QStringLiteral("QString"));
    auto order = model.entity(2, QStringLiteral("order"));
    order.identifier(21, QStringLiteral("id"), QStringLiteral("long"));
    order.relation(22, QStringLiteral("buyer"), 22, relationship::many_to_one, 1);
    order.relation(23, QStringLiteral("products"), 23, relationship::many_to_many, 3)
        .linkTable(QStringLiteral("t_order_product"), QStringLiteral("o"), QStringLiteral("p"), 0);
    model.entity(3, QStringLiteral("product")).identifier(31, QStringLiteral("id"), QStringLiteral("long"));
    model.entity(4, QStringLiteral("note")).identifier(41, QStringLiteral("id"), QStringLiteral("long"));
    return model;
}

/// A chain of `count` entities "e1" to "e<count>", ids the same: each refers to the next one.
inline model_builder chainOf(int count)
{
    model_builder model(QStringLiteral("chain"));
    for (int i = 1; i <= count; ++i) {
        auto e = model.entity(i, QStringLiteral("e%1").arg(i));
        e.identifier(i * 10, QStringLiteral("id"), QStringLiteral("long"));
        if (i < count) {
            e.relation(i * 10 + 1, QStringLiteral("next"), i, model::relationship::many_to_one, i + 1);
        }
    }
    return model;
}

/// "hub" with id 1 and `count` entities "s2", "s3", … that refer to it.
inline model_builder starOf(int count)
{
    model_builder model(QStringLiteral("star"));
    model.entity(1, QStringLiteral("hub")).identifier(10, QStringLiteral("id"), QStringLiteral("long"));
    for (int i = 2; i <= count + 1; ++i) {
        model.entity(i, QStringLiteral("s%1").arg(i))
            .relation(i * 10, QStringLiteral("hub"), i, model::relationship::many_to_one, 1);
    }
    return model;
}

} // namespace support
