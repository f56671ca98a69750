#include "LvEnumToStringTable.h"
#include "LvTest.h"

namespace
{

enum class Colour : quint32 { none = 0, red = 1, green = 2, blue = 4 };

using Table = LvEnumToStringTable<Colour>;

Table colours()
{
    Table table;
    table.insert(QStringLiteral("none"), Colour::none);
    table.insert(QStringLiteral("Red"), Colour::red);
    table.insert(QStringLiteral("scarlet"), Colour::red);
    table.insert(QStringLiteral("BLUE"), Colour::blue);
    return table;
}

} // namespace

class tst_LvEnumToStringTable : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void decode_data();
    void decode();
    void decodeCSV_data();
    void decodeCSV();
    void encode_data();
    void encode();
    void wholeValue();
    void firstKeyIsCanonical();
    void laterInsertOfAKeyWins();
    void defaults();
    void emptyTable();
};

void tst_LvEnumToStringTable::decode_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<bool>("found");
    QTest::addColumn<quint32>("value");
    QTest::newRow("as inserted") << "Red" << true << 1U;
    QTest::newRow("lower case") << "red" << true << 1U;
    QTest::newRow("upper case") << "RED" << true << 1U;
    QTest::newRow("second key of a value") << "Scarlet" << true << 1U;
    QTest::newRow("inserted in capitals") << "blue" << true << 4U;
    QTest::newRow("blanks around") << " \tred\n " << true << 1U;
    QTest::newRow("blank inside") << "r ed" << false << 0U;
    QTest::newRow("key of 0") << "none" << true << 0U;
    QTest::newRow("value without key") << "green" << false << 0U;
    QTest::newRow("part of a key") << "re" << false << 0U;
    QTest::newRow("two keys") << "red,blue" << false << 0U;
    QTest::newRow("empty") << "" << false << 0U;
    QTest::newRow("null") << QString() << false << 0U;
}

void tst_LvEnumToStringTable::decode()
{
    QFETCH(QString, text);
    QFETCH(bool, found);
    QFETCH(quint32, value);
    const Table table = colours();
    const auto decoded = table.decode(text);
    QCOMPARE(decoded.has_value(), found);
    QCOMPARE(static_cast<quint32>(decoded.value_or(Colour::none)), value);
}

void tst_LvEnumToStringTable::decodeCSV_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<quint32>("value");
    QTest::addColumn<quint32>("withDefaultEight");
    QTest::newRow("one") << "red" << 1U << 1U;
    QTest::newRow("two") << "red,blue" << 5U << 5U;
    QTest::newRow("two with blanks") << " BLUE , red " << 5U << 5U;
    QTest::newRow("same twice") << "red,scarlet" << 1U << 1U;
    QTest::newRow("empty item between") << "red,,blue" << 5U << 13U;
    QTest::newRow("comma at the end") << "red," << 1U << 9U;
    QTest::newRow("unknown item") << "red,purple" << 1U << 9U;
    QTest::newRow("only unknown") << "purple" << 0U << 8U;
    QTest::newRow("key of 0") << "none" << 0U << 0U;
    QTest::newRow("key of 0 and another") << "none,red" << 1U << 1U;
    QTest::newRow("empty") << "" << 0U << 8U;
    QTest::newRow("null") << QString() << 0U << 8U;
    QTest::newRow("semicolon does not separate") << "red;blue" << 0U << 8U;
}

void tst_LvEnumToStringTable::decodeCSV()
{
    QFETCH(QString, text);
    QFETCH(quint32, value);
    QFETCH(quint32, withDefaultEight);
    Table table = colours();
    QCOMPARE(static_cast<quint32>(std::as_const(table).decodeCSV(text)), value);
    table.setDefaultValue(static_cast<Colour>(8));
    QCOMPARE(static_cast<quint32>(table.decodeCSV(text)), withDefaultEight);
}

void tst_LvEnumToStringTable::encode_data()
{
    QTest::addColumn<quint32>("value");
    QTest::addColumn<QStringList>("list");
    QTest::addColumn<QString>("text");
    QTest::newRow("zero is never written by its key") << 0U << QStringList{} << "";
    QTest::newRow("one flag") << 1U << QStringList{"Red"} << "Red";
    QTest::newRow("two flags, ascending") << 5U << QStringList{"Red", "BLUE"} << "Red, BLUE";
    QTest::newRow("flag without key") << 2U << QStringList{QString()} << "";
    QTest::newRow("flag without key between") << 7U << QStringList{"Red", "", "BLUE"} << "Red, , BLUE";
    QTest::newRow("highest positive flag") << 0x40000001U << QStringList{"Red", ""} << "Red, ";
    QTest::newRow("bit 31 alone") << 0x80000000U << QStringList{} << "";
    QTest::newRow("bit 31 beside a known flag") << 0x80000001U << QStringList{} << "";
    QTest::newRow("all bits") << 0xFFFFFFFFU << QStringList{} << "";
}

void tst_LvEnumToStringTable::encode()
{
    QFETCH(quint32, value);
    QFETCH(QStringList, list);
    QFETCH(QString, text);
    const Table table = colours();
    QCOMPARE(table.encodeAsList(static_cast<Colour>(value)), list);
    QCOMPARE(table.encodeCSV(static_cast<Colour>(value)), text);
}

void tst_LvEnumToStringTable::wholeValue()
{
    const Table table = colours();
    QCOMPARE(table.toString(Colour::none), QStringLiteral("none"));
    QCOMPARE(table.toString(Colour::blue), QStringLiteral("BLUE"));
    QVERIFY(table.toString(static_cast<Colour>(5)).isNull());
}

void tst_LvEnumToStringTable::firstKeyIsCanonical()
{
    Table table;
    table.insert(QStringLiteral("First"), Colour::green);
    table.insert(QStringLiteral("second"), Colour::green);
    QCOMPARE(table.encodeCSV(Colour::green), QStringLiteral("First"));
    QVERIFY(table.decode(QStringLiteral("SECOND")) == Colour::green);
}

void tst_LvEnumToStringTable::laterInsertOfAKeyWins()
{
    Table table;
    table.insert(QStringLiteral("key"), Colour::red);
    table.insert(QStringLiteral("KEY"), Colour::blue);
    QVERIFY(table.decode(QStringLiteral("key")) == Colour::blue);
    QCOMPARE(table.encodeCSV(Colour::red), QStringLiteral("key"));
    QCOMPARE(table.encodeCSV(Colour::blue), QStringLiteral("KEY"));
}

void tst_LvEnumToStringTable::defaults()
{
    Table table = colours();
    QVERIFY(table.defaultString().isNull());
    QVERIFY(table.defaultValue() == Colour::none);
    table.setDefaultString(QStringLiteral("?"));
    QCOMPARE(table.encodeCSV(Colour::none), QStringLiteral("?"));
    QCOMPARE(table.encodeCSV(static_cast<Colour>(3)), QStringLiteral("Red, ?"));
    QCOMPARE(table.encodeCSV(static_cast<Colour>(0x80000000U)), QStringLiteral("?"));
    QCOMPARE(table.toString(Colour::green), QStringLiteral("?"));
}

void tst_LvEnumToStringTable::emptyTable()
{
    const Table table;
    QVERIFY(!table.decode(QStringLiteral("red")));
    QVERIFY(table.decodeCSV(QStringLiteral("red,blue")) == Colour::none);
    QCOMPARE(table.encodeAsList(static_cast<Colour>(3)), (QStringList{QString(), QString()}));
}

LV_TEST_MAIN(tst_LvEnumToStringTable)
#include "tst_LvEnumToStringTable.moc"
