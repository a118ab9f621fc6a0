// Placeholders that let the layers above link while the services below them are written.

#include "tools/custom_javascript.h"

// --- script engine
class tools::custom_javascript::impl
{
};
tools::custom_javascript::custom_javascript() = default;
tools::custom_javascript::~custom_javascript() = default;
zk::ZkBool tools::custom_javascript::initEngine(const QString &, plugin::base_interface *)
{
    return zk::ZkBool(false);
}
zk::ZkBool tools::custom_javascript::runDebugger()
{
    return zk::ZkBool(false);
}
bool tools::custom_javascript::isDebugging() const
{
    return false;
}
