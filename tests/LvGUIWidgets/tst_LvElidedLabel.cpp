#include "LvElidedLabel.h"
#include "LvTest.h"

#include <QAccessible>
#include <QHelpEvent>
#include <QPainter>
#include <QToolTip>

namespace
{

const QString longText = "Rund um den Steinhuder Meer, mit einem Abstecher nach Bad Rehburg & zurück";
const QChar ellipsis(0x2026);

QImage picture(LvElidedLabel& label)
{
    QImage image(label.size(), QImage::Format_ARGB32);
    image.fill(Qt::white);
    label.render(&image);
    return image;
}

void giveFixedLook(LvElidedLabel& label)
{
    QPalette palette;
    palette.setColor(QPalette::All, QPalette::Window, Qt::white);
    palette.setColor(QPalette::All, QPalette::WindowText, Qt::black);
    palette.setColor(QPalette::All, QPalette::Highlight, QColor(0x30, 0x8C, 0xC6));
    palette.setColor(QPalette::All, QPalette::HighlightedText, Qt::white);
    label.setPalette(palette);
    QFont font("Liberation Sans");
    font.setPixelSize(16);
    label.setFont(font);
}

bool contains(const QImage& image, const QColor& color)
{
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            if (image.pixelColor(x, y) == color) {
                return true;
            }
        }
    }
    return false;
}

QString toolTipAt(LvElidedLabel& label)
{
    QToolTip::hideText(); // takes effect a little later
    if (!QTest::qWaitFor([] { return !QToolTip::isVisible(); })) {
        return "(an earlier tool tip stays)";
    }
    QHelpEvent event(QEvent::ToolTip, QPoint(3, 3), label.mapToGlobal(QPoint(3, 3)));
    QCoreApplication::sendEvent(&label, &event);
    return QToolTip::text();
}

} // namespace

class tst_LvElidedLabel : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initialState();
    void textIsTheAccessibleName();
    void fittingTextIsWhole();
    void emptyText();
    void narrowLabelElides();
    void oneLineWithoutWordWrap();
    void lineBreaksAreBlanksInOneLine();
    void wordWrapUsesTheHeight_data();
    void wordWrapUsesTheHeight();
    void wordWrapKeepsLineBreaks();
    void longWordIsBroken();
    void hugeTextIsCutQuickly();
    void animationState_data();
    void animationState();
    void animationDoesNotChangeTheSize();
    void toolTipOnlyWhenElided();
    void toolTipShowsMarkupAsText();
    void ownToolTipWins();
    void sizeHints();
    void sizeHintFitsTheText();
    void frameTakesRoom();
    void disabledText();
    void rightToLeft();
    void golden();
};

void tst_LvElidedLabel::initialState()
{
    QWidget parent;
    const LvElidedLabel empty(&parent);
    QCOMPARE(empty.parentWidget(), &parent);
    QCOMPARE(empty.fullText(), QString());
    QCOMPARE(empty.wordWrap(), false);
    QCOMPARE(empty.animationState(), 0);
    QVERIFY(!empty.isElided());
    const LvElidedLabel withText("Weser", &parent);
    QCOMPARE(withText.parentWidget(), &parent);
    QCOMPARE(withText.fullText(), QString("Weser"));
}

void tst_LvElidedLabel::textIsTheAccessibleName()
{
    LvElidedLabel label(longText);
    label.resize(40, 20);
    QVERIFY(label.isElided());
    QCOMPARE(label.accessibleName(), longText);
    label.setFullText("Aller");
    QCOMPARE(label.accessibleName(), QString("Aller"));
    QAccessibleInterface* accessible = QAccessible::queryAccessibleInterface(&label);
    QVERIFY(accessible != nullptr);
    QCOMPARE(accessible->text(QAccessible::Name), QString("Aller"));
}

void tst_LvElidedLabel::fittingTextIsWhole()
{
    LvElidedLabel label(longText);
    label.resize(2000, 30);
    QVERIFY(!label.isElided());
    QCOMPARE(label.shownLines(), QStringList(longText));
}

void tst_LvElidedLabel::emptyText()
{
    LvElidedLabel label(longText);
    giveFixedLook(label);
    label.resize(100, 30);
    label.setFullText(QString());
    QVERIFY(!label.isElided());
    QVERIFY(label.shownLines().isEmpty());
    QImage blank(label.size(), QImage::Format_ARGB32);
    blank.fill(Qt::white);
    QCOMPARE(picture(label), blank);
}

void tst_LvElidedLabel::narrowLabelElides()
{
    LvElidedLabel label(longText);
    for (const int width : {60, 100, 200, 300}) {
        label.resize(width, 30);
        QVERIFY(label.isElided());
        QCOMPARE(label.shownLines().size(), 1);
        const QString shown = label.shownLines().constFirst();
        QVERIFY(shown.endsWith(ellipsis));
        QVERIFY(longText.startsWith(shown.chopped(1)));
        QVERIFY(label.fontMetrics().horizontalAdvance(shown) <= width);
        QCOMPARE(label.fullText(), longText);
    }
}

void tst_LvElidedLabel::oneLineWithoutWordWrap()
{
    LvElidedLabel label(longText);
    label.resize(100, 500);
    QCOMPARE(label.shownLines().size(), 1);
}

void tst_LvElidedLabel::lineBreaksAreBlanksInOneLine()
{
    LvElidedLabel label("a\nb\r\nc\rd\u2028e");
    label.resize(500, 30);
    QCOMPARE(label.shownLines(), QStringList("a b c d e"));
    QVERIFY(!label.isElided());
}

void tst_LvElidedLabel::wordWrapUsesTheHeight_data()
{
    QTest::addColumn<int>("room");
    QTest::addColumn<int>("lines");
    QTest::newRow("no height") << 0 << 1;
    QTest::newRow("one line") << 1 << 1;
    QTest::newRow("two lines") << 2 << 2;
    QTest::newRow("three lines") << 3 << 3;
}

void tst_LvElidedLabel::wordWrapUsesTheHeight()
{
    QFETCH(int, room);
    QFETCH(int, lines);
    LvElidedLabel label(longText);
    label.setWordWrap(true);
    label.resize(120, room * label.fontMetrics().lineSpacing());
    QCOMPARE(label.shownLines().size(), lines);
    QVERIFY(label.isElided());
    QVERIFY(label.shownLines().constLast().endsWith(ellipsis));
    QStringList shown = label.shownLines();
    shown.last().chop(1);
    QVERIFY2(longText.startsWith(shown.join(u' ')), qUtf8Printable(shown.join(u'|')));
    for (const QString& line : label.shownLines()) {
        QVERIFY(label.fontMetrics().horizontalAdvance(line) <= 120);
    }

    label.resize(120, 20 * label.fontMetrics().lineSpacing());
    QVERIFY(!label.isElided());
    QCOMPARE(label.shownLines().join(u' '), longText);
}

void tst_LvElidedLabel::wordWrapKeepsLineBreaks()
{
    LvElidedLabel label("a\nb\r\nc\n\nd");
    label.setWordWrap(true);
    label.resize(500, 500);
    QCOMPARE(label.shownLines(), QStringList({"a", "b", "c", "", "d"}));
    label.resize(500, 2 * label.fontMetrics().lineSpacing());
    QCOMPARE(label.shownLines(), QStringList({"a", "b c  d"}));
}

void tst_LvElidedLabel::longWordIsBroken()
{
    LvElidedLabel label(QString("Donaudampfschifffahrtsgesellschaft").repeated(3));
    label.setWordWrap(true);
    label.resize(100, 500);
    QVERIFY(label.shownLines().size() > 3);
    QCOMPARE(label.shownLines().join(QString()), label.fullText());
}

void tst_LvElidedLabel::hugeTextIsCutQuickly()
{
    LvElidedLabel label(QString("Weser ").repeated(2'000'000));
    QElapsedTimer timer;
    timer.start();
    for (const bool wordWrap : {false, true}) {
        label.setWordWrap(wordWrap);
        label.resize(200, 60);
        QVERIFY(label.isElided());
        picture(label);
        QVERIFY(label.sizeHint().isValid());
        toolTipAt(label);
    }
    QToolTip::hideText();
    QVERIFY2(timer.elapsed() < 5000, qPrintable(QString::number(timer.elapsed())));
}

void tst_LvElidedLabel::animationState_data()
{
    QTest::addColumn<int>("state");
    QTest::addColumn<bool>("isHighlighted");
    QTest::newRow("0") << 0 << false;
    QTest::newRow("1") << 1 << true;
    QTest::newRow("2") << 2 << false;
    QTest::newRow("3") << 3 << true;
    QTest::newRow("-1") << -1 << true;
}

void tst_LvElidedLabel::animationState()
{
    QFETCH(int, state);
    QFETCH(bool, isHighlighted);
    LvElidedLabel label("Weser");
    giveFixedLook(label);
    label.resize(100, 30);
    const QImage normal = picture(label);
    label.setAnimationState(state);
    QCOMPARE(label.animationState(), state);
    const QImage animated = picture(label);
    QCOMPARE(animated != normal, isHighlighted);
    QCOMPARE(contains(animated, QColor(0x30, 0x8C, 0xC6)), isHighlighted);
    label.setAnimationState(0);
    QCOMPARE(picture(label), normal);
}

void tst_LvElidedLabel::animationDoesNotChangeTheSize()
{
    LvElidedLabel label("Weser");
    const QSize hint = label.sizeHint();
    label.setAnimationState(1);
    QCOMPARE(label.sizeHint(), hint);
    QCOMPARE(label.shownLines(), QStringList("Weser"));
}

void tst_LvElidedLabel::toolTipOnlyWhenElided()
{
    LvElidedLabel label(longText);
    label.resize(100, 30);
    label.show();
    QVERIFY(toolTipAt(label).contains("Bad Rehburg &amp; zurück"));
    label.resize(2000, 30);
    QCOMPARE(toolTipAt(label), QString());
}

void tst_LvElidedLabel::toolTipShowsMarkupAsText()
{
    LvElidedLabel label("<b>fett</b> und <img src=\"file:///x.png\"> noch viel länger als das Feld");
    label.resize(60, 30);
    label.show();
    QVERIFY(toolTipAt(label).contains("&lt;b&gt;fett&lt;/b&gt; und &lt;img"));
    QVERIFY(!toolTipAt(label).contains("<img"));
    QToolTip::hideText();
}

void tst_LvElidedLabel::ownToolTipWins()
{
    LvElidedLabel label(longText);
    label.setToolTip("Name des Tracks");
    label.resize(60, 30);
    label.show();
    QCOMPARE(toolTipAt(label), QString("Name des Tracks"));
    QToolTip::hideText();
}

void tst_LvElidedLabel::sizeHints()
{
    LvElidedLabel label;
    const QFontMetrics metrics = label.fontMetrics();
    QCOMPARE(label.minimumSizeHint().height(), metrics.height());
    QCOMPARE(label.sizeHint(), label.minimumSizeHint());
    label.setFullText(longText.repeated(5));
    QCOMPARE(label.sizeHint(), QSize(40 * metrics.averageCharWidth(), metrics.height()));
    label.setWordWrap(true);
    QCOMPARE(label.sizeHint().width(), 40 * metrics.averageCharWidth());
    QCOMPARE(label.sizeHint().height(), 3 * metrics.lineSpacing() - metrics.leading());
    QVERIFY(label.minimumSizeHint().width() < label.sizeHint().width() / 4);
    QCOMPARE(label.minimumSizeHint().height(), metrics.height());
}

void tst_LvElidedLabel::sizeHintFitsTheText()
{
    for (const bool wordWrap : {false, true}) {
        LvElidedLabel label("Nach Bad Rehburg");
        label.setWordWrap(wordWrap);
        label.resize(label.sizeHint());
        QVERIFY(!label.isElided());
        QCOMPARE(label.shownLines(), QStringList("Nach Bad Rehburg"));
        QCOMPARE(label.height(), label.fontMetrics().height());
    }
}

void tst_LvElidedLabel::frameTakesRoom()
{
    LvElidedLabel label("Weser");
    const QSize plain = label.sizeHint();
    label.setFrameStyle(QFrame::Box | QFrame::Plain);
    label.setLineWidth(3);
    QCOMPARE(label.sizeHint(), plain + QSize(2 * 3, 2 * 3));
    QCOMPARE(label.minimumSizeHint().height(), label.fontMetrics().height() + 2 * 3);
    label.resize(label.sizeHint());
    QVERIFY(!label.isElided());
}

void tst_LvElidedLabel::disabledText()
{
    LvElidedLabel label("Weser");
    giveFixedLook(label);
    label.resize(100, 30);
    QPalette palette = label.palette();
    palette.setColor(QPalette::Disabled, QPalette::WindowText, QColor(0xC0, 0xC0, 0xC0));
    label.setPalette(palette);
    QVERIFY(contains(picture(label), Qt::black));
    label.setEnabled(false);
    QVERIFY(!contains(picture(label), Qt::black));
    QVERIFY(contains(picture(label), QColor(0xC0, 0xC0, 0xC0)));
}

void tst_LvElidedLabel::rightToLeft()
{
    LvElidedLabel label("W");
    giveFixedLook(label);
    label.resize(100, 30);
    const QRect leftHalf(0, 0, 50, 30);
    const QRect rightHalf(50, 0, 50, 30);
    QVERIFY(contains(picture(label).copy(leftHalf), Qt::black));
    QVERIFY(!contains(picture(label).copy(rightHalf), Qt::black));
    label.setLayoutDirection(Qt::RightToLeft);
    QVERIFY(!contains(picture(label).copy(leftHalf), Qt::black));
    QVERIFY(contains(picture(label).copy(rightHalf), Qt::black));
}

void tst_LvElidedLabel::golden()
{
    QImage sheet(340, 300, QImage::Format_ARGB32);
    sheet.fill(Qt::lightGray);
    QPainter painter(&sheet);
    int y = 5;
    for (const bool wordWrap : {false, true}) {
        for (const int width : {150, 330}) {
            LvElidedLabel label(longText);
            giveFixedLook(label);
            label.setFrameStyle(QFrame::Box | QFrame::Plain);
            label.setWordWrap(wordWrap);
            label.resize(width, wordWrap ? 48 : 28);
            label.setAnimationState(width == 330 ? 1 : 0);
            painter.drawImage(5, y, picture(label));
            y += label.height() + 10;
        }
    }
    painter.end();
    QVERIFY(LvTest::matchesGolden(sheet.copy(0, 0, 340, y), "elided-label"));
}

LV_TEST_MAIN(tst_LvElidedLabel)
#include "tst_LvElidedLabel.moc"
