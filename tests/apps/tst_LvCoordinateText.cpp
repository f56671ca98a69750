#include "LvCoordinateText.h"
#include "LvGeoPositionSamples.h"
#include "LvTest.h"

#include <QRandomGenerator>
#include <QUrlQuery>

namespace
{

constexpr double toleranceDegrees = 1e-9;
constexpr double latitude = 53.14; // 53° 8' 24"
constexpr double longitude = 8.8; // 8° 48'

} // namespace

class tst_LvCoordinateText : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void parse_data();
    void parse();
    void refused_data();
    void refused();
    void readsWhatTheLibraryWrites_data();
    void readsWhatTheLibraryWrites();
    void longText();
    void anyText();
};

void tst_LvCoordinateText::parse_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<double>("north");
    QTest::addColumn<double>("east");

    // Both angles are those of the constants above.
    for (const char* text :
         {// decimal degrees
          "N53.14 E8.8", "n53.14 e8.8", "N 53.14 E 8.8", "53.14N 8.8E", "53.14 N, 8.8 E", "53.14N,8.8E",
          "53.14N8.8E", "53.14, 8.8", "53.14,8.8", "53.14 8.8", "53.14;8.8", "53.14 ; 8.8", "53.14/8.8",
          "53.14\t8.8", "53.14\n8.8", "  53.14  8.8  ", "53.14°, 8.8°", "53.14° 8.8°", "53.14º 8.8˚",
          "+53.14 +8.8", "+53.14+008.80/", "(53.14, 8.8)", "[53.14, 8.8]", "53.14, 8.8,",
          // decimal comma
          "53,14 8,8", "53,14, 8,8", "53,14; 8,8", "53,14;8,8", "53,14° N 8,8° O", "N53,14 E8,8", "53,14/8,8",
          "53,14\n8,8",
          // the other order, told by letters and words
          "E8.8 N53.14", "8.8 E, 53.14 N", "8,8° Ost, 53,14° Nord", "lon=8.8, lat=53.14",
          "Länge 8,8 Breite 53,14", "8.8 O; 53.14", "8.8; 53.14 N",
          // words and labels
          "53.14 Nord 8.8 Ost", "53.14 north, 8.8 east", "lat 53.14 lon 8.8", "Lat: 53.14, Lon: 8.8",
          "latitude=53.14&longitude=8.8", "Breite: 53,14 Länge: 8,8", "lat. 53.14 lng. 8.8", "B 53.14 L 8.8",
          // degrees and minutes
          "N 53° 8.4' E 8° 48'", "53° 8.4' N 8° 48' E", "53°8.4'N 8°48'E", "53° 8,4' N, 8° 48' O",
          "53° 8.4′ 8° 48′", "N53 8.4 E8 48", "53 8.4 8 48", "53 8,4 8 48", "53 8.4, 8 48",
          "53 Grad 8,4 Minuten Nord, 8 Grad 48 Minuten Ost",
          // degrees, minutes and seconds
          "53°8'24\"N 8°48'0\"E", "53° 8' 24\" N, 8° 48' 0\" E", "53°8′24″N 8°48′0″E", "53°8'24''N 8°48'0''E",
          "53° 8’ 24” N 8° 48’ 0” E", "N53°8'24\" E8°48'0\"", "53 8 24 8 48 0", "53 8 24 N 8 48 0 E",
          "53 8 24, 8 48 0", "53°8'24.0\" 8°48'0.0\"", "53°8'24,0\"N 8°48'0,0\"O",
          "53 Grad 8 Min. 24 Sek. N, 8 Grad 48 Min. E", "53° 8′ 24″ Nord 8° 48′ 0″ Ost",
          "53,8,24 N; 8,48,0 E", "53,8,24; 8,48,0", "53,8,24 N, 8,48,0 E", "53,8,24 8,48,0",
          // addresses
          "geo:53.14,8.8", "GEO:53.14,8.8", "geo:53.14,8.8,12", "geo:53.14,8.8;u=35",
          "geo:53.14,8.8,12;crs=WGS84;u=35", "geo:53.14,8.8?z=12", "https://map.example/#map=12/53.14/8.8",
          "https://map.example/#layers=T&map=12/53.14/8.8&x=1",
          "https://map.example/?mlat=53.14&mlon=8.8#map=12/50.0/7.0",
          "https://map.example/maps/@53.14,8.8,12z", "https://map.example/?latitude=53.14&longitude=8.8",
          "https://map.example/?lat=53.14&lon=8.8", "https://map.example/?lat=53.14&lng=8.8&zoom=3"}) {
        QTest::newRow(text) << QString::fromUtf8(text) << latitude << longitude;
    }

    QTest::newRow("south and west") << "S53.14 W8.8" << -latitude << -longitude;
    QTest::newRow("minus signs") << "-53.14, -8.8" << -latitude << -longitude;
    QTest::newRow("typographic minus signs") << "−53,14 −8,8" << -latitude << -longitude;
    QTest::newRow("minus without blank") << "+53.14-8.8" << latitude << -longitude;
    QTest::newRow("minus before degrees") << "-53°8'24\" -8°48'0\"" << -latitude << -longitude;
    QTest::newRow("less than a degree south") << "-0°30' 8°48'" << -0.5 << longitude;
    QTest::newRow("Süd and West") << "53,14° Süd, 8,8° West" << -latitude << -longitude;
    QTest::newRow("Ost, not ouest") << "53.14 N 8.8 O" << latitude << longitude;
    QTest::newRow("minus in a geo address") << "geo:-53.14,-8.8" << -latitude << -longitude;
    QTest::newRow("minus in a fragment")
        << "https://map.example/#map=5/-53.14/-8.8" << -latitude << -longitude;
    QTest::newRow("whole degrees") << "53 8" << 53.0 << 8.0;
    QTest::newRow("one comma is the only separator") << "53,14" << 53.0 << 14.0;
    QTest::newRow("a point leaves the comma no choice") << "53.14,8" << latitude << 8.0;
    QTest::newRow("same in the second angle") << "53,8.8" << 53.0 << longitude;
    QTest::newRow("poles and date line") << "90 180" << 90.0 << 180.0;
    QTest::newRow("other ends") << "-90 -180" << -90.0 << -180.0;
    QTest::newRow("equator") << "0 8.8" << 0.0 << longitude;
    QTest::newRow("prime meridian") << "53.14 0" << latitude << 0.0;
}

void tst_LvCoordinateText::parse()
{
    QFETCH(QString, text);
    QFETCH(double, north);
    QFETCH(double, east);
    const LvGeoPosition position = LvCoordinateText::parse(text);
    QVERIFY(position.isValid());
    QVERIFY2(std::abs(position.latitude().decimalDegrees() - north) < toleranceDegrees,
             qPrintable(position.latitude().toString()));
    QVERIFY2(std::abs(position.longitude().decimalDegrees() - east) < toleranceDegrees,
             qPrintable(position.longitude().toString()));
}

void tst_LvCoordinateText::refused_data()
{
    QTest::addColumn<QString>("text");
    for (const char* text :
         {"", " ", ",", ";", "-", "°", "N", "N E", "nowhere", "53.14", "N53.14", "53°8'24\"", "53.14 8.8 9.9",
          "53.14, 8.8, 9.9", "N53.14 N8.8", "E53.14 W8.8", "lat 53.14 lat 8.8", "lat 53.14 E lon 8.8 N",
          "-53.14 S 8.8 E", "N53.14N E8.8", "N -53.14 E 8.8", "53.14 x 8.8", "53.14.1 8.8", "1e2 3e1",
          "53° 60' 8° 48'", "53° 8' 60\" 8° 48' 0\"", "53.5° 8' 8° 48'", "53° 8.4' 24\" 8° 48' 0\"", "53' 8'",
          "53° -8' 8° 48'", "inf nan", "nan, nan", "0x10 0x20", "(53.14, 8.8", "٥٣ ٨",
          // two ways to read them
          "53,14,8,8", "53 8 8", "53.14 E 8.8", "53,14,8,48 N", "53,8 8,8 48",
          // out of range; latitude comes first, whatever would fit
          "90.1 8", "-90.1 8", "53 180.1", "53 -180.1", "8.8 120.5 N", "120.5, 45", "720 720", "0 0",
          "geo:91,8", "geo:53.14", "geo:53.14,8.8;crs=nad27", "geo:53,14,8,8,1,1,1", "geo:N53.14,E8.8",
          "https://map.example/", "https://map.example/53.14/8.8", "https://map.example/?lat=53.14",
          "https://map.example/#map=12/95.0/8.8"}) {
        QTest::newRow(text) << QString::fromUtf8(text);
    }
}

void tst_LvCoordinateText::refused()
{
    QFETCH(QString, text);
    const LvGeoPosition position = LvCoordinateText::parse(text);
    QVERIFY2(!position.isValid(), qPrintable(position.toString(false)));
}

void tst_LvCoordinateText::readsWhatTheLibraryWrites_data()
{
    QTest::addColumn<LvGeoPosition>("position");
    for (int i = 0; i <= static_cast<int>(LvGeoPositionSamplesEnum::Passau); ++i) {
        const auto sample = static_cast<LvGeoPositionSamplesEnum>(i);
        QTest::newRow(qPrintable(LvGeoPositionSamples::name(sample)))
            << LvGeoPositionSamples().position(sample);
    }
    QTest::newRow("less than a degree south and west") << LvGeoPosition(-0.25, -0.5);
}

void tst_LvCoordinateText::readsWhatTheLibraryWrites()
{
    QFETCH(LvGeoPosition, position);
    QUrlQuery query;
    position.writeTo(query);
    const QStringList texts{
        position.toString(true),
        position.toString(false),
        position.latitude().toString(false) + ' ' + position.longitude().toString(false),
        query.toString(),
        position.latitude().humanReadable("d", 8) + ", " + position.longitude().humanReadable("d", 8),
        position.latitude().humanReadable("dm", 8) + ", " + position.longitude().humanReadable("dm", 8),
        position.latitude().humanReadable("dms", 6) + ' ' + position.longitude().humanReadable("dms", 6)};
    for (const QString& text : texts) {
        const LvGeoPosition read = LvCoordinateText::parse(text);
        QVERIFY2(read.isValid(), qPrintable(text));
        QVERIFY2(read.distance(position) < 0.01, qPrintable(text)); // km; toString(true) has six digits
    }
}

void tst_LvCoordinateText::longText()
{
    QVERIFY(!LvCoordinateText::parse(QString(1'000'000, u'5')).isValid());
    QVERIFY(!LvCoordinateText::parse(QString(1'000'000, u',')).isValid());
    QVERIFY(!LvCoordinateText::parse(QString(3999, u',')).isValid());
    QVERIFY(LvCoordinateText::parse(QString(10'000, u' ') + "53.14 8.8").isValid());
}

void tst_LvCoordinateText::anyText()
{
    const QStringList pieces{"53", "8.8",  "14,5",   "0",      "720",   "°",  "'",     "\"",    "N",
                             "s",  "Ost",  "W",      "lat",    "lon:",  ",",  ", ",    ";",     " ",
                             "-",  "+",    "geo:",   "://",    "#map=", "/@", "?lat=", "&lon=", "(",
                             ")",  "crs=", "\u2212", "\u0661", ".",     "e9", "<br>",  "min",   "\n"};
    QRandomGenerator random(20240615);
    int readable = 0;
    for (int i = 0; i < 30'000; ++i) {
        QString text;
        const int count = random.bounded(1, 9);
        for (int piece = 0; piece < count; ++piece) {
            text += pieces.at(random.bounded(static_cast<int>(pieces.size())));
        }
        const LvGeoPosition position = LvCoordinateText::parse(text);
        if (position.isValid()) {
            ++readable;
            QVERIFY2(position.latitude().isInValidRange() && position.longitude().isInValidRange(),
                     qPrintable(text));
        }
    }
    QVERIFY(readable > 50); // or the pieces would not be worth trying
}

LV_TEST_MAIN(tst_LvCoordinateText)
#include "tst_LvCoordinateText.moc"
