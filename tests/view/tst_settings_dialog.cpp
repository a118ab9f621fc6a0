// The settings dialog, its widgets found by name and used by keys and clicks.

#include "view/ddl_export_settings.h"

#include "support/browser.h"
#include "support/message_box_answerer.h"
#include "support/stored_project.h"

#include "plugin/ddl_export.h"

#include "context/ctx_global.h"
#include "tools/custom_javascript.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDir>
#include <QFileDialog>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QScrollArea>
#include <QScrollBar>
#include <QSqlQuery>
#include <QTableWidget>
#include <QTest>

using plugin::ddl_export;

namespace {

const char * const T1 =
    "<html><head/><body><p><span style=\" font-weight:600; text-decoration: underline;\">Note :</span> you "
    "can put in this field a relative path to your Korvane project file (<span style=\" "
    "font-style:italic;\">*.korv</span> file).</p></body></html>";
const char * const T2 = "<html><head/><body><p><span style=\" font-weight:600;\">Note :</span> to tag the "
                        "project and create a new project version, go to Korvane main menu : &quot;Actions "
                        "&gt;&gt; Tag project state&quot;.</p></body></html>";
const char * const T3 =
    "<html><head/><body><p><span style=\" font-weight:600;\">Note :</span> to change the default behaviour "
    "of the export process, you can write your own custom javascript file.<br/>There is a custom javascript "
    "example file in the <span style=\" font-style:italic;\">./samples/</span> directory of Korvane package "
    "(<span style=\" font-style:italic;\">./samples/custom_script.js</span>).<br/>You can open this example "
    "file to have more details about how to implement your own custom javascript file.</p></body></html>";

/// The dialog on a plug-in with a stored project.
struct fixture
{
    fixture() = default;
    explicit fixture(const std::function<void(ddl_export &)> & prepare)
    {
        prepare(plugin);
        if (plugin.saveSettings().isValid()) {
            qFatal("the settings of the test could not be stored");
        }
    }
    /// Shows the dialog as showSettings() does, without running it.
    void open()
    {
        dialog = std::make_unique<view::ddl_export_settings>();
        dialog->init(&plugin);
        dialog->show();
        QVERIFY(QTest::qWaitForWindowExposed(dialog.get()));
    }
    template <class W>
    [[nodiscard]] W * child(const char * name) const
    {
        W * const w = dialog->findChild<W *>(QString::fromLatin1(name));
        if (!w) {
            qFatal("no widget %s", name);
        }
        return w;
    }
    void click(const char * name) const { QTest::mouseClick(child<QPushButton>(name), Qt::LeftButton); }
    [[nodiscard]] QLineEdit * folder() const { return child<QLineEdit>("m_txtFileLocation"); }
    [[nodiscard]] QLineEdit * script() const { return child<QLineEdit>("m_txtCustomScript"); }
    [[nodiscard]] QComboBox * database() const { return child<QComboBox>("m_cboDatabaseType"); }
    [[nodiscard]] QLineEdit * cell(int row, int column) const
    {
        return qobject_cast<QLineEdit *>(child<QTableWidget>("m_lstTypeMapping")->cellWidget(row, column));
    }
    [[nodiscard]] QString sqlTypeOf(const QString & cppType) const
    {
        const int rows = child<QTableWidget>("m_lstTypeMapping")->rowCount();
        for (int row = 0; row < rows; ++row) {
            if (cell(row, 2)->text() == cppType) {
                return cell(row, 3)->text();
            }
        }
        return QStringLiteral("(none)");
    }

    support::stored_project stored;
    ddl_export plugin;
    std::unique_ptr<view::ddl_export_settings> dialog;
};

/// Answers a file dialog with `choice`; an empty one cancels.
class file_dialog_answerer
{
public:
    explicit file_dialog_answerer(const QString & choice)
    {
        m_timer.setInterval(10);
        QObject::connect(&m_timer, &QTimer::timeout, &m_timer, [this, choice] {
            auto * const d = qobject_cast<QFileDialog *>(QApplication::activeModalWidget());
            if (!d) {
                return;
            }
            m_timer.stop();
            asked = true;
            startedIn = d->directory().absolutePath();
            mode = d->fileMode();
            onlyFolders = d->testOption(QFileDialog::ShowDirsOnly);
            nativeAllowed = !d->testOption(QFileDialog::DontUseNativeDialog);
            if (choice.isEmpty()) {
                d->reject();
                return;
            }
            d->findChild<QLineEdit *>(QStringLiteral("fileNameEdit"))->setText(choice);
            static_cast<QDialog *>(d)->accept();
        });
        m_timer.start();
    }
    bool asked = false;
    QString startedIn;
    QFileDialog::FileMode mode = QFileDialog::AnyFile;
    bool onlyFolders = false;
    bool nativeAllowed = false;

private:
    QTimer m_timer;
};

} // namespace

class tst_settings_dialog : public QObject
{
    Q_OBJECT

private slots:
    void texts_data();
    void texts();
    void tooltips();
    void groupBoxes();
    void titlesAreLegibleOnADarkWindow();
    void icons();
    void databases();
    void labelsLeadToTheirFields();
    void keyboardOrder();
    void showsTheStoredSettings();
    void showsSchema_data();
    void showsSchema();
    void withoutPlugin();
    void genericDatabaseSelectsNothing();
    void okStoresEverything();
    void okKeepsSeparatorsNeutral();
    void missingFolderKeepsTheDialogOpen_data();
    void missingFolderKeepsTheDialogOpen();
    void relativeFolderOfTheProjectIsTaken();
    void missingScriptKeepsTheDialogOpen();
    void failedSaveKeepsTheDialogOpen();
    void changingTheDatabaseDropsTableEdits();
    void restoreShowsDefaultsAndOkStoresThem();
    void cancelStoresNothing();
    void escapeRejects();
    void returnDoesNotCloseTheDialog();
    void folderPicker();
    void folderPickerStartsAtExistingFolder();
    void scriptPicker();
    void helpButtonAndF1();
    void debugNeedsAScript();
    void debugNeedsAnExistingScript();
    void debugReportsTheEngine();
    void debuggerThatDoesNotStartIsNotAttached();
    void resizingSharesTheTable();
    void fitsASmallScreen();
    void showSettingsTellsWhetherItWasAccepted();
};

void tst_settings_dialog::texts_data()
{
    QTest::addColumn<QByteArray>("name");
    QTest::addColumn<QString>("text");
    const std::pair<const char *, const char *> rows[] = {
        {"m_lblFileLocation", "File location :"},
        {"m_btnFileLocation", "..."},
        {"m_lblDatabaseType", "Database type :"},
        {"m_lblRelationships", "Relationships :"},
        {"m_chkRelationships", "Export relationships as foreign keys in database"},
        {"m_lblSchema", "Schema :"},
        {"m_optSchemaFull", "Build full database schema into 1 DDL SQL script"},
        {"m_optSchemaEvolution",
         "Build database schema evolution : 1 DDL SQL script file per project version"},
        {"m_optSchemaFullAndEvolution", "Build full database schema + schema evolution"},
        {"m_btnRestoreDefaultTypeMapping", "Restore default type mapping"},
        {"m_lblCustomScriptDetails", T3},
        {"m_lblCustomScript", "Custom script file :"},
        {"m_btnCustomScriptLocation", "..."},
        {"m_btnDebugCustomScript", "Debug custom javascript file"},
        {"m_btnHelpManual", ""},
        {"m_btnOk", "Ok"},
        {"m_btnCancel", "Cancel"}};
    for (const auto & [name, text] : rows) {
        QTest::newRow(name) << QByteArray(name) << QString::fromUtf8(text);
    }
}

void tst_settings_dialog::texts()
{
    QFETCH(QByteArray, name);
    QFETCH(QString, text);
    fixture f;
    f.open();
    QCOMPARE(f.child<QWidget>(name.constData())->property("text").toString(), text);
}

void tst_settings_dialog::tooltips()
{
    fixture f;
    f.open();
    QCOMPARE(f.folder()->toolTip(), QString::fromUtf8(T1));
    QCOMPARE(f.script()->toolTip(), QString::fromUtf8(T1));
    QCOMPARE(f.child<QRadioButton>("m_optSchemaFull")->toolTip(), QString());
    QCOMPARE(f.child<QRadioButton>("m_optSchemaEvolution")->toolTip(), QString::fromUtf8(T2));
    QCOMPARE(f.child<QRadioButton>("m_optSchemaFullAndEvolution")->toolTip(), QString::fromUtf8(T2));
    QCOMPARE(f.child<QPushButton>("m_btnHelpManual")->toolTip(),
             QStringLiteral("Documentation - Manual - User guide"));
}

void tst_settings_dialog::groupBoxes()
{
    fixture f;
    f.open();
    const std::pair<const char *, const char *> boxes[] = {
        {"m_grpDDLExportSettings", "DDL export settings"},
        {"m_grpTypeMapping", "Mapping C++ type to database SQL type (34)"},
        {"m_grpCustomScript",
         "Custom script (javascript file) to change the default behaviour of the export process"}};
    for (const auto & [name, title] : boxes) {
        QCOMPARE(f.child<QGroupBox>(name)->title(), QString::fromUtf8(title));
        QCOMPARE(f.child<QGroupBox>(name)->styleSheet(),
                 QStringLiteral("QGroupBox::title{color:rgb(0, 0, 255)}"));
    }
    for (const char * layout : {"verticalLayout", "verticalLayout_1", "gridLayout", "verticalLayout_2",
                                "gridLayout_3", "verticalLayout_11", "gridLayout_11", "gridLayout_2"}) {
        QVERIFY2(f.dialog->findChild<QLayout *>(QString::fromLatin1(layout)), layout);
    }
    view::ddl_export_settings untouched;
    QCOMPARE(untouched.size(), QSize(653, 651));
}

void tst_settings_dialog::titlesAreLegibleOnADarkWindow()
{
    const QPalette before = QApplication::palette();
    QPalette dark = before;
    dark.setColor(QPalette::Window, QColor(45, 47, 50));
    QApplication::setPalette(dark);
    const view::ddl_export_settings dialog;
    QApplication::setPalette(before);
    const QList<QGroupBox *> boxes = dialog.findChildren<QGroupBox *>();
    QCOMPARE(boxes.size(), 3);
    for (const QGroupBox * const box : boxes) {
        QCOMPARE(box->styleSheet(), QStringLiteral("QGroupBox::title{color:rgb(120, 170, 255)}"));
    }
}

void tst_settings_dialog::icons()
{
    fixture f;
    f.open();
    const std::pair<const char *, const char *> buttons[] = {
        {"m_btnRestoreDefaultTypeMapping", "default_list"},
        {"m_btnDebugCustomScript", "debug"},
        {"m_btnHelpManual", "help_manual"},
        {"m_btnOk", "ok"},
        {"m_btnCancel", "cancel"}};
    for (const auto & [button, image] : buttons) {
        const QString file = QStringLiteral(":/ddl_export/images/%1.png").arg(QLatin1String(image));
        const QSize size = QImage(file).size();
        QVERIFY(!size.isEmpty());
        QCOMPARE(f.child<QPushButton>(button)->icon().pixmap(size).toImage(),
                 QIcon(file).pixmap(size).toImage());
    }
}

void tst_settings_dialog::databases()
{
    fixture f;
    f.open();
    const QComboBox * const combo = f.database();
    const std::pair<const char *, int> items[] = {
        {"SQLite", 1}, {"MySQL", 2}, {"PostgreSQL", 3}, {"Oracle", 4}, {"MS SQL Server", 5}};
    QCOMPARE(combo->count(), 5);
    for (int i = 0; i < 5; ++i) {
        QCOMPARE(combo->itemText(i), QString::fromUtf8(items[i].first));
        QCOMPARE(combo->itemData(i, Qt::UserRole).toInt(), items[i].second);
        QVERIFY(combo->itemIcon(i).isNull());
    }
}

void tst_settings_dialog::labelsLeadToTheirFields()
{
    fixture f;
    f.open();
    const std::pair<const char *, const char *> buddies[] = {{"m_lblFileLocation", "m_txtFileLocation"},
                                                             {"m_lblDatabaseType", "m_cboDatabaseType"},
                                                             {"m_lblRelationships", "m_chkRelationships"},
                                                             {"m_lblSchema", "m_optSchemaFull"},
                                                             {"m_lblCustomScript", "m_txtCustomScript"}};
    for (const auto & [label, field] : buddies) {
        QCOMPARE(f.child<QLabel>(label)->buddy(), f.child<QWidget>(field));
    }
    for (const QWidget * const w : f.dialog->findChildren<QWidget *>()) {
        if (w->objectName().startsWith(QStringLiteral("m_")) && w->focusPolicy() != Qt::NoFocus) {
            const bool named = !w->accessibleName().isEmpty() ||
                               !w->property("text").toString().remove(QLatin1Char('.')).isEmpty();
            QVERIFY2(named, qPrintable(w->objectName()));
        }
    }
}

void tst_settings_dialog::keyboardOrder()
{
    fixture f;
    f.open();
    const QStringList expected = {"m_txtFileLocation",
                                  "m_btnFileLocation",
                                  "m_cboDatabaseType",
                                  "m_chkRelationships",
                                  "m_optSchemaFull",
                                  "m_optSchemaEvolution",
                                  "m_optSchemaFullAndEvolution",
                                  "m_lstTypeMapping",
                                  "m_btnRestoreDefaultTypeMapping",
                                  "m_txtCustomScript",
                                  "m_btnCustomScriptLocation",
                                  "m_btnDebugCustomScript",
                                  "m_btnHelpManual",
                                  "m_btnOk",
                                  "m_btnCancel"};
    QStringList order;
    const QWidget * const first = f.folder();
    for (const QWidget * w = first; order.isEmpty() || w != first; w = w->nextInFocusChain()) {
        if (expected.contains(w->objectName())) {
            order.append(w->objectName());
        }
    }
    QCOMPARE(order, expected);
}

void tst_settings_dialog::showsTheStoredSettings()
{
    fixture f([](ddl_export & p) {
        p.setDDLExportPath(QStringLiteral("out/sql"));
        p.setDatabaseType(ddl_export::db_postgresql);
        p.setCustomScriptFile(QStringLiteral("hooks/hook.js"));
        p.setExportRelationships(true);
        p.setExportDatabaseSchema(ddl_export::full_and_evolution);
    });
    f.plugin.clearSettings();
    f.open();
    QCOMPARE(f.folder()->text(), QStringLiteral("out/sql"));
    QCOMPARE(f.database()->currentText(), QStringLiteral("PostgreSQL"));
    QCOMPARE(f.script()->text(), QStringLiteral("hooks/hook.js"));
    QVERIFY(f.child<QCheckBox>("m_chkRelationships")->isChecked());
    QVERIFY(f.child<QRadioButton>("m_optSchemaFullAndEvolution")->isChecked());
    QCOMPARE(f.sqlTypeOf(QStringLiteral("QByteArray")), QStringLiteral("BYTEA"));
}

void tst_settings_dialog::showsSchema_data()
{
    QTest::addColumn<int>("schema");
    QTest::addColumn<QString>("checked");
    QTest::addColumn<int>("stored");
    QTest::newRow("full") << 0 << "m_optSchemaFull" << 0;
    QTest::newRow("evolution") << 1 << "m_optSchemaEvolution" << 1;
    QTest::newRow("both") << 2 << "m_optSchemaFullAndEvolution" << 2;
    QTest::newRow("unknown") << 8 << "" << 0;
}

void tst_settings_dialog::showsSchema()
{
    QFETCH(int, schema);
    QFETCH(QString, checked);
    QFETCH(int, stored);
    fixture f([schema](ddl_export & p) {
        p.setExportDatabaseSchema(static_cast<ddl_export::export_db_schema>(schema));
    });
    f.open();
    for (const QRadioButton * const option : f.dialog->findChildren<QRadioButton *>()) {
        QCOMPARE(option->isChecked(), option->objectName() == checked);
    }
    f.folder()->setText(f.stored.path());
    f.click("m_btnOk");
    QCOMPARE(static_cast<int>(f.plugin.getExportDatabaseSchema()), stored);
}

void tst_settings_dialog::withoutPlugin()
{
    view::ddl_export_settings dialog;
    dialog.init(nullptr);
    QVERIFY(dialog.findChild<QRadioButton *>(QStringLiteral("m_optSchemaFull"))->isChecked());
    QVERIFY(dialog.findChild<QLineEdit *>(QStringLiteral("m_txtFileLocation"))->text().isEmpty());
    QVERIFY(!dialog.findChild<QCheckBox *>(QStringLiteral("m_chkRelationships"))->isChecked());
    dialog.findChild<QComboBox *>(QStringLiteral("m_cboDatabaseType"))->setCurrentIndex(2);
    QCOMPARE(dialog.findChild<QTableWidget *>(QStringLiteral("m_lstTypeMapping"))->rowCount(), 0);
    dialog.show();
    const support::message_box_answerer answerer;
    QTest::mouseClick(dialog.findChild<QPushButton *>(QStringLiteral("m_btnOk")), Qt::LeftButton);
    QCOMPARE(answerer.asked, 0);
    QVERIFY(dialog.isVisible());
}

void tst_settings_dialog::genericDatabaseSelectsNothing()
{
    fixture f([](ddl_export & p) { p.setDatabaseType(ddl_export::db_default); });
    f.open();
    QCOMPARE(f.database()->currentIndex(), -1);
    f.folder()->setText(f.stored.path());
    f.click("m_btnOk");
    QVERIFY(!f.dialog->isVisible());
    QCOMPARE(static_cast<int>(f.plugin.getDatabaseType()), 0);
}

void tst_settings_dialog::okStoresEverything()
{
    fixture f;
    f.open();
    QFile script(f.stored.path(QStringLiteral("hook.js")));
    QVERIFY(script.open(QIODevice::WriteOnly));
    script.close();
    QTest::keyClicks(f.folder(), f.stored.path());
    f.database()->setCurrentIndex(3);
    QTest::mouseClick(f.child<QRadioButton>("m_optSchemaEvolution"), Qt::LeftButton, {}, QPoint(5, 5));
    QTest::keyClick(f.child<QCheckBox>("m_chkRelationships"), Qt::Key_Space);
    QTest::keyClicks(f.script(), QStringLiteral("hook.js"));
    QCOMPARE(f.cell(4, 2)->text(), QStringLiteral("int"));
    f.cell(4, 3)->clear();
    QTest::keyClicks(f.cell(4, 3), QStringLiteral("NUMBER(9)"));
    f.click("m_btnOk");
    QVERIFY(!f.dialog->isVisible());
    QCOMPARE(f.dialog->result(), static_cast<int>(QDialog::Accepted));

    ddl_export loaded;
    QVERIFY(!loaded.loadSettings().isValid());
    QCOMPARE(loaded.getDDLExportPath(false), f.stored.path());
    QCOMPARE(static_cast<int>(loaded.getDatabaseType()), 4);
    QCOMPARE(static_cast<int>(loaded.getExportDatabaseSchema()), 1);
    QVERIFY(loaded.getExportRelationships());
    QCOMPARE(loaded.getCustomScriptFile(), QStringLiteral("hook.js"));
    const auto list = loaded.getListTypeMappingByDb(ddl_export::db_oracle);
    QCOMPARE(list.count(), 34L);
    QCOMPARE(list.getByKey(QStringLiteral("int")), QStringLiteral("NUMBER(9)"));
}

void tst_settings_dialog::okKeepsSeparatorsNeutral()
{
    fixture f;
    f.open();
    f.folder()->setText(QDir::toNativeSeparators(f.stored.path()));
    f.click("m_btnOk");
    QCOMPARE(f.plugin.getDDLExportPath(false), f.stored.path());
}

void tst_settings_dialog::missingFolderKeepsTheDialogOpen_data()
{
    QTest::addColumn<QString>("typed");
    QTest::newRow("missing") << "no/such/folder";
    QTest::newRow("empty") << "";
    QTest::newRow("a file") << "shop.korv";
}

void tst_settings_dialog::missingFolderKeepsTheDialogOpen()
{
    QFETCH(QString, typed);
    fixture f;
    f.open();
    f.folder()->setText(typed);
    f.database()->setCurrentIndex(2);
    const support::message_box_answerer answerer;
    f.click("m_btnOk");
    QCOMPARE(answerer.asked, 1);
    QCOMPARE(answerer.title, QStringLiteral("KorvGenericDDLExport"));
    QCOMPARE(answerer.text, QStringLiteral("Directory doesn't exist : '") + typed + QStringLiteral("'"));
    QCOMPARE(answerer.icon, QMessageBox::Warning);
    QCOMPARE(answerer.buttons, QMessageBox::StandardButtons(QMessageBox::Ok));
    QVERIFY(f.dialog->isVisible());
    QCOMPARE(static_cast<int>(f.plugin.getDatabaseType()), 1);
}

void tst_settings_dialog::relativeFolderOfTheProjectIsTaken()
{
    fixture f;
    f.open();
    QVERIFY(QDir(f.stored.path()).mkdir(QStringLiteral("beside_the_project")));
    QVERIFY(!QDir(QStringLiteral("beside_the_project")).exists());
    f.folder()->setText(QStringLiteral("beside_the_project"));
    const support::message_box_answerer answerer;
    f.click("m_btnOk");
    QCOMPARE(answerer.asked, 0);
    QVERIFY(!f.dialog->isVisible());
    QCOMPARE(f.plugin.getDDLExportPath(false), QStringLiteral("beside_the_project"));
}

void tst_settings_dialog::missingScriptKeepsTheDialogOpen()
{
    fixture f;
    f.open();
    f.folder()->setText(f.stored.path());
    f.script()->setText(QStringLiteral("no.js"));
    const support::message_box_answerer answerer;
    f.click("m_btnOk");
    QCOMPARE(answerer.asked, 1);
    QCOMPARE(answerer.text, QStringLiteral("Custom script file doesn't exist : 'no.js'"));
    QVERIFY(f.dialog->isVisible());
    QCOMPARE(f.plugin.getDDLExportPath(false), QString());
}

void tst_settings_dialog::failedSaveKeepsTheDialogOpen()
{
    fixture f;
    f.open();
    {
        QSqlDatabase db = context::ctx_project::getSingleton().getDatabase();
        QVERIFY(QSqlQuery(db).exec(QStringLiteral("DROP TABLE t_plugin_params")));
    }
    f.folder()->setText(f.stored.path());
    const support::message_box_answerer answerer;
    f.click("m_btnOk");
    QCOMPARE(answerer.asked, 1);
    QVERIFY2(answerer.text.startsWith(QStringLiteral("Error saving plugin settings : ")),
             qPrintable(answerer.text));
    QVERIFY(answerer.text.contains(QStringLiteral("t_plugin_params")));
    QVERIFY(f.dialog->isVisible());
    QCOMPARE(f.plugin.getDDLExportPath(false), f.stored.path());
}

void tst_settings_dialog::changingTheDatabaseDropsTableEdits()
{
    fixture f;
    f.open();
    QCOMPARE(f.database()->currentText(), QStringLiteral("SQLite"));
    f.cell(1, 3)->setText(QStringLiteral("EDITED"));
    f.database()->setCurrentIndex(1);
    QCOMPARE(f.sqlTypeOf(QStringLiteral("QByteArray")), QStringLiteral("LONGBLOB"));
    f.folder()->setText(f.stored.path());
    f.click("m_btnOk");
    ddl_export loaded;
    QVERIFY(!loaded.loadSettings().isValid());
    QCOMPARE(loaded.getListTypeMappingByDb(ddl_export::db_sqlite).getByKey(QStringLiteral("bool")),
             QStringLiteral("SMALLINT"));
    QCOMPARE(static_cast<int>(loaded.getDatabaseType()), 2);
}

void tst_settings_dialog::restoreShowsDefaultsAndOkStoresThem()
{
    fixture f([](ddl_export & p) {
        p.setDatabaseType(ddl_export::db_postgresql);
        ddl_export::type_mapping list;
        list.insert(QStringLiteral("<default type>"), QStringLiteral("VARCHAR(9)"));
        p.setListTypeMappingByDb(ddl_export::db_postgresql, list);
    });
    f.open();
    QCOMPARE(f.child<QTableWidget>("m_lstTypeMapping")->rowCount(), 2);
    f.click("m_btnRestoreDefaultTypeMapping");
    QCOMPARE(f.child<QTableWidget>("m_lstTypeMapping")->rowCount(), 35);
    QCOMPARE(f.sqlTypeOf(QStringLiteral("<default type>")), QStringLiteral("TEXT"));
    QCOMPARE(f.sqlTypeOf(QStringLiteral("bool")), QStringLiteral("BOOLEAN"));
    f.folder()->setText(f.stored.path());
    f.click("m_btnOk");
    ddl_export loaded;
    QVERIFY(!loaded.loadSettings().isValid());
    QCOMPARE(loaded.getListTypeMappingByDb(ddl_export::db_postgresql).count(), 34L);
}

void tst_settings_dialog::cancelStoresNothing()
{
    fixture f;
    f.open();
    f.folder()->setText(f.stored.path());
    f.database()->setCurrentIndex(4);
    f.click("m_btnCancel");
    QVERIFY(!f.dialog->isVisible());
    QCOMPARE(f.dialog->result(), static_cast<int>(QDialog::Rejected));
    QCOMPARE(static_cast<int>(f.plugin.getDatabaseType()), 1);
    QCOMPARE(f.plugin.getDDLExportPath(false), QString());
}

void tst_settings_dialog::escapeRejects()
{
    fixture f;
    f.open();
    f.folder()->setText(f.stored.path());
    QTest::keyClick(f.dialog.get(), Qt::Key_Escape);
    QVERIFY(!f.dialog->isVisible());
    QCOMPARE(f.plugin.getDDLExportPath(false), QString());
}

void tst_settings_dialog::returnDoesNotCloseTheDialog()
{
    fixture f;
    f.open();
    f.folder()->setText(f.stored.path());
    f.cell(1, 3)->setFocus();
    QTest::keyClick(f.cell(1, 3), Qt::Key_Return);
    QVERIFY(f.dialog->isVisible());
    QTest::keyClick(f.folder(), Qt::Key_Return);
    QVERIFY(f.dialog->isVisible());
}

void tst_settings_dialog::folderPicker()
{
    fixture f;
    f.open();
    f.folder()->setText(QStringLiteral("no/such/folder"));
    {
        const file_dialog_answerer answerer(f.stored.path());
        f.click("m_btnFileLocation");
        QVERIFY(answerer.asked);
        QCOMPARE(answerer.mode, QFileDialog::Directory);
        QVERIFY(answerer.onlyFolders);
        QVERIFY(answerer.nativeAllowed);
    }
    QCOMPARE(f.folder()->text(), QDir::toNativeSeparators(f.stored.path()));
    {
        const file_dialog_answerer cancelled{QString()};
        f.click("m_btnFileLocation");
        QVERIFY(cancelled.asked);
    }
    QCOMPARE(f.folder()->text(), QDir::toNativeSeparators(f.stored.path()));
}

void tst_settings_dialog::folderPickerStartsAtExistingFolder()
{
    fixture f;
    f.open();
    QVERIFY(QDir(f.stored.path()).mkdir(QStringLiteral("here")));
    QVERIFY(QDir(f.stored.path()).mkdir(QStringLiteral("beside")));
    // Relative to the project file only: the picker does not start there.
    f.folder()->setText(QStringLiteral("beside"));
    {
        const file_dialog_answerer cancelled{QString()};
        f.click("m_btnFileLocation");
        QVERIFY(cancelled.asked);
        QVERIFY(cancelled.startedIn != f.stored.path(QStringLiteral("beside")));
    }
    f.folder()->setText(f.stored.path(QStringLiteral("here")));
    const file_dialog_answerer cancelled{QString()};
    f.click("m_btnFileLocation");
    QCOMPARE(cancelled.startedIn, f.stored.path(QStringLiteral("here")));
}

void tst_settings_dialog::scriptPicker()
{
    fixture f;
    f.open();
    const QString file = f.stored.file();
    {
        const file_dialog_answerer answerer(file);
        f.click("m_btnCustomScriptLocation");
        QVERIFY(answerer.asked);
        QCOMPARE(answerer.mode, QFileDialog::ExistingFile);
    }
    QCOMPARE(f.script()->text(), QDir::toNativeSeparators(file));
}

void tst_settings_dialog::helpButtonAndF1()
{
    fixture f;
    f.open();
    context::ctx_global::setAppHelpManualUrl(QStringLiteral("file:///manual/index.html"));
    const support::browser b;
    f.click("m_btnHelpManual");
    QCOMPARE(b.opened.size(), 1);
    QCOMPARE(b.opened.at(0), QUrl(QStringLiteral("file:///manual/index.html#ddl_export_settings")));
    f.dialog->activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(f.dialog.get()));
    f.script()->setFocus();
    QTest::keyClick(f.script(), Qt::Key_F1);
    QCOMPARE(b.opened.size(), 2);
}

void tst_settings_dialog::debugNeedsAScript()
{
    fixture f;
    f.open();
    const support::message_box_answerer answerer;
    f.click("m_btnDebugCustomScript");
    QCOMPARE(answerer.asked, 1);
    QCOMPARE(answerer.title, QStringLiteral("KorvGenericDDLExport"));
    QCOMPARE(answerer.text,
             QStringLiteral("Cannot debug custom script : custom script file location is empty"));
}

void tst_settings_dialog::debugNeedsAnExistingScript()
{
    fixture f;
    f.open();
    f.script()->setText(QStringLiteral("no.js"));
    const support::message_box_answerer answerer;
    f.click("m_btnDebugCustomScript");
    QCOMPARE(answerer.asked, 1);
    QCOMPARE(answerer.text,
             QStringLiteral("Cannot debug custom script : custom script file 'no.js' doesn't exist"));
}

void tst_settings_dialog::debugReportsTheEngine()
{
    fixture f;
    f.open();
    QFile script(f.stored.path(QStringLiteral("bad.js")));
    QVERIFY(script.open(QIODevice::WriteOnly));
    script.write("function exportStep( {");
    script.close();
    f.script()->setText(QStringLiteral("bad.js"));
    f.plugin.setCustomScript(std::make_shared<tools::custom_javascript>());
    const support::message_box_answerer answerer;
    f.click("m_btnDebugCustomScript");
    QCOMPARE(answerer.asked, 1);
    tools::custom_javascript engine;
    QCOMPARE(answerer.text, engine.initEngine(QStringLiteral("bad.js"), &f.plugin).getDesc());
    QVERIFY(answerer.text.contains(QStringLiteral("bad.js")));
    QVERIFY(!f.plugin.getCustomScript());
}

void tst_settings_dialog::debuggerThatDoesNotStartIsNotAttached()
{
    fixture f;
    f.open();
    QFile script(f.stored.path(QStringLiteral("slow.js")));
    QVERIFY(script.open(QIODevice::WriteOnly));
    script.write("console.log('loading'); function exportStep() {}");
    script.close();
    f.script()->setText(QStringLiteral("slow.js"));
    // The script loads, but takes too long when it is loaded anew for the debugger.
    int loads = 0;
    connect(&f.plugin, &ddl_export::onMessage, this, [&loads] {
        if (++loads == 2) {
            QTest::qSleep(400);
        }
    });
    const support::message_box_answerer answerer;
    qputenv("KORVANE_SCRIPT_TIMEOUT_MS", "200");
    f.click("m_btnDebugCustomScript");
    qunsetenv("KORVANE_SCRIPT_TIMEOUT_MS");
    QCOMPARE(loads, 2);
    QCOMPARE(answerer.asked, 1);
    QVERIFY2(answerer.text.endsWith(QStringLiteral("loading the custom script did not end within 200 ms")),
             qPrintable(answerer.text));
    QVERIFY(!f.plugin.getCustomScript());
}

void tst_settings_dialog::resizingSharesTheTable()
{
    fixture f;
    f.open();
    const QTableWidget * const table = f.child<QTableWidget>("m_lstTypeMapping");
    const int before = table->columnWidth(2);
    f.dialog->resize(f.dialog->width() + 400, f.dialog->height());
    QTRY_VERIFY(table->columnWidth(2) >= before + 150);
    QCOMPARE(table->columnWidth(2), table->columnWidth(3));
}

/// 1366×768 at 125 % is 1093×614, of which a panel and a title bar take some.
void tst_settings_dialog::fitsASmallScreen()
{
    fixture f;
    f.open();
    const QScrollBar * const across = f.child<QScrollArea>("m_scrContent")->horizontalScrollBar();
    QCOMPARE(across->maximum(), 0);
    QVERIFY2(f.dialog->minimumSizeHint().width() <= 1000,
             qPrintable(QString::number(f.dialog->minimumSizeHint().width())));
    QVERIFY2(f.dialog->minimumSizeHint().height() <= 400,
             qPrintable(QString::number(f.dialog->minimumSizeHint().height())));
    f.dialog->resize(f.dialog->minimumSizeHint().width(), 420);
    QCOMPARE(across->maximum(), 0);
    QCOMPARE(f.dialog->height(), 420);
    QTRY_VERIFY(f.dialog->rect().contains(f.child<QPushButton>("m_btnOk")->geometry()));
    // The lowest field is reached by the keyboard, and is seen then.
    auto * const last = f.child<QLineEdit>("m_txtCustomScript");
    const auto isSeen = [&] {
        const QWidget * const viewport = f.child<QScrollArea>("m_scrContent")->viewport();
        return viewport->rect().contains(last->mapTo(viewport, last->rect().center()));
    };
    QVERIFY(!isSeen());
    f.child<QPushButton>("m_btnRestoreDefaultTypeMapping")->setFocus();
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    QCOMPARE(QApplication::focusWidget(), last);
    QVERIFY(isSeen());
}

void tst_settings_dialog::showSettingsTellsWhetherItWasAccepted()
{
    fixture f([](ddl_export & p) { p.setDDLExportPath(QStringLiteral(".")); });
    QString parentless;
    const auto answer = [&parentless](const char * button) {
        QTimer::singleShot(50, qApp, [button, &parentless] {
            QWidget * const dialog = QApplication::activeModalWidget();
            parentless =
                dialog->isModal() && !dialog->parentWidget() ? QStringLiteral("yes") : QStringLiteral("no");
            QTest::mouseClick(dialog->findChild<QPushButton *>(QString::fromLatin1(button)), Qt::LeftButton);
        });
    };
    ddl_export::setSettingsDialog(&view::showSettingsDialog);
    answer("m_btnOk");
    QVERIFY(f.plugin.showSettings());
    QCOMPARE(parentless, QStringLiteral("yes"));
    answer("m_btnCancel");
    QVERIFY(!f.plugin.showSettings());
}

QTEST_MAIN(tst_settings_dialog)
#include "tst_settings_dialog.moc"
