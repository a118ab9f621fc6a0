// What Qt keeps to itself changes with every version of it: only the line debugger may call such things, or
// an update of Qt would keep the program from starting.

#include <QFileInfo>
#include <QProcess>
#include <QRegularExpression>
#include <QTest>

namespace {

/// What `file` needs of others, a symbol a line, with its version and names as in the sources.
QStringList neededSymbols(const QString & file)
{
    QProcess nm;
    nm.start(QStringLiteral("nm"),
             {QStringLiteral("-D"), QStringLiteral("--undefined-only"),
              QStringLiteral("--with-symbol-versions"), QStringLiteral("--demangle"), file});
    if (!nm.waitForFinished() || nm.exitCode() != 0) {
        qFatal("nm %s: %s", qPrintable(file), nm.readAllStandardError().constData());
    }
    return QString::fromUtf8(nm.readAllStandardOutput()).split(QLatin1Char('\n'), Qt::SkipEmptyParts);
}

/// Those that are private to Qt: by their version, or, where a library of Qt gives its symbols no versions,
/// by the engine's own namespace and the names of private classes.
QStringList privateSymbols(const QString & file)
{
    static const QRegularExpression isPrivate(
        QStringLiteral("PRIVATE_API|\\bQV4::|\\bQ[A-Z]\\w*(?:Private|PrivateShared)\\b(?!Signal)"));
    return neededSymbols(file).filter(isPrivate);
}

} // namespace

class tst_private_symbols : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void onlyTheLineDebuggerNeedsThem_data()
    {
        QTest::addColumn<QString>("file");
        QTest::newRow("library") << QStringLiteral(KORVANE_CORE_FILE);
        QTest::newRow("program") << QStringLiteral(KORVANE_PROGRAM);
        QTest::newRow("plug-in") << QStringLiteral(KORVANE_PLUGIN_FILE);
    }

    void onlyTheLineDebuggerNeedsThem()
    {
        QFETCH(QString, file);
        // What is public is there, so that the right thing was looked at.
        QVERIFY(!neededSymbols(file).filter(QStringLiteral("QString::")).isEmpty());
        QCOMPARE(privateSymbols(file), QStringList());
    }

    void theLineDebuggerNeedsThem()
    {
        const QString file = QStringLiteral(KORVANE_LINE_DEBUGGER_FILE);
        if (file.isEmpty()) {
            QSKIP("built without line breakpoints (KORVANE_LINE_BREAKPOINTS)");
        }
        const QStringList needed = privateSymbols(file);
        QVERIFY2(!needed.filter(QStringLiteral("QV4::ExecutionEngine::setDebugger")).isEmpty(),
                 qPrintable(needed.join(QLatin1Char('\n'))));
    }
};

QTEST_GUILESS_MAIN(tst_private_symbols)
#include "tst_private_symbols.moc"
