#include "LvProgressBar.h"
#include "LvTest.h"
#include "LvTranslations.h"

#include <cstdlib>
#include <fcntl.h>
#include <unistd.h>

namespace
{

/// A terminal of our own: what the program writes to it can be read back.
class Terminal
{
public:
    Terminal()
        : myMaster(posix_openpt(O_RDWR | O_NOCTTY | O_NONBLOCK))
    {
        if (myMaster >= 0 && grantpt(myMaster) == 0 && unlockpt(myMaster) == 0) {
            myStream = std::fopen(ptsname(myMaster), "w");
        }
    }

    ~Terminal()
    {
        if (myStream != nullptr) {
            std::fclose(myStream);
        }
        ::close(myMaster);
    }

    Q_DISABLE_COPY_MOVE(Terminal)

    [[nodiscard]] std::FILE* stream() const { return myStream; }

    QByteArray written()
    {
        std::fflush(myStream);
        QByteArray bytes;
        char buffer[4096];
        for (ssize_t count = 0; (count = ::read(myMaster, buffer, sizeof buffer)) > 0;) {
            bytes.append(buffer, count);
        }
        return bytes;
    }

private:
    int myMaster;
    std::FILE* myStream = nullptr;
};

} // namespace

class tst_LvProgressBar : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void line_data();
    void line();
    void onATerminal();
    void atMostOncePerPercent();
    void silent_data();
    void silent();
    void noTerminal();
};

void tst_LvProgressBar::initTestCase()
{
    LvTranslations::install(QLocale(QLocale::English), QStringLiteral("LvAppsCommon"));
}

void tst_LvProgressBar::line_data()
{
    QTest::addColumn<int>("done");
    QTest::addColumn<int>("count");
    QTest::addColumn<QString>("expected");

    const auto bar = [](int filled, const char* rest) {
        return QStringLiteral("[%1%2] %3")
            .arg(QString(filled, QLatin1Char('#')), QString(40 - filled, QLatin1Char(' ')),
                 QLatin1String(rest));
    };
    QTest::newRow("nothing") << 0 << 4 << bar(0, "  0 % (0 of 4)");
    QTest::newRow("a part") << 1 << 4 << bar(10, " 25 % (1 of 4)");
    QTest::newRow("not rounded up") << 699 << 700 << bar(39, " 99 % (699 of 700)");
    QTest::newRow("all") << 700 << 700 << bar(40, "100 % (700 of 700)");
    QTest::newRow("very many") << 2000000000 << 2000000000 << bar(40, "100 % (2000000000 of 2000000000)");
}

void tst_LvProgressBar::line()
{
    QFETCH(int, done);
    QFETCH(int, count);
    QFETCH(QString, expected);
    QCOMPARE(LvProgressBar::line(done, count), expected);
}

void tst_LvProgressBar::onATerminal()
{
    Terminal terminal;
    QVERIFY(terminal.stream() != nullptr);
    {
        LvProgressBar progress(terminal.stream(), 2, true);
        QCOMPARE(terminal.written(), QByteArray());
        progress.advance();
        QCOMPARE(terminal.written(), "\r" + LvProgressBar::line(1, 2).toUtf8());
        progress.clear();
        QCOMPARE(terminal.written(), QByteArray("\r\033[K"));
        progress.clear();
        QCOMPARE(terminal.written(), QByteArray()); // there is nothing left to remove
        progress.advance();
        QCOMPARE(terminal.written(), "\r" + LvProgressBar::line(2, 2).toUtf8());
    }
    QCOMPARE(terminal.written(), QByteArray("\r\033[K"));
}

void tst_LvProgressBar::atMostOncePerPercent()
{
    Terminal terminal;
    QVERIFY(terminal.stream() != nullptr);
    LvProgressBar progress(terminal.stream(), 10000, true);
    qsizetype lines = 0;
    for (int i = 0; i < 10000; ++i) {
        progress.advance();
        lines += terminal.written().count('\r');
    }
    QCOMPARE(lines, 101); // 0 to 100
}

void tst_LvProgressBar::silent_data()
{
    QTest::addColumn<int>("count");
    QTest::addColumn<bool>("enabled");
    QTest::newRow("one file") << 1 << true;
    QTest::newRow("switched off") << 5 << false;
}

void tst_LvProgressBar::silent()
{
    QFETCH(int, count);
    QFETCH(bool, enabled);
    Terminal terminal;
    QVERIFY(terminal.stream() != nullptr);
    {
        LvProgressBar progress(terminal.stream(), count, enabled);
        for (int i = 0; i < count; ++i) {
            progress.advance();
        }
    }
    QCOMPARE(terminal.written(), QByteArray());
}

void tst_LvProgressBar::noTerminal()
{
    std::FILE* file = std::tmpfile();
    QVERIFY(file != nullptr);
    {
        LvProgressBar progress(file, 3, true);
        progress.advance();
        progress.advance();
    }
    QCOMPARE(std::ftell(file), 0L);
    std::fclose(file);
}

LV_TEST_MAIN(tst_LvProgressBar)
#include "tst_LvProgressBar.moc"
