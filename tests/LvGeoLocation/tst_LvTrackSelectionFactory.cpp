#include "LvRequestDiskAccess.h"
#include "LvTest.h"
#include "LvTrackSelectionFactory.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QThread>

#include <atomic>
#include <memory>
#include <vector>

namespace
{

QStringList myUsageLines;
QtMessageHandler myPreviousHandler = nullptr;

void collectUsage(QtMsgType type, const QMessageLogContext& context, const QString& message)
{
    if (qstrcmp(context.category, "lv.usage") == 0) {
        myUsageLines.append(message);
    } else {
        myPreviousHandler(type, context, message);
    }
}

bool writeFile(const QString& path, const QByteArray& bytes)
{
    QFile file(path);
    return file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size();
}

QByteArray gpx(const QByteArray& name)
{
    return "<gpx><trk><name>" + name + "</name><trkseg><trkpt lat='50' lon='8'/></trkseg></trk></gpx>";
}

QByteArray kml(const QByteArray& name)
{
    return "<kml><Document><Placemark><name>" + name
        + "</name><Point><coordinates>8,50</coordinates></Point></Placemark></Document></kml>";
}

QString namesOf(const LvGPXConfiguredTrackList& list)
{
    QStringList names;
    for (const LvGPXConfiguredTrack& track : list) {
        names.append(track.name());
    }
    return names.join(QLatin1Char(' '));
}

} // namespace

class tst_LvTrackSelectionFactory : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void cleanupTestCase();
    void init();
    void cleanup();
    void isOneInstance();
    void supportsFile_data();
    void supportsFile();
    void supportedFileFormats();
    void usesTheFactoryOfTheFile_data();
    void usesTheFactoryOfTheFile();
    void readsSeveralFiles();
    void askUserReadFile();
    void askUserReadFileCancelled();

private:
    QUrl url(const QString& name) const { return QUrl::fromLocalFile(myDirectory.filePath(name)); }

    QTemporaryDir myDirectory;
};

void tst_LvTrackSelectionFactory::initTestCase()
{
    myPreviousHandler = qInstallMessageHandler(collectUsage);
    QVERIFY(writeFile(myDirectory.filePath(QStringLiteral("Tour.GPX")), gpx("first")));
    QVERIFY(writeFile(myDirectory.filePath(QStringLiteral("zwei#Ä.kml")), kml("second")));
    QVERIFY(writeFile(myDirectory.filePath(QStringLiteral("broken.gpx")), "<gpx>"));
    QVERIFY(writeFile(myDirectory.filePath(QStringLiteral("kml.gpx")), kml("third")));
    QVERIFY(writeFile(myDirectory.filePath(QStringLiteral("tour.txt")), gpx("fourth")));
}

void tst_LvTrackSelectionFactory::cleanupTestCase()
{
    qInstallMessageHandler(myPreviousHandler);
}

void tst_LvTrackSelectionFactory::init()
{
    myUsageLines.clear();
}

void tst_LvTrackSelectionFactory::cleanup()
{
    LvRequestDiskAccess::instance()->setAsker({});
}

void tst_LvTrackSelectionFactory::isOneInstance()
{
    std::atomic<LvTrackSelectionFactory*> fromThread = nullptr;
    const std::unique_ptr<QThread> thread(
        QThread::create([&fromThread] { fromThread = LvTrackSelectionFactory::instance(); }));
    thread->start();
    QVERIFY(thread->wait());
    QVERIFY(LvTrackSelectionFactory::instance() != nullptr);
    QCOMPARE(fromThread.load(), LvTrackSelectionFactory::instance());
}

void tst_LvTrackSelectionFactory::supportsFile_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<bool>("supported");

    QTest::newRow("GPX") << "Tour.GPX" << true;
    QTest::newRow("KML") << "tour.Kml" << true;
    QTest::newRow("KMZ") << "tour.kmz" << true;
    QTest::newRow("other") << "tour.txt" << false;
    QTest::newRow("none") << "" << false;
}

void tst_LvTrackSelectionFactory::supportsFile()
{
    QFETCH(const QString, name);
    QFETCH(const bool, supported);

    QCOMPARE(LvTrackSelectionFactory::instance()->supportsFile(QUrl::fromLocalFile(name)), supported);
    QVERIFY(myUsageLines.isEmpty());
}

void tst_LvTrackSelectionFactory::supportedFileFormats()
{
    QCOMPARE(LvTrackSelectionFactory::instance()->supportedFileFormats(),
             QStringList({QStringLiteral("*.gpx"), QStringLiteral("*.kml"), QStringLiteral("*.kmz")}));
}

void tst_LvTrackSelectionFactory::usesTheFactoryOfTheFile_data()
{
    QTest::addColumn<QString>("file");
    QTest::addColumn<QString>("names");
    QTest::addColumn<QStringList>("log");

    const QStringList gpxLine{QStringLiteral("ACTION:useFactory VALUE:*.gpx")};
    const QStringList kmlLine{QStringLiteral("ACTION:useFactory VALUE:*.kml,*.kmz")};
    QTest::newRow("GPX") << "Tour.GPX"
                         << "first" << gpxLine;
    QTest::newRow("KML, odd characters in the name") << "zwei#Ä.kml"
                                                     << "second" << kmlLine;
    QTest::newRow("unreadable: logged all the same") << "broken.gpx"
                                                     << "" << gpxLine;
    QTest::newRow("the suffix decides, not the content") << "kml.gpx"
                                                         << "" << gpxLine;
    QTest::newRow("not there: logged all the same") << "none.kmz"
                                                    << "" << kmlLine;
    QTest::newRow("no factory: no log line") << "tour.txt"
                                             << "" << QStringList();
}

void tst_LvTrackSelectionFactory::usesTheFactoryOfTheFile()
{
    QFETCH(const QString, file);
    QFETCH(const QString, names);
    QFETCH(const QStringList, log);

    QCOMPARE(namesOf(LvTrackSelectionFactory::instance()->createConfiguredTrackList(url(file))), names);
    QCOMPARE(myUsageLines, log);
}

void tst_LvTrackSelectionFactory::readsSeveralFiles()
{
    const QList<QUrl> urls{url(QStringLiteral("zwei#Ä.kml")), url(QStringLiteral("broken.gpx")),
                           url(QStringLiteral("tour.txt")), url(QStringLiteral("Tour.GPX"))};
    QCOMPARE(namesOf(LvTrackSelectionFactory::instance()->createConfiguredTrackList(urls)),
             QStringLiteral("second first"));
    QCOMPARE(myUsageLines.count(), 3);
    QVERIFY(!LvTrackSelectionFactory::instance()->createConfiguredTrackList(QList<QUrl>()).isValid());
}

void tst_LvTrackSelectionFactory::askUserReadFile()
{
    QStringList asked;
    LvRequestDiskAccess::instance()->setAsker(
        [this, &asked](const QString& title, const QString& nameFilters, const QString&) {
            asked.append({title, nameFilters});
            return myDirectory.filePath(QStringLiteral("zwei#Ä.kml"));
        });
    QCOMPARE(namesOf(LvTrackSelectionFactory::instance()->askUserReadFile()), QStringLiteral("second"));
    QCOMPARE(asked,
             QStringList({QStringLiteral("Datei für Route öffnen"),
                          LvRequestDiskAccess::nameFilters(QStringLiteral("*.gpx *.kml *.kmz"))}));
    QCOMPARE(myUsageLines, QStringList({QStringLiteral("ACTION:useFactory VALUE:*.kml,*.kmz")}));
}

void tst_LvTrackSelectionFactory::askUserReadFileCancelled()
{
    int requests = 0;
    LvRequestDiskAccess::instance()->setAsker([&requests](const QString&, const QString&, const QString&) {
        ++requests;
        return QString();
    });
    QVERIFY(!LvTrackSelectionFactory::instance()->askUserReadFile().isValid());
    QCOMPARE(requests, 1);
    QVERIFY(myUsageLines.isEmpty());
}

LV_TEST_MAIN(tst_LvTrackSelectionFactory)
#include "tst_LvTrackSelectionFactory.moc"
