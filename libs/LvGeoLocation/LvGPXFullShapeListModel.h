#pragma once

#include "LvGPXFullShape.h"
#include "LvGPXTrackDisplayOptions.h"
#include "lvgeolocation_export.h"

#include <QAbstractListModel>
#include <QColor>
#include <QList>

class LvGPXTrackShape;

/**
 * The shapes with their markers that the user may choose for a track, each with a text and an icon in the
 * colours of the track.
 *
 * Changing colours or display options only redraws the icons: the selection of a view stays. User-interface
 * thread only.
 */
class LVGEOLOCATION_EXPORT LvGPXFullShapeListModel : public QAbstractListModel
{
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(LvGPXFullShapeListModel)

public:
    /// No shapes, black on gray, no display options.
    LvGPXFullShapeListModel();
    ~LvGPXFullShapeListModel() override;

    /// The number of shapes; rows have no children.
    [[nodiscard]] int rowCount(const QModelIndex& parent = QModelIndex()) const override;
    /// Always 1.
    [[nodiscard]] int columnCount(const QModelIndex& parent = QModelIndex()) const override;
    /// Text, icon (null for lines and areas) and tool tip of the shape.
    [[nodiscard]] QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;

    /// The shape of the row; the unknown one for a row out of range.
    [[nodiscard]] LvGPXFullShape markerAt(const QModelIndex& index) const;
    [[nodiscard]] LvGPXFullShape markerAt(int row) const;
    /// The first row with the normalized shape; -1 when there is none.
    [[nodiscard]] int indexOf(const LvGPXFullShape& shape) const;

    /// Lists every shape that a track of this shape may be shown as, and below each one its markers.
    void fill(const LvGPXTrackShape& trackShape);

    /// The colours of the icons. What the display options leave out is transparent; with neither outline nor
    /// area both are black, so that there is something to choose from.
    [[nodiscard]] QColor effectiveStrokeColor() const;
    [[nodiscard]] QColor effectiveFillColor() const;
    /// Whether a track with these display options would draw nothing.
    [[nodiscard]] bool wouldBeInvisible() const;

    void setStrokeColor(const QColor& color);
    void setFillColor(const QColor& color);
    void setDisplayOptions(const LvGPXTrackDisplayOptions& options);

    /// Tells the views that the icons changed; tells nothing while there are no rows.
    void updateVisualization();

private:
    [[nodiscard]] bool shows(LvGPXTrackDisplayOptionsEnum part) const;

    QList<LvGPXFullShape> myShapes;
    QColor myStrokeColor = Qt::black;
    QColor myFillColor = Qt::gray;
    LvGPXTrackDisplayOptions myDisplayOptions;
};
