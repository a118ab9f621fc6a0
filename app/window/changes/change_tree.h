#pragma once

#include "app/window/export/finding_target.h"

#include <QTreeView>

class QStandardItem;
class QStandardItemModel;

namespace app {

struct diff_report;
struct outline_line;

/// The statements of a script that follow from a change.
struct statement_lines
{
    int first = 0; ///< from 1; 0 when none follows
    int count = 0;
};

/// What changed between two versions as a tree: below each change what is found about it.
class change_tree : public QTreeView
{
    Q_OBJECT

public:
    explicit change_tree(QWidget * parent = nullptr);

    /// Shows what `report` tells, which may go then.
    void setReport(const diff_report & report);

Q_SIGNALS:
    /// The person has come to a row: what it is about, and what it makes of a script.
    void rowReached(const app::finding_target & target, const app::statement_lines & lines);
    /// The person wants to go to what the row leads to.
    void rowWanted(const app::finding_target & target);

protected:
    void currentChanged(const QModelIndex & current, const QModelIndex & previous) override;
    void mousePressEvent(QMouseEvent * event) override;
    void changeEvent(QEvent * event) override;

private:
    void addFindings(QStandardItem & to, const outline_line & line);
    void reach(const QModelIndex & row);

    QStandardItemModel * m_pModel;
};

} // namespace app
