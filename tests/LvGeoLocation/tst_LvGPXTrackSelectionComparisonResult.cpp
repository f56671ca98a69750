#include "LvGPXTrackSelectionComparisonResult.h"
#include "LvTest.h"

namespace
{

LvGPXTrackSelectionComparisonResult result(const QList<int>& rows, LvGPXTrackAspect aspects,
                                           bool countChanges)
{
    LvGPXTrackSelectionComparisonResult made;
    made.setChangingTracks(rows);
    made.setChangingAspects(aspects);
    made.setTrackCountChanges(countChanges);
    return made;
}

} // namespace

class tst_LvGPXTrackSelectionComparisonResult : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aspects();
    void defaults();
    void addRows();
    void addAspects();
    void sum();
    void addedToItself();
    void countFlagsAreUnited_data();
    void countFlagsAreUnited();
    void isMergeCompatible_data();
    void isMergeCompatible();
};

void tst_LvGPXTrackSelectionComparisonResult::aspects()
{
    // The numbers are part of the interface.
    QCOMPARE(static_cast<int>(LvGPXTrackAspectFlag::LineWidth), 1);
    QCOMPARE(static_cast<int>(LvGPXTrackAspectFlag::LineColor), 2);
    QCOMPARE(static_cast<int>(LvGPXTrackAspectFlag::Track), 4);
    const LvGPXTrackAspect all =
        LvGPXTrackAspectFlag::LineWidth | LvGPXTrackAspectFlag::LineColor | LvGPXTrackAspectFlag::Track;
    QVERIFY(all == LvGPXTrackAspect(7));
}

void tst_LvGPXTrackSelectionComparisonResult::defaults()
{
    const LvGPXTrackSelectionComparisonResult empty;
    QVERIFY(empty.changingTracks().isEmpty());
    QVERIFY(!empty.changingAspects());
    QVERIFY(!empty.trackCountChanges());
}

void tst_LvGPXTrackSelectionComparisonResult::addRows()
{
    LvGPXTrackSelectionComparisonResult comparison;
    comparison.addChangingTrack(3);
    comparison.addChangingTrack(1);
    comparison.addChangingTrack(3);
    QCOMPARE(comparison.changingTracks(), QList<int>({3, 1, 3}));
    comparison.setChangingTracks({5});
    QCOMPARE(comparison.changingTracks(), QList<int>({5}));
}

void tst_LvGPXTrackSelectionComparisonResult::addAspects()
{
    LvGPXTrackSelectionComparisonResult comparison;
    comparison.addChangingAspects(LvGPXTrackAspectFlag::LineWidth);
    comparison.addChangingAspects(LvGPXTrackAspectFlag::Track);
    QCOMPARE(comparison.changingAspects(), LvGPXTrackAspect(5));
    comparison.setChangingAspects(LvGPXTrackAspectFlag::LineColor);
    QCOMPARE(comparison.changingAspects(), LvGPXTrackAspect(2));
}

void tst_LvGPXTrackSelectionComparisonResult::sum()
{
    const LvGPXTrackSelectionComparisonResult left = result({1, 3}, LvGPXTrackAspect(1), false);
    const LvGPXTrackSelectionComparisonResult right = result({3, 2}, LvGPXTrackAspect(4), true);
    const LvGPXTrackSelectionComparisonResult both = left + right;
    QCOMPARE(both.changingTracks(), QList<int>({1, 3, 3, 2}));
    QCOMPARE(both.changingAspects(), LvGPXTrackAspect(5));
    QVERIFY(both.trackCountChanges());
    QCOMPARE(left.changingTracks(), QList<int>({1, 3}));
    QVERIFY(!left.trackCountChanges());
}

void tst_LvGPXTrackSelectionComparisonResult::addedToItself()
{
    LvGPXTrackSelectionComparisonResult comparison = result({1, 3}, LvGPXTrackAspect(2), false);
    LvGPXTrackSelectionComparisonResult& same = comparison;
    comparison += same;
    QCOMPARE(comparison.changingTracks(), QList<int>({1, 3, 1, 3}));
    QCOMPARE(comparison.changingAspects(), LvGPXTrackAspect(2));
}

void tst_LvGPXTrackSelectionComparisonResult::countFlagsAreUnited_data()
{
    QTest::addColumn<bool>("left");
    QTest::addColumn<bool>("right");
    QTest::addColumn<bool>("both");

    QTest::newRow("neither") << false << false << false;
    QTest::newRow("left") << true << false << true;
    QTest::newRow("right") << false << true << true;
    QTest::newRow("both") << true << true << true;
}

void tst_LvGPXTrackSelectionComparisonResult::countFlagsAreUnited()
{
    QFETCH(const bool, left);
    QFETCH(const bool, right);
    QFETCH(const bool, both);

    LvGPXTrackSelectionComparisonResult sum = result({}, {}, left);
    sum += result({}, {}, right);
    QCOMPARE(sum.trackCountChanges(), both);
}

void tst_LvGPXTrackSelectionComparisonResult::isMergeCompatible_data()
{
    QTest::addColumn<QList<int>>("rows");
    QTest::addColumn<int>("aspects");
    QTest::addColumn<bool>("countChanges");
    QTest::addColumn<bool>("otherCountChanges");
    QTest::addColumn<bool>("compatible");

    QTest::newRow("the same") << QList<int>{1, 2} << 2 << false << false << true;
    QTest::newRow("other order of the rows") << QList<int>{2, 1} << 2 << false << false << false;
    QTest::newRow("fewer rows") << QList<int>{1} << 2 << false << false << false;
    QTest::newRow("more rows") << QList<int>{1, 2, 2} << 2 << false << false << false;
    QTest::newRow("other aspects") << QList<int>{1, 2} << 3 << false << false << false;
    QTest::newRow("count of this one changes") << QList<int>{1, 2} << 2 << true << false << false;
    QTest::newRow("count of both changes") << QList<int>{1, 2} << 2 << true << true << false;
    QTest::newRow("count of the other changes") << QList<int>{1, 2} << 2 << false << true << true;
}

void tst_LvGPXTrackSelectionComparisonResult::isMergeCompatible()
{
    QFETCH(const QList<int>, rows);
    QFETCH(const int, aspects);
    QFETCH(const bool, countChanges);
    QFETCH(const bool, otherCountChanges);
    QFETCH(const bool, compatible);

    const LvGPXTrackSelectionComparisonResult one = result(rows, LvGPXTrackAspect(aspects), countChanges);
    const LvGPXTrackSelectionComparisonResult other = result({1, 2}, LvGPXTrackAspect(2), otherCountChanges);
    QCOMPARE(one.isMergeCompatible(other), compatible);
}

LV_TEST_MAIN(tst_LvGPXTrackSelectionComparisonResult)
#include "tst_LvGPXTrackSelectionComparisonResult.moc"
