#pragma once

#include "app/window/export/finding_target.h"

#include <QWidget>

class QLabel;

namespace app {

class change_tree;
struct diff_report;
class script_text;

/// What changed between two states of a project, and beside it the script that follows, if there is one.
class changes_view : public QWidget
{
    Q_OBJECT

public:
    explicit changes_view(QWidget * parent = nullptr);

    /// Shows what `report` tells, which may go then.
    void setReport(const diff_report & report);

Q_SIGNALS:
    /// The person has come to a change or a finding of this object.
    void objectReached(long entity, long property);
    /// The person wants to go to what a row leads to.
    void targetWanted(const QVariant & target);

private:
    QLabel * m_lblSummary;
    change_tree * m_treChanges;
    script_text * m_txtStatements;
};

} // namespace app
