// The main window, used as a person uses it: open, look, tag, import, save; files that go bad; what it
// remembers.

#include "app/window/export_menu.h"
#include "app/window/recent_files.h"
#include "app/window/window_bench.h"
#include "support/browser.h"
#include "support/damaged_database.h"
#include "support/full_disk.h"
#include "support/modal_driver.h"

#include <QAccessible>
#include <QComboBox>
#include <QCommandLinkButton>
#include <QDockWidget>
#include <QDropEvent>
#include <QLabel>
#include <QMenu>
#include <QMenuBar>
#include <QMimeData>
#include <QScreen>
#include <QSignalSpy>
#include <QSqlDatabase>
#include <QSqlQuery>
#include <QStatusBar>
#include <QTabWidget>
#include <QTextDocument>

using support::modal_driver;
using support::window_bench;

namespace {

const QByteArray ShopText = R"x({
  "format": "korvane-project", "formatVersion": 1, "name": "shop",
  "entities": [
    { "id": 1, "name": "country", "properties": [
      { "id": 10, "name": "id", "type": "long", "identifier": true },
      { "id": 11, "name": "label", "type": "QString" } ] },
    { "id": 2, "name": "person", "properties": [
      { "id": 20, "name": "id", "type": "long", "identifier": true },
      { "id": 21, "name": "country", "columnName": "country_id",
        "relationship": { "id": 30, "type": "many-to-one", "target": 1 } } ] } ] })x";

/// The names of the tree's top level as it shows them.
QStringList shownEntities(const window_bench & bench)
{
    const QAbstractItemModel * const model = bench.tree().findChild<QTreeView *>()->model();
    QStringList names;
    for (int row = 0; row < model->rowCount(); ++row) {
        names << model->index(row, 0).data().toString();
    }
    return names;
}

/// The controls of the window that assistive software has no name for, one a line.
QString nameless(const QWidget & window)
{
    QStringList lines;
    for (QWidget * const widget : window.findChildren<QWidget *>()) {
        // A number of parts of Qt's own take the focus for the control that they belong to.
        if (widget->window() != &window || widget->focusPolicy() == Qt::NoFocus || widget->focusProxy() ||
            widget->objectName().startsWith("qt_")) {
            continue;
        }
        QAccessibleInterface * const control = QAccessible::queryAccessibleInterface(widget);
        if (!control || control->text(QAccessible::Name).trimmed().isEmpty()) {
            lines << QString("%1 %2").arg(widget->metaObject()->className(), widget->objectName());
        }
    }
    return lines.join(QLatin1Char('\n'));
}

/// What a person reads of a tool tip, which is plain text unless it looks like mark-up.
QString shownTip(const QString & tip)
{
    QTextDocument shown;
    Qt::mightBeRichText(tip) ? shown.setHtml(tip) : shown.setPlainText(tip);
    return shown.toPlainText();
}

/// Changes a project file in a way that no program of ours does.
void execute(const QString & file, const QString & sql)
{
    {
        QSqlDatabase database =
            QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), QStringLiteral("tamper"));
        database.setDatabaseName(file);
        if (!database.open() || !QSqlQuery(database).exec(sql)) {
            qFatal("cannot change the project file");
        }
    }
    QSqlDatabase::removeDatabase(QStringLiteral("tamper"));
}

} // namespace

class tst_project_window : public QObject
{
    Q_OBJECT

private slots:
    void init() { m_bench = std::make_unique<window_bench>(ShopText); }
    void cleanup() { m_bench.reset(); }

    void withoutProject();
    void openedByThePerson();
    void cancelledOpening();
    void filterAndSelection();
    void tagAndVersions();
    void cancelledTag();
    void namesShowWhatTurnsTheirDirection();
    void projectWithoutVersions();
    void importTextIntoANewProject();
    void importIsAskedForBeforeItReplaces();
    void refusedImport();
    void importWarnings();
    void savedTextIsTheDump();
    void textThatCannotBeSaved();
    void textDoesNotReplaceAProject();
    void filesThatCannotBeOpened_data();
    void filesThatCannotBeOpened();
    void removedWhileOpen();
    void comesBackAsItWas();
    void comesBackWithItsFolder();
    void damagedWhileOpen();
    void changedByAnotherProgram();
    void replacedByAnotherFile();
    void otherVersionsLeaveTheViewAlone();
    void dropped();
    void droppedOnAPane();
    void namesAreNoMarkup();
    void savedTextIsWhatIsShown();
    void changeWhileItIsTagged();
    void removedWhileItIsTagged();
    void noBusyCursorOverAWarning();
    void recentFilesOfTwoWindows();
    void recentFilesAreRemembered();
    void recentFilesAreFew();
    void layoutIsRemembered();
    void firstLayoutFitsTheScreen();
    void manualAndAbout();
    void manualWithoutABrowser();
    void pluginsInTheMenu();
    void pluginThatCannotBeLoaded();
    void noPlugin();
    void versionsThatCannotBeRead();
    void everyControlHasAName();
    void keyboardReachesEveryControl();
    void panesByKeyboard();
    void goesWhileADialogIsShown_data();
    void goesWhileADialogIsShown();

private:
    std::unique_ptr<window_bench> m_bench;
};

void tst_project_window::withoutProject()
{
    m_bench->show();
    QCOMPARE(m_bench->window().windowTitle(), "Korvane");
    QVERIFY(m_bench->find<QWidget>("m_btnOpen")->isVisible());
    QVERIFY(!m_bench->find<QTabWidget>("m_tabPages")->isVisible());
    for (const char * const name :
         {"m_actTag", "m_actVersions", "m_actReload", "m_actClose", "m_actSaveText",
          "m_actExport_KorvGenericDDLExport", "m_actSettings_KorvGenericDDLExport"}) {
        QVERIFY2(!m_bench->action(name)->isEnabled(), name);
    }
    for (const char * const name : {"m_actOpen", "m_actImport", "m_actManual", "m_actAbout", "m_actQuit"}) {
        QVERIFY2(m_bench->action(name)->isEnabled(), name);
    }
}

void tst_project_window::openedByThePerson()
{
    m_bench->show();
    modal_driver driver({modal_driver::file(m_bench->file())});
    m_bench->press(Qt::Key_O, Qt::ControlModifier);
    QVERIFY(driver.isDone());
    QCOMPARE(driver.titles, QStringList{"Korvane - Open"});
    QCOMPARE(m_bench->window().windowTitle(), "shop (shop.korv) - Korvane");
    QCOMPARE(shownEntities(*m_bench), (QStringList{"country", "person"}));
    QCOMPARE(m_bench->find<QLabel>("m_lblModel")->text(), "Entities: 2   Properties: 4   Relationships: 1");
    QVERIFY(m_bench->find<QTabWidget>("m_tabPages")->isVisible());
    QVERIFY(m_bench->action("m_actTag")->isEnabled());

    m_bench->press(Qt::Key_W, Qt::ControlModifier);
    QCOMPARE(m_bench->window().windowTitle(), "Korvane");
    QCOMPARE(shownEntities(*m_bench), QStringList());
    QVERIFY(!m_bench->action("m_actTag")->isEnabled());
}

void tst_project_window::cancelledOpening()
{
    m_bench->open();
    modal_driver driver({modal_driver::key(Qt::Key_Escape)});
    m_bench->action("m_actOpen")->trigger();
    QVERIFY(driver.isDone());
    QCOMPARE(m_bench->window().windowTitle(), "shop (shop.korv) - Korvane");
}

void tst_project_window::filterAndSelection()
{
    m_bench->open();
    m_bench->press(Qt::Key_F, Qt::ControlModifier | Qt::ShiftModifier);
    auto * const filter = m_bench->find<QLineEdit>("m_txtFilter");
    QCOMPARE(QApplication::focusWidget(), filter);
    QTest::keyClicks(filter, "person");
    QTRY_COMPARE(shownEntities(*m_bench), QStringList{"person"});

    // From the tree to the diagram.
    QTest::keyClick(filter, Qt::Key_Down);
    QTRY_COMPARE(m_bench->tree().selectedEntity(), 2L);
    QCOMPARE(m_bench->diagram().selectedEntity(), 2L);

    // And back: the entity that the filter hides is shown.
    m_bench->diagram().selectEntity(1);
    Q_EMIT m_bench->diagram().entitySelected(1);
    QCOMPARE(m_bench->tree().selectedEntity(), 1L);
    QVERIFY(shownEntities(*m_bench).contains("country"));
}

void tst_project_window::tagAndVersions()
{
    m_bench->open();
    modal_driver driver({[](QWidget * w) {
                             QCOMPARE(w->findChild<QLabel *>()->text(),
                                      "This tags the current state of 'shop', its model and its settings, as "
                                      "version 1. Evolution scripts lead from one version to the next.");
                             QTest::keyClicks(w->findChild<QLineEdit *>("m_txtMessage"), "  first release ");
                             QTest::keyClick(w, Qt::Key_Return);
                         },
                         [](QWidget * w) {
                             QTest::keyClicks(w->findChild<QLineEdit *>("m_txtMessage"), "second");
                             QTest::keyClick(w, Qt::Key_Return);
                         },
                         [](QWidget * w) {
                             const auto * const model = w->findChild<QTreeView *>("m_lstVersions")->model();
                             QCOMPARE(model->rowCount(), 2);
                             QCOMPARE(model->index(0, 0).data().toString(), "v2");
                             QCOMPARE(model->index(0, 2).data().toString(), "second");
                             QCOMPARE(model->index(1, 0).data().toString(), "v1");
                             QCOMPARE(model->index(1, 2).data().toString(), "first release");
                             QTest::keyClick(w, Qt::Key_Escape);
                         }});
    m_bench->press(Qt::Key_T, Qt::ControlModifier);
    QCOMPARE(driver.titles.size(), 1);
    m_bench->press(Qt::Key_T, Qt::ControlModifier);
    m_bench->press(Qt::Key_T, Qt::ControlModifier | Qt::ShiftModifier);
    QVERIFY(driver.isDone());
    QCOMPARE(driver.titles, (QStringList{"Korvane - Tag project state", "Korvane - Tag project state",
                                         "Korvane - Versions"}));
    const QByteArray log = window_bench::run({"log", m_bench->file()});
    QCOMPARE(log.count('\n'), 2);
    QVERIFY2(log.startsWith("v1  ") && log.contains("  first release\nv2  ") && log.endsWith("  second\n"),
             log.constData());
    QTRY_VERIFY(m_bench->told().contains("Version 2 of " + m_bench->file() + " tagged"));
}

void tst_project_window::cancelledTag()
{
    m_bench->open();
    modal_driver driver({modal_driver::key(Qt::Key_Escape)});
    m_bench->action("m_actTag")->trigger();
    QVERIFY(driver.isDone());
    QCOMPARE(window_bench::run({"log", m_bench->file()}), QByteArray());
}

void tst_project_window::namesShowWhatTurnsTheirDirection()
{
    const QString turned = QStringLiteral("per%1son").arg(QChar(0x202e));
    m_bench->import(QByteArray(ShopText).replace("\"person\"", "\"" + turned.toUtf8() + "\""));
    window_bench::run({"tag", m_bench->file(), "-m", QStringLiteral("a%1b").arg(QChar(0x2066))});
    const QString file = m_bench->path(QStringLiteral("sh%1op.korv").arg(QChar(0x2028)));
    QVERIFY(QFile::rename(m_bench->file(), file));
    m_bench->show();
    m_bench->window().openFile(file);
    QCOMPARE(m_bench->window().windowTitle(), "shop (sh<U+2028>op.korv) - Korvane");
    QVERIFY(m_bench->window().statusBar()->currentMessage().contains("sh<U+2028>op.korv"));
    const QAbstractItemModel * const tree = m_bench->find<QTreeView>("m_treModel")->model();
    QStringList told;
    for (int row = 0; row < tree->rowCount(); ++row) {
        const QModelIndex entity = tree->index(row, 0);
        told << entity.data().toString() << entity.data(Qt::ToolTipRole).toString()
             << entity.data(Qt::AccessibleTextRole).toString();
    }
    QCOMPARE(told.filter("per<U+202E>son").size(), 2);
    QCOMPARE(told.filter("per&lt;U+202E&gt;son").size(), 1);
    QCOMPARE(told.filter(turned).size(), 0);
    QCOMPARE(m_bench->find<QMenu>("m_mnuRecent")->actions().constFirst()->text(), "sh<U+2028>op.korv");
    m_bench->messages().addMessage(turned, 0);
    QTRY_VERIFY(m_bench->told().contains("per<U+202E>son"));
    modal_driver driver({[](QWidget * w) {
                             QCOMPARE(w->findChild<QTreeView *>()->model()->index(0, 2).data().toString(),
                                      "a<U+2066>b");
                             QTest::keyClick(w, Qt::Key_Escape);
                         },
                         modal_driver::click(QMessageBox::Ok)});
    m_bench->action("m_actVersions")->trigger();
    QVERIFY(QFile::remove(file));
    QTRY_VERIFY(driver.isDone());
    QVERIFY2(driver.texts.constLast().contains("sh<U+2028>op.korv: does not exist"),
             qPrintable(driver.texts.constLast()));
}

void tst_project_window::projectWithoutVersions()
{
    m_bench->open();
    modal_driver driver({[](QWidget * w) {
        QCOMPARE(w->findChild<QLabel *>()->text(),
                 "'shop' has no version yet. \"Actions > Tag project state…\" makes one.");
        QTest::keyClick(w, Qt::Key_Escape);
    }});
    m_bench->action("m_actVersions")->trigger();
    QVERIFY(driver.isDone());
}

void tst_project_window::importTextIntoANewProject()
{
    m_bench->show();
    const QString target = m_bench->path("other.korv");
    // The suffix is added.
    modal_driver driver(
        {modal_driver::file(m_bench->path("shop.json")), modal_driver::file(m_bench->path("other"))});
    m_bench->press(Qt::Key_I, Qt::ControlModifier);
    QVERIFY(driver.isDone());
    QCOMPARE(m_bench->window().windowTitle(), "shop (other.korv) - Korvane");
    QVERIFY(QFile::exists(target));
    QTRY_VERIFY(m_bench->told().contains("Project 'shop' imported into " + target + " (entities: 2)"));
}

void tst_project_window::importIsAskedForBeforeItReplaces()
{
    m_bench->open();
    m_bench->write("changed.json", QByteArray(ShopText).replace("\"person\"", "\"customer\""));
    const auto choose = modal_driver::file(m_bench->path("changed.json"));
    // The open project is proposed.
    const auto confirm = modal_driver::key(Qt::Key_Return);
    QString question;
    modal_driver no({choose, confirm, [&question](QWidget * w) {
                         question = w->findChild<QLabel *>()->text();
                         QTest::keyClick(w, Qt::Key_Return); // no is proposed
                     }});
    m_bench->action("m_actImport")->trigger();
    QVERIFY(no.isDone());
    QCOMPARE(question,
             QStringLiteral("'%1' already exists.\nReplace its model with the one from 'changed.json'? "
                            "Settings and versions are kept.")
                 .arg(m_bench->file()));
    QCOMPARE(shownEntities(*m_bench), (QStringList{"country", "person"}));

    modal_driver yes({choose, confirm, modal_driver::press(QDialogButtonBox::Ok)});
    m_bench->action("m_actImport")->trigger();
    QVERIFY(yes.isDone());
    QCOMPARE(shownEntities(*m_bench), (QStringList{"country", "customer"}));
}

void tst_project_window::refusedImport()
{
    m_bench->open();
    const QString text = m_bench->path("wrong.json");
    m_bench->write("wrong.json", QByteArray(ShopText).replace("\"target\": 1", "\"target\": 7"));
    modal_driver driver({modal_driver::file(text), modal_driver::key(Qt::Key_Return),
                         modal_driver::click(QMessageBox::Yes), modal_driver::click(QMessageBox::Ok)});
    m_bench->action("m_actImport")->trigger();
    QVERIFY(driver.isDone());
    QCOMPARE(driver.texts.constLast(), text +
                                           ": entities[1] 'person' / properties[1] 'country': relationship "
                                           "target 7 does not exist");
    QCOMPARE(shownEntities(*m_bench), (QStringList{"country", "person"}));
}

void tst_project_window::importWarnings()
{
    m_bench->import(QByteArray(ShopText).replace("\"id\": 2,", "\"id\": 2, \"version\": 1,"));
    m_bench->open();
    const QString text = m_bench->path("same.json");
    m_bench->write("same.json",
                   QByteArray(ShopText).replace("\"id\": 2, \"name\": \"person\"",
                                                "\"id\": 2, \"version\": 1, \"name\": \"customer\""));
    modal_driver driver({modal_driver::file(text), modal_driver::key(Qt::Key_Return),
                         modal_driver::press(QDialogButtonBox::Ok)});
    m_bench->action("m_actImport")->trigger();
    QVERIFY(driver.isDone());
    QTRY_VERIFY2(m_bench->told().contains(text + ": warning: "), qPrintable(m_bench->told()));
}

void tst_project_window::savedTextIsTheDump()
{
    m_bench->open();
    modal_driver driver({modal_driver::file(m_bench->path("saved"))});
    m_bench->press(Qt::Key_S, Qt::ControlModifier);
    QVERIFY(driver.isDone());
    QCOMPARE(m_bench->content("saved.json"), window_bench::run({"dump", m_bench->file()}));
}

void tst_project_window::textThatCannotBeSaved()
{
    m_bench->open();
    m_bench->write("kept.json", "what was there");
    std::unique_ptr<support::full_disk> full;
    // The dialog asks whether the file is to be replaced; then the disk is full until the failure is told.
    modal_driver driver({modal_driver::file(m_bench->path("kept.json")),
                         [&full](QWidget * w) {
                             full = std::make_unique<support::full_disk>(40);
                             modal_driver::click(QMessageBox::Yes)(w);
                         },
                         [&full](QWidget * w) {
                             full.reset();
                             modal_driver::click(QMessageBox::Ok)(w);
                         }});
    m_bench->action("m_actSaveText")->trigger();
    QVERIFY(driver.isDone());
    QVERIFY2(driver.texts[2].startsWith(m_bench->path("kept.json") + ": cannot be written ("),
             qPrintable(driver.texts[2]));
    QCOMPARE(m_bench->content("kept.json"), QByteArray("what was there"));
    QCOMPARE(QDir(m_bench->path()).entryList({"kept*"}), QStringList{"kept.json"});
}

void tst_project_window::textDoesNotReplaceAProject()
{
    m_bench->open();
    const QByteArray before = m_bench->content("shop.korv");
    modal_driver driver({modal_driver::file(m_bench->file()), modal_driver::click(QMessageBox::Yes),
                         modal_driver::click(QMessageBox::Ok)});
    m_bench->action("m_actSaveText")->trigger();
    QVERIFY(driver.isDone());
    QCOMPARE(driver.texts.constLast(),
             m_bench->file() +
                 " is a project file and was not overwritten. Choose a name that ends in .json");
    QCOMPARE(m_bench->content("shop.korv"), before);
}

void tst_project_window::filesThatCannotBeOpened_data()
{
    QTest::addColumn<QString>("sql");
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QString>("reason");
    QTest::newRow("newer")
        << "PRAGMA user_version = 2" << QByteArray()
        << "was written by a newer korvane (format 2; this one reads up to 1); update korvane";
    QTest::newRow("no database") << "" << QByteArray("this is a text, and a long one, ").repeated(20)
                                 << "is not a Korvane project file (.korv)";
    QTest::newRow("table missing") << "DROP TABLE t_plugin_params" << QByteArray() << "t_plugin_params";
    QTest::newRow("missing") << "-" << QByteArray() << "does not exist";
}

void tst_project_window::filesThatCannotBeOpened()
{
    QFETCH(QString, sql);
    QFETCH(QByteArray, bytes);
    QFETCH(QString, reason);
    m_bench->open();
    const QString bad = m_bench->path("bad.korv");
    if (!bytes.isEmpty()) {
        m_bench->write("bad.korv", bytes);
    } else if (sql != "-") {
        QVERIFY(QFile::copy(m_bench->file(), bad));
        execute(bad, sql);
    }
    modal_driver driver({modal_driver::click(QMessageBox::Ok)});
    m_bench->window().openFile(bad);
    QVERIFY(driver.isDone());
    QCOMPARE(driver.titles, QStringList{"Korvane - Open"});
    QVERIFY2(driver.texts[0].startsWith(bad + ": ") && driver.texts[0].contains(reason),
             qPrintable(driver.texts[0]));
    QCOMPARE(driver.texts[0].count('\n'), 0);
    // The window goes on with what was open.
    QCOMPARE(m_bench->window().windowTitle(), "shop (shop.korv) - Korvane");
    QCOMPARE(shownEntities(*m_bench), (QStringList{"country", "person"}));
}

void tst_project_window::removedWhileOpen()
{
    m_bench->open();
    modal_driver driver({modal_driver::click(QMessageBox::Ok)});
    QVERIFY(QFile::remove(m_bench->file()));
    QTRY_VERIFY(driver.isDone());
    QCOMPARE(driver.titles, QStringList{"Korvane - Project file"});
    QVERIFY2(driver.texts[0].startsWith(m_bench->file() + ": does not exist"), qPrintable(driver.texts[0]));
    QVERIFY(driver.texts[0].endsWith(
        "The window still shows the project as last read. To keep its model, use \"File > Save model as "
        "text…\"."));
    QCOMPARE(m_bench->window().windowTitle(), "shop (shop.korv, cannot be read any more) - Korvane");
    QCOMPARE(shownEntities(*m_bench), (QStringList{"country", "person"}));
    // It is told once, however much goes on in the folder.
    m_bench->write("noise.txt", "x");
    QTest::qWait(600);
    QCOMPARE(driver.titles.size(), 1);

    // What needs the file says why it cannot be done; nothing is made in its place.
    modal_driver refusals({modal_driver::click(QMessageBox::Ok), modal_driver::click(QMessageBox::Ok),
                           modal_driver::click(QMessageBox::Ok)});
    m_bench->action("m_actTag")->trigger();
    m_bench->action("m_actExport_KorvGenericDDLExport")->trigger();
    m_bench->action("m_actSettings_KorvGenericDDLExport")->trigger();
    QVERIFY(refusals.isDone());
    QCOMPARE(refusals.titles,
             (QStringList{"Korvane - Tag project state", "Korvane - Export", "Korvane - Settings"}));
    QVERIFY(!QFile::exists(m_bench->file()));
    modal_driver saves({modal_driver::file(m_bench->path("kept.json"))});
    m_bench->action("m_actSaveText")->trigger();
    QVERIFY(saves.isDone());
    QVERIFY(m_bench->content("kept.json").contains("\"person\""));

    // It comes back.
    m_bench->import(QByteArray(ShopText).replace("\"person\"", "\"customer\""));
    QTRY_COMPARE(shownEntities(*m_bench), (QStringList{"country", "customer"}));
    QCOMPARE(m_bench->window().windowTitle(), "shop (shop.korv) - Korvane");
}

void tst_project_window::comesBackAsItWas()
{
    m_bench->open();
    modal_driver driver({modal_driver::click(QMessageBox::Ok)});
    QVERIFY(QFile::rename(m_bench->file(), m_bench->path("away")));
    QTRY_VERIFY(driver.isDone());
    QCOMPARE(m_bench->window().windowTitle(), "shop (shop.korv, cannot be read any more) - Korvane");
    QVERIFY(QFile::rename(m_bench->path("away"), m_bench->file()));
    QTRY_COMPARE(m_bench->window().windowTitle(), "shop (shop.korv) - Korvane");
}

void tst_project_window::comesBackWithItsFolder()
{
    const QString folder = m_bench->path("shops");
    QVERIFY(QDir().mkpath(folder) && QFile::copy(m_bench->file(), folder + "/shop.korv"));
    m_bench->show();
    m_bench->window().openFile(folder + "/shop.korv");
    modal_driver driver({modal_driver::click(QMessageBox::Ok)});
    QVERIFY(QDir(folder).removeRecursively());
    QTRY_VERIFY(driver.isDone());
    QVERIFY(QDir().mkpath(folder) && QFile::copy(m_bench->file(), folder + "/shop.korv"));
    QTRY_COMPARE(m_bench->window().windowTitle(), "shop (shop.korv) - Korvane");
}

void tst_project_window::damagedWhileOpen()
{
    m_bench->open();
    modal_driver driver({modal_driver::click(QMessageBox::Ok)});
    m_bench->write("shop.korv", QByteArray("no project any more ").repeated(20));
    QTRY_VERIFY(driver.isDone());
    QVERIFY2(driver.texts[0].startsWith(m_bench->file() + ": "), qPrintable(driver.texts[0]));
    QCOMPARE(shownEntities(*m_bench), (QStringList{"country", "person"}));
}

void tst_project_window::changedByAnotherProgram()
{
    m_bench->open();
    m_bench->tree().selectEntity(2);
    m_bench->import(QByteArray(ShopText).replace("\"person\"", "\"customer\""));
    QTRY_COMPARE(shownEntities(*m_bench), (QStringList{"country", "customer"}));
    QCOMPARE(m_bench->tree().selectedEntity(), 2L);
    QCOMPARE(m_bench->diagram().selectedEntity(), 2L);

    // By key at once.
    m_bench->import(QByteArray(ShopText).replace("\"person\"", "\"client\""));
    m_bench->press(Qt::Key_F5);
    QCOMPARE(shownEntities(*m_bench), (QStringList{"country", "client"}));
}

void tst_project_window::replacedByAnotherFile()
{
    m_bench->open();
    m_bench->write("new.json", QByteArray(ShopText).replace("\"person\"", "\"visitor\""));
    window_bench::run({"import", m_bench->path("new.json"), m_bench->path("new.korv")});
    QVERIFY(QFile::remove(m_bench->file()) && QFile::rename(m_bench->path("new.korv"), m_bench->file()));
    QTRY_COMPARE(shownEntities(*m_bench), (QStringList{"country", "visitor"}));
    // And the file that took its place is watched as well.
    m_bench->import(ShopText);
    QTRY_COMPARE(shownEntities(*m_bench), (QStringList{"country", "person"}));
}

void tst_project_window::otherVersionsLeaveTheViewAlone()
{
    m_bench->open();
    const QSignalSpy resets(m_bench->tree().findChild<QTreeView *>()->model(),
                            &QAbstractItemModel::modelReset);
    window_bench::run({"tag", m_bench->file()});
    m_bench->press(Qt::Key_F5);
    QTest::qWait(500);
    QCOMPARE(resets.size(), 0);
}

void tst_project_window::dropped()
{
    m_bench->show();
    const auto drop = [this](const QList<QUrl> & urls) {
        QMimeData data;
        data.setUrls(urls);
        QDragEnterEvent enter(QPoint(50, 50), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
        QCoreApplication::sendEvent(&m_bench->window(), &enter);
        if (!enter.isAccepted()) {
            return false;
        }
        QDropEvent event(QPointF(50, 50), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
        QCoreApplication::sendEvent(&m_bench->window(), &event);
        QCoreApplication::processEvents();
        return true;
    };
    const QUrl project = QUrl::fromLocalFile(m_bench->file());
    QVERIFY(!drop({}));
    QVERIFY(!drop({project, project}));
    QVERIFY(!drop({QUrl::fromLocalFile(m_bench->path("picture.png"))}));
    QVERIFY(!drop({QUrl("https://example.org/shop.korv")}));
    QVERIFY(drop({project}));
    QCOMPARE(m_bench->window().windowTitle(), "shop (shop.korv) - Korvane");

    modal_driver driver({modal_driver::key(Qt::Key_Escape)});
    QVERIFY(drop({QUrl::fromLocalFile(m_bench->path("shop.json"))}));
    QTRY_VERIFY(driver.isDone());
    QCOMPARE(driver.titles, QStringList{"Korvane - Import shop.json into the project file"});
}

void tst_project_window::droppedOnAPane()
{
    m_bench->open();
    const QString other = m_bench->path("other.korv");
    QVERIFY(QFile::copy(m_bench->file(), other));
    QMimeData data;
    data.setUrls({QUrl::fromLocalFile(other)});
    auto * const view = m_bench->diagram().findChild<QAbstractScrollArea *>()->viewport();
    QDragEnterEvent enter(QPoint(50, 50), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(view, &enter);
    QVERIFY(enter.isAccepted());
    QDropEvent event(QPointF(50, 50), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(view, &event);
    QTRY_COMPARE(m_bench->window().windowTitle(), "shop (other.korv) - Korvane");
}

void tst_project_window::namesAreNoMarkup()
{
    const QString file = m_bench->path("R&D/a <b>bold<i> & b.korv");
    QVERIFY(QDir().mkpath(m_bench->path("R&D")));
    QVERIFY(QFile::copy(m_bench->file(), file));
    m_bench->show();
    m_bench->window().openFile(file);
    const auto * const button = m_bench->find<QCommandLinkButton>("m_btnRecent");
    QCOMPARE(button->text(), "a <b>bold<i> && b.korv");
    QCOMPARE(button->accessibleName(), "a <b>bold<i> & b.korv");
    QCOMPARE(button->description(), m_bench->path("R&&D"));
    QCOMPARE(button->accessibleDescription(), m_bench->path("R&D"));
    QCOMPARE(shownTip(m_bench->find<QMenu>("m_mnuRecent")->actions()[0]->toolTip()), file);
    window_bench::run({"tag", file, "-m", "bugs & <i>features"});
    QString about;
    modal_driver versions({[&about](QWidget * w) {
        about = w->findChild<QTreeView *>()->model()->index(0, 0).data(Qt::ToolTipRole).toString();
        QTest::keyClick(w, Qt::Key_Escape);
    }});
    m_bench->action("m_actVersions")->trigger();
    QVERIFY(versions.isDone());
    QCOMPARE(shownTip(about), "bugs & <i>features");

    Qt::TextFormat format = Qt::AutoText;
    QString question;
    modal_driver driver(
        {modal_driver::file(m_bench->path("shop.json")), modal_driver::key(Qt::Key_Return), [&](QWidget * w) {
             const auto * const label = w->findChild<QLabel *>();
             format = label->textFormat();
             question = label->text();
             modal_driver::press(QDialogButtonBox::Cancel)(w);
         }});
    m_bench->action("m_actImport")->trigger();
    QVERIFY(driver.isDone());
    QCOMPARE(format, Qt::PlainText);
    QVERIFY2(question.contains(file), qPrintable(question));
}

void tst_project_window::savedTextIsWhatIsShown()
{
    m_bench->open();
    modal_driver driver({[this](QWidget * w) {
        m_bench->import(QByteArray(ShopText).replace("\"person\"", "\"customer\""));
        QTest::qWait(800);
        modal_driver::file(m_bench->path("saved.json"))(w);
    }});
    m_bench->action("m_actSaveText")->trigger();
    QVERIFY(driver.isDone());
    QCOMPARE(m_bench->content("saved.json"), window_bench::run({"dump", m_bench->file()}));
}

void tst_project_window::changeWhileItIsTagged()
{
    m_bench->open();
    modal_driver driver({[this](QWidget * w) {
        m_bench->import(QByteArray(ShopText).replace("\"person\"", "\"customer\""));
        QTest::keyClick(w, Qt::Key_Return);
    }});
    m_bench->action("m_actTag")->trigger();
    QVERIFY(driver.isDone());
    QTRY_COMPARE(shownEntities(*m_bench), (QStringList{"country", "customer"}));
}

void tst_project_window::removedWhileItIsTagged()
{
    m_bench->open();
    modal_driver driver({[this](QWidget * w) {
                             QVERIFY(QFile::remove(m_bench->file()));
                             QTest::keyClick(w, Qt::Key_Return);
                         },
                         modal_driver::click(QMessageBox::Ok)});
    m_bench->action("m_actTag")->trigger();
    QVERIFY(driver.isDone());
    QCOMPARE(driver.titles, (QStringList{"Korvane - Tag project state", "Korvane - Tag project state"}));
    QCOMPARE(m_bench->window().windowTitle(), "shop (shop.korv, cannot be read any more) - Korvane");
    QVERIFY(!QFile::exists(m_bench->file()));
}

void tst_project_window::noBusyCursorOverAWarning()
{
    m_bench->open();
    QStringList busy;
    const auto look = [&busy](QWidget * w) {
        if (QGuiApplication::overrideCursor()) {
            busy << w->windowTitle();
        }
        modal_driver::click(QMessageBox::Ok)(w);
    };
    // The folder of the name is removed while the dialog is asked.
    const QString folder = m_bench->path("folder");
    QVERIFY(QDir().mkpath(folder));
    m_bench->write("folder/x.json", "x");
    modal_driver saves({modal_driver::file(folder + "/x.json"),
                        [&folder](QWidget * w) {
                            QDir(folder).removeRecursively();
                            modal_driver::click(QMessageBox::Yes)(w);
                        },
                        look});
    m_bench->action("m_actSaveText")->trigger();
    QVERIFY(saves.isDone());
    std::unique_ptr<support::full_disk> full;
    modal_driver tags({[&full](QWidget * w) {
                           full = std::make_unique<support::full_disk>(40);
                           QTest::keyClick(w, Qt::Key_Return);
                       },
                       [&](QWidget * w) {
                           full.reset();
                           look(w);
                       }});
    m_bench->action("m_actTag")->trigger();
    QVERIFY(tags.isDone());
    QCOMPARE(busy, QStringList());
}

void tst_project_window::recentFilesOfTwoWindows()
{
    app::recent_files one;
    app::recent_files two;
    one.add("/a/one.korv");
    two.add("/a/two.korv");
    QCOMPARE(app::recent_files().files(), (QStringList{"/a/two.korv", "/a/one.korv"}));
    one.remove("/a/one.korv");
    QCOMPARE(app::recent_files().files(), QStringList{"/a/two.korv"});
}

void tst_project_window::recentFilesAreRemembered()
{
    const auto entries = [this] {
        QStringList texts;
        for (const QAction * const action : m_bench->find<QMenu>("m_mnuRecent")->actions()) {
            texts << action->text();
        }
        return texts;
    };
    m_bench->show();
    QCOMPARE(entries(), QStringList{"No recent projects"});
    m_bench->window().openFile(m_bench->file());
    const QString other = m_bench->path("other.korv");
    QVERIFY(QFile::copy(m_bench->file(), other));
    m_bench->window().openFile(other);
    m_bench->closeWindow();

    m_bench->show();
    QCOMPARE(entries(), (QStringList{"other.korv", "shop.korv", "", "&Clear this list"}));
    m_bench->find<QMenu>("m_mnuRecent")->actions()[1]->trigger();
    QCOMPARE(m_bench->window().windowTitle(), "shop (shop.korv) - Korvane");
    QCOMPARE(entries(), (QStringList{"shop.korv", "other.korv", "", "&Clear this list"}));

    // One that is not there any more is told and forgotten.
    QVERIFY(QFile::remove(other));
    modal_driver driver({modal_driver::click(QMessageBox::Ok)});
    m_bench->find<QMenu>("m_mnuRecent")->actions()[1]->trigger();
    QVERIFY(driver.isDone());
    QCOMPARE(entries(), (QStringList{"shop.korv", "", "&Clear this list"}));
    m_bench->action("m_actClearRecent")->trigger();
    QCOMPARE(entries(), QStringList{"No recent projects"});
}

void tst_project_window::recentFilesAreFew()
{
    app::recent_files recent;
    for (int i = 1; i <= 12; ++i) {
        recent.add(QStringLiteral("/%1.korv").arg(i));
    }
    const QStringList newest{"/12.korv", "/11.korv", "/10.korv", "/9.korv", "/8.korv",
                             "/7.korv",  "/6.korv",  "/5.korv",  "/4.korv", "/3.korv"};
    QCOMPARE(recent.files(), newest);
    QCOMPARE(app::recent_files().files(), newest);
}

void tst_project_window::layoutIsRemembered()
{
    m_bench->show();
    m_bench->window().resize(901, 702);
    m_bench->find<QDockWidget>("m_pMessageDock")->hide();
    m_bench->window().addDockWidget(Qt::RightDockWidgetArea, m_bench->find<QDockWidget>("m_pTreeDock"));
    m_bench->closeWindow();
    m_bench->show();
    QCOMPARE(m_bench->window().size(), QSize(901, 702));
    QVERIFY(!m_bench->find<QDockWidget>("m_pMessageDock")->isVisible());
    QCOMPARE(m_bench->window().dockWidgetArea(m_bench->find<QDockWidget>("m_pTreeDock")),
             Qt::RightDockWidgetArea);
}

void tst_project_window::firstLayoutFitsTheScreen()
{
    m_bench->show();
    const QSize screen = m_bench->window().screen()->availableSize();
    const QSize size = m_bench->window().size();
    QVERIFY2(size.width() <= screen.width() && size.height() <= screen.height(),
             qPrintable(QStringLiteral("%1 x %2").arg(size.width()).arg(size.height())));
}

void tst_project_window::manualAndAbout()
{
    m_bench->show();
    support::browser browser;
    m_bench->press(Qt::Key_F1);
    QCOMPARE(browser.opened.size(), 1);
    QFile page(browser.opened[0].toLocalFile());
    QVERIFY2(page.open(QIODevice::ReadOnly), qPrintable(page.fileName()));
    const QByteArray text = page.readAll();
    QVERIFY(text.contains("<h1>Manual</h1>"));

    // The dialog of the plug-in leads to its own place.
    m_bench->window().openFile(m_bench->file());
    modal_driver settings({[](QWidget * w) {
        QTest::mouseClick(w->findChild<QWidget *>("m_btnHelpManual"), Qt::LeftButton);
        QTest::keyClick(w, Qt::Key_Escape);
    }});
    m_bench->action("m_actSettings_KorvGenericDDLExport")->trigger();
    QVERIFY(settings.isDone());
    QCOMPARE(browser.opened.size(), 2);
    QCOMPARE(browser.opened[1].toLocalFile(), page.fileName());
    QCOMPARE(browser.opened[1].fragment(), "ddl_export_settings");
    QVERIFY(text.contains("<a id=\"ddl_export_settings\"></a>"));

    modal_driver driver({modal_driver::click(QMessageBox::Ok)});
    m_bench->action("m_actAbout")->trigger();
    QVERIFY(driver.isDone());
    QVERIFY2(driver.texts[0].contains("Korvane 1.1.7") &&
                 driver.texts[0].contains("KorvGenericDDLExport 1.1.7"),
             qPrintable(driver.texts[0]));
}

void tst_project_window::manualWithoutABrowser()
{
    m_bench->show();
    modal_driver driver({modal_driver::click(QMessageBox::Ok)});
    m_bench->press(Qt::Key_F1);
    QVERIFY(driver.isDone());
    QCOMPARE(driver.titles, QStringList{"Korvane - Manual"});
    const QString file = driver.texts[0].section(QLatin1String("in a browser: "), 1);
    QVERIFY2(driver.texts[0].startsWith("The manual could not be opened. Open this file in a browser: ") &&
                 QFile::exists(file),
             qPrintable(driver.texts[0]));
}

void tst_project_window::pluginsInTheMenu()
{
    m_bench->open();
    auto * const menu = m_bench->find<QMenu>("m_mnuExport");
    QCOMPARE(menu->title(), "&Export");
    QCOMPARE(menu->actions().size(), 4);
    QVERIFY(menu->actions()[0]->isSeparator());
    QCOMPARE(menu->actions()[0]->text(), "KorvGenericDDLExport");
    QCOMPARE(menu->actions()[1]->text(), "Export to DDL SQL script file");
    QVERIFY(!menu->actions()[1]->icon().isNull());
    QVERIFY(menu->actions()[1]->toolTip().contains(
        "This plugin exports current opened project to a DDL SQL script file."));
    QCOMPARE(menu->actions()[2]->text(), "&Check");
    QCOMPARE(menu->actions()[3]->text(), "&Settings…");

    // The settings are stored in the project.
    modal_driver driver({[this](QWidget * w) {
        w->findChild<QLineEdit *>("m_txtFileLocation")->setText(m_bench->path());
        auto * const databases = w->findChild<QComboBox *>("m_cboDatabaseType");
        databases->setCurrentIndex(databases->findText("Oracle"));
        QTest::mouseClick(w->findChild<QWidget *>("m_btnOk"), Qt::LeftButton);
    }});
    menu->actions()[3]->trigger();
    QVERIFY(driver.isDone());
    window_bench::run({"export", m_bench->file()});
    QVERIFY(QFile::exists(m_bench->path("shop_oracle_db_schema_full.sql")));
}

void tst_project_window::pluginThatCannotBeLoaded()
{
    QDir().mkpath(m_bench->path("plugins"));
    m_bench->write("plugins/broken.so", "no plug-in");
    qputenv("KORVANE_PLUGIN_PATH", QFile::encodeName(m_bench->path("plugins")));
    m_bench->show();
    QTRY_VERIFY2(m_bench->told().contains("broken.so"), qPrintable(m_bench->told()));
    QVERIFY(m_bench->messages().errorCount() > 0);
}

void tst_project_window::noPlugin()
{
    const QString folder = m_bench->path("R&D");
    QVERIFY(QDir().mkpath(folder));
    qputenv("KORVANE_PLUGIN_PATH", QFile::encodeName(folder));
    const app::export_menu menu(app::found_plugins(), nullptr);
    QCOMPARE(menu.actions().size(), 1);
    const QAction * const none = menu.actions().constFirst();
    QCOMPARE(none->text(), "No plugin was found");
    QVERIFY(!none->isEnabled());
    // Where one would be looked for.
    QTextDocument tip;
    tip.setHtml(none->toolTip());
    QVERIFY2(tip.toPlainText().contains(folder), qPrintable(tip.toPlainText()));
}

/// A disk that spoils a block says nothing of it: the file looks as it did when it was read.
void tst_project_window::versionsThatCannotBeRead()
{
    window_bench::run({"tag", m_bench->file()});
    m_bench->open();
    const QDateTime changed = QFileInfo(m_bench->file()).lastModified();
    QVERIFY(support::spoilTable(m_bench->file(), "t_project_tag"));
    QFile file(m_bench->file());
    QVERIFY(file.open(QIODevice::ReadWrite) && file.setFileTime(changed, QFileDevice::FileModificationTime));
    file.close();
    const QByteArray before = m_bench->content("shop.korv");
    for (const char * const command : {"m_actTag", "m_actVersions"}) {
        modal_driver driver({modal_driver::click(QMessageBox::Ok)});
        m_bench->action(command)->trigger();
        QVERIFY(driver.isDone());
        QVERIFY2(
            driver.texts.constFirst().startsWith(m_bench->file() + ": is damaged (table t_project_tag: "),
            qPrintable(driver.texts.constFirst()));
    }
    QCOMPARE(m_bench->content("shop.korv"), before);
}

void tst_project_window::everyControlHasAName()
{
    m_bench->open();
    QCOMPARE(nameless(m_bench->window()), QString());
    const auto look = [](QWidget * dialog) {
        QCOMPARE(nameless(*dialog), QString());
        QTest::keyClick(dialog, Qt::Key_Escape);
    };
    modal_driver driver({look, look});
    m_bench->action("m_actTag")->trigger();
    m_bench->action("m_actVersions")->trigger();
    QVERIFY(driver.isDone());
}

void tst_project_window::keyboardReachesEveryControl()
{
    m_bench->open();
    QCoreApplication::processEvents();
    QSet<QWidget *> reached;
    for (int i = 0; i < 100; ++i) {
        QTest::keyClick(QApplication::focusWidget() ? QApplication::focusWidget() : &m_bench->window(),
                        Qt::Key_Tab);
        reached.insert(QApplication::focusWidget());
    }
    QStringList missed;
    for (QWidget * const widget : m_bench->window().findChildren<QWidget *>()) {
        if ((widget->focusPolicy() & Qt::TabFocus) == Qt::TabFocus && widget->isVisible() &&
            widget->isEnabled() && !widget->focusProxy() && !reached.contains(widget)) {
            missed << QString("%1 %2").arg(widget->metaObject()->className(), widget->objectName());
        }
    }
    QCOMPARE(missed.join(QLatin1Char('\n')), QString());
}

void tst_project_window::panesByKeyboard()
{
    m_bench->open();
    m_bench->find<QDockWidget>("m_pTreeDock")->hide();
    // The keyboard begins in what the pane is there to show.
    const auto isIn = [](QWidget & pane) {
        return pane.isVisible() && qobject_cast<QAbstractScrollArea *>(QApplication::focusWidget()) &&
               pane.isAncestorOf(QApplication::focusWidget());
    };
    m_bench->press(Qt::Key_3, Qt::AltModifier);
    QVERIFY(m_bench->scripts().isVisible());
    m_bench->press(Qt::Key_1, Qt::AltModifier);
    QVERIFY(isIn(m_bench->tree()));
    m_bench->press(Qt::Key_2, Qt::AltModifier);
    QVERIFY(isIn(m_bench->diagram()));
    m_bench->press(Qt::Key_4, Qt::AltModifier);
    QVERIFY(isIn(m_bench->messages()));
}

void tst_project_window::goesWhileADialogIsShown_data()
{
    QTest::addColumn<QString>("action");
    QTest::addColumn<bool>("isFileGone");
    for (const char * const action :
         {"m_actOpen", "m_actImport", "m_actSaveText", "m_actTag", "m_actVersions", "m_actAbout"}) {
        QTest::newRow(action) << action << false;
    }
    QTest::newRow("a warning") << "m_actTag" << true;
}

void tst_project_window::goesWhileADialogIsShown()
{
    QFETCH(QString, action);
    QFETCH(bool, isFileGone);
    m_bench->open();
    if (isFileGone) {
        QVERIFY(QFile::remove(m_bench->file()));
    }
    modal_driver driver({[this](QWidget *) { m_bench->closeWindow(); }});
    m_bench->action(action.toLatin1().constData())->trigger();
    QVERIFY(driver.isDone());
    QVERIFY(!QApplication::activeModalWidget());
}

QTEST_MAIN(tst_project_window)
#include "tst_project_window.moc"
