#include "LvMath.h"
#include "LvTest.h"

#include <limits>

class tst_LvMath : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void epsilonEqual_data()
    {
        constexpr double infinity = std::numeric_limits<double>::infinity();
        constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();
        QTest::addColumn<double>("a");
        QTest::addColumn<double>("b");
        QTest::addColumn<double>("epsilon");
        QTest::addColumn<bool>("equal");
        QTest::newRow("same") << 1.0 << 1.0 << 0.0 << true;
        QTest::newRow("exactly epsilon above") << 1.0 << 1.5 << 0.5 << true;
        QTest::newRow("exactly epsilon below") << 1.0 << 0.5 << 0.5 << true;
        QTest::newRow("more than epsilon") << 1.0 << 1.5000001 << 0.5 << false;
        QTest::newRow("across zero") << -0.25 << 0.25 << 0.5 << true;
        QTest::newRow("opposite signs") << -1.0 << 1.0 << 0.5 << false;
        QTest::newRow("both zeros") << -0.0 << 0.0 << 0.0 << true;
        QTest::newRow("negative epsilon") << 1.0 << 1.1 << -1.0 << false;
        QTest::newRow("infinities") << infinity << infinity << 0.1 << true;
        QTest::newRow("opposite infinities") << infinity << -infinity << 0.1 << false;
        QTest::newRow("infinite and finite") << infinity << 1.0 << 0.1 << false;
        QTest::newRow("no number") << notANumber << notANumber << 1.0 << false;
    }

    void epsilonEqual()
    {
        QFETCH(double, a);
        QFETCH(double, b);
        QFETCH(double, epsilon);
        QFETCH(bool, equal);
        QCOMPARE(LvMath::epsilonEqual(a, b, epsilon), equal);
        QCOMPARE(LvMath::epsilonEqual(b, a, epsilon), equal);
    }
};

LV_TEST_MAIN(tst_LvMath)
#include "tst_LvMath.moc"
