#pragma once

#include "storage/history.h"

#include <QDialog>
#include <QString>

class QLineEdit;
class QPushButton;
class QStandardItemModel;
class QTreeView;
class QVBoxLayout;

namespace app {

struct diff_report;

/// Asks what a new version is about.
class tag_dialog : public QDialog
{
    Q_OBJECT

public:
    /// @param number the number that the version will have
    tag_dialog(const QString & projectName, int number, QWidget * parent);

    /// Shows what changed since the newest version.
    /// @param note what there is to know of the statements; may be empty
    void showChanges(const diff_report & report, const QString & note);

    [[nodiscard]] QString message() const;
    /// The title of this dialog and of what else is told of the command.
    [[nodiscard]] static QString title();

private:
    QLineEdit * m_txtMessage;
};

/// Asks whether a model is to be replaced, and shows what would change.
class import_dialog : public QDialog
{
    Q_OBJECT

public:
    import_dialog(const QString & title, const QString & question, const diff_report & report,
                  QWidget * parent);

    /// Shows what there is to know besides, a line each; nothing for no lines.
    void showNotes(const QStringList & notes);
};

/// Shows the versions of a project, the newest first.
class versions_dialog : public QDialog
{
    Q_OBJECT

public:
    versions_dialog(const QString & projectName, const QList<storage::history::version> & versions,
                    QWidget * parent);

    /// The title of this dialog and of what else is told of the command.
    [[nodiscard]] static QString title();
    /// The versions that are to be compared once the dialog was accepted: those of the selected rows, or that
    /// of the one row and `Now`.
    [[nodiscard]] int from() const;
    [[nodiscard]] int to() const;

private:
    [[nodiscard]] QList<int> selected() const;
    void createList(QStandardItemModel * model);
    QStandardItemModel * createModel(const QList<storage::history::version> & versions);

    QTreeView * m_lstVersions;
    QPushButton * m_btnCompare;
};

} // namespace app
