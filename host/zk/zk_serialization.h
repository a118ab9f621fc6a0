#pragma once

#include "korvane_global.h"
#include "zk/zk_collection.h"

#include <QString>

namespace zk::serialization {

/// The collection as an XML archive without header, root element "zk.ZkCollection-QString_QString-".
///
/// Characters that XML cannot hold are left out. A failure gives an empty text and one line in the log
/// ("Serialization error : '…'").
[[nodiscard]] KORVANE_EXPORT QString toXml(const ZkCollection<QString, QString> & list);

/// Reads what toXml() wrote into `list`, replacing its contents. False, with one line in the log
/// ("Deserialization error : '…'"), when the text is damaged: `list` then holds the pairs that stood before
/// the damage. The text is treated as hostile: no crash, hang or unbounded memory, whatever it holds.
KORVANE_EXPORT bool fromXml(const QString & xml, ZkCollection<QString, QString> & list);

} // namespace zk::serialization
