#pragma once

#include "app/window/tree/project_tree_filter.h"
#include "app/window/tree/project_tree_text.h"

#include <QAbstractItemModel>
#include <QBasicTimer>
#include <QIcon>

#include <memory>

namespace model {
class project;
class property;
class relationship;
} // namespace model

namespace app {

/// The entities of a project, below them their properties, below these their relationships.
///
/// Rows are made on demand: an index holds positions, nothing else. Whoever adds to the project, or takes
/// away from it, sets it again.
class project_tree_model : public QAbstractItemModel
{
    Q_OBJECT

public:
    enum data_role
    {
        quiet_role = Qt::UserRole ///< bool: the text is to be less conspicuous than others
    };

    /// A row by the ids of what it shows; these outlive a row's index.
    struct place
    {
        long entity = 0;         ///< 0 for no row
        long property = 0;       ///< 0 for the row of the entity
        bool isRelation = false; ///< the row below the property

        bool operator==(const place & other) const = default;
    };

    explicit project_tree_model(QObject * parent = nullptr);
    ~project_tree_model() override;

    /// Shows `project`, as far as it matches `filter`; null empties the model. It is reset.
    void setProject(const std::shared_ptr<model::project> & project, const QString & filter);
    /// Shows what matches `filter`, everything for one without a word. False when the rows stay as they are,
    /// else the model was reset.
    bool setFilter(const QString & filter);
    [[nodiscard]] bool hasProject() const { return m_pProject != nullptr; }
    [[nodiscard]] bool isFiltered() const { return m_bFiltered; }
    /// Number of entities of the project, hidden ones included.
    [[nodiscard]] int entityCount() const { return static_cast<int>(m_lstEntity.size()); }
    /// Whether the project has an entity of this id, be it hidden.
    [[nodiscard]] bool hasEntity(long id) const;
    /// Whether the filter found something below the row.
    [[nodiscard]] bool isMatchBelow(const QModelIndex & index) const;

    [[nodiscard]] place placeOf(const QModelIndex & index) const;
    /// The row of `wanted`, or the nearest one above it that is shown; invalid when the entity is not shown.
    [[nodiscard]] QModelIndex indexOf(const place & wanted) const;

    /// Each of these is null for an index that shows, or lies below, none.
    [[nodiscard]] std::shared_ptr<model::entity> entityAt(const QModelIndex & index) const;
    [[nodiscard]] std::shared_ptr<model::property> propertyAt(const QModelIndex & index) const;
    /// The relationship of a property or the one that has a row of its own.
    [[nodiscard]] std::shared_ptr<model::relationship> relationAt(const QModelIndex & index) const;

    [[nodiscard]] QModelIndex index(int row, int column, const QModelIndex & parent = {}) const override;
    [[nodiscard]] QModelIndex parent(const QModelIndex & index) const override;
    [[nodiscard]] int rowCount(const QModelIndex & parent = {}) const override;
    [[nodiscard]] int columnCount(const QModelIndex & parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex & index, int role) const override;
    [[nodiscard]] QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
    [[nodiscard]] Qt::ItemFlags flags(const QModelIndex & index) const override;

protected:
    void timerEvent(QTimerEvent * event) override;

private:
    [[nodiscard]] filter_result rowsFor(const QString & filter);
    [[nodiscard]] int propertyPlace(const shown_entity & shown, int row) const;
    [[nodiscard]] std::shared_ptr<model::property> propertyOf(int entityRow, int row) const;
    [[nodiscard]] QIcon icon(const QModelIndex & index) const;

    std::shared_ptr<model::project> m_pProject;
    project_tree_filter::entities m_lstEntity;
    project_tree_filter m_filter;
    filter_result m_shown;
    bool m_bFiltered = false;
    QBasicTimer m_collectTimer;
    QIcon m_icoEntity;
    QIcon m_icoProperty;
    QIcon m_icoKey;
    QIcon m_icoRelationship;
};

} // namespace app
