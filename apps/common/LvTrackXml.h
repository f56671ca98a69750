#pragma once

#include <QDomElement>
#include <QString>

class QDateTime;
class LvGPXTrack;
class LvGPXTrackPoint;

/// What it costs to read an element, counted as LvXMLLoader does.
struct LvTrackXmlCost {
    qint64 nodes = 0;
    qint64 depthSum = 0; ///< the depths of the nodes added up
    qint64 bytes = 0; ///< of the text, indented as LvXMLWriter does

    LvTrackXmlCost& operator+=(const LvTrackXmlCost& other)
    {
        nodes += other.nodes;
        depthSum += other.depthSum;
        bytes += other.bytes;
        return *this;
    }
};

/**
 * Writing of tracks as XML in such a way that reading gives back what was written.
 *
 * The compact form of segments that the library writes is made for drawing: it has no texts, and its time
 * stamps read otherwise than they were written. All functions may be called from any thread, each with a
 * document of its own.
 */
namespace LvTrackXml
{

/// "trk", the element that holds a track.
QString trackTag();

/// Fills an empty "trk" element with name, description, shape, segments and enclaves, for
/// LvGPXTrack::fromXml(). Segments stand in the compact form where that keeps all of their points, else
/// point by point. Segments without points are left out.
void writeTrack(const QDomElement& trk, const LvGPXTrack& track);

/// How the points of a segment are written.
enum class PointForm {
    ShortestThatKeepsAll, ///< as writeTrack() does
    Elements, ///< each by appendPoint()
};

/// What it costs to read the "trk" element of the track that stands at this depth (the document element has
/// depth 1): never less than LvXMLLoader will count and than the file will have bytes, and hardly more.
LvTrackXmlCost costOf(const LvGPXTrack& track, int depth, PointForm form = PointForm::ShortestThatKeepsAll);

/// The time as an ISO 8601 text in UTC, with milliseconds where there are some: "2023-06-01T10:00:00Z". Empty
/// for an invalid time and beyond the years 1 to 9999, which such texts cannot hold.
QString timeText(const QDateTime& time);

/// Appends a "trkpt" element that is valid GPX 1.1: decimals without an exponent, longitudes below 180, the
/// time in UTC, with milliseconds where there are some. A time beyond the years 1 to 9999, which the format
/// cannot hold, is left out.
void appendPoint(QDomElement& segment, const LvGPXTrackPoint& point);

} // namespace LvTrackXml
