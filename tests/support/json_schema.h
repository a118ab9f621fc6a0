#pragma once

#include "support/program.h"

#include <QByteArray>
#include <QString>
#include <QStringList>

namespace support {

/// Whether the validator is installed.
inline bool hasSchemaValidator()
{
    return runProcess(QStringLiteral("python3"), {QStringLiteral("-c"), QStringLiteral("import jsonschema")},
                      {}, {})
               .status == 0;
}

/// What is wrong with the documents in `files` by the schema of resources/schema/; empty when nothing is.
inline QByteArray schemaErrors(const QString & schema, const QStringList & files)
{
    const QString program = QStringLiteral("import json, sys, jsonschema\n"
                                           "schema = json.load(open(sys.argv[1]))\n"
                                           "jsonschema.Draft202012Validator.check_schema(schema)\n"
                                           "validator = jsonschema.Draft202012Validator(schema)\n"
                                           "for name in sys.argv[2:]:\n"
                                           "    for error in validator.iter_errors(json.load(open(name))):\n"
                                           "        print(name, error.json_path, error.message)\n");
    const program_result result =
        runProcess(QStringLiteral("python3"),
                   QStringList{QStringLiteral("-c"), program,
                               QStringLiteral(KORVANE_SOURCE_DIR "/resources/schema/") + schema} +
                       files,
                   {}, {});
    return result.status == 0 ? result.output : "the validator failed: " + result.errors;
}

} // namespace support
