#pragma once

#include <QCoreApplication>
#include <QList>
#include <QString>
#include <QStringList>

#include <array>

namespace model {
class entity;
class property;
class relationship;
} // namespace model

namespace app {

/// What the tree of a model says about each object: one text a column, a tooltip, a text for screen readers.
///
/// Names that the model leaves empty are shown as an export writes them.
class project_tree_text
{
    Q_DECLARE_TR_FUNCTIONS(app::project_tree_text)

public:
    enum column
    {
        name_column,
        type_column,
        database_column,
        column_count
    };

    /// Empty outside the columns, as are all texts below.
    [[nodiscard]] static QString header(int column);
    /// The widths of the columns when they share `whole` pixels.
    [[nodiscard]] static QList<int> widths(int whole);

    [[nodiscard]] static QString text(const model::entity & entity, int column);
    [[nodiscard]] static QString text(const model::property & property, int column);
    [[nodiscard]] static QString text(const model::relationship & relation, int column);

    /// Everything there is to know, whole names included, as rich text.
    [[nodiscard]] static QString toolTip(const model::entity & entity);
    [[nodiscard]] static QString toolTip(const model::property & property);
    [[nodiscard]] static QString toolTip(const model::relationship & relation);

    /// text(), and in words what a picture or an arrow tells the eye.
    [[nodiscard]] static QString accessibleText(const model::entity & entity, int column);
    [[nodiscard]] static QString accessibleText(const model::property & property, int column);
    [[nodiscard]] static QString accessibleText(const model::relationship & relation, int column);

    /// Name of the entity that the relationship refers to; says so when there is none.
    [[nodiscard]] static QString targetName(const model::relationship & relation);
    /// Whether the property is stored in columns of its entity's table.
    [[nodiscard]] static bool hasColumns(const model::property & property);

private:
    /// What a column says of an object, and what a screen reader says instead, where that is something else.
    template <class Object>
    struct cell
    {
        QString (*text)(const Object & object) = nullptr;
        QString (*said)(const Object & object) = nullptr;
    };
    struct column_row
    {
        const char * title;
        int width; ///< hundredths of the whole
        cell<model::entity> entity;
        cell<model::property> property;
        cell<model::relationship> relation;
    };
    static const std::array<column_row, column_count> Columns;

    template <class Object>
    static QString text(const Object & object, int column, cell<Object> column_row::*of);
    template <class Object>
    static QString said(const Object & object, int column, cell<Object> column_row::*of);

    [[nodiscard]] static QString tableOf(const model::entity & entity);
    [[nodiscard]] static QString kind(const model::relationship & relation);
    [[nodiscard]] static QString typeOf(const model::property & property);
    [[nodiscard]] static QString columnsOf(const model::property & property);
    [[nodiscard]] static QString arrow(const model::relationship & relation);
    [[nodiscard]] static QString kindAndInverse(const model::relationship & relation);
    [[nodiscard]] static QString linkTable(const model::relationship & relation);
    [[nodiscard]] static QString inverse(const model::relationship & relation);
    [[nodiscard]] static QStringList flags(const model::property & property);
};

} // namespace app
