#pragma once

// For message_kind: where it is only declared, lupdate loses the namespace and the panel its translations.
#include "app/window/export/message_list.h"

#include <QPersistentModelIndex>
#include <QWidget>

class QAction;
class QBoxLayout;
class QCheckBox;
class QLabel;
class QListView;
class QProgressBar;
class QPushButton;
class QStackedLayout;

namespace app {

class message_delegate;
class message_filter;

/// What the runs of an export tell while they go on and when they end, with how far they are.
class message_panel : public QWidget
{
    Q_OBJECT

public:
    explicit message_panel(QWidget * parent = nullptr);

    /// Begins a new run: a heading line with the time, the progress bar shown as busy until a total is known.
    /// What earlier runs said stays above, up to a limit.
    void begin(const QString & title);
    /// Appends one message: `type` 1 progress, 2 warning, 3 an error. Line ends inside are kept readable on
    /// one row. Cheap: the list shows it within 50 milliseconds of the event loop, or at end().
    void addMessage(const QString & text, int type);
    /// Appends a finding, which leads to `target`.
    void addFinding(const QString & text, message_kind kind, const QVariant & target);
    /// `done` of `total` steps; total 0 means not known (busy).
    void setProgress(int done, int total);
    /// Ends the run: a closing line, an error one when `ok` is false; the progress bar goes, or is marked as
    /// failed. Without a text the line is "Done" or "Failed".
    void end(bool ok, const QString & text);

    /// Offers to cancel the run that goes on; until it ends.
    void setCancellable(bool isCancellable);

    /// How many messages there were since the last begin() or clear(), shown or not yet.
    [[nodiscard]] int messageCount() const { return m_iMessages; }
    /// How many errors there were since the last begin() or clear(); a closing line that tells of a failure
    /// is one.
    [[nodiscard]] int errorCount() const { return m_iErrors; }
    /// Removes all lines, of earlier runs as well. A run that goes on goes on.
    void clear();

Q_SIGNALS:
    /// The person wants to go to what a finding leads to.
    void targetWanted(const QVariant & target);
    /// The person wants the run to end.
    void cancelRequested();

protected:
    bool eventFilter(QObject * watched, QEvent * event) override;
    void changeEvent(QEvent * event) override;

private:
    void createList();
    void createActions();
    QAction * addListAction(const char * name, const QString & text, void (message_panel::*slot)());
    QBoxLayout * createBar();
    void keepEndInView();
    void keepPlaceWhileDropping();
    void add(const QString & text, message_kind kind, const QVariant & target = {});
    void showCounts();
    void showOutcome();
    void copySelected();
    void copyAll();

    enum class run_state
    {
        none,
        going,
        done,
        failed
    };

    message_list * m_pList;
    message_filter * m_pFilter;
    message_delegate * m_pDelegate = nullptr;
    QListView * m_lstMessages = nullptr;
    QLabel * m_lblCounts = nullptr;
    QStackedLayout * m_outcome = nullptr; ///< nothing, the progress bar, or the label of a run that went well
    QLabel * m_lblDone = nullptr;         ///< in the place of the progress bar after a run that went well
    QProgressBar * m_barProgress = nullptr;
    QPushButton * m_btnCancel = nullptr;
    QCheckBox * m_chkErrorsOnly = nullptr;
    /// While lines are dropped: the uppermost row that is seen, and where it begins, in pixels from the top.
    QPersistentModelIndex m_topRow;
    int m_iTopOffset = 0;
    run_state m_state = run_state::none;
    int m_iMessages = 0;
    int m_iErrors = 0;
    bool m_bFollow = true; ///< the end is in view, and stays there
};

} // namespace app
