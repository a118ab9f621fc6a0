#include "plugin/builder/statement_records.h"

#include <QFileInfo>

#include <algorithm>
#include <utility>

namespace plugin {

statement_records::statement_records(const script_identity & script, statement_receiver receiver)
    : m_sScript(QFileInfo(script.fileName).fileName()), m_iFrom(script.from), m_iTo(script.to),
      m_receiver(std::move(receiver))
{
}

bool statement_records::take(const script_statement & statement)
{
    const int lines =
        static_cast<int>(std::count(statement.text.cbegin(), statement.text.cend(), QLatin1Char('\n'))) + 1;
    // Texts grew while they were made; there are many, and they stay.
    QString text = statement.text;
    text.squeeze();
    const QString defaultText = statement.defaultText == text ? text : statement.defaultText;
    m_receiver({m_sScript, m_iFrom, m_iTo, m_iLine, lines, statement.action, text, defaultText,
                statement.entity, statement.property, statement.relationship});
    m_iLine += lines;
    return true;
}

} // namespace plugin
