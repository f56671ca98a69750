#include "LvLogger.h"
#include "LvTest.h"

#include <QDateTime>
#include <QFile>
#include <QMutexLocker>
#include <QTemporaryDir>

#include <thread>
#include <vector>

namespace
{

struct Message {
    QtMsgType type;
    QString category;
    QString text;
};

QMutex& messagesMutex()
{
    static QMutex myMutex;
    return myMutex;
}

QList<Message>& messages()
{
    static QList<Message> myMessages;
    return myMessages;
}

void collect(QtMsgType type, const QMessageLogContext& context, const QString& text)
{
    const QMutexLocker locker(&messagesMutex());
    messages().append({type, QString::fromLatin1(context.category), text});
}

/// Collects the messages while it lives.
class Collector
{
public:
    Collector()
        : myPrevious(qInstallMessageHandler(collect))
    {
        messages().clear();
    }
    Q_DISABLE_COPY_MOVE(Collector)

    ~Collector() { qInstallMessageHandler(myPrevious); }

private:
    QtMessageHandler myPrevious;
};

QStringList linesOf(const QString& path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        return {};
    }
    return QString::fromUtf8(file.readAll()).split(QLatin1Char('\n'), Qt::SkipEmptyParts);
}

} // namespace

class tst_LvLogger : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void cleanup() { LvLogger::instance()->setLogFile(QString()); }

    void writesToTheCategory()
    {
        const Collector collector;
        LvLogger::instance()->logOSM(QStringLiteral("ACTION:useFactory VALUE:*.gpx"));
        QCOMPARE(messages().size(), 1);
        QCOMPARE(messages().at(0).category, QStringLiteral("lv.usage"));
        QCOMPARE(messages().at(0).type, QtInfoMsg);
        QCOMPARE(messages().at(0).text, QStringLiteral("ACTION:useFactory VALUE:*.gpx"));
    }

    void noFileUnlessSet() { QVERIFY(LvLogger::instance()->logFile().isEmpty()); }

    void writesToTheFile()
    {
        const Collector collector;
        const QString path = myDirectory.filePath(QStringLiteral("usage.log"));
        LvLogger* logger = LvLogger::instance();
        const QDateTime before = QDateTime::currentDateTimeUtc().addSecs(-1);
        QVERIFY(logger->setLogFile(path));
        QCOMPARE(logger->logFile(), path);
        logger->logOSM(QStringLiteral("first %1 \"quoted\""));
        logger->logOSM(QStringLiteral("zweite Größe"));
        QVERIFY(logger->setLogFile(QString()));
        logger->logOSM(QStringLiteral("third"));
        const QStringList lines = linesOf(path);
        QCOMPARE(lines.size(), 2);
        QVERIFY(lines.at(0).endsWith(QStringLiteral("Z first %1 \"quoted\"")));
        QVERIFY(lines.at(1).endsWith(QStringLiteral("Z zweite Größe")));
        const QDateTime time =
            QDateTime::fromString(lines.at(0).section(QLatin1Char(' '), 0, 0), Qt::ISODate);
        QVERIFY(time >= before);
        QVERIFY(time <= QDateTime::currentDateTimeUtc());
        QCOMPARE(messages().size(), 3);
    }

    void appends()
    {
        const Collector collector;
        const QString path = myDirectory.filePath(QStringLiteral("append.log"));
        QFile file(path);
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write("old\n");
        file.close();
        QVERIFY(LvLogger::instance()->setLogFile(path));
        LvLogger::instance()->logOSM(QStringLiteral("new"));
        QCOMPARE(linesOf(path).size(), 2);
        QCOMPARE(linesOf(path).at(0), QStringLiteral("old"));
    }

    void keepsTheFileWhenTheNewOneIsNotWritable()
    {
        const Collector collector;
        const QString path = myDirectory.filePath(QStringLiteral("kept.log"));
        QVERIFY(LvLogger::instance()->setLogFile(path));
        QVERIFY(!LvLogger::instance()->setLogFile(myDirectory.filePath(QStringLiteral("no/such/usage.log"))));
        QCOMPARE(LvLogger::instance()->logFile(), path);
        LvLogger::instance()->logOSM(QStringLiteral("line"));
        QCOMPARE(linesOf(path).size(), 1);
    }

    void oneLineStaysOneLine()
    {
        const Collector collector;
        const QString path = myDirectory.filePath(QStringLiteral("lines.log"));
        QVERIFY(LvLogger::instance()->setLogFile(path));
        LvLogger::instance()->logOSM(QStringLiteral("a\nb\r\nc"));
        QCOMPARE(linesOf(path).size(), 1);
        QVERIFY(linesOf(path).at(0).endsWith(QStringLiteral(" a b  c")));
        QCOMPARE(messages().at(0).text, QStringLiteral("a b  c"));
    }

    void threadsDoNotMixTheirLines()
    {
        constexpr int threadCount = 8;
        constexpr int linesPerThread = 50;
        const Collector collector;
        const QString path = myDirectory.filePath(QStringLiteral("threads.log"));
        QVERIFY(LvLogger::instance()->setLogFile(path));
        std::vector<std::thread> threads;
        for (int i = 0; i < threadCount; ++i) {
            threads.emplace_back([i] {
                for (int line = 0; line < linesPerThread; ++line) {
                    LvLogger::instance()->logOSM(QString(200, QChar(u'a' + i)));
                }
            });
        }
        for (std::thread& thread : threads) {
            thread.join();
        }
        const QStringList lines = linesOf(path);
        QCOMPARE(lines.size(), threadCount * linesPerThread);
        for (const QString& line : lines) {
            const QString text = line.section(QLatin1Char(' '), 1);
            QCOMPARE(text, QString(200, text.at(0)));
        }
        QCOMPARE(messages().size(), threadCount * linesPerThread);
    }

private:
    QTemporaryDir myDirectory;
};

LV_TEST_MAIN(tst_LvLogger)
#include "tst_LvLogger.moc"
