#include "LvMapnikPeer.h"

#include <mapnik/agg_renderer.hpp>
#include <mapnik/datasource_cache.hpp>
#include <mapnik/feature.hpp>
#include <mapnik/feature_factory.hpp>
#include <mapnik/feature_type_style.hpp>
#include <mapnik/geometry.hpp>
#include <mapnik/image.hpp>
#include <mapnik/layer.hpp>
#include <mapnik/map.hpp>
#include <mapnik/memory_datasource.hpp>
#include <mapnik/rule.hpp>
#include <mapnik/symbolizer.hpp>
#include <mapnik/symbolizer_keys.hpp>
#include <mapnik/well_known_srs.hpp>

class LvMapnikPeer::Private
{
public:
    Private(const QSize& size)
        : map(size.width(), size.height(), mapnik::MAPNIK_WEBMERCATOR_PROJ)
    {
    }

    mapnik::Map map;
};

LvMapnikPeer::LvMapnikPeer(const QList<QList<QPointF>>& lines, const QSize& size, double width, Way way)
    : myPrivate(std::make_unique<Private>(size))
{
    mapnik::parameters parameters;
    parameters["type"] = "memory";
    const auto source = std::make_shared<mapnik::memory_datasource>(parameters);
    const auto context = std::make_shared<mapnik::context_type>();
    int number = 0;
    for (const QList<QPointF>& points : lines) {
        mapnik::geometry::line_string<double> line;
        line.reserve(static_cast<size_t>(points.size()));
        for (const QPointF& point : points) {
            line.emplace_back(point.x(), point.y());
        }
        const mapnik::feature_ptr feature = mapnik::feature_factory::create(context, ++number);
        feature->set_geometry(std::move(line));
        source->push(feature);
    }

    mapnik::line_symbolizer symbolizer;
    mapnik::put(symbolizer, mapnik::keys::stroke, mapnik::color(0, 0, 255));
    mapnik::put(symbolizer, mapnik::keys::stroke_width, width);
    mapnik::put(symbolizer, mapnik::keys::stroke_linecap, mapnik::line_cap_enum(mapnik::ROUND_CAP));
    mapnik::put(symbolizer, mapnik::keys::stroke_linejoin, mapnik::line_join_enum(mapnik::ROUND_JOIN));
    mapnik::put(symbolizer, mapnik::keys::clip, way == Way::Clipping);
    if (way == Way::Simplifying) {
        mapnik::put(symbolizer, mapnik::keys::simplify_tolerance, 4.0);
    }
    mapnik::rule rule;
    rule.append(std::move(symbolizer));
    mapnik::feature_type_style style;
    style.add_rule(std::move(rule));
    myPrivate->map.insert_style("line", std::move(style));
    mapnik::layer layer("tracks", mapnik::MAPNIK_GEOGRAPHIC_PROJ);
    layer.set_datasource(source);
    layer.add_style("line");
    myPrivate->map.add_layer(layer);
}

LvMapnikPeer::~LvMapnikPeer() = default;

qint64 LvMapnikPeer::draw(const QPointF& southWest, const QPointF& northEast) const
{
    double x[] = {southWest.x(), northEast.x()};
    double y[] = {southWest.y(), northEast.y()};
    mapnik::lonlat2merc(x, y, 2);
    mapnik::Map& map = myPrivate->map;
    map.zoom_to_box(mapnik::box2d<double>(x[0], y[0], x[1], y[1]));
    mapnik::image_rgba8 image(static_cast<int>(map.width()), static_cast<int>(map.height()));
    mapnik::agg_renderer<mapnik::image_rgba8> renderer(map, image);
    renderer.apply();
    qint64 covered = 0;
    for (const mapnik::image_rgba8::pixel_type pixel : image) {
        covered += pixel == 0 ? 0 : 1;
    }
    return covered;
}
