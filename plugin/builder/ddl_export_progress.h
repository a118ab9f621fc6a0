#pragma once

#include <functional>

namespace plugin {

/// How far an export is. A script counts for 1000 units, however much it holds; a pass over its objects for a
/// share of them that is fixed beforehand, so that the whole is known before the first statement is written.
class ddl_export_progress
{
public:
    /// Units of one script.
    static constexpr int Script = 1000;

    /// @param report receives the units done and the units in all, each time they differ
    explicit ddl_export_progress(std::function<void(int done, int total)> report);

    /// Begins an export of that many scripts.
    void begin(int scripts);
    /// Begins a pass of `steps` objects, which counts for `share` units of the current script. What the pass
    /// before it left over is done.
    void pass(int steps, int share);
    void step();
    void scriptDone();

private:
    void reportDone(int done);

    std::function<void(int, int)> m_report;
    int m_iTotal = 0;
    int m_iReported = -1;
    int m_iScriptStart = 0;
    int m_iPassStart = 0;
    int m_iPassShare = 0;
    int m_iSteps = 0;
    int m_iStep = 0;
};

} // namespace plugin
