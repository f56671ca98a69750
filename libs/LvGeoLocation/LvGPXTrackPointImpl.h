#pragma once

#include "LvGPXTrackElement.h"
#include "LvGeoPosition.h"
#include "lvgeolocation_export.h"

#include <QDateTime>
#include <QSharedData>
#include <QString>

#include <cstddef>

/// The payload that all copies of a track point share. Nothing changes it once it is built. Lies in an
/// LvFixedSizePool, because there are millions of them.
class LVGEOLOCATION_EXPORT LvGPXTrackPointImpl : public LvGPXTrackElement, public QSharedData
{
public:
    LvGPXTrackPointImpl();
    LvGPXTrackPointImpl(const LvGeoPosition& position, int elevation, const QDateTime& timeStamp,
                        const QString& description);
    LvGPXTrackPointImpl(LvGeoPosition&& position, int elevation, QDateTime&& timeStamp,
                        QString&& description) noexcept;
    LvGPXTrackPointImpl(const LvGPXTrackPointImpl& other);
    LvGPXTrackPointImpl(LvGPXTrackPointImpl&& other) = delete;
    LvGPXTrackPointImpl& operator=(const LvGPXTrackPointImpl& other) = delete;
    LvGPXTrackPointImpl& operator=(LvGPXTrackPointImpl&& other) = delete;
    ~LvGPXTrackPointImpl() override;

    // NOLINTNEXTLINE(misc-new-delete-overloads) the sized form is the one that belongs to it
    static void* operator new(std::size_t size);
    static void operator delete(void* object, std::size_t size) noexcept;

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
