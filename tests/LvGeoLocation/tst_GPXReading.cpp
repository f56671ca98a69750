// Files are read in one pass where they are of the usual form, and through the toolkit's tree where they are
// not. Nobody must be able to tell which it was: every document here is read both ways.

#include "LvEnumToStringTable.h"
#include "LvFileHandler.h"
#include "LvGPXTrackFile.h"
#include "LvTest.h"
#include "LvXMLLoader.h"

#include <QDir>
#include <QDirIterator>
#include <QDomDocument>
#include <QFile>
#include <QFileInfo>
#include <QRandomGenerator>
#include <QTemporaryDir>

#include <bit>

namespace
{

constexpr int generatedDocuments = LvTest::generatedCases(6000);

const QByteArray point = "<trkpt lat=\"53.5\" lon=\"-8.25\"><ele>12.7</ele><time>2023-11-14T22:13:20Z</time>"
                         "<desc>here</desc></trkpt>";

QByteArray document(const QByteArray& track)
{
    return "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<gpx>\n<trk><name>n</name>" + track
        + "</trk>\n</gpx>\n";
}

/// A document with the text in the places where texts and attributes are read.
QByteArray withText(const QByteArray& text)
{
    return document("<desc>" + text + "</desc><trkseg><trkpt lat=\"1\" lon=\"2\"><ele>" + text
                    + "</ele><time>" + text + "</time><desc>" + text + "</desc></trkpt><other>" + text
                    + "</other><compressedPoints>" + text + "</compressedPoints></trkseg>");
}

/// Everything that can be told about tracks, to the bit, in words.
void describe(const QList<LvGPXTrack>& tracks, QStringList& lines)
{
    for (const LvGPXTrack& track : tracks) {
        lines.append(
            QStringLiteral("track <%1> <%2> %3")
                .arg(track.name(), track.description(), QString::number(quint32(track.shape().value()))));
        const QList<LvGPXTrackSegment> segments = track.segments();
        for (const LvGPXTrackSegment& segment : segments) {
            lines.append(QStringLiteral("segment"));
            const QList<LvGPXTrackPoint> points = segment.trackPoints();
            for (const LvGPXTrackPoint& trackPoint : points) {
                const LvGeoPosition position = trackPoint.position();
                const QDateTime time = trackPoint.timeStamp();
                lines.append(
                    QStringLiteral("%1 %2 %3 %4 %5 %6 <%7>")
                        .arg(
                            QString::number(std::bit_cast<quint64>(position.latitude().decimalDegrees()), 16),
                            QString::number(std::bit_cast<quint64>(position.longitude().decimalDegrees()),
                                            16),
                            QString::number(trackPoint.elevation()),
                            time.isValid() ? QString::number(time.toMSecsSinceEpoch()) : QStringLiteral("-"),
                            QString::number(int(time.timeSpec())), QString::number(time.offsetFromUtc()),
                            trackPoint.description()));
            }
        }
        lines.append(QStringLiteral("enclaves"));
        describe(track.enclaves(), lines);
        lines.append(QStringLiteral("end"));
    }
}

QStringList described(const QList<LvGPXTrack>& tracks)
{
    QStringList lines;
    describe(tracks, lines);
    return lines;
}

QStringList readThroughTree(const QFileInfo& file)
{
    const QDomElement root = LvXMLLoader::loadDocumentElement(file);
    int counter = 0;
    QList<LvGPXTrack> tracks = LvGPXTrackFile::readTracks(root, QStringLiteral("trk"), counter, file);
    tracks += LvGPXTrackFile::readTracks(root, QStringLiteral("rte"), counter, file);
    return described(tracks);
}

} // namespace

class tst_GPXReading : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void oddTexts_data();
    void oddTexts();
    void oddDocuments_data();
    void oddDocuments();
    void encodings_data();
    void encodings();
    void cutAnywhere();
    void generated();
    void damaged();
    void includes_data();
    void includes();
    void realFiles();
    void needsNoTree();
    void roomIsNotWasted();

private:
    [[nodiscard]] QFileInfo write(const QByteArray& bytes) const;
    void compare(const QByteArray& bytes) const;
    [[nodiscard]] QByteArray randomText() const;
    [[nodiscard]] QByteArray randomAttributes() const;
    [[nodiscard]] QByteArray randomElement(int depth) const;

    [[nodiscard]] quint32 random(quint32 end) const { return myRandom.bounded(end); }

    template <class List>
    [[nodiscard]] QByteArray anyOf(const List& list) const
    {
        return list[random(static_cast<quint32>(std::size(list)))];
    }

    QTemporaryDir myDirectory;
    mutable QRandomGenerator myRandom{20231114};
};

void tst_GPXReading::initTestCase()
{
    QVERIFY(myDirectory.isValid());
}

QFileInfo tst_GPXReading::write(const QByteArray& bytes) const
{
    QFile file(myDirectory.filePath(QStringLiteral("tour.gpx")));
    return file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size() ? QFileInfo(file.fileName())
                                                                                : QFileInfo();
}

void tst_GPXReading::compare(const QByteArray& bytes) const
{
    const QFileInfo file = write(bytes);
    const QStringList actual = described(LvGPXTrackFile(file).tracks());
    const QStringList expected = readThroughTree(file);
    if (actual != expected) {
        qWarning().noquote() << "document:" << bytes.toPercentEncoding(" <>/=\"'\n&;!?[]-:.,#");
    }
    QCOMPARE(actual, expected);
}

void tst_GPXReading::oddTexts_data()
{
    QTest::addColumn<QByteArray>("text");
    const QByteArray texts[] = {
        "",
        " ",
        "\n\t ",
        "x",
        " x ",
        "\xc2\xa0",
        "&#160;",
        "&#32;",
        " &#32; ",
        " &#32;x ",
        "\xe2\x80\x83",
        "x &amp; y",
        " &amp; ",
        "&lt;&gt;&quot;&apos;&amp;",
        "&#65;&#x41;&#x1F600;&#xfffd;",
        "&#X41;",
        "&#0;",
        "&#1;",
        "&#11;",
        "&#xD800;",
        "&#xFFFE;",
        "&#x110000;",
        "&#000000000000065;",
        "&# 65;",
        "&#;",
        "&;",
        "&foo;",
        "a & b",
        "&amp",
        "<![CDATA[ ]]>",
        "<![CDATA[]]>",
        " <![CDATA[ ]]> ",
        " <![CDATA[]]> y",
        "<![CDATA[x]]>",
        "x<![CDATA[y]]>z",
        "<![CDATA[x\r\ny\rz]]>",
        "<![CDATA[x]]]>",
        "<![CDATA[x]]]]>",
        "<![CDATA[<&]]>",
        "<![CDATA[\xc2\xa0]]>",
        "<![CDATA[\x01]]>",
        "<![CDATA[\xef\xbf\xbe]]>",
        "<![CDATA[\xff]]>",
        "<![CDATA[x",
        "<![CDATA",
        "x<!-- c -->y",
        "x <!-- c --> y <!-- d --> ",
        " <!-- c --> ",
        "<!-- -- -->x",
        "<!-- --->x",
        "<!---->x",
        "<!-->x",
        "<!-- \x01 -->x",
        "<!-- \xff -->x",
        "<!-- \xef\xbf\xbe -->x",
        "<!-- \xc3\xa4 -->x",
        "<!-- x",
        "x <?p i?> y",
        "<?p?>x",
        "<?p ?\?>x",
        "<? p?>x",
        "<?xml p?>x",
        "<?XmL p?>x",
        "<?xmlx p?>x",
        "<?p:q r?>x",
        "<?p \x01?>x",
        "<?p",
        "x\r\ny\rz&#13;w&#10;",
        "\r",
        "\r\n",
        "\r8",
        "\r\n\r8",
        "x\x7fy",
        "x\xc2\x85y",
        "x\xc2\x80y",
        "x\xef\xbf\xbey",
        "x\xef\xbf\xbfy",
        "x\xef\xbf\xbdy",
        "x\xef\xb7\x90y",
        "x\xef\xbb\xbfy",
        "\xef\xbb\xbfy",
        "\xed\xa0\x80",
        "\xed\x9f\xbf",
        "\xee\x80\x80",
        "\xf0\x9f\x98\x80",
        "x\xf0\x9f\xbf\xbey",
        "\xf4\x8f\xbf\xbd",
        "\xf4\x90\x80\x80",
        "\xf0\x80\x80\xaf",
        "\xe0\x80\xaf",
        "\xc0\xaf",
        "\xc3",
        "\xc3x",
        "\xe2\x82",
        "\xe2\x82x",
        "\xf0\x9f\x98",
        "\xff",
        "\x80",
        "x\x0by",
        "x\x0cy",
        "x\x01y",
        QByteArray("x\0y", 3),
        "x]]>y",
        "x]]y]>",
        "]]",
        "]]&gt;",
        "a>b",
        "x<b> y<c/>z</b> ",
        "<b> </b>z",
        "<b><b>1</b>2</b>3",
        "<b a='1' a='1'/>",
        "<b a='1' b='2' c='3' d='4'/>x",
        "<b a='1'b='2'/>x",
        "<b a = \"1\"\n/>x",
        "<b a='<'/>x",
        "<b a='>'/>x",
        "<b a=']]>'/>x",
        "<b a='&amp;&#65;\n\t'/>x",
        "<b a='&foo;'/>x",
        "<b a='\x01'/>x",
        "<b a='\xc3\xa4'/>x",
        "<b a='\xff'/>x",
        "<b a=1/>x",
        "<b a/>x",
        "<b a='1/>x",
        "<b / >x",
        "< b/>x",
        "<b></b >x",
        "<b></ b>x",
        "<b></c>x",
        "<b></bb>x",
        "<b:c/>x",
        "<b:c:d/>x",
        "<:b/>x",
        "<b:/>x",
        "<b:1/>x",
        "<-b/>x",
        "<b-.1/>x",
        "<b\xc3\xa4/>x",
        "<\xc3\xa4/>x",
        "<b a:b='1' a:c='2'/>x",
        "<b a:b:c='1'/>x",
        "<b xmlns='' xmlns:x='' xml:space='preserve'> </b>x",
        "<x:b y:c='1'/>x",
        "<!ELEMENT b>x",
        "<!x",
        "1",
        " 1 ",
        "-1.5",
        "+1.5",
        "1e3",
        "1,5",
        "0x10",
        "nan",
        "inf",
        "-inf",
        "1e400",
        "1e-400",
        "12.3.4",
        "12 3",
        "\xd9\xa1\xd9\xa2",
        "\xe2\x88\x92"
        "5",
        "2147483648",
        "-99999999999",
        "2023-11-14T22:13:20Z",
        " 2023-11-14T22:13:20Z\n",
        "2023-11-14T22:13:20.123Z",
        "2023-11-14T22:13:20.9999Z",
        "2023-11-14T22:13:20.5Z",
        "2023-11-14T22:13:20,5Z",
        "2023-11-14T22:13:20",
        "2023-11-14T22:13:20+01:00",
        "2023-11-14T22:13:20-0130",
        "2023-11-14T22:13:20z",
        "2023-11-14 22:13:20Z",
        "2023-11-14T22:13Z",
        "2023-11-14",
        "2023-02-29T22:13:20Z",
        "2024-02-29T24:00:00Z",
        "2024-02-29T23:59:60Z",
        "0000-01-01T00:00:00Z",
        "0001-01-01T00:00:00Z",
        "9999-12-31T23:59:59.999Z",
        "-2023-11-14T22:13:20Z",
        "2023-13-14T22:13:20Z",
        "2023-1a-14T22:13:20Z",
        "8.5,53.25 8.6,53.3,12,1700000000",
        "8.5,53.25\n8.6,53.3\r\n8.7,53.4,1\t,,,",
        "0,0 0,1",
        "8.5,53.25&#10;8.6,53.3",
        "8.5,53.25<!-- x -->8.6,53.3",
        "8.5,53.25\xc2\xa0"
        "8.6,53.3",
    };
    for (const QByteArray& text : texts) {
        QTest::addRow("%s", text.toPercentEncoding(" <>/=\"'&;!?[]-:.,#").constData()) << text;
    }
}

void tst_GPXReading::oddTexts()
{
    QFETCH(const QByteArray, text);
    compare(withText(text));
    compare(document("<trkseg>" + text + point + text + "</trkseg>" + text));
    compare(document("<trkseg><trkpt lat='" + text + "' lon=\"" + text + "\" z='" + text + "'/></trkseg>"));
    compare("<gpx>" + text + "<trk>" + "<trkseg>" + point + "</trkseg></trk>" + text + "</gpx>");
    compare(text + document("<trkseg>" + point + "</trkseg>"));
    compare(document("<trkseg>" + point + "</trkseg>") + text);
}

void tst_GPXReading::oddDocuments_data()
{
    QTest::addColumn<QByteArray>("bytes");
    const QByteArray track = "<trk><trkseg>" + point + "</trkseg></trk>";
    const QByteArray gpx = "<gpx>" + track + "</gpx>";
    QTest::newRow("empty") << QByteArray();
    QTest::newRow("blanks") << QByteArray(" \n");
    QTest::newRow("no root") << QByteArray("<!-- x -->");
    QTest::newRow("two roots") << gpx + gpx;
    QTest::newRow("root is a track") << track;
    QTest::newRow("empty root") << QByteArray("<gpx/>");
    QTest::newRow("no declaration") << gpx;
    QTest::newRow("byte order mark") << "\xef\xbb\xbf" + gpx;
    QTest::newRow("two byte order marks") << "\xef\xbb\xbf\xef\xbb\xbf" + gpx;
    QTest::newRow("byte order mark and declaration")
        << "\xef\xbb\xbf" + document("<trkseg>" + point + "</trkseg>");
    QTest::newRow("document type") << "<!DOCTYPE gpx>" + gpx;
    QTest::newRow("entity") << "<!DOCTYPE gpx [<!ENTITY e 'x'>]><gpx><trk><name>&e;</name><trkseg>" + point
            + "</trkseg></trk></gpx>";
    QTest::newRow("default attribute")
        << QByteArray("<!DOCTYPE gpx [<!ATTLIST trkpt lat CDATA '7'>]><gpx><trk><trkseg>"
                      "<trkpt lon='8'/></trkseg></trk></gpx>");
    QTest::newRow("junk behind") << gpx + "x";
    QTest::newRow("null behind") << gpx + QByteArray(1, '\0');
    QTest::newRow("half a character behind") << gpx + "\xc3";
    QTest::newRow("reference behind") << gpx + "&#32;";
    QTest::newRow("CDATA behind") << gpx + "<![CDATA[x]]>";
    QTest::newRow("comment behind") << gpx + "\n<!-- x -->\n<?y z?>\n";
    QTest::newRow("open comment behind") << gpx + "<!-- x";
    QTest::newRow("document type behind") << gpx + "<!DOCTYPE gpx>";
    QTest::newRow("comment before") << "<!-- x -->\n<?y z?>" + gpx;
    QTest::newRow("text before") << "x" + gpx;
    QTest::newRow("declaration after a blank") << " <?xml version='1.0'?>" + gpx;
    QTest::newRow("routes before tracks")
        << "<gpx><rte><rtept><extensions><gpxx:RoutePointExtension><gpxx:rpt "
           "lat='1' lon='2'/></gpxx:RoutePointExtension></extensions></rtept>"
           "</rte><trk/>"
            + track + "<rte/>" + track + "</gpx>";
    QTest::newRow("only the first extension") << QByteArray(
        "<gpx><rte><rtept><extensions><gpxx:RoutePointExtension/><gpxx:RoutePointExtension>"
        "<gpxx:rpt lat='1' lon='2'/></gpxx:RoutePointExtension></extensions><extensions>"
        "<gpxx:RoutePointExtension><x/><gpxx:rpt lat='3'/></gpxx:RoutePointExtension></extensions>"
        "</rtept></rte></gpx>");
    QTest::newRow("only the first texts of a point")
        << document("<trkseg><trkpt><ele/><ele>5</ele><time>x</time><time>2023-11-14T22:13:20Z</time>"
                    "<desc>a</desc><desc>b</desc></trkpt></trkseg>");
    QTest::newRow("the last texts of a track")
        << document("<name>b</name><desc>c</desc><desc>d</desc><shape>polygon</shape><shape>hop</shape>"
                    "<trkseg>"
                    + point + "</trkseg><name/>");
    QTest::newRow("detected shape") << document("<shape>auto</shape><trkseg>" + point + "</trkseg>");
    QTest::newRow("enclaves") << document("<trkseg>" + point
                                          + "</trkseg><enclaves><trk><shape>auto</shape><trkseg>" + point
                                          + "</trkseg><enclaves><any/><x><name>y</name></x></enclaves></trk>"
                                          + "</enclaves><enclaves><trk/></enclaves>");
    QTest::newRow("include") << document("<include>tour.gpx</include><trkseg>" + point + "</trkseg>");
    QTest::newRow("point in point") << document(
        "<trkseg><trkpt lat='3' lon='4'><trkpt lat='5' lon='6'/></trkpt></trkseg>");
    QTest::newRow("name with elements")
        << document("<name>a<name>b</name><desc>c</desc></name><trkseg>" + point + "</trkseg>");
    for (const int depth : {100, 126, 127, 128, 129, 130, 131, 1000}) {
        QTest::addRow("depth %d", depth)
            << document("<trkseg>" + point + "</trkseg>" + QByteArray("<a>").repeated(depth)
                        + QByteArray("</a>").repeated(depth));
        QTest::addRow("enclaves %d", depth)
            << document("<trkseg>" + point + "</trkseg>" + QByteArray("<enclaves><trk>").repeated(depth)
                        + "<trkseg>" + point + "</trkseg>" + QByteArray("</trk></enclaves>").repeated(depth));
    }
    for (const int count : {31, 32, 33, 34, 256, 257}) {
        QByteArray attributes;
        for (int index = 0; index < count; ++index) {
            attributes += " a" + QByteArray::number(index) + "=''";
        }
        QTest::addRow("%d attributes", count)
            << document("<trkseg><trkpt" + attributes + " lat='3' lon='4'/></trkseg>");
    }
}

void tst_GPXReading::oddDocuments()
{
    QFETCH(const QByteArray, bytes);
    compare(bytes);
}

void tst_GPXReading::encodings_data()
{
    QTest::addColumn<QByteArray>("declaration");
    const QByteArray declarations[] = {
        "<?xml version=\"1.0\"?>",
        "<?xml version='1.0' encoding='UTF-8'?>",
        "<?xml version='1.0' encoding='utf-8' standalone='no' ?>",
        "<?xml version=\"1.0\" standalone=\"yes\"?>",
        "<?xml version=\"1.0\" encoding=\"UTF-8' standalone='no\"?>",
        "<?xml version=\"1.0' encoding='UTF-8\"?>",
        "<?xml   version = \"1.0\"  encoding='UTF-8' ?>",
        "<?xml version='1.1'?>",
        "<?xml version='1.00'?>",
        "<?xml encoding='UTF-8'?>",
        "<?xml version='1.0' standalone='maybe'?>",
        "<?xml version='1.0' standalone='yes' standalone='no'?>",
        "<?xml version='1.0' standalone='no' standalone='yes'?>",
        "<?xml version='1.0' standalone='yes' encoding='UTF-8'?>",
        "<?xml version='1.0' version='1.0'?>",
        "<?xml version='1.0' encoding='ISO-8859-1'?>",
        "<?xml version='1.0' encoding='US-ASCII'?>",
        "<?xml version='1.0' encoding='UTF8'?>",
        "<?xml version='1.0' encoding='UTF-16'?>",
        "<?xml version='1.0' encoding='nowhere'?>",
        "<?xml version='1.0' encoding=''?>",
        "<?xml version='1.0'encoding='UTF-8'?>",
        "<?xml version='1.0' foo='UTF-8'?>",
        "<?xml version='1.0'>",
        "<?xml version='1.0' ? >",
        "<?xml version='1.0'?\?>",
        "<?xml?>",
        "<?xml version='1.0'",
        "<?XML version='1.0'?>",
        "<?xml-stylesheet href='x'?>",
    };
    for (const QByteArray& declaration : declarations) {
        QTest::addRow("%s", declaration.constData()) << declaration;
    }
}

void tst_GPXReading::encodings()
{
    QFETCH(const QByteArray, declaration);
    for (const QByteArray name : {"plain", "\xc3\xa4", "\xe4"}) {
        compare(declaration + "<gpx><trk><name>" + name + "</name><trkseg>" + point
                + "</trkseg></trk></gpx>");
    }
}

void tst_GPXReading::cutAnywhere()
{
    const QByteArray whole = "\xef\xbb\xbf"
        + document("<!-- c --><desc a='&#65;'>\xc3\xa4 &amp; <![CDATA[x]]></desc><trkseg>\r\n<x:y z=\"1\"/>"
                   + point + "<?p q?></trkseg><enclaves><trk/></enclaves>");
    for (qsizetype size = 0; size <= whole.size(); ++size) {
        compare(whole.first(size));
    }
}

QByteArray tst_GPXReading::randomText() const
{
    static const QByteArray pieces[] = {
        " ",
        "\n",
        "1",
        "23.5",
        "-7.25",
        "8.5,53.25",
        "x",
        "&amp;",
        "&#32;",
        "&#x41;",
        "\r\n",
        "\xc3\xa4",
        "\t",
        "]",
        "2023-11-14T22:13:20Z",
        "<!-- c -->",
        "<![CDATA[ ]]>",
        "<![CDATA[a]]>",
        "<?p?>",
        "polygon",
        "auto",
        "linestring,hop",
        "\xc2\xa0",
        "&lt;",
    };
    QByteArray text;
    for (quint32 count = random(4); count > 0; --count) {
        text += anyOf(pieces);
    }
    return text;
}

QByteArray tst_GPXReading::randomAttributes() const
{
    static const QByteArray names[] = {"lat", "lon", "a", "b:c", "xmlns", "lax"};
    static const QByteArray values[] = {"1", "53.123456789", "-0",  "",    " 8 ",
                                        "x", "&#49;",        "1e2", "\n4", "]]>"};
    QByteArray attributes;
    for (const QByteArray& name : names) {
        if (random(3) == 0) {
            const char quote = random(2) == 0 ? '"' : '\'';
            attributes += " " + name + "=" + quote + anyOf(values) + quote;
        }
    }
    if (random(200) == 0) {
        attributes += attributes; // twice the same
    }
    return attributes;
}

QByteArray tst_GPXReading::randomElement(int depth) const
{
    static const QByteArray names[] = {
        "trk",        "rte",
        "trk",        "trkseg",
        "trkseg",     "rtept",
        "trkpt",      "trkpt",
        "trkpt",      "ele",
        "time",       "desc",
        "name",       "shape",
        "enclaves",   "compressedPoints",
        "extensions", "gpxx:RoutePointExtension",
        "gpxx:rpt",   "include",
        "x",
    };
    const QByteArray name = anyOf(names);
    QByteArray element = "<" + name + randomAttributes();
    if (random(8) == 0) {
        return element + "/>";
    }
    element += ">";
    for (quint32 count = depth > 0 ? random(5) : 0; count > 0; --count) {
        element += (random(3) == 0 ? randomText() : QByteArray("\n")) + randomElement(depth - 1);
    }
    return element + randomText() + "</" + name + ">";
}

void tst_GPXReading::generated()
{
    constexpr int documents = generatedDocuments / 4; // large ones
    int withTracks = 0;
    for (int number = 0; number < documents; ++number) {
        QByteArray body;
        for (quint32 count = 1 + random(3); count > 0; --count) {
            body += random(2) == 0 ? randomElement(5)
                                   : "<trk>" + randomElement(3) + "<trkseg>" + randomElement(2)
                    + randomElement(2) + point + "</trkseg>" + randomElement(4) + "</trk>";
        }
        const QByteArray bytes = "<gpx>" + body + "</gpx>";
        compare(bytes);
        if (QTest::currentTestFailed()) {
            return;
        }
        withTracks +=
            LvGPXTrackFile(QFileInfo(myDirectory.filePath(QStringLiteral("tour.gpx")))).isValid() ? 1 : 0;
    }
    QVERIFY2(withTracks > documents / 10, qPrintable(QString::number(withTracks)));
}

void tst_GPXReading::damaged()
{
    static const QByteArray pieces[] = {"<",  ">",  "/",    "\"",   "'",   "=",
                                        "&",  ";",  "]]>",  "<!--", "-->", "<![CDATA[",
                                        "<?", "?>", "\xc3", "\xff", "\r",  QByteArray(1, '\0'),
                                        " ",  "a",  ":",    "&#",   "--"};
    const QByteArray whole =
        document("<!-- c --><desc a='&#65;'>\xc3\xa4 &amp; <![CDATA[x]]></desc><trkseg>\r\n<x:y z=\"1\"/>"
                 + point + point + "<?p q?></trkseg><enclaves><trk/></enclaves>");
    for (int number = 0; number < generatedDocuments; ++number) {
        QByteArray bytes = whole;
        for (quint32 count = 1 + random(2); count > 0; --count) {
            const auto place = static_cast<qsizetype>(random(static_cast<quint32>(bytes.size())));
            switch (random(4)) {
            case 0:
                bytes.remove(place, 1 + random(6));
                break;
            case 1:
                bytes[place] = static_cast<char>(random(256));
                break;
            default:
                bytes.insert(place, anyOf(pieces));
                break;
            }
        }
        compare(bytes);
        if (QTest::currentTestFailed()) {
            return;
        }
    }
}

void tst_GPXReading::includes_data()
{
    QTest::addColumn<QByteArray>("included");
    QTest::addColumn<QByteArray>("track");
    QTest::addColumn<QString>("expected"); // name, shape and number of points
    const QByteArray include = "<include>part.gpx</include>";
    const QByteArray line = "<trkseg><trkpt lat='1' lon='2'/><trkpt lat='3' lon='4'/></trkseg>";
    const QByteArray part = "<any><trk><name>in</name>" + line + "</trk><trk><name>second</name></trk></any>";
    QTest::newRow("first track") << part << include << "in 4 2";
    QTest::newRow("behind the name") << part << "<name>out</name>" + include << "in 4 2";
    QTest::newRow("before the name") << part << include + "<name>out</name>"
                                     << "out 4 2";
    QTest::newRow("twice") << part << include + include << "in 4 4";
    QTest::newRow("not again") << QByteArray("<any><trk>" + include + line + "</trk></any>") << include
                               << " 4 2";
    QTest::newRow("not in enclaves") << part << "<enclaves><trk>" + include + "</trk></enclaves>"
                                     << " 4 0";
    QTest::newRow("damaged") << part.chopped(1) << line + include << " 4 2";
    QTest::newRow("no track") << QByteArray("<any/>") << line + include << " 4 2";
    QTest::newRow("shape settled there")
        << QByteArray("<any/>") << "<shape>auto</shape>" + include + line << " 0 2";
    QTest::newRow("shape from there") << QByteArray("<any><trk><shape>hop</shape></trk></any>")
                                      << "<shape>auto</shape>" + include + line << " 2 2";
    QTest::newRow("detected with its points") << part << "<shape>auto</shape>" + include << "in 4 2";
    QTest::newRow("unusual") << "<!DOCTYPE any>" + part << include << "in 4 2";
}

void tst_GPXReading::includes()
{
    QFETCH(const QByteArray, included);
    QFETCH(const QByteArray, track);
    QFETCH(const QString, expected);
    QFile file(myDirectory.filePath(QStringLiteral("part.gpx")));
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write(included);
    file.close();
    QDomDocument xml;
    QVERIFY(LvXMLLoader::parse("<trk>" + track + "</trk>", xml));
    const LvGPXTrack read(xml.documentElement(), QDir(myDirectory.path()));
    QCOMPARE(QStringLiteral("%1 %2 %3")
                 .arg(read.name(), QString::number(quint32(read.shape().value())),
                      QString::number(read.countPoints())),
             expected);
}

void tst_GPXReading::realFiles()
{
    int files = 0;
    for (const QString& folder :
         {QDir::cleanPath(LvTest::sampleFile(QString())), LvTest::corpusDirectory()}) {
        QDirIterator iterator(folder, {QStringLiteral("*.gpx")}, QDir::Files, QDirIterator::Subdirectories);
        while (!folder.isEmpty() && iterator.hasNext()) {
            const QFileInfo file(iterator.next());
            QCOMPARE(described(LvGPXTrackFile(file).tracks()), readThroughTree(file));
            ++files;
        }
    }
    QVERIFY(files > 0);
}

void tst_GPXReading::needsNoTree()
{
    // More nodes, and deeper, than a tree may have: proof that the usual form is read without one.
    constexpr int depth = 100;
    constexpr qint64 elements = LvXMLLoader::maximumDepthSum / depth + 1000;
    const QByteArray bytes =
        document("<trkseg>" + point + "</trkseg>" + QByteArray("<a>").repeated(depth)
                 + QByteArray("<b/>").repeated(elements) + QByteArray("</a>").repeated(depth));
    const QFileInfo file = write(bytes);
    QVERIFY(LvXMLLoader::loadDocumentElement(file).isNull());
    QCOMPARE(LvGPXTrackFile(file).tracks().size(), 1);
}

void tst_GPXReading::roomIsNotWasted()
{
    const QFileInfo file = write(document("<trkseg>" + point.repeated(1100) + "</trkseg>"));
    const QList<LvGPXTrackPoint> points =
        LvGPXTrackFile(file).tracks().first().segments().first().trackPoints();
    QCOMPARE(points.size(), 1100);
    QVERIFY2(points.capacity() < 1110, qPrintable(QString::number(points.capacity())));
}

LV_TEST_MAIN(tst_GPXReading)
#include "tst_GPXReading.moc"
