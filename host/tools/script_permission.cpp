#include "tools/script_permission.h"

#include <QSet>

namespace tools {

namespace {

script_guard & currentGuard()
{
    static script_guard guard;
    return guard;
}

QSet<QString> & chosenScripts()
{
    static QSet<QString> scripts;
    return scripts;
}

} // namespace

script_guard_scope::script_guard_scope(const script_guard & guard) : m_former(currentGuard())
{
    currentGuard() = guard;
}

script_guard_scope::~script_guard_scope()
{
    currentGuard() = m_former;
}

script_permission askScriptGuard(const QString & file, bool isStored)
{
    return currentGuard() ? currentGuard()(file, isStored) : script_permission::run;
}

void noteChosenScript(const QString & file)
{
    chosenScripts().insert(file);
}

bool isChosenScript(const QString & file)
{
    return chosenScripts().contains(file);
}

} // namespace tools
