#pragma once

#include "lvgeolocation_export.h"

#include <QWidget>

class LvGeoArc;
class QComboBox;
class QDoubleSpinBox;
class QSpinBox;

/**
 * Edits one angle, a latitude or a longitude, as degrees, minutes, seconds and hemisphere.
 *
 * Negative degrees are allowed: together with "Süd" or "West" the signs multiply.
 */
class LVGEOLOCATION_EXPORT LvGeoArcEdit : public QWidget
{
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(LvGeoArcEdit)

public:
    /// @param latitude whether the hemispheres are north and south, not east and west
    LvGeoArcEdit(QWidget* parent, bool latitude);
    ~LvGeoArcEdit() override;

    /// Shows the angle to a thousandth of a second; seconds that would round up to a whole minute stay at
    /// 59.999. The hemisphere follows the whole degrees only: a negative angle above -1 degree shows the
    /// positive one and reads back positive. Degrees beyond 360 show 360.
    void setGeoArc(const LvGeoArc& arc);

    [[nodiscard]] LvGeoArc geoArc() const;

protected:
    void changeEvent(QEvent* event) override;

private:
    void translateTexts();

    QSpinBox* myDegrees;
    QSpinBox* myMinutes;
    QDoubleSpinBox* mySeconds;
    QComboBox* myHemisphere;
    bool myIsLatitude;
};
