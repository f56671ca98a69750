#include "LvRational.h"
#include "LvTest.h"

#include <limits>

class tst_LvRational : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void text_data()
    {
        QTest::addColumn<qint64>("numerator");
        QTest::addColumn<qint64>("denominator");
        QTest::addColumn<QString>("text");
        QTest::newRow("not reduced") << qint64(2400000) << qint64(100000) << "2400000/100000";
        QTest::newRow("zero") << qint64(0) << qint64(1) << "0/1";
        QTest::newRow("negative") << qint64(-3) << qint64(4) << "-3/4";
        QTest::newRow("zero below") << qint64(1) << qint64(0) << "1/0";
        QTest::newRow("large") << std::numeric_limits<qint64>::max() << std::numeric_limits<qint64>::min()
                               << "9223372036854775807/-9223372036854775808";
    }

    void text()
    {
        QFETCH(qint64, numerator);
        QFETCH(qint64, denominator);
        QFETCH(QString, text);
        const LvRational rational(numerator, denominator);
        QCOMPARE(rational.numerator(), numerator);
        QCOMPARE(rational.denominator(), denominator);
        QCOMPARE(rational.toString(), text);
    }

    void equality()
    {
        QVERIFY(LvRational(1, 2) == LvRational(1, 2));
        QVERIFY(LvRational(1, 2) != LvRational(2, 4));
    }
};

LV_TEST_MAIN(tst_LvRational)
#include "tst_LvRational.moc"
