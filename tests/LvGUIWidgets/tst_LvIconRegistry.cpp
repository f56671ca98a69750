#include "LvIconRegistry.h"
#include "LvTest.h"

#include <QPainter>
#include <QPushButton>
#include <QScopeGuard>
#include <QToolButton>

namespace
{

const QStringList builtInNames{"ico_add_route", "ico_deleteListItem", "ico_editListItem", "ico_fit_map"};

/// A palette for the application until the end of the scope.
class ScopedPalette
{
    Q_DISABLE_COPY_MOVE(ScopedPalette)

public:
    ScopedPalette(QColor text, QColor background)
        : myOldPalette(QGuiApplication::palette())
    {
        QPalette palette(background);
        palette.setColor(QPalette::All, QPalette::Window, background);
        palette.setColor(QPalette::All, QPalette::ButtonText, text);
        palette.setColor(QPalette::Disabled, QPalette::ButtonText, Qt::gray);
        palette.setColor(QPalette::All, QPalette::HighlightedText, Qt::magenta);
        QGuiApplication::setPalette(palette);
    }

    ~ScopedPalette() { QGuiApplication::setPalette(myOldPalette); }

private:
    QPalette myOldPalette;
};

QImage picture(const QIcon& icon, int size, QIcon::Mode mode = QIcon::Normal)
{
    return icon.pixmap(QSize(size, size), mode).toImage().convertToFormat(QImage::Format_ARGB32);
}

/// The colour of the fully opaque pixels; invalid when there are none or several colours.
QColor solidColor(const QImage& image)
{
    QColor found;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            const QColor color = image.pixelColor(x, y);
            if (color.alpha() == 255) {
                if (found.isValid() && found != color) {
                    return {};
                }
                found = color;
            }
        }
    }
    return found;
}

QImage sheet(const QColor& background)
{
    const QList<int> sizes{16, 24, 32, 48, 96};
    const QStringList names = builtInNames + QStringList("unknown");
    QImage image(16 + 24 + 32 + 48 + 96 + 6 * 8, static_cast<int>(names.size()) * 104, QImage::Format_ARGB32);
    image.fill(background);
    QPainter painter(&image);
    for (int row = 0; row < names.size(); ++row) {
        int x = 8;
        for (const int size : sizes) {
            painter.drawPixmap(x, row * 104 + 4,
                               LvIconRegistry::instance()->icon(names.at(row)).pixmap(size, size));
            x += size + 8;
        }
    }
    return image;
}

} // namespace

class tst_LvIconRegistry : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void oneInstance();
    void builtIn_data();
    void builtIn();
    void iconsDiffer();
    void golden_data();
    void golden();
    void linesAreSharp_data();
    void linesAreSharp();
    void colorsFollowThePalette();
    void colorsOfModes();
    void pixelRatio();
    void emptySize();
    void copiesDraw();
    void centredInRectangle();
    void painterIsRestored();
    void unknownName();
    void registeredIcon();
    void registeredIconReplacesBuiltIn();
    void setIconOnButtons();
    void setIconWithoutButton();
};

void tst_LvIconRegistry::oneInstance()
{
    QVERIFY(LvIconRegistry::instance() != nullptr);
    QCOMPARE(LvIconRegistry::instance(), LvIconRegistry::instance());
}

void tst_LvIconRegistry::builtIn_data()
{
    QTest::addColumn<QString>("name");
    for (const QString& name : builtInNames) {
        QTest::newRow(qPrintable(name)) << name;
    }
}

void tst_LvIconRegistry::builtIn()
{
    QFETCH(QString, name);
    QVERIFY(LvIconRegistry::instance()->contains(name));
    QVERIFY(LvIconRegistry::instance()->names().contains(name));
    const QIcon icon = LvIconRegistry::instance()->icon(name);
    QVERIFY(!icon.isNull());
    for (const int size : {16, 22, 64, 256}) {
        QCOMPARE(icon.actualSize(QSize(size, size)), QSize(size, size));
        QCOMPARE(picture(icon, size).size(), QSize(size, size));
        QVERIFY(solidColor(picture(icon, size)).isValid());
    }
}

void tst_LvIconRegistry::iconsDiffer()
{
    const QStringList names = builtInNames + QStringList("unknown");
    for (const QString& first : names) {
        for (const QString& second : names) {
            QCOMPARE(picture(LvIconRegistry::instance()->icon(first), 16)
                         == picture(LvIconRegistry::instance()->icon(second), 16),
                     first == second);
        }
    }
}

void tst_LvIconRegistry::golden_data()
{
    QTest::addColumn<QColor>("text");
    QTest::addColumn<QColor>("background");
    QTest::addColumn<QString>("name");
    QTest::newRow("light") << QColor(Qt::black) << QColor(0xF0, 0xF0, 0xF0) << "icons-light";
    QTest::newRow("dark") << QColor(Qt::white) << QColor(0x20, 0x20, 0x20) << "icons-dark";
}

void tst_LvIconRegistry::golden()
{
    QFETCH(QColor, text);
    QFETCH(QColor, background);
    QFETCH(QString, name);
    const ScopedPalette palette(text, background);
    QVERIFY(LvTest::matchesGolden(sheet(background), name));
}

void tst_LvIconRegistry::linesAreSharp_data()
{
    QTest::addColumn<int>("size");
    for (const int size : {12, 16, 20, 22, 24, 32, 37, 48, 64, 100}) {
        QTest::addRow("%d pixels", size) << size;
    }
}

void tst_LvIconRegistry::linesAreSharp()
{
    QFETCH(int, size);
    // The upper bar of the frame, left of the question mark: no pixel of it is covered in part.
    const QImage image = picture(LvIconRegistry::instance()->icon("unknown"), size);
    int covered = 0;
    for (int y = 0; y < size / 4; ++y) {
        const int alpha = image.pixelColor(size / 4, y).alpha();
        QVERIFY2(alpha == 0 || alpha == 255, qPrintable(QStringLiteral("row %1: %2").arg(y).arg(alpha)));
        covered += alpha == 255 ? 1 : 0;
    }
    QCOMPARE(covered, std::max(1, qRound(size / 16.0)));
}

void tst_LvIconRegistry::colorsFollowThePalette()
{
    const QIcon icon = LvIconRegistry::instance()->icon("ico_deleteListItem");
    {
        const ScopedPalette palette(Qt::white, Qt::black);
        QCOMPARE(solidColor(picture(icon, 32)), QColor(Qt::white));
    }
    const ScopedPalette palette(Qt::darkBlue, Qt::white);
    QCOMPARE(solidColor(picture(icon, 32)), QColor(Qt::darkBlue));
}

void tst_LvIconRegistry::colorsOfModes()
{
    const ScopedPalette palette(Qt::black, Qt::white);
    const QIcon icon = LvIconRegistry::instance()->icon("ico_fit_map");
    QCOMPARE(solidColor(picture(icon, 32, QIcon::Normal)), QColor(Qt::black));
    QCOMPARE(solidColor(picture(icon, 32, QIcon::Active)), QColor(Qt::black));
    QCOMPARE(solidColor(picture(icon, 32, QIcon::Disabled)), QColor(Qt::gray));
    QCOMPARE(solidColor(picture(icon, 32, QIcon::Selected)), QColor(Qt::magenta));
}

void tst_LvIconRegistry::pixelRatio()
{
    const QPixmap pixmap = LvIconRegistry::instance()->icon("ico_add_route").pixmap(QSize(16, 16), 3.0);
    QCOMPARE(pixmap.size(), QSize(48, 48));
    QCOMPARE(pixmap.devicePixelRatio(), 3.0);
}

void tst_LvIconRegistry::emptySize()
{
    QVERIFY(LvIconRegistry::instance()->icon("ico_add_route").pixmap(QSize(0, 16)).isNull());
}

void tst_LvIconRegistry::copiesDraw()
{
    const QIcon icon = LvIconRegistry::instance()->icon("ico_fit_map");
    QIcon copy = icon;
    copy.setIsMask(true); // detaches: the copy gets an engine of its own
    QCOMPARE(picture(copy, 24), picture(icon, 24));
}

void tst_LvIconRegistry::centredInRectangle()
{
    QImage wide(64, 32, QImage::Format_ARGB32);
    wide.fill(Qt::transparent);
    {
        QPainter painter(&wide);
        LvIconRegistry::instance()->icon("ico_fit_map").paint(&painter, wide.rect());
    }
    QCOMPARE(wide.copy(16, 0, 32, 32), picture(LvIconRegistry::instance()->icon("ico_fit_map"), 32));
    QCOMPARE(solidColor(wide.copy(0, 0, 16, 32)), QColor());
}

void tst_LvIconRegistry::painterIsRestored()
{
    QImage image(32, 32, QImage::Format_ARGB32);
    QPainter painter(&image);
    painter.setPen(Qt::red);
    painter.setBrush(Qt::green);
    for (const QString& name : builtInNames) {
        LvIconRegistry::instance()->icon(name).paint(&painter, image.rect());
    }
    QCOMPARE(painter.pen(), QPen(Qt::red));
    QCOMPARE(painter.brush(), QBrush(Qt::green));
    QVERIFY(!painter.testRenderHint(QPainter::Antialiasing));
}

void tst_LvIconRegistry::unknownName()
{
    QVERIFY(!LvIconRegistry::instance()->contains("no such icon"));
    QVERIFY(!LvIconRegistry::instance()->names().contains("no such icon"));
    for (const QString& name : {QString("no such icon"), QString(), QString("ICO_FIT_MAP")}) {
        const QIcon icon = LvIconRegistry::instance()->icon(name);
        QVERIFY(!icon.isNull());
        QVERIFY(solidColor(picture(icon, 16)).isValid());
    }
}

void tst_LvIconRegistry::registeredIcon()
{
    QPixmap red(16, 16);
    red.fill(Qt::red);
    LvIconRegistry::instance()->registerIcon("ico_own", QIcon(red));
    const auto guard = qScopeGuard([] { LvIconRegistry::instance()->registerIcon("ico_own", QIcon()); });
    QVERIFY(LvIconRegistry::instance()->contains("ico_own"));
    QCOMPARE(LvIconRegistry::instance()->names(), builtInNames + QStringList("ico_own"));
    QCOMPARE(solidColor(picture(LvIconRegistry::instance()->icon("ico_own"), 16)), QColor(Qt::red));

    LvIconRegistry::instance()->registerIcon("ico_own", QIcon());
    QVERIFY(!LvIconRegistry::instance()->contains("ico_own"));
    QCOMPARE(LvIconRegistry::instance()->names(), builtInNames);
}

void tst_LvIconRegistry::registeredIconReplacesBuiltIn()
{
    const QImage builtIn = picture(LvIconRegistry::instance()->icon("ico_fit_map"), 16);
    QPixmap green(16, 16);
    green.fill(Qt::green);
    LvIconRegistry::instance()->registerIcon("ico_fit_map", QIcon(green));
    const auto guard = qScopeGuard([] { LvIconRegistry::instance()->registerIcon("ico_fit_map", QIcon()); });
    QCOMPARE(solidColor(picture(LvIconRegistry::instance()->icon("ico_fit_map"), 16)), QColor(Qt::green));
    QCOMPARE(LvIconRegistry::instance()->names(), builtInNames);

    LvIconRegistry::instance()->registerIcon("ico_fit_map", QIcon());
    QVERIFY(LvIconRegistry::instance()->contains("ico_fit_map"));
    QCOMPARE(picture(LvIconRegistry::instance()->icon("ico_fit_map"), 16), builtIn);
}

void tst_LvIconRegistry::setIconOnButtons()
{
    QToolButton toolButton;
    QPushButton pushButton;
    LvIconRegistry::instance()->setIcon(&toolButton, "ico_editListItem");
    LvIconRegistry::instance()->setIcon(&pushButton, "ico_deleteListItem");
    QCOMPARE(picture(toolButton.icon(), 16),
             picture(LvIconRegistry::instance()->icon("ico_editListItem"), 16));
    QCOMPARE(picture(pushButton.icon(), 16),
             picture(LvIconRegistry::instance()->icon("ico_deleteListItem"), 16));
}

void tst_LvIconRegistry::setIconWithoutButton()
{
    LvIconRegistry::instance()->setIcon(nullptr, "ico_editListItem");
    QCOMPARE(LvIconRegistry::instance()->names(), builtInNames);
}

LV_TEST_MAIN(tst_LvIconRegistry)
#include "tst_LvIconRegistry.moc"
