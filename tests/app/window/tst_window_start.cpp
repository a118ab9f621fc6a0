// The ways to a first project: the page of a window without one.

#include "app/window/window_bench.h"
#include "support/browser.h"
#include "support/full_disk.h"
#include "support/modal_driver.h"
#include "support/shop_text.h"

#include <QDir>
#include <QPushButton>

using support::modal_driver;
using support::window_bench;

class tst_window_start : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_bench = std::make_unique<window_bench>(support::ShopText);
        m_bench->show();
    }
    void cleanup() { m_bench.reset(); }

    void aNewProject()
    {
        modal_driver driver({modal_driver::file(m_bench->path("first"))});
        click("m_btnNew");
        QVERIFY(driver.isDone());
        QCOMPARE(m_bench->window().windowTitle(), QString("first (first.korv) - Korvane"));
        QVERIFY2(m_bench->told().contains(m_bench->path("first.json") +
                                          " is the model as text: edit it, then import it again"),
                 qPrintable(m_bench->told()));
        // The text and the project are one model.
        const QByteArray told =
            window_bench::run({"diff", m_bench->path("first.korv"), m_bench->path("first.json")});
        QVERIFY2(told.endsWith("first.json: no changes\n"), told.constData());
    }
    void whatIsThereIsKept()
    {
        m_bench->write("first.json", "mine");
        modal_driver driver(
            {modal_driver::file(m_bench->path("first")), modal_driver::click(QMessageBox::Ok)});
        click("m_btnNew");
        QVERIFY(driver.isDone());
        QCOMPARE(driver.texts.constLast(),
                 m_bench->path("first.json") + " is there already; choose another name");
        QCOMPARE(m_bench->content("first.json"), QByteArray("mine"));
        QVERIFY(!QFile::exists(m_bench->path("first.korv")));
    }
    void theSample()
    {
        modal_driver driver({modal_driver::file(m_bench->path("mine"))});
        click("m_btnSample");
        QVERIFY(driver.isDone());
        QCOMPARE(m_bench->window().windowTitle(), QString("festival (mine.korv) - Korvane"));
        QVERIFY(window_bench::run({"log", m_bench->path("mine.korv")}).contains("first season"));
        // It is a copy that can be changed.
        window_bench::run({"tag", m_bench->path("mine.korv"), "-m", "mine"});
    }
    void aFullDisk_data()
    {
        QTest::addColumn<QByteArray>("button");
        QTest::addColumn<QString>("reason");
        QTest::newRow("new") << QByteArray("m_btnNew") << "%1/first.json: cannot be written (";
        QTest::newRow("sample") << QByteArray("m_btnSample")
                                << "festival.korv: cannot be copied to %1/first.korv (";
    }
    void aFullDisk()
    {
        QFETCH(const QByteArray, button);
        QFETCH(const QString, reason);
        const QStringList before = QDir(m_bench->path()).entryList(QDir::Files);
        modal_driver driver(
            {modal_driver::file(m_bench->path("first")), modal_driver::click(QMessageBox::Ok)});
        {
            const support::full_disk full(100);
            click(button.constData());
        }
        QVERIFY(driver.isDone());
        QVERIFY2(driver.texts.constLast().contains(reason.arg(m_bench->path())),
                 qPrintable(driver.texts.constLast()));
        QCOMPARE(QDir(m_bench->path()).entryList(QDir::Files), before);
        QCOMPARE(m_bench->window().windowTitle(), QString("Korvane"));
    }
    void theManual()
    {
        const support::browser browser;
        click("m_btnManual");
        QCOMPARE(browser.opened.size(), 1);
        QVERIFY2(browser.opened.constFirst().path().endsWith("/manual.html"),
                 qPrintable(browser.opened.constFirst().toString()));
    }

private:
    void click(const char * name) const
    {
        QTest::mouseClick(m_bench->find<QAbstractButton>(name), Qt::LeftButton);
    }

    std::unique_ptr<window_bench> m_bench;
};

QTEST_MAIN(tst_window_start)
#include "tst_window_start.moc"
