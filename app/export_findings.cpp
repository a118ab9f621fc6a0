#include "app/export_findings.h"

#include "app/acceptance_file.h"
#include "app/check_run.h"
#include "app/export_options.h"
#include "app/source.h"

#include "os/program_end.h"

#include <QDate>
#include <QFileInfo>
#include <QRegularExpression>
#include <QSet>

#include <algorithm>
#include <new>

namespace app {

namespace {

constexpr QLatin1String SchemaOption("schema");
/// The options that a check has as well.
constexpr QLatin1String ContentOptions[] = {QLatin1String("relationships"), QLatin1String("custom-script")};

/// `text` as one word of a shell.
QString shellWord(const QString & text)
{
    static const QRegularExpression plain(QStringLiteral("^[\\w./:=@%+,-]+$"));
    if (plain.match(text).hasMatch()) {
        return text;
    }
    return QLatin1Char('\'') + QString(text).replace(QLatin1Char('\''), QLatin1String("'\\''")) +
           QLatin1Char('\'');
}

/// The check of the scripts of one export.
class export_check
{
public:
    export_check(plugin::statement_source & statements, const exported_scripts & written)
        : m_statements(statements), m_written(written)
    {
        for (const QString & file : written.files) {
            m_scripts.insert(QFileInfo(file).fileName());
        }
    }

    QString line()
    {
        zk::ZkBool result = readSettings();
        check::accepted_findings accepted;
        source of;
        if (result) {
            result = of.open(m_written.projectFile);
        }
        if (result) {
            of.takeState(m_written.project);
            result = readAccepted(of, {}, accepted);
        }
        check::report report;
        if (result) {
            result = checkSource(m_statements, of, request(), report);
        }
        check::accept(accepted, QDate::currentDate(), report);
        keepWritten(report);
        return lineOf(report, result);
    }

private:
    zk::ZkBool readSettings()
    {
        QList<plugin::friendly_option> options;
        const zk::ZkBool listed = m_statements.listOptions(options);
        for (const plugin::friendly_option & option : std::as_const(options)) {
            m_settings.insert(option.name, m_written.options.value(option.name, option.stored));
        }
        m_database = m_written.database.isEmpty() ? m_settings.value(DatabaseOption) : m_written.database;
        m_isFull = m_settings.value(SchemaOption) == QLatin1String("full");
        return listed;
    }

    [[nodiscard]] check_request request() const
    {
        check_request asked;
        asked.databases = {m_database};
        const QString schema = m_settings.value(SchemaOption);
        asked.scripts = m_isFull                               ? judged_scripts::full
                        : schema == QLatin1String("evolution") ? judged_scripts::history
                                                               : judged_scripts::all;
        asked.options = m_written.options;
        return asked;
    }

    /// Leaves out what is about other scripts than those of the export.
    void keepWritten(check::report & report) const
    {
        std::erase_if(report.runs, [this](const check::run & each) { return !isWritten(each.script); });
        std::erase_if(report.findings,
                      [this](const check::finding & each) { return !isWritten(each.script); });
    }
    [[nodiscard]] bool isWritten(const QString & script) const { return m_scripts.contains(script); }

    [[nodiscard]] QString lineOf(const check::report & report, const zk::ZkBool & result) const
    {
        const check::summary sum = check::summaryOf(report);
        const int all = sum.errors + sum.warnings + sum.notes;
        QString line;
        if (all > 0) {
            line = QStringLiteral("Findings about these scripts: %1; list them with: %2")
                       .arg(check::wordsOf(sum), command());
        }
        if (!result) {
            const QString judged =
                QStringLiteral("Judged are %1 of %2: %3")
                    .arg(QString::number(report.runs.size()),
                         check::counted(m_scripts.size(), QLatin1String("script")), result.getDesc());
            line = line.isEmpty() ? judged : judged + QStringLiteral(". ") + line;
        }
        return line;
    }

    /// The command that lists the findings.
    [[nodiscard]] QString command() const
    {
        QStringList words{QStringLiteral("korvane"), QStringLiteral("check"), m_written.projectFile,
                          QStringLiteral("--db"), m_database};
        if (!m_isFull) {
            words << QStringLiteral("--all");
        }
        for (const QLatin1String name : ContentOptions) {
            if (const auto given = m_written.options.constFind(name); given != m_written.options.constEnd()) {
                words << QStringLiteral("--") + name << *given;
            }
        }
        if (m_written.noCustomScript) {
            words << QStringLiteral("--no-custom-script");
        }
        if (!m_written.plugin.isEmpty()) {
            words << QStringLiteral("--plugin") << m_written.plugin;
        }
        std::transform(words.cbegin(), words.cend(), words.begin(), shellWord);
        return words.join(QLatin1Char(' '));
    }

    plugin::statement_source & m_statements;
    const exported_scripts & m_written;
    QSet<QString> m_scripts; ///< without their folder
    plugin::friendly_settings m_settings;
    QString m_database;
    bool m_isFull = false;
};

} // namespace

QString exportFindings(plugin::statement_source & statements, const exported_scripts & written)
{
    static constexpr char WithoutMemory[] = "The scripts were not judged: out of memory";
    // Lists of Qt cannot let everybody know.
    const os::remark_in_work remark(WithoutMemory);
    try {
        return export_check(statements, written).line();
    } catch (const std::bad_alloc &) {
        return QString::fromLatin1(WithoutMemory);
    }
}

} // namespace app
