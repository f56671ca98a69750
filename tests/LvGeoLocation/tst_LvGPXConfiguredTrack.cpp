#include "LvGPXConfiguredTrack.h"
#include "LvGPXMarkerShape.h"
#include "LvGPXTrackDisplayOptions.h"
#include "LvGPXTrackPoint.h"
#include "LvGPXTrackSegment.h"
#include "LvGeoLocationSettings.h"
#include "LvGeoPositionRect.h"
#include "LvTest.h"

#include <QDir>
#include <QDomDocument>
#include <QTemporaryDir>

#include <cmath>
#include <limits>

namespace
{

LvGPXTrackPoint point(double latitude, double longitude)
{
    return {LvGeoPosition(LvLatitude(latitude), LvLongitude(longitude)), 0, QDateTime(), QString()};
}

LvGPXTrack track(const QList<LvGPXTrackPoint>& points, const LvGPXTrackShape& shape)
{
    QList<LvGPXTrackSegment> segments;
    if (!points.isEmpty()) {
        segments.append(LvGPXTrackSegment(points));
    }
    return {QStringLiteral("Tour"), QStringLiteral("all around"), segments, shape};
}

/// Ten points in a line: latitude 50, longitudes 0 to 9.
LvGPXTrack tenPoints(const LvGPXTrackShape& shape = LvGPXTrackShape(LvGPXTrackShapeEnum::linestring))
{
    QList<LvGPXTrackPoint> points;
    for (int i = 0; i < 10; ++i) {
        points.append(point(50.0, i));
    }
    return track(points, shape);
}

/// A closed ring whose points are not spread evenly around its centre (51, 11).
LvGPXTrack ring(const LvGPXTrackShape& shape = LvGPXTrackShape(LvGPXTrackShapeEnum::polygon))
{
    return track({point(50, 10), point(50, 12), point(50.5, 12), point(52, 12), point(50, 10)}, shape);
}

LvGPXTrack onePoint()
{
    return track({point(53, 8)}, LvGPXTrackShapeEnum::point);
}

LvGPXTrackConfiguration style(LvGPXTrackShapeEnum trackShape,
                              LvGPXMarkerShapeEnum markerShape = LvGPXMarkerShapeEnum::disk)
{
    LvGPXTrackConfiguration configuration = LvGPXTrackConfiguration::defaultValue();
    configuration.setTrackShape(trackShape);
    configuration.setMarkerShape(markerShape);
    return configuration;
}

/// A track that is paired with a configuration as it is, as reading from XML does.
LvGPXConfiguredTrack unadapted(const LvGPXTrack& path, LvGPXTrackShapeEnum trackShape)
{
    LvGPXConfiguredTrack configured(tenPoints(), style(trackShape));
    configured.setTrack(path);
    return configured;
}

QString describe(const LvGeoPosition& position)
{
    return QStringLiteral("%1/%2").arg(QString::number(position.latitude().decimalDegrees()),
                                       QString::number(position.longitude().decimalDegrees()));
}

QString describe(const LvGeoPositionList& positions)
{
    QStringList texts;
    for (const LvGeoPosition& position : positions) {
        texts.append(describe(position));
    }
    return texts.join(QLatin1Char(' '));
}

} // namespace

Q_DECLARE_METATYPE(LvGPXTrack)
Q_DECLARE_METATYPE(LvGPXTrackShapeEnum)
Q_DECLARE_METATYPE(LvGPXMarkerShapeEnum)

class tst_LvGPXConfiguredTrack : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void cleanup();
    void defaults();
    void defaultIsThatOfTheUser();
    void fromPoint();
    void automaticShape_data();
    void automaticShape();
    void forwardsToTrack();
    void forwardsToConfiguration();
    void settersTellWhetherTheyChanged();
    void copiesAreIndependent();
    void equality();
    void setTrackKeepsConfiguration();
    void setConfigurationTrackShape_data();
    void setConfigurationTrackShape();
    void setConfigurationMarker_data();
    void setConfigurationMarker();
    void setConfigurationTellsChange();
    void effectiveShape_data();
    void effectiveShape();
    void drawingPoints_data();
    void drawingPoints();
    void positionRelativeFromStart_data();
    void positionRelativeFromStart();
    void differentAspects();
    void halo_data();
    void halo();
    void xmlForm();
    void xmlRoundTrip();
    void xmlKeepsAutomaticShape();
    void xmlFirstTrkOnly();
    void xmlIncludesFile();
};

void tst_LvGPXConfiguredTrack::cleanup()
{
    LvGeoLocationSettings::instance()->setDefaultTrackConfiguration(LvGPXTrackConfiguration::defaultValue());
}

void tst_LvGPXConfiguredTrack::defaults()
{
    const LvGPXConfiguredTrack configured;
    QVERIFY(!configured.track().isValid());
    QVERIFY(configured.track() == LvGPXTrack());
    // Not adapted to the empty track: the shape stays automatic.
    QVERIFY(configured.configuration() == LvGPXTrackConfiguration::defaultValue());
}

void tst_LvGPXConfiguredTrack::defaultIsThatOfTheUser()
{
    LvGPXTrackConfiguration wanted = LvGPXTrackConfiguration::defaultValue();
    wanted.setLineColor(QColor(1, 2, 3));
    LvGeoLocationSettings::instance()->setDefaultTrackConfiguration(wanted);
    QCOMPARE(LvGPXConfiguredTrack().lineColor().rgba(), qRgb(1, 2, 3));
}

void tst_LvGPXConfiguredTrack::fromPoint()
{
    const LvGPXTrackPoint named(LvGeoPosition(LvLatitude(53), LvLongitude(8)), 0, QDateTime(),
                                QStringLiteral("Bremen"));
    const LvGPXConfiguredTrack configured(named, style(LvGPXTrackShapeEnum::automatic));
    QVERIFY(configured.isSinglePoint());
    QCOMPARE(configured.name(), QStringLiteral("Bremen"));
    QVERIFY(configured.configuration().trackShape() == LvGPXTrackShapeEnum::point);
}

void tst_LvGPXConfiguredTrack::automaticShape_data()
{
    QTest::addColumn<LvGPXTrack>("path");
    QTest::addColumn<quint32>("configured");
    QTest::addColumn<quint32>("result");

    QTest::newRow("automatic line") << tenPoints() << 256U << 4U;
    QTest::newRow("automatic ring") << ring() << 256U << 8U;
    QTest::newRow("automatic point") << onePoint() << 256U << 1U;
    QTest::newRow("automatic without points") << LvGPXTrack() << 256U << 0U;
    QTest::newRow("unknown") << tenPoints() << 0U << 4U;
    QTest::newRow("automatic bit among others") << tenPoints() << (256U | 8U) << 4U;
    QTest::newRow("points count, not the declared shape")
        << tenPoints(LvGPXTrackShape(LvGPXTrackShapeEnum::polygon)) << 256U << 4U;
    QTest::newRow("fixed shape stays") << tenPoints() << 8U << 8U;
    QTest::newRow("hop stays") << tenPoints() << 2U << 2U;
    QTest::newRow("fixed shape of a point stays") << onePoint() << 4U << 4U;
}

void tst_LvGPXConfiguredTrack::automaticShape()
{
    QFETCH(const LvGPXTrack, path);
    QFETCH(const quint32, configured);
    QFETCH(const quint32, result);

    const LvGPXConfiguredTrack made(path, style(static_cast<LvGPXTrackShapeEnum>(configured)));
    QCOMPARE(static_cast<quint32>(made.configuration().trackShape().value()), result);

    LvGPXConfiguredTrack later = unadapted(path, LvGPXTrackShapeEnum::polygon);
    LvGPXTrackConfiguration raw = later.configuration();
    QVERIFY(raw.trackShape() == LvGPXTrackShapeEnum::polygon);
    later.autoConfigureTrackShape();
    QVERIFY(later.configuration() == raw); // a fixed shape is left alone
}

void tst_LvGPXConfiguredTrack::forwardsToTrack()
{
    const QDateTime noon(QDate(2024, 5, 1), QTime(12, 0), Qt::UTC);
    const auto timed = [](double latitude, double longitude, const QDateTime& time) {
        return LvGPXTrackPoint(LvGeoPosition(LvLatitude(latitude), LvLongitude(longitude)), 0, time,
                               QString());
    };
    const LvGPXTrackSegment first(QList<LvGPXTrackPoint>{timed(50, 1, noon), timed(51, 2, noon.addSecs(60))});
    const LvGPXTrackSegment second(timed(52, 3, QDateTime()));
    const LvGPXTrack path(QStringLiteral("Tour"), QStringLiteral("all around"), {first, second},
                          LvGPXTrackShapeEnum::linestring);
    const LvGPXConfiguredTrack configured(path, style(LvGPXTrackShapeEnum::linestring));
    QVERIFY(configured.track() == path);
    QCOMPARE(configured.name(), QStringLiteral("Tour"));
    QCOMPARE(configured.description(), QStringLiteral("all around"));
    QVERIFY(configured.naturalShape() == LvGPXTrackShapeEnum::linestring);
    QCOMPARE(describe(configured.allPoints()), QStringLiteral("50/1 51/2 52/3"));
    LvGeoPositionList joined;
    for (const LvGeoPositionList& chunk : configured.chunkedPoints()) {
        joined.append(chunk);
    }
    QCOMPARE(configured.chunkedPoints().count(), path.chunkedPoints().count());
    QCOMPARE(describe(joined), QStringLiteral("50/1 51/2 52/3"));
    QVERIFY(!configured.isSinglePoint());
    QCOMPARE(describe(configured.firstPoint()), QStringLiteral("50/1"));
    QCOMPARE(describe(configured.lastPoint()), QStringLiteral("52/3"));
    QCOMPARE(configured.allTimeStamps(), QList<QDateTime>({noon, noon.addSecs(60), QDateTime()}));
    QVERIFY(LvGPXConfiguredTrack(onePoint(), style(LvGPXTrackShapeEnum::point)).isSinglePoint());
    // Through the interface that all track elements share.
    const LvGPXTrackElement& element = configured;
    QCOMPARE(element.allPoints().count(), 3);
    QVERIFY(element.boundingBox() == path.boundingBox());
}

void tst_LvGPXConfiguredTrack::forwardsToConfiguration()
{
    const LvGPXTrackConfiguration configuration(QColor(1, 2, 3), 4.0, QColor(5, 6, 7, 8), 9.0,
                                                LvGPXTrackDisplayOptions(LvGPXTrackDisplayOptionsEnum::fill),
                                                LvGPXMarkerShapeEnum::circle, LvGPXTrackShapeEnum::polygon,
                                                LvPenStyle(2), 77, 3);
    const LvGPXConfiguredTrack configured(ring(), configuration);
    QVERIFY(configured.configuration() == configuration);
    QCOMPARE(configured.lineColor(), QColor(1, 2, 3));
    QCOMPARE(configured.fillColor(), QColor(5, 6, 7, 8));
    QCOMPARE(configured.lineWidth().value(), 4.0);
    QCOMPARE(configured.haloWidth().value(), 9.0);
    QVERIFY(configured.penStyle() == LvPenStyle(2));
    QCOMPARE(configured.smoothingStrength(), 77);
    QCOMPARE(configured.smoothingSteps(), 3);
    QVERIFY(configured.hasDrawOption(LvGPXTrackDisplayOptionsEnum::fill));
    QVERIFY(!configured.hasDrawOption(LvGPXTrackDisplayOptionsEnum::stroke));
}

void tst_LvGPXConfiguredTrack::settersTellWhetherTheyChanged()
{
    LvGPXConfiguredTrack configured(tenPoints(), style(LvGPXTrackShapeEnum::linestring));
    QVERIFY(configured.setLineColor(QColor(1, 2, 3)));
    QVERIFY(!configured.setLineColor(QColor(1, 2, 3)));
    QVERIFY(configured.setFillColor(QColor(4, 5, 6, 7)));
    QVERIFY(!configured.setFillColor(QColor(4, 5, 6, 7)));
    QVERIFY(configured.setLineWidth(3.5));
    QVERIFY(!configured.setLineWidth(3.5));
    QVERIFY(configured.setPenStyle(LvPenStyle(3)));
    QVERIFY(!configured.setPenStyle(LvPenStyle(3)));
    QVERIFY(configured.setSmoothingStrength(50));
    QVERIFY(!configured.setSmoothingStrength(50));
    QVERIFY(configured.setSmoothingSteps(4));
    QVERIFY(!configured.setSmoothingSteps(4));
    QCOMPARE(configured.lineColor(), QColor(1, 2, 3));
    QCOMPARE(configured.fillColor(), QColor(4, 5, 6, 7));
    QCOMPARE(configured.lineWidth().value(), 3.5);
    QVERIFY(configured.penStyle() == LvPenStyle(3));
    QCOMPARE(configured.smoothingStrength(), 50);
    QCOMPARE(configured.smoothingSteps(), 4);
}

void tst_LvGPXConfiguredTrack::copiesAreIndependent()
{
    const LvGPXConfiguredTrack original(tenPoints(), style(LvGPXTrackShapeEnum::linestring));
    LvGPXConfiguredTrack copy = original;
    copy.setLineWidth(1.0);
    copy.setTrack(onePoint());
    QCOMPARE(original.lineWidth().value(), 10.0);
    QCOMPARE(original.allPoints().count(), 10);
    const LvGPXConfiguredTrack moved = std::move(copy);
    QCOMPARE(moved.lineWidth().value(), 1.0);
    QVERIFY(moved.isSinglePoint());
}

void tst_LvGPXConfiguredTrack::equality()
{
    const LvGPXConfiguredTrack one(tenPoints(), style(LvGPXTrackShapeEnum::linestring));
    LvGPXConfiguredTrack other(tenPoints(), style(LvGPXTrackShapeEnum::linestring));
    QVERIFY(one == other);
    other.setSmoothingSteps(2);
    QVERIFY(!(one == other));
    QVERIFY(one != other);
    QVERIFY(one != LvGPXConfiguredTrack(ring(), style(LvGPXTrackShapeEnum::linestring)));
}

void tst_LvGPXConfiguredTrack::setTrackKeepsConfiguration()
{
    LvGPXConfiguredTrack configured(tenPoints(), style(LvGPXTrackShapeEnum::linestring));
    const LvGPXTrackConfiguration before = configured.configuration();
    configured.setTrack(onePoint());
    QVERIFY(configured.track() == onePoint());
    QVERIFY(configured.configuration() == before);
}

void tst_LvGPXConfiguredTrack::setConfigurationTrackShape_data()
{
    QTest::addColumn<LvGPXTrack>("path");
    QTest::addColumn<LvGPXTrackShapeEnum>("current");
    QTest::addColumn<LvGPXTrackShapeEnum>("wanted");
    QTest::addColumn<LvGPXTrackShapeEnum>("result");

    using enum LvGPXTrackShapeEnum;
    QTest::newRow("line: unknown keeps the current one") << tenPoints() << polygon << unknown << polygon;
    QTest::newRow("line: unknown keeps even automatic") << tenPoints() << automatic << unknown << automatic;
    QTest::newRow("line: a shape is taken") << tenPoints() << polygon << linestring << linestring;
    QTest::newRow("line: automatic is taken as it is") << tenPoints() << polygon << automatic << automatic;
    QTest::newRow("line: point is taken") << tenPoints() << linestring << point << point;
    QTest::newRow("line shown as a point: a shape is taken") << tenPoints() << point << polygon << polygon;
    QTest::newRow("no points: unknown keeps the current one")
        << LvGPXTrack() << polygon << unknown << polygon;
    QTest::newRow("point: unknown") << onePoint() << polygon << unknown << point;
    QTest::newRow("point: another shape") << onePoint() << polygon << linestring << point;
    QTest::newRow("point: automatic") << onePoint() << polygon << automatic << point;
}

void tst_LvGPXConfiguredTrack::setConfigurationTrackShape()
{
    QFETCH(const LvGPXTrack, path);
    QFETCH(const LvGPXTrackShapeEnum, current);
    QFETCH(const LvGPXTrackShapeEnum, wanted);
    QFETCH(const LvGPXTrackShapeEnum, result);

    LvGPXConfiguredTrack configured(path, style(current));
    if (current == LvGPXTrackShapeEnum::automatic) {
        configured.setConfiguration(style(current));
    }
    QVERIFY(configured.configuration().trackShape() == current);
    LvGPXTrackConfiguration changed = style(wanted);
    changed.setLineWidth(2.0);
    configured.setConfiguration(changed);
    QVERIFY(configured.configuration().trackShape() == result);
    QCOMPARE(configured.lineWidth().value(), 2.0); // all the rest is taken over
}

void tst_LvGPXConfiguredTrack::setConfigurationMarker_data()
{
    QTest::addColumn<LvGPXTrack>("path");
    QTest::addColumn<LvGPXMarkerShapeEnum>("current");
    QTest::addColumn<LvGPXMarkerShapeEnum>("wanted");
    QTest::addColumn<LvGPXMarkerShapeEnum>("result");

    using enum LvGPXMarkerShapeEnum;
    QTest::newRow("point: unknown keeps the current one") << onePoint() << star6 << unknown << star6;
    QTest::newRow("point: unknown on both sides is a circle") << onePoint() << unknown << unknown << circle;
    QTest::newRow("point: a marker is taken") << onePoint() << star6 << rhombus << rhombus;
    QTest::newRow("line: unknown is taken") << tenPoints() << arrow << unknown << unknown;
}

void tst_LvGPXConfiguredTrack::setConfigurationMarker()
{
    QFETCH(const LvGPXTrack, path);
    QFETCH(const LvGPXMarkerShapeEnum, current);
    QFETCH(const LvGPXMarkerShapeEnum, wanted);
    QFETCH(const LvGPXMarkerShapeEnum, result);

    LvGPXConfiguredTrack configured(path, style(LvGPXTrackShapeEnum::automatic, current));
    configured.setConfiguration(style(LvGPXTrackShapeEnum::automatic, wanted));
    QVERIFY(configured.configuration().markerShape() == result);
}

void tst_LvGPXConfiguredTrack::setConfigurationTellsChange()
{
    LvGPXConfiguredTrack configured(onePoint(), style(LvGPXTrackShapeEnum::automatic));
    QVERIFY(!configured.setConfiguration(style(LvGPXTrackShapeEnum::automatic))); // becomes point again
    QVERIFY(configured.setConfiguration(style(LvGPXTrackShapeEnum::point, LvGPXMarkerShapeEnum::x)));
}

void tst_LvGPXConfiguredTrack::effectiveShape_data()
{
    QTest::addColumn<LvGPXTrack>("path");
    QTest::addColumn<LvGPXTrackShapeEnum>("configured");
    QTest::addColumn<LvGPXTrackShapeEnum>("result");

    using enum LvGPXTrackShapeEnum;
    QTest::newRow("one position is a point") << onePoint() << polygon << point;
    QTest::newRow("one position is a point, also with automatic") << onePoint() << automatic << point;
    QTest::newRow("automatic: what the track declares")
        << tenPoints(LvGPXTrackShape(hop)) << automatic << hop;
    QTest::newRow("automatic: not the natural shape")
        << ring(LvGPXTrackShape(linestring)) << automatic << linestring;
    QTest::newRow("configured shape") << tenPoints(LvGPXTrackShape(hop)) << polygon << polygon;
    QTest::newRow("configured as unknown") << tenPoints() << unknown << unknown;
    QTest::newRow("no points, automatic: linestring is the default of a track")
        << LvGPXTrack() << automatic << linestring;
}

void tst_LvGPXConfiguredTrack::effectiveShape()
{
    QFETCH(const LvGPXTrack, path);
    QFETCH(const LvGPXTrackShapeEnum, configured);
    QFETCH(const LvGPXTrackShapeEnum, result);

    QDomDocument document;
    QDomElement parent = document.createElement(QStringLiteral("parent"));
    path.toXml(parent, QDir(QString()));
    LvGPXTrackConfiguration configuration = style(configured);
    configuration.toXml(parent);
    const LvGPXConfiguredTrack made(parent, QDir(QString()));
    QVERIFY(made.configuration().trackShape() == configured);
    QVERIFY(made.effectiveShape() == result);
}

void tst_LvGPXConfiguredTrack::drawingPoints_data()
{
    QTest::addColumn<LvGPXTrack>("path");
    QTest::addColumn<LvGPXTrackShapeEnum>("configured");
    QTest::addColumn<QString>("points");

    using enum LvGPXTrackShapeEnum;
    const QString line = QStringLiteral("50/0 50/1 50/2 50/3 50/4 50/5 50/6 50/7 50/8 50/9");
    const QString corners = QStringLiteral("50/10 50/12 50.5/12 52/12 50/10");
    QTest::newRow("line as it is") << tenPoints() << linestring << line;
    QTest::newRow("line as a polygon") << tenPoints() << polygon << line;
    QTest::newRow("line as a hop") << tenPoints() << hop << line;
    QTest::newRow("line as a point: 4.5 rounds to the point with index 5") << tenPoints() << point << "50/5";
    QTest::newRow("ring as it is") << ring() << polygon << corners;
    QTest::newRow("ring as a line") << ring() << linestring << corners;
    QTest::newRow("ring as a point: the centre of its box") << ring() << point << "51/11";
    QTest::newRow("one position") << onePoint() << point << "53/8";
    QTest::newRow("one position configured as a line") << onePoint() << linestring << "53/8";
    QTest::newRow("no points") << LvGPXTrack() << linestring << "";
    QTest::newRow("no points as a point: one default position") << LvGPXTrack() << point << "720/720";
}

void tst_LvGPXConfiguredTrack::drawingPoints()
{
    QFETCH(const LvGPXTrack, path);
    QFETCH(const LvGPXTrackShapeEnum, configured);
    QFETCH(const QString, points);

    const LvGPXConfiguredTrack made = unadapted(path, configured);
    QVERIFY(made.configuration().trackShape() == configured);
    QCOMPARE(describe(made.drawingPoints()), points);
}

void tst_LvGPXConfiguredTrack::positionRelativeFromStart_data()
{
    QTest::addColumn<LvGPXTrack>("path");
    QTest::addColumn<LvGPXTrackShapeEnum>("configured");
    QTest::addColumn<double>("fraction");
    QTest::addColumn<QString>("position");

    using enum LvGPXTrackShapeEnum;
    const QString none = QStringLiteral("720/720");
    const LvGPXTrack two = track({::point(50, 0), ::point(52, 4)}, hop);
    QTest::newRow("start") << tenPoints() << linestring << 0.0 << "50/0";
    QTest::newRow("end") << tenPoints() << linestring << 1.0 << "50/9";
    QTest::newRow("half away from zero") << tenPoints() << linestring << 0.5 << "50/5";
    QTest::newRow("just below the half") << tenPoints() << linestring << 0.499 << "50/4";
    QTest::newRow("beyond the end, rounded to it") << tenPoints() << linestring << 1.05 << "50/9";
    QTest::newRow("beyond the end") << tenPoints() << linestring << 1.06 << none;
    QTest::newRow("before the start, rounded to it") << tenPoints() << linestring << -0.05 << "50/0";
    QTest::newRow("before the start: -0.5 rounds to -1") << tenPoints() << linestring << -0.5 / 9.0 << none;
    QTest::newRow("far beyond") << tenPoints() << linestring << 1e300 << none;
    QTest::newRow("no number") << tenPoints() << linestring << std::numeric_limits<double>::quiet_NaN()
                               << none;
    QTest::newRow("infinite") << tenPoints() << linestring << std::numeric_limits<double>::infinity() << none;
    QTest::newRow("hop: centre of the box") << two << hop << 0.25 << "51/2";
    QTest::newRow("hop: centre whatever the fraction") << two << hop << 7.0 << "51/2";
    QTest::newRow("polygon: centre of the box") << ring() << polygon << 0.0 << "51/11";
    QTest::newRow("line configured as polygon: centre") << tenPoints() << polygon << 0.0 << "50/4.5";
    QTest::newRow("ring configured as line: point") << ring() << linestring << 0.5 << "50.5/12";
    QTest::newRow("one position configured as polygon: the point") << onePoint() << polygon << 0.7 << "53/8";
    QTest::newRow("no points") << LvGPXTrack() << linestring << 0.5 << none;
    QTest::newRow("no points, from the start") << LvGPXTrack() << linestring << 0.0 << none;
    QTest::newRow("no points, configured as polygon") << LvGPXTrack() << polygon << 0.5 << none;
}

void tst_LvGPXConfiguredTrack::positionRelativeFromStart()
{
    QFETCH(const LvGPXTrack, path);
    QFETCH(const LvGPXTrackShapeEnum, configured);
    QFETCH(const double, fraction);
    QFETCH(const QString, position);

    const LvGPXConfiguredTrack made = unadapted(path, configured);
    QCOMPARE(describe(made.positionRelativeFromStart(fraction)), position);
}

void tst_LvGPXConfiguredTrack::differentAspects()
{
    const LvGPXConfiguredTrack one(tenPoints(), style(LvGPXTrackShapeEnum::linestring));
    LvGPXConfiguredTrack other = one;
    QVERIFY(!one.differentAspects(other));
    other.setFillColor(Qt::red);
    other.setSmoothingSteps(5);
    QVERIFY(!one.differentAspects(other)); // changes that are no aspect
    other.setLineWidth(3.0);
    QCOMPARE(one.differentAspects(other), LvGPXTrackAspect(1));
    other.setLineColor(Qt::red);
    QCOMPARE(one.differentAspects(other), LvGPXTrackAspect(3));
    other.setTrack(ring());
    QCOMPARE(one.differentAspects(other), LvGPXTrackAspect(7));
    QCOMPARE(other.differentAspects(one), LvGPXTrackAspect(7));
    LvGPXTrack renamed = tenPoints();
    renamed.setName(QStringLiteral("other"));
    LvGPXConfiguredTrack third = one;
    third.setTrack(renamed);
    QCOMPARE(one.differentAspects(third), LvGPXTrackAspect(4));
}

void tst_LvGPXConfiguredTrack::halo_data()
{
    QTest::addColumn<double>("now");
    QTest::addColumn<double>("previous");
    QTest::addColumn<bool>("becomesVisible");

    QTest::newRow("from none to some") << 3.0 << 0.0 << true;
    QTest::newRow("from some to some") << 3.0 << 2.0 << false;
    QTest::newRow("from some to none") << 0.0 << 2.0 << false;
    QTest::newRow("never") << 0.0 << 0.0 << false;
}

void tst_LvGPXConfiguredTrack::halo()
{
    QFETCH(const double, now);
    QFETCH(const double, previous);
    QFETCH(const bool, becomesVisible);

    const auto withHalo = [](double width) {
        LvGPXTrackConfiguration configuration = style(LvGPXTrackShapeEnum::linestring);
        configuration.setHaloWidth(width);
        return LvGPXConfiguredTrack(tenPoints(), configuration);
    };
    QCOMPARE(withHalo(now).wouldChangeHaloToVisibleAgainst(withHalo(previous)), becomesVisible);
}

void tst_LvGPXConfiguredTrack::xmlForm()
{
    QDomDocument document;
    QDomElement parent = document.createElement(QStringLiteral("parent"));
    LvGPXConfiguredTrack(tenPoints(), style(LvGPXTrackShapeEnum::linestring))
        .toXml(parent, QStringLiteral("anyName"), QDir(QString()));

    QCOMPARE(parent.childNodes().count(), 1);
    const QDomElement element = parent.firstChildElement();
    QCOMPARE(element.tagName(), QStringLiteral("anyName"));
    // One element: the track as a child, the style beside it.
    QCOMPARE(element.firstChildElement().tagName(), QStringLiteral("trk"));
    QCOMPARE(
        element.firstChildElement(QStringLiteral("trk")).firstChildElement(QStringLiteral("name")).text(),
        QStringLiteral("Tour"));
    QCOMPARE(element.firstChildElement().nextSiblingElement().tagName(), QStringLiteral("pensize"));
    QCOMPARE(element.firstChildElement(QStringLiteral("trackShape")).text(), QStringLiteral("linestring"));
    QCOMPARE(element.attribute(QStringLiteral("smoothing")), QStringLiteral("100"));
}

void tst_LvGPXConfiguredTrack::xmlRoundTrip()
{
    LvGPXTrackConfiguration configuration = style(LvGPXTrackShapeEnum::polygon, LvGPXMarkerShapeEnum::star9);
    configuration.setLineColor(QColor(1, 2, 3, 4));
    configuration.setHaloWidth(6.0);
    const LvGPXTrack path(QStringLiteral("Tour"), QString(), ring().segments(), LvGPXTrackShapeEnum::polygon);
    const LvGPXConfiguredTrack written(path, configuration);
    QDomDocument document;
    QDomElement parent = document.createElement(QStringLiteral("parent"));
    written.toXml(parent, QStringLiteral("configuredTrack"), QDir(QString()));
    QVERIFY(LvGPXConfiguredTrack(parent.firstChildElement(), QDir(QString())) == written);
}

void tst_LvGPXConfiguredTrack::xmlKeepsAutomaticShape()
{
    QDomDocument document;
    QVERIFY(document.setContent(QStringLiteral("<any><trackShape>auto</trackShape><trk><trkseg>"
                                               "<trkpt lat='50' lon='8'/><trkpt lat='51' lon='8'/>"
                                               "</trkseg></trk></any>")));
    const LvGPXConfiguredTrack read(document.documentElement(), QDir(QString()));
    QVERIFY(read.configuration().trackShape() == LvGPXTrackShapeEnum::automatic);
    QCOMPARE(read.allPoints().count(), 2);
}

void tst_LvGPXConfiguredTrack::xmlFirstTrkOnly()
{
    QDomDocument document;
    QVERIFY(document.setContent(
        QStringLiteral("<any><folder><trk><name>deeper</name></trk></folder><trk><name>first</name></trk>"
                       "<trk><name>second</name></trk></any>")));
    QCOMPARE(LvGPXConfiguredTrack(document.documentElement(), QDir(QString())).name(),
             QStringLiteral("first"));
    // Without a "trk" the track is empty and the style is read all the same.
    QVERIFY(document.setContent(QStringLiteral("<any><pensize>3</pensize></any>")));
    const LvGPXConfiguredTrack read(document.documentElement(), QDir(QString()));
    QVERIFY(!read.track().isValid());
    QCOMPARE(read.lineWidth().value(), 3.0);
}

void tst_LvGPXConfiguredTrack::xmlIncludesFile()
{
    const QTemporaryDir temporary;
    QVERIFY(temporary.isValid());
    const QDir dir(temporary.path());
    const LvGPXTrack path(QStringLiteral("filed"), QString(), ring().segments(),
                          LvGPXTrackShapeEnum::polygon);
    const LvGPXConfiguredTrack written(path, style(LvGPXTrackShapeEnum::polygon));
    QDomDocument document;
    QDomElement parent = document.createElement(QStringLiteral("parent"));
    written.toXml(parent, QStringLiteral("configuredTrack"), dir);
    const QDomElement trk = parent.firstChildElement().firstChildElement(QStringLiteral("trk"));
    const QString fileName = trk.firstChildElement(QStringLiteral("include")).text();
    QVERIFY(!fileName.isEmpty());
    QVERIFY(dir.exists(fileName));
    QVERIFY(LvGPXConfiguredTrack(parent.firstChildElement(), dir) == written);
    // Names of files mean nothing without the directory.
    QVERIFY(!LvGPXConfiguredTrack(parent.firstChildElement(), QDir(QString())).track().isValid());
}

LV_TEST_MAIN(tst_LvGPXConfiguredTrack)
#include "tst_LvGPXConfiguredTrack.moc"
