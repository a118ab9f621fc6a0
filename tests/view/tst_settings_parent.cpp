// The settings dialog, and what it asks by further dialogs, while the main window goes.

#include "view/ddl_export_settings.h"

#include "support/stored_project.h"

#include "plugin/ddl_export.h"

#include "context/ctx_global.h"
#include "view/main_wnd.h"

#include <QLineEdit>
#include <QPushButton>
#include <QTest>
#include <QTimer>

class tst_settings_parent : public QObject
{
    Q_OBJECT

private slots:
    void goesWhileADialogIsShown_data();
    void goesWhileADialogIsShown();
};

void tst_settings_parent::goesWhileADialogIsShown_data()
{
    QTest::addColumn<QString>("button");
    QTest::addColumn<QString>("folder");
    QTest::newRow("the settings") << ""
                                  << ".";
    QTest::newRow("choice of the folder") << "m_btnFileLocation"
                                          << ".";
    QTest::newRow("choice of the script") << "m_btnCustomScriptLocation"
                                          << ".";
    QTest::newRow("warning of the debugger") << "m_btnDebugCustomScript"
                                             << ".";
    QTest::newRow("warning of a missing folder") << "m_btnOk"
                                                 << "no such folder";
}

void tst_settings_parent::goesWhileADialogIsShown()
{
    QFETCH(QString, button);
    QFETCH(QString, folder);
    support::stored_project stored;
    plugin::ddl_export::setSettingsDialog(&view::showSettingsDialog);
    plugin::ddl_export plugin;
    plugin.setDDLExportPath(folder);
    QVERIFY(!plugin.saveSettings().isValid());
    auto * const wnd = new view::main_wnd;
    context::ctx_global::setMainWnd(wnd);

    bool isGone = false;
    QTimer goes;
    connect(&goes, &QTimer::timeout, this, [&] {
        const QWidget * const shown = QApplication::activeModalWidget();
        const bool isWanted = shown && (button.isEmpty() || !shown->inherits("view::ddl_export_settings"));
        if (isWanted && !isGone) {
            isGone = true;
            delete wnd;
        }
    });
    goes.start(10);
    if (!button.isEmpty()) {
        QTimer::singleShot(50, qApp, [&] {
            QTest::mouseClick(QApplication::activeModalWidget()->findChild<QPushButton *>(button),
                              Qt::LeftButton);
        });
    }
    QVERIFY(!plugin.showSettings());
    QVERIFY(isGone);
    QVERIFY(!context::ctx_global::getMainWnd());
    QVERIFY(!QApplication::activeModalWidget());
}

QTEST_MAIN(tst_settings_parent)
#include "tst_settings_parent.moc"
