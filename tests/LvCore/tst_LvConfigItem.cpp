#include "LvConfigItem.h"
#include "LvTest.h"

class tst_LvConfigItem : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void startsWithTheDefault()
    {
        const LvConfigItem<int> item(QStringLiteral("key"), 5);
        QCOMPARE(item.key(), QStringLiteral("key"));
        QCOMPARE(item.value(), 5);
        QCOMPARE(item.defaultValue(), 5);
    }

    void valueAndDefaultMayDiffer()
    {
        const LvConfigItem<QString> item(QStringLiteral("key"), QStringLiteral("now"),
                                         QStringLiteral("default"));
        QCOMPARE(item.value(), QStringLiteral("now"));
        QCOMPARE(item.defaultValue(), QStringLiteral("default"));
    }

    void setterTellsWhetherItChanged()
    {
        LvConfigItem<bool> item(QStringLiteral("key"), true, true);
        QVERIFY(!item.setValue(true));
        QVERIFY(item.setValue(false));
        QVERIFY(!item.value());
        QVERIFY(!item.setValue(false));
        QCOMPARE(item.defaultValue(), true);
    }

    void reset()
    {
        LvConfigItem<int> item(QStringLiteral("key"), 7, 5);
        QVERIFY(item.reset());
        QCOMPARE(item.value(), 5);
        QVERIFY(!item.reset());
    }

    void copiesAreIndependent()
    {
        LvConfigItem<int> item(QStringLiteral("key"), 5);
        LvConfigItem<int> copy = item;
        copy.setValue(6);
        QCOMPARE(item.value(), 5);
        QCOMPARE(copy.key(), item.key());
    }
};

LV_TEST_MAIN(tst_LvConfigItem)
#include "tst_LvConfigItem.moc"
