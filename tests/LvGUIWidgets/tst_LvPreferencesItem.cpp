#include "LvPreferencesItem.h"
#include "LvTest.h"

#include <memory>
#include <type_traits>

namespace
{

/// An item with one number, which must not be left below zero.
class NumberItem : public LvPreferencesItem
{
public:
    explicit NumberItem(bool* isDestroyed)
        : myIsDestroyed(isDestroyed)
    {
    }

    NumberItem(const NumberItem&) = delete;
    NumberItem& operator=(const NumberItem&) = delete;

    ~NumberItem() override { *myIsDestroyed = true; }

    void readFromConfig() override { shown = stored; }

    void writeToConfig() override { stored = shown; }

    void revertChanges() override { shown = stored; }

    bool checkLeaveCondition() override { return shown >= 0; }

    [[nodiscard]] int preferencesType() const override { return 5; }

    int stored = 1;
    int shown = 0;

private:
    bool* myIsDestroyed;
};

/// What a dialog does when the user wants to leave an item with "OK".
bool leave(LvPreferencesItem& item)
{
    if (!item.checkLeaveCondition()) {
        return false;
    }
    item.writeToConfig();
    return true;
}

} // namespace

class tst_LvPreferencesItem : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void isAbstract();
    void dialogDrivesItem();
    void destroyedThroughTheInterface();
};

void tst_LvPreferencesItem::isAbstract()
{
    QVERIFY(std::is_abstract_v<LvPreferencesItem>);
    QVERIFY(std::has_virtual_destructor_v<LvPreferencesItem>);
    QVERIFY(!std::is_copy_constructible_v<LvPreferencesItem>);
}

void tst_LvPreferencesItem::dialogDrivesItem()
{
    bool isDestroyed = false;
    NumberItem number(&isDestroyed);
    LvPreferencesItem& item = number;
    item.readFromConfig();
    QCOMPARE(number.shown, 1);
    number.shown = -4;
    QVERIFY(!leave(item));
    QCOMPARE(number.stored, 1);
    item.revertChanges();
    QCOMPARE(number.shown, 1);
    number.shown = 4;
    QVERIFY(leave(item));
    QCOMPARE(number.stored, 4);
    QCOMPARE(item.preferencesType(), 5);
}

void tst_LvPreferencesItem::destroyedThroughTheInterface()
{
    bool isDestroyed = false;
    std::unique_ptr<LvPreferencesItem> item = std::make_unique<NumberItem>(&isDestroyed);
    item.reset();
    QVERIFY(isDestroyed);
}

LV_TEST_MAIN(tst_LvPreferencesItem)
#include "tst_LvPreferencesItem.moc"
