#pragma once

#include "plugin/export_interface.h"

#include <functional>

namespace support {

/// An export plug-in that does nothing but what a test gives it to do.
class plugin_double : public plugin::export_interface
{
public:
    [[nodiscard]] QString getGuid() const override { return QStringLiteral("guid of the double"); }
    [[nodiscard]] QString getName() const override { return QStringLiteral("PluginDouble"); }
    [[nodiscard]] QString getShortDesc() const override { return QStringLiteral("A double"); }
    [[nodiscard]] QString getDescription() const override { return QStringLiteral("Does what a test says."); }
    [[nodiscard]] QString getVersion() const override { return QStringLiteral("0.1"); }
    [[nodiscard]] QString getCommandLineInfos() const override { return {}; }
    [[nodiscard]] QIcon getIcon() const override { return {}; }
    [[nodiscard]] QIcon getIconSettings() const override { return {}; }
    [[nodiscard]] bool hasSettings() const override { return false; }
    bool showSettings() override { return false; }
    QSqlError saveSettings() override { return {}; }
    QSqlError loadSettings() override { return {}; }
    void clearSettings() override {}
    QWidget * getPreviewWidget() override { return nullptr; }
    zk::ZkBool exportProject(model::project & project) override
    {
        return onExport ? onExport(project) : zk::ZkBool::success();
    }

    std::function<zk::ZkBool(model::project &)> onExport;
};

} // namespace support
