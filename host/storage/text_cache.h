#pragma once

#include <QString>

#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace storage {

/// Hands out one shared copy of equal texts, as long as they come close together: models repeat the names of
/// their columns. Its memory does not grow with the model.
class text_cache
{
public:
    QString shared(std::string_view utf8)
    {
        if (utf8.empty()) {
            return QStringLiteral("");
        }
        slot & s = m_slots[std::hash<std::string_view>()(utf8) % SlotCount];
        if (s.utf8 != utf8) {
            s.utf8.assign(utf8);
            s.text = QString::fromUtf8(utf8.data(), static_cast<qsizetype>(utf8.size()));
        }
        return s.text;
    }

private:
    struct slot
    {
        std::string utf8;
        QString text;
    };
    static constexpr std::size_t SlotCount = 4096;

    std::vector<slot> m_slots = std::vector<slot>(SlotCount);
};

} // namespace storage
