// The letters that are pressed with Alt: in each language no two of one menu, or of one dialog, are the same.

#include "app/window/window_bench.h"
#include "support/shop_text.h"

#include "app/diff_report.h"
#include "app/window/database/database_dialog.h"
#include "app/window/version_dialogs.h"

#include <QAbstractButton>
#include <QLabel>
#include <QMenu>
#include <QMenuBar>
#include <QTranslator>

using support::window_bench;

namespace {

/// The texts among `all` whose letter another one has, too.
QStringList clashesAmong(const QStringList & all)
{
    QHash<QKeySequence, QString> first;
    QStringList clashes;
    for (const QString & text : all) {
        const QKeySequence key = QKeySequence::mnemonic(text);
        if (!key.isEmpty() && first.contains(key)) {
            clashes << first.value(key) + " / " + text;
        }
        first.insert(key, text);
    }
    return clashes;
}

QStringList textsOf(const QList<QAction *> & actions)
{
    QStringList texts;
    for (const QAction * const action : actions) {
        texts << action->text();
    }
    return texts;
}

QStringList textsOf(const QDialog & dialog)
{
    QStringList texts;
    for (const QLabel * const label : dialog.findChildren<QLabel *>()) {
        texts << (label->buddy() ? label->text() : QString());
    }
    for (const QAbstractButton * const button : dialog.findChildren<QAbstractButton *>()) {
        texts << button->text();
    }
    return texts;
}

} // namespace

class tst_window_mnemonics : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void noTwoAreTheSame_data()
    {
        QTest::addColumn<QString>("language");
        for (const char * const language : {"en", "de", "fr"}) {
            QTest::newRow(language) << QString(language);
        }
    }
    void noTwoAreTheSame()
    {
        QFETCH(QString, language);
        QTranslator translator;
        if (language != "en") {
            QVERIFY(translator.load(QStringLiteral(KORVANE_TRANSLATIONS "/korvane_%1.qm").arg(language)));
            QVERIFY(QCoreApplication::installTranslator(&translator));
        }
        const window_bench bench(support::ShopText);
        const app::project_window window;
        QStringList clashes = clashesAmong(textsOf(window.menuBar()->actions()));
        int menus = 0;
        for (const QMenu * const menu : window.findChildren<QMenu *>()) {
            clashes += clashesAmong(textsOf(menu->actions()));
            ++menus;
        }
        QVERIFY2(menus >= 6, qPrintable(QString::number(menus)));
        clashes += clashesAmong(textsOf(app::database_dialog({}, nullptr)));
        clashes += clashesAmong(textsOf(app::tag_dialog("shop", 1, nullptr)));
        clashes += clashesAmong(textsOf(app::versions_dialog("shop", {}, nullptr)));
        QVERIFY2(clashes.isEmpty(), qPrintable(clashes.join('\n')));
    }
    void aClashIsFound()
    {
        QCOMPARE(clashesAmong({"&Open", "Cl&ose", "&Quit"}), QStringList("&Open / Cl&ose"));
        QCOMPARE(clashesAmong({"&Open", "&Close", "Plain", "Other"}), QStringList());
    }
};

QTEST_MAIN(tst_window_mnemonics)
#include "tst_window_mnemonics.moc"
