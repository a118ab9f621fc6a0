#pragma once

#include "ui_wnd_ddl_export_settings.h"

#include <QDialog>
#include <QMessageBox>

#include <array>
#include <memory>
#include <utility>

namespace plugin {
class ddl_export;
}

namespace view {

class ddl_export_type_mapping;

/// The settings dialog of the plug-in: edits, checks and stores everything that an export needs to know.
class ddl_export_settings : public QDialog, private Ui::wnd_ddl_export_settings
{
    Q_OBJECT

public:
    explicit ddl_export_settings(QWidget * parent = nullptr, Qt::WindowFlags flags = Qt::WindowFlags());
    ~ddl_export_settings() override;

    /// Shows the stored settings of `p` (not owned, may be null); the dialog writes into it on OK.
    void init(plugin::ddl_export * p);

protected:
    void resizeEvent(QResizeEvent * event) override;

protected Q_SLOTS:
    void doBtnOk();
    void doBtnFileLocation();
    void doBtnCustomScriptLocation();
    void doBtnDebugCustomScript();
    void doClickBtnHelpManual();
    void doCboDatabaseTypeChanged(int index);
    void doBtnRestoreDefaultTypeMapping();

protected:
    void showEvent(QShowEvent * event) override;

private:
    void fitScreen();
    void keepTitlesLegible();
    void fillDatabaseTypes();
    /// The ways to export the schema, each with its button.
    [[nodiscard]] std::array<std::pair<int, QRadioButton *>, 3> schemaOptions() const;
    void showSchema(int schema);
    [[nodiscard]] int checkedSchema() const;
    [[nodiscard]] int selectedDatabase() const;
    void loadTypeMapping();
    [[nodiscard]] bool checkInput();
    [[nodiscard]] static QString debuggerNote();
    void showMessage(QMessageBox::Icon icon, const QString & text);
    void warn(const QString & text);

    plugin::ddl_export * m_pPlugin = nullptr;
    std::shared_ptr<ddl_export_type_mapping> m_pTypeMapping;
    bool m_bFitted = false; ///< to the screen
};

/// Shows the settings of `plugin` in a modal dialog above the main window; true when they were accepted.
bool showSettingsDialog(plugin::ddl_export & plugin);

} // namespace view
