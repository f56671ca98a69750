#include "LvGPXTrackElement.h"
#include "LvTest.h"

#include <QTimeZone>

#include <type_traits>

namespace
{

/// The smallest complete element: what it is given.
class Element : public LvGPXTrackElement
{
public:
    explicit Element(const LvGeoPositionList& positions, const QList<QDateTime>& timeStamps = {})
        : myPositions(positions)
        , myTimeStamps(timeStamps)
    {
    }

    LvGeoPositionList allPoints() const override { return myPositions; }

    QList<LvGeoPositionList> chunkedPoints() const override { return {myPositions}; }

    LvGeoPosition firstPoint() const override { return myPositions.value(0); }

    LvGeoPosition lastPoint() const override { return myPositions.value(myPositions.size() - 1); }

    QList<QDateTime> allTimeStamps() const override { return myTimeStamps; }

private:
    LvGeoPositionList myPositions;
    QList<QDateTime> myTimeStamps;
};

QDateTime utc(int hour)
{
    return {QDate(2024, 5, 17), QTime(hour, 0), Qt::UTC};
}

static_assert(std::is_abstract_v<LvGPXTrackElement>);
static_assert(std::has_virtual_destructor_v<LvGPXTrackElement>);

} // namespace

class tst_LvGPXTrackElement : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void isSinglePoint_data();
    void isSinglePoint();
    void boundingBox();
    void timeFrame_data();
    void timeFrame();
    void safeDouble_data();
    void safeDouble();
};

void tst_LvGPXTrackElement::isSinglePoint_data()
{
    QTest::addColumn<int>("count");
    QTest::addColumn<bool>("expected");
    QTest::newRow("none") << 0 << false;
    QTest::newRow("one") << 1 << true;
    QTest::newRow("two") << 2 << false;
}

void tst_LvGPXTrackElement::isSinglePoint()
{
    QFETCH(int, count);
    QFETCH(bool, expected);
    LvGeoPositionList positions;
    for (int index = 0; index < count; ++index) {
        positions.append(LvGeoPosition(50, 8));
    }
    const Element element(positions);
    QCOMPARE(element.isSinglePoint(), expected);
}

void tst_LvGPXTrackElement::boundingBox()
{
    const Element element(
        {LvGeoPosition(50, 8), LvGeoPosition(), LvGeoPosition(52, 7), LvGeoPosition(51, 9)});
    QVERIFY(element.boundingBox() == LvGeoPositionRect(LvGeoPosition(50, 7), LvGeoPosition(52, 9)));
    QVERIFY(Element({}).boundingBox() == LvGeoPositionRect());
}

void tst_LvGPXTrackElement::timeFrame_data()
{
    QTest::addColumn<QList<QDateTime>>("timeStamps");
    QTest::addColumn<QDateTime>("min");
    QTest::addColumn<QDateTime>("max");
    QTest::newRow("none") << QList<QDateTime>{} << QDateTime() << QDateTime();
    QTest::newRow("only points without a time") << QList<QDateTime>{{}, {}} << QDateTime() << QDateTime();
    QTest::newRow("one") << QList<QDateTime>{utc(9)} << utc(9) << utc(9);
    QTest::newRow("not in order") << QList<QDateTime>{utc(9), utc(11), utc(8), utc(10)} << utc(8) << utc(11);
    QTest::newRow("no time at first") << QList<QDateTime>{{}, {}, utc(9), utc(8)} << utc(8) << utc(9);
    // A null date-time compares like 1970, as with every range of date-times.
    QTest::newRow("no time behind one with a time")
        << QList<QDateTime>{utc(9), {}, utc(11)} << QDateTime() << utc(11);
    QTest::newRow("other zone") << QList<QDateTime>{utc(9),
                                                    QDateTime(QDate(2024, 5, 17), QTime(9, 30),
                                                              Qt::OffsetFromUTC, 3600)}
                                << utc(8).addSecs(1800) << utc(9);
}

void tst_LvGPXTrackElement::timeFrame()
{
    QFETCH(QList<QDateTime>, timeStamps);
    QFETCH(QDateTime, min);
    QFETCH(QDateTime, max);
    const Element element({}, timeStamps);
    const LvRange<QDateTime> frame = element.timeFrame();
    QCOMPARE(frame.min(), min);
    QCOMPARE(frame.max(), max);
    QCOMPARE(frame.min().isNull(), min.isNull());
    QCOMPARE(frame.max().isNull(), max.isNull());
}

void tst_LvGPXTrackElement::safeDouble_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<double>("expected");
    QTest::newRow("empty") << "" << 0.0;
    QTest::newRow("null") << QString() << 0.0;
    QTest::newRow("no number") << "north" << 0.0;
    QTest::newRow("whole number") << "53" << 53.0;
    QTest::newRow("negative") << "-53.25" << -53.25;
    QTest::newRow("seven digits behind the point") << "8.1234567" << 8.1234567;
    QTest::newRow("eighth digit cut, not rounded") << "8.12345679" << 8.1234567;
    QTest::newRow("many digits") << "8.123456789012345" << 8.1234567;
    QTest::newRow("seven characters without a point") << "1234567" << 1234567.0;
    QTest::newRow("eighth character without a point cut") << "12345678" << 1234567.0;
    QTest::newRow("leading point") << ".12345678" << 0.1234567;
    QTest::newRow("exponent beyond the digits cut") << "1.2345678e5" << 1.2345678;
    QTest::newRow("exponent within the digits kept") << "1.5e2" << 150.0;
    QTest::newRow("exponent cut in the middle") << "1.23456e10" << 12.3456;
    QTest::newRow("exponent cut behind its letter is no number") << "1.234567e5" << 0.0;
    QTest::newRow("second point") << "1.2.3" << 0.0;
    QTest::newRow("decimal comma") << "8,5" << 0.0;
}

void tst_LvGPXTrackElement::safeDouble()
{
    QFETCH(QString, text);
    QFETCH(double, expected);
    const double actual = LvGPXTrackElement::safeDouble(text);
    QVERIFY2(actual == expected, qPrintable(QString::number(actual, 'g', 17)));
}

LV_TEST_MAIN(tst_LvGPXTrackElement)
#include "tst_LvGPXTrackElement.moc"
