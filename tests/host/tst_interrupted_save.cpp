#include "support/project_support.h"
#include "support/rounds.h"

#include <QElapsedTimer>
#include <QRandomGenerator>
#include <QTemporaryDir>
#include <QTest>
#include <QThread>

using support::storedText;
using support::textOf;

class tst_interrupted_save : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        QVERIFY(m_folder.isValid());
        for (const char * name : {"old", "new"}) {
            QByteArray entities;
            for (int e = 1; e <= 400; ++e) {
                entities += (e > 1 ? ", " : "") + QByteArray("{\"id\": ") + QByteArray::number(e) +
                            ", \"version\": 1, \"name\": \"" + name + QByteArray::number(e) +
                            "\", \"properties\": [";
                for (int p = 0; p < 10; ++p) {
                    entities += (p > 0 ? ", " : "") + QByteArray("{\"name\": \"") + name +
                                QByteArray::number(p) + "\", \"type\": \"QString\"}";
                }
                entities += "]}";
            }
            QVERIFY(support::writeBytes(path(QString(name) + ".json"), textOf(entities)));
            QCOMPARE(
                support::runKorvane({"import", path(QString(name) + ".json"), path(QString(name) + ".korv")})
                    .status,
                0);
        }
        m_old = storedText(path("old.korv"));
        QVERIFY(!m_old.isEmpty());
        QElapsedTimer timer;
        timer.start();
        QVERIFY(QFile::copy(path("old.korv"), path("p.korv")));
        QCOMPARE(support::runKorvane({"import", path("new.json"), path("p.korv")}).status, 0);
        m_iDuration = timer.nsecsElapsed() / 1000;
        m_new = storedText(path("p.korv"));
        QVERIFY(!m_new.isEmpty() && m_new != m_old);
    }

    void overAnExistingProject()
    {
        int oldStates = 0;
        int newStates = 0;
        for (int i = 0; i < support::rounds(250); ++i) {
            QFile::remove(path("p.korv"));
            QFile::remove(path("p.korv-journal"));
            QVERIFY(QFile::copy(path("old.korv"), path("p.korv")));
            killAfterAWhile("p.korv");
            const QByteArray state = storedText(path("p.korv"));
            QVERIFY2(state == m_old || state == m_new, qPrintable(QString("round %1").arg(i)));
            ++(state == m_old ? oldStates : newStates);
        }
        qInfo("%d times the old project, %d times the new one", oldStates, newStates);
        QVERIFY(oldStates > 0);
    }
    void intoANewFile()
    {
        int none = 0;
        for (int i = 0; i < support::rounds(150); ++i) {
            QFile::remove(path("n.korv"));
            killAfterAWhile("n.korv");
            if (!QFile::exists(path("n.korv"))) {
                ++none;
                continue;
            }
            const QByteArray state = storedText(path("n.korv"));
            QVERIFY2(!state.isEmpty() && state.contains("\"new400\""),
                     qPrintable(QString("round %1").arg(i)));
        }
        qInfo("%d times no project", none);
        QVERIFY(none > 0);
    }

private:
    QString path(const QString & name) const { return m_folder.filePath(name); }

    /// Imports the new model into `name` and ends the process at a random moment of its work.
    void killAfterAWhile(const QString & name)
    {
        QProcess process;
        process.start(KORVANE_PROGRAM, {"import", path("new.json"), path(name)});
        QVERIFY(process.waitForStarted());
        const auto delay =
            static_cast<unsigned long>(m_random.bounded(static_cast<int>(m_iDuration * 11 / 10)));
        QThread::usleep(delay);
        process.kill();
        QVERIFY(process.waitForFinished());
    }

    QTemporaryDir m_folder;
    QRandomGenerator m_random{20261121};
    qint64 m_iDuration = 0; ///< of a whole run, in microseconds
    QByteArray m_old;
    QByteArray m_new;
};

QTEST_GUILESS_MAIN(tst_interrupted_save)
#include "tst_interrupted_save.moc"
