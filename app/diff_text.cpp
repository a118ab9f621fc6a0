// What changed, for people: the same outline as text and as Markdown.

#include "app/diff_report.h"

#include "app/change_words.h"
#include "app/output.h"

#include "model/project.h"

#include <algorithm>

namespace app {

namespace {

using model::model_change;
using model::object_kind;

struct outline_line
{
    int depth = 0; ///< 0 for an entity or enumeration
    QString text;
};

QString countOf(std::size_t changes)
{
    switch (changes) {
    case 0:
        return QStringLiteral("no changes");
    case 1:
        return QStringLiteral("1 change");
    default:
        return QStringLiteral("%1 changes").arg(changes);
    }
}

QString headOf(const diff_report & report)
{
    const QString states = QStringLiteral("%1 to %2").arg(report.states.from, report.states.to);
    return QStringLiteral("%1: %2").arg(
        report.hasTwoSources ? states : report.states.state->getName() + QStringLiteral(", ") + states,
        countOf(report.changes.size()));
}

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

/// Puts the changes below the objects that they belong to.
class outline
{
public:
    explicit outline(const diff_report & report) : m_words(*report.states.before, *report.states.after)
    {
        for (const model_change & change : report.changes) {
            add(change);
        }
    }

    [[nodiscard]] const std::vector<outline_line> & lines() const { return m_lines; }

private:
    void add(const model_change & change)
    {
        const model::named_object & top = topOf(change);
        const bool isWhole = change.field.isEmpty() && change.owners.empty();
        if (isWhole || !isSameObject(top, m_top)) {
            m_top = top;
            m_property = {};
            m_lines.push_back({0, isWhole
                                      ? m_words.lineOf(change)
                                      : QStringLiteral("%1 %2").arg(model::kindName(top.kind), top.name)});
            if (isWhole) {
                return;
            }
        }
        const model::named_object * const property = propertyOf(change);
        if (!property) {
            m_property = change.object;
            m_lines.push_back({1, m_words.lineOf(change)});
            return;
        }
        if (!isSameObject(*property, m_property)) {
            m_property = *property;
            m_lines.push_back({1, QStringLiteral("property ") + property->name});
        }
        m_lines.push_back({2, m_words.lineOf(change)});
    }

    change_words m_words;
    model::named_object m_top;      ///< under which the next change may stand
    model::named_object m_property; ///< likewise
    std::vector<outline_line> m_lines;
};

/// `text` as Markdown that shows it as it is.
QString escaped(const QString & text)
{
    static const QString special = QStringLiteral("\\`*_[]<#|~&");
    QString result;
    for (const QChar c : text) {
        if (special.contains(c)) {
            result += QLatin1Char('\\');
        }
        result += c;
    }
    // At the beginning of an item a sign would begin another one.
    return QStringLiteral("+->").contains(text.left(1)) ? QLatin1Char('\\') + result : result;
}

} // namespace

QByteArray diffText(const diff_report & report)
{
    QString text = oneLine(headOf(report)) + QLatin1Char('\n');
    const outline told(report);
    for (const outline_line & line : told.lines()) {
        text += line.depth == 0 ? QStringLiteral("\n") : QString(2 * line.depth, QLatin1Char(' '));
        text += oneLine(line.text) + QLatin1Char('\n');
    }
    return text.toUtf8();
}

QByteArray diffMarkdown(const diff_report & report)
{
    QString text = QStringLiteral("## %1\n").arg(escaped(oneLine(headOf(report))));
    bool isList = false;
    const outline told(report);
    for (const outline_line & line : told.lines()) {
        const QString shown = escaped(oneLine(line.text));
        if (line.depth == 0) {
            text += QStringLiteral("\n### %1\n").arg(shown);
        } else {
            text += (isList ? QString() : QStringLiteral("\n")) +
                    QString(2 * (line.depth - 1), QLatin1Char(' ')) + QStringLiteral("- %1\n").arg(shown);
        }
        isList = line.depth > 0;
    }
    return text.toUtf8();
}

} // namespace app
