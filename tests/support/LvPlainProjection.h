#pragma once

#include <QPointF>
#include <QSize>

#include <LvGeoPositionRect.h>
#include <cmath>
#include <limits>
#include <numbers>

/**
 * What LvMapProjection promises, with the formula computed anew for each point and nothing done to be fast:
 * what it tells must be the same to the pixel, and what it costs is what speed is compared with.
 */
class LvPlainProjection
{
public:
    LvPlainProjection(const LvGeoPositionRect& box, const QSize& imageSize)
    {
        double west = box.west().decimalDegrees();
        double east = box.east().decimalDegrees();
        east += west > east ? 360.0 : 0.0;
        double south = normalized(box.south().decimalDegrees());
        double north = normalized(box.north().decimalDegrees());
        const double imageAspect = static_cast<double>(imageSize.width()) / imageSize.height();
        const double mapAspect = ((east - west) / 360.0) / (south - north);
        if (imageAspect >= mapAspect) {
            const double margin = ((east - west) * imageAspect / mapAspect - (east - west)) * 0.5;
            west -= margin;
            east += margin;
        } else {
            north -= (((east - west) / 360.0) / imageAspect - (south - north)) * 0.5;
            const double latitude =
                90.0 - 360.0 * std::atan(std::exp(2.0 * std::numbers::pi * (north - 0.5))) / std::numbers::pi;
            north = normalized(latitude);
        }
        myWorldSize = imageSize.width() * 360.0 / (east - west);
        myLeft = myWorldSize * (west + 180.0) / 360.0;
        myTop = myWorldSize * north;
    }

    [[nodiscard]] double worldSize() const { return myWorldSize; }

    [[nodiscard]] QPointF pixelOf(double latitude, double longitude) const
    {
        return {truncated(myWorldSize * (longitude + 180.0) / 360.0 - myLeft),
                truncated(myWorldSize * normalized(latitude) - myTop)};
    }

private:
    static double normalized(double latitude)
    {
        if (latitude == -90.0) {
            return std::numeric_limits<double>::infinity();
        }
        return std::log(std::tan((90.0 - latitude) * std::numbers::pi / 360.0)) / (2.0 * std::numbers::pi)
            + 0.5;
    }

    static double truncated(double pixel)
    {
        using Limits = std::numeric_limits<int>;
        if (std::isnan(pixel)) {
            return 0.0;
        }
        return std::trunc(std::min(std::max(pixel, double{Limits::min()}), double{Limits::max()}));
    }

    double myWorldSize = 0.0;
    double myLeft = 0.0;
    double myTop = 0.0;
};
