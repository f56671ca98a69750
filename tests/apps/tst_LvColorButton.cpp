#include "LvColorButton.h"
#include "LvTest.h"

#include <QColorDialog>
#include <QSignalSpy>

namespace
{

QImage lookOf(const LvColorButton& button)
{
    return button.icon().pixmap(button.iconSize()).toImage().convertToFormat(QImage::Format_RGB32);
}

QColorDialog* openedDialog(LvColorButton& button)
{
    QTest::mouseClick(&button, Qt::LeftButton);
    return button.findChild<QColorDialog*>();
}

} // namespace

class tst_LvColorButton : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void look_data();
    void look();
    void translucentLook();
    void lookFollowsThePalette();
    void setColorIsSilent();
    void chooses();
    void cancels();
    void sameColor();
    void keyboard();
};

void tst_LvColorButton::initTestCase()
{
    QCoreApplication::setAttribute(Qt::AA_DontUseNativeDialogs);
}

void tst_LvColorButton::look_data()
{
    QTest::addColumn<QColor>("color");
    QTest::addColumn<QString>("text");
    QTest::newRow("opaque") << QColor(255, 145, 0) << "#FF9100";
    QTest::newRow("half") << QColor(255, 145, 0, 128) << "#FF9100, 50 % deckend";
    QTest::newRow("almost opaque") << QColor(0, 0, 255, 254) << "#0000FF, 100 % deckend";
    QTest::newRow("invisible") << QColor(0, 0, 255, 0) << "#0000FF, 0 % deckend";
}

void tst_LvColorButton::look()
{
    QFETCH(QColor, color);
    QFETCH(QString, text);
    LvColorButton button;
    button.setColor(color);
    QCOMPARE(button.color(), color);
    QCOMPARE(button.text(), text);
    QCOMPARE(button.accessibleDescription(), text);
}

void tst_LvColorButton::translucentLook()
{
    LvColorButton button;
    button.setColor(Qt::red);
    const QPoint middle(button.iconSize().width() / 2, button.iconSize().height() / 2);
    QCOMPARE(lookOf(button).pixelColor(middle), QColor(Qt::red));

    // Through an invisible colour both colours of the ground are seen.
    button.setColor(QColor(255, 0, 0, 0));
    QSet<QRgb> colors;
    for (int x = 2; x < button.iconSize().width() - 2; ++x) {
        colors.insert(lookOf(button).pixel(x, middle.y() + 1));
    }
    QVERIFY(colors.contains(QColor(Qt::white).rgb()));
    QVERIFY(colors.contains(QColor(Qt::lightGray).rgb()));
}

void tst_LvColorButton::lookFollowsThePalette()
{
    LvColorButton button;
    button.setColor(Qt::red);
    QPalette palette;
    palette.setColor(QPalette::ButtonText, Qt::green);
    button.setPalette(palette);
    QCOMPARE(lookOf(button).pixelColor(0, 0), QColor(Qt::green));
}

void tst_LvColorButton::setColorIsSilent()
{
    LvColorButton button;
    QSignalSpy spy(&button, &LvColorButton::colorEdited);
    button.setColor(Qt::red);
    QCOMPARE(spy.size(), 0);
}

void tst_LvColorButton::chooses()
{
    LvColorButton button;
    button.setColor(Qt::red);
    button.setDialogTitle(QStringLiteral("Linienfarbe"));
    QSignalSpy spy(&button, &LvColorButton::colorEdited);
    QColorDialog* dialog = openedDialog(button);
    QVERIFY(dialog != nullptr);
    QCOMPARE(dialog->windowTitle(), QStringLiteral("Linienfarbe"));
    QCOMPARE(dialog->currentColor(), QColor(Qt::red));
    QVERIFY(dialog->testOption(QColorDialog::ShowAlphaChannel));
    dialog->setCurrentColor(QColor(10, 20, 30, 40));
    QCOMPARE(spy.size(), 0);
    dialog->accept();
    QCOMPARE(spy.size(), 1);
    QCOMPARE(spy.first().first().value<QColor>(), QColor(10, 20, 30, 40));
    QCOMPARE(button.color(), QColor(10, 20, 30, 40));
}

void tst_LvColorButton::cancels()
{
    LvColorButton button;
    button.setColor(Qt::red);
    QSignalSpy spy(&button, &LvColorButton::colorEdited);
    QColorDialog* dialog = openedDialog(button);
    dialog->setCurrentColor(Qt::blue);
    dialog->reject();
    QCOMPARE(spy.size(), 0);
    QCOMPARE(button.color(), QColor(Qt::red));
}

void tst_LvColorButton::sameColor()
{
    LvColorButton button;
    button.setColor(QColor(10, 20, 30, 40));
    QSignalSpy spy(&button, &LvColorButton::colorEdited);
    openedDialog(button)->accept();
    QCOMPARE(spy.size(), 0);
}

void tst_LvColorButton::keyboard()
{
    LvColorButton button;
    QTest::keyClick(&button, Qt::Key_Space);
    QVERIFY(button.findChild<QColorDialog*>() != nullptr);
}

LV_TEST_MAIN(tst_LvColorButton)
#include "tst_LvColorButton.moc"
