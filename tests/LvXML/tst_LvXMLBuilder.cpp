#include "LvFaults.h"
#include "LvTest.h"
#include "LvXMLBuilder.h"
#include "LvXMLWriter.h"

#include <QDir>
#include <QDomDocument>
#include <QFile>
#include <QTemporaryDir>
#include <QThread>

#include <memory>

namespace
{

QByteArray contentOf(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("(unreadable)");
}

bool write(const QString& path, const QByteArray& content)
{
    QFile file(path);
    return file.open(QIODevice::WriteOnly) && file.write(content) == content.size();
}

} // namespace

class tst_LvXMLBuilder : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();
    void child();
    void childrenKeepTheirOrder();
    void childWithText();
    void childWithLiteral();
    void childWithNumber_data();
    void childWithNumber();
    void childOfNullElement();
    void childOfTemporaryParent();
    void rootElement();
    void secondRootElementReplacesFirst();
    void legalText_data();
    void legalText();
    void legalTextIsShared();
    void savedFile();
    void savedFileWithoutDeclaration();
    void savedFileDeclaresItsEncoding();
    void savedFileIsReadable_data();
    void savedFileIsReadable();
    void blankTextIsReadBack_data();
    void blankTextIsReadBack();
    void saveReplacesOlderFile();
    void failureKeepsOlderFile_data();
    void failureKeepsOlderFile();
    void failureSaysWhy();
    void failureWithoutHistory();
    void emptyDocumentIsNotWritten();
    void deepDocumentIsNotWritten();
    void largeDocumentIsNotWritten_data();
    void largeDocumentIsNotWritten();

private:
    QScopedPointer<QTemporaryDir> myDirectory;
};

void tst_LvXMLBuilder::init()
{
    myDirectory.reset(new QTemporaryDir);
    QVERIFY(myDirectory->isValid());
}

void tst_LvXMLBuilder::cleanup()
{
    myDirectory.reset();
}

void tst_LvXMLBuilder::child()
{
    QDomDocument document;
    QDomElement root = LvXMLBuilder::buildRootElement(document, "root");
    const QDomElement child = LvXMLBuilder::buildDomElement(root, "trk");
    QCOMPARE(child.tagName(), QString("trk"));
    QCOMPARE(child.parentNode(), root);
    QVERIFY(!child.hasChildNodes());
    QVERIFY(!child.hasAttributes());
    QCOMPARE(root.childNodes().size(), 1);
}

void tst_LvXMLBuilder::childrenKeepTheirOrder()
{
    QDomDocument document;
    QDomElement root = LvXMLBuilder::buildRootElement(document, "root");
    LvXMLBuilder::buildDomElement(root, "b");
    LvXMLBuilder::buildDomElement(root, "a", QString("x"));
    LvXMLBuilder::buildDomElement(root, "b", 2);
    QStringList names;
    for (QDomElement e = root.firstChildElement(); !e.isNull(); e = e.nextSiblingElement()) {
        names += e.tagName() + e.text();
    }
    QCOMPARE(names, QStringList({"b", "ax", "b2"}));
}

void tst_LvXMLBuilder::childWithText()
{
    QDomDocument document;
    QDomElement root = LvXMLBuilder::buildRootElement(document, "root");
    QCOMPARE(LvXMLBuilder::buildDomElement(root, "name", QString(" <Weser & Aller> ")).text(),
             QString(" <Weser & Aller> "));
    const QDomElement empty = LvXMLBuilder::buildDomElement(root, "name", QString());
    QVERIFY(!empty.isNull());
    QVERIFY(!empty.hasChildNodes());
    QCOMPARE(LvXMLBuilder::buildDomElement(root, "name",
                                           QString("a\x01"
                                                   "b\x1f"))
                 .text(),
             QString("ab"));
}

void tst_LvXMLBuilder::childWithLiteral()
{
    QDomDocument document;
    QDomElement root = LvXMLBuilder::buildRootElement(document, "root");
    QCOMPARE(LvXMLBuilder::buildDomElement(root, "name", "text").text(), QString("text"));
    QCOMPARE(LvXMLBuilder::buildDomElement(root, "name", QLatin1String("text")).text(), QString("text"));
    QCOMPARE(LvXMLBuilder::buildDomElement(root, "name", 0).text(), QString("0"));
}

void tst_LvXMLBuilder::childWithNumber_data()
{
    QTest::addColumn<int>("number");
    QTest::addColumn<QString>("text");
    QTest::newRow("zero") << 0 << "0";
    QTest::newRow("negative") << -100 << "-100";
    QTest::newRow("no thousands separators") << 1234567 << "1234567";
    QTest::newRow("smallest") << std::numeric_limits<int>::min() << "-2147483648";
}

void tst_LvXMLBuilder::childWithNumber()
{
    QFETCH(int, number);
    QFETCH(QString, text);
    QDomDocument document;
    QDomElement root = LvXMLBuilder::buildRootElement(document, "root");
    QCOMPARE(LvXMLBuilder::buildDomElement(root, "pensize", number).text(), text);
}

void tst_LvXMLBuilder::childOfNullElement()
{
    QDomElement null;
    QVERIFY(LvXMLBuilder::buildDomElement(null, "a").isNull());
    QVERIFY(LvXMLBuilder::buildDomElement(null, "a", QString("text")).isNull());
    QVERIFY(LvXMLBuilder::buildDomElement(null, "a", 1).isNull());
}

void tst_LvXMLBuilder::childOfTemporaryParent()
{
    QDomDocument document;
    LvXMLBuilder::buildRootElement(document, "root");
    LvXMLBuilder::buildDomElement(LvXMLBuilder::buildDomElement(document.documentElement(), "a"), "b", 5);
    QCOMPARE(document.documentElement().firstChildElement("a").firstChildElement("b").text(), QString("5"));
}

void tst_LvXMLBuilder::rootElement()
{
    QDomDocument document;
    const QDomElement root = LvXMLBuilder::buildRootElement(document, "gpx");
    QCOMPARE(root.tagName(), QString("gpx"));
    QCOMPARE(document.documentElement(), root);
    QCOMPARE(document.toString(0).simplified(), QString("<?xml version=\"1.0\" encoding=\"UTF-8\"?> <gpx/>"));
}

void tst_LvXMLBuilder::secondRootElementReplacesFirst()
{
    QDomDocument document;
    QDomElement first = LvXMLBuilder::buildRootElement(document, "first");
    LvXMLBuilder::buildDomElement(first, "a");
    LvXMLBuilder::buildRootElement(document, "second");
    QCOMPARE(document.toString(0).simplified(),
             QString("<?xml version=\"1.0\" encoding=\"UTF-8\"?> <second/>"));
}

void tst_LvXMLBuilder::legalText_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("expected");
    const QString pair = QString::fromUcs4(U"\U0001F6B2");
    const QChar high = pair.at(0);
    const QChar low = pair.at(1);
    QTest::newRow("empty") << ""
                           << "";
    QTest::newRow("plain") << "Wümme"
                           << "Wümme";
    QTest::newRow("allowed controls") << "\t\n\r"
                                      << "\t\n\r";
    QTest::newRow("all other controls") << QString::fromLatin1("\x00\x01\x08\x0b\x0c\x0e\x1f", 7) << "";
    QTest::newRow("delete is allowed") << QString(QChar(0x7F)) << QString(QChar(0x7F));
    QTest::newRow("surrogate pair stays") << pair << pair;
    QTest::newRow("lone high surrogate") << QString("a") + high + "b"
                                         << "ab";
    QTest::newRow("high surrogate at the end") << QString("a") + high << "a";
    QTest::newRow("lone low surrogate") << QString("a") + low + "b"
                                        << "ab";
    QTest::newRow("two high surrogates, one low") << QString(high) + pair << pair;
    QTest::newRow("last but non-characters") << QString(QChar(0xFFFD)) << QString(QChar(0xFFFD));
    QTest::newRow("non-characters") << QString("a") + QChar(0xFFFE) + QChar(0xFFFF) + "b"
                                    << "ab";
    QTest::newRow("private use") << QString(QChar(0xE000)) << QString(QChar(0xE000));
    QTest::newRow("first and last") << "\x01name\x02"
                                    << "name";
}

void tst_LvXMLBuilder::legalText()
{
    QFETCH(QString, text);
    QFETCH(QString, expected);
    QCOMPARE(LvXMLBuilder::legalText(text), expected);
}

void tst_LvXMLBuilder::legalTextIsShared()
{
    const QString text = QString("Bremen").repeated(3);
    QCOMPARE(LvXMLBuilder::legalText(text).constData(), text.constData());
}

void tst_LvXMLBuilder::savedFile()
{
    const QString path = myDirectory->filePath("track.gpx");
    QDomDocument document;
    QDomElement root = LvXMLBuilder::buildRootElement(document, "gpx");
    LvXMLBuilder::buildDomElement(root, "name", QString("Brücke"));
    QVERIFY(LvXMLBuilder::saveUTF8(document, QFileInfo(path)));
    QCOMPARE(contentOf(path),
             QByteArray("<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<gpx>\n <name>Br\xc3\xbc"
                        "cke</name>\n</gpx>\n"));
    QCOMPARE(QDir(myDirectory->path()).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot),
             QStringList("track.gpx"));
}

void tst_LvXMLBuilder::savedFileWithoutDeclaration()
{
    const QString path = myDirectory->filePath("track.gpx");
    QDomDocument document;
    document.appendChild(document.createElement("gpx"));
    QVERIFY(LvXMLBuilder::saveUTF8(document, QFileInfo(path)));
    QCOMPARE(contentOf(path), QByteArray("<gpx/>\n"));
}

void tst_LvXMLBuilder::savedFileDeclaresItsEncoding()
{
    const QString path = myDirectory->filePath("track.gpx");
    QDomDocument document;
    QVERIFY(
        document.setContent(QByteArray("<?xml version=\"1.0\" encoding=\"ISO-8859-1\"?><gpx>\xfc</gpx>")));
    QVERIFY(LvXMLBuilder::saveUTF8(document, QFileInfo(path)));
    QDomDocument read;
    QVERIFY(read.setContent(contentOf(path)));
    QCOMPARE(read.documentElement().text(), QString("ü"));
}

void tst_LvXMLBuilder::savedFileIsReadable_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("expected");
    QTest::newRow("markup") << "<a href='x'>&amp;</a>"
                            << "<a href='x'>&amp;</a>";
    QTest::newRow("end of a character section") << "a]]>b"
                                                << "a]]>b";
    QTest::newRow("quotes") << "\"'"
                            << "\"'";
    QTest::newRow("control characters") << "a\x01\x02"
                                           "b"
                                        << "ab";
    QTest::newRow("lone surrogate") << QString("a") + QChar(0xD83D) << "a";
    QTest::newRow("line breaks and tab") << "a\nb\tc\rd"
                                         << "a\nb\tc\rd";
    QTest::newRow("bicycle") << QString::fromUcs4(U"\U0001F6B2") << QString::fromUcs4(U"\U0001F6B2");
    QTest::newRow("null character") << QString("a") + QChar(0) + "b"
                                    << "ab";
}

void tst_LvXMLBuilder::savedFileIsReadable()
{
    QFETCH(QString, text);
    QFETCH(QString, expected);
    const QString path = myDirectory->filePath("track.gpx");
    QDomDocument document;
    QDomElement root = LvXMLBuilder::buildRootElement(document, "gpx");
    LvXMLBuilder::buildDomElement(root, "built", text);
    root.appendChild(document.createElement("plain")).appendChild(document.createTextNode(text));
    root.setAttribute("attribute", text);
    QVERIFY(LvXMLBuilder::saveUTF8(document, QFileInfo(path)));
    QDomDocument read;
    QString error;
    QVERIFY2(read.setContent(contentOf(path), &error), qUtf8Printable(error));
    QCOMPARE(read.documentElement().firstChildElement("built").text(), expected);
    QCOMPARE(read.documentElement().firstChildElement("plain").text(), expected);
    QCOMPARE(read.documentElement().attribute("attribute"), expected);
}

void tst_LvXMLBuilder::blankTextIsReadBack_data()
{
    QTest::addColumn<QString>("text");
    QTest::newRow("one blank") << " ";
    QTest::newRow("several kinds") << " \t\n ";
    QTest::newRow("no-break space") << QString(QChar(QChar::Nbsp));
}

void tst_LvXMLBuilder::blankTextIsReadBack()
{
    QFETCH(QString, text);
    const QString path = myDirectory->filePath("track.gpx");
    QDomDocument document;
    QDomElement root = LvXMLBuilder::buildRootElement(document, "gpx");
    QVERIFY(LvXMLBuilder::buildDomElement(root, "name", text).firstChild().isText());
    QVERIFY(LvXMLBuilder::saveUTF8(document, QFileInfo(path)));
    QDomDocument read;
    QVERIFY(read.setContent(contentOf(path)));
    QCOMPARE(read.documentElement().firstChildElement("name").text(), text);
}

void tst_LvXMLBuilder::saveReplacesOlderFile()
{
    const QString path = myDirectory->filePath("track.gpx");
    QVERIFY(write(path, QByteArray(100'000, 'x')));
    QDomDocument document;
    LvXMLBuilder::buildRootElement(document, "gpx");
    QStringList errors;
    QVERIFY(LvXMLBuilder::saveUTF8(document, QFileInfo(path), &errors));
    QCOMPARE(contentOf(path), QByteArray("<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<gpx/>\n"));
    QVERIFY(errors.isEmpty());
}

void tst_LvXMLBuilder::failureKeepsOlderFile_data()
{
    QTest::addColumn<int>("length");
    QTest::addColumn<int>("room");
    QTest::newRow("more than the toolkit buffers") << 100'000 << 10'000;
    QTest::newRow("less than the toolkit buffers") << 1000 << 100;
    QTest::newRow("first block of many") << 1'000'000 << 10'000;
    QTest::newRow("last block, nothing behind it") << 1'000'000 << 999'900;
}

void tst_LvXMLBuilder::failureKeepsOlderFile()
{
    QFETCH(int, length);
    QFETCH(int, room);
    const QString path = myDirectory->filePath("track.gpx");
    QVERIFY(write(path, "older"));
    QDomDocument document;
    QDomElement root = LvXMLBuilder::buildRootElement(document, "gpx");
    LvXMLBuilder::buildDomElement(root, "name", QString(length, u'x'));
    QStringList errors;
    bool isSaved = true;
    {
        const LvFaults::FileSizeLimit limit(static_cast<rlim_t>(room));
        isSaved = LvXMLBuilder::saveUTF8(document, QFileInfo(path), &errors);
    }
    QVERIFY(!isSaved);
    QCOMPARE(errors.size(), 1);
    QCOMPARE(contentOf(path), QByteArray("older"));
    QCOMPARE(QDir(myDirectory->path()).entryList(QDir::Files | QDir::Hidden), QStringList("track.gpx"));
    QVERIFY(LvXMLBuilder::saveUTF8(document, QFileInfo(path), &errors));
}

void tst_LvXMLBuilder::failureSaysWhy()
{
    const QString path = myDirectory->filePath("missing/%2.gpx");
    QDomDocument document;
    LvXMLBuilder::buildRootElement(document, "gpx");
    QStringList errors{"earlier"};
    QVERIFY(!LvXMLBuilder::saveUTF8(document, QFileInfo(path), &errors));
    QCOMPARE(errors.size(), 2);
    QCOMPARE(errors.first(), QString("earlier"));
    const QString start =
        QStringLiteral("Die Datei „") + path + QStringLiteral("“ konnte nicht geschrieben werden: ");
    QVERIFY2(errors.last().startsWith(start) && errors.last().size() > start.size(),
             qUtf8Printable(errors.last()));
    QVERIFY(!QFileInfo::exists(myDirectory->filePath("missing")));
}

void tst_LvXMLBuilder::failureWithoutHistory()
{
    QDomDocument document;
    LvXMLBuilder::buildRootElement(document, "gpx");
    QVERIFY(
        !LvXMLBuilder::saveUTF8(document, QFileInfo(myDirectory->filePath("missing/track.gpx")), nullptr));
    QVERIFY(!LvXMLBuilder::saveUTF8(document, QFileInfo(myDirectory->path())));
}

void tst_LvXMLBuilder::emptyDocumentIsNotWritten()
{
    const QString path = myDirectory->filePath("track.gpx");
    QVERIFY(write(path, "older"));
    QStringList errors;
    QVERIFY(!LvXMLBuilder::saveUTF8(QDomDocument(), QFileInfo(path), &errors));
    QCOMPARE(contentOf(path), QByteArray("older"));
    QCOMPARE(errors.size(), 1);
}

void tst_LvXMLBuilder::deepDocumentIsNotWritten()
{
    const QString path = myDirectory->filePath("track.gpx");
    QDomDocument document;
    QDomElement element = LvXMLBuilder::buildRootElement(document, "root");
    for (int depth = 2; depth <= LvXMLBuilder::maximumDepth; ++depth) {
        LvXMLBuilder::buildDomElement(element, "sibling");
        element = LvXMLBuilder::buildDomElement(element, "child");
    }
    // A stack that has no room for one frame per level.
    constexpr uint stackBytes = 256 * 1024;
    bool isSaved = false;
    const std::unique_ptr<QThread> thread(
        QThread::create([&] { isSaved = LvXMLBuilder::saveUTF8(document, QFileInfo(path)); }));
    thread->setStackSize(stackBytes);
    thread->start();
    thread->wait();
    QVERIFY(isSaved);
    const QByteArray deepest = contentOf(path);
    QVERIFY(deepest.size() > LvXMLBuilder::maximumDepth);
    LvXMLBuilder::buildDomElement(element, "child");
    QStringList errors;
    QVERIFY(!LvXMLBuilder::saveUTF8(document, QFileInfo(path), &errors));
    QVERIFY(errors.join(' ').endsWith("Die Elemente sind zu tief geschachtelt."));
    QCOMPARE(contentOf(path), deepest);
}

void tst_LvXMLBuilder::largeDocumentIsNotWritten_data()
{
    QTest::addColumn<int>("lateBytes");
    QTest::newRow("in the tree") << 0;
    QTest::newRow("a text of its own") << 1000;
    QTest::newRow("many pieces") << 300000;
}

void tst_LvXMLBuilder::largeDocumentIsNotWritten()
{
    QFETCH(int, lateBytes);
    const QString path = myDirectory->filePath("track.gpx");
    QDomDocument document;
    const QDomElement root = LvXMLBuilder::buildRootElement(document, "root");
    LvXMLBuilder::buildDomElement(root, "name", QString("Weser"));
    const QDomElement child = LvXMLBuilder::buildDomElement(root, "points");
    std::vector<LvXMLLateText> lateTexts;
    if (lateBytes > 0) {
        lateTexts.push_back({child, [lateBytes](const auto& write) {
                                 for (int done = 0; done < lateBytes; done += 100) {
                                     write(QByteArray(100, 'x'));
                                 }
                             }});
    }
    QVERIFY(LvXMLBuilder::saveUTF8(document, lateTexts, QFileInfo(path)));
    const QByteArray whole = contentOf(path);
    QVERIFY(QFile::resize(path, 0));
    QStringList errors;
    QVERIFY(!LvXMLBuilder::saveUTF8(document, lateTexts, QFileInfo(path), &errors, whole.size() - 1));
    QVERIFY2(errors.join(' ').endsWith("Sie würde größer als 0 MiB."), qPrintable(errors.join(' ')));
    QCOMPARE(contentOf(path), QByteArray());
    QCOMPARE(QDir(myDirectory->path()).entryList(QDir::Files | QDir::Hidden).size(), 1);
    QVERIFY(LvXMLBuilder::saveUTF8(document, lateTexts, QFileInfo(path), &errors, whole.size()));
    QCOMPARE(contentOf(path), whole);
    QCOMPARE(errors.size(), 1);
}

LV_TEST_MAIN(tst_LvXMLBuilder)
#include "tst_LvXMLBuilder.moc"
