#include "LvGPXTrackElement.h"
#include "LvGPXTrackSegment.h"
#include "LvGeoPosition.h"
#include "LvKmlTuples.h"
#include "LvTest.h"

#include <QRegularExpression>

#include <array>
#include <bit>
#include <cstdint>
#include <limits>

namespace
{

constexpr int generatedTexts = LvTest::generatedCases(120'000); // of up to sixteen tuples each

/// The rules taken literally, as the reference that the quick way is compared with.
namespace Plain
{

double safeDouble(const QString& text)
{
    const qsizetype keptLength = text.indexOf(QLatin1Char('.')) + 8;
    return (text.size() > keptLength ? text.left(keptLength) : text).toDouble();
}

LvGPXTrackPoint decodePoint(const QString& text)
{
    const QStringList fields = text.split(QLatin1Char(','));
    const double longitude = safeDouble(fields.value(0));
    const double latitude = safeDouble(fields.value(1));
    const int elevation = fields.value(2).toInt();
    QDateTime timeStamp;
    if (fields.size() > 3) {
        timeStamp = QDateTime::fromSecsSinceEpoch(fields.at(3).toLongLong(), Qt::UTC);
    }
    return {LvGeoPosition(LvLatitude(latitude), LvLongitude(longitude)), elevation, timeStamp, QString()};
}

QList<LvGPXTrackPoint> decodePoints(const QString& text)
{
    static const QRegularExpression myWhiteSpace(QStringLiteral("\\s+"));
    QList<LvGPXTrackPoint> points;
    const QStringList tuples = text.split(myWhiteSpace);
    for (const QString& tuple : tuples) {
        const LvGPXTrackPoint point = decodePoint(tuple);
        if (!point.isNull()) {
            points.append(point);
        }
    }
    return points;
}

QString degrees(const LvGeoArc& angle)
{
    static const QRegularExpression myTrailingZeros(QStringLiteral("0+$"));
    return QString::number(angle.decimalDegrees(), 'f', 10).remove(myTrailingZeros);
}

QString encode(const LvGPXTrackPoint& point)
{
    QString tuple =
        degrees(point.position().longitude()) + QLatin1Char(',') + degrees(point.position().latitude());
    if (point.elevation() != 0 || point.timeStamp().isValid()) {
        tuple += QLatin1Char(',') + QString::number(point.elevation());
    }
    if (point.timeStamp().isValid()) {
        tuple += QLatin1Char(',') + QString::number(point.timeStamp().toMSecsSinceEpoch());
    }
    return tuple;
}

} // namespace Plain

/// Everything about a point, bit by bit.
QString describe(const LvGPXTrackPoint& point)
{
    const auto bits = [](double number) { return QString::number(std::bit_cast<std::uint64_t>(number), 16); };
    const QDateTime time = point.timeStamp();
    return QStringLiteral("%1 %2 %3 %4 %5 %6 %7")
        .arg(bits(point.position().latitude().decimalDegrees()),
             bits(point.position().longitude().decimalDegrees()), QString::number(point.elevation()),
             QString::number(time.isNull()) + QString::number(time.isValid()),
             QString::number(time.toMSecsSinceEpoch()), QString::number(time.timeSpec()),
             point.description());
}

bool isSame(const LvGPXTrackPoint& a, const LvGPXTrackPoint& b)
{
    const auto bits = [](double number) { return std::bit_cast<std::uint64_t>(number); };
    const LvGeoPosition positionA = a.position();
    const LvGeoPosition positionB = b.position();
    const QDateTime timeA = a.timeStamp();
    const QDateTime timeB = b.timeStamp();
    return bits(positionA.latitude().decimalDegrees()) == bits(positionB.latitude().decimalDegrees())
        && bits(positionA.longitude().decimalDegrees()) == bits(positionB.longitude().decimalDegrees())
        && a.elevation() == b.elevation() && timeA.isNull() == timeB.isNull()
        && timeA.isValid() == timeB.isValid() && timeA.toMSecsSinceEpoch() == timeB.toMSecsSinceEpoch()
        && timeA.timeSpec() == timeB.timeSpec() && a.description().isNull() && b.description().isNull();
}

void compare(const QList<LvGPXTrackPoint>& actual, const QList<LvGPXTrackPoint>& expected,
             const QString& text)
{
    bool areSame = actual.size() == expected.size();
    for (qsizetype index = 0; areSame && index < actual.size(); ++index) {
        areSame = isSame(actual.at(index), expected.at(index));
    }
    if (!areSame) {
        QString message = QStringLiteral("\"%1\"").arg(text);
        for (const LvGPXTrackPoint& point : actual) {
            message += QStringLiteral("\n  actual   ") + describe(point);
        }
        for (const LvGPXTrackPoint& point : expected) {
            message += QStringLiteral("\n  expected ") + describe(point);
        }
        QFAIL(qPrintable(message));
    }
}

void compareWithPlainWay(const QString& text)
{
    const QList<LvGPXTrackPoint> expected = Plain::decodePoints(text);
    compare(LvKmlTuples::decodePoints(text), expected, text);
    if (text.isValidUtf16()) { // other texts have no UTF-8 form
        const QByteArray bytes = text.toUtf8();
        const std::string_view view(bytes.constData(), static_cast<std::size_t>(bytes.size()));
        compare(LvKmlTuples::decodePoints(view), expected, text);
    }
}

class TextGenerator
{
public:
    QString next()
    {
        QString text;
        for (unsigned tuples = below(17); tuples > 0; --tuples) {
            QString tuple = usualTuple();
            for (unsigned damages = below(4) == 0 ? 1 + below(3) : 0; damages > 0; --damages) {
                damage(tuple);
            }
            text += tuple;
            for (unsigned separators = below(8) == 0 ? below(3) : 1; separators > 0; --separators) {
                text += QStringLiteral(" \n\t\r\v\f")[below(6)];
            }
        }
        return text;
    }

private:
    unsigned below(unsigned limit)
    {
        myState = myState * 6364136223846793005U + 1442695040888963407U;
        return static_cast<unsigned>((myState >> 33) % limit);
    }

    QString digits(unsigned count)
    {
        QString text;
        for (; count > 0; --count) {
            text += QChar(static_cast<char16_t>(u'0' + below(10)));
        }
        return text;
    }

    QString number(unsigned integerDigits, unsigned decimals)
    {
        QString text = (below(3) == 0 ? QStringLiteral("-") : QString()) + digits(integerDigits);
        if (below(16) != 0) {
            text += u'.' + digits(decimals);
        }
        return below(32) == 0 ? QString(text.size(), u'0').replace(text.size() / 2, 1, u'.') : text;
    }

    QString usualTuple()
    {
        QString text = number(1 + below(3), below(12)) + u',' + number(1 + below(2), below(12));
        if (below(3) != 0) {
            text += u',' + (below(4) == 0 ? number(1 + below(4), below(3)) : digits(1 + below(10)));
            if (below(2) == 0) {
                text += u',' + (below(8) == 0 ? QStringLiteral("-") : QString()) + digits(8 + below(13));
            }
            if (below(16) == 0) {
                text += u',' + digits(below(5));
            }
        }
        return text;
    }

    void damage(QString& text)
    {
        static const QString intruders =
            QStringLiteral(
                "+-.,,,..eE019 \n\tinfx\u0085\u00A0\u1680\u2003\u2028\u3000\uFEFF\u2212\u0663\U0001D7CF")
            + QChar(u'\0') + QChar(0x1C) + (below(64) == 0 ? QChar(0xD800) : QChar(u'-'));
        const auto index = static_cast<qsizetype>(below(static_cast<unsigned>(text.size()) + 1));
        switch (below(4)) {
        case 0:
            text.truncate(index);
            break;
        case 1:
            text.remove(index, 1 + static_cast<qsizetype>(below(3)));
            break;
        default:
            text.insert(index, intruders[below(static_cast<unsigned>(intruders.size()))]);
            break;
        }
    }

    std::uint64_t myState = 20240502;
};

} // namespace

class tst_LvKmlTuples : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    /// The separators are those of the expression for all characters of the first plane.
    void separatesLikeTheExpression()
    {
        const QRegularExpression whiteSpace(QStringLiteral("\\s"));
        int separators = 0;
        for (unsigned unit = 0; unit <= 0xFFFF; ++unit) {
            const QString text(QChar(static_cast<char16_t>(unit)));
            const bool isSeparator = LvKmlTuples::isSeparator(static_cast<char16_t>(unit));
            QCOMPARE(isSeparator, whiteSpace.match(text).hasMatch());
            separators += isSeparator ? 1 : 0;
            if (!QChar::isSurrogate(unit)) {
                compareWithPlainWay(QStringLiteral("8.5,53.") + text + QStringLiteral("9.5,54."));
            }
        }
        QCOMPARE(separators, 6);
    }

    void decodes_data()
    {
        QTest::addColumn<QString>("text");
        QTest::newRow("null") << QString();
        QTest::newRow("empty") << QStringLiteral("");
        QTest::newRow("blank") << QStringLiteral(" \n\t ");
        QTest::newRow("usual") << QStringLiteral("8.5,53.25\n8.6,53.3,12,1700000000000");
        QTest::newRow("outer blanks") << QStringLiteral("\n\n 8.5,53.25 \r\n");
        QTest::newRow("no points") << QStringLiteral("8,53 9,54,10");
        QTest::newRow("no point, cut to seven characters") << QStringLiteral("12345678,1234567 -1234567,1");
        QTest::newRow("eight digits") << QStringLiteral("12345678.12345678,1.");
        QTest::newRow("nine digits") << QStringLiteral("123456789.12345678,1.");
        QTest::newRow("seven decimals") << QStringLiteral("8.1234567,53.7654321");
        QTest::newRow("eight decimals, cut") << QStringLiteral("8.12345678,53.99999999");
        QTest::newRow("hundred decimals")
            << QStringLiteral("8.") + QString(100, u'9') + QStringLiteral(",53.1");
        QTest::newRow("letters behind the cut") << QStringLiteral("8.1234567abc,53.1");
        QTest::newRow("letters before the cut") << QStringLiteral("8.123456a,53.1");
        QTest::newRow("exponent") << QStringLiteral("8.5e1,5.3E1");
        QTest::newRow("exponent behind the cut") << QStringLiteral("8.1234567e1,53.1");
        QTest::newRow("exponent cut apart") << QStringLiteral("8.12345e12,53.1 8.123456e1,53.1");
        QTest::newRow("second point behind the cut") << QStringLiteral("8.1234567.5,53.1");
        QTest::newRow("plus") << QStringLiteral("+8.5,+53.1");
        QTest::newRow("points at the ends") << QStringLiteral("8.,53. .5,.25 .,.");
        QTest::newRow("null island") << QStringLiteral("0,0 0.0,0.0 -0.,0. ,");
        QTest::newRow("one zero") << QStringLiteral("0,1 1,0 0.,1. -0.0,1.");
        QTest::newRow("zero only behind the cut") << QStringLiteral("0.00000009,0.00000009");
        QTest::newRow("one field") << QStringLiteral("8.5 north 9.5");
        QTest::newRow("empty fields") << QStringLiteral(",53. 8.,,12 8.,53.,,5 8.,53.,,");
        QTest::newRow("more than four fields") << QStringLiteral("8.,53.,1,2,3,4 8.,53.,1,2, 8.,53.,1,2,x");
        QTest::newRow("elevation with decimals")
            << QStringLiteral("8.,53.,12.5 8.,53.,12. 8.,53.,-0.0 8.,53.,.5");
        QTest::newRow("elevation with decimals and time") << QStringLiteral("8.,53.,12.5,17 8.,53.,0.0,-17");
        QTest::newRow("elevation with plus") << QStringLiteral("8.,53.,+12");
        QTest::newRow("nine and ten digits") << QStringLiteral("8.,53.,999999999 8.,53.,2147483647");
        QTest::newRow("beyond 32 bits") << QStringLiteral("8.,53.,2147483648 8.,53.,-2147483649");
        QTest::newRow("long elevation with decimals") << QStringLiteral("8.,53.,99999999999.5");
        QTest::newRow("time") << QStringLiteral("8.,53.,0,1700000000 8.,53.,0,-1 8.,53.,0,0");
        QTest::newRow("time with decimals") << QStringLiteral("8.,53.,0,1700000000.5 8.,53.,0,1.");
        QTest::newRow("unreadable time") << QStringLiteral("8.,53.,0,noon 8.,53.,0,");
        QTest::newRow("time out of range")
            << QStringLiteral("8.,53.,0,9223372036854775 8.,53.,0,9223372036854776 "
                              "8.,53.,0,9223372036854775807 8.,53.,0,-9223372036854775808");
        QTest::newRow("time beyond 64 bits") << QStringLiteral("8.,53.,0,9223372036854775808");
        QTest::newRow("infinite") << QStringLiteral("inf,nan -inf,1 nan,nan");
        QTest::newRow("blanks of Unicode around fields") << QStringLiteral("\u00A08.5,53.1\u2003,\u300012");
        QTest::newRow("other digits") << QStringLiteral("\u0668,\u0665");
        QTest::newRow("byte order mark") << QStringLiteral("\uFEFF8.5,53.1 \uFEFF8.5,53.1");
        QTest::newRow("character behind the cut") << QStringLiteral("8.1234567\u00B0,53.1");
        QTest::newRow("null character")
            << QStringLiteral("8.5") + QChar(u'\0') + QStringLiteral(",53.1 9.,54.");
        QTest::newRow("surrogate pair") << QStringLiteral("8.5,53.1 \U0001D7CF,1. 9.,54.");
        QTest::newRow("lone surrogate")
            << QStringLiteral("8.5,53.1 ") + QChar(0xD800) + QStringLiteral(",1 9.,54.");
        QTest::newRow("lone surrogate at the end") << QStringLiteral("8.5,53.1,12 9.,54. ,") + QChar(0xDC00);
        QTest::newRow("lone surrogate behind a cut")
            << QStringLiteral("8.12345678") + QChar(0xD800) + QStringLiteral(",53.");
        QTest::newRow("commas") << QString(1000, u',');
        QTest::newRow("long number") << QString(100'000, u'1') + u',' + QString(100'000, u'2');
    }

    void decodes()
    {
        QFETCH(QString, text);
        compareWithPlainWay(text);
        compare({LvKmlTuples::decodePoint(text)}, {Plain::decodePoint(text)}, text);
        compare({LvGPXTrackPoint::decodeKml(text)}, {Plain::decodePoint(text)}, text);
        QCOMPARE(LvGPXTrackSegment::decodeTrackPoints(text).size(), Plain::decodePoints(text).size());
    }

    /// Ensures that points are compared with points, not nothing with nothing.
    void decodesPoints()
    {
        const QList<LvGPXTrackPoint> points =
            LvKmlTuples::decodePoints(u"8.123456789,53.1 0,0\r\n-8.5,-53.25,12,1700000000,99");
        QCOMPARE(points.size(), 2);
        QCOMPARE(points.first().position().longitude().decimalDegrees(), 8.1234567);
        QCOMPARE(points.last().position().latitude().decimalDegrees(), -53.25);
        QCOMPARE(points.last().elevation(), 12);
        QCOMPARE(points.last().timeStamp(), QDateTime(QDate(2023, 11, 14), QTime(22, 13, 20), Qt::UTC));
    }

    void decodesBytesThatAreNoUtf8()
    {
        const QList<LvGPXTrackPoint> points =
            LvKmlTuples::decodePoints(std::string_view("8.5,53.1\xB0 9.1234567\xFF,54. \xC2 1.,2."));
        QCOMPARE(points.size(), 3);
        QCOMPARE(points.at(0).position().latitude().decimalDegrees(), 0.0);
        QCOMPARE(points.at(1).position().longitude().decimalDegrees(), 9.1234567);
        QCOMPARE(points.at(2).position().latitude().decimalDegrees(), 2.0);
    }

    void decodesGeneratedTexts()
    {
        TextGenerator generator;
        for (int count = 0; count < generatedTexts; ++count) {
            compareWithPlainWay(generator.next());
            if (QTest::currentTestFailed()) {
                return;
            }
        }
    }

    void safeDouble()
    {
        for (const char* const text : {"", ".", "8.5", "12345678", "1234567", "8.12345678", "8.1234567e5",
                                       "8.5e300", ".12345678", "123456789.123456789", " 8.5", "-1234567"}) {
            QCOMPARE(LvKmlTuples::safeDouble(QString::fromLatin1(text)),
                     Plain::safeDouble(QString::fromLatin1(text)));
            QCOMPARE(LvGPXTrackElement::safeDouble(QString::fromLatin1(text)),
                     Plain::safeDouble(QString::fromLatin1(text)));
        }
    }

    void encodes()
    {
        constexpr double infinity = std::numeric_limits<double>::infinity();
        const std::array<double, 14> angles = {0.0,   -0.0,       8.5,       -53.25,         100.0,
                                               720.0, 1.0 / 2048, -1e-12,    1e-10,          1e9,
                                               1e300, infinity,   -infinity, 179.99999999999};
        const std::array<QDateTime, 6> times = {QDateTime(),
                                                QDateTime::fromMSecsSinceEpoch(0, Qt::UTC),
                                                QDateTime::fromMSecsSinceEpoch(1700000000123, Qt::UTC),
                                                QDateTime::fromMSecsSinceEpoch(-1, Qt::UTC),
                                                QDateTime::fromMSecsSinceEpoch(1700000000123, Qt::LocalTime),
                                                QDateTime::fromSecsSinceEpoch(99999999999999, Qt::UTC)};
        QList<LvGPXTrackPoint> points;
        QStringList tuples;
        for (const double latitude : angles) {
            for (const double longitude : angles) {
                for (const int elevation : {0, 1, -1, std::numeric_limits<int>::min()}) {
                    for (const QDateTime& time : times) {
                        const LvGPXTrackPoint point(LvGeoPosition(latitude, longitude), elevation, time,
                                                    QStringLiteral("not written"));
                        points.append(point);
                        tuples.append(Plain::encode(point));
                        QCOMPARE(point.toKml(), tuples.last());
                    }
                }
            }
        }
        QCOMPARE(LvGPXTrackSegment(points).toKml(), tuples.join(u'\n'));
        QCOMPARE(LvKmlTuples::encode(points.first(1)), tuples.first());
        QCOMPARE(LvKmlTuples::encode(QList<LvGPXTrackPoint>()), QString());
    }

    /// Texts around the size of the blocks in which a text grows.
    void encodesLongTexts()
    {
        for (const int count : {1, 100, 1000, 1638, 1639, 1640, 3277, 10'000}) {
            const LvGPXTrackPoint point(LvGeoPosition(53.5, 8.25), 0, QDateTime(), QString());
            const QStringList tuples(count, QStringLiteral("8.25,53.5"));
            QCOMPARE(LvKmlTuples::encode(QList<LvGPXTrackPoint>(count, point)), tuples.join(u'\n'));
        }
    }
};

LV_TEST_MAIN(tst_LvKmlTuples)
#include "tst_LvKmlTuples.moc"
