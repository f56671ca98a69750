#include "LvCopyrightRenderer.h"
#include "LvTest.h"

#include <QFont>
#include <QFontMetrics>
#include <QPainter>

#include <cmath>

namespace
{

const QString defaultText = QStringLiteral("\u00a9 openstreetmap.org");

QImage transparentImage(const QSize& size)
{
    QImage image(size, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    return image;
}

} // namespace

class tst_LvCopyrightRenderer : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void cleanup();
    void constants();
    void text();
    void textOfTheApplication();
    void font();
    void textSize();
    void rectangle_data();
    void rectangle();
    void placeholder();
    void placeholderBelowATenth();
    void pictures_data();
    void pictures();
};

void tst_LvCopyrightRenderer::cleanup()
{
    LvCopyrightRenderer::setCopyrightText(QString());
}

void tst_LvCopyrightRenderer::constants()
{
    QCOMPARE(LvCopyrightRenderer::semiOpaqueWhite, QColor(225, 225, 225, 180));
    QCOMPARE(LvCopyrightRenderer::semiOpaqueBlack, QColor(0, 0, 0, 180));
}

void tst_LvCopyrightRenderer::text()
{
    const LvCopyrightRenderer renderer;
    QCOMPARE(renderer.copyrightText(), defaultText);
    QCOMPARE(renderer.copyrightText().length(), 19);
    QCOMPARE(renderer.copyrightText().at(0).unicode(), ushort(0xa9));
}

void tst_LvCopyrightRenderer::textOfTheApplication()
{
    const LvCopyrightRenderer renderer;
    const QSizeF size = renderer.copyrightTextSize(1.0);
    LvCopyrightRenderer::setCopyrightText(QStringLiteral("\u00a9 another provider of maps"));
    QCOMPARE(renderer.copyrightText(), QStringLiteral("\u00a9 another provider of maps"));
    QVERIFY(renderer.copyrightTextSize(1.0).width() > size.width());
    LvCopyrightRenderer::setCopyrightText(QString());
    QCOMPARE(renderer.copyrightText(), defaultText);
}

void tst_LvCopyrightRenderer::font()
{
    const QFont font = LvCopyrightRenderer().copyrightFont(0.5);
    QCOMPARE(font.family(), QStringLiteral("Arial"));
    QCOMPARE(font.pointSizeF(), 12.0);
}

void tst_LvCopyrightRenderer::textSize()
{
    const LvCopyrightRenderer renderer;
    const QSize measured = QFontMetrics(renderer.copyrightFont(1.0)).size(Qt::TextSingleLine, defaultText);
    QCOMPARE(renderer.copyrightTextSize(1.0), QSizeF(measured.width() + 20, measured.height() + 5));
    // Not measured anew for another factor.
    QCOMPARE(renderer.copyrightTextSize(0.3),
             QSizeF((measured.width() + 20) * 0.3, (measured.height() + 5) * 0.3));
}

void tst_LvCopyrightRenderer::rectangle_data()
{
    QTest::addColumn<QRect>("imageRect");
    QTest::addColumn<double>("factor");
    QTest::addColumn<QPointF>("bottomRight");

    QTest::newRow("image at the origin") << QRect(0, 0, 900, 600) << 1.0 << QPointF(889, 589);
    QTest::newRow("image elsewhere") << QRect(5, 7, 900, 600) << 1.0 << QPointF(894, 596);
    QTest::newRow("twice the size") << QRect(0, 0, 900, 600) << 2.0 << QPointF(879, 579);
    QTest::newRow("thumbnail") << QRect(0, 0, 90, 60) << 0.0625 << QPointF(88.375, 58.375);
}

void tst_LvCopyrightRenderer::rectangle()
{
    QFETCH(const QRect, imageRect);
    QFETCH(const double, factor);
    QFETCH(const QPointF, bottomRight);

    const LvCopyrightRenderer renderer;
    const QRectF rect = renderer.copyrightRect(imageRect, factor);
    QCOMPARE(rect.size(), renderer.copyrightTextSize(factor));
    QCOMPARE(rect.bottomRight(), bottomRight);
}

void tst_LvCopyrightRenderer::placeholder()
{
    const double factor = 0.05;
    QImage image = transparentImage(QSize(100, 50));
    const LvCopyrightRenderer renderer;
    renderer.renderCopyRight(&image, factor);

    const QRectF rect = renderer.copyrightRect(image.rect(), factor);
    const int lineY = static_cast<int>(rect.center().y());
    const int middle = static_cast<int>(rect.center().x());
    int darkPixels = 0;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            if (qAlpha(image.pixel(x, y)) > 180) {
                ++darkPixels;
                QVERIFY(std::abs(y - lineY) <= 1);
                QVERIFY(x >= middle - 1);
            }
        }
    }
    QVERIFY(darkPixels > 0);
    QCOMPARE(image.pixelColor(middle - 3, lineY).rgba(), qRgba(225, 225, 225, 180));
}

void tst_LvCopyrightRenderer::placeholderBelowATenth()
{
    // Only the text reaches into the left half, the line of the placeholder does not.
    const auto isTextDrawn = [](double factor) {
        QImage image = transparentImage(QSize(100, 50));
        const LvCopyrightRenderer renderer;
        renderer.renderCopyRight(&image, factor);
        const int middle = static_cast<int>(renderer.copyrightRect(image.rect(), factor).center().x());
        int strongest = 0;
        for (int y = 0; y < image.height(); ++y) {
            for (int x = 0; x < middle - 2; ++x) {
                strongest = std::max(strongest, qAlpha(image.pixel(x, y)));
            }
        }
        return strongest > 180;
    };
    QVERIFY(!isTextDrawn(0.0999));
    QVERIFY(isTextDrawn(0.1));
}

void tst_LvCopyrightRenderer::pictures_data()
{
    QTest::addColumn<QSize>("size");
    QTest::addColumn<double>("factor");

    QTest::newRow("attribution") << QSize(500, 120) << 1.0;
    QTest::newRow("attribution-double") << QSize(900, 200) << 2.0;
    QTest::newRow("attribution-thumbnail") << QSize(60, 30) << 0.09;
}

void tst_LvCopyrightRenderer::pictures()
{
    QFETCH(const QSize, size);
    QFETCH(const double, factor);

    QImage image(size, QImage::Format_ARGB32_Premultiplied);
    image.fill(QColor(170, 211, 223));
    LvCopyrightRenderer().renderCopyRight(&image, factor);
    QVERIFY(LvTest::matchesGolden(image, QString::fromLatin1(QTest::currentDataTag())));
}

LV_TEST_MAIN(tst_LvCopyrightRenderer)
#include "tst_LvCopyrightRenderer.moc"
