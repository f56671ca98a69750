#include "LvOsmScaleRenderer.h"
#include "LvTest.h"

#include <QFont>
#include <QFontMetrics>
#include <QPainter>

#include <cmath>
#include <limits>
#include <numeric>

namespace
{

const QSize wideMap(900, 600); // two thirds are 600 pixels, so theMaximumWidth is the limit

/// A renderer whose longest possible bar takes exactly the given number of kilometres.
LvOsmScaleRenderer rendererFor(double longestKilometres)
{
    const double guess = 300.0 / longestKilometres;
    for (const double pixels : {guess, std::nextafter(guess, 0.0), std::nextafter(guess, 1e300)}) {
        if (300.0 / pixels == longestKilometres) {
            return {pixels, wideMap};
        }
    }
    // No quotient of 300 hits it: take one of 250 pixels.
    return {250.0 / longestKilometres, QSize(375, 300)};
}

LvOsmScaleRenderer rendererJustAbove(double longestKilometres)
{
    double pixels = 300.0 / longestKilometres;
    while (300.0 / pixels <= longestKilometres) {
        pixels = std::nextafter(pixels, 0.0);
    }
    return {pixels, wideMap};
}

QImage mapImage(const QSize& size)
{
    QImage image(size, QImage::Format_ARGB32_Premultiplied);
    image.fill(QColor(170, 211, 223));
    return image;
}

QImage transparentImage(const QSize& size)
{
    QImage image(size, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    return image;
}

/// The smallest rectangle around all pixels that are not fully transparent.
QRect paintedRect(const QImage& image)
{
    QRect rect;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            if (qAlpha(image.pixel(x, y)) > 0) {
                rect |= QRect(x, y, 1, 1);
            }
        }
    }
    return rect;
}

} // namespace

class tst_LvOsmScaleRenderer : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void constants();
    void shownKilometers_data();
    void shownKilometers();
    void limit_data();
    void limit();
    void scaleText_data();
    void scaleText();
    void font();
    void textSize();
    void strokeLength_data();
    void strokeLength();
    void rectangles_data();
    void rectangles();
    void height_data();
    void height();
    void placeholder();
    void placeholderBelowATenth();
    void withoutScale();
    void pictures_data();
    void pictures();
};

void tst_LvOsmScaleRenderer::constants()
{
    QCOMPARE(LvOsmScaleRenderer::theMaximumWidth.value(), 300.0);
    QCOMPARE(LvOsmScaleRenderer::semiOpaqueWhite, QColor(225, 225, 225, 180));
    QCOMPARE(LvOsmScaleRenderer::semiOpaqueBlack, QColor(0, 0, 0, 180));
}

void tst_LvOsmScaleRenderer::shownKilometers_data()
{
    QTest::addColumn<double>("longest"); // kilometres
    QTest::addColumn<bool>("justAbove");
    QTest::addColumn<double>("shown");

    const QList<double> rungs{0.001, 0.0025, 0.005,  0.01,   0.025,  0.05,    0.1,     0.25,
                              0.5,   1.0,    2.5,    5.0,    10.0,   25.0,    50.0,    100.0,
                              250.0, 500.0,  1000.0, 2500.0, 5000.0, 10000.0, 25000.0, 50000.0};
    for (qsizetype i = 0; i < rungs.count(); ++i) {
        const double below = i == 0 ? rungs.front() : rungs.at(i - 1);
        const double shownBelow = below == 0.01 ? 0.010000000000000002 : below;
        const double shown = rungs.at(i) == 0.01 ? 0.010000000000000002 : rungs.at(i);
        QTest::addRow("exactly %g", rungs.at(i)) << rungs.at(i) << false << shownBelow;
        QTest::addRow("just above %g", rungs.at(i)) << rungs.at(i) << true << shown;
    }
    QTest::newRow("below the first rung") << 0.0005 << false << 0.001;
    QTest::newRow("between the first two rungs") << 0.002 << false << 0.001;
    QTest::newRow("limit of 15 km") << 15.0 << false << 10.0;
    QTest::newRow("limit of 0.8 km") << 0.8 << false << 0.5;
    QTest::newRow("limit of 1.2 km") << 1.2 << false << 1.0;
    QTest::newRow("limit of 3 km") << 3.0 << false << 2.5;
    QTest::newRow("end of the ladder") << 100000.0 << false << 50000.0;
    QTest::newRow("beyond the ladder") << 150000.0 << false << 150000.0;
    QTest::newRow("beyond the ladder, not rounded") << 123456.75 << false << 123456.75;
}

void tst_LvOsmScaleRenderer::shownKilometers()
{
    QFETCH(const double, longest);
    QFETCH(const bool, justAbove);
    QFETCH(const double, shown);

    const LvOsmScaleRenderer renderer = justAbove ? rendererJustAbove(longest) : rendererFor(longest);
    if (justAbove) {
        QVERIFY(renderer.maximumPaintFactor() > longest);
    } else {
        QVERIFY(renderer.maximumPaintFactor() == longest);
    }
    QVERIFY2(renderer.shownKilometers() == shown,
             qPrintable(QString::number(renderer.shownKilometers(), 'g', 17)));
}

void tst_LvOsmScaleRenderer::limit_data()
{
    QTest::addColumn<int>("width");
    QTest::addColumn<double>("pixels");

    QTest::newRow("two thirds are rounded down") << 100 << 66.0;
    QTest::newRow("two thirds just below the maximum") << 449 << 299.0;
    QTest::newRow("two thirds equal to the maximum") << 450 << 300.0;
    QTest::newRow("two thirds above the maximum") << 900 << 300.0;
    QTest::newRow("no width") << 0 << 0.0;
}

void tst_LvOsmScaleRenderer::limit()
{
    QFETCH(const int, width);
    QFETCH(const double, pixels);

    const LvOsmScaleRenderer renderer(4.0, QSize(width, 100));
    QVERIFY(renderer.maximumPaintFactor() == pixels / 4.0);
}

void tst_LvOsmScaleRenderer::scaleText_data()
{
    QTest::addColumn<double>("longest");
    QTest::addColumn<QString>("text");

    QTest::newRow("one metre") << 0.002 << "1 m";
    QTest::newRow("two and a half metres round away from zero") << 0.004 << "3 m";
    QTest::newRow("ten metres") << 0.02 << "10 m";
    QTest::newRow("metres") << 0.8 << "500 m";
    QTest::newRow("one kilometre") << 1.2 << "1 km";
    QTest::newRow("fraction of a kilometre") << 3.0 << "2.5 km";
    QTest::newRow("ten kilometres") << 15.0 << "10 km";
    QTest::newRow("last rung") << 75000.0 << "50000 km";
    QTest::newRow("unrounded length in six digits") << 123456.75 << "123457 km";
    QTest::newRow("unrounded length with an exponent") << 1250000.0 << "1.25e+06 km";
}

void tst_LvOsmScaleRenderer::scaleText()
{
    QFETCH(const double, longest);
    QFETCH(const QString, text);

    QCOMPARE(rendererFor(longest).scaleText(), text);
}

void tst_LvOsmScaleRenderer::font()
{
    const QFont font = LvOsmScaleRenderer(20.0, wideMap).textFont(1.5);
    QCOMPARE(font.family(), QStringLiteral("Arial"));
    QCOMPARE(font.pointSizeF(), 36.0);
}

void tst_LvOsmScaleRenderer::textSize()
{
    const LvOsmScaleRenderer renderer(20.0, wideMap);
    const QSize measured =
        QFontMetrics(renderer.textFont(1.0)).size(Qt::TextSingleLine, QStringLiteral("10 km"));
    QCOMPARE(renderer.textSize(1.0), QSizeF(measured.width() + 20, measured.height() + 5));
    // Not measured anew for another factor.
    QCOMPARE(renderer.textSize(0.3), QSizeF((measured.width() + 20) * 0.3, (measured.height() + 5) * 0.3));
}

void tst_LvOsmScaleRenderer::strokeLength_data()
{
    QTest::addColumn<double>("pixelsPerKilometre");
    QTest::addColumn<double>("factor");
    QTest::addColumn<double>("pixels");

    QTest::newRow("10 km at 20 pixels each") << 20.0 << 1.0 << 200.0;
    QTest::newRow("grows with the factor") << 20.0 << 2.5 << 500.0;
    QTest::newRow("truncated, not rounded") << 20.19 << 1.0 << 201.0;
    QTest::newRow("truncated after the factor") << 20.19 << 10.0 << 2019.0;
    QTest::newRow("vanishes in a thumbnail") << 20.0 << 0.001 << 0.0;
}

void tst_LvOsmScaleRenderer::strokeLength()
{
    QFETCH(const double, pixelsPerKilometre);
    QFETCH(const double, factor);
    QFETCH(const double, pixels);

    const LvOsmScaleRenderer renderer(pixelsPerKilometre, wideMap);
    QVERIFY(renderer.shownKilometers() == 10.0);
    QVERIFY(renderer.strokeLength(factor) == pixels);
}

void tst_LvOsmScaleRenderer::rectangles_data()
{
    QTest::addColumn<QRect>("imageRect");
    QTest::addColumn<double>("factor");
    QTest::addColumn<QRectF>("stroke");
    QTest::addColumn<QPointF>("textBottomLeft");

    QTest::newRow("image at the origin")
        << QRect(0, 0, 900, 600) << 1.0 << QRectF(10, 570, 200, 20) << QPointF(210, 589);
    QTest::newRow("image elsewhere") << QRect(5, 7, 900, 600) << 1.0 << QRectF(15, 577, 200, 20)
                                     << QPointF(215, 596);
    QTest::newRow("twice the size") << QRect(0, 0, 900, 600) << 2.0 << QRectF(20, 540, 400, 40)
                                    << QPointF(420, 579);
    QTest::newRow("height of the bar is rounded down")
        << QRect(0, 0, 900, 600) << 1.125 << QRectF(11.25, 566.75, 225, 22) << QPointF(236.25, 587.75);
    QTest::newRow("thumbnail") << QRect(0, 0, 90, 60) << 0.0625 << QRectF(0.625, 58.375, 12, 1)
                               << QPointF(12.625, 58.375);
}

void tst_LvOsmScaleRenderer::rectangles()
{
    QFETCH(const QRect, imageRect);
    QFETCH(const double, factor);
    QFETCH(const QRectF, stroke);
    QFETCH(const QPointF, textBottomLeft);

    const LvOsmScaleRenderer renderer(20.0, wideMap);
    QCOMPARE(renderer.strokeRect(imageRect, factor), stroke);
    const QRectF text = renderer.textRect(imageRect, factor);
    QCOMPARE(text.size(), renderer.textSize(factor));
    QCOMPARE(text.bottomLeft(), textBottomLeft);
}

void tst_LvOsmScaleRenderer::height_data()
{
    QTest::addColumn<int>("excess"); // pixels by which the backdrop passes the third of the image
    QTest::addColumn<bool>("lifted");

    QTest::newRow("backdrop ends at a third") << 0 << false;
    QTest::newRow("backdrop passes a third") << 1 << true;
}

void tst_LvOsmScaleRenderer::height()
{
    QFETCH(const int, excess);
    QFETCH(const bool, lifted);

    const LvOsmScaleRenderer renderer(20.0, wideMap);
    const QSizeF textSize = renderer.textSize(1.0);
    const int right = 10 + 200 + qRound(textSize.width());
    const int width = 3 * (right - excess) + 2; // the third is rounded down
    QImage image = transparentImage(QSize(width, 400));
    renderer.renderScale(&image, 1.0);

    // From the top of the text to the bottom of the bar one row below.
    const double backdropHeight = textSize.height() + 1.0;
    const double bottom = lifted ? 390.0 - 1.5 * backdropHeight : 390.0;
    const QRect painted = paintedRect(image);
    QCOMPARE(painted.left(), 0);
    QVERIFY(std::abs(painted.right() - right) <= 1);
    // The outline is one pixel wide, so half a pixel of it lies outside.
    QVERIFY2(std::abs(painted.bottom() + 1 - bottom) <= 1.0, qPrintable(QString::number(painted.bottom())));
    QVERIFY(std::abs(painted.top() - (bottom - backdropHeight)) <= 1.0);
}

void tst_LvOsmScaleRenderer::placeholder()
{
    const LvOsmScaleRenderer renderer(20.0, wideMap);
    const double factor = 0.05;
    QImage image = transparentImage(QSize(200, 100));
    renderer.renderScale(&image, factor);

    const QRectF text = renderer.textRect(image.rect(), factor);
    QRectF backdrop = text | renderer.strokeRect(image.rect(), factor);
    backdrop.setLeft(0.0);
    QVERIFY(backdrop.right() < 200 / 3); // not lifted
    // A plain box: its left end is not rounded.
    const int lineY = static_cast<int>(text.center().y());
    const auto inside = static_cast<int>(backdrop.bottom() - 1.0);
    QVERIFY(inside != lineY);
    QCOMPARE(qAlpha(image.pixel(0, inside)), 180);
    QCOMPARE(image.pixelColor(0, inside).red(), 225);
    // The line starts in the middle of the box: no black in the left half, some in the right one.
    const int middle = static_cast<int>(backdrop.center().x());
    int darkPixelsLeft = 0;
    int darkPixelsRight = 0;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            const QRgb pixel = image.pixel(x, y);
            if (qAlpha(pixel) > 180) {
                (x < middle - 1 ? darkPixelsLeft : darkPixelsRight) += 1;
                QVERIFY(std::abs(y - lineY) <= 1);
            }
        }
    }
    QCOMPARE(darkPixelsLeft, 0);
    QVERIFY(darkPixelsRight > 0);
}

void tst_LvOsmScaleRenderer::placeholderBelowATenth()
{
    const LvOsmScaleRenderer renderer(20.0, wideMap);
    // Only the bar reaches into the left half, the line of the placeholder does not.
    const auto isBarDrawn = [&renderer](double factor) {
        QImage image = transparentImage(QSize(300, 100));
        renderer.renderScale(&image, factor);
        const QRectF stroke = renderer.strokeRect(image.rect(), factor);
        int strongest = 0;
        for (int y = 0; y < image.height(); ++y) {
            strongest =
                std::max(strongest, qAlpha(image.pixel(static_cast<int>(stroke.center().x()) - 5, y)));
        }
        return strongest > 180;
    };
    QVERIFY(!isBarDrawn(0.0999));
    QVERIFY(isBarDrawn(0.1));
}

void tst_LvOsmScaleRenderer::withoutScale()
{
    // No scale is known: nothing is drawn, whatever the factor.
    for (const double pixelsPerKilometre : {0.0, std::numeric_limits<double>::quiet_NaN()}) {
        for (const double factor : {1.0, 0.05}) {
            QImage image = transparentImage(QSize(300, 100));
            LvOsmScaleRenderer(pixelsPerKilometre, image.size()).renderScale(&image, factor);
            QVERIFY(paintedRect(image).isEmpty());
        }
    }
}

void tst_LvOsmScaleRenderer::pictures_data()
{
    QTest::addColumn<double>("pixelsPerKilometre");
    QTest::addColumn<QSize>("size");
    QTest::addColumn<double>("factor");

    QTest::newRow("scale-short") << 40.0 << QSize(960, 120) << 1.0;
    QTest::newRow("scale-lifted") << 20.0 << QSize(600, 200) << 1.0;
    QTest::newRow("scale-metres-double") << 320.0 << QSize(1200, 240) << 2.0;
    QTest::newRow("scale-smallest-text") << 20.0 << QSize(120, 40) << 0.1;
    QTest::newRow("scale-thumbnail") << 20.0 << QSize(120, 40) << 0.09;
}

void tst_LvOsmScaleRenderer::pictures()
{
    QFETCH(const double, pixelsPerKilometre);
    QFETCH(const QSize, size);
    QFETCH(const double, factor);

    QImage image = mapImage(size);
    LvOsmScaleRenderer(pixelsPerKilometre, wideMap).renderScale(&image, factor);
    QVERIFY(LvTest::matchesGolden(image, QString::fromLatin1(QTest::currentDataTag())));
}

LV_TEST_MAIN(tst_LvOsmScaleRenderer)
#include "tst_LvOsmScaleRenderer.moc"
