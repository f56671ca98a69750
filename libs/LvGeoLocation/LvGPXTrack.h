#pragma once

#include "LvGPXTrackElement.h"
#include "LvGPXTrackPoint.h"
#include "LvGPXTrackSegment.h"
#include "LvGPXTrackShape.h"
#include "lvgeolocation_export.h"

#include <QDir>
#include <QList>
#include <QSharedDataPointer>
#include <QString>

class LvGPXTrackImpl;
class QDomElement;
class QFileInfo;

/**
 * What the user sees as one entry of the track list: name, description, shape, segments, and enclaves, that
 * is tracks that lie inside it.
 *
 * A handle over a shared payload: copying costs one atomic increment, a change detaches first. So a copy that
 * a worker thread draws stays as it is while the owner of another copy changes that. A track without segments
 * is not valid.
 *
 * "The empty directory" below is `QDir(QString())`. The toolkit takes it for the current directory, and so is
 * a directory that is the current one taken for the empty one.
 */
class LVGEOLOCATION_EXPORT LvGPXTrack : public LvGPXTrackElement
{
public:
    /// No name, no segments, shape linestring.
    LvGPXTrack();

    /// The fields as they are; only the shape automatic is replaced by autoDetectShape().
    LvGPXTrack(const QString& name, const QString& description, const QList<LvGPXTrackSegment>& segments,
               const LvGPXTrackShape& shape);

    /// A track of one point and of the shape point, named by the description of the point. It has no segment
    /// when the position is invalid.
    explicit LvGPXTrack(const LvGPXTrackPoint& point);

    /// A default track that has read the element, see fromXml().
    LvGPXTrack(const QDomElement& element, const QDir& dir);

    LvGPXTrack(const LvGPXTrack& other);
    LvGPXTrack(LvGPXTrack&& other) noexcept;
    LvGPXTrack& operator=(const LvGPXTrack& other);
    LvGPXTrack& operator=(LvGPXTrack&& other) noexcept;
    ~LvGPXTrack() override;

    void swap(LvGPXTrack& other) noexcept { myImpl.swap(other.myImpl); }

    /// A track of the one segment that the KML coordinates give, or of none when they give no point. The
    /// shape automatic is replaced by autoDetectShape().
    [[nodiscard]] static LvGPXTrack decodeKml(const QString& name, const QString& description,
                                              const QString& coordinates, const LvGPXTrackShape& shape);

    /// One segment of one point is a point, none at all unknown; a line whose ends are equal (to the
    /// tolerance of angles) is a polygon, any other a linestring. A hop is never detected.
    [[nodiscard]] static LvGPXTrackShape autoDetectShape(const QList<LvGPXTrackSegment>& segments);

    /// The positions of all segments in order, without those of the enclaves.
    [[nodiscard]] LvGeoPositionList allPoints() const override;
    /// The blocks of all segments in order, see LvGPXTrackSegment::chunkedPoints().
    [[nodiscard]] QList<LvGeoPositionList> chunkedPoints() const override;
    [[nodiscard]] bool isSinglePoint() const override;
    [[nodiscard]] LvGeoPosition firstPoint() const override;
    [[nodiscard]] LvGeoPosition lastPoint() const override;
    [[nodiscard]] QList<QDateTime> allTimeStamps() const override;
    bool
    visitTrackPoints(const std::function<void(const QList<LvGPXTrackPoint>& points)>& visit) const override;

    /// Whether there is at least one segment.
    [[nodiscard]] bool isValid() const;

    /// Whether the shape is exactly this one; no test for flags.
    [[nodiscard]] bool hasShape(const LvGPXTrackShape& shape) const;

    /// Whether both are polygons and the path of this one contains the path of the other, in degrees as they
    /// stand: the 180° meridian is not crossed.
    [[nodiscard]] bool isEnclave(const LvGPXTrack& other) const;

    [[nodiscard]] QString name() const;
    [[nodiscard]] QString description() const;
    [[nodiscard]] LvGPXTrackShape shape() const;
    /// What autoDetectShape() makes of the segments, whatever shape is set.
    [[nodiscard]] LvGPXTrackShape naturalShape() const;
    [[nodiscard]] QList<LvGPXTrackSegment> segments() const;
    [[nodiscard]] QList<LvGPXTrack> enclaves() const;
    /// The number of points of all segments, without the enclaves.
    [[nodiscard]] int countPoints() const;

    void setName(const QString& name);
    void setShape(const LvGPXTrackShape& shape);
    void setEnclaves(const QList<LvGPXTrack>& enclaves);
    /// A track added to itself becomes a copy inside it, never a cycle.
    void addEnclave(const LvGPXTrack& enclave);

    /// Equal name, description, shape, segments and enclaves, at every depth.
    [[nodiscard]] bool operator==(const LvGPXTrack& other) const;
    [[nodiscard]] bool operator!=(const LvGPXTrack& other) const;

    /// Fewer points first; with equally many, the one that starts farther south (or then west).
    [[nodiscard]] bool operator<(const LvGPXTrack& other) const;
    [[nodiscard]] bool operator>(const LvGPXTrack& other) const;

    /**
     * Adds what the children of a "trk" or "rte" element say: "name", "desc", "shape", "trkseg", "rtept",
     * "enclaves". Texts are taken as they stand. Anything else is skipped, and what is missing stays as it
     * was. The depth of the enclaves costs no stack.
     *
     * "include" names a file relative to dir whose first "trk" is read into this track, too; not when dir is
     * the empty directory, and not again inside such a file. The file is registered, so that writing the
     * track back with the same directory reuses it. The name may lead anywhere, but only regular files are
     * read.
     */
    void fromXml(const QDomElement& element, const QDir& dir);

    /// Appends an element "trk": with the whole track in it when dir is the empty directory or does not
    /// exist, else with an "include" that names the track's own file in dir, which is written if there is
    /// none yet.
    void toXml(QDomElement& parent, const QDir& dir) const;

    /// Appends an empty element "trk" and returns it.
    [[nodiscard]] static QDomElement buildTrackElement(QDomElement& parent);

    /// Fills a "trk" element with name, shape, segments and enclaves. The description is only ever read, not
    /// written.
    void buildXmlBody(QDomElement& trk) const;

    /// Writes the track as a GPX file of its own. A failure is not reported.
    void saveAsGpxFile(const QFileInfo& file) const;

private:
    friend class LvGPXTrackImpl; // takes nested enclaves apart
    friend class LvGPXTrackFileRegistry; // saves tracks below another root element

    template <class BuildSegment>
    static void buildXmlBody(const QDomElement& trk, const LvGPXTrack& body,
                             const BuildSegment& buildSegment);

    /// Writes a document with this track whole in it.
    void saveBelow(const QString& rootName, const QFileInfo& file) const;

    QSharedDataPointer<LvGPXTrackImpl> myImpl;
};

Q_DECLARE_SHARED(LvGPXTrack)
