#include "LvConcurrent.h"
#include "LvLogger.h"
#include "LvSettings.h"
#include "LvSingleton.h"
#include "LvTest.h"
#include "LvXMLLoader.h"

#include <thread>

namespace
{

class Settings : public LvSettings
{
public:
    void loadSettings() override { load(text); }

    void saveSettings() override { save(text); }

    LvConfigItem<QString> text{QStringLiteral("text"), QStringLiteral("default")};
};

class ObjectService : public QObject, public LvSingleton<ObjectService>
{
};

} // namespace

/// Libraries are used before main() has an application object, and by programs that never make one.
class tst_LvCoreWithoutApplication : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void initTestCase() { QVERIFY(QCoreApplication::instance() == nullptr); }

    void settings()
    {
        Settings settings;
        settings.loadSettings();
        QCOMPARE(settings.text.value(), QStringLiteral("default"));
        settings.text.setValue(QStringLiteral("changed"));
        settings.saveSettings();
        Settings others;
        others.loadSettings(); // a store without a name need not keep anything
        QVERIFY(!others.text.value().isEmpty());
    }

    void logger()
    {
        QTest::ignoreMessage(QtInfoMsg, "line");
        LvLogger::instance()->logOSM(QStringLiteral("line"));
    }

    void objects()
    {
        QThread* here = QThread::currentThread();
        QCOMPARE(ObjectService::instance()->thread(), here);
    }

    void loops()
    {
        QVERIFY(!LvConcurrent::isMainThread());
        QVERIFY(LvConcurrent::mayFanOut()); // the pool is idle
        const QList<int> doubled =
            LvConcurrent::blockingMapped(QList<int>{1, 2, 3}, [](int number) { return 2 * number; });
        QCOMPARE(doubled, (QList<int>{2, 4, 6}));
    }

    void documents()
    {
        QDomDocument document;
        QVERIFY(LvXMLLoader::parse(QByteArray("<a/>"), document));
    }
};

int main(int argc, char* argv[])
{
    LvTest::isolateEnvironment();
    tst_LvCoreWithoutApplication test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_LvCoreWithoutApplication.moc"
