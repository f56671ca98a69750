#include "LvTest.h"
#include "LvXMLBuilder.h"
#include "LvXMLWriter.h"

#include <QBuffer>
#include <QDomDocument>
#include <QTextStream>

#include <algorithm>
#include <cstdint>
#include <functional>
#include <limits>

namespace
{

QByteArray written(const QDomDocument& document)
{
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    LvXMLWriter(buffer).write(document);
    return buffer.data();
}

/// The bytes that the toolkit makes of the document, without the characters that XML forbids.
QByteArray writtenByToolkit(const QDomDocument& document)
{
    QString text;
    QTextStream stream(&text, QIODevice::WriteOnly);
    stream.setEncoding(QStringConverter::Utf8);
    const QDomNode first = document.firstChild();
    const bool hasDeclaration = first.isProcessingInstruction() && first.nodeName() == QLatin1String("xml");
    document.save(stream, 1,
                  hasDeclaration ? QDomNode::EncodingFromTextStream : QDomNode::EncodingFromDocument);
    stream.flush();
    return LvXMLBuilder::legalText(text).toUtf8();
}

QDomDocument parsed(const QString& text)
{
    QDomDocument document;
    document.setContent(text);
    return document;
}

/// Takes at most so many bytes at once, as a disk does that is almost full, and remembers how much it was
/// asked to take.
class SlowDevice : public QIODevice
{
public:
    explicit SlowDevice(qint64 atOnce = std::numeric_limits<qint64>::max())
        : myAtOnce(atOnce)
    {
        open(QIODevice::WriteOnly | QIODevice::Unbuffered);
    }

    [[nodiscard]] const QByteArray& bytes() const { return myBytes; }

    [[nodiscard]] const QList<qint64>& sizes() const { return mySizes; }

protected:
    qint64 readData(char* /*bytes*/, qint64 /*size*/) override { return -1; }

    qint64 writeData(const char* bytes, qint64 size) override
    {
        mySizes.append(size);
        const qint64 taken = std::min(size, myAtOnce);
        myBytes.append(bytes, taken);
        return taken;
    }

private:
    qint64 myAtOnce;
    QByteArray myBytes;
    QList<qint64> mySizes;
};

class TreeGenerator
{
public:
    QDomDocument next()
    {
        QDomDocument document;
        myDocument = document;
        if (below(2) == 0) {
            document.appendChild(document.createProcessingInstruction(
                QStringLiteral("xml"), QStringLiteral("version=\"1.0\" encoding=\"ISO-8859-1\"")));
        }
        if (below(4) == 0) {
            document.appendChild(document.createComment(text()));
        }
        QDomNode node = document.appendChild(element());
        for (unsigned nodes = below(30); nodes > 0; --nodes) {
            QDomNode child = newNode();
            node.appendChild(child);
            if (child.isElement() && below(2) == 0) {
                node = child;
            } else if (below(3) == 0 && !node.parentNode().isDocument()) {
                node = node.parentNode();
            }
        }
        if (below(4) == 0) {
            document.appendChild(document.createProcessingInstruction(QStringLiteral("p"), text()));
        }
        return document;
    }

private:
    unsigned below(unsigned limit)
    {
        myState = myState * 6364136223846793005U + 1442695040888963407U;
        return static_cast<unsigned>((myState >> 33) % limit);
    }

    QString text()
    {
        // No "]" together with ">": the toolkit makes ill-formed documents of some of those texts.
        static const QString characters = QStringLiteral("ab<&\"'>\r\n\t \u00A0\u00E4\u20AC\u0085\u2028/=-")
            + QString::fromUcs4(U"\U0001F6B2") + QChar(0xFFFE) + QChar(0xFFFD) + QChar(0xE000) + QChar(1)
            + QChar(u'\0') + QChar(0x7F);
        QString result;
        for (unsigned count = below(4) == 0 ? below(200) : below(5); count > 0; --count) {
            result += characters[below(static_cast<unsigned>(characters.size()))];
        }
        return below(8) == 0 ? result.replace(u'>', u']') : result;
    }

    QDomElement element()
    {
        QDomElement result = below(12) == 0
            ? myDocument.createElementNS(QStringLiteral("urn:x&\""), QStringLiteral("p:\u00E4"))
            : myDocument.createElement(below(6) == 0 ? QStringLiteral("gpxx:rpt") : QStringLiteral("name"));
        // Of several attributes the toolkit's order is random.
        if (below(3) == 0) {
            result.setAttribute(QStringLiteral("lat"), text());
        } else if (below(16) == 0) {
            result.setAttributeNS(QStringLiteral("urn:y<"), QStringLiteral("q:a"), text());
        } else if (below(16) == 0) {
            result.setAttributeNS(QStringLiteral("urn:x"), QStringLiteral("p:a"), text());
        }
        return result;
    }

    QDomNode newNode()
    {
        switch (below(10)) {
        case 0:
            return myDocument.createComment(text());
        case 1:
            return myDocument.createProcessingInstruction(QStringLiteral("php"), text());
        case 2:
            return myDocument.createCDATASection(text());
        case 3:
            return myDocument.createEntityReference(QStringLiteral("entity"));
        case 4:
        case 5:
            return myDocument.createTextNode(text());
        default:
            return element();
        }
    }

    QDomDocument myDocument;
    std::uint64_t myState = 20240504;
};

} // namespace

class tst_LvXMLWriter : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void lateTexts();
    void sectionEndsAcrossBorders();
    void writesWholePages();
    void writesTheRestOfWhatWasTakenInPart();

    void writesLikeTheToolkit_data()
    {
        QTest::addColumn<QString>("text");
        QTest::newRow("root alone") << QStringLiteral("<a/>");
        QTest::newRow("text") << QStringLiteral("<a>b</a>");
        QTest::newRow("nested") << QStringLiteral("<a><b><c/></b><d>e</d></a>");
        QTest::newRow("text before an element") << QStringLiteral("<a>b<c/></a>");
        QTest::newRow("text behind an element") << QStringLiteral("<a><c/>b</a>");
        QTest::newRow("section") << QStringLiteral("<a><![CDATA[ <b> ]]></a>");
        QTest::newRow("section between elements") << QStringLiteral("<a><b/><![CDATA[ ]]><b/></a>");
        QTest::newRow("comments") << QStringLiteral("<!--a--><b>c<!-- d -->e<!--f--><g/></b><!--h-->");
        QTest::newRow("instructions") << QStringLiteral("<?a b?><c>d<?e f?>g<?h i?><j/></c><?k l?>");
        QTest::newRow("declaration") << QStringLiteral("<?xml version='1.0' encoding='latin1'?><a b='c'/>");
        QTest::newRow("document type") << QStringLiteral("<!DOCTYPE a><!--b--><a/>");
        QTest::newRow("document type with identifiers") << QStringLiteral("<!DOCTYPE a PUBLIC 'b' 'c'><a/>");
        QTest::newRow("document type with entities")
            << QStringLiteral("<!DOCTYPE a [<!ENTITY e 'x'><!NOTATION n SYSTEM 'u'>]><a>&e;</a>");
        QTest::newRow("declaration and document type")
            << QStringLiteral("<?xml version='1.0'?><!DOCTYPE a [<!ENTITY e 'x'>]><a>&e;</a>");
        QTest::newRow("prefixes") << QStringLiteral("<p:a xmlns:p='x'><q:b p:c='d'/></p:a>");
        QTest::newRow("escapes") << QStringLiteral("<a b='&lt;&amp;&quot;&apos;&gt;&#13;&#10;&#9;]]&gt;'>"
                                                   "&lt;&amp;&quot;&apos;&gt;&#13;&#10;&#9;]]&gt;]>]</a>");
    }

    void writesLikeTheToolkit()
    {
        QFETCH(QString, text);
        const QDomDocument document = parsed(text);
        QVERIFY(!document.documentElement().isNull());
        QCOMPARE(written(document), writtenByToolkit(document));
    }

    void writesGeneratedTreesLikeTheToolkit()
    {
        TreeGenerator generator;
        for (int count = 0; count < 20'000; ++count) {
            const QDomDocument document = generator.next();
            QCOMPARE(written(document), writtenByToolkit(document));
        }
    }

    /// Texts longer than the buffers, with something to escape on both sides of every border.
    void writesLongTextsLikeTheToolkit()
    {
        for (int length = 8180; length < 8200; ++length) {
            for (const QString& end : {QStringLiteral("&"), QStringLiteral("]]>"), QString(QChar(0x20AC)),
                                       QString::fromUcs4(U"\U0001F6B2")}) {
                QDomDocument document;
                QDomElement root = document.createElement(QStringLiteral("a"));
                document.appendChild(root);
                for (int times = 0; times < 30; ++times) {
                    QDomElement child = document.createElement(QStringLiteral("b"));
                    child.appendChild(document.createTextNode(QString(length, u'x') + end));
                    root.appendChild(child);
                }
                root.setAttribute(QStringLiteral("c"), QString(8 * length, QChar(0x20AC)) + end);
                QCOMPARE(written(document), writtenByToolkit(document));
            }
        }
    }

    void attributesAreInOrder()
    {
        QByteArray expected;
        for (int times = 0; times < 20; ++times) {
            QDomDocument document;
            QDomElement root = document.createElement(QStringLiteral("a"));
            document.appendChild(root);
            const QStringList names = {"lon", "lat", "b", "B", "xmlns:x", "x:y", "\u00E4", "long"};
            for (qsizetype index = 0; index < names.size(); ++index) {
                root.setAttribute(names[(index + times) % names.size()], QStringLiteral("1"));
            }
            QCOMPARE(written(document),
                     QByteArray("<a B=\"1\" b=\"1\" lat=\"1\" lon=\"1\" long=\"1\" x:y=\"1\" xmlns:x=\"1\" "
                                "\xC3\xA4=\"1\"/>\n"));
        }
    }

    void declaresAPrefixOnce()
    {
        QDomDocument document;
        QDomElement root = document.createElementNS(QStringLiteral("urn:p"), QStringLiteral("p:a"));
        document.appendChild(root);
        root.setAttributeNS(QStringLiteral("urn:q"), QStringLiteral("q:c"), QStringLiteral("2"));
        root.setAttributeNS(QStringLiteral("urn:q"), QStringLiteral("q:b"), QStringLiteral("1"));
        root.setAttributeNS(QStringLiteral("urn:p"), QStringLiteral("p:d"), QStringLiteral("3"));
        QCOMPARE(written(document),
                 QByteArray("<p:a xmlns:p=\"urn:p\" p:d=\"3\" q:b=\"1\" xmlns:q=\"urn:q\" q:c=\"2\"/>\n"));
    }

    /// Where the toolkit writes what nobody can read.
    void sectionEnds_data()
    {
        QTest::addColumn<QString>("text");
        QTest::newRow("plain") << QStringLiteral("a]]>b");
        QTest::newRow("twice") << QStringLiteral("]]>]]>");
        QTest::newRow("more brackets") << QStringLiteral("]]]]>>");
        QTest::newRow("behind a character that is left out") << QStringLiteral("]]\x01>");
        QTest::newRow("between them") << QStringLiteral("]\x01]>");
    }

    void sectionEnds()
    {
        QFETCH(QString, text);
        QDomDocument document;
        QDomElement root = document.createElement(QStringLiteral("a"));
        document.appendChild(root);
        root.appendChild(document.createElement(QStringLiteral("text")))
            .appendChild(document.createTextNode(text));
        root.appendChild(document.createElement(QStringLiteral("section")))
            .appendChild(document.createCDATASection(text));
        QDomNode pieces = root.appendChild(document.createElement(QStringLiteral("pieces")));
        for (const QChar character : text) {
            pieces.appendChild(document.createTextNode(character));
        }
        root.setAttribute(QStringLiteral("b"), text);
        QDomDocument read;
        QVERIFY(read.setContent(written(document)));
        const QString expected = LvXMLBuilder::legalText(text);
        const QDomElement again = read.documentElement();
        QCOMPARE(again.firstChildElement(QStringLiteral("text")).text(), expected);
        QCOMPARE(again.firstChildElement(QStringLiteral("section")).text(), expected);
        QCOMPARE(again.firstChildElement(QStringLiteral("pieces")).text(), expected);
        QCOMPARE(again.attribute(QStringLiteral("b")), expected);
    }

    /// A pair of surrogates may be spread over two texts, and only over texts.
    void splitPairs()
    {
        const QString pair = QString::fromUcs4(U"\U0001F6B2");
        QDomDocument document;
        QDomElement root = document.createElement(QStringLiteral("a"));
        document.appendChild(root);
        root.appendChild(document.createTextNode(pair.first(1)));
        root.appendChild(document.createTextNode(pair.last(1) + QStringLiteral("b") + pair.first(1)));
        root.appendChild(document.createTextNode(QStringLiteral("c") + pair.first(1)));
        root.appendChild(document.createElement(QStringLiteral("d")));
        root.appendChild(document.createTextNode(pair.last(1) + pair.first(1)));
        root.appendChild(document.createCDATASection(pair.last(1)));
        QCOMPARE(written(document), writtenByToolkit(document));
        QVERIFY(written(document).contains(pair.toUtf8()));
    }

    void indentationIsLimited()
    {
        QDomDocument document;
        QDomNode node = LvXMLBuilder::buildRootElement(document, QStringLiteral("a"));
        for (int depth = 1; depth < LvXMLWriter::maximumIndentation + 3; ++depth) {
            node = node.appendChild(document.createElement(QStringLiteral("a")));
        }
        const QByteArray bytes = written(document);
        const QByteArray deepest(LvXMLWriter::maximumIndentation, ' ');
        QVERIFY(bytes.contains('\n' + deepest + "<a/>\n" + deepest + "</a>\n"));
        QVERIFY(!bytes.contains(deepest + ' '));
    }

    void findSuspect()
    {
        for (unsigned unit = 0; unit <= 0xFFFF; ++unit) {
            const QString text(QChar(static_cast<char16_t>(unit)));
            if (LvXMLWriter::legalUnits(text, 0) == 0) {
                QCOMPARE(LvXMLWriter::findSuspect(text, 0), 0);
            }
        }
        for (qsizetype index = 0; index < 100; ++index) {
            QString text(100, u'x');
            text[index] = QChar(u'\0');
            QCOMPARE(LvXMLWriter::findSuspect(text, 0), index);
            QCOMPARE(LvXMLWriter::findSuspect(text, index + 1), text.size());
        }
    }
};

void tst_LvXMLWriter::lateTexts()
{
    // Long enough to need the buffer several times, in pieces of all sizes.
    const QByteArray first = QByteArray("8.5,53.25\n").repeated(20000);
    const QByteArray second = "1,2";
    const QDomDocument plain =
        parsed(QStringLiteral("<a><b>%1</b><c/><d><b>%2</b></d></a>").arg(QString(first), QString(second)));
    const QDomDocument empty = parsed(QStringLiteral("<a><b/><c/><d><b/></d></a>"));
    const QDomElement root = empty.documentElement();
    const auto inPieces = [](const QByteArray& text, qsizetype size) {
        return [text, size](const std::function<void(QByteArrayView)>& write) {
            for (qsizetype index = 0; index < text.size(); index += size) {
                write(QByteArrayView(text).sliced(index, std::min(size, text.size() - index)));
            }
        };
    };
    const LvXMLLateText one{root.firstChildElement(QStringLiteral("b")), inPieces(first, 70001)};
    const LvXMLLateText two{root.firstChildElement(QStringLiteral("d")).firstChildElement(),
                            inPieces(second, 1)};
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    QVERIFY(LvXMLWriter(buffer).write(empty, {one, two}));
    QCOMPARE(buffer.data(), written(plain));
    // Out of order, and of another document: a text would be lost.
    QVERIFY(!LvXMLWriter(buffer).write(empty, {two, one}));
    QVERIFY(!LvXMLWriter(buffer).write(plain, {one}));
}

void tst_LvXMLWriter::sectionEndsAcrossBorders()
{
    // A late text fills the buffer to the last byte, or almost; what follows comes character by character.
    QDomDocument document = parsed(QStringLiteral("<r><a/><b/><c/></r>"));
    QDomElement root = document.documentElement();
    const QDomElement late = root.firstChildElement(QStringLiteral("a"));
    QDomElement text = root.firstChildElement(QStringLiteral("b"));
    QDomElement section = root.firstChildElement(QStringLiteral("c"));
    for (const QChar character : QStringLiteral("x]]>y]]>")) {
        text.appendChild(document.createTextNode(character));
    }
    section.appendChild(document.createCDATASection(QStringLiteral("x]]>y]]>")));
    const QByteArray end =
        "</a>\n <b>x]]&gt;y]]&gt;</b>\n <c><![CDATA[x]]]]><![CDATA[>y]]]]><![CDATA[>]]></c>\n"
        "</r>\n";
    for (qsizetype length = (qsizetype(1) << 18) - 150; length <= qsizetype(1) << 18; ++length) {
        const QByteArray points(length, '8');
        SlowDevice device;
        QVERIFY(LvXMLWriter(device).write(
            document,
            {{late, [&points](const std::function<void(QByteArrayView)>& write) { write(points); }}}));
        QVERIFY(device.bytes() == "<r>\n <a>" + points + end);
    }
}

void tst_LvXMLWriter::writesWholePages()
{
    const QDomDocument document = parsed(QStringLiteral("<a><b>%1</b><c>%2</c></a>")
                                             .arg(QString(1'000'000, u'x'), QString(300'000, QChar(0x20AC))));
    SlowDevice device;
    LvXMLWriter(device).write(document);
    QCOMPARE(device.bytes(), writtenByToolkit(document));
    const QList<qint64>& sizes = device.sizes();
    QVERIFY(sizes.size() > 3);
    for (qsizetype index = 0; index + 1 < sizes.size(); ++index) {
        QCOMPARE(sizes[index] % 4096, 0);
        QVERIFY(sizes[index] >= 100'000);
    }
}

void tst_LvXMLWriter::writesTheRestOfWhatWasTakenInPart()
{
    const QDomDocument document = parsed(QStringLiteral("<a>%1</a>").arg(QString(1'000'000, u'x')));
    for (const qint64 atOnce : {1000, 4096, 100'000}) {
        SlowDevice device(atOnce);
        LvXMLWriter(device).write(document);
        QCOMPARE(device.bytes(), writtenByToolkit(document));
    }
    // One that takes nothing at all is not asked for ever.
    SlowDevice full(0);
    LvXMLWriter(full).write(document);
    QVERIFY(full.bytes().isEmpty());
    QVERIFY(full.sizes().size() < 100);
}

LV_TEST_MAIN(tst_LvXMLWriter)
#include "tst_LvXMLWriter.moc"
