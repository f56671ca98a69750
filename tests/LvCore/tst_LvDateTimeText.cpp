#include "LvDateTimeText.h"
#include "LvTest.h"

#include <QByteArray>
#include <QRandomGenerator>

namespace
{

constexpr int generatedTexts = LvTest::generatedCases(1'000'000);

/// Equal in every respect, not only the same instant.
bool isSame(const QDateTime& left, const QDateTime& right)
{
    return left.isValid() == right.isValid() && left.isNull() == right.isNull()
        && left.timeSpec() == right.timeSpec() && left.offsetFromUtc() == right.offsetFromUtc()
        && left.date() == right.date() && left.time() == right.time()
        && (!left.isValid() || left.toMSecsSinceEpoch() == right.toMSecsSinceEpoch());
}

bool isReadAsByToolkit(const QString& text)
{
    const QDateTime expected = QDateTime::fromString(text.trimmed(), Qt::ISODate);
    const QByteArray bytes = text.toUtf8();
    return isSame(LvDateTimeText::fromIso(QStringView(text)), expected)
        && isSame(LvDateTimeText::fromIso(
                      std::string_view(bytes.constData(), static_cast<size_t>(bytes.size()))),
                  expected);
}

} // namespace

class tst_LvDateTimeText : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void texts_data();
    void texts();
    void everyDay();
    void generated();
};

void tst_LvDateTimeText::texts_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<bool>("isValid");
    QTest::newRow("empty") << QString() << false;
    QTest::newRow("seconds") << QStringLiteral("2023-11-14T22:13:20Z") << true;
    QTest::newRow("milliseconds") << QStringLiteral("2023-11-14T22:13:20.123Z") << true;
    QTest::newRow("zero milliseconds") << QStringLiteral("2023-11-14T22:13:20.000Z") << true;
    QTest::newRow("one fractional digit") << QStringLiteral("2023-11-14T22:13:20.5Z") << true;
    QTest::newRow("four fractional digits") << QStringLiteral("2023-11-14T22:13:20.9999Z") << true;
    QTest::newRow("six fractional digits") << QStringLiteral("2023-11-14T22:13:20.123456Z") << true;
    QTest::newRow("comma") << QStringLiteral("2023-11-14T22:13:20,123Z") << true;
    QTest::newRow("blanks around") << QStringLiteral(" \n2023-11-14T22:13:20Z\t") << true;
    QTest::newRow("no-break space around") << QStringLiteral("\u00a02023-11-14T22:13:20Z") << true;
    QTest::newRow("local time") << QStringLiteral("2023-11-14T22:13:20") << true;
    QTest::newRow("no seconds") << QStringLiteral("2023-11-14T22:13Z") << true;
    QTest::newRow("date") << QStringLiteral("2023-11-14") << true;
    QTest::newRow("east") << QStringLiteral("2023-11-14T22:13:20+05:30") << true;
    QTest::newRow("west") << QStringLiteral("2023-11-14T22:13:20-08") << true;
    QTest::newRow("no offset") << QStringLiteral("2023-11-14T22:13:20+00:00") << true;
    QTest::newRow("midnight at the end") << QStringLiteral("2023-12-31T24:00:00Z") << true;
    QTest::newRow("first year") << QStringLiteral("0001-01-01T00:00:00Z") << true;
    QTest::newRow("last year") << QStringLiteral("9999-12-31T23:59:59.999Z") << true;
    QTest::newRow("leap day") << QStringLiteral("2024-02-29T00:00:00Z") << true;
    QTest::newRow("leap day of a century") << QStringLiteral("2000-02-29T00:00:00Z") << true;
    QTest::newRow("no leap day") << QStringLiteral("2023-02-29T00:00:00Z") << false;
    QTest::newRow("no leap day of a century") << QStringLiteral("1900-02-29T00:00:00Z") << false;
    QTest::newRow("year zero") << QStringLiteral("0000-01-01T00:00:00Z") << false;
    QTest::newRow("month 13") << QStringLiteral("2023-13-14T22:13:20Z") << false;
    QTest::newRow("month 0") << QStringLiteral("2023-00-14T22:13:20Z") << false;
    QTest::newRow("day 0") << QStringLiteral("2023-11-00T22:13:20Z") << false;
    QTest::newRow("hour 25") << QStringLiteral("2023-11-14T25:13:20Z") << false;
    QTest::newRow("minute 60") << QStringLiteral("2023-11-14T22:60:20Z") << false;
    QTest::newRow("leap second") << QStringLiteral("2016-12-31T23:59:60Z") << false;
    QTest::newRow("letter among digits") << QStringLiteral("2023-1a-14T22:13:20Z") << false;
    QTest::newRow("digits of another script") << QStringLiteral("٢٠٢٣-11-14T22:13:20Z") << false;
    QTest::newRow("sentence") << QStringLiteral("tomorrow, perhaps...") << false;
}

void tst_LvDateTimeText::texts()
{
    QFETCH(const QString, text);
    QFETCH(const bool, isValid);
    QCOMPARE(LvDateTimeText::fromIso(QStringView(text)).isValid(), isValid);
    QVERIFY(isReadAsByToolkit(text));
}

void tst_LvDateTimeText::everyDay()
{
    for (QDate day(1895, 12, 30); day < QDate(2105, 1, 3); day = day.addDays(1)) {
        const QString text = day.toString(Qt::ISODate) + QStringLiteral("T01:02:03Z");
        QCOMPARE(LvDateTimeText::fromIso(QStringView(text)), QDateTime(day, QTime(1, 2, 3), Qt::UTC));
    }
}

void tst_LvDateTimeText::generated()
{
    QRandomGenerator random(14112023);
    const QString characters =
        QStringLiteral("0123456789012345678901234567890123456789-:.,TZtz+ \u00a0\u0661x");
    for (int number = 0; number < generatedTexts; ++number) {
        const auto digits = [&random](quint32 end, int width) {
            return QStringLiteral("%1").arg(random.bounded(end), width, 10, QLatin1Char('0'));
        };
        QString text = digits(10000, 4) + u'-' + digits(14, 2) + u'-' + digits(33, 2) + u'T' + digits(26, 2)
            + u':' + digits(62, 2) + u':' + digits(62, 2);
        if (random.bounded(2) == 0) {
            text += u'.' + digits(1000, 3);
        }
        text += u'Z';
        for (quint32 faults = random.bounded(3U); faults > 1; --faults) {
            text[random.bounded(text.size())] = characters.at(random.bounded(characters.size()));
        }
        QVERIFY2(isReadAsByToolkit(text), qPrintable(text));
    }
}

LV_TEST_MAIN(tst_LvDateTimeText)
#include "tst_LvDateTimeText.moc"
