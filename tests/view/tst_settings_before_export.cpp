// The settings dialog that comes up when an export has no folder to write into.

#include "view/ddl_export_settings.h"

#include "support/shop_text.h"
#include "support/stored_project.h"

#include "plugin/ddl_export.h"

#include <QApplication>
#include <QDialog>
#include <QDir>
#include <QLineEdit>
#include <QTest>
#include <QTimer>

using support::ShopText;

class tst_settings_before_export : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void dialogShowsThePresetUntilAPathIsStored_data();
    void dialogShowsThePresetUntilAPathIsStored();
};

void tst_settings_before_export::dialogShowsThePresetUntilAPathIsStored_data()
{
    QTest::addColumn<bool>("stored");
    QTest::newRow("never stored") << false;
    QTest::newRow("an empty one is stored") << true;
}

void tst_settings_before_export::dialogShowsThePresetUntilAPathIsStored()
{
    QFETCH(bool, stored);
    const support::stored_project project(ShopText);
    plugin::ddl_export::setSettingsDialog(&view::showSettingsDialog);
    plugin::ddl_export p;
    if (stored) {
        QVERIFY(!p.saveSettings().isValid());
    }
    QStringList shown;
    QTimer person;
    connect(&person, &QTimer::timeout, this, [&shown] {
        if (auto * const dialog = qobject_cast<QDialog *>(QApplication::activeModalWidget())) {
            shown << dialog->findChild<QLineEdit *>(QStringLiteral("m_txtFileLocation"))->text();
            dialog->reject();
        }
    });
    person.start(5);
    const zk::ZkBool result = p.exportProject(project.project());
    QVERIFY2(result, qPrintable(result.getDesc()));
    QCOMPARE(result.getDesc(), QString());
    QCOMPARE(shown, QStringList{stored ? QString() : project.path()});
    QCOMPARE(p.getDDLExportPath(false), QString());
    QCOMPARE(QDir(project.path()).entryList({QStringLiteral("*.sql")}, QDir::Files), QStringList());
}

QTEST_MAIN(tst_settings_before_export)
#include "tst_settings_before_export.moc"
