#pragma once

#include <QString>

#include <memory>

class LvMapView;
class QPainter;

/**
 * Something that can draw the map below the tracks.
 *
 * A source belongs to one thread at a time.
 */
class LvMapSource
{
public:
    LvMapSource() = default;
    virtual ~LvMapSource();
    Q_DISABLE_COPY_MOVE(LvMapSource)

    /// Whether there is a map to draw. Drawing an invalid source draws nothing but the background.
    [[nodiscard]] virtual bool isValid() const = 0;

    /// Why the source is not valid, one line; empty when it is valid.
    [[nodiscard]] virtual QString errorText() const = 0;

    /// What the owner of the map wants to read on every picture of it, plain text; empty when nothing is
    /// needed.
    [[nodiscard]] virtual QString attribution() const = 0;

    /// Fills the whole picture. The painter's origin is the upper left corner of the view; the paint factor
    /// is the multiplier of line widths.
    virtual void draw(QPainter& painter, const LvMapView& view, double paintFactor) = 0;

    /// Makes the source that a text names: "builtin", "none", the folder of a tile tree, or an MBTiles file.
    /// "none" gives a null pointer, every other text a source, which may be invalid.
    static std::unique_ptr<LvMapSource> create(const QString& name);
};
