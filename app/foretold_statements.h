#pragma once

#include "check/finding/finding.h"

#include <QHash>
#include <QSet>
#include <QString>

#include <utility>

namespace app {

/// What a check found, asked for by statement, difference or property. Codes that it gives are those of
/// findings; empty where there is none.
class foretold_statements
{
public:
    foretold_statements() = default;
    explicit foretold_statements(const check::report & report);

    /// The code that says that the statement is refused.
    [[nodiscard]] QString refusal(const check::statement_place & of, bool withRows) const;
    /// Whether that does not depend on how somebody is connected.
    [[nodiscard]] bool isCertain(const check::statement_place & of) const;
    /// The code that explains a difference of that object, in the words of check::subjectOf().
    [[nodiscard]] QString difference(const QString & object) const { return m_differences.value(object); }
    /// The code that explains why the values of a property are gone.
    [[nodiscard]] QString loss(long entity, long property) const;

private:
    using place_key = std::pair<QString, int>; ///< script and line
    using object_key = std::pair<int, long>;   ///< kind and id

    static place_key keyOf(const check::statement_place & of) { return {of.script, of.line}; }
    void add(const check::finding & found);

    QHash<place_key, QString> m_always;
    QHash<place_key, QString> m_withRows;
    QSet<place_key> m_certain;
    QHash<QString, QString> m_differences;
    QHash<object_key, QString> m_objects;
};

} // namespace app
