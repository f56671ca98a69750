#pragma once

#include "LvGeoPosition.h"
#include "LvGeoPositionRect.h"

/**
 * Gathers the bounding box of very many positions; not installed.
 *
 * The same to the bit as LvGeoPositionRect::expandTo() for one position after the other, beginning with the
 * default area: such an area never comes to cross the 180° meridian, so that its bounds are plain minima and
 * maxima.
 */
class LvPositionBounds
{
public:
    /// Leaves out an invalid position.
    void add(const LvGeoPosition& position)
    {
        const QPointF point = position.toPointF();
        const double longitude = point.x();
        const double latitude = point.y();
        if (!isAngle(latitude) || !isAngle(longitude) || (latitude == 0.0 && longitude == 0.0)) {
            return;
        }
        if (myIsEmpty) {
            mySouth = myNorth = latitude;
            myWest = myEast = longitude;
            myIsEmpty = false;
            return;
        }
        expand(mySouth, myNorth, latitude);
        expand(myWest, myEast, longitude);
    }

    /// The default area when there was no valid position.
    [[nodiscard]] LvGeoPositionRect rect() const
    {
        return myIsEmpty
            ? LvGeoPositionRect()
            : LvGeoPositionRect(LvLatitudeRange(mySouth, myNorth), LvLongitudeRange(myWest, myEast));
    }

private:
    static bool isAngle(double degrees) { return LvGeoArc(degrees).isValid(); }

    static void expand(double& min, double& max, double value)
    {
        if (value > max) {
            max = value;
        } else if (value < min) {
            min = value;
        }
    }

    double mySouth = 0.0;
    double myNorth = 0.0;
    double myWest = 0.0;
    double myEast = 0.0;
    bool myIsEmpty = true;
};
