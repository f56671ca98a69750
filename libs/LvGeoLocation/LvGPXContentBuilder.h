#pragma once

#include "LvDateTimeText.h"
#include "LvGPXTrack.h"
#include "LvGPXTrackPoint.h"
#include "LvGPXTrackSegment.h"
#include "LvGPXTrackShape.h"
#include "LvGeoPosition.h"
#include "LvKmlTuples.h"
#include "LvNumberText.h"

#include <QDateTime>
#include <QDir>
#include <QList>
#include <QString>
#include <QStringView>

#include <optional>
#include <string_view>
#include <utility>
#include <vector>

class QDomElement;

/// What an element of a GPX document means at the place where it stands; not installed.
enum class LvGPXContent : quint8 {
    Ignored,
    // The document elements.
    File, ///< with tracks and routes
    IncludedFile, ///< whose first track goes into the track that includes it
    // Inside them.
    Track,
    Route,
    GivenTrack, ///< one that stays open, to be asked for with track()
    Enclaves,
    Enclave,
    Segment,
    Extensions,
    RoutePointExtension,
    Point,
    // Elements whose text counts: that of all descendants, in order.
    Name,
    Description,
    Shape,
    Include,
    CompressedPoints,
    Elevation,
    Time,
    PointDescription,
};

/**
 * The rules for the elements of a GPX document, in one place for every source of elements; not installed.
 *
 * A source tells each element with begin(), which answers what it is, hands in the coordinates of points and
 * the texts of elements with text, and closes each element with end(), in document order. What begin() calls
 * ignored need not be entered, and must not be closed. Depth costs no stack.
 *
 * Texts and names come as QStringView, or as std::string_view when all of their bytes are ASCII.
 */
class LvGPXContentBuilder
{
public:
    /// Includes are not followed.
    LvGPXContentBuilder() = default;

    /// Includes are followed when the directory is not the empty one.
    explicit LvGPXContentBuilder(const QDir& dir);

    static bool hasText(LvGPXContent content) { return content >= LvGPXContent::Name; }

    /// What an element of that name is inside of one of the given content.
    template <class Name>
    LvGPXContent begin(LvGPXContent parent, const Name& name);

    /// Attributes of a point, as they stand; nothing where there is none.
    template <class Text>
    void setCoordinates(const std::optional<Text>& latitude, const std::optional<Text>& longitude);

    /// The text of an element that has one. Stands for end() too.
    template <class Text>
    void setText(LvGPXContent content, const Text& text);

    void end(LvGPXContent content);

    /// Hands an element of the toolkit's tree and all below it to this builder.
    void addElement(const QDomElement& element, LvGPXContent content);

    /// Those of the file so far, the ones without segments included.
    [[nodiscard]] const QList<LvGPXTrack>& tracks() const { return myTracks; }

    [[nodiscard]] const QList<LvGPXTrack>& routes() const { return myRoutes; }

    /// Adds what is read to this track: an element of the content GivenTrack, or an IncludedFile.
    void beginWith(const LvGPXTrack& track);

    /// The track of beginWith() with what has been read.
    [[nodiscard]] LvGPXTrack track() const { return build(myDrafts.front()); }

    /// The last file that was included; empty when there was none.
    [[nodiscard]] const QString& includedFileName() const { return myIncludedFileName; }

    /// The points outside of closed segments.
    [[nodiscard]] const QList<LvGPXTrackPoint>& points() const { return myPoints; }

private:
    /// A track that is still being read.
    struct LvDraft {
        QString myName;
        QString myDescription;
        LvGPXTrackShape myShape{LvGPXTrackShapeEnum::linestring};
        QList<LvGPXTrackSegment> mySegments;
        QList<LvGPXTrack> myEnclaves;
    };

    struct LvPointDraft {
        double myLatitude = 0.0;
        double myLongitude = 0.0;
        int myElevation = 0;
        bool myHasElevation = false;
        bool myHasTime = false;
        bool myHasDescription = false;
        QDateTime myTime;
        QString myDescription;
    };

    [[nodiscard]] static LvGPXTrack build(const LvDraft& draft);
    static void settleShape(LvDraft& draft);

    static bool equals(QStringView name, std::string_view literal)
    {
        return name == QLatin1String(literal.data(), static_cast<qsizetype>(literal.size()));
    }

    static bool equals(std::string_view name, std::string_view literal) { return name == literal; }

    static QString toString(QStringView text) { return text.toString(); }

    static QString toString(std::string_view ascii)
    {
        return QString::fromLatin1(ascii.data(), static_cast<qsizetype>(ascii.size()));
    }

    template <class Name>
    LvGPXContent beginInTrack(const Name& name);
    template <class Name>
    LvGPXContent beginInPoint(const Name& name);

    /// Whether this is the first time.
    static bool isFirst(bool& seen) { return !std::exchange(seen, true); }

    static int wholeMetres(double elevation);
    void beginPoint();
    void endPoint();
    void endSegment();
    void endTrack(LvGPXContent content);
    void include(const QString& fileName);

    std::optional<QDir> myIncludeDirectory; // where included files are, if they are to be read
    bool myHasIncludedTrack = false;
    bool myHasRoutePoints = false;
    QString myIncludedFileName;
    std::vector<LvDraft> myDrafts; // the last one inside the one before
    QList<LvGPXTrackPoint> myPoints;
    LvPointDraft myPoint;
    QList<LvGPXTrack> myTracks;
    QList<LvGPXTrack> myRoutes;
};

template <class Name>
LvGPXContent LvGPXContentBuilder::begin(LvGPXContent parent, const Name& name)
{
    switch (parent) {
    case LvGPXContent::Point:
        return beginInPoint(name);
    case LvGPXContent::Segment:
        if (equals(name, "trkpt")) {
            beginPoint();
            return LvGPXContent::Point;
        }
        if (equals(name, "compressedPoints")) {
            return LvGPXContent::CompressedPoints;
        }
        if (equals(name, "extensions")) {
            myHasRoutePoints = false;
            return LvGPXContent::Extensions;
        }
        break;
    case LvGPXContent::RoutePointExtension:
        if (equals(name, "gpxx:rpt")) {
            beginPoint();
            return LvGPXContent::Point;
        }
        break;
    case LvGPXContent::Extensions:
        // Only the first one counts.
        if (equals(name, "gpxx:RoutePointExtension") && isFirst(myHasRoutePoints)) {
            return LvGPXContent::RoutePointExtension;
        }
        break;
    case LvGPXContent::Track:
    case LvGPXContent::Route:
    case LvGPXContent::GivenTrack:
    case LvGPXContent::Enclave:
        return beginInTrack(name);
    case LvGPXContent::Enclaves:
        myDrafts.emplace_back();
        return LvGPXContent::Enclave;
    case LvGPXContent::File:
        if (equals(name, "trk")) {
            myDrafts.emplace_back();
            return LvGPXContent::Track;
        }
        if (equals(name, "rte")) {
            myDrafts.emplace_back();
            return LvGPXContent::Route;
        }
        break;
    case LvGPXContent::IncludedFile:
        if (equals(name, "trk") && isFirst(myHasIncludedTrack)) {
            return LvGPXContent::GivenTrack;
        }
        break;
    default:
        break;
    }
    return LvGPXContent::Ignored;
}

template <class Name>
LvGPXContent LvGPXContentBuilder::beginInTrack(const Name& name)
{
    if (equals(name, "trkseg") || equals(name, "rtept")) {
        return LvGPXContent::Segment;
    }
    if (equals(name, "name")) {
        return LvGPXContent::Name;
    }
    if (equals(name, "desc")) {
        return LvGPXContent::Description;
    }
    if (equals(name, "shape")) {
        return LvGPXContent::Shape;
    }
    if (equals(name, "enclaves")) {
        return LvGPXContent::Enclaves;
    }
    if (equals(name, "include")) {
        return LvGPXContent::Include;
    }
    return LvGPXContent::Ignored;
}

template <class Name>
LvGPXContent LvGPXContentBuilder::beginInPoint(const Name& name)
{
    // Of several children with one name the first counts.
    if (equals(name, "ele") && isFirst(myPoint.myHasElevation)) {
        return LvGPXContent::Elevation;
    }
    if (equals(name, "time") && isFirst(myPoint.myHasTime)) {
        return LvGPXContent::Time;
    }
    if (equals(name, "desc") && isFirst(myPoint.myHasDescription)) {
        return LvGPXContent::PointDescription;
    }
    return LvGPXContent::Ignored;
}

template <class Text>
void LvGPXContentBuilder::setCoordinates(const std::optional<Text>& latitude,
                                         const std::optional<Text>& longitude)
{
    // A point without coordinates is put where nobody takes it for "not set", as 0/0 would be.
    constexpr double missingDegrees = 1.0;
    myPoint.myLatitude = latitude ? LvNumberText::toDouble(*latitude) : missingDegrees;
    myPoint.myLongitude = longitude ? LvNumberText::toDouble(*longitude) : missingDegrees;
}

template <class Text>
void LvGPXContentBuilder::setText(LvGPXContent content, const Text& text)
{
    switch (content) {
    case LvGPXContent::Elevation:
        myPoint.myElevation = wholeMetres(LvNumberText::toDouble(text));
        break;
    case LvGPXContent::Time:
        myPoint.myTime = LvDateTimeText::fromIso(text);
        break;
    case LvGPXContent::PointDescription:
        myPoint.myDescription = toString(text);
        break;
    case LvGPXContent::CompressedPoints:
        myPoints += LvKmlTuples::decodePoints(text);
        break;
    case LvGPXContent::Name:
        myDrafts.back().myName = toString(text);
        break;
    case LvGPXContent::Description:
        myDrafts.back().myDescription = toString(text);
        break;
    case LvGPXContent::Shape:
        myDrafts.back().myShape = LvGPXTrackShape(toString(text));
        break;
    case LvGPXContent::Include:
        include(toString(text));
        break;
    default:
        break;
    }
}
