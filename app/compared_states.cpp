#include "app/compared_states.h"

#include "app/project_work.h"
#include "app/source.h"

#include "model/project.h"

#include <QFileInfo>

namespace app {

namespace {

using zk::ZkBool;

ZkBool loadTwoSources(const comparison_request & request, compared_states & states)
{
    source former;
    states.of = std::make_shared<source>();
    source & later = *states.of;
    ZkBool result = former.openState(request.source);
    if (result) {
        result = later.openState(request.from);
    }
    if (result) {
        result = former.load(Now, states.before);
    }
    if (result) {
        result = later.loadAfter(*states.before, states.after);
    }
    states.state = states.after;
    states.from = shownName(request.source);
    states.to = shownName(request.from);
    states.fromNumber = 1;
    states.toNumber = 2;
    states.isText = later.isText();
    if (result) {
        later.takeStates(states.before, states.after);
    }
    return result;
}

/// Loads the versions that `request` names.
ZkBool loadNamed(const comparison_request & request, compared_states & states)
{
    const auto of = std::make_shared<source>();
    if (const ZkBool opened = of->open(request.source); !opened) {
        return opened;
    }
    if (of->isText()) {
        return ZkBool::failure(
            QStringLiteral("%1: a text form has no versions; give a second source to compare it with")
                .arg(shownName(request.source)));
    }
    // Without any version the first one is what is missing.
    const int from = versionNumber(request.from).value_or(std::max(of->newestVersion(), 1));
    return loadVersions(of, from, versionNumber(request.to).value_or(Now), states);
}

} // namespace

bool comparison_request::hasTwoSources() const
{
    return !from.isEmpty() && !versionNumber(from);
}

QString comparison_request::whyWrong() const
{
    if (hasTwoSources() && !to.isEmpty()) {
        return QStringLiteral("'%1' is no version, and after a second source no version can follow; versions "
                              "are v1, v2 … and now")
            .arg(from);
    }
    if (hasTwoSources() && source == StandardInput && from == StandardInput) {
        return QStringLiteral("Both sources are '-', but standard input can be read only once");
    }
    return whyNoVersion(to);
}

ZkBool loadVersions(const std::shared_ptr<source> & of, int from, int to, compared_states & states)
{
    ZkBool result = of->checkVersion(from);
    if (result) {
        result = of->checkVersion(to);
    }
    if (result) {
        result = of->load(Now, states.state);
    }
    if (result) {
        result = of->load(from, states.before);
    }
    if (result) {
        result = of->load(to, states.after);
    }
    const auto numberOf = [&of](int version) { return version == Now ? of->newestVersion() + 1 : version; };
    states.of = of;
    states.from = versionWord(from);
    states.to = versionWord(to);
    states.fromNumber = numberOf(from);
    states.toNumber = numberOf(to);
    return result;
}

ZkBool loadStates(const comparison_request & request, compared_states & states)
{
    if (!request.hasTwoSources()) {
        return loadNamed(request, states);
    }
    if (request.from != StandardInput && !QFileInfo::exists(request.from)) {
        return ZkBool::failure(
            QStringLiteral("%1: is neither a version (v1, v2 … or now) nor a file that is there")
                .arg(shownName(request.from)));
    }
    return loadTwoSources(request, states);
}

} // namespace app
