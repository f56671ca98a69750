#include "LvGPXMarkerShape.h"
#include "LvTest.h"

#include <QDomDocument>
#include <QPaintDevice>
#include <QPaintEngine>
#include <QPainter>
#include <QPainterPath>

#include <cmath>

namespace
{

constexpr double tolerancePixels = 1e-9;

struct Drawn {
    QString kind;
    QPolygonF points;
    QRectF rect;
    QPen pen;
    QBrush brush;
    bool antialiasing = false;
    bool winding = false;
};

// Keeps what is drawn as numbers: the figure, pen and brush.
class RecordingEngine : public QPaintEngine
{
public:
    RecordingEngine()
        : QPaintEngine(AllFeatures)
    {
    }

    bool begin(QPaintDevice* /*device*/) override { return true; }

    bool end() override { return true; }

    [[nodiscard]] Type type() const override { return User; }

    void updateState(const QPaintEngineState& /*state*/) override { }

    void drawPixmap(const QRectF& rect, const QPixmap& /*pixmap*/, const QRectF& /*source*/) override
    {
        add("pixmap", {}, rect);
    }

    void drawPath(const QPainterPath& path) override
    {
        add("path", path.toFillPolygon(), path.boundingRect());
    }

    void drawPolygon(const QPointF* points, int count, PolygonDrawMode mode) override
    {
        add("polygon", QPolygonF(QList<QPointF>(points, points + count)), {});
        drawn.last().winding = mode == WindingMode;
    }

    void drawRects(const QRectF* rects, int count) override
    {
        for (int i = 0; i < count; ++i) {
            add("rect", {}, rects[i]);
        }
    }

    void drawEllipse(const QRectF& rect) override { add("ellipse", {}, rect); }

    QList<Drawn> drawn;

private:
    void add(const char* kind, const QPolygonF& points, const QRectF& rect)
    {
        drawn.append({QString::fromLatin1(kind), points, rect, painter()->pen(), painter()->brush(),
                      painter()->testRenderHint(QPainter::Antialiasing), false});
    }
};

class Recorder : public QPaintDevice
{
public:
    [[nodiscard]] QPaintEngine* paintEngine() const override { return &myEngine; }

    [[nodiscard]] const QList<Drawn>& drawn() const { return myEngine.drawn; }

protected:
    [[nodiscard]] int metric(PaintDeviceMetric metric) const override
    {
        switch (metric) {
        case PdmWidth:
        case PdmHeight:
            return 1000;
        case PdmDevicePixelRatio:
            return 1;
        case PdmDevicePixelRatioScaled:
            return static_cast<int>(devicePixelRatioFScale());
        default:
            return 96; // dots per inch
        }
    }

private:
    mutable RecordingEngine myEngine;
};

QPen linePen(double width)
{
    return QPen(QBrush(QColor(200, 0, 0), Qt::SolidPattern), width, Qt::SolidLine, Qt::SquareCap,
                Qt::BevelJoin);
}

QList<Drawn> draw(const LvGPXMarkerShape& marker, double penWidth, const QPointF& center = QPointF(100, 50),
                  double radiusX = 20, double radiusY = 10)
{
    Recorder recorder;
    QPainter painter(&recorder);
    painter.setPen(linePen(penWidth));
    painter.setBrush(QColor(0, 0, 200));
    marker.draw(&painter, center, radiusX, radiusY);
    return recorder.drawn();
}

bool samePoints(const QPolygonF& actual, const QPolygonF& expected)
{
    if (actual.size() != expected.size()) {
        qWarning() << actual << "instead of" << expected;
        return false;
    }
    for (qsizetype i = 0; i < actual.size(); ++i) {
        const QPointF distance = actual.at(i) - expected.at(i);
        if (std::abs(distance.x()) > tolerancePixels || std::abs(distance.y()) > tolerancePixels) {
            qWarning() << "point" << i << actual.at(i) << "instead of" << expected.at(i);
            return false;
        }
    }
    return true;
}

QList<int> numbers(const QList<LvGPXMarkerShape>& markers)
{
    QList<int> result;
    for (const LvGPXMarkerShape& marker : markers) {
        result.append(static_cast<int>(marker.value()));
    }
    return result;
}

} // namespace

class tst_LvGPXMarkerShape : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void construction();
    void keys_data();
    void keys();
    void combinations_data();
    void combinations();
    void lists();
    void fromXml_data();
    void fromXml();
    void toXml();
    void targetRect();
    void outline_data();
    void outline();
    void thinPen_data();
    void thinPen();
    void figures_data();
    void figures();
    void cross();
    void rhombus();
    void block();
    void stars_data();
    void stars();
    void starWithoutRays();
    void painterIsRestored();
    void image_data();
    void image();
    void imageCentre();
    void icons_data();
    void icons();
    void pictures_data();
    void pictures();
};

void tst_LvGPXMarkerShape::construction()
{
    QVERIFY(LvGPXMarkerShape() == LvGPXMarkerShapeEnum::unknown);
    QVERIFY(LvGPXMarkerShape(64) == LvGPXMarkerShapeEnum::rhombus);
    QVERIFY(LvGPXMarkerShape(0x80000000U).isValid());
    QVERIFY(LvGPXMarkerShape("STAR6,DISK") == LvGPXMarkerShape(129));
    QVERIFY(LvGPXMarkerShape("  circle ") == LvGPXMarkerShape(2));
    QVERIFY(LvGPXMarkerShape("disk,,circle") == LvGPXMarkerShape(3));
    QVERIFY(LvGPXMarkerShape("") == LvGPXMarkerShape(0));
    QVERIFY(LvGPXMarkerShape("nonsense") == LvGPXMarkerShape(0));
}

void tst_LvGPXMarkerShape::keys_data()
{
    QTest::addColumn<int>("value");
    QTest::addColumn<QString>("key");
    QTest::newRow("unknown") << 0 << "unknown";
    QTest::newRow("disk") << 1 << "disk";
    QTest::newRow("circle") << 2 << "circle";
    QTest::newRow("x") << 8 << "x";
    QTest::newRow("block") << 16 << "block";
    QTest::newRow("rect") << 32 << "rect";
    QTest::newRow("rhombus") << 64 << "rhombus";
    QTest::newRow("star6") << 128 << "star6";
    QTest::newRow("star9") << 256 << "star9";
    QTest::newRow("star12") << 512 << "star12";
    QTest::newRow("arrow") << 1024 << "arrow";
}

void tst_LvGPXMarkerShape::keys()
{
    QFETCH(int, value);
    QFETCH(QString, key);
    const LvGPXMarkerShape marker(value);
    const auto* table = marker.enumToStringTable();
    QVERIFY(table->decode(key) == marker.value());
    QCOMPARE(table->toString(marker.value()), key);
    QCOMPARE(table->encodeCSV(marker.value()), value == 0 ? QString() : key);
}

void tst_LvGPXMarkerShape::combinations_data()
{
    QTest::addColumn<quint32>("value");
    QTest::addColumn<QString>("text");
    QTest::newRow("disk and arrow") << 1025U << "disk, arrow";
    QTest::newRow("nameless flag") << 4U << "";
    QTest::newRow("nameless flag between") << 7U << "disk, circle, ";
    QTest::newRow("bit 31") << 0x80000001U << "";
}

void tst_LvGPXMarkerShape::combinations()
{
    QFETCH(quint32, value);
    QFETCH(QString, text);
    const LvGPXMarkerShape marker(value);
    QCOMPARE(marker.enumToStringTable()->encodeCSV(marker.value()), text);
}

void tst_LvGPXMarkerShape::lists()
{
    QCOMPARE(numbers(LvGPXMarkerShape::allPointShapes()), (QList<int>{1, 2, 128, 256, 512, 8, 16, 32, 64}));
    QCOMPARE(numbers(LvGPXMarkerShape::allLineStringShapes()), (QList<int>{0, 1024}));
    QCOMPARE(LvGPXMarkerShape::allPointShapes().constData(), LvGPXMarkerShape::allPointShapes().constData());
}

void tst_LvGPXMarkerShape::fromXml_data()
{
    QTest::addColumn<QString>("xml");
    QTest::addColumn<int>("value");
    QTest::newRow("missing") << "<c/>" << 1;
    QTest::newRow("empty") << "<c><markerShape/></c>" << 0;
    QTest::newRow("star") << "<c><markerShape>Star9</markerShape></c>" << 256;
    QTest::newRow("two") << "<c><markerShape>disk, arrow</markerShape></c>" << 1025;
}

void tst_LvGPXMarkerShape::fromXml()
{
    QFETCH(QString, xml);
    QFETCH(int, value);
    QDomDocument document;
    QVERIFY(document.setContent(xml));
    QVERIFY(LvGPXMarkerShape::fromXml(document.documentElement()) == LvGPXMarkerShape(value));
}

void tst_LvGPXMarkerShape::toXml()
{
    QDomDocument document;
    QDomElement parent = document.createElement("c");
    LvGPXMarkerShape(1025).toXml(parent);
    QCOMPARE(parent.childNodes().size(), 1);
    QCOMPARE(parent.firstChildElement("markerShape").text(), QStringLiteral("disk, arrow"));
}

void tst_LvGPXMarkerShape::targetRect()
{
    QCOMPARE(LvGPXMarkerShape(2).targetRect(QPointF(10, 20), 3, 4.5), QRectF(7, 15.5, 6, 9));
}

void tst_LvGPXMarkerShape::outline_data()
{
    QTest::addColumn<int>("marker");
    QTest::addColumn<double>("penWidth");
    QTest::addColumn<QRectF>("rect");
    QTest::newRow("circle, pen of 10") << 2 << 10.0 << QRectF(76, 36, 48, 28);
    QTest::newRow("circle, exact width of the pen counts") << 2 << 2.25 << QRectF(79.1, 39.1, 41.8, 21.8);
    QTest::newRow("circle without pen width") << 2 << 0.0 << QRectF(80, 40, 40, 20);
    QTest::newRow("disk does not grow") << 1 << 10.0 << QRectF(80, 40, 40, 20);
    QTest::newRow("disk and circle does not grow") << 3 << 10.0 << QRectF(80, 40, 40, 20);
    QTest::newRow("arrow grows") << 1024 << 10.0 << QRectF(76, 36, 48, 28);
    QTest::newRow("unknown grows") << 0 << 10.0 << QRectF(76, 36, 48, 28);
    QTest::newRow("nameless flag grows") << 4 << 10.0 << QRectF(76, 36, 48, 28);
    QTest::newRow("block and arrow does not grow") << 1040 << 10.0 << QRectF(80, 40, 40, 20);
}

void tst_LvGPXMarkerShape::outline()
{
    QFETCH(int, marker);
    QFETCH(double, penWidth);
    QFETCH(QRectF, rect);
    const QList<Drawn> drawn = draw(LvGPXMarkerShape(marker), penWidth);
    QCOMPARE(drawn.size(), 1);
    QCOMPARE(drawn.first().kind, QStringLiteral("ellipse"));
    QVERIFY(samePoints(QPolygonF(drawn.first().rect), QPolygonF(rect)));
    QVERIFY(drawn.first().antialiasing);
    QCOMPARE(drawn.first().brush, QBrush(QColor(0, 0, 200)));
}

void tst_LvGPXMarkerShape::thinPen_data()
{
    QTest::addColumn<int>("marker");
    QTest::addColumn<double>("penWidth");
    QTest::addColumn<double>("width");
    QTest::addColumn<bool>("cosmetic");
    QTest::newRow("circle, 9") << 2 << 9.0 << 1.0 << true;
    QTest::newRow("circle, 9.4 counts as 9") << 2 << 9.4 << 1.0 << true;
    QTest::newRow("circle, 9.6 counts as 10") << 2 << 9.6 << 2.0 << false;
    QTest::newRow("circle, 10") << 2 << 10.0 << 2.0 << false;
    QTest::newRow("circle, 14 divides to a whole number") << 2 << 14.0 << 2.0 << false;
    QTest::newRow("circle, 15") << 2 << 15.0 << 3.0 << false;
    QTest::newRow("circle, 0") << 2 << 0.0 << 1.0 << true;
    QTest::newRow("disk keeps 10") << 1 << 10.0 << 10.0 << false;
    QTest::newRow("disk keeps 2.5") << 1 << 2.5 << 2.5 << false;
    QTest::newRow("disk and circle keeps its pen") << 3 << 10.0 << 10.0 << false;
    QTest::newRow("unknown is outlined thinly") << 0 << 10.0 << 2.0 << false;
}

void tst_LvGPXMarkerShape::thinPen()
{
    QFETCH(int, marker);
    QFETCH(double, penWidth);
    QFETCH(double, width);
    QFETCH(bool, cosmetic);
    const QList<Drawn> drawn = draw(LvGPXMarkerShape(marker), penWidth);
    QCOMPARE(drawn.size(), 1);
    const QPen pen = drawn.first().pen;
    QCOMPARE(pen.widthF(), width);
    QCOMPARE(pen.isCosmetic(), cosmetic);
    QCOMPARE(pen.color(), QColor(200, 0, 0));
    QCOMPARE(pen.capStyle(), Qt::SquareCap);
    QCOMPARE(pen.joinStyle(), Qt::BevelJoin);
}

void tst_LvGPXMarkerShape::figures_data()
{
    QTest::addColumn<int>("marker");
    QTest::addColumn<QStringList>("kinds");
    QTest::newRow("disk") << 1 << QStringList{"ellipse"};
    QTest::newRow("circle") << 2 << QStringList{"ellipse"};
    QTest::newRow("x") << 8 << QStringList{"path", "path"};
    QTest::newRow("block") << 16 << QStringList{"rect", "rect"};
    QTest::newRow("rect") << 32 << QStringList{"rect", "rect"};
    QTest::newRow("rhombus") << 64 << QStringList{"path", "path"};
    QTest::newRow("star6") << 128 << QStringList{"polygon"};
    QTest::newRow("star9") << 256 << QStringList{"polygon"};
    QTest::newRow("star12") << 512 << QStringList{"polygon"};
    QTest::newRow("arrow") << 1024 << QStringList{"ellipse"};
    QTest::newRow("combination of figures") << 72 << QStringList{"ellipse"};
}

void tst_LvGPXMarkerShape::figures()
{
    QFETCH(int, marker);
    QFETCH(QStringList, kinds);
    QStringList actual;
    for (const Drawn& drawn : draw(LvGPXMarkerShape(marker), 1)) {
        actual.append(drawn.kind);
    }
    QCOMPARE(actual, kinds);
}

void tst_LvGPXMarkerShape::cross()
{
    // 33 by 22 pixels: the notches are 6 and 4 whole pixels, the inner corners stand at 6.6 and 4.4.
    const QList<Drawn> drawn = draw(LvGPXMarkerShape(8), 0, QPointF(116.5, 61), 16.5, 11);
    const QPolygonF expected{{106, 50},     {100, 54},     {109.9, 61}, {100, 68},   {106, 72},
                             {116.5, 65.4}, {127, 72},     {133, 68},   {123.1, 61}, {133, 54},
                             {127, 50},     {116.5, 56.6}, {106, 50}};
    QCOMPARE(drawn.size(), 2);
    QVERIFY(samePoints(drawn.first().points, expected));
    QVERIFY(samePoints(drawn.last().points, expected));
    QCOMPARE(drawn.first().pen.style(), Qt::NoPen); // filled first, then outlined
    QCOMPARE(drawn.first().brush, QBrush(QColor(0, 0, 200)));
    QCOMPARE(drawn.last().pen.color(), QColor(200, 0, 0));
    QCOMPARE(drawn.last().brush, QBrush(QColor(0, 0, 200))); // a translucent area is covered by both
}

void tst_LvGPXMarkerShape::rhombus()
{
    const QList<Drawn> drawn = draw(LvGPXMarkerShape(64), 0);
    const QPolygonF expected{{100, 40}, {80, 50}, {100, 60}, {120, 50}, {100, 40}};
    QCOMPARE(drawn.size(), 2);
    QVERIFY(samePoints(drawn.first().points, expected));
    QVERIFY(samePoints(drawn.last().points, expected));
    QCOMPARE(drawn.first().pen.style(), Qt::NoPen);
    QCOMPARE(drawn.last().pen.color(), QColor(200, 0, 0));
}

void tst_LvGPXMarkerShape::block()
{
    const QList<Drawn> drawn = draw(LvGPXMarkerShape(16), 12);
    QCOMPARE(drawn.size(), 2);
    QCOMPARE(drawn.first().rect, QRectF(80, 40, 40, 20));
    QCOMPARE(drawn.first().pen.style(), Qt::NoPen);
    QCOMPARE(drawn.first().brush.color(), QColor(0, 0, 200));
    QCOMPARE(drawn.last().rect, QRectF(80, 40, 40, 20));
    QCOMPARE(drawn.last().pen.widthF(), 12.0);
    const QList<Drawn> rect = draw(LvGPXMarkerShape(32), 12);
    QVERIFY(samePoints(QPolygonF(rect.last().rect), QPolygonF(QRectF(75.2, 35.2, 49.6, 29.6))));
    QCOMPARE(rect.last().pen.widthF(), 2.0);
}

void tst_LvGPXMarkerShape::stars_data()
{
    QTest::addColumn<int>("marker");
    QTest::addColumn<int>("rays");
    QTest::addColumn<double>("innerFactor");
    QTest::newRow("star6") << 128 << 6 << 0.5;
    QTest::newRow("star9") << 256 << 9 << 0.3;
    QTest::newRow("star12") << 512 << 12 << 0.7;
}

void tst_LvGPXMarkerShape::stars()
{
    QFETCH(int, marker);
    QFETCH(int, rays);
    QFETCH(double, innerFactor);
    const QList<Drawn> drawn = draw(LvGPXMarkerShape(marker), 0);
    QCOMPARE(drawn.size(), 1);
    const QPolygonF points = drawn.first().points;
    QCOMPARE(points.size(), 2 * rays + 1);
    QCOMPARE(points.first(), points.last());
    QVERIFY(drawn.first().winding);
    QCOMPARE(points.first(), QPointF(100, 50 + 10 * innerFactor)); // straight below the centre
    QPolygonF expected;
    for (int i = 0; i <= 2 * rays; ++i) {
        const double degrees = 180.0 * i / rays;
        const double factor = i % 2 == 0 ? innerFactor : 1.0;
        expected.append(QPointF(100 + 20 * factor * std::sin(qDegreesToRadians(degrees)),
                                50 + 10 * factor * std::cos(qDegreesToRadians(degrees))));
    }
    QVERIFY(samePoints(points, expected));
}

void tst_LvGPXMarkerShape::starWithoutRays()
{
    for (const int rays : {0, -1, -100}) {
        Recorder recorder;
        QPainter painter(&recorder);
        LvGPXMarkerShape().drawStar(&painter, QRectF(0, 0, 10, 10), rays, 0.5);
        for (const Drawn& drawn : recorder.drawn()) { // the toolkit may leave out a polygon of one point
            QCOMPARE(drawn.points, QPolygonF({QPointF(5, 7.5)}));
        }
    }
    Recorder recorder;
    QPainter painter(&recorder);
    LvGPXMarkerShape().drawStar(&painter, QRectF(0, 0, 10, 10), 1, 0.5);
    QCOMPARE(recorder.drawn().size(), 1);
    QVERIFY(samePoints(recorder.drawn().first().points, {{5, 7.5}, {5, 0}, {5, 7.5}}));
}

void tst_LvGPXMarkerShape::painterIsRestored()
{
    Recorder recorder;
    QPainter painter(&recorder);
    const QPen pen = linePen(7.5);
    painter.setPen(pen);
    painter.setBrush(Qt::green);
    for (const int marker : {0, 1, 2, 3, 4, 8, 16, 32, 64, 128, 256, 512, 1024}) {
        LvGPXMarkerShape(marker).draw(&painter, QPointF(20, 20), 5, 5);
        QCOMPARE(painter.pen(), pen);
        QCOMPARE(painter.brush(), QBrush(Qt::green));
        QVERIFY(!painter.testRenderHint(QPainter::Antialiasing));
    }
}

void tst_LvGPXMarkerShape::image_data()
{
    QTest::addColumn<QSize>("size");
    QTest::addColumn<int>("margin");
    QTest::addColumn<QSize>("imageSize");
    QTest::newRow("icon") << QSize(20, 20) << 12 << QSize(32, 32);
    QTest::newRow("no square, odd margin") << QSize(31, 16) << 7 << QSize(38, 23);
    QTest::newRow("no margin") << QSize(8, 8) << 0 << QSize(8, 8);
    QTest::newRow("nothing") << QSize(0, 0) << 0 << QSize(0, 0);
}

void tst_LvGPXMarkerShape::image()
{
    QFETCH(QSize, size);
    QFETCH(int, margin);
    QFETCH(QSize, imageSize);
    const QImage image = LvGPXMarkerShape(2).createImage(size, margin, Qt::red, Qt::blue);
    QCOMPARE(image.size(), imageSize);
    if (!image.isNull()) {
        QCOMPARE(image.format(), QImage::Format_ARGB32_Premultiplied);
    }
}

void tst_LvGPXMarkerShape::imageCentre()
{
    // 21 pixels: centre and radius are 11, behind a margin of 7 / 2 = 3 pixels. A block reaches from 3 to 25
    // and its pen of 5 pixels 2.5 further.
    const QImage image = LvGPXMarkerShape(16).createImage(QSize(21, 21), 7, Qt::red, Qt::blue);
    QCOMPARE(image.size(), QSize(28, 28));
    QCOMPARE(image.pixelColor(14, 14), QColor(Qt::blue));
    QCOMPARE(image.pixelColor(14, 1), QColor(Qt::red)); // 0.5 to 5.5
    QCOMPARE(image.pixelColor(14, 4), QColor(Qt::red));
    QCOMPARE(image.pixelColor(14, 6), QColor(Qt::blue));
    QCOMPARE(image.pixelColor(14, 21), QColor(Qt::blue));
    QCOMPARE(image.pixelColor(14, 23), QColor(Qt::red)); // 22.5 to 27.5
    QCOMPARE(image.pixelColor(14, 26), QColor(Qt::red));
    QCOMPARE(image.pixelColor(0, 0).alpha() < 255, true);
    const QImage transparent = LvGPXMarkerShape(2).createImage(QSize(20, 20), 12, Qt::red, Qt::blue);
    QCOMPARE(transparent.pixel(0, 0), 0U);
    QCOMPARE(transparent.pixelColor(16, 16), QColor(Qt::blue));
    // Radius 10 and 0.4 of the pen of 5 make 12: the outline of one pixel stands 4 pixels from the edge.
    QVERIFY(transparent.pixelColor(16, 4).red() > 100);
    QVERIFY(transparent.pixelColor(16, 2).alpha() == 0);
}

void tst_LvGPXMarkerShape::icons_data()
{
    QTest::addColumn<int>("marker");
    QTest::addColumn<bool>("isNull");
    QTest::newRow("unknown") << 0 << true;
    QTest::newRow("arrow") << 1024 << true;
    QTest::newRow("arrow and disk") << 1025 << true;
    QTest::newRow("disk") << 1 << false;
    QTest::newRow("rhombus") << 64 << false;
    QTest::newRow("combination") << 3 << false;
}

void tst_LvGPXMarkerShape::icons()
{
    QFETCH(int, marker);
    QFETCH(bool, isNull);
    const QIcon icon = LvGPXMarkerShape(marker).createIcon(Qt::red, Qt::blue);
    QCOMPARE(icon.isNull(), isNull);
    if (!isNull) {
        QCOMPARE(icon.availableSizes(), QList<QSize>{QSize(32, 32)});
        QCOMPARE(icon.pixmap(32, 32).toImage().convertToFormat(QImage::Format_ARGB32_Premultiplied),
                 LvGPXMarkerShape(marker).createImage(QSize(20, 20), 12, Qt::red, Qt::blue));
    }
}

void tst_LvGPXMarkerShape::pictures_data()
{
    QTest::addColumn<int>("marker");
    QTest::addColumn<QString>("name");
    QTest::newRow("disk") << 1 << "marker-disk";
    QTest::newRow("circle") << 2 << "marker-circle";
    QTest::newRow("disk and circle") << 3 << "marker-disk-and-circle";
    QTest::newRow("nameless flag") << 4 << "marker-nameless";
    QTest::newRow("x") << 8 << "marker-x";
    QTest::newRow("block") << 16 << "marker-block";
    QTest::newRow("rect") << 32 << "marker-rect";
    QTest::newRow("rhombus") << 64 << "marker-rhombus";
    QTest::newRow("star6") << 128 << "marker-star6";
    QTest::newRow("star9") << 256 << "marker-star9";
    QTest::newRow("star12") << 512 << "marker-star12";
    QTest::newRow("arrow") << 1024 << "marker-arrow";
}

void tst_LvGPXMarkerShape::pictures()
{
    QFETCH(int, marker);
    QFETCH(QString, name);
    // A thin pen on the left, a thick one on the right, half transparent so that overlaps show.
    QImage image(200, 90, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::white);
    QPainter painter(&image);
    painter.setBrush(QColor(252, 164, 4, 180));
    double x = 45;
    for (const double width : {5.0, 16.0}) {
        painter.setPen(QPen(QColor(0, 60, 160, 180), width, Qt::SolidLine, Qt::SquareCap, Qt::BevelJoin));
        LvGPXMarkerShape(marker).draw(&painter, QPointF(x, 45), 32, 24);
        x += 110;
    }
    painter.end();
    QVERIFY(LvTest::matchesGolden(image, name));
}

LV_TEST_MAIN(tst_LvGPXMarkerShape)
#include "tst_LvGPXMarkerShape.moc"
