// An export plug-in for tests of the host: what it does is chosen by "--AskingPlugin_mode".

#include "plugin/export_interface.h"

#include "context/ctx_global.h"
#include "context/ctx_project.h"
#include "model/project.h"
#include "tools/custom_javascript.h"
#include "view/main_wnd.h"

#include <QAbstractButton>
#include <QCoreApplication>
#include <QDialog>
#include <QFile>
#include <QHash>
#include <QMessageBox>
#include <QProgressDialog>
#include <QPushButton>
#include <QTemporaryFile>

#include <cstdio>
#include <functional>

class asking_plugin : public plugin::export_interface
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID "AskingPlugin")

public:
    ~asking_plugin() override { report("deleted"); }

    [[nodiscard]] QString getGuid() const override { return QStringLiteral("AskingPlugin"); }
    [[nodiscard]] QString getName() const override { return QStringLiteral("AskingPlugin"); }
    [[nodiscard]] QString getShortDesc() const override { return QStringLiteral("Asks"); }
    [[nodiscard]] QString getDescription() const override
    {
        return QStringLiteral("Does what its mode says.");
    }
    [[nodiscard]] QString getVersion() const override { return QStringLiteral("9.8"); }
    [[nodiscard]] QString getCommandLineInfos() const override
    {
        return QStringLiteral(
            "\n  --AskingPlugin_mode=<mode> : what to do\n  --AskingPlugin_report=<text> : what to say");
    }
    [[nodiscard]] QIcon getIcon() const override { return {}; }
    [[nodiscard]] QIcon getIconSettings() const override { return {}; }
    [[nodiscard]] bool hasSettings() const override { return false; }
    bool showSettings() override { return false; }
    QSqlError saveSettings() override { return {}; }
    QSqlError loadSettings() override { return {}; }
    void clearSettings() override {}
    QWidget * getPreviewWidget() override { return nullptr; }
    void terminate() override
    {
        report("terminated");
        export_interface::terminate();
    }

    zk::ZkBool exportProject(model::project & project) override
    {
        const QHash<QString, std::function<zk::ZkBool()>> modes = {
            {QStringLiteral("nothing"), [] { return zk::ZkBool::success(); }},
            {QStringLiteral("arguments"), [this] { return tellArguments(); }},
            {QStringLiteral("context"), [this, &project] { return tellContext(project); }},
            {QStringLiteral("messages"), [this] { return tellMessages(); }},
            {QStringLiteral("many"), [this] { return tellMany(); }},
            {QStringLiteral("fail"),
             [] { return zk::ZkBool::failure(QStringLiteral("first line\nsecond line")); }},
            {QStringLiteral("fail_shown"), [this] { return failShown(); }},
            {QStringLiteral("fail_silent"), [] { return zk::ZkBool::failure(QString()); }},
            {QStringLiteral("question"), [this] { return ask(QMessageBox::Yes | QMessageBox::No); }},
            {QStringLiteral("question_ok"), [this] { return ask(QMessageBox::Ok | QMessageBox::Cancel); }},
            {QStringLiteral("question_no"), [this] { return askForNo(); }},
            {QStringLiteral("question_escape"), [this] { return askWithEscape(); }},
            {QStringLiteral("question_own"), [this] { return askWithOwnButtons(); }},
            {QStringLiteral("progress"), [this] { return showProgress(); }},
            {QStringLiteral("question_then_dialog"), [this] { return askThenDialog(); }},
            {QStringLiteral("information"), [this] { return inform(QMessageBox::Information); }},
            {QStringLiteral("warning"), [this] { return inform(QMessageBox::Warning); }},
            {QStringLiteral("dialog"),
             [this] { return openDialog(QStringLiteral("Settings of the asker")); }},
            {QStringLiteral("dialog_untitled"), [this] { return openDialog({}); }},
            {QStringLiteral("debugger"), [this, &project] { return runUnderDebugger(project); }}};
        const auto mode = modes.value(argument("mode"));
        return mode ? mode() : zk::ZkBool::failure(QStringLiteral("no such mode: ") + argument("mode"));
    }

private:
    static void report(const char * what)
    {
        if (qEnvironmentVariableIsSet("ASKING_PLUGIN_TRACE")) {
            std::fprintf(stderr, "asking_plugin %s\n", what);
        }
    }
    static QString argument(const char * name)
    {
        const view::main_wnd * const wnd = context::ctx_global::getMainWnd();
        return wnd ? wnd->getAppArg(QStringLiteral("--AskingPlugin_") + QString::fromLatin1(name)).value(0)
                   : QStringLiteral("no window");
    }
    void say(const QString & text, int type = 1) { Q_EMIT onMessage(text, type, 10000); }

    zk::ZkBool tellArguments()
    {
        const view::main_wnd * const wnd = context::ctx_global::getMainWnd();
        const QList<QString> values = wnd->getAppArg(QStringLiteral("--AskingPlugin_report"));
        say(QStringLiteral("%1 values: '%2', window shown: %3")
                .arg(values.size())
                .arg(values.join(QStringLiteral("' '")))
                .arg(wnd->isVisible()));
        return zk::ZkBool::success();
    }
    zk::ZkBool tellContext(model::project & project)
    {
        const bool isCurrent = context::ctx_project::getSingleton().getProject().get() == &project;
        say(QStringLiteral("project %1 in %2, current: %3")
                .arg(project.getName(), project.getFileName())
                .arg(isCurrent));
        return zk::ZkBool::success();
    }
    zk::ZkBool tellMessages()
    {
        say(QStringLiteral("one"));
        say(QStringLiteral("two\nlines\r\nand \x1b[31mred"));
        say(QStringLiteral("bad"), 3);
        say(QStringLiteral("three"));
        return zk::ZkBool::success();
    }
    zk::ZkBool tellMany()
    {
        for (int i = 0; i < 40000; ++i) {
            say(QStringLiteral("message number %1 of very many").arg(i));
        }
        return zk::ZkBool::success();
    }
    zk::ZkBool failShown()
    {
        say(QStringLiteral("shown\nonce"), 3);
        return zk::ZkBool::failure(QStringLiteral("shown\nonce"));
    }
    zk::ZkBool ask(QMessageBox::StandardButtons buttons)
    {
        const QMessageBox::StandardButton answer =
            QMessageBox::question(nullptr, QStringLiteral("Korvane - AskingPlugin"),
                                  QStringLiteral("The folder '/x' is not there.\nMake it ?"), buttons,
                                  buttons & QMessageBox::Yes ? QMessageBox::Yes : QMessageBox::Ok);
        say(answer == QMessageBox::Yes || answer == QMessageBox::Ok ? QStringLiteral("answered yes")
                                                                    : QStringLiteral("answered no"));
        return zk::ZkBool::success();
    }
    /// Asks after a message, with mark-up and a second text, a question that is better answered No.
    zk::ZkBool askForNo()
    {
        say(QStringLiteral("before the question"));
        QMessageBox box(QMessageBox::Question, QStringLiteral("Korvane - AskingPlugin"),
                        QStringLiteral("<b>Make</b> it &amp; go ?"), QMessageBox::Yes | QMessageBox::No);
        box.setInformativeText(QStringLiteral("<i>It</i> is new."));
        box.setDefaultButton(QMessageBox::No);
        say(box.exec() == QMessageBox::Yes ? QStringLiteral("answered yes") : QStringLiteral("answered no"));
        return zk::ZkBool::success();
    }
    /// Asks with a button that means neither Yes nor No and is the one for Escape.
    zk::ZkBool askWithEscape()
    {
        QMessageBox box(QMessageBox::Question, QStringLiteral("Korvane - AskingPlugin"),
                        QStringLiteral("Go ?"));
        box.addButton(QStringLiteral("Go"), QMessageBox::YesRole);
        box.addButton(QStringLiteral("Turn back"), QMessageBox::NoRole);
        QPushButton * const stay = box.addButton(QStringLiteral("Stay"), QMessageBox::ActionRole);
        box.setEscapeButton(stay);
        box.exec();
        say(QStringLiteral("clicked ") + box.clickedButton()->text());
        return zk::ZkBool::success();
    }
    /// Asks with two buttons that mean neither Yes nor No, in a box that is answered by none of them either.
    zk::ZkBool askWithOwnButtons()
    {
        QMessageBox box(QMessageBox::Question, QStringLiteral("Korvane - AskingPlugin"),
                        QStringLiteral("Left or right ?"));
        box.addButton(QStringLiteral("Left"), QMessageBox::ActionRole);
        box.addButton(QStringLiteral("Right"), QMessageBox::ActionRole);
        box.exec();
        say(box.clickedButton() ? QStringLiteral("clicked ") + box.clickedButton()->text()
                                : QStringLiteral("clicked nothing"));
        return zk::ZkBool::success();
    }
    zk::ZkBool showProgress()
    {
        QProgressDialog dialog(QStringLiteral("Working"), QStringLiteral("Cancel"), 0, 3);
        dialog.setWindowModality(Qt::ApplicationModal);
        dialog.setMinimumDuration(0);
        dialog.show();
        for (int i = 0; i <= 3; ++i) {
            dialog.setValue(i);
            QCoreApplication::processEvents();
            QCoreApplication::processEvents();
            if (dialog.wasCanceled()) {
                return zk::ZkBool::failure(QStringLiteral("cancelled"));
            }
        }
        say(QStringLiteral("worked"));
        return zk::ZkBool::success();
    }
    zk::ZkBool askThenDialog()
    {
        (void)ask(QMessageBox::Yes | QMessageBox::No);
        return openDialog(QStringLiteral("Settings of the asker"));
    }
    zk::ZkBool inform(QMessageBox::Icon icon)
    {
        QMessageBox box(icon, QStringLiteral("Note"), QStringLiteral("something\nto know"), QMessageBox::Ok);
        box.exec();
        say(QStringLiteral("told"));
        return zk::ZkBool::success();
    }
    zk::ZkBool openDialog(const QString & title)
    {
        QDialog dialog;
        dialog.setWindowTitle(title);
        say(dialog.exec() == QDialog::Accepted ? QStringLiteral("accepted") : QStringLiteral("rejected"));
        return zk::ZkBool::success();
    }
    zk::ZkBool runUnderDebugger(model::project & project)
    {
        QTemporaryFile file;
        if (!file.open() || file.write("function exportStep() { return 'stepped'; }") <= 0 || !file.flush()) {
            return zk::ZkBool::failure(QStringLiteral("no script"));
        }
        tools::custom_javascript script;
        if (const zk::ZkBool loaded = script.initEngine(file.fileName(), this); !loaded) {
            return loaded;
        }
        if (const zk::ZkBool started = script.runDebugger(); !started) {
            return started;
        }
        const zk::ZkBool result = script.executeScript(&project, nullptr, nullptr, nullptr, {});
        say(result.getDesc() + (script.isDebugging() ? QStringLiteral(", debugging") : QString()));
        return zk::ZkBool::success();
    }
};

#include "asking_plugin.moc"
