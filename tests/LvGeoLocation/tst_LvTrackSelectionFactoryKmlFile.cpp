#include "LvGPXMarkerShape.h"
#include "LvGPXTrackSegment.h"
#include "LvGeoLocationSettings.h"
#include "LvTest.h"
#include "LvTrackSelectionFactoryKmlFile.h"

#include <QDir>
#include <QDomDocument>
#include <QElapsedTimer>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>

#include <utility>
#include <zip.h>

namespace
{

using Entries = QList<std::pair<QByteArray, QByteArray>>;

bool writeFile(const QString& path, const QByteArray& bytes)
{
    QFile file(path);
    return file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size();
}

bool writeArchive(const QString& path, const Entries& entries)
{
    QFile::remove(path);
    zip_t* archive = zip_open(QFile::encodeName(path).constData(), ZIP_CREATE, nullptr);
    bool isFine = archive != nullptr;
    for (const auto& [name, content] : entries) {
        zip_source_t* source =
            zip_source_buffer(archive, content.constData(), static_cast<zip_uint64_t>(content.size()), 0);
        isFine = isFine && zip_file_add(archive, name.constData(), source, ZIP_FL_ENC_UTF_8) >= 0;
    }
    return isFine && zip_close(archive) == 0;
}

/// A document with this content of its "Document".
QString documentOf(const QString& content)
{
    return QStringLiteral("<kml><Document>%1</Document></kml>").arg(content);
}

QString placemark(const QString& name)
{
    return QStringLiteral("<Placemark><name>%1</name></Placemark>").arg(name);
}

QString namesOf(const LvGPXConfiguredTrackList& list)
{
    QStringList names;
    for (const LvGPXConfiguredTrack& track : list) {
        names.append(track.name());
    }
    return names.join(QLatin1Char(' '));
}

QString pointsOf(const LvGPXTrack& track)
{
    QStringList texts;
    const QList<LvGPXTrackSegment> segments = track.segments();
    for (const LvGPXTrackSegment& segment : segments) {
        texts.append(segment.toKml().split(QLatin1Char('\n')));
    }
    return texts.join(QLatin1Char(' '));
}

QDomElement rootOf(QDomDocument& document, const QString& text)
{
    return document.setContent(text) ? document.documentElement() : QDomElement();
}

} // namespace

class tst_LvTrackSelectionFactoryKmlFile : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void cleanup();
    void supportsFile_data();
    void supportsFile();
    void supportedFileFormats();
    void readKml();
    void readKmz_data();
    void readKmz();
    void readOther();
    void decodeNames_data();
    void decodeNames();
    void decodeShapes_data();
    void decodeShapes();
    void decodeStyles_data();
    void decodeStyles();
    void decodePoints();
    void decodeKeepsInvalidTracks();
    void decodeNothing_data();
    void decodeNothing();
    void decodeFirstDocumentOnly();
    void decodeIgnoresDeclaredEncoding();
    void findPlacemarks_data();
    void findPlacemarks();
    void findPlacemarksAtElement();
    void findPlacemarksStaysBelowElement();
    void findCoordinates_data();
    void findCoordinates();
    void deepDocument();
    void manyPlacemarks();
    void readsFiles();

private:
    QTemporaryDir myDirectory;
};

void tst_LvTrackSelectionFactoryKmlFile::cleanup()
{
    LvGeoLocationSettings::instance()->setDefaultTrackConfiguration(LvGPXTrackConfiguration::defaultValue());
}

void tst_LvTrackSelectionFactoryKmlFile::supportsFile_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<bool>("supported");

    QTest::newRow("KML") << "tour.kml" << true;
    QTest::newRow("KML in capitals") << "Tour.KML" << true;
    QTest::newRow("KMZ") << "tour.kmz" << true;
    QTest::newRow("KMZ, mixed") << "tour.KmZ" << true;
    QTest::newRow("last suffix counts") << "tour.gpx.kmz" << true;
    QTest::newRow("other suffix behind it") << "tour.kml.txt" << false;
    QTest::newRow("GPX") << "tour.gpx" << false;
    QTest::newRow("no suffix") << "kml" << false;
    QTest::newRow("no name") << "" << false;
}

void tst_LvTrackSelectionFactoryKmlFile::supportsFile()
{
    QFETCH(const QString, name);
    QFETCH(const bool, supported);

    const LvTrackSelectionFactoryKmlFile factory;
    QCOMPARE(factory.supportsFile(QFileInfo(name)), supported);
    QCOMPARE(factory.supportsFile(QUrl::fromLocalFile(name)), supported);
    // What is not local has no file.
    QVERIFY(!factory.supportsFile(QUrl(QStringLiteral("https://example.org/tour.kml"))));
}

void tst_LvTrackSelectionFactoryKmlFile::supportedFileFormats()
{
    QCOMPARE(LvTrackSelectionFactoryKmlFile().supportedFileFormats(),
             QStringList({QStringLiteral("*.kml"), QStringLiteral("*.kmz")}));
}

void tst_LvTrackSelectionFactoryKmlFile::readKml()
{
    const LvTrackSelectionFactoryKmlFile factory;
    const QString path = myDirectory.filePath(QStringLiteral("tour.KML"));
    QVERIFY(writeFile(path, "<kml>\r\n  <a>\xc3\xbc</a>\n</kml>"));
    QCOMPARE(factory.readFile(QFileInfo(path)), QStringLiteral("<kml>\n  <a>ü</a>\n</kml>"));
    QVERIFY(writeFile(path, QByteArray("\xff\xfe<\0k\0/\0>\0", 10)));
    QCOMPARE(factory.readFile(QFileInfo(path)), QStringLiteral("<k/>"));
    QVERIFY(factory.readFile(QFileInfo(myDirectory.filePath(QStringLiteral("none.kml")))).isEmpty());
}

void tst_LvTrackSelectionFactoryKmlFile::readKmz_data()
{
    QTest::addColumn<Entries>("entries");
    QTest::addColumn<QString>("text");

    QTest::newRow("beside a picture") << Entries{{"images/x.png", "PNG"}, {"doc.kml", "<doc/>"}} << "<doc/>";
    QTest::newRow("first entry of several") << Entries{{"z.kml", "<z/>"}, {"doc.kml", "<doc/>"}} << "<z/>";
    QTest::newRow("in a folder") << Entries{{"files/a.kml", "<a/>"}} << "<a/>";
    QTest::newRow("capitals are not looked for") << Entries{{"DOC.KML", "<doc/>"}} << "";
    QTest::newRow("capitals are passed over") << Entries{{"DOC.KML", "<doc/>"}, {"b.kml", "<b/>"}} << "<b/>";
    QTest::newRow("suffix is compared at the end")
        << Entries{{"a.kml.txt", "<a/>"}, {"b.kml", "<b/>"}} << "<b/>";
    QTest::newRow("the name is the suffix") << Entries{{".kml", "<a/>"}} << "<a/>";
    QTest::newRow("an empty first entry counts") << Entries{{"a.kml", ""}, {"b.kml", "<b/>"}} << "";
    QTest::newRow("UTF-8") << Entries{{"doc.kml", "\xc3\xbc\r\n"}} << QStringLiteral("ü\r\n");
    QTest::newRow("no KML") << Entries{{"a.txt", "<a/>"}} << "";
}

void tst_LvTrackSelectionFactoryKmlFile::readKmz()
{
    QFETCH(const Entries, entries);
    QFETCH(const QString, text);

    const QString path = myDirectory.filePath(QStringLiteral("tour.KMZ"));
    QVERIFY(writeArchive(path, entries));
    QCOMPARE(LvTrackSelectionFactoryKmlFile().readFile(QFileInfo(path)), text);
}

void tst_LvTrackSelectionFactoryKmlFile::readOther()
{
    const LvTrackSelectionFactoryKmlFile factory;
    const QString text = myDirectory.filePath(QStringLiteral("tour.txt"));
    QVERIFY(writeFile(text, "<kml/>"));
    QVERIFY(factory.readFile(QFileInfo(text)).isEmpty());
    const QString noArchive = myDirectory.filePath(QStringLiteral("text.kmz"));
    QVERIFY(writeFile(noArchive, "<kml/>"));
    QVERIFY(factory.readFile(QFileInfo(noArchive)).isEmpty());
    QVERIFY(factory.readFile(QFileInfo(myDirectory.filePath(QStringLiteral("none.kmz")))).isEmpty());
    const QString folder = myDirectory.filePath(QStringLiteral("folder.kml"));
    QVERIFY(QDir().mkpath(folder));
    QVERIFY(factory.readFile(QFileInfo(folder)).isEmpty());
}

void tst_LvTrackSelectionFactoryKmlFile::decodeNames_data()
{
    QTest::addColumn<QString>("content");
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("description");

    QTest::newRow("both") << "<name>N</name><description>D</description>"
                          << "N"
                          << "D";
    QTest::newRow("neither: the file name for both") << ""
                                                     << "tour.kml"
                                                     << "tour.kml";
    QTest::newRow("no description: not the name") << "<name>N</name>"
                                                  << "N"
                                                  << "tour.kml";
    QTest::newRow("no name") << "<description>D</description>"
                             << "tour.kml"
                             << "D";
    QTest::newRow("empty ones") << "<name/><description></description>"
                                << "tour.kml"
                                << "tour.kml";
    QTest::newRow("first child counts") << "<name>A</name><name>B</name>"
                                        << "A"
                                        << "tour.kml";
    QTest::newRow("an empty first child counts") << "<name/><name>B</name>"
                                                 << "tour.kml"
                                                 << "tour.kml";
    QTest::newRow("deeper ones do not") << "<Point><name>A</name></Point>"
                                        << "tour.kml"
                                        << "tour.kml";
    QTest::newRow("not trimmed") << "<name> A\n</name>"
                                 << " A\n"
                                 << "tour.kml";
    QTest::newRow("CDATA with HTML") << "<description><![CDATA[<b>x</b>]]></description>"
                                     << "tour.kml"
                                     << "<b>x</b>";
}

void tst_LvTrackSelectionFactoryKmlFile::decodeNames()
{
    QFETCH(const QString, content);
    QFETCH(const QString, name);
    QFETCH(const QString, description);

    const LvGPXConfiguredTrackList tracks = LvTrackSelectionFactoryKmlFile().decode(
        documentOf(QStringLiteral("<Placemark>%1</Placemark>").arg(content)), QStringLiteral("tour.kml"));
    QCOMPARE(tracks.count(), 1);
    QCOMPARE(tracks.at(0).name(), name);
    QCOMPARE(tracks.at(0).description(), description);
}

void tst_LvTrackSelectionFactoryKmlFile::decodeShapes_data()
{
    QTest::addColumn<QString>("geometry");
    QTest::addColumn<quint32>("declared");
    QTest::addColumn<quint32>("configured");

    const QString line = QStringLiteral("<coordinates>8,50 9,51 10,50</coordinates>");
    const QString ring = QStringLiteral("<coordinates>8,50 9,51 8,50</coordinates>");
    QTest::newRow("line") << "<LineString>" + line + "</LineString>" << 4U << 4U;
    QTest::newRow("closed line: the style follows the points")
        << "<LineString>" + ring + "</LineString>" << 4U << 8U;
    QTest::newRow("polygon") << "<Polygon><LinearRing>" + ring + "</LinearRing></Polygon>" << 8U << 8U;
    QTest::newRow("open polygon") << "<Polygon><LinearRing>" + line + "</LinearRing></Polygon>" << 8U << 4U;
    QTest::newRow("point") << "<Point><coordinates>8,50</coordinates></Point>" << 1U << 1U;
    QTest::newRow("ring without a known geometry is detected")
        << "<LinearRing>" + ring + "</LinearRing>" << 8U << 8U;
    QTest::newRow("inside a multi-geometry it is detected")
        << "<MultiGeometry><Polygon><LinearRing>" + line + "</LinearRing></Polygon></MultiGeometry>" << 4U
        << 4U;
    QTest::newRow("own element") << "<shape>hop</shape>" + line << 2U << 4U;
    QTest::newRow("nothing") << "" << 0U << 0U;
}

void tst_LvTrackSelectionFactoryKmlFile::decodeShapes()
{
    QFETCH(const QString, geometry);
    QFETCH(const quint32, declared);
    QFETCH(const quint32, configured);

    const LvGPXConfiguredTrackList tracks = LvTrackSelectionFactoryKmlFile().decode(
        documentOf(QStringLiteral("<Placemark>%1</Placemark>").arg(geometry)), QStringLiteral("tour.kml"));
    QCOMPARE(tracks.count(), 1);
    QCOMPARE(static_cast<quint32>(tracks.at(0).track().shape().value()), declared);
    QCOMPARE(static_cast<quint32>(tracks.at(0).configuration().trackShape().value()), configured);
}

void tst_LvTrackSelectionFactoryKmlFile::decodeStyles_data()
{
    QTest::addColumn<QString>("styleUrl");
    QTest::addColumn<QRgb>("lineColor");

    const QRgb builtIn = LvGPXTrackConfiguration::defaultValue().lineColor().rgba();
    QTest::newRow("found") << "<styleUrl>#a</styleUrl>" << qRgb(1, 2, 3);
    QTest::newRow("last of the same id") << "<styleUrl>#b</styleUrl>" << qRgb(7, 8, 9);
    QTest::newRow("style without id") << "<styleUrl>#</styleUrl>" << qRgb(10, 11, 12);
    QTest::newRow("first child counts") << "<styleUrl>#a</styleUrl><styleUrl>#b</styleUrl>" << qRgb(1, 2, 3);
    QTest::newRow("missing: built-in, not that of the user") << "" << builtIn;
    QTest::newRow("unknown") << "<styleUrl>#c</styleUrl>" << builtIn;
    QTest::newRow("not trimmed") << "<styleUrl> #a </styleUrl>" << builtIn;
    QTest::newRow("without the sign") << "<styleUrl>a</styleUrl>" << builtIn;
    QTest::newRow("other document") << "<styleUrl>other.kml#a</styleUrl>" << builtIn;
    QTest::newRow("style in a folder is not read") << "<styleUrl>#d</styleUrl>" << builtIn;
    QTest::newRow("style of the placemark is not read")
        << "<Style><LineStyle><color>ff646464</color></LineStyle></Style>" << builtIn;
}

void tst_LvTrackSelectionFactoryKmlFile::decodeStyles()
{
    QFETCH(const QString, styleUrl);
    QFETCH(const QRgb, lineColor);

    LvGPXTrackConfiguration ofTheUser = LvGPXTrackConfiguration::defaultValue();
    ofTheUser.setLineColor(QColor(99, 99, 99));
    LvGeoLocationSettings::instance()->setDefaultTrackConfiguration(ofTheUser);
    const QString content =
        QStringLiteral("<Style id='a'><LineStyle><color>ff010203</color></LineStyle></Style>"
                       "<Style id='b'><LineStyle><color>ff040506</color></LineStyle></Style>"
                       "<Placemark>%1</Placemark>"
                       "<Folder><Style id='d'><LineStyle><color>ff0d0e0f</color></LineStyle>"
                       "</Style></Folder>"
                       "<Style id='b'><LineStyle><color>ff070809</color></LineStyle></Style>"
                       "<Style><LineStyle><color>ff0a0b0c</color></LineStyle></Style>")
            .arg(styleUrl);
    const LvGPXConfiguredTrackList tracks =
        LvTrackSelectionFactoryKmlFile().decode(documentOf(content), QStringLiteral("tour.kml"));
    QCOMPARE(tracks.count(), 1);
    QCOMPARE(tracks.at(0).lineColor().rgba(), lineColor);
}

void tst_LvTrackSelectionFactoryKmlFile::decodePoints()
{
    const QString content =
        QStringLiteral("<Placemark><Polygon>"
                       "<outerBoundaryIs><LinearRing><coordinates>\n 8,50,12 9,50\t9,51 8,50\n"
                       "</coordinates></LinearRing></outerBoundaryIs>"
                       "<innerBoundaryIs><LinearRing><coordinates>8.2,50.2 8.4,50.4</coordinates>"
                       "</LinearRing></innerBoundaryIs></Polygon></Placemark>");
    const LvGPXConfiguredTrackList tracks =
        LvTrackSelectionFactoryKmlFile().decode(documentOf(content), QStringLiteral("tour.kml"));
    QCOMPARE(tracks.count(), 1);
    QCOMPARE(pointsOf(tracks.at(0).track()), QStringLiteral("8.,50.,12 9.,50. 9.,51. 8.,50."));
}

void tst_LvTrackSelectionFactoryKmlFile::decodeKeepsInvalidTracks()
{
    const QString content =
        QStringLiteral("<Placemark><name>A</name></Placemark>"
                       "<Placemark><name>B</name><Point><coordinates>0,0</coordinates></Point>"
                       "</Placemark>"
                       "<Placemark><name>C</name><Point><coordinates>8,50</coordinates></Point>"
                       "</Placemark>");
    const LvGPXConfiguredTrackList tracks =
        LvTrackSelectionFactoryKmlFile().decode(documentOf(content), QStringLiteral("tour.kml"));
    QCOMPARE(namesOf(tracks), QStringLiteral("A B C"));
    QVERIFY(!tracks.at(0).track().isValid());
    QVERIFY(!tracks.at(1).track().isValid());
    QVERIFY(tracks.at(2).track().isValid());
}

void tst_LvTrackSelectionFactoryKmlFile::decodeNothing_data()
{
    QTest::addColumn<QString>("text");

    QTest::newRow("no text") << "";
    QTest::newRow("cut off") << documentOf(placemark("A")).chopped(1);
    QTest::newRow("text behind the root") << documentOf(placemark("A")) + "x";
    QTest::newRow("no Document") << "<kml><Folder>" + placemark("A") + "</Folder></kml>";
    QTest::newRow("Document is the root") << "<Document>" + placemark("A") + "</Document>";
    QTest::newRow("Document is deeper") << "<kml><x><Document>" + placemark("A") + "</Document></x></kml>";
    QTest::newRow("Document in small letters") << "<kml><document>" + placemark("A") + "</document></kml>";
    QTest::newRow("Document with a prefix")
        << "<k:kml xmlns:k='x'><k:Document><k:Placemark/></k:Document></k:kml>";
    QTest::newRow("no placemark") << documentOf("<Folder/>");
}

void tst_LvTrackSelectionFactoryKmlFile::decodeNothing()
{
    QFETCH(const QString, text);

    QVERIFY(!LvTrackSelectionFactoryKmlFile().decode(text, QStringLiteral("tour.kml")).isValid());
}

void tst_LvTrackSelectionFactoryKmlFile::decodeFirstDocumentOnly()
{
    const QString text = QStringLiteral("<any><Document>%1</Document><Document>%2</Document></any>")
                             .arg(placemark("A"), placemark("B"));
    QCOMPARE(namesOf(LvTrackSelectionFactoryKmlFile().decode(text, QString())), QStringLiteral("A"));
}

void tst_LvTrackSelectionFactoryKmlFile::decodeIgnoresDeclaredEncoding()
{
    // The text has been decoded before; what the file once said of its bytes means nothing any more.
    for (const char* encoding : {"ISO-8859-1", "UTF-16", "UTF-8", "unheard-of"}) {
        const QString text =
            QStringLiteral("<?xml version='1.0' encoding='%1'?>").arg(QLatin1String(encoding))
            + documentOf(placemark(QStringLiteral("Ärö€")));
        QCOMPARE(namesOf(LvTrackSelectionFactoryKmlFile().decode(text, QString())), QStringLiteral("Ärö€"));
    }
}

void tst_LvTrackSelectionFactoryKmlFile::findPlacemarks_data()
{
    QTest::addColumn<QString>("content");
    QTest::addColumn<QString>("names");

    const QString a = placemark(QStringLiteral("A"));
    const QString b = placemark(QStringLiteral("B"));
    const QString c = placemark(QStringLiteral("C"));
    QTest::newRow("none") << "<Folder/>"
                          << "";
    QTest::newRow("in a row") << a + b << "A B";
    QTest::newRow("folders in document order")
        << "<Folder>" + a + "<Folder>" + b + "</Folder></Folder>" + c << "A B C";
    QTest::newRow("a deep one before a flat one") << "<x><x><x>" + a + "</x></x></x>" + b << "A B";
    QTest::newRow("climbs several levels") << "<x><y><z/>" + a + "</y></x><x/><y><z>" + b + "</z></y>"
                                           << "A B";
    QTest::newRow("in unknown elements") << "<Update>" + a + "</Update>"
                                         << "A";
    QTest::newRow("inside another one") << "<Placemark><name>A</name>" + b + "</Placemark>" + c << "A C";
    QTest::newRow("name is compared exactly") << "<placemark/><x:Placemark/>" + a << "A";
    QTest::newRow("text and comments between") << "text<!-- " + b + " -->" + a << "A";
}

void tst_LvTrackSelectionFactoryKmlFile::findPlacemarks()
{
    QFETCH(const QString, content);
    QFETCH(const QString, names);

    QDomDocument document;
    const QDomElement root = rootOf(document, documentOf(content));
    QVERIFY(!root.isNull());
    QStringList found;
    for (const QDomElement& element : LvTrackSelectionFactoryKmlFile().findPlacemarks(root)) {
        found.append(element.firstChildElement(QStringLiteral("name")).text());
    }
    QCOMPARE(found.join(QLatin1Char(' ')), names);
}

void tst_LvTrackSelectionFactoryKmlFile::findPlacemarksAtElement()
{
    const LvTrackSelectionFactoryKmlFile factory;
    QDomDocument document;
    const QDomElement root = rootOf(document, QStringLiteral("<Placemark><Placemark/></Placemark>"));
    QCOMPARE(factory.findPlacemarks(root).count(), 1);
    QVERIFY(factory.findPlacemarks(root).first() == root);
    QVERIFY(factory.findPlacemarks(QDomElement()).isEmpty());
}

void tst_LvTrackSelectionFactoryKmlFile::findPlacemarksStaysBelowElement()
{
    const LvTrackSelectionFactoryKmlFile factory;
    QDomDocument document;
    const QDomElement root = rootOf(
        document, QStringLiteral("<x><a><b/></a><Placemark><coordinates>1,2</coordinates></Placemark></x>"));
    QVERIFY(factory.findPlacemarks(root.firstChildElement()).isEmpty());
    QVERIFY(factory.findCoordinates(root.firstChildElement()).isEmpty());
    QCOMPARE(factory.findPlacemarks(root.firstChildElement(QStringLiteral("Placemark"))).count(), 1);
}

void tst_LvTrackSelectionFactoryKmlFile::findCoordinates_data()
{
    QTest::addColumn<QString>("xml");
    QTest::addColumn<QString>("text");

    QTest::newRow("the element itself") << "<coordinates> 1,2 \n</coordinates>"
                                        << "1,2";
    QTest::newRow("child") << "<Point><coordinates>1,2</coordinates></Point>"
                           << "1,2";
    QTest::newRow("deep before flat")
        << "<P><x><coordinates>1,2</coordinates></x><coordinates>3,4</coordinates></P>"
        << "1,2";
    QTest::newRow("empty ones are passed over")
        << "<P><coordinates/><x><coordinates> \n</coordinates></x><coordinates>3,4</coordinates></P>"
        << "3,4";
    QTest::newRow("several geometries: the first")
        << "<M><Point><coordinates>1,2</coordinates></Point><Point><coordinates>3,4</coordinates></Point></M>"
        << "1,2";
    QTest::newRow("white space inside stays") << "<P><coordinates>1,2\n 3,4</coordinates></P>"
                                              << "1,2\n 3,4";
    QTest::newRow("other spelling") << "<P><Coordinates>1,2</Coordinates><gx:coord>1 2</gx:coord></P>"
                                    << "";
    QTest::newRow("none") << "<P/>"
                          << "";
}

void tst_LvTrackSelectionFactoryKmlFile::findCoordinates()
{
    QFETCH(const QString, xml);
    QFETCH(const QString, text);

    QDomDocument document;
    const QDomElement root = rootOf(document, xml);
    QVERIFY(!root.isNull());
    QCOMPARE(LvTrackSelectionFactoryKmlFile().findCoordinates(root), text);
    QVERIFY(LvTrackSelectionFactoryKmlFile().findCoordinates(QDomElement()).isEmpty());
}

void tst_LvTrackSelectionFactoryKmlFile::deepDocument()
{
    constexpr int depth = 5000;
    const QString text =
        documentOf(QStringLiteral("<Folder>").repeated(depth)
                   + QStringLiteral("<Placemark><Point><coordinates>8,50</coordinates></Point>"
                                    "</Placemark>")
                   + QStringLiteral("</Folder>").repeated(depth));
    const LvGPXConfiguredTrackList tracks =
        LvTrackSelectionFactoryKmlFile().decode(text, QStringLiteral("deep.kml"));
    QCOMPARE(tracks.count(), 1);
    QVERIFY(tracks.at(0).track().isValid());

    // The geometry may be as deep as that, too.
    const QString inside =
        documentOf(QStringLiteral("<Placemark>") + QStringLiteral("<x>").repeated(depth)
                   + QStringLiteral("<coordinates>8,50</coordinates>")
                   + QStringLiteral("</x>").repeated(depth) + QStringLiteral("</Placemark>"));
    const LvGPXConfiguredTrackList deepInside = LvTrackSelectionFactoryKmlFile().decode(inside, QString());
    QCOMPARE(deepInside.count(), 1);
    QVERIFY(deepInside.at(0).track().isValid());

    // Beyond all bounds nothing is read, and the stack survives.
    constexpr int tooDeep = 1000000;
    const QString hostile =
        documentOf(QStringLiteral("<x>").repeated(tooDeep) + QStringLiteral("</x>").repeated(tooDeep));
    QVERIFY(!LvTrackSelectionFactoryKmlFile().decode(hostile, QString()).isValid());
}

void tst_LvTrackSelectionFactoryKmlFile::manyPlacemarks()
{
    constexpr int count = 20000;
    const QString one = QStringLiteral("<Placemark><x/><x/><name>N</name><styleUrl>#a</styleUrl>"
                                       "<Point><coordinates>8,50</coordinates></Point></Placemark>");
    QElapsedTimer timer;
    timer.start();
    const LvGPXConfiguredTrackList tracks =
        LvTrackSelectionFactoryKmlFile().decode(documentOf(one.repeated(count)), QString());
    QCOMPARE(tracks.count(), count);
    QCOMPARE(tracks.at(count - 1).name(), QStringLiteral("N"));
    // About half a second; a walk that counts children from the start each time would take minutes.
    QVERIFY2(timer.elapsed() < 30000, qPrintable(QString::number(timer.elapsed())));
}

void tst_LvTrackSelectionFactoryKmlFile::readsFiles()
{
    const QByteArray content =
        documentOf(QStringLiteral("<Placemark><Point><coordinates>8,50</coordinates></Point>"
                                  "</Placemark>"))
            .toUtf8();
    const QString kml = myDirectory.filePath(QStringLiteral("A tour#1.kml"));
    const QString kmz = myDirectory.filePath(QStringLiteral("B.kmz"));
    QVERIFY(writeFile(kml, content));
    QVERIFY(writeArchive(kmz, {{"images/x.png", "PNG"}, {"doc.kml", content}}));

    const LvTrackSelectionFactoryKmlFile factory;
    const LvGPXConfiguredTrackList ofKml = factory.createConfiguredTrackList(QFileInfo(kml));
    QCOMPARE(ofKml.count(), 1);
    QCOMPARE(ofKml.at(0).name(), QStringLiteral("A tour#1.kml")); // with its suffix
    QVERIFY(factory.createConfiguredTrackList(QUrl::fromLocalFile(kml)) == ofKml);
    QCOMPARE(namesOf(factory.createConfiguredTrackList(QFileInfo(kmz))), QStringLiteral("B.kmz"));
    QVERIFY(!factory.createConfiguredTrackList(QUrl()).isValid());
}

LV_TEST_MAIN(tst_LvTrackSelectionFactoryKmlFile)
#include "tst_LvTrackSelectionFactoryKmlFile.moc"
