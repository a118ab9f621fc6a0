#pragma once

#include "plugin/builder/statement_sink.h"

#include "os/unfinished_files.h"

#include <QFile>
#include <QTextStream>

namespace plugin {

/// A script as a file, one statement a line.
///
/// What was written until a failure stays on disk. When the program itself ends before the script does, a
/// file that is new goes; one that was there stays incomplete, which the last line of the program tells
/// unless a signal ends it.
class statement_file : public statement_sink
{
public:
    explicit statement_file(const QString & fileName);

    [[nodiscard]] bool open() override;
    [[nodiscard]] bool take(const script_statement & statement) override;
    [[nodiscard]] bool close() override;
    [[nodiscard]] QString reason() const override { return m_sReason; }
    [[nodiscard]] QString lossText() const override;
    void abandon() override;

private:
    bool openFile();
    void settle();
    [[nodiscard]] QString incompleteText() const;

    QString m_sFileName;
    QString m_sReason;
    os::unfinished_file m_new; ///< the file, when there was none before
    QFile m_file;
    QTextStream m_stream;
    bool m_bOpened = false;
};

} // namespace plugin
