// The check in the main window: findings among the messages, the ways from them, and the badge.

#include "app/window/window_bench.h"
#include "support/modal_driver.h"
#include "support/project_support.h"

#include <QDockWidget>
#include <QLabel>
#include <QListView>
#include <QPlainTextEdit>
#include <QStatusBar>
#include <QTreeView>

using support::json;
using support::modal_driver;
using support::textOf;
using support::window_bench;

namespace {

const char * const Id = "'type': 'long', 'identifier': true";
/// A table that no database takes, a table without anything to say of it, and a foreign key without index.
const char * const Model = "{'id': 1, 'name': 'select', 'properties': [{'id': 10, 'name': 'id', ID}]},"
                           "{'id': 2, 'name': 'place', 'properties': [{'id': 20, 'name': 'id', ID},"
                           "{'id': 21, 'name': 'order', 'type': 'int', 'index': true}]}";

QByteArray modelText()
{
    return textOf(json(Model).replace("ID", json(Id)));
}

} // namespace

class tst_window_check : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_bench = std::make_unique<window_bench>(modelText());
        QDir().mkpath(m_bench->path("sql"));
        m_bench->open();
    }
    void cleanup() { m_bench.reset(); }

    void findingsAreListed()
    {
        check();
        const QStringList rows = told();
        QVERIFY2(rows.constFirst().endsWith("  Check of 'shop' with KorvGenericDDLExport"),
                 qPrintable(rows.join('\n')));
        QVERIFY2(rows[1].startsWith("KV101: "), qPrintable(rows.join('\n')));
        QCOMPARE(kindOf(1), app::message_kind::error);
        QCOMPARE(rows.constLast(), badge());
        // What is pasted says what a finding is, why, what to do, and where.
        const QString whole = row(1).data(app::MessageCopyRole).toString();
        QVERIFY2(whole.startsWith("Error: KV101: "), qPrintable(whole));
        QVERIFY2(whole.contains("\nshop_sqlite_db_schema_full.sql:3: CREATE TABLE select"),
                 qPrintable(whole));
        QVERIFY(m_bench->find<QDockWidget>("m_pMessageDock")->isVisible());
        // Nothing was written.
        QCOMPARE(QDir(m_bench->path("sql")).entryList(QDir::Files), QStringList());
    }
    void badgeTellsTheCounts()
    {
        QCOMPARE(badge(), QString());
        check();
        const auto rows = told();
        int errors = 0;
        for (int i = 0; i < rows.size(); ++i) {
            errors += kindOf(i) == app::message_kind::error ? 1 : 0;
        }
        QVERIFY(errors > 1);
        QVERIFY2(badge().startsWith(QString("%1 errors, ").arg(errors)), qPrintable(badge()));
        QVERIFY(m_bench->window().statusBar()->findChild<QLabel *>("m_lblFindings")->isVisible());
    }
    void doubleClickGoesToTheObject()
    {
        check();
        QCOMPARE(m_bench->tree().selectedEntity(), 0L);
        doubleClick(rowWith("idx_place_order"));
        QCOMPARE(m_bench->tree().selectedEntity(), 2L);
        // The row of the property itself.
        auto * const tree = m_bench->tree().findChild<QTreeView *>();
        QCOMPARE(tree->currentIndex().data().toString(), QString("order"));
        QVERIFY(tree->viewport()->rect().contains(tree->visualRect(tree->currentIndex()).center()));
        QVERIFY(tree->isExpanded(tree->currentIndex().parent()));
    }
    void afterAnExport()
    {
        setFolder();
        m_bench->press(Qt::Key_E, Qt::ControlModifier);
        QTRY_VERIFY2(m_bench->told().contains("Findings about the scripts"), qPrintable(m_bench->told()));
        QVERIFY(badge().contains(" errors, "));
        // Now there are scripts to go to.
        doubleClick(rowWith("KV101"));
        QVERIFY(m_bench->scripts().isVisible());
        auto * const text = m_bench->scripts().findChild<QPlainTextEdit *>();
        QVERIFY2(text->textCursor().selectedText().startsWith("CREATE TABLE select "),
                 qPrintable(text->textCursor().selectedText()));
        QCOMPARE(m_bench->tree().selectedEntity(), 1L);
    }
    void acceptedOnesAreGrey()
    {
        QVERIFY(support::writeBytes(m_bench->path("korvane-check.json"),
                                    json("{'accept': [{'code': 'KV101', 'why': 'never run on SQLite'}]}")));
        check();
        const int last = static_cast<int>(told().size()) - 1;
        QVERIFY2(badge().contains(" accepted"), qPrintable(badge()));
        // They come last, with their reason, in a colour of their own.
        QCOMPARE(kindOf(last - 1), app::message_kind::accepted);
        QVERIFY2(told()[last - 1].contains(" (accepted: never run on SQLite) "),
                 qPrintable(told()[last - 1]));
        const QPalette palette = m_bench->window().palette();
        QVERIFY(app::messageColor(app::message_kind::accepted, palette).isValid());
        QVERIFY(app::messageColor(app::message_kind::accepted, palette) !=
                app::messageColor(app::message_kind::warning, palette));
        QVERIFY(!app::messageColor(app::message_kind::note, palette).isValid());
    }
    void nothingToFind()
    {
        m_bench = std::make_unique<window_bench>(
            textOf("{\"id\": 1, \"name\": \"place\", \"properties\": [{\"id\": 10, \"name\": \"id\", "
                   "\"type\": \"long\", \"identifier\": true}]}"));
        m_bench->open();
        check();
        QCOMPARE(badge(), QString("No findings"));
    }
    void whatCannotBeJudged()
    {
        QVERIFY(support::writeBytes(m_bench->path("korvane-check.json"), "{"));
        check();
        QVERIFY2(told().constLast().contains("korvane-check.json"), qPrintable(told().join('\n')));
        QCOMPARE(kindOf(static_cast<int>(told().size()) - 1), app::message_kind::error);
    }

private:
    void check() { m_bench->action("m_actCheck_KorvGenericDDLExport")->trigger(); }
    [[nodiscard]] QListView & list() const { return *m_bench->find<QListView>("m_lstMessages"); }
    [[nodiscard]] QModelIndex row(int number) const { return list().model()->index(number, 0); }
    [[nodiscard]] app::message_kind kindOf(int number) const { return app::messageKind(row(number)); }
    [[nodiscard]] QStringList told() const
    {
        QStringList rows;
        for (int i = 0; i < list().model()->rowCount(); ++i) {
            rows << row(i).data().toString().section(QStringLiteral(" What to do"), 0, 0);
        }
        return rows;
    }
    [[nodiscard]] QModelIndex rowWith(const QString & text) const
    {
        for (int i = 0; i < list().model()->rowCount(); ++i) {
            if (row(i).data().toString().startsWith(QLatin1String("KV")) &&
                row(i).data().toString().contains(text)) {
                return row(i);
            }
        }
        return {};
    }
    void doubleClick(const QModelIndex & index) const
    {
        QVERIFY(index.isValid());
        list().scrollTo(index);
        const QPoint place = list().visualRect(index).center();
        QTest::mouseClick(list().viewport(), Qt::LeftButton, {}, place);
        QTest::mouseDClick(list().viewport(), Qt::LeftButton, {}, place);
    }
    [[nodiscard]] QString badge() const { return m_bench->find<QLabel>("m_lblFindings")->text(); }
    void setFolder() const
    {
        modal_driver driver({[&](QWidget * w) {
            w->findChild<QLineEdit *>("m_txtFileLocation")->setText(m_bench->path("sql"));
            QTest::mouseClick(w->findChild<QWidget *>("m_btnOk"), Qt::LeftButton);
        }});
        m_bench->action("m_actSettings_KorvGenericDDLExport")->trigger();
        QVERIFY(driver.isDone());
    }

    std::unique_ptr<window_bench> m_bench;
};

QTEST_MAIN(tst_window_check)

#include "tst_window_check.moc"
