#include "LvNumberText.h"
#include "LvTest.h"

#include <QRegularExpression>

#include <array>
#include <bit>
#include <cmath>
#include <cstdint>
#include <limits>

namespace
{

constexpr int generatedTexts = LvTest::generatedCases(2'000'000);
constexpr int generatedNumbers = LvTest::generatedCases(500'000);

std::uint64_t bitsOf(double number)
{
    // Which of the many numbers that are none does not matter.
    return std::bit_cast<std::uint64_t>(std::isnan(number) ? std::numeric_limits<double>::quiet_NaN()
                                                           : number);
}

std::string_view viewOf(const QByteArray& bytes)
{
    return {bytes.constData(), static_cast<std::size_t>(bytes.size())};
}

/// The first difference between the toolkit and the fast ways, as text for people; empty when there is none.
QString differenceInReading(const QString& text)
{
    // A lone surrogate has no UTF-8 form; what it becomes is no digit either.
    const QByteArray bytes = text.toUtf8();
    const double real = text.toDouble();
    if (bitsOf(LvNumberText::toDouble(text)) != bitsOf(real)) {
        return QStringLiteral("toDouble(text)");
    }
    if (bitsOf(LvNumberText::toDouble(viewOf(bytes))) != bitsOf(real)) {
        return QStringLiteral("toDouble(bytes)");
    }
    // Most texts with a point are too dull as integers for the time that they take.
    if (text.contains(u'.') && qHash(text, 1) % 8 != 0) {
        return {};
    }
    const int integer = text.toInt();
    const qint64 wideInteger = text.toLongLong();
    if (LvNumberText::toInt(text) != integer) {
        return QStringLiteral("toInt(text)");
    }
    if (LvNumberText::toInt(viewOf(bytes)) != integer) {
        return QStringLiteral("toInt(bytes)");
    }
    if (LvNumberText::toLongLong(text) != wideInteger) {
        return QStringLiteral("toLongLong(text)");
    }
    if (LvNumberText::toLongLong(viewOf(bytes)) != wideInteger) {
        return QStringLiteral("toLongLong(bytes)");
    }
    return {};
}

void compareReading(const QString& text)
{
    const QString difference = differenceInReading(text);
    if (!difference.isEmpty()) {
        QFAIL(qPrintable(difference + QStringLiteral(" of \"%1\"").arg(text)));
    }
}

/// The plain way of writing.
QString fixedByToolkit(double number)
{
    static const QRegularExpression myTrailingZeros(QStringLiteral("0+$"));
    return QString::number(number, 'f', 10).remove(myTrailingZeros);
}

/// The same without the expression, for millions of numbers.
QString fixedByToolkitQuickly(double number)
{
    const QString text = QString::number(number, 'f', 10);
    const QChar* end = text.constData() + text.size();
    while (end != text.constData() && end[-1] == u'0') {
        --end;
    }
    return text.first(end - text.constData());
}

QString fixed(double number)
{
    std::array<char, LvNumberText::maximumLength> buffer{};
    const char* const end = LvNumberText::writeFixed(buffer.data(), number);
    return QString::fromLatin1(buffer.data(), end - buffer.data());
}

void compareWriting(double number)
{
    const QString expected = fixedByToolkitQuickly(number);
    const QString actual = fixed(number);
    if (actual != expected) {
        QFAIL(qPrintable(QStringLiteral("%1 instead of %2").arg(actual, expected)));
    }
}

/// A linear congruential generator: much faster than those of the standard library in a debug build.
class Random
{
public:
    std::uint64_t next()
    {
        myState = myState * 6364136223846793005U + 1442695040888963407U;
        return myState ^ (myState >> 29); // the lowest bits alone have short periods
    }

    unsigned below(unsigned limit) { return static_cast<unsigned>((next() >> 32) % limit); }

private:
    std::uint64_t myState = 20240501;
};

/// Texts that look like numbers, some more and some less.
class TextGenerator
{
public:
    QString next()
    {
        mySize = 0;
        const unsigned kind = myRandom.below(16);
        if (kind < 6) {
            addCoordinate();
        } else if (kind < 8) {
            addReal();
        } else if (kind < 11) {
            addInteger();
        } else if (kind == 11) {
            return longReal();
        } else {
            kind < 14 ? addCoordinate() : addReal();
            return damaged(QString(myBuffer.data(), mySize));
        }
        return QString(myBuffer.data(), mySize); // NOLINT(modernize-return-braced-init-list) explicit
    }

private:
    void add(char16_t unit) { myBuffer[static_cast<std::size_t>(mySize++)] = unit; }

    void addDigits(unsigned count)
    {
        std::uint64_t bits = myRandom.next();
        for (; count > 0; --count) {
            add(static_cast<char16_t>(u'0' + bits % 10));
            bits = count % 16 == 0 ? myRandom.next() : bits / 10;
        }
    }

    void addSign()
    {
        if (myRandom.below(2) == 0) {
            add(myRandom.below(8) == 0 ? u'+' : u'-');
        }
    }

    void addCoordinate()
    {
        addSign();
        addDigits(1 + myRandom.below(3));
        if (myRandom.below(8) != 0) {
            add(u'.');
            addDigits(myRandom.below(18));
        }
    }

    void addReal()
    {
        addSign();
        addDigits(myRandom.below(22));
        add(u'.');
        addDigits(myRandom.below(24));
        if (myRandom.below(2) == 0) {
            add(myRandom.below(4) == 0 ? u'E' : u'e');
            addSign();
            addDigits(myRandom.below(4));
        }
    }

    void addInteger()
    {
        addSign();
        addDigits(1 + myRandom.below(21));
    }

    /// Such that the last of many digits decides about rounding, or close to the ends of the range.
    QString longReal()
    {
        static const QStringList bases = {
            QStringLiteral("9007199254740993"),
            QStringLiteral("9007199254740992.5"),
            QStringLiteral("0.500000000000000166533453693773481063544750213623046875"),
            QStringLiteral("2.2250738585072011e-308"),
            QStringLiteral("2.2250738585072014e-308"),
            QStringLiteral("4.9406564584124654e-324"),
            QStringLiteral("2.4703282292062327e-324"),
            QStringLiteral("1.7976931348623157e308"),
            QStringLiteral("1.7976931348623159e308"),
            QStringLiteral("2147483647"),
            QStringLiteral("2147483648"),
            QStringLiteral("9223372036854775807"),
            QStringLiteral("9223372036854775808"),
        };
        QString text = bases[myRandom.below(static_cast<unsigned>(bases.size()))];
        if (myRandom.below(2) == 0) {
            text.prepend(u'-');
        }
        if (myRandom.below(2) == 0) {
            QChar& digit = text[myRandom.below(static_cast<unsigned>(text.size()))];
            digit = digit.isDigit() ? QChar(static_cast<char16_t>(u'0' + myRandom.below(10))) : digit;
        }
        return text;
    }

    QString damaged(QString text)
    {
        static const QString intruders =
            QStringLiteral(
                " \t\n\r\v\f+-.,eE0123456789xXinfaINFNA_'%\u00A0\u2003\u2212\u0663\uFF11\u3000\u00B7")
            + QChar(u'\0') + QChar(0xD800);
        for (unsigned times = 1 + myRandom.below(3); times > 0; --times) {
            const QChar intruder = intruders[myRandom.below(static_cast<unsigned>(intruders.size()))];
            const unsigned index = myRandom.below(static_cast<unsigned>(text.size()) + 1);
            switch (myRandom.below(4)) {
            case 0:
                text.remove(static_cast<qsizetype>(index), 1);
                break;
            case 1:
                text.prepend(intruder);
                break;
            case 2:
                text.append(intruder);
                break;
            default:
                text.insert(static_cast<qsizetype>(index), intruder);
                break;
            }
        }
        return text;
    }

    Random myRandom;
    std::array<QChar, 64> myBuffer;
    qsizetype mySize = 0;
};

} // namespace

class tst_LvNumberText : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void readsLikeTheToolkit_data()
    {
        QTest::addColumn<QString>("text");
        QTest::newRow("null") << QString();
        QTest::newRow("empty") << QStringLiteral("");
        QTest::newRow("coordinate") << QStringLiteral("8.8067356");
        QTest::newRow("negative") << QStringLiteral("-53.0792962");
        QTest::newRow("plus") << QStringLiteral("+53.5");
        QTest::newRow("two signs") << QStringLiteral("--1");
        QTest::newRow("sign only") << QStringLiteral("-");
        QTest::newRow("point only") << QStringLiteral(".");
        QTest::newRow("point at the end") << QStringLiteral("8.");
        QTest::newRow("point at the beginning") << QStringLiteral(".5");
        QTest::newRow("sign and point") << QStringLiteral("-.5");
        QTest::newRow("two points") << QStringLiteral("1.2.3");
        QTest::newRow("comma") << QStringLiteral("1,5");
        QTest::newRow("thousands") << QStringLiteral("1,000");
        QTest::newRow("zero") << QStringLiteral("0");
        QTest::newRow("negative zero") << QStringLiteral("-0");
        QTest::newRow("negative zero with decimals") << QStringLiteral("-0.000");
        QTest::newRow("zero with exponent") << QStringLiteral("0e99");
        QTest::newRow("leading zeros") << QStringLiteral("0008.50");
        QTest::newRow("many leading zeros") << QString(100, u'0') + QStringLiteral("8.5");
        QTest::newRow("exponent") << QStringLiteral("85e-1");
        QTest::newRow("large E") << QStringLiteral("85E-1");
        QTest::newRow("exponent with plus") << QStringLiteral("85e+1");
        QTest::newRow("exponent without digits") << QStringLiteral("85e");
        QTest::newRow("exponent with sign only") << QStringLiteral("85e-");
        QTest::newRow("exponent with two signs") << QStringLiteral("85e+-1");
        QTest::newRow("exponent with point") << QStringLiteral("85e1.5");
        QTest::newRow("exponent behind point") << QStringLiteral("85.e1");
        QTest::newRow("exponent alone") << QStringLiteral("e5");
        QTest::newRow("long exponent") << QStringLiteral("1e00000000000001");
        QTest::newRow("exponent beyond 32 bits") << QStringLiteral("1e99999999999");
        QTest::newRow("exponent far below 32 bits") << QStringLiteral("1e-99999999999");
        QTest::newRow("d for exponent") << QStringLiteral("1d5");
        QTest::newRow("largest exact power") << QStringLiteral("9007199254740992e22");
        QTest::newRow("one power more") << QStringLiteral("9007199254740992e23");
        QTest::newRow("smallest exact power") << QStringLiteral("9007199254740991e-22");
        QTest::newRow("one power less") << QStringLiteral("9007199254740991e-23");
        QTest::newRow("largest exact integer") << QStringLiteral("9007199254740992");
        QTest::newRow("one more, a tie") << QStringLiteral("9007199254740993");
        QTest::newRow("nineteen digits") << QStringLiteral("9999999999999999999");
        QTest::newRow("twenty digits that wrap") << QStringLiteral("18446744073709551617");
        QTest::newRow("just above a tie")
            << QStringLiteral("1.00000000000000011102230246251565404236316680908203126");
        QTest::newRow("at a tie") << QStringLiteral(
            "1.00000000000000011102230246251565404236316680908203125");
        QTest::newRow("a tie and a digit far behind")
            << QStringLiteral("1.00000000000000011102230246251565404236316680908203125") + QString(900, u'0')
                + u'1';
        QTest::newRow("smallest normal") << QStringLiteral("2.2250738585072014e-308");
        QTest::newRow("largest denormal") << QStringLiteral("2.2250738585072009e-308");
        QTest::newRow("smallest denormal") << QStringLiteral("4.9406564584124654e-324");
        QTest::newRow("half of it") << QStringLiteral("2.4703282292062327e-324");
        QTest::newRow("underflow") << QStringLiteral("1e-400");
        QTest::newRow("negative underflow") << QStringLiteral("-1e-400");
        QTest::newRow("largest") << QStringLiteral("1.7976931348623157e308");
        QTest::newRow("overflow") << QStringLiteral("1.7976931348623159e308");
        QTest::newRow("negative overflow") << QStringLiteral("-1e400");
        QTest::newRow("overflow without exponent") << QString(400, u'9');
        QTest::newRow("as long as the short way takes") << QString(64, u'7');
        QTest::newRow("one digit longer") << QString(65, u'7');
        QTest::newRow("as long with decimals") << QStringLiteral("1.") + QString(62, u'7');
        QTest::newRow("one decimal longer") << QStringLiteral("1.") + QString(63, u'7');
        QTest::newRow("many decimals and an exponent")
            << QStringLiteral("0.") + QString(300, u'0') + QStringLiteral("1e300");
        QTest::newRow("huge") << QString(100'000, u'1');
        QTest::newRow("huge fraction") << QStringLiteral("0.") + QString(100'000, u'1');
        QTest::newRow("nan") << QStringLiteral("nan");
        QTest::newRow("NaN") << QStringLiteral("NaN");
        QTest::newRow("-nan") << QStringLiteral("-nan");
        QTest::newRow("+nan") << QStringLiteral("+nan");
        QTest::newRow("nan(1)") << QStringLiteral("nan(1)");
        QTest::newRow("inf") << QStringLiteral("inf");
        QTest::newRow("+inf") << QStringLiteral("+inf");
        QTest::newRow("-inf") << QStringLiteral("-inf");
        QTest::newRow("INF") << QStringLiteral("INF");
        QTest::newRow("infinity") << QStringLiteral("infinity");
        QTest::newRow("inf and more") << QStringLiteral("info");
        QTest::newRow("hexadecimal") << QStringLiteral("0x10");
        QTest::newRow("hexadecimal real") << QStringLiteral("0x1p3");
        QTest::newRow("octal") << QStringLiteral("010");
        QTest::newRow("blank around") << QStringLiteral("  8.5\t\n");
        QTest::newRow("blank inside") << QStringLiteral("8 .5");
        QTest::newRow("blank behind the sign") << QStringLiteral("- 8.5");
        QTest::newRow("no-break space around") << QStringLiteral("\u00A08.5\u00A0");
        QTest::newRow("ideographic space around") << QStringLiteral("\u30008.5\u3000");
        QTest::newRow("zero width space around") << QStringLiteral("\u200B8.5\u200B");
        QTest::newRow("line separator") << QStringLiteral("8.5\u2028");
        QTest::newRow("vertical tab") << QStringLiteral("\v8.5");
        QTest::newRow("byte order mark") << QStringLiteral("\uFEFF8.5");
        QTest::newRow("minus sign") << QStringLiteral("\u22128.5");
        QTest::newRow("Arabic digits") << QStringLiteral("\u0663\u0664");
        QTest::newRow("full width digits") << QStringLiteral("\uFF11\uFF12");
        QTest::newRow("digits outside the first plane") << QStringLiteral("\U0001D7CE\U0001D7CF");
        QTest::newRow("superscript") << QStringLiteral("8\u00B2");
        QTest::newRow("null character behind") << QStringLiteral("8.5") + QChar(u'\0');
        QTest::newRow("null character before") << QChar(u'\0') + QStringLiteral("8.5");
        QTest::newRow("null character inside") << QStringLiteral("8") + QChar(u'\0') + QStringLiteral(".5");
        QTest::newRow("low byte is a digit") << QString(QChar(0x0138)) + QChar(0x3038);
        QTest::newRow("lone surrogate") << QStringLiteral("8") + QChar(0xD800);
        QTest::newRow("degree sign") << QStringLiteral("8.5\u00B0");
        QTest::newRow("unit") << QStringLiteral("12 m");
        QTest::newRow("percent") << QStringLiteral("12%");
        QTest::newRow("underscore") << QStringLiteral("1_000");
        QTest::newRow("largest int") << QStringLiteral("2147483647");
        QTest::newRow("above int") << QStringLiteral("2147483648");
        QTest::newRow("smallest int") << QStringLiteral("-2147483648");
        QTest::newRow("below int") << QStringLiteral("-2147483649");
        QTest::newRow("largest long") << QStringLiteral("9223372036854775807");
        QTest::newRow("above long") << QStringLiteral("9223372036854775808");
        QTest::newRow("smallest long") << QStringLiteral("-9223372036854775808");
        QTest::newRow("below long") << QStringLiteral("-9223372036854775809");
        QTest::newRow("milliseconds") << QStringLiteral("1700000000000");
        QTest::newRow("zeros before an int") << QStringLiteral("00000000000000000000000012");
        QTest::newRow("plus and int") << QStringLiteral("+12");
        QTest::newRow("int with decimals") << QStringLiteral("12.0");
        QTest::newRow("int with exponent") << QStringLiteral("1e2");
    }

    void readsLikeTheToolkit()
    {
        QFETCH(QString, text);
        compareReading(text);
    }

    /// Ensures that the toolkit is compared with numbers, not with failures.
    void readsNumbers()
    {
        QCOMPARE(LvNumberText::toDouble(u"-53.25"), -53.25);
        QCOMPARE(LvNumberText::toDouble(std::string_view("8.")), 8.0);
        QCOMPARE(LvNumberText::toDouble(u" 1e3\n"), 1000.0);
        QCOMPARE(LvNumberText::toDouble(u"9007199254740993"), 9007199254740992.0);
        QCOMPARE(LvNumberText::toDouble(u"1e400"), std::numeric_limits<double>::infinity());
        QCOMPARE(LvNumberText::toDouble(u"north"), 0.0);
        QCOMPARE(LvNumberText::toInt(u"-2147483648"), std::numeric_limits<int>::min());
        QCOMPARE(LvNumberText::toInt(std::string_view("2147483648")), 0);
        QCOMPARE(LvNumberText::toInt(u"12.5"), 0);
        QCOMPARE(LvNumberText::toLongLong(u"9223372036854775807"), std::numeric_limits<qint64>::max());
        QCOMPARE(LvNumberText::toLongLong(std::string_view("-1700000000000")), qint64(-1700000000000));
    }

    void readsBytesThatAreNoUtf8()
    {
        QCOMPARE(LvNumberText::toDouble(std::string_view("8.5\xB0")), 0.0);
        QCOMPARE(LvNumberText::toDouble(std::string_view("\xFF")), 0.0);
        QCOMPARE(LvNumberText::toInt(std::string_view("8\xC2")), 0);
    }

    /// All texts of up to five of the characters that numbers are made of.
    void readsAllShortTexts()
    {
        const QString alphabet = QStringLiteral("019.-+eE inf,");
        const int longest = LvTest::isInstrumented ? 3 : 5;
        QString text;
        std::array<qsizetype, 5> indices{};
        for (int length = 1; length <= longest; ++length) {
            indices.fill(0);
            text.fill(alphabet[0], length);
            qsizetype place = 0;
            while (place < length) {
                compareReading(text);
                if (QTest::currentTestFailed()) {
                    return;
                }
                for (place = 0; place < length; ++place) {
                    auto& index = indices.at(static_cast<std::size_t>(place));
                    index = (index + 1) % alphabet.size();
                    text[place] = alphabet[index];
                    if (index != 0) {
                        break;
                    }
                }
            }
        }
    }

    void readsGeneratedTexts()
    {
        TextGenerator generator;
        for (int count = 0; count < generatedTexts; ++count) {
            compareReading(generator.next());
            if (QTest::currentTestFailed()) {
                return;
            }
        }
    }

    void writesFixed_data()
    {
        constexpr double infinity = std::numeric_limits<double>::infinity();
        QTest::addColumn<double>("number");
        QTest::addColumn<QString>("text");
        QTest::newRow("integer") << 8.0 << QStringLiteral("8.");
        QTest::newRow("trailing zeros of the integer stay") << 100.0 << QStringLiteral("100.");
        QTest::newRow("decimals") << -53.25 << QStringLiteral("-53.25");
        QTest::newRow("odd number of decimals") << 0.5 << QStringLiteral("0.5");
        QTest::newRow("ten decimals") << 1.0000000001 << QStringLiteral("1.0000000001");
        QTest::newRow("zeros inside") << 1.0003 << QStringLiteral("1.0003");
        QTest::newRow("no binary fraction") << 0.1 << QStringLiteral("0.1");
        QTest::newRow("rounded up to an integer") << 7.99999999999 << QStringLiteral("8.");
        QTest::newRow("tie, away from an even digit") << 1.0 / 2048 << QStringLiteral("0.0004882813");
        QTest::newRow("negative tie") << -1.0 / 2048 << QStringLiteral("-0.0004882813");
        QTest::newRow("just below the tie")
            << std::nextafter(1.0 / 2048, 0.0) << QStringLiteral("0.0004882812");
        QTest::newRow("tie of a large number") << 179.0 + 3.0 / 2048 << QStringLiteral("179.0014648438");
        QTest::newRow("zero") << 0.0 << QStringLiteral("0.");
        QTest::newRow("largest that the short way takes")
            << std::nextafter(0x1p29, 0.0) << QStringLiteral("536870911.9999999404");
        QTest::newRow("smallest that it does not") << 0x1p29 << QStringLiteral("536870912.");
        QTest::newRow("one more digit") << 1e9 << QStringLiteral("1000000000.");
        QTest::newRow("seven decimals") << 8.8702306 << QStringLiteral("8.8702306");
        QTest::newRow("one decimal") << 12345.1 << QStringLiteral("12345.1");
        QTest::newRow("two decimals") << 179.99 << QStringLiteral("179.99");
        QTest::newRow("three decimals") << 179.001 << QStringLiteral("179.001");
        QTest::newRow("half of the last decimal") << 5e-11 << QStringLiteral("0.0000000001");
        QTest::newRow("below half of it") << 4.9e-11 << QStringLiteral("0.");
        QTest::newRow("infinite") << infinity << QStringLiteral("inf");
        QTest::newRow("negative infinite") << -infinity << QStringLiteral("-inf");
        QTest::newRow("no number") << std::numeric_limits<double>::quiet_NaN() << QStringLiteral("nan");
    }

    void writesFixed()
    {
        QFETCH(double, number);
        QFETCH(QString, text);
        QCOMPARE(fixedByToolkit(number), text);
        QCOMPARE(fixed(number), text);
    }

    void writesLikeTheToolkit_data()
    {
        QTest::addColumn<double>("number");
        QTest::newRow("negative zero") << -0.0;
        QTest::newRow("negative that rounds to zero") << -1e-12;
        QTest::newRow("negative half of the last decimal") << -5e-11;
        QTest::newRow("next to half of the last decimal") << std::nextafter(5e-11, 0.0);
        QTest::newRow("next to it on the other side") << std::nextafter(5e-11, 1.0);
        QTest::newRow("smallest that may be rounded up") << 0x1p-35;
        QTest::newRow("largest that is 0 at once") << std::nextafter(0x1p-35, 0.0);
        QTest::newRow("smallest denormal") << 4.9406564584124654e-324;
        QTest::newRow("negative denormal") << -4.9406564584124654e-324;
        QTest::newRow("smallest normal") << 2.2250738585072014e-308;
        QTest::newRow("no angle") << 720.0;
        QTest::newRow("beyond 64 bits") << 1e21;
        QTest::newRow("1e300") << 1e300;
        QTest::newRow("largest") << 1.7976931348623157e308;
        QTest::newRow("lowest") << -1.7976931348623157e308;
        QTest::newRow("negative no number") << -std::numeric_limits<double>::quiet_NaN();
    }

    void writesLikeTheToolkit()
    {
        QFETCH(double, number);
        QCOMPARE(fixed(number), fixedByToolkit(number));
    }

    void writesGeneratedNumbers()
    {
        Random random;
        for (int count = 0; count < generatedNumbers; ++count) {
            const std::uint64_t bits = random.next();
            switch (count % 8) {
            case 0: // all numbers
                compareWriting(std::bit_cast<double>(bits));
                break;
            case 1: // ties
                compareWriting((static_cast<double>(bits % 1'474'560) * 2 + 1) / 2048 - 720.0);
                break;
            case 2: // beside ties
                compareWriting(std::nextafter((static_cast<double>(bits % 1'474'560) * 2 + 1) / 2048, 0.0));
                break;
            case 3: // of a few decimals
                compareWriting(static_cast<double>(bits % 3'600'000'000) / 1e7 - 180.0);
                break;
            case 4: // of few binary digits
                compareWriting(std::ldexp(static_cast<double>(bits % 4096), -static_cast<int>(bits >> 58)));
                break;
            case 5: // of all magnitudes around 1
                compareWriting(
                    std::ldexp(static_cast<double>(bits >> 11), -static_cast<int>(bits % 128) - 16));
                break;
            default: // coordinates of all their digits
                compareWriting(static_cast<double>(bits >> 11) / 25'000'000'000'000.0 - 180.0);
                break;
            }
            if (QTest::currentTestFailed()) {
                return;
            }
        }
    }

    void appends()
    {
        QByteArray bytes("a");
        LvNumberText::appendFixed(bytes, 8.5);
        LvNumberText::appendInteger(bytes, -12);
        QCOMPARE(bytes, QByteArray("a8.5-12"));
        QString text(QStringLiteral("a"));
        LvNumberText::appendFixed(text, 8.5);
        LvNumberText::appendInteger(text, -12);
        QCOMPARE(text, QStringLiteral("a8.5-12"));
    }

    void fitsIntoTheBuffer()
    {
        QVERIFY(fixed(-std::numeric_limits<double>::max()).size() <= LvNumberText::maximumLength);
        QVERIFY(QString::number(-std::numeric_limits<double>::max(), 'f', 10).size()
                <= LvNumberText::maximumLength);
    }

    /// All digits at all places: the fraction and the digits before it are written eight digits at once.
    void writesAllDigitsOfDegrees()
    {
        for (int half = 0; half < 10'000; ++half) {
            compareWriting(half + half * 1e-4);
            compareWriting(-179.0 - half * 1e-8);
            compareWriting(half * 1e4 + (9999 - half) * 1e-10);
            if (QTest::currentTestFailed()) {
                return;
            }
        }
    }

    void writesIntegers()
    {
        constexpr qint64 largest = std::numeric_limits<qint64>::max();
        QList<qint64> numbers{std::numeric_limits<qint64>::min(), largest};
        for (qint64 power = 1; power <= largest / 10; power *= 10) {
            for (const qint64 number : {power - 1, power, power + 1, 5 * power, 9 * power + power / 10}) {
                numbers << number << -number;
            }
        }
        // All values of each half of eight digits.
        for (qint64 half = 0; half < 10'000; ++half) {
            numbers << half << 1'700'000'000'000 + half << half * 10'000 << -half * 100'010'001;
        }
        Random random;
        for (int count = 0; count < 100'000; ++count) {
            numbers << (static_cast<qint64>(random.next()) >> random.below(64));
        }
        for (const qint64 number : std::as_const(numbers)) {
            QByteArray text;
            LvNumberText::appendInteger(text, number);
            if (text != QByteArray::number(number)) {
                QCOMPARE(text, QByteArray::number(number));
            }
        }
    }
};

LV_TEST_MAIN(tst_LvNumberText)
#include "tst_LvNumberText.moc"
