// A database that becomes a model, by way of the window.

#include "app/window/window_bench.h"
#include "servers/server_of_somebody.h"
#include "support/modal_driver.h"
#include "support/shop_text.h"

#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QListWidget>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QSqlDatabase>
#include <QSqlError>
#include <QSqlQuery>
#include <QTreeView>

using support::modal_driver;
using support::window_bench;

namespace {

template <class W>
W * part(QWidget * of, const char * name)
{
    W * const found = of->findChild<W *>(QLatin1String(name));
    if (!found) {
        qFatal("the window '%s' has no %s", qPrintable(of->windowTitle()), name);
    }
    return found;
}

void choose(QWidget * dialog, const QString & kind, const QString & place)
{
    auto * const kinds = part<QComboBox>(dialog, "m_cmbKind");
    const int row = kinds->findText(kind);
    if (row < 0) {
        qFatal("there is no kind '%s'", qPrintable(kind));
    }
    kinds->setCurrentIndex(row);
    auto * const text = part<QLineEdit>(dialog, "m_txtPlace");
    text->clear();
    QTest::keyClicks(text, place);
}

void press(QWidget * dialog, const char * button)
{
    QTest::mouseClick(part<QAbstractButton>(dialog, button), Qt::LeftButton);
}

QString stateOf(QWidget * dialog)
{
    return part<QLabel>(dialog, "m_lblState")->text();
}

/// The tables, one a line, the chosen ones with a mark.
QString tablesOf(QWidget * dialog)
{
    const auto * const list = part<QListWidget>(dialog, "m_lstTables");
    QStringList lines;
    for (int row = 0; row < list->count(); ++row) {
        lines << (list->item(row)->checkState() == Qt::Checked ? "+" : "-") + list->item(row)->text();
    }
    return lines.join(' ');
}

QPushButton * next(QWidget * dialog)
{
    return part<QDialogButtonBox>(dialog, "")->button(QDialogButtonBox::Ok);
}

/// All rows of the first tree below `of`, indented.
QStringList rowsOf(const QWidget * of)
{
    const auto * const tree = of->findChild<QTreeView *>();
    QStringList lines;
    const std::function<void(const QModelIndex &, int)> add = [&](const QModelIndex & parent, int depth) {
        for (int row = 0; row < tree->model()->rowCount(parent); ++row) {
            const QModelIndex index = tree->model()->index(row, 0, parent);
            lines << QString(depth, ' ') + index.data().toString();
            add(index, depth + 1);
        }
    };
    add({}, 0);
    return lines;
}

} // namespace

class tst_window_database : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_bench = std::make_unique<window_bench>(support::ShopText);
        makeClub({"CREATE TABLE member (id INTEGER PRIMARY KEY AUTOINCREMENT, name VARCHAR(80) NOT NULL)",
                  "CREATE TABLE fee (id INTEGER PRIMARY KEY AUTOINCREMENT, amount DECIMAL(8,2) DEFAULT 0, "
                  "member_id INTEGER REFERENCES member (id))",
                  "CREATE TABLE log (line TEXT)"});
    }
    void cleanup() { m_bench.reset(); }

    void aFileBecomesAProject()
    {
        m_bench->show();
        QString state;
        QString tables;
        QStringList preview;
        QString question;
        QString notes;
        modal_driver driver({[&](QWidget * dialog) {
                                 QVERIFY(!next(dialog)->isEnabled());
                                 choose(dialog, "SQLite file", m_bench->path("club.db"));
                                 press(dialog, "m_btnConnect");
                                 state = stateOf(dialog);
                                 tables = tablesOf(dialog);
                                 clickMark(dialog, 1);
                                 QCOMPARE(tablesOf(dialog), QString("+fee -log +member"));
                                 QCOMPARE(part<QCheckBox>(dialog, "m_chkAll")->checkState(),
                                          Qt::PartiallyChecked);
                                 QTest::mouseClick(next(dialog), Qt::LeftButton);
                             },
                             modal_driver::file(m_bench->path("mine")),
                             [&](QWidget * dialog) {
                                 preview = rowsOf(dialog);
                                 question = dialog->findChild<QLabel *>()->text();
                                 notes = part<QPlainTextEdit>(dialog, "m_txtNotes")->toPlainText();
                                 QTest::mouseClick(next(dialog), Qt::LeftButton);
                             }});
        QTest::mouseClick(m_bench->find<QAbstractButton>("m_btnImportDatabase"), Qt::LeftButton);
        QVERIFY2(driver.isDone(), qPrintable(driver.unexpected.join('\n')));
        QCOMPARE(state, "sqlite:" + m_bench->path("club.db") + " can be read: 3 tables");
        QCOMPARE(tables, QString("+fee +log +member"));
        QCOMPARE(question, "This makes the project '" + m_bench->path("mine.korv") +
                               "' of sqlite:" + m_bench->path("club.db") + ".");
        QCOMPARE(preview, QStringList({"+ entity fee: 3 properties", "+ entity member: 3 properties"}));
        QVERIFY2(notes.startsWith("Without a place in the model, or made otherwise by scripts: "),
                 qPrintable(notes));
        QCOMPARE(m_bench->window().windowTitle(), QString("mine (mine.korv) - Korvane"));
        QVERIFY2(m_bench->told().contains("fee: default of column amount: 0"), qPrintable(m_bench->told()));
        QVERIFY2(m_bench->told().contains("imported into " + m_bench->path("mine.korv") + " (entities: 2;"),
                 qPrintable(m_bench->told()));
        // The command finds nothing to change.
        const QByteArray again =
            window_bench::run({"import", "sqlite:" + m_bench->path("club.db"), m_bench->path("mine.korv"),
                               "-n", "--tables", "fee", "--tables", "member"});
        QVERIFY2(again.left(again.indexOf('\n')).endsWith(": no changes"), again.constData());
    }

    void theOpenProjectShowsWhatWouldChange()
    {
        const QByteArray before = projectAfter("sqlite:" + m_bench->path("club.db"));
        makeClub({"ALTER TABLE member ADD COLUMN born DATE",
                  "ALTER TABLE member RENAME COLUMN name TO full_name"});
        m_bench->show();
        m_bench->window().openFile(m_bench->path("mine.korv"));
        QStringList preview;
        QString question;
        QString notes;
        const auto first = [&](QWidget * dialog) {
            choose(dialog, "SQLite file", m_bench->path("club.db"));
            press(dialog, "m_btnConnect");
            QTest::mouseClick(next(dialog), Qt::LeftButton);
        };
        const auto look = [&](QDialogButtonBox::StandardButton button) {
            return [&, button](QWidget * dialog) {
                preview = rowsOf(dialog);
                question = dialog->findChild<QLabel *>()->text();
                notes = part<QPlainTextEdit>(dialog, "m_txtNotes")->toPlainText();
                modal_driver::press(button)(dialog);
            };
        };
        {
            modal_driver driver(
                {first, modal_driver::file(m_bench->path("mine.korv")), look(QDialogButtonBox::Cancel)});
            m_bench->action("m_actImportDatabase")->trigger();
            QVERIFY2(driver.isDone(), qPrintable(driver.unexpected.join('\n')));
        }
        QCOMPARE(question, "This changes the model of '" + m_bench->path("mine.korv") +
                               "' to that of sqlite:" + m_bench->path("club.db") +
                               ". Settings and versions are kept.");
        QVERIFY2(preview.join('\n').contains("born") && preview.join('\n').contains("full_name"),
                 qPrintable(preview.join('\n')));
        QVERIFY2(notes.startsWith("Possible rename: member.name (property "), qPrintable(notes));
        // Nothing is stored by looking.
        QCOMPARE(window_bench::run({"dump", m_bench->path("mine.korv")}), before);
        {
            modal_driver driver(
                {first, modal_driver::file(m_bench->path("mine.korv")), look(QDialogButtonBox::Ok)});
            m_bench->action("m_actImportDatabase")->trigger();
            QVERIFY2(driver.isDone(), qPrintable(driver.unexpected.join('\n')));
        }
        QVERIFY(window_bench::run({"dump", m_bench->path("mine.korv")}).contains("\"born\""));
        QVERIFY2(m_bench->told().contains("Possible rename: member.name (property "),
                 qPrintable(m_bench->told()));
    }

    void whatCannotBeReadIsSaid_data()
    {
        QTest::addColumn<QString>("kind");
        QTest::addColumn<QString>("place");
        QTest::addColumn<QString>("expected");
        QTest::newRow("no file") << "SQLite file"
                                 << "gone.db"
                                 << "sqlite:gone.db: does not exist; check the name";
        QTest::newRow("no database") << "SQLite file" << QString(KORVANE_SOURCE_DIR "/README.md")
                                     << "sqlite:" KORVANE_SOURCE_DIR "/README.md: ";
        QTest::newRow("no server") << "PostgreSQL"
                                   << "ann@127.0.0.1:1/shop"
                                   << "postgresql://ann@127.0.0.1:1/shop: ";
        QTest::newRow("half a URL") << "MariaDB"
                                    << "mariadb://localhost"
                                    << "it names no database; a URL is mariadb://[user@]host[:port]/database";
    }
    void whatCannotBeReadIsSaid()
    {
        QFETCH(QString, kind);
        QFETCH(QString, place);
        QFETCH(QString, expected);
        m_bench->open();
        QString state;
        modal_driver driver({[&](QWidget * dialog) {
            choose(dialog, kind, place);
            press(dialog, "m_btnConnect");
            state = stateOf(dialog);
            QVERIFY(!next(dialog)->isEnabled());
            QCOMPARE(tablesOf(dialog), QString());
            modal_driver::press(QDialogButtonBox::Cancel)(dialog);
        }});
        m_bench->action("m_actImportDatabase")->trigger();
        QVERIFY(driver.isDone());
        QVERIFY2(state.contains(expected) && !state.contains('\n'), qPrintable(state));
    }

    /// What was read of one place is not taken for another.
    void anotherPlaceIsReadAnew()
    {
        m_bench->show();
        modal_driver driver({[&](QWidget * dialog) {
            choose(dialog, "SQLite file", m_bench->path("club.db"));
            press(dialog, "m_btnConnect");
            QVERIFY(next(dialog)->isEnabled());
            QTest::keyClicks(part<QLineEdit>(dialog, "m_txtPlace"), "x");
            QCOMPARE(tablesOf(dialog), QString());
            QCOMPARE(stateOf(dialog), QString());
            QVERIFY(!next(dialog)->isEnabled());
            part<QComboBox>(dialog, "m_cmbKind")->setCurrentText("PostgreSQL");
            QVERIFY(!part<QAbstractButton>(dialog, "m_btnBrowse")->isEnabled());
            QVERIFY(part<QLineEdit>(dialog, "m_txtPassword")->isEnabled());
            QVERIFY(part<QLineEdit>(dialog, "m_txtSchema")->isEnabled());
            part<QComboBox>(dialog, "m_cmbKind")->setCurrentText("MariaDB");
            QVERIFY(!part<QLineEdit>(dialog, "m_txtSchema")->isEnabled());
            modal_driver::press(QDialogButtonBox::Cancel)(dialog);
        }});
        m_bench->action("m_actImportDatabase")->trigger();
        QVERIFY(driver.isDone());
    }

    void allTablesOrNone()
    {
        m_bench->show();
        modal_driver driver({[&](QWidget * dialog) {
            choose(dialog, "SQLite file", m_bench->path("club.db"));
            press(dialog, "m_btnConnect");
            auto * const all = part<QCheckBox>(dialog, "m_chkAll");
            QCOMPARE(all->checkState(), Qt::Checked);
            all->click();
            QCOMPARE(tablesOf(dialog), QString("-fee -log -member"));
            QVERIFY(!next(dialog)->isEnabled());
            all->click();
            QCOMPARE(tablesOf(dialog), QString("+fee +log +member"));
            QVERIFY(next(dialog)->isEnabled());
            modal_driver::press(QDialogButtonBox::Cancel)(dialog);
        }});
        m_bench->action("m_actImportDatabase")->trigger();
        QVERIFY(driver.isDone());
    }

    void aScript()
    {
        m_bench->write("club.sql", "CREATE TABLE a (id INTEGER PRIMARY KEY);\nCREATE TABLE b (x TEXT);\n");
        m_bench->show();
        QString state;
        modal_driver driver({[&](QWidget * dialog) {
            choose(dialog, "SQL script for SQLite", m_bench->path("club.sql"));
            press(dialog, "m_btnConnect");
            state = stateOf(dialog);
            QCOMPARE(tablesOf(dialog), QString("+a +b"));
            modal_driver::press(QDialogButtonBox::Cancel)(dialog);
        }});
        m_bench->action("m_actImportDatabase")->trigger();
        QVERIFY(driver.isDone());
        QCOMPARE(state, m_bench->path("club.sql") + " can be read: 2 tables");
    }

    void aServerThatWantsAPassword()
    {
        QString why;
        const auto server = servers::startPostgreSqlOfSomebody(why);
        if (!server) {
            QSKIP(qPrintable(why));
        }
        const auto connection = server->connect(server->firstDatabase());
        for (const char * const each :
             {"CREATE TABLE mine (id BIGINT PRIMARY KEY)", "CREATE ROLE bob LOGIN PASSWORD 'se:same'"}) {
            QString error;
            QVERIFY2(connection->execute(each, error), qPrintable(error));
        }
        m_bench->show();
        QString wrong;
        QString right;
        modal_driver driver({[&](QWidget * dialog) {
            choose(dialog, "PostgreSQL", server->url("bob", server->firstDatabase()));
            auto * const password = part<QLineEdit>(dialog, "m_txtPassword");
            QCOMPARE(password->echoMode(), QLineEdit::Password);
            QTest::keyClicks(password, "wrong");
            press(dialog, "m_btnConnect");
            wrong = stateOf(dialog);
            password->clear();
            QTest::keyClicks(password, "se:same");
            press(dialog, "m_btnConnect");
            right = stateOf(dialog);
            QCOMPARE(tablesOf(dialog), QString("+mine"));
            modal_driver::press(QDialogButtonBox::Cancel)(dialog);
        }});
        m_bench->action("m_actImportDatabase")->trigger();
        QVERIFY(driver.isDone());
        QVERIFY2(wrong.contains("password authentication failed for user \"bob\""), qPrintable(wrong));
        QVERIFY2(right.endsWith(" can be read: 1 table") && !right.contains("same"), qPrintable(right));
    }

private:
    void makeClub(const QStringList & statements) const
    {
        {
            QSqlDatabase club = QSqlDatabase::addDatabase("QSQLITE", "club");
            club.setDatabaseName(m_bench->path("club.db"));
            QVERIFY(club.open());
            for (const QString & each : statements) {
                QSqlQuery query(club);
                QVERIFY2(query.exec(each), qPrintable(query.lastError().text()));
            }
        }
        QSqlDatabase::removeDatabase("club");
    }
    /// The text of the project that is made of `source`.
    [[nodiscard]] QByteArray projectAfter(const QString & source) const
    {
        window_bench::run({"import", source, m_bench->path("mine.korv")});
        return window_bench::run({"dump", m_bench->path("mine.korv")});
    }
    /// Clicks the mark of the table in that row.
    static void clickMark(QWidget * dialog, int row)
    {
        auto * const list = part<QListWidget>(dialog, "m_lstTables");
        const QRect place = list->visualItemRect(list->item(row));
        QTest::mouseClick(list->viewport(), Qt::LeftButton, {},
                          QPoint(place.left() + 10, place.center().y()));
    }

    std::unique_ptr<window_bench> m_bench;
};

QTEST_MAIN(tst_window_database)
#include "tst_window_database.moc"
