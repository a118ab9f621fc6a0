#include "tools/bounded_uncompress.h"

#include <QFile>
#include <QRandomGenerator>
#include <QTest>
#include <QtEndian>

namespace {

QByteArray withClaim(QByteArray compressed, quint32 claim)
{
    qToBigEndian(claim, compressed.data());
    return compressed;
}

/// Peak of the memory that this process has held, in KiB; 0 where the system does not tell.
qint64 peakMemory()
{
    QFile status("/proc/self/status");
    if (!status.open(QIODevice::ReadOnly)) {
        return 0;
    }
    for (const QByteArray & line : status.readAll().split('\n')) {
        if (line.startsWith("VmHWM:")) {
            return line.mid(6).trimmed().split(' ').constFirst().toLongLong();
        }
    }
    return 0;
}

} // namespace

class tst_bounded_uncompress : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void givesWhatWasCompressed_data()
    {
        QTest::addColumn<QByteArray>("data");
        QTest::newRow("one byte") << QByteArray("x");
        QTest::newRow("NUL bytes") << QByteArray(100, '\0');
        QTest::newRow("one step") << QByteArray(64 * 1024, 'a');
        QTest::newRow("a byte more") << QByteArray(64 * 1024 + 1, 'a');
        QTest::newRow("many steps") << QByteArray(5000000, 'a');
        QByteArray random(1000000, Qt::Uninitialized);
        QRandomGenerator generator(7);
        for (char & c : random) {
            c = static_cast<char>(generator.generate());
        }
        QTest::newRow("random") << random;
    }
    void givesWhatWasCompressed()
    {
        QFETCH(QByteArray, data);
        QCOMPARE(tools::boundedUncompress(qCompress(data)), data);
        QCOMPARE(tools::boundedUncompress(qCompress(data), data.size()), data);
        QCOMPARE(tools::boundedUncompress(qCompress(data), data.size() - 1), QByteArray());
    }
    void aHeaderThatClaimsMoreThanThereIs()
    {
        QCOMPARE(tools::boundedUncompress(withClaim(qCompress(QByteArray("abc")), 1000)), QByteArray("abc"));
    }
    void aHeaderThatClaimsLessThanThereIs()
    {
        QCOMPARE(tools::boundedUncompress(withClaim(qCompress(QByteArray("abc")), 2)), QByteArray());
        QCOMPARE(tools::boundedUncompress(withClaim(qCompress(QByteArray("abc")), 3)), QByteArray("abc"));
    }
    void bombsTakeNoMemory()
    {
        const QByteArray bomb = withClaim(qCompress(QByteArray(qsizetype(256) * 1024 * 1024, '\0'), 9), 16);
        QFile reset("/proc/self/clear_refs"); // 5 resets the peak
        if (!reset.open(QIODevice::WriteOnly) || reset.write("5") != 1 || !reset.flush()) {
            QSKIP("The peak of the memory cannot be reset here");
        }
        const qint64 before = peakMemory();
        QCOMPARE(tools::boundedUncompress(bomb), QByteArray());
        QCOMPARE(tools::boundedUncompress(withClaim(bomb, 0xFFFFFFFF)), QByteArray());
        QCOMPARE(tools::boundedUncompress(withClaim(qCompress(QByteArray("abc")), 500000000)),
                 QByteArray("abc"));
        QVERIFY2(peakMemory() - before < 16 * 1024, qPrintable(QString::number(peakMemory() - before)));
    }
    void damage()
    {
        const QByteArray good = qCompress(QByteArray("the quick brown fox jumps over the lazy dog"));
        for (qsizetype length = 0; length < good.size(); ++length) {
            QCOMPARE(tools::boundedUncompress(good.left(length)), QByteArray());
        }
        for (qsizetype at = 4; at < good.size(); ++at) {
            QByteArray bad = good;
            bad[at] = static_cast<char>(bad.at(at) ^ 0x55);
            const QByteArray result = tools::boundedUncompress(bad);
            QVERIFY(result.isEmpty());
        }
        QCOMPARE(tools::boundedUncompress("no zlib data at all"), QByteArray());
    }
};

QTEST_APPLESS_MAIN(tst_bounded_uncompress)
#include "tst_bounded_uncompress.moc"
