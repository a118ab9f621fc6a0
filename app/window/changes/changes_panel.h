#pragma once

#include "storage/history.h"

#include <QList>
#include <QString>
#include <QWidget>

class QBoxLayout;
class QComboBox;
class QLabel;
class QStackedWidget;

namespace app {

class changes_view;
struct diff_report;

/// What changed between two versions that the person chooses, with the statements for a database.
class changes_panel : public QWidget
{
    Q_OBJECT

public:
    explicit changes_panel(QWidget * parent = nullptr);

    /// Offers these versions and the state of the project, and chooses the newest one and the state unless
    /// what was chosen is still there.
    void setVersions(const QList<storage::history::version> & versions);
    /// Chooses two versions, or the state for `Now`, which is told by comparisonWanted() when they are
    /// others.
    void choose(int from, int to);
    /// Goes back to the newest version, the state and the stored database: for another project.
    void forgetChoice();

    [[nodiscard]] int from() const;
    [[nodiscard]] int to() const;
    /// Key of the database that the person has chosen; empty for the stored one.
    [[nodiscard]] QString database() const;

    void showReport(const diff_report & report, const QString & note);
    /// Says why there is nothing to be compared.
    void showProblem(const QString & text);

Q_SIGNALS:
    /// The person has chosen other versions or another database, or the panel has come into view.
    void comparisonWanted();
    /// The person has come to a change of this object.
    void objectReached(long entity, long property);
    /// The person wants to go to what a row leads to.
    void targetWanted(const QVariant & target);

protected:
    void showEvent(QShowEvent * event) override;

private:
    QBoxLayout * createBar();
    QComboBox * addChoice(QBoxLayout & bar, const char * name, const QString & label, bool & isChosen);

    QComboBox * m_cboFrom = nullptr;
    QComboBox * m_cboTo = nullptr;
    QComboBox * m_cboDatabase = nullptr;
    QLabel * m_lblNote;
    QLabel * m_lblProblem;
    changes_view * m_view;
    QStackedWidget * m_stkContent;
    bool m_isChosen = false; ///< versions were chosen, not only offered
    bool m_isDatabaseChosen = false;
};

} // namespace app
