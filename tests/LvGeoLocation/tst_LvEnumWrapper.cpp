#include "LvEnumWrapper.h"
#include "LvGPXTrackShape.h"
#include "LvTest.h"

#include <array>
#include <atomic>
#include <barrier>
#include <stdexcept>
#include <thread>
#include <type_traits>
#include <vector>

namespace
{

enum class Flag : quint32 { none = 0, one = 1, two = 2, four = 4 };

class Flags : public LvEnumWrapper<Flag>
{
public:
    Flags() = default;

    Flags(Flag value) // NOLINT(google-explicit-constructor) like the wrappers of the library
        : LvEnumWrapper(value)
    {
    }

    explicit Flags(quint32 value)
        : LvEnumWrapper(static_cast<Flag>(value))
    {
    }

    void fillTable(LvEnumToStringTable<Flag>* table) const override
    {
        table->insert(QStringLiteral("one"), Flag::one);
    }
};

enum class Once : quint32 { none = 0, one = 1 };

// Counts how often its table is filled, slowly enough for others to arrive meanwhile.
class Counted : public LvEnumWrapper<Once>
{
public:
    static inline std::atomic<int> filled = 0;

    void fillTable(LvEnumToStringTable<Once>* table) const override
    {
        ++filled;
        std::this_thread::sleep_for(std::chrono::milliseconds(20));
        table->insert(QStringLiteral("one"), Once::one);
    }
};

enum class Risky : quint32 { none = 0, one = 1 };

class Throwing : public LvEnumWrapper<Risky>
{
public:
    static inline bool throws = true;

    void fillTable(LvEnumToStringTable<Risky>* table) const override
    {
        table->insert(QStringLiteral("half"), Risky::one);
        if (throws) {
            throw std::runtime_error("no keys today");
        }
        table->insert(QStringLiteral("one"), Risky::one);
    }
};

// Would fill the table of the track shapes with keys of its own, if it got the chance.
class Intruder : public LvGPXTrackShape
{
public:
    static inline int filled = 0;

    void fillTable(LvEnumToStringTable<LvGPXTrackShapeEnum>* table) const override
    {
        ++filled;
        table->insert(QStringLiteral("intruder"), LvGPXTrackShapeEnum::point);
    }
};

} // namespace

class tst_LvEnumWrapper : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void construction();
    void comparisons_data();
    void comparisons();
    void comparisonWithValues();
    void bitOperations_data();
    void bitOperations();
    void validity();
    void copies();
    void operationsAreVirtual();
    void exceptionLeavesNoTable();
    void threadsMakeOneTable();
    void tableIsSharedWithTheLibrary();
};

void tst_LvEnumWrapper::construction()
{
    QVERIFY(Flags().value() == Flag::none);
    QVERIFY(Flags(Flag::two).value() == Flag::two);
    QVERIFY(Flags(7U).value() == static_cast<Flag>(7));
    static_assert(std::has_virtual_destructor_v<LvEnumWrapper<Flag>>);
    static_assert(std::is_abstract_v<LvEnumWrapper<Flag>>);
    static_assert(std::is_nothrow_move_constructible_v<Flags>);
}

void tst_LvEnumWrapper::comparisons_data()
{
    QTest::addColumn<quint32>("left");
    QTest::addColumn<quint32>("right");
    QTest::newRow("both zero") << 0U << 0U;
    QTest::newRow("equal") << 5U << 5U;
    QTest::newRow("smaller") << 1U << 2U;
    QTest::newRow("greater") << 4U << 3U;
    QTest::newRow("bit 31 is no sign") << 0x80000000U << 1U;
}

void tst_LvEnumWrapper::comparisons()
{
    QFETCH(quint32, left);
    QFETCH(quint32, right);
    const Flags a(left);
    const Flags b(right);
    QCOMPARE(a < b, left < right);
    QCOMPARE(a <= b, left <= right);
    QCOMPARE(a > b, left > right);
    QCOMPARE(a == b, left == right);
    QCOMPARE(a != b, left != right);
    QCOMPARE(b < a, right < left);
}

void tst_LvEnumWrapper::comparisonWithValues()
{
    const Flags flags(Flag::two);
    QVERIFY(flags == Flag::two);
    QVERIFY(!(flags == Flag::one));
    QVERIFY(flags != Flag::one);
    QVERIFY(!(flags != Flag::two));
    QVERIFY(Flag::two == flags);
    QVERIFY(Flag::one != flags);
}

void tst_LvEnumWrapper::bitOperations_data()
{
    QTest::addColumn<quint32>("left");
    QTest::addColumn<quint32>("right");
    QTest::newRow("nothing in common") << 1U << 6U;
    QTest::newRow("one flag in common") << 3U << 6U;
    QTest::newRow("equal") << 7U << 7U;
    QTest::newRow("with zero") << 5U << 0U;
    QTest::newRow("bit 31") << 0x80000001U << 0x80000002U;
}

void tst_LvEnumWrapper::bitOperations()
{
    QFETCH(quint32, left);
    QFETCH(quint32, right);
    const Flags a(left);
    const Flags b(right);
    const auto mask = static_cast<Flag>(right);
    QCOMPARE(static_cast<quint32>(a & b), left & right);
    QCOMPARE(static_cast<quint32>(a | b), left | right);
    QCOMPARE(static_cast<quint32>(a.reducedTo(mask)), left & right);
    QVERIFY(a == Flags(left)); // unchanged so far

    Flags changing(left);
    QCOMPARE(&(changing |= b), &changing);
    QVERIFY(changing == Flags(left | right));
    changing = Flags(left);
    changing |= mask;
    QVERIFY(changing == Flags(left | right));
    changing = Flags(left);
    QCOMPARE(&(changing &= b), &changing);
    QVERIFY(changing == Flags(left & right));
    changing = Flags(left);
    changing &= mask;
    QVERIFY(changing == Flags(left & right));
}

void tst_LvEnumWrapper::validity()
{
    QVERIFY(!Flags().isValid());
    QVERIFY(Flags(Flag::one).isValid());
    QVERIFY(Flags(0x80000000U).isValid());
    QVERIFY(Flags(64U).isValid()); // any flag counts, with or without a name
}

void tst_LvEnumWrapper::copies()
{
    const Flags original(Flag::one);
    Flags copy(original);
    copy |= Flag::two;
    QVERIFY(original == Flag::one);
    QVERIFY(copy == static_cast<Flag>(3));
    copy = original;
    QVERIFY(copy == Flag::one);
}

void tst_LvEnumWrapper::operationsAreVirtual()
{
    class Contrary : public Flags
    {
    public:
        using Flags::Flags;
        using Flags::operator==;

        bool operator==(const LvEnumWrapper& other) const override { return !Flags::operator==(other); }

        [[nodiscard]] bool isValid() const override { return false; }
    };

    const Contrary contrary(Flag::one);
    const LvEnumWrapper<Flag>& base = contrary;
    QVERIFY(!base.isValid());
    QVERIFY(!base.operator==(Flags(Flag::one)));
}

void tst_LvEnumWrapper::exceptionLeavesNoTable()
{
    Throwing::throws = true;
    for (int i = 0; i < 2; ++i) { // the second time shows that the lock is free again
        bool caught = false;
        try {
            static_cast<void>(Throwing().enumToStringTable());
        } catch (const std::runtime_error&) {
            caught = true;
        }
        QVERIFY(caught);
    }
    Throwing::throws = false;
    const auto* table = Throwing().enumToStringTable();
    QVERIFY(table != nullptr);
    QVERIFY(table->decode(QStringLiteral("one")) == Risky::one);
    Throwing::throws = true;
    QCOMPARE(Throwing().enumToStringTable(), table);
}

void tst_LvEnumWrapper::threadsMakeOneTable()
{
    constexpr int threadCount = 8;
    std::array<const LvEnumToStringTable<Once>*, threadCount> tables{};
    std::atomic<int> decoded = 0;
    std::barrier start(threadCount);
    std::vector<std::thread> threads;
    threads.reserve(threadCount);
    for (int i = 0; i < threadCount; ++i) {
        threads.emplace_back([&, i] {
            start.arrive_and_wait();
            const auto* table = Counted().enumToStringTable();
            tables.at(static_cast<size_t>(i)) = table;
            decoded += table->decode(QStringLiteral("one")) == Once::one ? 1 : 0;
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    QCOMPARE(Counted::filled.load(), 1);
    QCOMPARE(decoded.load(), threadCount);
    for (const auto* table : tables) {
        QCOMPARE(table, tables.front());
    }
}

void tst_LvEnumWrapper::tableIsSharedWithTheLibrary()
{
    // The first use happens inside the library. If this program had a table of its own, the intruder would
    // fill it.
    QVERIFY(LvGPXTrackShape(QStringLiteral("polygon")) == LvGPXTrackShapeEnum::polygon);
    const auto* table = Intruder().enumToStringTable();
    QCOMPARE(Intruder::filled, 0);
    QVERIFY(!table->decode(QStringLiteral("intruder")));
    QCOMPARE(table, LvGPXTrackShape().enumToStringTable());
}

LV_TEST_MAIN(tst_LvEnumWrapper)
#include "tst_LvEnumWrapper.moc"
