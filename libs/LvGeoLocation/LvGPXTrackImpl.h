#pragma once

#include "LvGPXTrack.h"
#include "LvGPXTrackElement.h"
#include "LvGPXTrackSegment.h"
#include "LvGPXTrackShape.h"
#include "lvgeolocation_export.h"

#include <QList>
#include <QSharedData>
#include <QString>

/// The payload that all copies of a track share until one of them changes. See LvGPXTrack for what it means.
class LVGEOLOCATION_EXPORT LvGPXTrackImpl : public LvGPXTrackElement, public QSharedData
{
public:
    LvGPXTrackImpl();
    LvGPXTrackImpl(const QString& name, const QString& description, const QList<LvGPXTrackSegment>& segments,
                   const LvGPXTrackShape& shape);
    LvGPXTrackImpl(const LvGPXTrackImpl& other);
    LvGPXTrackImpl(LvGPXTrackImpl&& other) = delete;
    LvGPXTrackImpl& operator=(const LvGPXTrackImpl& other) = delete;
    LvGPXTrackImpl& operator=(LvGPXTrackImpl&& other) = delete;
    ~LvGPXTrackImpl() override;

    [[nodiscard]] LvGeoPositionList allPoints() const override;
    [[nodiscard]] QList<LvGeoPositionList> chunkedPoints() const override;
    [[nodiscard]] bool isSinglePoint() const override;
    [[nodiscard]] LvGeoPosition firstPoint() const override;
    [[nodiscard]] LvGeoPosition lastPoint() const override;
    [[nodiscard]] QList<QDateTime> allTimeStamps() const override;
    bool
    visitTrackPoints(const std::function<void(const QList<LvGPXTrackPoint>& points)>& visit) const override;

    [[nodiscard]] bool isValid() const { return !mySegments.isEmpty(); }

    [[nodiscard]] int countPoints() const;

    [[nodiscard]] const QString& name() const { return myName; }

    [[nodiscard]] const QString& description() const { return myDescription; }

    [[nodiscard]] const LvGPXTrackShape& shape() const { return myShape; }

    [[nodiscard]] const QList<LvGPXTrackSegment>& segments() const { return mySegments; }

    [[nodiscard]] const QList<LvGPXTrack>& enclaves() const { return myEnclaves; }

    void setName(const QString& name) { myName = name; }

    void setDescription(const QString& description) { myDescription = description; }

    void setShape(const LvGPXTrackShape& shape) { myShape = shape; }

    /// Leaves out a segment without points.
    void addSegment(const LvGPXTrackSegment& segment);

    /// Takes the list as it is, segments without points included.
    void setSegments(const QList<LvGPXTrackSegment>& segments) { mySegments = segments; }

    void addEnclave(const LvGPXTrack& enclave) { myEnclaves.append(enclave); }

    void setEnclaves(const QList<LvGPXTrack>& enclaves) { myEnclaves = enclaves; }

    [[nodiscard]] bool operator==(const LvGPXTrackImpl& other) const;

private:
    [[nodiscard]] bool equalsWithoutEnclaves(const LvGPXTrackImpl& other) const;

    QString myName;
    QString myDescription;
    LvGPXTrackShape myShape;
    QList<LvGPXTrackSegment> mySegments;
    QList<LvGPXTrack> myEnclaves;
};
