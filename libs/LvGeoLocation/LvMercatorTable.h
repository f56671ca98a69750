#pragma once

#include <array>
#include <cstddef>

/**
 * The latitude's part of the Mercator projection without logarithm and tangent, to within a known error; not
 * installed.
 *
 * Pixels are whole numbers. So the pixel of a point is certain if it stays the same when the estimate is
 * moved by its error to either side, and only where it does not, once in millions of points at usual zoom
 * levels, must the formula be computed.
 *
 * How: between -85° and 85° lies a node every sixteenth of a degree. Around it the function
 * y(b) = ln(tan((pi / 2 - b) / 2)) / (2 pi) + 1 / 2 is its Taylor polynomial of degree 4. With s = sec(b) and
 * t = tan(b) the derivatives of 2 pi y are -s, -s t, -(2 s^3 - s), -(6 s^3 - s) t and
 * -(24 s^5 - 20 s^3 + s). The fifth, the largest at 85°, limits what is left out: at most 1/32° away from the
 * node it is 3.2e-13.
 */
class LvMercatorTable
{
public:
    /// What the estimate and the formula, as computed, differ by at most: the remainder of the polynomial,
    /// and the rounding of both, which is below 1e-14.
    static constexpr double largestError = 5e-13;

    /// Latitudes beyond it, in degrees, have no estimate.
    static constexpr double limit = 85.0;

    /// The one table, made when it is first asked for. Thread-safe.
    [[nodiscard]] static const LvMercatorTable& instance();

    /// LvMapProjection::latitudeToNormalized() of a latitude within the limits, give or take the largest
    /// error.
    [[nodiscard]] double normalized(double latitude) const
    {
        const int index = static_cast<int>((latitude + limit) * nodesPerDegree + 0.5);
        const Node& node = myNodes[static_cast<std::size_t>(index)];
        const double distance = latitude - node.latitude;
        return (((node.factors[4] * distance + node.factors[3]) * distance + node.factors[2]) * distance
                + node.factors[1])
            * distance
            + node.factors[0];
    }

private:
    static constexpr int nodesPerDegree = 16;
    static constexpr std::size_t nodeCount = std::size_t{2 * 85 * nodesPerDegree} + 1;

    struct Node {
        double latitude = 0.0;
        std::array<double, 5> factors = {}; // of the powers of the distance in degrees
    };

    LvMercatorTable();

    std::array<Node, nodeCount> myNodes;
};
