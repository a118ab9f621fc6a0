#pragma once

#include <plugin/export_interface.h>
#include <plugin/module_ids.h>

/// Exports a data dictionary: a Markdown page with a table for each entity. It has no settings; where the page goes
/// can be given on the command line.
class markdown_dictionary : public plugin::export_interface
{
    Q_OBJECT
    // The interface that this plug-in is built for. A program with another one says so and does not load it.
    Q_PLUGIN_METADATA(IID KORVANE_PLUGIN_IID)

public:
    // Who the plug-in is. The GUID is made once and kept for ever: stored settings are found by it.
    [[nodiscard]] QString getGuid() const override;
    [[nodiscard]] QString getName() const override;
    [[nodiscard]] QString getShortDesc() const override;
    [[nodiscard]] QString getDescription() const override;
    [[nodiscard]] QString getVersion() const override;
    [[nodiscard]] QString getCommandLineInfos() const override;
    [[nodiscard]] QIcon getIcon() const override;
    [[nodiscard]] QIcon getIconSettings() const override;

    // Settings: none.
    [[nodiscard]] bool hasSettings() const override { return false; }
    bool showSettings() override { return true; }
    QSqlError saveSettings() override { return {}; }
    QSqlError loadSettings() override { return {}; }
    void clearSettings() override {}
    QWidget * getPreviewWidget() override { return nullptr; }

    /// Writes the page of `project`; a failure says which file could not be written and why.
    zk::ZkBool exportProject(model::project & project) override;
};
