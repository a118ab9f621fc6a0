// Takes the pictures of the manual from the real windows: screenshots FOLDER

#include "support/debugger_driver.h"
#include "support/stored_project.h"

#include "plugin/ddl_export.h"
#include "tools/custom_javascript.h"
#include "view/ddl_export_settings.h"

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QMessageBox>
#include <QPushButton>
#include <QStyleFactory>
#include <QTextBlock>

#include <iostream>

using plugin::ddl_export;

namespace {

QPalette darkPalette()
{
    QPalette dark;
    const QColor window(0x2b, 0x2d, 0x30);
    const QColor text(0xe6, 0xe6, 0xe6);
    const QColor quiet(0x8c, 0x8f, 0x94);
    dark.setColor(QPalette::Window, window);
    dark.setColor(QPalette::Base, QColor(0x1e, 0x1f, 0x22));
    dark.setColor(QPalette::AlternateBase, QColor(0x26, 0x28, 0x2b));
    dark.setColor(QPalette::Button, QColor(0x3a, 0x3d, 0x41));
    dark.setColor(QPalette::ToolTipBase, window);
    for (const QPalette::ColorRole role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText,
                                           QPalette::ToolTipText, QPalette::BrightText}) {
        dark.setColor(role, text);
        dark.setColor(QPalette::Disabled, role, quiet);
    }
    dark.setColor(QPalette::PlaceholderText, quiet);
    dark.setColor(QPalette::Highlight, QColor(0x2f, 0x65, 0xca));
    dark.setColor(QPalette::HighlightedText, Qt::white);
    dark.setColor(QPalette::Link, QColor(0x6a, 0xa5, 0xff));
    return dark;
}

/// Takes the pictures in one colour scheme.
class photographer
{
public:
    photographer(const QDir & folder, const QString & scheme) : m_folder(folder), m_sScheme(scheme)
    {
        m_plugin.setDDLExportPath(m_stored.path());
        m_plugin.setDatabaseType(ddl_export::db_postgresql);
        m_plugin.setExportRelationships(true);
        m_plugin.setCustomScriptFile(QStringLiteral("custom_script.js"));
        QFile::copy(QStringLiteral(KORVANE_SOURCE_DIR "/samples/custom_script.js"),
                    m_stored.path(QStringLiteral("custom_script.js")));
        if (m_plugin.saveSettings().isValid()) {
            qFatal("the settings cannot be stored");
        }
    }

    void settings()
    {
        view::ddl_export_settings dialog;
        dialog.init(&m_plugin);
        // The folder of this run has a different name each time.
        dialog.findChild<QLineEdit *>(QStringLiteral("m_txtFileLocation"))->setText(QStringLiteral("sql"));
        show(dialog);
        save(dialog, "settings");
        dialog.resize(dialog.width(), 900);
        QCoreApplication::processEvents();
        QWidget * const table = dialog.findChild<QWidget *>(QStringLiteral("m_grpTypeMapping"));
        save(*table, "mapping_postgresql");
        const auto whenShown = [this] {
            if (auto * const box = qobject_cast<QMessageBox *>(QApplication::activeModalWidget())) {
                save(*box, "warning");
                box->accept();
            }
        };
        QTimer::singleShot(300, whenShown);
        dialog.findChild<QPushButton *>(QStringLiteral("m_btnOk"))->click();
    }

    void debugger()
    {
        const auto script = std::make_shared<tools::custom_javascript>();
        if (!script->initEngine(QStringLiteral("custom_script.js"), &m_plugin) || !script->runDebugger()) {
            qFatal("the debugger does not start");
        }
        m_plugin.setCustomScript(script);
        auto * const source =
            support::debuggerWindow()->findChild<QPlainTextEdit *>(QStringLiteral("m_txtSource"));
        const QTextCursor line = source->document()->find(QStringLiteral("if (ADD_COMMENTS"));
        const QTextCursor other = source->document()->find(QStringLiteral("const columns = "));
        for (const QTextCursor & place : {line, other}) {
            if (!place.isNull()) {
                source->setTextCursor(place);
                support::debuggerWindow()
                    ->findChild<QAction *>(QStringLiteral("m_actToggleBreakpoint"))
                    ->trigger();
            }
        }
        const support::debugger_driver driver(
            {support::debugger_driver::command("m_actContinue"), [this](support::debugger_driver & d) {
                 d.evaluate(QStringLiteral("entity.getName()"));
                 d.evaluate(QStringLiteral("entity.getListOfProperty().map(p => p.getName())"));
                 d.find<QLineEdit>("m_txtInput")->clear();
                 QTest::qWait(200);
                 save(*support::debuggerWindow(), "debugger");
                 d.find<QAction>("m_actDetach")->trigger();
             }});
        if (const zk::ZkBool result = m_plugin.exportProject(m_stored.project()); !result) {
            qFatal("%s", qPrintable(result.getDesc()));
        }
    }

private:
    static void show(QWidget & window)
    {
        window.show();
        window.activateWindow();
        QTest::qWait(200);
    }
    void save(QWidget & window, const char * name) const
    {
        const QString file =
            m_folder.filePath(QStringLiteral("%1_%2.png").arg(QLatin1String(name), m_sScheme));
        if (!window.grab().save(file)) {
            qFatal("cannot write %s", qPrintable(file));
        }
        std::cout << qPrintable(file) << '\n';
    }

    static QByteArray sample()
    {
        QFile file(QStringLiteral(KORVANE_SOURCE_DIR "/samples/festival.json"));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }

    QDir m_folder;
    QString m_sScheme;
    support::stored_project m_stored{sample()};
    ddl_export m_plugin;
};

} // namespace

int main(int argc, char ** argv)
{
    QApplication application(argc, argv);
    if (argc != 2) {
        std::cerr << "usage: screenshots FOLDER\n";
        return 2;
    }
    QApplication::setStyle(QStyleFactory::create(QStringLiteral("Fusion")));
    QApplication::setFont(QFont(QStringLiteral("DejaVu Sans"), 10));
    const QPalette light = QApplication::palette();
    for (const bool isDark : {false, true}) {
        QApplication::setPalette(isDark ? darkPalette() : light);
        photographer camera(QDir(QString::fromLocal8Bit(argv[1])),
                            isDark ? QStringLiteral("dark") : QStringLiteral("light"));
        camera.settings();
        camera.debugger();
    }
    return 0;
}
