#pragma once

#include "app/window/tree/project_tree_model.h"

#include <QTimer>
#include <QWidget>

#include <memory>

class QLabel;
class QLineEdit;
class QStackedWidget;

namespace model {
class project;
}

namespace app {

class project_tree_view;

/// The model of a project as a tree, below a field that filters it.
class project_tree : public QWidget
{
    Q_OBJECT

public:
    explicit project_tree(QWidget * parent = nullptr);
    ~project_tree() override;

    /// Shows the model of `project`; null empties the tree. The filter text stays; selection and open rows go
    /// to what has the same ids, if it is still there. Nothing is emitted.
    void setProject(const std::shared_ptr<model::project> & project);
    /// Selects the entity and scrolls to it without emitting entitySelected(); 0, or an id that is not there,
    /// clears the selection. A row below this very entity stays selected. An entity hidden by the filter: the
    /// filter is cleared so that it can be seen.
    void selectEntity(long id);
    /// The same for a property, whose entity is opened, or for the entity when it has no such property.
    void selectProperty(long entity, long property);
    /// The entity that owns the selected row; 0 for none, also while the filter hides it.
    [[nodiscard]] long selectedEntity() const;
    /// Puts the keyboard into the filter field, its text selected.
    void focusFilter();

Q_SIGNALS:
    /// The person selected a row of this entity, or nothing (0).
    void entitySelected(long id);

protected:
    bool eventFilter(QObject * watched, QEvent * event) override;

private:
    using place = project_tree_model::place;

    void createFilter();
    void createPages();
    void filterSoon();
    void filterNow();
    [[nodiscard]] bool handleFilterKey(int key);
    /// Selects the row, and takes the filter away when it hides the entity.
    void goTo(const place & row);
    void showState();
    void showCount();

    project_tree_model * m_pModel;
    QTimer m_filterTimer;
    QLineEdit * m_txtFilter = nullptr;
    QLabel * m_lblCount = nullptr;
    QStackedWidget * m_pages = nullptr;
    project_tree_view * m_treModel = nullptr;
    QLabel * m_lblEmpty = nullptr;
};

} // namespace app
