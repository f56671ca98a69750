#pragma once

#include "LvTrackSelectionFactoryAbstract.h"
#include "lvgeolocation_export.h"

#include <QList>
#include <QString>

class QDomElement;
class QFileInfo;

/**
 * Reads KML files and KMZ archives: every placemark below "Document" becomes a track with the style it refers
 * to. Stateless, usable from any thread. Documents may be nested as deeply as LvXMLLoader accepts.
 */
class LVGEOLOCATION_EXPORT LvTrackSelectionFactoryKmlFile : public LvTrackSelectionFactoryAbstract
{
public:
    LvTrackSelectionFactoryKmlFile();
    ~LvTrackSelectionFactoryKmlFile() override;

    [[nodiscard]] bool supportsFile(const QUrl& url) const override;
    [[nodiscard]] QStringList supportedFileFormats() const override;
    [[nodiscard]] LvGPXConfiguredTrackList createConfiguredTrackList(const QUrl& url) const override;

    /// Whether the suffix is "kml" or "kmz", in any case of its letters.
    [[nodiscard]] virtual bool supportsFile(const QFileInfo& file) const;
    /// The tracks of all placemarks, invalid ones included; empty for an unreadable file.
    [[nodiscard]] virtual LvGPXConfiguredTrackList createConfiguredTrackList(const QFileInfo& file) const;

    /// The KML text: of a ".kml" file its lines, of a ".kmz" archive the first entry whose name ends with
    /// ".kml" (in lower case). An empty text for anything else and for what cannot be read.
    [[nodiscard]] static QString readFile(const QFileInfo& file);

    /// The tracks of all placemarks in document order, invalid ones included; empty for a text that is not
    /// well-formed or has no "Document" right below its root.
    /// @param fileName takes the place of a missing or empty name and description
    [[nodiscard]] static LvGPXConfiguredTrackList decode(const QString& text, const QString& fileName);

    /// All placemarks at or below the element, in document order; those inside another placemark are left
    /// out.
    [[nodiscard]] static QList<QDomElement> findPlacemarks(const QDomElement& element);

    /// The trimmed text of the first "coordinates" at or below the element that has any; an empty text
    /// without. Of a polygon that is the ring that comes first, of several geometries the first.
    [[nodiscard]] static QString findCoordinates(const QDomElement& element);

private:
    Q_DISABLE_COPY_MOVE(LvTrackSelectionFactoryKmlFile)
};
