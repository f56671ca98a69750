#include "LvGPXConfiguredTrackList.h"
#include "LvGPXTrackSegment.h"
#include "LvGeoPosition.h"
#include "LvKmlCoordinates.h"
#include "LvTest.h"
#include "LvTrackSelectionFactoryKmlFile.h"

#include <QDirIterator>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>

#include <bit>
#include <cstdint>

namespace
{

constexpr int generatedDocuments = LvTest::generatedCases(10'000);

bool isSame(const LvGPXTrackPoint& a, const LvGPXTrackPoint& b)
{
    const auto bits = [](double number) { return std::bit_cast<std::uint64_t>(number); };
    return bits(a.position().latitude().decimalDegrees()) == bits(b.position().latitude().decimalDegrees())
        && bits(a.position().longitude().decimalDegrees()) == bits(b.position().longitude().decimalDegrees())
        && a.elevation() == b.elevation() && a.timeStamp() == b.timeStamp()
        && a.description() == b.description();
}

bool isSame(const LvGPXTrack& a, const LvGPXTrack& b)
{
    if (a.name() != b.name() || a.description() != b.description() || a.shape().value() != b.shape().value()
        || a.segments().size() != b.segments().size()) {
        return false;
    }
    for (qsizetype index = 0; index < a.segments().size(); ++index) {
        const QList<LvGPXTrackPoint> pointsA = a.segments().at(index).trackPoints();
        const QList<LvGPXTrackPoint> pointsB = b.segments().at(index).trackPoints();
        if (!std::equal(pointsA.begin(), pointsA.end(), pointsB.begin(), pointsB.end(),
                        [](const LvGPXTrackPoint& x, const LvGPXTrackPoint& y) { return isSame(x, y); })) {
            return false;
        }
    }
    return true;
}

/// Whether the file gives the same as its whole text would, read through the tree.
bool readsLikeTheTree(const QFileInfo& file)
{
    const LvGPXConfiguredTrackList expected = LvTrackSelectionFactoryKmlFile::decode(
        LvTrackSelectionFactoryKmlFile::readFile(file), file.fileName());
    const LvGPXConfiguredTrackList actual = LvTrackSelectionFactoryKmlFile().createConfiguredTrackList(file);
    if (actual.count() != expected.count()) {
        return false;
    }
    for (int row = 0; row < actual.count(); ++row) {
        if (!isSame(actual.at(row).track(), expected.at(row).track())
            || !(actual.at(row).configuration() == expected.at(row).configuration())) {
            return false;
        }
    }
    return true;
}

class DocumentGenerator
{
public:
    QByteArray next()
    {
        static const QByteArray base =
            "<?xml version=\"1.0\"?>\r\n<kml xmlns='x'><Document><!-- a --><Style id=\"s\"><LineStyle>"
            "<width>3</width></LineStyle></Style><Placemark><name>A &amp; B</name><description><![CDATA["
            "<b>]]></description><styleUrl>#s</styleUrl><LineString><coordinates>\n 8.5,53.1,12\n8.6,53.2\n"
            "</coordinates></LineString></Placemark>\n<Folder><Placemark><Polygon><outerBoundaryIs>"
            "<LinearRing><coordinates> </coordinates></LinearRing></outerBoundaryIs><innerBoundaryIs>"
            "<LinearRing><coordinates>1,2 3,4</coordinates></LinearRing></innerBoundaryIs></Polygon>"
            "</Placemark></Folder><Placemark><Point><coordinates>0,0</coordinates></Point></Placemark>"
            "<Placemark><shape>hop</shape><coordinates>9,9</coordinates></Placemark></Document></kml>\n";
        static const QList<QByteArray> fragments = {
            "<!--",
            "-->",
            "<![CDATA[",
            "]]>",
            "<?x ",
            "?>",
            "<!DOCTYPE a>",
            "<coordinates>",
            "</coordinates>",
            "<coordinates/>",
            "<coordinates a='b'>",
            "<coordinates >",
            "</coordinates >",
            "<name>",
            "</name>",
            "<Point>",
            "</Point>",
            "<a b='>'>",
            "<a b='",
            "<a/>",
            "</a>",
            "<",
            ">",
            "&",
            "&amp;",
            "&#49;",
            "'",
            "\"",
            "/",
            "\xC3",
            "\xC3\xA4",
            "\xEF\xBB\xBF",
            "\xFF",
            "\x01",
            "\x7F",
            "\r",
            "\n",
            "\t",
            "\v",
            "1,2 ",
            "0",
            "]",
            "\xF0\x90\x80\x80",
            QByteArray(1, '\0'),
            "<description>",
            "</description>",
            "<Placemark>",
            "</Placemark>",
            "<styleUrl>#s</styleUrl>",
        };
        QByteArray document = base;
        for (unsigned changes = 1 + below(3); changes > 0; --changes) {
            const auto index = static_cast<qsizetype>(below(static_cast<unsigned>(document.size())));
            switch (below(5)) {
            case 0:
                document.remove(index, 1 + static_cast<qsizetype>(below(12)));
                break;
            case 1: { // a piece of the document once more
                const QByteArray piece = document.mid(index, static_cast<qsizetype>(below(80)));
                document.insert(static_cast<qsizetype>(below(static_cast<unsigned>(document.size()))), piece);
                break;
            }
            case 2: { // before or behind a tag, where it does the most
                const qsizetype tag = document.indexOf('<', index);
                document.insert(tag < 0 ? index : tag, fragment(fragments));
                break;
            }
            case 3: {
                const qsizetype tag = document.indexOf('>', index);
                document.insert(tag + 1, fragment(fragments));
                break;
            }
            default:
                document.insert(index, fragment(fragments));
                break;
            }
        }
        return document;
    }

private:
    unsigned below(unsigned limit)
    {
        myState = myState * 6364136223846793005U + 1442695040888963407U;
        return static_cast<unsigned>((myState >> 33) % limit);
    }

    QByteArray fragment(const QList<QByteArray>& fragments)
    {
        return fragments.at(below(static_cast<unsigned>(fragments.size())));
    }

    std::uint64_t myState = 20240503;
};

} // namespace

class tst_LvKmlCoordinates : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void takesApart_data()
    {
        QTest::addColumn<QByteArray>("document");
        QTest::addColumn<QByteArray>("remainder"); // null where the document has to stay whole
        const auto add = [](const char* name, const QByteArray& content, const QByteArray& remainder) {
            const QByteArray begin = "<kml><Document><Placemark>";
            const QByteArray end = "</Placemark></Document></kml>";
            QTest::newRow(name) << begin + content + end
                                << (remainder.isNull() ? remainder : begin + remainder + end);
        };
        add("one", "<Point><coordinates>8,53</coordinates></Point>",
            "<Point><coordinates>0</coordinates></Point>");
        add("several", "<coordinates>8,53</coordinates><coordinates> 9,54\n</coordinates>",
            "<coordinates>0</coordinates><coordinates>1</coordinates>");
        add("none", "<name>x</name>", "<name>x</name>");
        add("blank ones stay", "<coordinates> \n</coordinates><coordinates></coordinates>",
            "<coordinates> \n</coordinates><coordinates></coordinates>");
        add("in a comment", "<!--<coordinates>1</coordinates>-->", "<!--<coordinates>1</coordinates>-->");
        add("in CDATA", "<name><![CDATA[<coordinates>1]]></name>", "<name><![CDATA[<coordinates>1]]></name>");
        add("in an attribute", "<a b='<coordinates>1' c=\">\"/>", "<a b='<coordinates>1' c=\">\"/>");
        add("in an instruction", "<?a <coordinates>1?>", "<?a <coordinates>1?>");
        add("behind another element", "<x/><y><z/></y><coordinates>1</coordinates>",
            "<x/><y><z/></y><coordinates>0</coordinates>");
        add("odd text outside", "<name>&amp;\xC3\xA4</name><coordinates>1</coordinates>",
            "<name>&amp;\xC3\xA4</name><coordinates>0</coordinates>");
        add("reference", "<coordinates>1&#32;2</coordinates>", {});
        add("comment inside", "<coordinates>1<!-- -->2</coordinates>", {});
        add("CDATA inside", "<coordinates><![CDATA[1]]></coordinates>", {});
        add("element inside", "<coordinates>1<a/></coordinates>", {});
        add("control character", "<coordinates>1\x01</coordinates>", {});
        add("vertical tab", "<coordinates>1\v2</coordinates>", {});
        add("not ASCII", "<coordinates>1\xC2\xA0</coordinates>", {});
        add("end of CDATA", "<coordinates>1]]></coordinates>", {});
        add("odd at the end of many", "<coordinates>" + QByteArray(200, '1') + "\x7F</coordinates>", {});
        add("odd among many", "<coordinates>1&amp;" + QByteArray(200, '1') + "</coordinates>", {});
        add("attribute", "<coordinates a='b'>1</coordinates>", {});
        add("blank in the tag", "<coordinates >1</coordinates>", {});
        add("blank in the end tag", "<coordinates>1</coordinates >", {});
        add("empty tag", "<coordinates/>", {});
        add("below a name", "<name><coordinates>1</coordinates></name>", {});
        add("deep below a name", "<name><Point><coordinates>1</coordinates></Point></name>", {});
        QTest::newRow("document type")
            << QByteArray("<!DOCTYPE a><a><coordinates>1</coordinates></a>") << QByteArray();
        QTest::newRow("UTF-16") << QByteArray("\xFF\xFE<\0a\0/\0>\0", 10) << QByteArray();
        QTest::newRow("UTF-8 with mark") << QByteArray("\xEF\xBB\xBF<a/>") << QByteArray("\xEF\xBB\xBF<a/>");
        QTest::newRow("ends in a tag") << QByteArray("<a><b") << QByteArray();
        QTest::newRow("ends in an attribute") << QByteArray("<a><b c='") << QByteArray();
        QTest::newRow("ends in a comment") << QByteArray("<a><!-- ") << QByteArray();
        QTest::newRow("ends in a text") << QByteArray("<a><coordinates>1") << QByteArray();
        QTest::newRow("empty") << QByteArray() << QByteArray("");
    }

    void takesApart()
    {
        QFETCH(QByteArray, document);
        QFETCH(QByteArray, remainder);
        const LvKmlCoordinates coordinates(document);
        QCOMPARE(coordinates.isValid(), !remainder.isNull());
        QCOMPARE(coordinates.remainder(), remainder);
    }

    void finds()
    {
        const LvKmlCoordinates coordinates("<a><coordinates> 8,53 </coordinates><coordinates> </coordinates>"
                                           "<coordinates>9,54</coordinates></a>");
        QCOMPARE(coordinates.find(QStringLiteral("0")), std::string_view(" 8,53 "));
        QCOMPARE(coordinates.find(QStringLiteral("1")), std::string_view("9,54"));
        for (const char* const text : {"2", "-1", "", "x", "99999999999999999999"}) {
            QVERIFY(coordinates.find(QString::fromLatin1(text)).empty());
        }
    }

    void readsOddDocumentsLikeTheTree_data() { takesApart_data(); }

    void readsOddDocumentsLikeTheTree()
    {
        QFETCH(QByteArray, document);
        QVERIFY(writeFile(document));
        QVERIFY(readsLikeTheTree(myFile));
    }

    void readsFilesLikeTheTree()
    {
        QStringList folders{QFileInfo(LvTest::sampleFile(QStringLiteral("german-bight.kml"))).path()};
        if (!LvTest::corpusDirectory().isEmpty()) {
            folders.append(LvTest::corpusDirectory());
        }
        int files = 0;
        for (const QString& folder : std::as_const(folders)) {
            QDirIterator iterator(folder, {QStringLiteral("*.kml"), QStringLiteral("*.kmz")}, QDir::Files,
                                  QDirIterator::Subdirectories);
            while (iterator.hasNext()) {
                const QFileInfo file(iterator.next());
                QVERIFY2(readsLikeTheTree(file), qPrintable(file.filePath()));
                ++files;
            }
        }
        QVERIFY(files >= 2);
    }

    void readsGeneratedDocumentsLikeTheTree()
    {
        DocumentGenerator generator;
        int takenApart = 0;
        int readable = 0;
        for (int count = 0; count < generatedDocuments; ++count) {
            const QByteArray document = generator.next();
            QVERIFY(writeFile(document));
            QVERIFY2(readsLikeTheTree(myFile), document.constData());
            const bool isTakenApart = LvKmlCoordinates(document).isValid();
            takenApart += isTakenApart ? 1 : 0;
            readable +=
                isTakenApart && LvTrackSelectionFactoryKmlFile().createConfiguredTrackList(myFile).isValid()
                ? 1
                : 0;
        }
        // Neither all of them hopeless nor all of them harmless.
        QVERIFY(takenApart > generatedDocuments / 10 && takenApart < generatedDocuments);
        QVERIFY(readable > generatedDocuments / 20 && readable < takenApart);
    }

private:
    bool writeFile(const QByteArray& document) const
    {
        QFile file(myFile.filePath());
        return file.open(QIODevice::WriteOnly) && file.write(document) == document.size();
    }

    QTemporaryDir myDirectory;
    QFileInfo myFile{myDirectory.filePath(QStringLiteral("document.kml"))};
};

LV_TEST_MAIN(tst_LvKmlCoordinates)
#include "tst_LvKmlCoordinates.moc"
