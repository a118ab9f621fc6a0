// What plug-ins may ask of the main window, and what it tells of windows that hold an export.

#include "view/main_wnd.h"

#include <QSignalSpy>
#include <QTest>

#include <memory>

class tst_main_window : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void valuesOfOptionsStayInOrder()
    {
        view::main_wnd window;
        window.addAppArg("--one", "b");
        window.addAppArg("--one", "a");
        QCOMPARE(window.getAppArg("--one"), (QStringList{"b", "a"}));
        QCOMPARE(window.getAppArg("--other"), QStringList());
    }
    /// Whoever follows the holder has to act on changes only.
    void aHolderIsToldOnce()
    {
        view::main_wnd window;
        const QSignalSpy told(&window, &view::main_wnd::holderChanged);
        auto holder = std::make_unique<QWidget>();
        window.setHolder(holder.get());
        window.setHolder(holder.get());
        QCOMPARE(told.count(), 1);
        QCOMPARE(window.holder(), holder.get());
        window.setHolder(nullptr);
        QCOMPARE(told.count(), 2);
        // One that goes without a word is no holder any more.
        window.setHolder(holder.get());
        holder.reset();
        QCOMPARE(window.holder(), nullptr);
    }
};

QTEST_MAIN(tst_main_window)
#include "tst_main_window.moc"
