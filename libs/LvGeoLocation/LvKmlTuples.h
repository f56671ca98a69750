#pragma once

#include "LvGPXTrackPoint.h"
#include "lvgeolocation_export.h"

#include <QByteArrayView>
#include <QList>
#include <QString>
#include <QStringView>

#include <functional>
#include <string_view>

/**
 * The text form of track points, "longitude,latitude[,elevation[,time]]", read and written in one pass over
 * the text. Bytes are UTF-8. Without state, usable from any thread.
 */
class LVGEOLOCATION_EXPORT LvKmlTuples
{
public:
    LvKmlTuples() = delete;

    /// The number of a coordinate, see LvGPXTrackElement::safeDouble().
    [[nodiscard]] static double safeDouble(QStringView text);

    /// The point of one tuple, see LvGPXTrackPoint::decodeKml(); white space in it separates nothing.
    [[nodiscard]] static LvGPXTrackPoint decodePoint(QStringView tuple);

    /// The points of the tuples between white space, without those at exactly 0/0. A text that is no valid
    /// UTF-16 is one tuple: white space is not looked for in it.
    [[nodiscard]] static QList<LvGPXTrackPoint> decodePoints(QStringView text);
    [[nodiscard]] static QList<LvGPXTrackPoint> decodePoints(std::string_view text);

    /// The tuple of a point, see LvGPXTrackPoint::toKml().
    [[nodiscard]] static QString encode(const LvGPXTrackPoint& point);

    /// The tuples of the points, joined by line feeds.
    [[nodiscard]] static QString encode(const QList<LvGPXTrackPoint>& points);

    /// The same in ASCII characters, piece by piece.
    static void encode(const QList<LvGPXTrackPoint>& points,
                       const std::function<void(QByteArrayView piece)>& take);

    /// Whether such a character separates tuples: the white space of ASCII, as "\s" of a QRegularExpression
    /// takes it. The other white space of Unicode does not.
    [[nodiscard]] static constexpr bool isSeparator(char16_t unit)
    {
        return unit == u' ' || (unit >= u'\t' && unit <= u'\r');
    }
};
