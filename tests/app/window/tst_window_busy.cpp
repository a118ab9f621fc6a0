// Whatever can take long shows that the window is busy: before it begins, and no longer than it lasts.
// Another process has the project meanwhile, so that each of these waits until it was seen.

#include "app/window/window_bench.h"
#include "support/modal_driver.h"
#include "support/project_support.h"

#include <QGuiApplication>
#include <QLabel>
#include <QListView>
#include <QProcess>
#include <QProgressBar>
#include <QSignalSpy>

#include <atomic>
#include <thread>

using support::json;
using support::modal_driver;
using support::textOf;
using support::window_bench;

namespace {

const char * const First = "{'id': 1, 'name': 'gig', 'properties': ["
                           "{'id': 10, 'name': 'id', 'type': 'long', 'identifier': true}]}";
const char * const Second = "{'id': 1, 'name': 'concert', 'properties': ["
                            "{'id': 10, 'name': 'id', 'type': 'long', 'identifier': true}]}";

/// Keeps a project from all others until the window is seen to be busy.
class busy_witness
{
public:
    explicit busy_witness(const window_bench & bench) : m_sRelease(bench.path("release"))
    {
        QFile::remove(m_sRelease);
        m_holder.start("sqlite3", {bench.file()});
        m_holder.write("BEGIN EXCLUSIVE;\nSELECT 'held';\n");
        if (!m_holder.waitForReadyRead(10000)) {
            qFatal("the project cannot be held");
        }
        m_holder.write(QStringLiteral(".shell while [ ! -e '%1' ]; do sleep 0.01; done\nCOMMIT;\n.quit\n")
                           .arg(m_sRelease)
                           .toUtf8());
        m_holder.closeWriteChannel();
        m_holder.waitForBytesWritten();
    }
    ~busy_witness()
    {
        end();
        m_holder.waitForFinished(20000);
    }
    busy_witness(const busy_witness &) = delete;
    busy_witness & operator=(const busy_witness &) = delete;

    /// Begins to look: the window waits for the project from now on.
    void look()
    {
        m_thread = std::thread([this] {
            // The window's thread waits within SQLite then, and changes nothing that is read here.
            for (int i = 0; i < 1500 && !m_bSeen && !m_bOver; ++i) {
                m_bSeen = QGuiApplication::overrideCursor() != nullptr;
                std::this_thread::sleep_for(std::chrono::milliseconds(10));
            }
            QFile file(m_sRelease);
            std::ignore = file.open(QIODevice::WriteOnly);
        });
    }
    /// Whether it was seen before the project was free.
    [[nodiscard]] bool isSeen()
    {
        end();
        return m_bSeen;
    }

private:
    void end()
    {
        m_bOver = true;
        if (m_thread.joinable()) {
            m_thread.join();
        }
    }

    QString m_sRelease;
    QProcess m_holder;
    std::thread m_thread;
    std::atomic<bool> m_bSeen{false};
    std::atomic<bool> m_bOver{false};
};

} // namespace

class tst_window_busy : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_bench = std::make_unique<window_bench>(textOf(json(First)));
        window_bench::run({"settings", m_bench->file(), "--db", "postgresql", "--path", "sql"});
        window_bench::run({"tag", m_bench->file(), "-m", "first"});
        m_bench->import(textOf(json(Second)));
        QDir().mkpath(m_bench->path("sql"));
        m_bench->open();
        QTest::qWait(50);
    }
    void cleanup() { m_bench.reset(); }

    void commands_data()
    {
        QTest::addColumn<QByteArray>("action");
        QTest::newRow("changes") << QByteArray("m_actGoChanges");
        QTest::newRow("changes in the diagram") << QByteArray("m_actMarkChanges");
        QTest::newRow("check") << QByteArray("m_actCheck_KorvGenericDDLExport");
        QTest::newRow("export") << QByteArray("m_actExport_KorvGenericDDLExport");
        QTest::newRow("settings") << QByteArray("m_actSettings_KorvGenericDDLExport");
        QTest::newRow("versions") << QByteArray("m_actVersions");
        QTest::newRow("tag") << QByteArray("m_actTag");
    }
    void commands()
    {
        QFETCH(QByteArray, action);
        const modal_driver driver({modal_driver::key(Qt::Key_Escape)});
        busy_witness witness(*m_bench);
        witness.look();
        m_bench->action(action.constData())->trigger();
        QVERIFY(witness.isSeen());
        QVERIFY(!QGuiApplication::overrideCursor());
    }
    void open()
    {
        m_bench->action("m_actClose")->trigger();
        busy_witness witness(*m_bench);
        witness.look();
        m_bench->window().openFile(m_bench->file());
        QVERIFY(witness.isSeen());
        QVERIFY(!QGuiApplication::overrideCursor());
        QTRY_COMPARE(m_bench->find<QLabel>("m_lblShown")->text(), QString("1 entity"));
    }
    void reload()
    {
        m_bench->import(textOf(json(First)));
        busy_witness witness(*m_bench);
        witness.look();
        m_bench->action("m_actReload")->trigger();
        QVERIFY(witness.isSeen());
        QVERIFY(!QGuiApplication::overrideCursor());
    }
    /// From the moment at which the person has said yes.
    void import()
    {
        m_bench->write("next.json", textOf(json(First)));
        std::unique_ptr<busy_witness> witness;
        modal_driver driver({modal_driver::file(m_bench->path("next.json")),
                             modal_driver::key(Qt::Key_Return), [&](QWidget * w) {
                                 QVERIFY(!QGuiApplication::overrideCursor());
                                 witness = std::make_unique<busy_witness>(*m_bench);
                                 witness->look();
                                 modal_driver::press(QDialogButtonBox::Ok)(w);
                             }});
        m_bench->press(Qt::Key_I, Qt::ControlModifier);
        QVERIFY(driver.isDone());
        QVERIFY(witness && witness->isSeen());
        QVERIFY(!QGuiApplication::overrideCursor());
        QVERIFY(window_bench::run({"dump", m_bench->file()}).contains("\"gig\""));
    }
    void tagging()
    {
        std::unique_ptr<busy_witness> witness;
        modal_driver driver({[&](QWidget * w) {
            QVERIFY(!QGuiApplication::overrideCursor());
            witness = std::make_unique<busy_witness>(*m_bench);
            witness->look();
            QTest::keyClick(w, Qt::Key_Return);
        }});
        m_bench->action("m_actTag")->trigger();
        QVERIFY(driver.isDone());
        QVERIFY(witness && witness->isSeen());
        QVERIFY(!QGuiApplication::overrideCursor());
    }
    /// An export tells how far it is as well, from its first message on.
    void exportsHaveProgress()
    {
        auto * const bar = m_bench->find<QProgressBar>();
        QVERIFY(!bar->isVisible());
        const auto * const rows = m_bench->find<QListView>("m_lstMessages")->model();
        connect(rows, &QAbstractItemModel::rowsInserted, bar, [this, bar] { m_isThere << bar->isVisible(); });
        m_bench->action("m_actExport_KorvGenericDDLExport")->trigger();
        QCOMPARE(m_isThere, (QList<bool>{false, true})); // the heading, then what is told
        QVERIFY(!bar->isVisible());
        QVERIFY(!QGuiApplication::overrideCursor());
    }
    /// A layout is made by a process of its own: the window goes on, and says what it waits for.
    void layoutsSaySo()
    {
        app::diagram_panel & diagram = m_bench->diagram();
        QSignalSpy laidOut(&diagram, &app::diagram_panel::layoutFinished);
        m_bench->import(textOf(json(First)));
        m_bench->action("m_actReload")->trigger();
        QCOMPARE(m_bench->find<QLabel>("m_lblShown")->text(), QString("Laying out…"));
        QCOMPARE(laidOut.count(), 0);
        QVERIFY(laidOut.wait());
        QCOMPARE(m_bench->find<QLabel>("m_lblShown")->text(), QString("1 entity"));
    }

private:
    std::unique_ptr<window_bench> m_bench;
    QList<bool> m_isThere; ///< whether an export has shown progress, for each row of messages
};

QTEST_MAIN(tst_window_busy)
#include "tst_window_busy.moc"
