#pragma once

#include "model/project.h"
#include "storage/project_file.h"
#include "storage/text_form.h"

#include <QByteArray>
#include <QDir>
#include <QFile>
#include <QProcess>
#include <QString>
#include <QStringList>

#include <memory>

/// What tests of projects need again and again.
namespace support {

/// JSON text from one that has ' in the place of ", which needs no escaping in a source.
inline QByteArray json(const char * text)
{
    return QByteArray(text).replace('\'', '"');
}

/// A text form whose "entities" are `entities`, the inside of the list.
inline QByteArray textOf(const QByteArray & entities, const QByteArray & enumerations = QByteArray())
{
    return R"({"format": "korvane-project", "formatVersion": 1, "name": "shop", "enumerations": [)" +
           enumerations + R"(], "entities": [)" + entities + "]}";
}

/// The message with which `text` is refused as "shop.json", empty when it is taken.
inline QString errorOf(const QByteArray & text, const model::project * existing = nullptr)
{
    model::project project(1);
    return storage::text_form::read(text, "shop.json", existing, project).getDesc();
}

/// The project that `text` describes; null when it is refused.
inline std::shared_ptr<model::project> projectOf(const QByteArray & text,
                                                 const model::project * existing = nullptr)
{
    const auto project = std::make_shared<model::project>(1);
    const zk::ZkBool read = storage::text_form::read(text, "shop.json", existing, *project);
    if (!read) {
        qWarning("%s", qUtf8Printable(read.getDesc()));
        return nullptr;
    }
    return project;
}

inline std::shared_ptr<model::entity> entityOf(const model::project & project, long index)
{
    return project.getListOfAllEntities()->getByIndex(index);
}

inline std::shared_ptr<model::property> propertyOf(const model::project & project, long entity, long index)
{
    return entityOf(project, entity)->getListOfProperty(true, true, false)->getByIndex(index);
}

/// The stored project as its text form, which tells everything about it; empty, with a warning, when it
/// cannot be read.
inline QByteArray storedText(const QString & file)
{
    model::project project(1);
    const QSqlError error = storage::project_file::read(file, project);
    if (error.isValid()) {
        qWarning("%s", qUtf8Printable(error.text()));
        return {};
    }
    return storage::text_form::write(project);
}

inline QByteArray bytesOf(const QString & name)
{
    QFile file(name);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

inline bool writeBytes(const QString & name, const QByteArray & bytes)
{
    QFile file(name);
    return file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size() && file.flush();
}

/// What a run of the program gave.
struct run_result
{
    int status = -1; ///< exit status, -1 when the program did not end by itself
    QByteArray out;
    QByteArray err;
};

inline run_result run(const QString & program, const QStringList & arguments)
{
    QProcess process;
    process.start(program, arguments);
    if (!process.waitForFinished(60000)) {
        process.kill();
        process.waitForFinished();
        return {};
    }
    return {process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -1,
            process.readAllStandardOutput(), process.readAllStandardError()};
}

/// Runs the stand-alone program under test.
inline run_result runKorvane(const QStringList & arguments)
{
    return run(KORVANE_PROGRAM, arguments);
}

/// The folder with models of public databases; empty when it is not there.
inline QString modelsFolder()
{
    const QString given = qEnvironmentVariable("KORVANE_MODELS");
    const QDir folder(given.isEmpty() ? QString(KORVANE_SOURCE_DIR "/../shared/models") : given);
    return folder.exists() ? folder.absolutePath() : QString();
}

} // namespace support
