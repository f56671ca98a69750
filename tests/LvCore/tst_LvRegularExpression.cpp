#include "LvRegularExpression.h"
#include "LvTest.h"

class tst_LvRegularExpression : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void removeFrom_data()
    {
        QTest::addColumn<QString>("pattern");
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("left");
        const QString letters = QStringLiteral("\\s|S|s|N|n|E|e|W|w");
        QTest::newRow("letters and blanks") << letters << "53,8, 24 N\t\n"
                                            << "53,8,24";
        QTest::newRow("neighbouring matches") << letters << "NESWneswx"
                                              << "x";
        QTest::newRow("no match") << letters << "1,2,3"
                                  << "1,2,3";
        QTest::newRow("empty text") << letters << ""
                                    << "";
        QTest::newRow("case counts") << "a"
                                     << "aAbA"
                                     << "AbA";
        QTest::newRow("everything") << ".*"
                                    << "abc"
                                    << "";
        QTest::newRow("matches made by removing stay") << "ab"
                                                       << "aabb"
                                                       << "ab";
        QTest::newRow("invalid pattern") << "("
                                         << "a(b"
                                         << "a(b";
    }

    void removeFrom()
    {
        QFETCH(QString, pattern);
        QFETCH(QString, text);
        QFETCH(QString, left);
        const LvRegularExpression expression(pattern);
        QCOMPARE(expression.pattern(), pattern);
        expression.removeFrom(text);
        QCOMPARE(text, left);
    }

    void validity()
    {
        QVERIFY(LvRegularExpression(QStringLiteral("a+")).isValid());
        QVERIFY(!LvRegularExpression(QStringLiteral("(")).isValid());
    }

    void copiesOfTheTextStay()
    {
        QString text = QStringLiteral("abc");
        const QString copy = text;
        LvRegularExpression(QStringLiteral("b")).removeFrom(text);
        QCOMPARE(text, QStringLiteral("ac"));
        QCOMPARE(copy, QStringLiteral("abc"));
    }
};

LV_TEST_MAIN(tst_LvRegularExpression)
#include "tst_LvRegularExpression.moc"
