#include "app/window/changes/changes_view.h"

#include "app/window/changes/change_tree.h"
#include "app/window/export/script_text.h"

#include "app/diff_report.h"

#include <QLabel>
#include <QLocale>
#include <QSplitter>
#include <QVBoxLayout>

#include <algorithm>

namespace app {

namespace {

QString counted(std::size_t count, const QString & none, const QString & one, const QString & many)
{
    return count == 0   ? none
           : count == 1 ? one
                        : many.arg(QLocale().toString(static_cast<qulonglong>(count)));
}

QString summaryOf(const diff_report & report)
{
    QStringList parts{counted(report.changes.size(), changes_view::tr("No changes"),
                              changes_view::tr("1 change"), changes_view::tr("%1 changes"))};
    if (report.script) {
        const std::vector<step_statement> & all = report.script->statements;
        const auto statements = std::count_if(all.begin(), all.end(),
                                              [](const step_statement & each) { return !each.isFrame(); });
        parts << counted(static_cast<std::size_t>(statements), changes_view::tr("no statement"),
                         changes_view::tr("1 statement"), changes_view::tr("%1 statements"));
    }
    if (!report.found.findings.empty()) {
        parts << countsOf(report.found);
    }
    return parts.join(QStringLiteral(", "));
}

} // namespace

changes_view::changes_view(QWidget * parent)
    : QWidget(parent), m_lblSummary(new QLabel), m_treChanges(new change_tree),
      m_txtStatements(new script_text)
{
    m_lblSummary->setObjectName(QStringLiteral("m_lblSummary"));
    m_lblSummary->setTextFormat(Qt::PlainText);
    m_txtStatements->setObjectName(QStringLiteral("m_txtStatements"));
    m_txtStatements->setAccessibleName(tr("Statements"));
    auto * const parts = new QSplitter;
    parts->setChildrenCollapsible(false);
    parts->addWidget(m_treChanges);
    parts->addWidget(m_txtStatements);
    parts->setStretchFactor(0, 1);
    parts->setStretchFactor(1, 1);
    auto * const layout = new QVBoxLayout(this);
    layout->setContentsMargins({});
    layout->addWidget(m_lblSummary);
    layout->addWidget(parts, 1);
    connect(m_treChanges, &change_tree::rowReached, this,
            [this](const finding_target & target, const statement_lines & lines) {
                if (lines.first > 0) {
                    m_txtStatements->selectLines(lines.first, lines.count);
                }
                Q_EMIT objectReached(target.entity, target.property);
            });
    connect(m_treChanges, &change_tree::rowWanted, this,
            [this](const finding_target & target) { Q_EMIT targetWanted(QVariant::fromValue(target)); });
}

void changes_view::setReport(const diff_report & report)
{
    m_lblSummary->setText(summaryOf(report));
    m_treChanges->setReport(report);
    m_txtStatements->setVisible(report.script.has_value());
    if (report.script) {
        const std::vector<step_statement> & all = report.script->statements;
        m_txtStatements->setScript(QString::fromUtf8(report.script->bytes),
                                   all.empty() ? sql_dialect::generic
                                               : sqlDialectOf(all.front().place.script));
    }
}

} // namespace app
