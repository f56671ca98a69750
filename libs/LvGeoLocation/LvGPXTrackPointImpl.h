#pragma once

#include "LvGPXTrackElement.h"
#include "LvGeoPosition.h"
#include "lvgeolocation_export.h"

#include <QDateTime>
#include <QSharedData>
#include <QString>

/// The payload that all copies of a track point share. Nothing changes it once it is built.
class LVGEOLOCATION_EXPORT LvGPXTrackPointImpl : public LvGPXTrackElement, public QSharedData
{
public:
    LvGPXTrackPointImpl();
    LvGPXTrackPointImpl(const LvGeoPosition& position, int elevation, const QDateTime& timeStamp,
                        const QString& description);
    LvGPXTrackPointImpl(const LvGPXTrackPointImpl& other);
    LvGPXTrackPointImpl(LvGPXTrackPointImpl&& other) = delete;
    LvGPXTrackPointImpl& operator=(const LvGPXTrackPointImpl& other) = delete;
    LvGPXTrackPointImpl& operator=(LvGPXTrackPointImpl&& other) = delete;
    ~LvGPXTrackPointImpl() override;

    [[nodiscard]] LvGeoPositionList allPoints() const override;
    [[nodiscard]] QList<LvGeoPositionList> chunkedPoints() const override;
    [[nodiscard]] bool isSinglePoint() const override;
    [[nodiscard]] LvGeoPosition firstPoint() const override;
    [[nodiscard]] LvGeoPosition lastPoint() const override;
    [[nodiscard]] QList<QDateTime> allTimeStamps() const override;

    [[nodiscard]] const LvGeoPosition& position() const { return myPosition; }

    /// Metres; 0 means none.
    [[nodiscard]] int elevation() const { return myElevation; }

    /// Invalid means none.
    [[nodiscard]] const QDateTime& timeStamp() const { return myTimeStamp; }

    [[nodiscard]] const QString& description() const { return myDescription; }

private:
    LvGeoPosition myPosition;
    int myElevation = 0;
    QDateTime myTimeStamp;
    QString myDescription;
};
