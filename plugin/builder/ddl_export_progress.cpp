#include "plugin/builder/ddl_export_progress.h"

#include <algorithm>
#include <utility>

namespace plugin {

ddl_export_progress::ddl_export_progress(std::function<void(int, int)> report) : m_report(std::move(report))
{
}

void ddl_export_progress::begin(int scripts)
{
    m_iTotal = scripts * Script;
    m_iReported = -1;
    m_iScriptStart = 0;
    m_iPassStart = 0;
    m_iPassShare = 0;
    reportDone(0);
}

void ddl_export_progress::pass(int steps, int share)
{
    m_iPassStart += m_iPassShare;
    m_iPassShare = share;
    m_iSteps = steps;
    m_iStep = 0;
    reportDone(m_iPassStart);
}

void ddl_export_progress::step()
{
    ++m_iStep;
    // In 64 bits: a pass may have millions of steps.
    reportDone(m_iPassStart + static_cast<int>(1LL * m_iPassShare * std::min(m_iStep, m_iSteps) / m_iSteps));
}

void ddl_export_progress::scriptDone()
{
    m_iScriptStart += Script;
    m_iPassStart = m_iScriptStart;
    m_iPassShare = 0;
    reportDone(m_iScriptStart);
}

void ddl_export_progress::reportDone(int done)
{
    if (done != m_iReported && m_iTotal > 0) {
        m_iReported = done;
        m_report(done, m_iTotal);
    }
}

} // namespace plugin
