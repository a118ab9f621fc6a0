#include "app/project_work.h"

#include "app/whole_file.h"

#include "model/file_suffix.h"
#include "model/project.h"
#include "os/file_status.h"
#include "storage/model_check.h"
#include "storage/project_file.h"
#include "storage/text_form.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <cstdio>

namespace app {

namespace {

using zk::ZkBool; // lupdate takes what follows a qualified name for a text of that namespace

struct texts
{
    Q_DECLARE_TR_FUNCTIONS(app::project_work)
};

constexpr qint64 TextLimit = qint64(512) * 1024 * 1024; // bytes; far above any model, far below memory

ZkBool fileFailure(const QString & file, const QString & reason)
{
    return ZkBool::failure(QDir::toNativeSeparators(file) + QStringLiteral(": ") + reason);
}

ZkBool resultOf(const QSqlError & error)
{
    return error.isValid() ? ZkBool::failure(error.text()) : ZkBool::success();
}

ZkBool unreadable(const QString & name, const QString & reason)
{
    return fileFailure(name, texts::tr("cannot be read (%1)").arg(reason));
}

ZkBool tooLarge(const QString & name)
{
    return fileFailure(name, texts::tr("is too large for the text form of a project"));
}

/// Reads what comes to its end when the other side ends, however large that turns out to be.
ZkBool readStandardInput(QByteArray & text)
{
    const QString source = shownName(StandardInput);
    QFile input;
    if (!input.open(stdin, QIODevice::ReadOnly)) {
        return unreadable(source, input.errorString());
    }
    constexpr qint64 piece = qint64(1024) * 1024; // bytes
    for (QByteArray more = input.read(piece); !more.isEmpty(); more = input.read(piece)) {
        text += more;
        if (text.size() > TextLimit) {
            return tooLarge(source);
        }
    }
    return input.error() == QFileDevice::NoError ? ZkBool::success()
                                                 : unreadable(source, input.errorString());
}

bool hasSuffix(const QString & name, QLatin1String suffix)
{
    return QFileInfo(name).suffix().compare(suffix, Qt::CaseInsensitive) == 0;
}

} // namespace

bool isProjectName(const QString & name)
{
    return hasSuffix(name, model::ProjectFileSuffix);
}

bool isTextName(const QString & name)
{
    return hasSuffix(name, TextSuffix);
}

QString shownName(const QString & name)
{
    return name == StandardInput ? texts::tr("standard input") : QDir::toNativeSeparators(name);
}

ZkBool readText(const QString & name, QByteArray & text)
{
    if (name == StandardInput) {
        return readStandardInput(text);
    }
    const os::file_status status = os::fileStatus(name);
    if (status.kind == os::file_status::missing) {
        return fileFailure(name, texts::tr("does not exist; check the name"));
    }
    if (status.kind == os::file_status::unknown) {
        return fileFailure(
            name, texts::tr("cannot be read (%1); check the name").arg(os::systemReason(status.error)));
    }
    if (status.kind != os::file_status::regular) {
        return fileFailure(
            name, texts::tr("is %1, not a file with the text form of a project").arg(status.kindName));
    }
    if (status.size > TextLimit) {
        return tooLarge(name);
    }
    QFile file(name);
    if (!file.open(QIODevice::ReadOnly)) {
        return unreadable(name, file.errorString());
    }
    text = file.readAll();
    if (file.error() != QFileDevice::NoError) {
        return unreadable(name, file.errorString());
    }
    return ZkBool::success();
}

ZkBool openProject(const QString & file, std::shared_ptr<model::project> & project)
{
    const auto opened = std::make_shared<model::project>(1);
    opened->setFileName(file);
    ZkBool result = resultOf(opened->load());
    if (result) {
        project = opened;
    }
    return result;
}

bool replacesModel(const QString & projectFile)
{
    const QFileInfo target(projectFile);
    return target.exists() && (!target.isFile() || target.size() > 0);
}

ZkBool readModel(const QByteArray & text, const QString & source, const model::project * existing,
                 model::project & project, QStringList & warnings)
{
    const ZkBool read = storage::text_form::read(text, source, existing, project);
    if (!read) {
        return read;
    }
    QStringList told = storage::model_check::warnings(project);
    if (existing) {
        told << storage::text_form::versionWarnings(project, *existing);
    }
    for (const QString & warning : std::as_const(told)) {
        warnings << texts::tr("%1: warning: %2").arg(source, warning);
    }
    return read;
}

import_result importText(const QString & modelFile, const QString & projectFile)
{
    import_result done;
    QByteArray text;
    if (done.result = readText(modelFile, text); !done.result) {
        return done;
    }
    const QString source = shownName(modelFile);
    done.result = resultOf(storage::project_file::replace(
        projectFile, [&](const model::project * existing, model::project & project) {
            done.warnings.clear();
            const ZkBool read = readModel(text, source, existing, project, done.warnings);
            if (!read) {
                return QSqlError(QString(), read.getDesc(), QSqlError::StatementError);
            }
            done.types = columnTypes(project);
            done.projectName = project.getName();
            done.entities = project.getListOfAllEntities()->count();
            return QSqlError();
        }));
    return done;
}

ZkBool saveText(const model::project & project, const QString & file)
{
    const ZkBool written = writeWholeFile(file, storage::text_form::write(project));
    return written ? written : fileFailure(file, texts::tr("cannot be written (%1)").arg(written.getDesc()));
}

ZkBool tagState(const QString & projectFile, const QString & message, storage::history::tag_when when,
                storage::history::tag_result & tagged)
{
    return resultOf(storage::history::tag(projectFile, message, when, tagged));
}

} // namespace app
