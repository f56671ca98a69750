// Small texts that the programs read: positions as people write them, addresses of tile servers, the metadata
// of tile folders, and the numbers that make a view of the map.

#include "LvCoordinateText.h"
#include "LvFuzz.h"
#include "LvMapText.h"
#include "LvMapView.h"
#include "LvTileDirectorySource.h"
#include "LvTileUrlTemplate.h"
#include "LvTiledMapSource.h"

#include <QDir>
#include <QImage>
#include <QPainter>

#include <algorithm>
#include <cmath>

namespace
{

constexpr double textToleranceDegrees = 1e-6;
constexpr qsizetype longestAttribution = 200;
constexpr int largestSide = 30000; // of a picture that the programs write

bool isNear(const LvGeoPosition& a, const LvGeoPosition& b)
{
    return std::abs(a.latitude().decimalDegrees() - b.latitude().decimalDegrees()) < textToleranceDegrees
        && std::abs(a.longitude().decimalDegrees() - b.longitude().decimalDegrees()) < textToleranceDegrees;
}

void checkPosition(const LvGeoPosition& position)
{
    if (!position.isValid()) {
        return;
    }
    LvFuzz::expect(position.latitude().isInValidRange() && position.longitude().isInValidRange(),
                   "a position lies on the globe");
    LvFuzz::expect(isNear(LvCoordinateText::parse(position.toString(false)), position)
                       || position.latitude().decimalDegrees() == 0.0
                       || std::abs(position.latitude().decimalDegrees()) < textToleranceDegrees,
                   "what the library writes is read");
    const QString plain =
        QStringLiteral("%1 %2").arg(QString::number(position.latitude().decimalDegrees(), 'f', 10),
                                    QString::number(position.longitude().decimalDegrees(), 'f', 10));
    const LvGeoPosition read = LvCoordinateText::parse(plain);
    LvFuzz::expect(!read.isValid() || isNear(read, position), "two plain numbers are read or refused");
    LvFuzz::expect(isNear(LvCoordinateText::parse(QStringLiteral("geo:")
                                                  + plain.split(QLatin1Char(' ')).join(QLatin1Char(','))),
                          position)
                       || !LvGeoPosition::parse(plain).isValid(),
                   "an address of a place is read");
}

void checkServer(const QString& text)
{
    const LvTileUrlTemplate server(text);
    LvFuzz::expect(server.isValid() == server.errorText().isEmpty(), "either an address or a reason");
    LvFuzz::expect(server.isValid() || server.urlFor({}).isEmpty(), "what is no address has no tiles");
    if (!server.isValid()) {
        return;
    }
    for (const LvTileKey& key : {LvTileKey{}, LvTileKey{1, 0, 1}, LvTileKey{30, (1 << 30) - 1, 0}}) {
        const QUrl url = server.urlFor(key);
        LvFuzz::expect(url.isValid() && url.host() == server.host(), "every tile comes from the same server");
        LvFuzz::expect(url.scheme() == QLatin1String("https") || url.scheme() == QLatin1String("http"),
                       "tiles come from the network only");
    }
}

void checkFolder(const QByteArray& input)
{
    QDir().mkpath(LvFuzz::path(QStringLiteral("tiles/0/0")));
    LvFuzz::writeFile(QStringLiteral("tiles/metadata.json"), input);
    LvFuzz::writeFile(QStringLiteral("tiles/0/0/0.png"), input);
    LvTileDirectorySource source(LvFuzz::path(QStringLiteral("tiles")));
    LvFuzz::expect(source.isValid(), "a folder with a zoom level is a map");
    LvFuzz::expect(source.attribution().size() <= longestAttribution, "an attribution is short");
    QImage picture(16, 16, QImage::Format_ARGB32_Premultiplied);
    QPainter painter(&picture);
    source.draw(painter, LvMapView(picture.size()), 1.0);
}

/// Numbers as they stand in the options of a program.
void checkView(const QByteArray& input)
{
    const QList<QByteArray> numbers = input.left(200).split(',');
    const auto number = [&numbers](qsizetype index, double most) {
        const double value = numbers.value(index).toDouble();
        return std::isnan(value) ? 0.0 : std::clamp(value, -most, most);
    };
    const auto side = [&number](qsizetype index) {
        return std::max(1, static_cast<int>(number(index, largestSide)));
    };
    const QSize size(side(0), side(1));
    const LvGeoPositionRect box(LvLatitudeRange(number(2, 90.0), number(3, 90.0)),
                                LvLongitudeRange(number(4, 180.0), number(5, 180.0)));
    const LvMapView fitted = LvMapView::fittedTo(box, size, static_cast<int>(number(6, largestSide)));
    const LvMapView around = LvMapView::aroundCenter(LvGeoPosition(number(2, 90.0), number(4, 180.0)),
                                                     std::abs(number(6, 30.0)), size);
    for (const LvMapView& view : {fitted, around, LvMapView(size)}) {
        LvFuzz::expect(std::isfinite(view.worldSize()) && view.worldSize() > 0.999,
                       "the world is a pixel wide at least");
        const QPointF pixel = view.pixelOf(number(2, 90.0), number(4, 180.0));
        LvFuzz::expect(std::isfinite(pixel.x()) && std::isfinite(pixel.y()), "every place has a pixel");
    }
}

} // namespace

void LvFuzz::run(const QByteArray& input)
{
    const QString text = QString::fromUtf8(input);
    checkPosition(LvCoordinateText::parse(text));
    checkServer(text);
    static_cast<void>(LvTileUrlTemplate::looksLikeUrl(text));
    expect(LvMapText::plainAttribution(text).size() <= longestAttribution, "an attribution is short");
    checkFolder(input);
    checkView(input);
}
