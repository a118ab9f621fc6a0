#include "app/window/tree/project_tree_model.h"

#include "model/entity.h"
#include "model/project.h"
#include "model/property.h"
#include "model/relationship.h"

#include "zk/visible_text.h"

#include <QFont>
#include <QTimerEvent>

#include <algorithm>

namespace app {

namespace {

constexpr int EntitiesATime = 100; // a few milliseconds: nobody notices when it happens while typing

enum level
{
    entity_level,
    property_level,
    relation_level
};

/// What an index says about the rows above its own: the entity's and, for a relationship, the property's.
///
/// Qt finds indexes that it keeps by their id's last bits: ids that follow each other would pile up there,
/// and opening many rows would take seconds. Multiplied by an odd number they are spread, and nothing is
/// lost.
class row_id
{
public:
    static constexpr quint64 Spread = 0x9e3779b97f4a7c15U;
    static constexpr quint64 Inverse = 0xf1de83e19937733dU;
    static_assert(sizeof(quintptr) == sizeof(quint64) && Spread * Inverse == 1);

    static quintptr below(int entity) { return (static_cast<quint64>(entity) + 1) * Spread; }
    static quintptr below(int entity, int property)
    {
        return ((static_cast<quint64>(property) + 1) << 32 | (static_cast<quint64>(entity) + 1)) * Spread;
    }

    explicit row_id(quintptr id)
        : entity(static_cast<int>(id * Inverse & 0xffffffffU) - 1),
          property(static_cast<int>(id * Inverse >> 32) - 1)
    {
    }

    int entity;   ///< -1 for an id of 0
    int property; ///< -1 without one
};

level levelOf(const QModelIndex & index)
{
    if (index.internalId() == 0) {
        return entity_level;
    }
    return row_id(index.internalId()).property < 0 ? property_level : relation_level;
}

int entityRow(const QModelIndex & index)
{
    return index.internalId() == 0 ? index.row() : row_id(index.internalId()).entity;
}

int propertyRow(const QModelIndex & index)
{
    const int above = row_id(index.internalId()).property;
    return above < 0 ? index.row() : above;
}

template <class Object>
QVariant textFor(const Object & object, int column, int role)
{
    switch (role) {
    case Qt::DisplayRole:
        return zk::visibleText(project_tree_text::text(object, column));
    case Qt::ToolTipRole:
        return project_tree_text::toolTip(object);
    case Qt::AccessibleTextRole:
        return zk::visibleText(project_tree_text::accessibleText(object, column));
    default:
        return {};
    }
}

QFont italic()
{
    QFont font;
    font.setItalic(true);
    return font;
}

QIcon treeIcon(const char * name)
{
    return QIcon(QStringLiteral(":/korvane/window/icons/tree_%1.svg").arg(QLatin1String(name)));
}

} // namespace

project_tree_model::project_tree_model(QObject * parent)
    : QAbstractItemModel(parent), m_icoEntity(treeIcon("entity")), m_icoProperty(treeIcon("property")),
      m_icoKey(treeIcon("key")), m_icoRelationship(treeIcon("relationship"))
{
}

project_tree_model::~project_tree_model() = default;

void project_tree_model::setProject(const std::shared_ptr<model::project> & project, const QString & filter)
{
    beginResetModel();
    m_pProject = project;
    m_lstEntity.clear();
    if (const auto list = project ? project->getListOfAllEntities() : nullptr) {
        m_lstEntity = list->values();
        std::erase(m_lstEntity, nullptr);
    }
    m_filter.reset(m_lstEntity);
    m_shown = rowsFor(filter);
    m_bFiltered = project_tree_filter::isFilter(filter);
    endResetModel();
    m_collectTimer.start(0, this); // whoever filters is not to wait for the texts
}

bool project_tree_model::setFilter(const QString & filter)
{
    m_bFiltered = project_tree_filter::isFilter(filter);
    filter_result rows = rowsFor(filter);
    if (rows == m_shown) {
        return false;
    }
    beginResetModel();
    m_shown = std::move(rows);
    endResetModel();
    return true;
}

filter_result project_tree_model::rowsFor(const QString & filter)
{
    if (project_tree_filter::isFilter(filter)) {
        return m_filter.search(filter);
    }
    filter_result all;
    all.entities.reserve(m_lstEntity.size());
    for (int i = 0; i < entityCount(); ++i) {
        const auto properties =
            m_lstEntity[static_cast<std::size_t>(i)]->getListOfProperty(true, true, false);
        all.entities.push_back({i, -1, static_cast<int>(properties->count())});
    }
    return all;
}

void project_tree_model::timerEvent(QTimerEvent * event)
{
    if (event->timerId() != m_collectTimer.timerId()) {
        QAbstractItemModel::timerEvent(event);
    } else if (!m_filter.collectSome(EntitiesATime)) {
        m_collectTimer.stop();
    }
}

bool project_tree_model::hasEntity(long id) const
{
    return std::any_of(m_lstEntity.begin(), m_lstEntity.end(),
                       [id](const std::shared_ptr<model::entity> & e) { return e->getId() == id; });
}

int project_tree_model::propertyPlace(const shown_entity & shown, int row) const
{
    const int at = shown.first + row;
    return shown.first < 0 ? row : m_shown.properties[static_cast<std::size_t>(at)];
}

std::shared_ptr<model::property> project_tree_model::propertyOf(int entityRow, int row) const
{
    const shown_entity & shown = m_shown.entities[static_cast<std::size_t>(entityRow)];
    return m_lstEntity[static_cast<std::size_t>(shown.entity)]
        ->getListOfProperty(true, true, false)
        ->getByIndex(propertyPlace(shown, row));
}

bool project_tree_model::isMatchBelow(const QModelIndex & index) const
{
    if (!index.isValid() || levelOf(index) == relation_level) {
        return false;
    }
    const shown_entity & shown = m_shown.entities[static_cast<std::size_t>(entityRow(index))];
    const int at = shown.first + index.row();
    return shown.first >= 0 &&
           (levelOf(index) == entity_level || m_shown.opened[static_cast<std::size_t>(at)]);
}

project_tree_model::place project_tree_model::placeOf(const QModelIndex & index) const
{
    const std::shared_ptr<model::entity> e = entityAt(index);
    const std::shared_ptr<model::property> p = propertyAt(index);
    return {e ? e->getId() : 0, p ? p->getId() : 0, p && levelOf(index) == relation_level};
}

QModelIndex project_tree_model::indexOf(const place & wanted) const
{
    const auto found =
        std::find_if(m_shown.entities.begin(), m_shown.entities.end(), [&](const shown_entity & s) {
            return m_lstEntity[static_cast<std::size_t>(s.entity)]->getId() == wanted.entity;
        });
    if (wanted.entity == 0 || found == m_shown.entities.end()) {
        return {};
    }
    const QModelIndex entityIndex = index(static_cast<int>(found - m_shown.entities.begin()), 0);
    for (int row = 0; wanted.property != 0 && row < found->count; ++row) {
        const std::shared_ptr<model::property> p = propertyOf(entityIndex.row(), row);
        if (p && p->getId() == wanted.property) {
            const QModelIndex propertyIndex = index(row, 0, entityIndex);
            const bool hasRow = wanted.isRelation && rowCount(propertyIndex) > 0;
            return hasRow ? index(0, 0, propertyIndex) : propertyIndex;
        }
    }
    return entityIndex;
}

std::shared_ptr<model::entity> project_tree_model::entityAt(const QModelIndex & index) const
{
    if (!index.isValid()) {
        return nullptr;
    }
    const shown_entity & shown = m_shown.entities[static_cast<std::size_t>(entityRow(index))];
    return m_lstEntity[static_cast<std::size_t>(shown.entity)];
}

std::shared_ptr<model::property> project_tree_model::propertyAt(const QModelIndex & index) const
{
    return index.isValid() && levelOf(index) != entity_level
               ? propertyOf(entityRow(index), propertyRow(index))
               : nullptr;
}

std::shared_ptr<model::relationship> project_tree_model::relationAt(const QModelIndex & index) const
{
    const std::shared_ptr<model::property> p = propertyAt(index);
    return p ? p->getRelation() : nullptr;
}

QModelIndex project_tree_model::index(int row, int column, const QModelIndex & parent) const
{
    if (!hasIndex(row, column, parent)) {
        return {};
    }
    if (!parent.isValid()) {
        return createIndex(row, column, quintptr(0));
    }
    return createIndex(row, column,
                       levelOf(parent) == entity_level ? row_id::below(parent.row())
                                                       : row_id::below(entityRow(parent), parent.row()));
}

QModelIndex project_tree_model::parent(const QModelIndex & index) const
{
    if (!index.isValid() || levelOf(index) == entity_level) {
        return {};
    }
    const int row = entityRow(index);
    return levelOf(index) == property_level ? createIndex(row, 0, quintptr(0))
                                            : createIndex(propertyRow(index), 0, row_id::below(row));
}

int project_tree_model::rowCount(const QModelIndex & parent) const
{
    if (!parent.isValid()) {
        return static_cast<int>(m_shown.entities.size());
    }
    if (parent.column() != 0 || levelOf(parent) == relation_level) {
        return 0;
    }
    return levelOf(parent) == entity_level ? m_shown.entities[static_cast<std::size_t>(parent.row())].count
                                           : relationAt(parent) != nullptr;
}

int project_tree_model::columnCount(const QModelIndex &) const
{
    return project_tree_text::column_count;
}

QVariant project_tree_model::data(const QModelIndex & index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid)) {
        return {};
    }
    const level at = levelOf(index);
    if (at == entity_level) {
        return role == Qt::DecorationRole && index.column() == 0
                   ? icon(index)
                   : textFor(*entityAt(index), index.column(), role);
    }
    const std::shared_ptr<model::property> p = propertyAt(index);
    if (!p) {
        return {};
    }
    switch (role) {
    case Qt::DecorationRole:
        return index.column() == 0 ? QVariant(icon(index)) : QVariant();
    case Qt::FontRole:
        return p->isTransient() ? QVariant(italic()) : QVariant();
    case quiet_role:
        return p->isTransient() ||
               (at == property_level && index.column() == project_tree_text::database_column &&
                !project_tree_text::hasColumns(*p));
    default:
        break;
    }
    if (at == relation_level) {
        return p->hasRelationship() ? textFor(*p->getRelation(), index.column(), role) : QVariant();
    }
    return textFor(*p, index.column(), role);
}

QIcon project_tree_model::icon(const QModelIndex & index) const
{
    if (levelOf(index) == entity_level) {
        return m_icoEntity;
    }
    if (levelOf(index) == relation_level) {
        return m_icoRelationship;
    }
    return propertyAt(index)->isIdentifier() ? m_icoKey : m_icoProperty;
}

QVariant project_tree_model::headerData(int section, Qt::Orientation orientation, int role) const
{
    const bool isText = role == Qt::DisplayRole || role == Qt::ToolTipRole;
    return isText && orientation == Qt::Horizontal ? QVariant(project_tree_text::header(section))
                                                   : QVariant();
}

Qt::ItemFlags project_tree_model::flags(const QModelIndex & index) const
{
    if (!index.isValid()) {
        return Qt::NoItemFlags;
    }
    const bool isLeaf = levelOf(index) == relation_level ||
                        (levelOf(index) == property_level && relationAt(index) == nullptr);
    return Qt::ItemIsEnabled | Qt::ItemIsSelectable | (isLeaf ? Qt::ItemNeverHasChildren : Qt::NoItemFlags);
}

} // namespace app
