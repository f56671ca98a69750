// What a program outside the tree can write with the companion libraries of the installed package.

#include <QCheckBox>
#include <QDir>
#include <QDomDocument>
#include <QPen>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>
#include <QToolButton>

#include <LvBlinkAnimation.h>
#include <LvConcurrent.h>
#include <LvConfigItem.h>
#include <LvDistance.h>
#include <LvElidedLabel.h>
#include <LvEnumWrapper.h>
#include <LvFileHandler.h>
#include <LvIconRegistry.h>
#include <LvIntRange.h>
#include <LvLogger.h>
#include <LvMath.h>
#include <LvPenStyle.h>
#include <LvPreferencesBox.h>
#include <LvRational.h>
#include <LvRegularExpression.h>
#include <LvRequestDiskAccess.h>
#include <LvSettings.h>
#include <LvSingleton.h>
#include <LvUniqueFilenameMaker.h>
#include <LvXMLBuilder.h>
#include <LvXMLLoader.h>
#include <LvXMLParser.h>
#include <LvZIP.h>

namespace
{

class Service : public LvSingleton<Service>
{
public:
    void setupInstance() override { ++starts; }

    int starts = 0;
};

class Settings : public LvSettings
{
public:
    void loadSettings() override { load(item); }

    void saveSettings() override { save(item); }

    LvConfigItem<bool> item{QStringLiteral("clientItem"), true};
};

class Page : public LvPreferencesBox
{
public:
    Page()
        : LvPreferencesBox(QStringLiteral("Page"), 3)
    {
    }

    void readFromConfig() override { ++reads; }

    int reads = 0;
};

enum class Side : quint32 { none = 0, left = 1, right = 2 };

class Sides : public LvEnumWrapper<Side>
{
public:
    using LvEnumWrapper::LvEnumWrapper;

    void fillTable(LvEnumToStringTable<Side>* table) const override
    {
        table->insert(QStringLiteral("left"), Side::left);
        table->insert(QStringLiteral("right"), Side::right);
    }
};

} // namespace

class companions : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void ranges();
    void distances();
    void penStyles();
    void enumerations();
    void numbersAndTexts();
    void xml();
    void files();
    void services();
    void concurrency();
    void widgets();
};

void companions::ranges()
{
    const LvIntRange range(0, 9);
    int sum = 0;
    for (const LvIntRange& piece : range.splitEvenlyForCpuCores()) {
        for (int i = piece.firstIndex(); i < piece.lastIndexEvenIfUnvalid(); ++i) {
            sum += i;
        }
    }
    QCOMPARE(sum, 45);
    QCOMPARE(range.min(), 0);
    QCOMPARE(range.max(), 9);
    QVERIFY(range.contains(9) && range.contains(LvIntRange(2, 3)) && range.intersects(LvIntRange(9, 20)));
    QCOMPARE(LvIntRange::rowsOfImage(QImage(3, 2, QImage::Format_RGB32)).lastIndexEvenIfUnvalid(), 2);
    QCOMPARE(LvIntRange::columnsOfImage(QImage(3, 2, QImage::Format_RGB32)).lastIndexEvenIfUnvalid(), 3);
    LvRange<int> plain(0, 0);
    plain.expandTo(-5);
    QCOMPARE(plain.center(), -5);
    QVERIFY(plain == LvRange<int>(-5, -5));
    LvRange<QDateTime> times;
    const QDateTime noon(QDate(2024, 2, 29), QTime(12, 0), Qt::UTC);
    times.expandTo(noon);
    times.expandTo(noon.addSecs(60));
    QCOMPARE(times.center(), noon.addSecs(30));
}

void companions::distances()
{
    LvDistance width = 10.0;
    width += LvDistance(2);
    QCOMPARE(width.value(), 12.0);
    QVERIFY(width > LvDistance(11) && width != 11.0 && LvDistance().isNull());
    QCOMPARE(width / LvDistance(4), 3.0);
    QCOMPARE((width * 2.0).value(), 24.0);
    QCOMPARE((2.0 * width / 3.0).value(), 8.0);
    QCOMPARE(qMin(width, LvDistance(3)).value(), 3.0);
    QCOMPARE(width.describe(LvDistanceUnit(1), 1, true), QStringLiteral("12.0 px"));
}

void companions::penStyles()
{
    QCOMPARE(LvPenStyle().value(), 1);
    QVERIFY(LvPenStyle(2) == LvPenStyle(Qt::DashLine) && LvPenStyle(2) != LvPenStyle());
    QPen pen;
    LvPenStyle(Qt::DotLine).modifyPen(pen);
    QCOMPARE(pen.style(), Qt::DotLine);
    QDomDocument document;
    QDomElement element = document.createElement("c");
    LvPenStyle(4).toXml(element);
    QCOMPARE(LvPenStyle::fromXml(element).value(), 4);
}

void companions::enumerations()
{
    Sides sides(Side::left);
    sides |= Sides(Side::right);
    QCOMPARE(sides.enumToStringTable()->encodeCSV(sides.value()), QStringLiteral("left, right"));
    QCOMPARE(sides & Sides(Side::right), Side::right);
    sides &= Side::left;
    QVERIFY(sides == Side::left && sides != Sides(Side::right) && sides.isValid());
    QVERIFY(sides.enumToStringTable()->decode(" RIGHT ") == Side::right);
    QVERIFY(!sides.enumToStringTable()->decode("up").has_value());
    LvEnumToStringTable<Side> table;
    sides.fillTable(&table);
    QCOMPARE(table.decodeCSV("left,right"), static_cast<Side>(3));
}

void companions::numbersAndTexts()
{
    QVERIFY(LvMath::epsilonEqual(1.0, 1.5, 0.5) && !LvMath::epsilonEqual(1.0, 1.6, 0.5));
    QCOMPARE(LvRational(2400000, 100000).toString(), QStringLiteral("2400000/100000"));
    QString text = QStringLiteral("a b c");
    LvRegularExpression("\\s").removeFrom(text);
    QCOMPARE(text, QStringLiteral("abc"));
}

void companions::xml()
{
    QTemporaryDir folder;
    const QFileInfo file(folder.filePath("a.xml"));
    QDomDocument document;
    QDomElement root = LvXMLBuilder::buildRootElement(document, "root");
    LvXMLBuilder::buildDomElement(root, "number", 5);
    LvXMLBuilder::buildDomElement(root, "text", "x < y");
    LvXMLBuilder::buildDomElement(root, "empty").setAttribute("a", "7");
    QStringList history;
    QVERIFY(LvXMLBuilder::saveUTF8(document, file, &history));
    QVERIFY(!LvXMLBuilder::saveUTF8(document, QFileInfo("/no/such/folder/a.xml")));
    const QDomElement read = LvXMLLoader::loadDocumentElement(file);
    QCOMPARE(read.tagName(), QStringLiteral("root"));
    QCOMPARE(LvXMLParser::text(read, "text", QString()), QStringLiteral("x < y"));
    QCOMPARE(LvXMLParser::doubleText(read, "number", 0.0), 5.0);
    QCOMPARE(LvXMLParser::intAttribute(read.firstChildElement("empty"), "a", 1), 7);
    QCOMPARE(LvXMLParser::doubleAttribute(read, "lat", 1.0), 1.0);
    QVERIFY(!LvXMLParser::dateTimeText(read, "time", Qt::ISODate, QDateTime()).isValid());
    QCOMPARE(LvXMLParser::readColor("#80ff0000"), QColor(255, 0, 0, 128));
    QCOMPARE(LvXMLParser::readColor("#ff0000"), QColor(255, 0, 0));
    QCOMPARE(LvXMLParser::readColor("red").alpha(), 0);
    QVERIFY(LvXMLLoader::loadDocumentElement(QFileInfo(folder.path())).isNull());
}

void companions::files()
{
    QTemporaryDir folder;
    QFile file(folder.filePath("a.txt"));
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write("one\r\ntwo\n");
    file.close();
    QCOMPARE(LvFileHandler::readTextFile(QFileInfo(file)), QStringList({"one", "two"}));
    LvZIP archive{QFileInfo(file)};
    QVERIFY(!archive.open(1));
    QVERIFY(archive.getFileNameList().isEmpty() && archive.fileContent("doc.kml").isEmpty());
    archive.close();
    const QFileInfo first = LvUniqueFilenameMaker::instance()->makeUniqueFileNameInSafeContainer(
        QFileInfo(QDir(folder.path()), "track.gps"), {QDir(folder.path())});
    const QFileInfo second = LvUniqueFilenameMaker::instance()->makeUniqueFileNameInSafeContainer(
        QFileInfo(QDir(folder.path()), "track.gps"), {QDir(folder.path())});
    QCOMPARE(first.fileName(), QStringLiteral("track.gps"));
    QVERIFY(first.filePath() != second.filePath());
    QCOMPARE(second.dir(), QDir(folder.path()));
    const QString log = folder.filePath("usage.log");
    QVERIFY(LvLogger::instance()->setLogFile(log));
    LvLogger::instance()->logOSM("ACTION:test");
    QVERIFY(LvLogger::instance()->setLogFile(QString()));
    QVERIFY(LvFileHandler::readTextFile(QFileInfo(log)).value(0).endsWith("ACTION:test"));
}

void companions::services()
{
    Service* service = Service::instance();
    QCOMPARE(LvSingleton<Service>::instance(), service);
    QCOMPARE(service->starts, 1);
    Settings settings;
    QVERIFY(settings.item.setValue(false) && !settings.item.setValue(false));
    settings.saveSettings();
    Settings restarted;
    restarted.loadSettings();
    QCOMPARE(restarted.item.value(), false);
    QCOMPARE(restarted.item.defaultValue(), true);
}

void companions::concurrency()
{
    QCOMPARE(LvConcurrent::maxRunningThreads, 3 * QThread::idealThreadCount());
    const std::function<int(const LvIntRange&)> last = [](const LvIntRange& range) { return range.max(); };
    const QList<LvIntRange> ranges{{0, 1}, {2, 3}, {4, 5}};
    QCOMPARE(LvConcurrent::blockingMapped(ranges, last), QList<int>({1, 3, 5}));
    QList<int> numbers{1, 2, 3};
    LvConcurrent::blockingMap(numbers, [](int& number) { number *= 2; });
    QCOMPARE(numbers, QList<int>({2, 4, 6}));
}

void companions::widgets()
{
    Page page;
    LvPreferencesItem& item = page;
    item.readFromConfig();
    item.revertChanges();
    item.writeToConfig();
    QCOMPARE(page.reads, 2);
    QVERIFY(item.checkLeaveCondition());
    QCOMPARE(page.title(), QStringLiteral("Page"));
    QToolButton button;
    LvIconRegistry::instance()->setIcon(&button, "ico_fit_map");
    QVERIFY(!button.icon().isNull());
    LvElidedLabel label(QStringLiteral("a long name of a track"));
    label.setWordWrap(true);
    label.setAnimationState(1);
    QCOMPARE(label.fullText(), QStringLiteral("a long name of a track"));
    LvBlinkAnimation animation;
    QSignalSpy states(&animation, &LvBlinkAnimation::blink);
    animation.start();
    animation.stop();
    QCOMPARE(states.size(), 2);
    LvRequestDiskAccess::instance()->setAsker(
        [](const QString&, const QString&, const QString&) { return QStringLiteral("/a.gpx"); });
    QCOMPARE(LvRequestDiskAccess::instance()->getOpenFileName(1, "*.gpx", "Open", ""),
             QStringLiteral("/a.gpx"));
}

QTEST_MAIN(companions)
#include "companions.moc"
