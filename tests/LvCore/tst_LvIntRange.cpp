#include "LvIntRange.h"
#include "LvTest.h"

#include <QThread>

#include <algorithm>
#include <limits>

namespace
{

constexpr int largest = std::numeric_limits<int>::max();

QList<int> loopOver(const LvIntRange& range)
{
    QList<int> indices;
    for (int index = range.firstIndex(); index < range.lastIndexEvenIfUnvalid(); ++index) {
        indices.append(index);
    }
    return indices;
}

} // namespace

class tst_LvIntRange : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void loops_data()
    {
        QTest::addColumn<int>("first");
        QTest::addColumn<int>("last");
        QTest::addColumn<QList<int>>("indices");
        QTest::newRow("two zeros are one index") << 0 << 0 << QList<int>{0};
        QTest::newRow("none") << 0 << -1 << QList<int>{};
        QTest::newRow("some") << 3 << 5 << QList<int>{3, 4, 5};
        QTest::newRow("negative") << -2 << 1 << QList<int>{-2, -1, 0, 1};
        QTest::newRow("reversed") << 5 << 2 << QList<int>{};
    }

    void loops()
    {
        QFETCH(int, first);
        QFETCH(int, last);
        QFETCH(QList<int>, indices);
        const LvIntRange range(first, last);
        QCOMPARE(range.firstIndex(), first);
        QCOMPARE(range.lastIndex(), last);
        QCOMPARE(range.lastIndexEvenIfUnvalid(), last + 1);
        QCOMPARE(loopOver(range), indices);
        QCOMPARE(range.count(), indices.size());
    }

    void limits()
    {
        QCOMPARE(LvIntRange(0, largest).lastIndexEvenIfUnvalid(), largest);
        QCOMPARE(LvIntRange(0, largest).count(), qint64(largest) + 1);
        QCOMPARE(LvIntRange(std::numeric_limits<int>::min(), largest).count(), qint64(1) << 32);
    }

    void isARange()
    {
        const LvRange<int>& range = LvIntRange(2, 5);
        QVERIFY(range.contains(5));
        QCOMPARE(range.center(), 3);
        QVERIFY(LvIntRange(0, 0).isValid());
        QVERIFY(!LvIntRange(0, -1).isValid());
        QVERIFY(LvIntRange(1, 2) == LvIntRange(1, 2));
        QVERIFY(LvIntRange(1, 2) != LvIntRange(1, 3));
        QVERIFY(LvIntRange(1, 2) < LvIntRange(1, 3));
        LvIntRange zero(0, 0);
        zero.expandTo(4); // counts as empty here, although it is one index for loops
        QVERIFY(zero == LvIntRange(4, 4));
        QVERIFY(LvIntRange() == LvIntRange(0, 0));
    }

    void split_data()
    {
        QTest::addColumn<int>("first");
        QTest::addColumn<int>("last");
        QTest::addColumn<int>("minimum");
        const int minimum = LvIntRange::minimumIndicesPerPiece;
        QTest::newRow("one index") << 0 << 0 << minimum;
        QTest::newRow("too short for two") << 0 << 2 * minimum - 2 << minimum;
        QTest::newRow("just enough for two") << 0 << 2 * minimum - 1 << minimum;
        QTest::newRow("rows of a picture") << 0 << 767 << minimum;
        QTest::newRow("odd count, shifted") << -1001 << 5000 << minimum;
        QTest::newRow("a million") << 0 << 999999 << minimum;
        QTest::newRow("all indices") << 0 << largest << minimum;
        QTest::newRow("one by one") << 0 << 6 << 1;
        QTest::newRow("senseless minimum") << 0 << 6 << -3;
        QTest::newRow("large minimum") << 0 << 9999 << 2048;
    }

    void split()
    {
        QFETCH(int, first);
        QFETCH(int, last);
        QFETCH(int, minimum);
        const LvIntRange range(first, last);
        const QList<LvIntRange> pieces = range.splitEvenlyForCpuCores(minimum);
        QVERIFY(!pieces.isEmpty());
        const qint64 possible = range.count() / qMax(1, minimum);
        QCOMPARE(pieces.size(), std::clamp<qint64>(possible, 1, QThread::idealThreadCount()));
        QCOMPARE(pieces.first().firstIndex(), first);
        QCOMPARE(pieces.last().lastIndex(), last);
        qint64 shortest = pieces.first().count();
        qint64 longest = shortest;
        for (qsizetype i = 0; i < pieces.size(); ++i) {
            if (i > 0) {
                QCOMPARE(pieces[i].firstIndex(), pieces[i - 1].lastIndexEvenIfUnvalid());
            }
            shortest = qMin(shortest, pieces[i].count());
            longest = qMax(longest, pieces[i].count());
        }
        QVERIFY(longest - shortest <= 1);
        QVERIFY(pieces.size() == 1 || shortest >= minimum);
    }

    void defaultMinimum()
    {
        QCOMPARE(LvIntRange(0, LvIntRange::minimumIndicesPerPiece - 1).splitEvenlyForCpuCores().size(), 1);
        QCOMPARE(LvIntRange(0, 99999).splitEvenlyForCpuCores().size(), QThread::idealThreadCount());
    }

    void splitNothing()
    {
        const QList<LvIntRange> pieces = LvIntRange(0, -1).splitEvenlyForCpuCores();
        QCOMPARE(pieces.size(), 1);
        QVERIFY(pieces.first() == LvIntRange(0, -1));
        QVERIFY(LvIntRange(0, -1).splitEvenlyForCpuCores(0).first() == LvIntRange(0, -1));
        QVERIFY(LvIntRange(9, 2).splitEvenlyForCpuCores().first() == LvIntRange(9, 2));
    }

    void images()
    {
        const QImage image(30, 20, QImage::Format_RGB32);
        QVERIFY(LvIntRange::rowsOfImage(image) == LvIntRange(0, 19));
        QVERIFY(LvIntRange::columnsOfImage(image) == LvIntRange(0, 29));
        QVERIFY(loopOver(LvIntRange::rowsOfImage(QImage())).isEmpty());
        QVERIFY(loopOver(LvIntRange::columnsOfImage(QImage())).isEmpty());
    }
};

LV_TEST_MAIN(tst_LvIntRange)
#include "tst_LvIntRange.moc"
