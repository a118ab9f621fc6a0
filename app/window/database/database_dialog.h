#pragma once

#include "app/import/schema_source.h"

#include <QDialog>
#include <QStringList>

class QCheckBox;
class QComboBox;
class QFormLayout;
class QLabel;
class QLineEdit;
class QListWidget;
class QPushButton;

namespace app {

/// Asks for a database, shows whether it can be read, and lets the person choose among its tables.
class database_dialog : public QDialog
{
    Q_OBJECT

public:
    /// @param folder where files are looked for first
    database_dialog(const QString & folder, QWidget * parent);

    /// The title of this dialog and of what else is told of the command.
    [[nodiscard]] static QString title();

    // What holds once the dialog was accepted.
    /// The database as it was read.
    [[nodiscard]] const held_schema & held() const { return m_held; }
    /// The names of the chosen tables.
    [[nodiscard]] QStringList tables() const;
    /// Whether a table that only links two others becomes many-to-many.
    [[nodiscard]] bool tellsLinks() const;

private:
    [[nodiscard]] QFormLayout * createPlace();
    void createTables();
    void kindChanged();
    void choosePlace();
    /// What is known of another place holds no longer.
    void forget();
    void read();
    void showTables();
    void updateAll();
    void updateButtons();
    [[nodiscard]] schema_request request() const;

    QString m_sFolder;
    QComboBox * m_cmbKind;
    QLineEdit * m_txtPlace;
    QPushButton * m_btnBrowse;
    QLineEdit * m_txtPassword;
    QLineEdit * m_txtSchema;
    QPushButton * m_btnRead;
    QLabel * m_lblState;
    QCheckBox * m_chkAll;
    QListWidget * m_lstTables;
    QCheckBox * m_chkLinks;
    QPushButton * m_btnNext;
    held_schema m_held;
};

} // namespace app
