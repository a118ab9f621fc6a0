#pragma once

#include "model/project.h"
#include "storage/project_file.h"
#include "storage/text_form.h"

#include <QByteArray>
#include <QDir>
#include <QFile>
#include <QString>

#include <cstdio>
#include <cstdlib>
#include <unistd.h>

/// What both fuzz targets need: a place in memory, and a stop that the fuzzer takes for a find.
namespace fuzz {

/// Ends the program when a promise does not hold, and says which.
inline void promise(bool holds, const char * what, const QString & detail = {})
{
    if (!holds) {
        std::fprintf(stderr, "broken promise: %s %s\n", what, qUtf8Printable(detail));
        std::abort();
    }
}

/// A folder in memory, which goes with the process.
class own_folder
{
public:
    own_folder()
    {
        const QString base =
            QDir(QStringLiteral("/dev/shm")).exists() ? QStringLiteral("/dev/shm") : QDir::tempPath();
        m_sName = base + QStringLiteral("/korvane-fuzz-%1").arg(::getpid());
        promise(QDir().mkpath(m_sName), "a folder for the files can be made", m_sName);
        // What is left behind in the folder for temporary files is noticed as well.
        qputenv("TMPDIR", QFile::encodeName(m_sName));
    }
    ~own_folder() { QDir(m_sName).removeRecursively(); }
    own_folder(const own_folder &) = delete;
    own_folder & operator=(const own_folder &) = delete;
    [[nodiscard]] const QString & name() const { return m_sName; }

private:
    QString m_sName;
};

inline QString folder()
{
    static const own_folder own;
    return own.name();
}

inline void writeFile(const QString & name, const QByteArray & bytes)
{
    QFile file(name);
    promise(file.open(QIODevice::WriteOnly | QIODevice::Truncate) && file.write(bytes) == bytes.size() &&
                file.flush(),
            "a file can be written", name);
}

/// Every file that a run may leave is one of `expected`.
inline void promiseNothingElse(const QStringList & expected)
{
    for (const QString & name :
         QDir(folder()).entryList(QDir::AllEntries | QDir::NoDotAndDotDot | QDir::Hidden)) {
        promise(expected.contains(name), "nothing is left behind:", name);
    }
}

/// `project`, which was read without an error, can be dumped, and its text is taken and gives the same text.
inline QByteArray promiseRoundTrip(const model::project & project)
{
    const QByteArray text = storage::text_form::write(project);
    model::project again(1);
    const zk::ZkBool taken = storage::text_form::read(text, QStringLiteral("dumped.json"), nullptr, again);
    promise(bool(taken), "a dumped text is taken:", taken.getDesc());
    promise(storage::text_form::write(again) == text, "a dumped text gives itself");
    return text;
}

/// A failure is one line that names the file it is about.
inline void promiseLine(const QString & message, const QString & name)
{
    promise(message.contains(name), "a failure names its file:", message);
    promise(!message.contains(QLatin1Char('\n')), "a failure is one line:", message);
}

} // namespace fuzz
