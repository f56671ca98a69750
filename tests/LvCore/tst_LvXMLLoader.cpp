#include "LvTest.h"
#include "LvXMLLoader.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QFileInfo>
#include <QStringEncoder>
#include <QTemporaryDir>

#include <sys/stat.h>

namespace
{

QByteArray nested(int depth)
{
    return QByteArray("<a>").repeated(depth) + QByteArray("</a>").repeated(depth);
}

QByteArray attributes(int count)
{
    QByteArray text;
    for (int i = 0; i < count; ++i) {
        text += " a" + QByteArray::number(i) + "='1'";
    }
    return text;
}

int depthOf(const QDomDocument& document)
{
    int depth = 0;
    for (QDomElement element = document.documentElement(); !element.isNull();
         element = element.firstChildElement()) {
        ++depth;
    }
    return depth;
}

QByteArray encoded(const QString& text, QStringConverter::Encoding encoding)
{
    QStringEncoder encoder(encoding, QStringConverter::Flag::WriteBom);
    return encoder(text);
}

QByteArray inEncoding(const char* name, const QByteArray& content)
{
    return QByteArray("<?xml version=\"1.0\" encoding=\"") + name + "\"?><a>" + content + "</a>";
}

} // namespace

class tst_LvXMLLoader : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void parses_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        QTest::addColumn<QString>("text");
        QTest::newRow("plain") << QByteArray("<a>x</a>") << "x";
        QTest::newRow("UTF-8 by default") << QByteArray("<a>\xC3\xBC\xE2\x82\xAC</a>") << "ü€";
        QTest::newRow("UTF-8 mark") << encoded(QStringLiteral("<a>ü€</a>"), QStringConverter::Utf8) << "ü€";
        QTest::newRow("UTF-16 LE") << encoded(QStringLiteral("<a>ü€</a>"), QStringConverter::Utf16LE) << "ü€";
        QTest::newRow("UTF-16 BE") << encoded(QStringLiteral("<a>ü€</a>"), QStringConverter::Utf16BE) << "ü€";
        QTest::newRow("ISO-8859-1") << inEncoding("ISO-8859-1", "\xFC") << "ü";
        QTest::newRow("windows-1252") << inEncoding("windows-1252", "\xFC\x80") << "ü€";
        QTest::newRow("character reference") << QByteArray("<a>&#x20AC;&amp;</a>") << "€&";
        QTest::newRow("CDATA") << QByteArray("<a><![CDATA[<b>]]></a>") << "<b>";
        QTest::newRow("internal entity")
            << QByteArray("<!DOCTYPE a [<!ENTITY e 'x<b>y</b>'>]><a>&e;&e;</a>") << "xyxy";
        QTest::newRow("external entity")
            << QByteArray("<!DOCTYPE a [<!ENTITY e SYSTEM 'file:///etc/passwd'>]><a>[&e;]</a>") << "[]";
    }

    void parses()
    {
        QFETCH(QByteArray, bytes);
        QFETCH(QString, text);
        QDomDocument document;
        QString message;
        QVERIFY2(LvXMLLoader::parse(bytes, document, &message), qUtf8Printable(message));
        QCOMPARE(document.documentElement().tagName(), QStringLiteral("a"));
        QCOMPARE(document.documentElement().text(), text);

        QFile file(myDirectory.filePath(QStringLiteral("document.xml")));
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write(bytes);
        file.close();
        QCOMPARE(LvXMLLoader::loadDocumentElement(QFileInfo(file)).text(), text);
    }

    void parsesTextWhateverItDeclares()
    {
        QDomDocument document;
        const QString text = QStringLiteral("<?xml version=\"1.0\" encoding=\"ISO-8859-1\"?><a>ü€東</a>");
        QVERIFY(LvXMLLoader::parse(text, document));
        QCOMPARE(document.documentElement().text(), QStringLiteral("ü€東"));
    }

    void namesKeepTheirPrefix()
    {
        QDomDocument document;
        const QByteArray bytes =
            "<p:a q:b=\"1\" xmlns:p=\"u\"><gpxx:rpt/></p:a>"; // two prefixes are not declared
        QVERIFY(LvXMLLoader::parse(bytes, document));
        QCOMPARE(document.documentElement().tagName(), QStringLiteral("p:a"));
        QCOMPARE(document.documentElement().attribute(QStringLiteral("q:b")), QStringLiteral("1"));
        QVERIFY(!document.documentElement().firstChildElement(QStringLiteral("gpxx:rpt")).isNull());
    }

    void refuses_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        QTest::newRow("nothing") << QByteArray();
        QTest::newRow("no XML") << QByteArray("hello");
        QTest::newRow("not closed") << QByteArray("<a><b>x</b>");
        QTest::newRow("closed crosswise") << QByteArray("<a><b></a></b>");
        QTest::newRow("text behind") << QByteArray("<a/>x");
        QTest::newRow("second root") << QByteArray("<a/><b/>");
        QTest::newRow("attribute twice") << QByteArray("<a b='1' b='2'/>");
        QTest::newRow("undeclared entity") << QByteArray("<a>&e;</a>");
        QTest::newRow("control character") << QByteArray("<a>\x01</a>");
        QTest::newRow("null character") << QByteArray("<a>\0</a>", 8);
        QTest::newRow("not UTF-8") << QByteArray("<a>\xFC</a>");
        QTest::newRow("unknown encoding") << inEncoding("no-such-encoding", "x");
        QTest::newRow("XML 1.1") << QByteArray("<?xml version='1.1'?><a/>");
        QTest::newRow("declaration not at the start") << QByteArray("\n<?xml version='1.0'?><a/>");
        QTest::newRow("entity inside itself") << QByteArray("<!DOCTYPE a [<!ENTITY e '&e;'>]><a>&e;</a>");
    }

    void refuses()
    {
        QFETCH(QByteArray, bytes);
        QDomDocument document;
        QVERIFY(document.setContent(QStringLiteral("<old/>")));
        QString message;
        QVERIFY(!LvXMLLoader::parse(bytes, document, &message));
        QVERIFY(document.isNull() || document.documentElement().isNull()); // nothing old, nothing half
        QVERIFY2(message.contains(QStringLiteral("(line ")), qUtf8Printable(message));

        QFile file(myDirectory.filePath(QStringLiteral("bad.xml")));
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write(bytes);
        file.close();
        QVERIFY(LvXMLLoader::loadDocumentElement(QFileInfo(file)).isNull());
    }

    void messageNamesTheLine()
    {
        QDomDocument document;
        QString message;
        QVERIFY(!LvXMLLoader::parse(QByteArray("<a>\n<b>\n</c>\n</a>"), document, &message));
        QVERIFY2(message.contains(QStringLiteral("line 3")), qUtf8Printable(message));
    }

    void depth_data()
    {
        QTest::addColumn<int>("depth");
        QTest::addColumn<bool>("isRead");
        QTest::newRow("one") << 1 << true;
        QTest::newRow("five thousand") << 5000 << true;
        QTest::newRow("at the limit") << LvXMLLoader::maximumDepth << true;
        QTest::newRow("beyond the limit") << LvXMLLoader::maximumDepth + 1 << false;
        QTest::newRow("a million") << 1000000 << false;
    }

    void depth()
    {
        QFETCH(int, depth);
        QFETCH(bool, isRead);
        QDomDocument document;
        QCOMPARE(LvXMLLoader::parse(nested(depth), document), isRead);
        QCOMPARE(depthOf(document), isRead ? depth : 0);
        QCOMPARE(LvXMLLoader::parse(QString::fromLatin1(nested(depth)), document), isRead);
        QCOMPARE(depthOf(document), isRead ? depth : 0);
    }

    void manySiblingsDeepInside_data()
    {
        QTest::addColumn<int>("depth");
        QTest::addColumn<int>("siblings");
        QTest::addColumn<QByteArray>("sibling");
        QTest::addColumn<bool>("isRead");
        QTest::newRow("many, not deep") << 20 << 300000 << QByteArray("<b/>") << true;
        QTest::newRow("deep, not many") << 9999 << 1000 << QByteArray("<b/>") << true;
        QTest::newRow("deep and many") << 9999 << 300000 << QByteArray("<b/>") << false;
        QTest::newRow("deep and many comments") << 9999 << 300000 << QByteArray("<!---->") << false;
        QTest::newRow("deep and many, from entities") << 9999 << 250 << QByteArray("&e;") << false;
    }

    void manySiblingsDeepInside()
    {
        QFETCH(int, depth);
        QFETCH(int, siblings);
        QFETCH(QByteArray, sibling);
        QFETCH(bool, isRead);
        QElapsedTimer timer;
        timer.start();
        const QByteArray declaration =
            "<!DOCTYPE a [<!ENTITY e \"" + QByteArray("<b/>").repeated(1000) + "\">]>";
        QDomDocument document;
        QString message;
        QVERIFY2(LvXMLLoader::parse((sibling.startsWith('&') ? declaration : QByteArray())
                                        + QByteArray("<a>").repeated(depth) + sibling.repeated(siblings)
                                        + QByteArray("</a>").repeated(depth),
                                    document, &message)
                     == isRead,
                 qUtf8Printable(message));
        QCOMPARE(message.contains(QStringLiteral("deep")), !isRead);
        QVERIFY(timer.elapsed() < 20000);
    }

    void depthOfUnusualDocuments()
    {
        QDomDocument document;
        // Not closed: the tree of it must not even be begun.
        QVERIFY(!LvXMLLoader::parse(QByteArray("<a>").repeated(1000000), document));
        // Few visible tags, deep all the same.
        const QByteArray entity = "<!DOCTYPE a [<!ENTITY e '" + QByteArray("<a>").repeated(1000)
            + QByteArray("</a>").repeated(1000) + "'>]><a>" + QByteArray("&e;").repeated(20) + "</a>";
        if (LvXMLLoader::parse(entity, document)) {
            QVERIFY(depthOf(document) <= LvXMLLoader::maximumDepth);
        }
        // Another spelling of "<".
        const QByteArray sevenBits = "<?xml version=\"1.0\" encoding=\"UTF-7\"?>"
            + QByteArray("+ADw-a+AD4-").repeated(100000) + QByteArray("+ADw-/a+AD4-").repeated(100000);
        QVERIFY(!LvXMLLoader::parse(sevenBits, document));
        // Siblings do not add up.
        QVERIFY(LvXMLLoader::parse("<r>" + QByteArray("<a></a><b/>").repeated(50000) + "</r>", document));
        QCOMPARE(document.documentElement().childNodes().size(), 100000);
    }

    void entityBombs_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        QByteArray laughs = "<!DOCTYPE a [<!ENTITY e0 \"lol\">";
        for (int level = 1; level < 10; ++level) {
            laughs += "<!ENTITY e" + QByteArray::number(level) + " \""
                + ("&e" + QByteArray::number(level - 1) + ";").repeated(10) + "\">";
        }
        laughs += "]>";
        QTest::newRow("thousand million laughs") << laughs + "<a>&e9;</a>";
        QTest::newRow("laughs in an attribute") << laughs + "<a b=\"&e9;\"/>";
        const QByteArray block = "<!DOCTYPE a [<!ENTITY e \"" + QByteArray(4000, 'x') + "\">]>";
        QTest::newRow("many uses of one") << block + "<a>" + QByteArray("&e;").repeated(1000000) + "</a>";
        QTest::newRow("many uses in attributes")
            << block + "<a>" + QByteArray("<b c=\"&e;\"/>").repeated(300000) + "</a>";
        QTest::newRow("many uses in one attribute")
            << block + "<a b=\"" + QByteArray("&e;").repeated(1000000) + "\"/>";
        QTest::newRow("many uses, UTF-16")
            << encoded(QString::fromLatin1(block + "<a>" + QByteArray("&e;").repeated(1000000) + "</a>"),
                       QStringConverter::Utf16LE);
        QTest::newRow("many uses, UTF-7") << "<?xml version='1.0' encoding='UTF-7'?>" + block + "<a>"
                + QByteArray("+ACY-e;").repeated(1000000) + "</a>";
        QTest::newRow("many uses through another") << "<!DOCTYPE a [<!ENTITY f \"" + QByteArray(2000, 'x')
                + "\"><!ENTITY e \"&f;&f;\">]><a>" + QByteArray("&e;").repeated(1000000) + "</a>";
        QTest::newRow("many elements") << "<!DOCTYPE a [<!ENTITY e \"" + QByteArray("<b/>").repeated(1000)
                + "\">]><a>" + QByteArray("&e;").repeated(100000) + "</a>";
        QTest::newRow("long default attribute") << block.chopped(2) + "<!ATTLIST b c CDATA \"&e;\">]><a>"
                + QByteArray("<b/>").repeated(100000) + "</a>";
        QByteArray defaults = "<!DOCTYPE a [<!ATTLIST b";
        for (int i = 0; i < 200; ++i) {
            defaults += " c" + QByteArray::number(i) + " CDATA 'xxxxxxxxxx'";
        }
        QTest::newRow("many default attributes")
            << defaults + ">]><a>" + QByteArray("<b/>").repeated(20000) + "</a>";
        QTest::newRow("parameter entities") << "<!DOCTYPE a [<!ENTITY % p \""
                + QByteArray("<!ELEMENT z ANY>").repeated(200) + "\">" + QByteArray("%p;").repeated(1000000)
                + "]><a/>";
    }

    void entityBombs()
    {
        QFETCH(QByteArray, bytes);
        QElapsedTimer timer;
        timer.start();
        QDomDocument document;
        QVERIFY(!LvXMLLoader::parse(bytes, document));
        QVERIFY(document.documentElement().isNull());
        QVERIFY(timer.elapsed() < 20000);
    }

    void fewDefaultsAndParameterEntitiesAreNoBomb()
    {
        const QByteArray bytes = "<!DOCTYPE a [<!ENTITY % p \"<!ENTITY e 'x'>\">%p;"
                                 "<!ATTLIST b c CDATA 'default'>]><a><b/>&e;<b c='own'/></a>";
        QDomDocument document;
        QString message;
        QVERIFY2(LvXMLLoader::parse(bytes, document, &message), qUtf8Printable(message));
        const QDomElement first = document.documentElement().firstChildElement();
        QCOMPARE(first.attribute(QStringLiteral("c")), QStringLiteral("default"));
        QCOMPARE(first.nextSiblingElement().attribute(QStringLiteral("c")), QStringLiteral("own"));
        QCOMPARE(document.documentElement().text(), QStringLiteral("x"));
    }

    void attributesOfOneTag_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        QTest::addColumn<bool>("isRead");
        const QByteArray most = attributes(LvXMLLoader::maximumAttributes);
        const QByteArray tooMany = attributes(LvXMLLoader::maximumAttributes + 1);
        const QByteArray million = attributes(1000000); // takes the reader hours
        QTest::newRow("at the limit") << "<a" + most + "/>" << true;
        QTest::newRow("beyond the limit") << "<a" + tooMany + "/>" << false;
        QTest::newRow("a million") << "<a" + million + "/>" << false;
        QTest::newRow("a million, UTF-16")
            << encoded(QString::fromLatin1("<a" + million + "/>"), QStringConverter::Utf16BE) << false;
        QTest::newRow("many tags") << "<a><b" + most + "/><b" + most + "/></a>" << true;
        QTest::newRow("text like a tag") << "<a>&lt;b" + tooMany + ">" + million + "</a>" << true;
        QTest::newRow("comment") << "<a><!-- <b" + million + " --></a>" << true;
        QTest::newRow("CDATA") << "<a><![CDATA[ <b" + million + "]]></a>" << true;
        QTest::newRow("instruction") << "<a><?b <b" + million + "?></a>" << true;
        QTest::newRow("entity") << "<!DOCTYPE a [<!ENTITY e \"<b" + tooMany + "/>\">]><a/>" << true;
        // What looks like the beginning of a quoted text, or like the end of a tag, hides nothing.
        QTest::newRow("behind a comment") << "<a><!-- it's --><b" + million + "/></a>" << false;
        QTest::newRow("behind CDATA") << "<a><![CDATA[<b c=\"]]><b" + million + "/></a>" << false;
        QTest::newRow("behind an instruction") << "<a><?b \"?><b" + million + "/></a>" << false;
        QTest::newRow("behind a text") << "<a>it's<b" + million + "/></a>" << false;
        QTest::newRow("behind an entity")
            << "<!DOCTYPE a [<!ENTITY e \"<b c='\"><!-- ' --><?p ' ?>]><a" + million + "/>" << false;
        QTest::newRow("behind a value") << "<a b='>\"'" + million + "/>" << false;
    }

    void attributesOfOneTag()
    {
        QFETCH(QByteArray, bytes);
        QFETCH(bool, isRead);
        QElapsedTimer timer;
        timer.start();
        QDomDocument document;
        QString message;
        QVERIFY2(LvXMLLoader::parse(bytes, document, &message) == isRead, qUtf8Printable(message));
        QCOMPARE(message.contains(QStringLiteral("attributes")), !isRead);
        QVERIFY(timer.elapsed() < 20000);
    }

    void tooManyNodes_data()
    {
        QTest::addColumn<QByteArray>("node");
        QTest::addColumn<qint64>("nodes");
        QTest::newRow("attributes") << "<b" + attributes(200) + "/>" << qint64(401);
        QTest::newRow("comments") << QByteArray("<!---->") << qint64(1);
    }

    void tooManyNodes()
    {
        QFETCH(QByteArray, node);
        QFETCH(qint64, nodes);
        QDomDocument document;
        QString message;
        const QByteArray bytes = "<a>" + node.repeated(LvXMLLoader::maximumNodes / nodes + 1) + "</a>";
        QVERIFY(!LvXMLLoader::parse(bytes, document, &message));
        QVERIFY2(message.contains(QString::number(LvXMLLoader::maximumNodes)), qUtf8Printable(message));
    }

    void manyEntitiesAreQuick()
    {
        QByteArray bytes = "<!DOCTYPE a [";
        for (int i = 0; i < 20000; ++i) {
            bytes += "<!ENTITY e" + QByteArray::number(i) + " 'x'>";
        }
        bytes += "]><a>" + QByteArray("&e7;").repeated(100000) + "</a>";
        QElapsedTimer timer;
        timer.start();
        QDomDocument document;
        QVERIFY(LvXMLLoader::parse(bytes, document));
        QCOMPARE(document.documentElement().text().size(), 100000);
        QVERIFY(timer.elapsed() < 20000);
    }

    void ordinaryEntitiesAreNoBomb()
    {
        QDomDocument document;
        const QByteArray bytes = "<!DOCTYPE a [<!ENTITY e \"" + QByteArray(4000, 'x') + "\">]><a>"
            + QByteArray("&e;").repeated(200) + "</a>";
        QVERIFY(LvXMLLoader::parse(bytes, document));
        QCOMPARE(document.documentElement().text().size(), 200 * 4000);
    }

    void onlyRegularFiles_data()
    {
        QTest::addColumn<QString>("path");
        const QString pipe = myDirectory.filePath(QStringLiteral("pipe"));
        QCOMPARE(mkfifo(QFile::encodeName(pipe).constData(), 0600), 0);
        QTest::newRow("missing") << myDirectory.filePath(QStringLiteral("nothing"));
        QTest::newRow("directory") << myDirectory.path();
        QTest::newRow("pipe") << pipe;
        QTest::newRow("device") << QStringLiteral("/dev/zero");
        QTest::newRow("no name") << QString();
    }

    void onlyRegularFiles()
    {
        QFETCH(QString, path);
        QVERIFY(LvXMLLoader::loadDocumentElement(QFileInfo(path)).isNull());
    }

    void elementOutlivesItsDocument()
    {
        QFile file(myDirectory.filePath(QStringLiteral("alive.xml")));
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write("<a><b c='1'/></a>");
        file.close();
        const QDomElement element = LvXMLLoader::loadDocumentElement(QFileInfo(file));
        QCOMPARE(element.firstChildElement(QStringLiteral("b")).attribute(QStringLiteral("c")),
                 QStringLiteral("1"));
    }

    /// Real files: the result is that of the toolkit's own check of the whole document, and no file takes
    /// long.
    void corpus()
    {
        const QString corpus = LvTest::corpusDirectory();
        if (corpus.isEmpty()) {
            QSKIP("no corpus of real files beside the repository");
        }
        QElapsedTimer timer;
        timer.start();
        const QFileInfoList files =
            QDir(corpus + QStringLiteral("/gpx")).entryInfoList({QStringLiteral("*.gpx")}, QDir::Files);
        QVERIFY(!files.isEmpty());
        for (const QFileInfo& file : files) {
            QVERIFY2(!LvXMLLoader::loadDocumentElement(file).isNull(), qUtf8Printable(file.fileName()));
        }
        const QFileInfo euro(corpus + QStringLiteral("/gpx/own-windows-1252.gpx"));
        QCOMPARE(LvXMLLoader::loadDocumentElement(euro)
                     .firstChildElement(QStringLiteral("trk"))
                     .firstChildElement(QStringLiteral("name"))
                     .text(),
                 QStringLiteral("Größe 5 €"));
        QSet<QString> readable;
        for (const QFileInfo& file :
             QDir(corpus + QStringLiteral("/malformed"))
                 .entryInfoList({QStringLiteral("*.gpx"), QStringLiteral("*.kml")}, QDir::Files)) {
            if (!LvXMLLoader::loadDocumentElement(file).isNull()) {
                readable.insert(file.fileName());
            }
        }
        QCOMPARE(readable,
                 (QSet<QString>{QStringLiteral("own-deep.kml"), QStringLiteral("own-external-entity.gpx"),
                                QStringLiteral("own-numbers.gpx")}));
        QVERIFY(timer.elapsed() < 60000);
    }

private:
    QTemporaryDir myDirectory;
};

LV_TEST_MAIN(tst_LvXMLLoader)
#include "tst_LvXMLLoader.moc"
