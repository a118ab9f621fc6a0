#pragma once

#include <QByteArray>

namespace support {

/// A text form with two entities and a relationship between them.
inline const QByteArray ShopText = R"x({
  "format": "korvane-project", "formatVersion": 1, "name": "shop",
  "entities": [
    { "id": 1, "name": "country", "properties": [
      { "id": 10, "name": "id", "type": "long", "identifier": true } ] },
    { "id": 2, "name": "person", "properties": [
      { "id": 20, "name": "id", "type": "long", "identifier": true },
      { "id": 21, "name": "country", "columnName": "country_id",
        "relationship": { "id": 30, "type": "many-to-one", "target": 1 } } ] } ] })x";

} // namespace support
