#pragma once

#include "LvGPXTrack.h"
#include "lvgeolocation_export.h"

#include <QList>
#include <QString>

class QDomElement;
class QFileInfo;

/// The tracks of a GPX file: those of its "trk" elements, then those of its "rte" elements, each in document
/// order. A plain value; the file is read once, by the constructor.
class LVGEOLOCATION_EXPORT LvGPXTrackFile
{
public:
    /// Reads the file, whatever its root element is called. A file that cannot be read or parsed holds no
    /// tracks.
    explicit LvGPXTrackFile(const QFileInfo& file);
    LvGPXTrackFile(const LvGPXTrackFile& other);
    LvGPXTrackFile(LvGPXTrackFile&& other) noexcept;
    LvGPXTrackFile& operator=(const LvGPXTrackFile& other);
    LvGPXTrackFile& operator=(LvGPXTrackFile&& other) noexcept;
    virtual ~LvGPXTrackFile();

    /// Whether the file holds at least one valid track.
    [[nodiscard]] bool isValid() const;

    [[nodiscard]] QList<LvGPXTrack> tracks() const;

    /// The valid tracks of the children of that name. The counter is increased by each of them, the invalid
    /// ones too; an unnamed track is named by the base name of the file and the counter. An "include" is not
    /// followed.
    [[nodiscard]] static QList<LvGPXTrack> readTracks(QDomElement root, const QString& tagName, int& counter,
                                                      const QFileInfo& file);

private:
    QList<LvGPXTrack> myTracks;
};
