#include "app/diff_outline.h"

#include "app/change_words.h"

#include <algorithm>

namespace app {

namespace {

using model::model_change;
using model::object_kind;

/// The entity or enumeration that a change is told under.
const model::named_object & topOf(const model_change & change)
{
    return change.owners.empty() ? change.object : change.owners.back();
}

/// The property that a change is told under; null for one of an entity or enumeration, or of a property as a
/// whole.
const model::named_object * propertyOf(const model_change & change)
{
    if (change.object.kind == object_kind::relationship) {
        return &change.owners.front();
    }
    const bool isField =
        change.change == model::change_kind::renamed || change.change == model::change_kind::changed;
    return change.object.kind == object_kind::property && isField ? &change.object : nullptr;
}

bool isSameObject(const model::named_object & a, const model::named_object & b)
{
    return a.kind == b.kind && a.id == b.id;
}

/// Builds the lines of a report.
class outline
{
public:
    explicit outline(const diff_report & report)
        : m_report(report), m_words(*report.states.before, *report.states.after)
    {
        for (const model_change & change : report.changes) {
            add(change);
            m_lineOfChange.push_back(m_lines.size() - 1);
        }
        if (report.script) {
            addStatements(report.script->statements);
            addFindings();
        }
    }

    [[nodiscard]] std::vector<outline_line> take() { return std::move(m_lines); }

private:
    void add(const model_change & change)
    {
        const model::named_object & top = topOf(change);
        const bool isWhole = change.field.isEmpty() && change.owners.empty();
        if (isWhole || !isSameObject(top, m_top)) {
            m_top = top;
            m_property = {};
            addLine(0, top,
                    isWhole ? m_words.lineOf(change)
                            : QStringLiteral("%1 %2").arg(model::kindName(top.kind), top.name));
            if (isWhole) {
                return;
            }
        }
        const model::named_object * const property = propertyOf(change);
        if (!property) {
            m_property = change.object;
            addLine(1, change.object, m_words.lineOf(change));
            return;
        }
        if (!isSameObject(*property, m_property)) {
            m_property = *property;
            addLine(1, *property, QStringLiteral("property ") + property->name);
        }
        addLine(2, *property, m_words.lineOf(change));
    }

    void addLine(int depth, const model::named_object & object, const QString & text)
    {
        outline_line line;
        line.depth = depth;
        line.text = text;
        line.entity = m_top.kind == object_kind::entity ? m_top.id : 0;
        line.property = object.kind == object_kind::property ? object.id : 0;
        m_lines.push_back(std::move(line));
    }

    /// The line below which stands what follows from `causes`; the last one, called `others`, without any.
    outline_line & lineFor(const std::vector<int> & causes, const QString & others)
    {
        if (!causes.empty()) {
            return m_lines[m_lineOfChange[static_cast<std::size_t>(causes.front())]];
        }
        if (m_lines.empty() || m_lines.back().text != others) {
            m_top = {};
            addLine(0, {}, others);
        }
        return m_lines.back();
    }

    void addStatements(const std::vector<step_statement> & statements)
    {
        std::vector<bool> hasStatement(m_lineOfChange.size(), false);
        for (const step_statement & statement : statements) {
            for (const int cause : statement.causes) {
                hasStatement[static_cast<std::size_t>(cause)] = true;
            }
            if (!statement.isFrame()) {
                lineFor(statement.causes,
                        QStringLiteral("statements that follow from no change of the model"))
                    .statements.push_back(&statement);
            }
        }
        for (std::size_t change = 0; change < m_lineOfChange.size(); ++change) {
            if (!hasStatement[change]) {
                m_lines[m_lineOfChange[change]].text += QStringLiteral(" (no statement)");
            }
        }
    }

    void addFindings()
    {
        for (std::size_t i = 0; i < m_report.places.size(); ++i) {
            lineFor(m_report.places[i].causes, QStringLiteral("findings about no single change"))
                .findings.push_back(&m_report.found.findings[i]);
        }
        for (outline_line & line : m_lines) {
            std::stable_sort(
                line.findings.begin(), line.findings.end(),
                [](const check::finding * a, const check::finding * b) { return check::isWorse(*a, *b); });
        }
    }

    const diff_report & m_report;
    change_words m_words;
    model::named_object m_top;      ///< under which the next change may stand
    model::named_object m_property; ///< likewise
    std::vector<std::size_t> m_lineOfChange;
    std::vector<outline_line> m_lines;
};

} // namespace

std::vector<outline_line> outlineOf(const diff_report & report)
{
    return outline(report).take();
}

} // namespace app
