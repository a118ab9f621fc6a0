#pragma once

#include "storage/history.h"

#include <QDialog>
#include <QString>

class QLineEdit;
class QStandardItemModel;

namespace app {

/// Asks what a new version is about.
class tag_dialog : public QDialog
{
    Q_OBJECT

public:
    /// @param number the number that the version will have
    tag_dialog(const QString & projectName, int number, QWidget * parent);

    [[nodiscard]] QString message() const;
    /// The title of this dialog and of what else is told of the command.
    [[nodiscard]] static QString title();

private:
    QLineEdit * m_txtMessage;
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

private:
    QStandardItemModel * createModel(const QList<storage::history::version> & versions);
};

} // namespace app
