#pragma once

#include "app/window/tree/project_tree_model.h"

#include <QHash>
#include <QList>
#include <QSet>
#include <QTreeView>

class QAction;

namespace app {

class row_delegate;

/// The view of a project_tree_model: it finds selection and open rows again after the model was reset, and
/// has the commands on a row, each by menu and by key.
class project_tree_view : public QTreeView
{
    Q_OBJECT

public:
    using place = project_tree_model::place;

    /// @param model outlives the view
    explicit project_tree_view(project_tree_model & model, QWidget * parent = nullptr);
    ~project_tree_view() override;

    /// What is selected, or would be if it were shown.
    [[nodiscard]] place selected() const { return m_selected; }
    /// Marks these words wherever they are shown; see project_tree_filter::wordsOf().
    void setMarkedWords(const QStringList & words);
    /// Selects the nearest shown row of `wanted` and scrolls to it; nothing is emitted.
    void setSelected(const place & wanted);

    /// What the uppermost visible row shows.
    [[nodiscard]] place top() const;
    /// To be called after the model was reset: opens what the person had open and what the filter found,
    /// selects what was selected and goes to it.
    void restoreRows();
    /// Forgets what was open and selected.
    void forgetRows();
    /// Gives the current row, or the first one, the keyboard and selects it.
    void enter();

Q_SIGNALS:
    /// The person selected a row of this entity, or nothing (0).
    void entitySelected(long id);
    /// The person wants to go to this entity, which may be hidden.
    void targetWanted(long id);

protected:
    void resizeEvent(QResizeEvent * event) override;

private:
    QAction * createAction(const QString & name, const QString & text, const QList<QKeySequence> & keys,
                           void (project_tree_view::*command)());
    void createActions();
    void shareWidth();
    void updateActions();
    void showContextMenu(const QPoint & at);
    void copyName();
    void goToTarget();
    void openAll();
    void closeAll();

    void rememberSelection();
    void rememberOpen(const QModelIndex & index, bool isOpen);
    void openRows();
    void openProperties(const QModelIndex & entity);
    void selectRow(const QModelIndex & index);
    void goTo(const QModelIndex & index);

    project_tree_model & m_model;
    row_delegate * m_pDelegate;
    place m_selected;
    QSet<long> m_lstOpen;                        ///< ids of the entities that the person opened
    QHash<long, QSet<long>> m_lstOpenProperties; ///< likewise the properties, by the id of their entity
    bool m_bRestoring = false;
    bool m_bSharingWidth = true; ///< until the person sets a width
    bool m_bResizing = false;
    QAction * m_actCopyName = nullptr;
    QAction * m_actGoToTarget = nullptr;
    QAction * m_actExpandAll = nullptr;
    QAction * m_actCollapseAll = nullptr;
};

} // namespace app
