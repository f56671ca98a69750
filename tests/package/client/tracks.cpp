// What a program outside the tree can write with the track and file classes of the installed package.

#include <QDomDocument>
#include <QTemporaryDir>
#include <QTest>
#include <QThread>

#include <LvGPXConfiguredTrack.h>
#include <LvGPXConfiguredTrackList.h>
#include <LvGPXTrack.h>
#include <LvGPXTrackFile.h>
#include <LvGPXTrackFileRegistry.h>
#include <LvGPXTrackFileRegistryKey.h>
#include <LvGPXTrackPoint.h>
#include <LvGPXTrackSegment.h>
#include <LvGPXTrackSelection.h>
#include <LvGPXTrackSelectionComparisonResult.h>
#include <LvGPXTrackSmoothing.h>
#include <LvTrackSelectionFactory.h>
#include <LvTrackSelectionFactoryGPXFile.h>
#include <LvTrackSelectionFactoryKmlFile.h>

class tracks : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void points();
    void segments();
    void trackValues();
    void files();
    void smoothing();
    void registry();
    void factories();
    void configured();
    void selections();
};

namespace
{

QDomElement root(const QString& text)
{
    QDomDocument document;
    document.setContent(text);
    return document.documentElement();
}

LvGPXTrack line(int count, const QString& name = QStringLiteral("line"))
{
    QList<LvGPXTrackPoint> points;
    for (int i = 0; i < count; ++i) {
        points.append(LvGPXTrackPoint(LvGeoPosition(10 + i, 20 + i), i, QDateTime(), QString()));
    }
    return LvGPXTrack(name, QString(), {LvGPXTrackSegment(points)}, LvGPXTrackShape(4));
}

QFileInfo write(const QTemporaryDir& dir, const QString& name, const QByteArray& text)
{
    QFile file(dir.filePath(name));
    return file.open(QIODevice::WriteOnly) && file.write(text) == text.size() ? QFileInfo(file) : QFileInfo();
}

} // namespace

void tracks::points()
{
    QCOMPARE(LvGPXTrackPoint(root(QStringLiteral("<trkpt/>"))).position(), LvGeoPosition(1.0, 1.0));
    const LvGPXTrackPoint timed(LvGeoPosition(53.0, 8.5), 0, QDateTime::fromSecsSinceEpoch(1, Qt::UTC),
                                QString());
    QCOMPARE(timed.toKml(), QStringLiteral("8.5,53.,0,1000"));
    QCOMPARE(LvGPXTrackPoint(LvGeoPosition(53.0, 8.5), 0, QDateTime(), QString()).toKml(),
             QStringLiteral("8.5,53."));
    QCOMPARE(LvGPXTrackPoint::decodeKml(QStringLiteral("8.123456789,53.1"))
                 .position()
                 .longitude()
                 .decimalDegrees(),
             8.1234567);
    QCOMPARE(LvGPXTrackPoint::decodeKml(QStringLiteral("8.1")).position().latitude().decimalDegrees(), 0.0);
    const LvGPXTrackPoint decoded = LvGPXTrackPoint::decodeKml(QStringLiteral("8,53,100,1700000000"));
    QCOMPARE(decoded.elevation(), 100);
    QCOMPARE(decoded.timeStamp(), QDateTime(QDate(2023, 11, 14), QTime(22, 13, 20), Qt::UTC));
    QCOMPARE(LvGPXTrackElement::safeDouble(QStringLiteral("12345678")), 1234567.0);
    QCOMPARE(LvGPXTrackPoint().allTimeStamps(), QList<QDateTime>{QDateTime()});
    QVERIFY(LvGPXTrackPoint().isSinglePoint());
    QVERIFY(LvGPXTrackPoint::decodeKml(QString()).isNull());
    QVERIFY(timed
            == LvGPXTrackPoint(LvGeoPosition(53.0, 8.5), 0, QDateTime::fromSecsSinceEpoch(1, Qt::UTC),
                               QString()));
    QDomDocument document;
    QDomElement parent = document.createElement(QStringLiteral("p"));
    LvGPXTrackPoint(LvGeoPosition(53.1, 8), 7, QDateTime(), QStringLiteral("d")).toXml(parent);
    const QDomElement written = parent.firstChildElement(QStringLiteral("trkpt"));
    QCOMPARE(written.attribute(QStringLiteral("lat")), QStringLiteral("53.1"));
    QCOMPARE(written.firstChildElement().tagName(), QStringLiteral("ele"));
}

void tracks::segments()
{
    const LvGPXTrackSegment mixed(root(QStringLiteral("<trkseg><trkpt lat='1' lon='2'/><compressedPoints> "
                                                      "3,4  0,0\n0,1 </compressedPoints><x/></trkseg>")));
    QCOMPARE(mixed.count(), 3);
    QCOMPARE(mixed.toKml(), QStringLiteral("2.,1.\n3.,4.\n0.,1."));
    QVERIFY(!LvGPXTrackSegment().isValid());
    QCOMPARE(LvGPXTrackSegment().lastPoint(), LvGeoPosition());
    QCOMPARE(LvGPXTrackSegment::decodeKml(QStringLiteral("1,2 3,4")).allPoints().size(), 2);
    QCOMPARE(LvGPXTrackSegment::decodeTrackPoints(QStringLiteral("1,2")).size(), 1);
    QVERIFY(
        LvGPXTrackSegment(LvGPXTrackPoint(LvGeoPosition(1, 2), 0, QDateTime(), QString())).isSinglePoint());
    qsizetype total = 0;
    for (const LvGeoPositionList& chunk : mixed.chunkedPoints()) {
        total += chunk.size();
    }
    QCOMPARE(total, 3);
    QVERIFY(mixed.weAreaRunningInMainThread());
    qsizetype chunks = 0;
    QThread* worker = QThread::create([&] { chunks = mixed.chunkedPoints().size(); });
    worker->start();
    worker->wait();
    delete worker;
    QCOMPARE(chunks, 1);
    QCOMPARE(mixed.collectBlock(LvIntRange(1, 2)).size(), 2);
}

void tracks::trackValues()
{
    LvGPXTrack track(root(QStringLiteral("<trk><name>a</name><desc>b</desc><shape>auto</shape>"
                                         "<trkseg><trkpt lat='1' lon='2'/></trkseg></trk>")),
                     QDir(QString()));
    QVERIFY(track.hasShape(LvGPXTrackShape(1)));
    QCOMPARE(track.description(), QStringLiteral("b"));
    const LvGPXTrack copy = track;
    track.setName(QStringLiteral("z"));
    QCOMPARE(copy.name(), QStringLiteral("a"));
    QVERIFY(copy != track);
    QVERIFY(!LvGPXTrack().isValid());
    QVERIFY(LvGPXTrack().hasShape(LvGPXTrackShape(4)));
    QVERIFY(line(4) < line(5));
    QVERIFY(line(5) > line(4));
    track.addEnclave(track);
    QCOMPARE(track.enclaves().size(), 1);
    QVERIFY(track.enclaves().first().enclaves().isEmpty());
    const LvGPXTrack ring =
        LvGPXTrack::decodeKml(QStringLiteral("n"), QStringLiteral("d"),
                              QStringLiteral(" 0,0.5 9,1 9,9 0,0.5 "), LvGPXTrackShape(256));
    QVERIFY(ring.hasShape(LvGPXTrackShape(8)));
    QCOMPARE(ring.countPoints(), 4);
    QVERIFY(ring.naturalShape() == LvGPXTrackShape(8));
    const LvGPXTrack named(LvGPXTrackPoint(LvGeoPosition(1, 2), 0, QDateTime(), QStringLiteral("place")));
    QCOMPARE(named.name(), QStringLiteral("place"));
    QVERIFY(named.description().isEmpty());
    QDomDocument document;
    QDomElement parent = document.createElement(QStringLiteral("p"));
    copy.toXml(parent, QDir(QStringLiteral("/does/not/exist")));
    QCOMPARE(parent.firstChildElement().firstChildElement().tagName(), QStringLiteral("name"));
}

void tracks::files()
{
    const QTemporaryDir dir;
    const QFileInfo file =
        write(dir, QStringLiteral("to%2ur.gpx"),
              "<x><trk><trkseg><trkpt lat='1' lon='2'/></trkseg></trk><trk><name>n</name><trkseg>"
              "<trkpt lat='1' lon='2'/></trkseg></trk><rte><rtept><extensions>"
              "<gpxx:RoutePointExtension><gpxx:rpt lat='3' lon='4'/></gpxx:RoutePointExtension>"
              "</extensions></rtept></rte></x>");
    const LvGPXTrackFile read(file);
    QCOMPARE(read.tracks().size(), 3);
    QCOMPARE(read.tracks().at(0).name(), QStringLiteral("to%2ur 1"));
    QCOMPARE(read.tracks().at(2).name(), QStringLiteral("to%2ur 3"));
    QVERIFY(!LvGPXTrackFile(QFileInfo(dir.filePath(QStringLiteral("missing.gpx")))).isValid());
    const QFileInfo saved(dir.filePath(QStringLiteral("saved.gpx")));
    LvGPXTrack track = line(3);
    track.saveAsGpxFile(saved);
    QCOMPARE(LvGPXTrackFile(saved).tracks().value(0), track);
}

void tracks::smoothing()
{
    QPointF points[]{{0, 0}, {1, 1}, {2, 0}};
    LvGPXTrackSmoothing smoothing(points, 3, 0.5, 1);
    smoothing.run();
    QCOMPARE(points[1], QPointF(1, 0.5));
    QCOMPARE(smoothing.estimateFixPoints(3, 1), 1);
    QCOMPARE(smoothing.delta(QPointF(0, 0), QPointF(3, 4)), 5.0);
    QCOMPARE(smoothing.partOf(1, 3), 0.25);
    QCOMPARE(smoothing.mix(QPointF(4, 0), QPointF(0, 4), 0.25), QPointF(1, 3));
}

void tracks::registry()
{
    const QTemporaryDir path;
    const QDir dir(path.path());
    QDomDocument document;
    QDomElement parent = document.createElement(QStringLiteral("p"));
    line(3).toXml(parent, dir);
    line(3).toXml(parent, dir);
    line(4).toXml(parent, dir);
    const auto include = [&](int index) {
        return parent.childNodes().at(index).firstChildElement(QStringLiteral("include")).text();
    };
    QVERIFY(!include(0).isEmpty());
    QCOMPARE(include(0), include(1));
    QVERIFY(include(0) != include(2));
    QCOMPARE(LvGPXTrack(parent.firstChildElement(), dir), line(3));
    const LvGPXTrackFileRegistryKey key(line(3), dir);
    QVERIFY(key.isValid());
    LvGPXTrackFileRegistry* instance = LvGPXTrackFileRegistry::instance();
    QCOMPARE(LvSingleton<LvGPXTrackFileRegistry>::instance(), instance);
    QCOMPARE(instance->fileName(key), include(0));
    QVERIFY(instance->qt_metacast("LvSingleton<LvGPXTrackFileRegistry>") != nullptr);
    QCOMPARE(instance->createFileInfo(key, QStringLiteral("a")), QFileInfo(dir, QStringLiteral("a")));
}

void tracks::factories()
{
    const QTemporaryDir dir;
    const QFileInfo kml =
        write(dir, QStringLiteral("a.KML"),
              "<kml><Document><Style id='s'><LineStyle><color>ff0000ff</color><width>2</width></LineStyle>"
              "</Style><Folder><Placemark><styleUrl>#s</styleUrl><LineString><coordinates>1,2 3,4,12"
              "</coordinates></LineString></Placemark></Folder></Document></kml>");
    LvTrackSelectionFactory* factory = LvTrackSelectionFactory::instance();
    QCOMPARE(factory->supportedFileFormats().join(QLatin1Char(' ')), QStringLiteral("*.gpx *.kml *.kmz"));
    QVERIFY(factory->supportsFile(QUrl::fromLocalFile(kml.filePath())));
    QVERIFY(!factory->supportsFile(QUrl(QStringLiteral("file:///a.txt"))));
    const LvGPXConfiguredTrackList list =
        factory->createConfiguredTrackList(QUrl::fromLocalFile(kml.filePath()));
    QCOMPARE(list.count(), 1);
    QCOMPARE(list.at(0).name(), QStringLiteral("a.KML"));
    QCOMPARE(list.at(0).lineWidth().value(), 12.0);
    QCOMPARE(list.at(0).lineColor(), QColor(0, 0, 255, 255));
    QCOMPARE(factory->createConfiguredTrackList(QList<QUrl>{QUrl::fromLocalFile(kml.filePath())}).count(), 1);
    QVERIFY(LvTrackSelectionFactoryGPXFile().supportsFile(QFileInfo(QStringLiteral("Tour.GPX"))));
    QVERIFY(LvTrackSelectionFactoryKmlFile().readFile(QFileInfo(QStringLiteral("x.txt"))).isEmpty());
    QCOMPARE(LvTrackSelectionFactoryKmlFile().createConfiguredTrackList(kml).count(), 1);
}

void tracks::configured()
{
    const LvGPXTrackConfiguration automatic = LvGPXTrackConfiguration::defaultValue();
    const LvGPXConfiguredTrack point(LvGPXTrackPoint(LvGeoPosition(1, 2), 0, QDateTime(), QString()),
                                     automatic);
    QVERIFY(point.configuration().trackShape() == LvGPXTrackShape(1));
    LvGPXTrackConfiguration asPoint = automatic;
    asPoint.setTrackShape(LvGPXTrackShape(1));
    const LvGPXConfiguredTrack ten(line(10), asPoint);
    QCOMPARE(ten.drawingPoints().size(), 1);
    QCOMPARE(ten.drawingPoints().first(), LvGeoPosition(15, 25));
    QVERIFY(ten.effectiveShape() == LvGPXTrackShape(1));
    LvGPXConfiguredTrackList list(QList<LvGPXConfiguredTrack>{LvGPXConfiguredTrack(line(2), automatic), ten});
    QVERIFY(!list.setConfiguration(1, list.configuration(1)));
    QVERIFY(!list.setConfiguration(2, automatic));
    LvGPXTrackConfiguration unknown = automatic;
    unknown.setTrackShape(LvGPXTrackShape(0));
    QVERIFY(list.setConfiguration(1, unknown));
    QVERIFY(list.configuration(1).trackShape() == LvGPXTrackShape(256));
    list.moveTrack(0, 1);
    QCOMPARE(list.at(1).track().countPoints(), 2);
    QVERIFY(!LvGPXConfiguredTrackList().isValid());
    QCOMPARE(LvGPXConfiguredTrack(LvGPXTrack(), automatic).positionRelativeFromStart(0.5), LvGeoPosition());
    int walked = 0;
    for (const LvGPXConfiguredTrack& track : list) {
        walked += track.track().isValid() ? 1 : 0;
    }
    QCOMPARE(walked, 2);
}

void tracks::selections()
{
    LvGPXTrackSelection selection;
    selection.setCroppingOpacity(10);
    QCOMPARE(selection.effectiveCroppingOpacity(), 255);
    QCOMPARE(selection.nominalCroppingOpacity(), 10);
    for (int i = 2; i < 6; ++i) {
        selection.addTrack(line(i));
    }
    LvGPXTrackSelection changed = selection;
    LvGPXTrackConfiguration red = selection.configuration(1);
    red.setLineColor(Qt::red);
    QVERIFY(changed.setConfiguration(1, red));
    LvGPXTrackConfiguration wide = selection.configuration(3);
    wide.setLineWidth(LvDistance(99));
    QVERIFY(changed.setConfiguration(3, wide));
    const LvGPXTrackSelectionComparisonResult result = changed.compare(selection);
    QCOMPARE(result.changingTracks(), (QList<int>{1, 3, 1, 3}));
    QCOMPARE(int(result.changingAspects()), 3);
    QVERIFY(!result.trackCountChanges());
    QVERIFY(result.isMergeCompatible(result));
    QDomDocument document;
    QDomElement element = document.createElement(QStringLiteral("e"));
    changed.toXml(element, QDir(QString()));
    QVERIFY(LvGPXTrackSelection(element, QDir(QString()), QString()) == changed);
    changed.overrideColorOfTrack(0, 0);
    QCOMPARE(changed.value(0).lineColor(), QColor(0, 0, 0));
    QVERIFY(qAbs(changed.value(0).lineWidth().value() - 1280.0 / 85.0) < 1e-9);
    QCOMPARE(changed.reduceToTrackNumber(1).count(), 1);
    changed.moveTrack(0, 9);
    QVERIFY(changed.isValidRow(3));
    QCOMPARE(LvGPXTrackSelection().firstPoint(), LvGeoPosition());
}

QTEST_MAIN(tracks)
#include "tracks.moc"
