// What a program outside the tree can write with the drawing classes of the installed package.

#include <QPainter>
#include <QTest>

#include <LvCopyrightRenderer.h>
#include <LvGPXTrackRenderer.h>
#include <LvMapProjection.h>
#include <LvOsmScaleRenderer.h>

namespace
{

class Renderer : public LvGPXTrackRenderer
{
public:
    Renderer(const LvGPXTrackSelection& selection, const QSize& size, double factor)
        : LvGPXTrackRenderer(selection, size, factor)
    {
    }

    QPointF project(const LvGeoPosition& position) const override
    {
        return {position.longitude().decimalDegrees() + 180.0, 90.0 - position.latitude().decimalDegrees()};
    }
};

LvGPXTrackSelection lineSelection(int options, int marker = 1)
{
    const LvGPXTrack track = LvGPXTrack::decodeKml(QStringLiteral("l"), QString(),
                                                   QStringLiteral("-90,1 0,1 90,1"), LvGPXTrackShape(4));
    const LvGPXTrackConfiguration config(QColor(255, 0, 0), LvDistance(4), QColor(0, 0, 255), LvDistance(4),
                                         LvGPXTrackDisplayOptions(options), LvGPXMarkerShape(marker),
                                         LvGPXTrackShape(4), LvPenStyle(1), 100, 1);
    LvGPXTrackSelection selection;
    selection.addTrack(LvGPXConfiguredTrack(track, config));
    return selection;
}

} // namespace

class drawing : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void options();
    void paths();
    void dateLine();
    void cropping();
    void scaleBar();
    void attribution();
};

void drawing::options()
{
    const QSize size(360, 180);
    const Renderer stroked(lineSelection(1), size, 1.0);
    QCOMPARE(stroked.render(TrackRenderOption::Normal).pixelColor(180, 89), QColor(255, 0, 0));
    QCOMPARE(stroked.render(TrackRenderOption::Normal).format(), QImage::Format_ARGB32);
    QCOMPARE(stroked.renderQuickAndDirty(LvGPXTrackRenderer::Normal).format(),
             QImage::Format_ARGB32_Premultiplied);
    const Renderer hidden(lineSelection(0), size, 1.0);
    QCOMPARE(hidden.render(LvGPXTrackRenderer::TrackRenderOption::Normal).pixelColor(180, 89).alpha(), 0);
    QCOMPARE(hidden.renderForeground().pixelColor(180, 89).alpha(), 255);
    QCOMPARE(stroked.scale(2), 2.0);
    QCOMPARE(stroked.targetImageSize(), size);
    const LvGPXTrackConfiguration config = lineSelection(1).configuration(0);
    QCOMPARE(stroked.penFromTrack(config, TrackRenderOption::Normal).widthF(), 4.0);
    QCOMPARE(stroked.solidPenFromTrack(config, TrackRenderOption(7)).widthF(), 8.0);
    QCOMPARE(stroked.brushFromTrack(config, TrackRenderOption::Foreground).color(), QColor(0, 0, 255));
    QCOMPARE(stroked.adaptColor(QColor(1, 2, 3, 4), TrackRenderOption::Foreground).alpha(), 255);
    QImage image(720, 10, QImage::Format_ARGB32_Premultiplied);
    QPainter painter(&image);
    QCOMPARE(stroked.visibleShifts(&painter).min(), -3);
    QCOMPARE(stroked.visibleShifts(&painter).max(), 3);
    QCOMPARE(stroked.aroundTheWorldOffset(), QPointF(360, 0));
}

void drawing::paths()
{
    const Renderer renderer(lineSelection(1, 1024), QSize(360, 180), 1.0);
    const QPainterPath path = renderer.createPainterPath(lineSelection(1, 1024).value(0));
    QCOMPARE(path.elementCount(), 3);
    QCOMPARE(path.currentPosition(), QPointF(270, 89));
    QCOMPARE(renderer.carthesian(2, 180), QPointF(2, 0));
    QCOMPARE(renderer.movePolar(QPointF(1, 1), 2, 180), QPointF(3, 1));
    QVERIFY(qAbs(renderer.detectAngleOfPath(path)) < 1e-9);
    const LvGPXTrack dot(LvGPXTrackPoint(LvGeoPosition(1, 1), 0, QDateTime(), QString()));
    QVERIFY(renderer.createPainterPath(dot, 100, 1).isEmpty());
}

void drawing::dateLine()
{
    const Renderer renderer(LvGPXTrackSelection(), QSize(360, 180), 1.0);
    QCOMPARE(renderer.checkDateLineCrossing(LvGeoPosition(0, 179), LvGeoPosition(0, -179)), 1);
    QCOMPARE(renderer.checkDateLineCrossing(LvGeoPosition(0, -179), LvGeoPosition(0, 179)), -1);
    QCOMPARE(renderer.checkDateLineCrossing(LvGeoPosition(0, -1), LvGeoPosition(0, 1)), 0);
    const LvGPXTrack track =
        LvGPXTrack::decodeKml(QString(), QString(), QStringLiteral("170,1 -170,1"), LvGPXTrackShape(4));
    const QPainterPath path = renderer.createPainterPath(track, 100, 1);
    QCOMPARE(path.boundingRect().right(), 370.0);
}

void drawing::cropping()
{
    LvGPXTrackSelection selection = lineSelection(1);
    QImage map(360, 180, QImage::Format_RGB32);
    map.fill(Qt::green);
    QCOMPARE(Renderer(selection, map.size(), 1.0).crop(map), map);
    selection.setCroppingOpacity(0);
    const QImage cropped = Renderer(selection, map.size(), 1.0).crop(map);
    QCOMPARE(cropped.pixelColor(180, 20).alpha(), 0);
    QCOMPARE(cropped.pixelColor(180, 89), QColor(Qt::green));
}

void drawing::scaleBar()
{
    const LvOsmScaleRenderer renderer(LvDistance(20), QSize(900, 600));
    QCOMPARE(renderer.shownKilometers(), 10.0);
    QCOMPARE(renderer.scaleText(), QStringLiteral("10 km"));
    QCOMPARE(renderer.strokeLength(1.0), 200.0);
    const auto text = [](double k) {
        return LvOsmScaleRenderer(LvDistance(300.0 / k), QSize(900, 600)).scaleText();
    };
    QCOMPARE(text(0.8), QStringLiteral("500 m"));
    QCOMPARE(text(1.2), QStringLiteral("1 km"));
    QCOMPARE(text(3), QStringLiteral("2.5 km"));
    QCOMPARE(text(0.02), QStringLiteral("10 m"));
    QCOMPARE(LvOsmScaleRenderer(LvDistance(300.0 / 0.02), QSize(900, 600)).shownKilometers(), 0.1 * 0.1);
    QImage image(900, 600, QImage::Format_ARGB32);
    image.fill(Qt::white);
    renderer.renderScale(&image, 1.0);
    QVERIFY(image.pixelColor(20, 580) != QColor(Qt::white) || image.pixelColor(20, 500) != QColor(Qt::white));
    QCOMPARE(LvOsmScaleRenderer::semiOpaqueWhite, QColor(225, 225, 225, 180));
    QCOMPARE(LvOsmScaleRenderer::theMaximumWidth.value(), 300.0);
}

void drawing::attribution()
{
    const LvCopyrightRenderer renderer;
    QCOMPARE(renderer.copyrightText().size(), 19);
    const QSizeF size = renderer.copyrightTextSize(1.0);
    QCOMPARE(renderer.copyrightRect(QRect(0, 0, 900, 600), 1.0).size(), size);
    QImage image(900, 600, QImage::Format_ARGB32);
    image.fill(Qt::black);
    renderer.renderCopyRight(&image, 1.0);
    QVERIFY(image.pixelColor(int(880 - size.width() / 2), int(592 - size.height())) != QColor(Qt::black));
}

QTEST_MAIN(drawing)
#include "drawing.moc"
