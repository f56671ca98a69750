#include "LvGPXTrackEditOptions.h"
#include "LvTest.h"

class tst_LvGPXTrackEditOptions : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void values();
    void flags();
};

void tst_LvGPXTrackEditOptions::values()
{
    QCOMPARE(static_cast<int>(LvGPXTrackEditOption::AddButton), 1);
    QCOMPARE(static_cast<int>(LvGPXTrackEditOption::DeleteButton), 2);
    QCOMPARE(static_cast<int>(LvGPXTrackEditOption::ZoomToButton), 4);
    QCOMPARE(static_cast<int>(LvGPXTrackEditOption::EditButton), 8);
}

void tst_LvGPXTrackEditOptions::flags()
{
    const LvGPXTrackEditOptions options = LvGPXTrackEditOption::AddButton | LvGPXTrackEditOption::EditButton;
    QCOMPARE(options.toInt(), 9);
    QCOMPARE(LvGPXTrackEditOptions(9), options);
    QVERIFY(options.testFlag(LvGPXTrackEditOption::EditButton));
    QVERIFY(!options.testFlag(LvGPXTrackEditOption::DeleteButton));
    QVERIFY(!LvGPXTrackEditOptions());
}

LV_TEST_MAIN(tst_LvGPXTrackEditOptions)
#include "tst_LvGPXTrackEditOptions.moc"
