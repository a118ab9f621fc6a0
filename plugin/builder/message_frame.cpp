#include "plugin/builder/message_frame.h"

#include <algorithm>

namespace plugin {

message_frame::message_frame(const QString & text)
{
    qsizetype begin = 0;
    for (qsizetype i = 0; i + 1 < text.size(); ++i) {
        const int place = text[i] == QLatin1Char('%') ? text[i + 1].digitValue() : -1;
        if (place > 0) {
            m_parts.push_back({text.mid(begin, i - begin), static_cast<std::size_t>(place)});
            begin = i + 2;
        }
    }
    m_parts.push_back({text.mid(begin), 0});
}

QString message_frame::filled(std::initializer_list<QString> values) const
{
    const auto value = [&values](std::size_t place) {
        return place > 0 && place <= values.size() ? values.begin() + (place - 1) : nullptr;
    };
    qsizetype size = 0;
    for (const part & p : m_parts) {
        const QString * const between = value(p.place);
        size += p.text.size() + (between ? between->size() : 0);
    }
    QString result(size, Qt::Uninitialized);
    QChar * end = result.data();
    for (const part & p : m_parts) {
        end = std::copy(p.text.cbegin(), p.text.cend(), end);
        if (const QString * const between = value(p.place)) {
            end = std::copy(between->cbegin(), between->cend(), end);
        }
    }
    return result;
}

} // namespace plugin
