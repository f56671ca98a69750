#include "LvMercatorTable.h"

#include "LvMapProjection.h"

#include <cmath>
#include <numbers>

LvMercatorTable::LvMercatorTable()
{
    constexpr double degree = std::numbers::pi / 180.0;
    constexpr double turn = 2.0 * std::numbers::pi;
    for (std::size_t index = 0; index < nodeCount; ++index) {
        Node& node = myNodes[index];
        node.latitude = static_cast<double>(index) / nodesPerDegree - limit;
        const double secant = 1.0 / std::cos(node.latitude * degree);
        const double tangent = std::tan(node.latitude * degree);
        const double cube = secant * secant * secant;
        node.factors = {
            LvMapProjection::latitudeToNormalized(node.latitude),
            -degree / turn * secant,
            -std::pow(degree, 2) / (2.0 * turn) * secant * tangent,
            -std::pow(degree, 3) / (6.0 * turn) * (2.0 * cube - secant),
            -std::pow(degree, 4) / (24.0 * turn) * (6.0 * cube - secant) * tangent,
        };
    }
}

const LvMercatorTable& LvMercatorTable::instance()
{
    static const LvMercatorTable table;
    return table;
}
