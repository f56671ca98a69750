#include "LvGPXTrackSelection.h"
#include "LvGeoPositionRect.h"
#include "LvTest.h"
#include "LvTestTracks.h"
#include "LvTrackBounds.h"

#include <cmath>

namespace
{

using Line = QList<QPointF>; // x = longitude, y = latitude
using Lines = QList<Line>;

LvGPXTrack trackOf(const Line& line)
{
    QList<LvGPXTrackPoint> points;
    for (const QPointF& point : line) {
        points.append(LvTestTracks::point(point.y(), point.x()));
    }
    return LvTestTracks::line(QStringLiteral("track"), points);
}

/// "west south east north", or "invalid".
QString textOf(const LvGeoPositionRect& rect)
{
    if (!rect.isValid()) {
        return QStringLiteral("invalid");
    }
    return QStringLiteral("%1 %2 %3 %4")
        .arg(rect.west().decimalDegrees())
        .arg(rect.south().decimalDegrees())
        .arg(rect.east().decimalDegrees())
        .arg(rect.north().decimalDegrees());
}

Line aroundTheWorld(int step)
{
    Line line;
    for (int longitude = -180; longitude <= 180; longitude += step) {
        line.append(QPointF(longitude, 10));
    }
    return line;
}

} // namespace

class tst_LvTrackBounds : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void ofSelection_data();
    void ofSelection();
    void ofElement();
};

void tst_LvTrackBounds::ofSelection_data()
{
    QTest::addColumn<Lines>("lines");
    QTest::addColumn<QString>("expected");

    QTest::newRow("no track") << Lines{} << "invalid";
    QTest::newRow("a track without points") << Lines{{}} << "invalid";
    QTest::newRow("a point") << Lines{{{8, 53}}} << "8 53 8 53";
    QTest::newRow("a line") << Lines{{{8, 53}, {7, 54}, {9, 52}}} << "7 52 9 54";
    QTest::newRow("eastwards across the date line") << Lines{{{170, 1}, {-175, 2}}} << "170 1 -175 2";
    QTest::newRow("westwards across the date line") << Lines{{{-175, 1}, {170, 2}}} << "170 1 -175 2";
    QTest::newRow("there and back") << Lines{{{170, 1}, {-175, 2}, {175, 3}}} << "170 1 -175 3";
    QTest::newRow("ends on the meridian, east") << Lines{{{170, 1}, {180, 2}}} << "170 1 180 2";
    QTest::newRow("ends on the meridian, west") << Lines{{{-170, 1}, {-180, 2}}} << "-180 1 -170 2";
    QTest::newRow("two tracks beside the date line")
        << Lines{{{170, 1}, {175, 2}}, {{-175, 3}, {-170, 4}}} << "170 1 -170 4";
    QTest::newRow("two tracks beside the prime meridian")
        << Lines{{{-5, 1}, {-3, 2}}, {{3, 3}, {5, 4}}} << "-5 1 5 4";
    QTest::newRow("one across and one beside it")
        << Lines{{{-170, 1}, {-160, 2}}, {{175, 3}, {-178, 4}}} << "175 1 -160 4";
    QTest::newRow("the widest gap is left out")
        << Lines{{{-100, 0.5}}, {{50, 1}}, {{120, 2}}} << "50 0.5 -100 2";
    QTest::newRow("one inside the other") << Lines{{{0, 1}, {20, 2}}, {{5, 1}, {6, 1}}} << "0 1 20 2";
    QTest::newRow("all around") << Lines{aroundTheWorld(10)} << "-180 10 180 10";
    QTest::newRow("nearly around") << Lines{{{-100, 1}, {0, 1}, {100, 1}, {-160, 1}}} << "-100 1 -160 1";
    QTest::newRow("a position that is not set") << Lines{{{8, 53}, {0, 0}, {9, 54}}} << "8 53 9 54";
    QTest::newRow("only positions that are not set") << Lines{{{0, 0}, {0, 0}}} << "invalid";
    QTest::newRow("up to the pole") << Lines{{{8, 89}, {9, 90}}} << "8 89 9 90";
}

void tst_LvTrackBounds::ofSelection()
{
    QFETCH(Lines, lines);
    QFETCH(QString, expected);

    LvGPXConfiguredTrackList tracks;
    for (const Line& line : std::as_const(lines)) {
        tracks.append(LvGPXConfiguredTrack(trackOf(line), LvGPXTrackConfiguration::defaultValue()));
    }
    LvGPXTrackSelection selection;
    selection.setTracks(tracks);
    QCOMPARE(textOf(LvTrackBounds::ofSelection(selection)), expected);
}

void tst_LvTrackBounds::ofElement()
{
    QCOMPARE(textOf(LvTrackBounds::ofElement(trackOf({{170, 1}, {-175, 2}}))),
             QStringLiteral("170 1 -175 2"));
    // A line of one piece is followed the long way, too: it does not come back over the meridian.
    QCOMPARE(textOf(LvTrackBounds::ofElement(trackOf({{-100, 1}, {0, 1}, {100, 2}}))),
             QStringLiteral("-100 1 100 2"));
    QCOMPARE(textOf(LvTrackBounds::ofElement(LvGPXTrack())), QStringLiteral("invalid"));
}

LV_TEST_MAIN(tst_LvTrackBounds)
#include "tst_LvTrackBounds.moc"
