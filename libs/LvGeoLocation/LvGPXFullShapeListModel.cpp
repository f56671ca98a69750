#include "LvGPXFullShapeListModel.h"

#include "LvGPXMarkerShape.h"
#include "LvGPXTrackShape.h"

LvGPXFullShapeListModel::LvGPXFullShapeListModel() = default;

LvGPXFullShapeListModel::~LvGPXFullShapeListModel() = default;

int LvGPXFullShapeListModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(myShapes.size());
}

int LvGPXFullShapeListModel::columnCount(const QModelIndex& /*parent*/) const
{
    return 1;
}

QVariant LvGPXFullShapeListModel::data(const QModelIndex& index, int role) const
{
    if (!index.isValid()) {
        return {};
    }
    const LvGPXFullShape shape = markerAt(index);
    switch (role) {
    case Qt::ToolTipRole:
        return shape.toolTip();
    case Qt::DecorationRole:
        return shape.createIcon(effectiveStrokeColor(), effectiveFillColor());
    case Qt::DisplayRole:
        return shape.describe();
    default:
        return {};
    }
}

LvGPXFullShape LvGPXFullShapeListModel::markerAt(const QModelIndex& index) const
{
    return markerAt(index.row());
}

LvGPXFullShape LvGPXFullShapeListModel::markerAt(int row) const
{
    return myShapes.value(row);
}

int LvGPXFullShapeListModel::indexOf(const LvGPXFullShape& shape) const
{
    return static_cast<int>(myShapes.indexOf(shape.normalized()));
}

void LvGPXFullShapeListModel::fill(const LvGPXTrackShape& trackShape)
{
    beginResetModel();
    myShapes.clear();
    const QList<LvGPXTrackShape> shapes = trackShape.possibleShapes();
    for (const LvGPXTrackShape& shape : shapes) {
        const QList<LvGPXMarkerShape> markers = shape.createMarkerShapes();
        for (const LvGPXMarkerShape& marker : markers) {
            myShapes.append(LvGPXFullShape(shape, marker));
        }
    }
    endResetModel();
}

QColor LvGPXFullShapeListModel::effectiveStrokeColor() const
{
    if (shows(LvGPXTrackDisplayOptionsEnum::stroke)) {
        return myStrokeColor;
    }
    return shows(LvGPXTrackDisplayOptionsEnum::fill) ? Qt::transparent : Qt::black;
}

QColor LvGPXFullShapeListModel::effectiveFillColor() const
{
    if (shows(LvGPXTrackDisplayOptionsEnum::fill)) {
        return myFillColor;
    }
    return shows(LvGPXTrackDisplayOptionsEnum::stroke) ? Qt::transparent : Qt::black;
}

bool LvGPXFullShapeListModel::wouldBeInvisible() const
{
    return !shows(LvGPXTrackDisplayOptionsEnum::stroke) && !shows(LvGPXTrackDisplayOptionsEnum::fill);
}

void LvGPXFullShapeListModel::setStrokeColor(const QColor& color)
{
    myStrokeColor = color;
    updateVisualization();
}

void LvGPXFullShapeListModel::setFillColor(const QColor& color)
{
    myFillColor = color;
    updateVisualization();
}

void LvGPXFullShapeListModel::setDisplayOptions(const LvGPXTrackDisplayOptions& options)
{
    myDisplayOptions = options;
    updateVisualization();
}

void LvGPXFullShapeListModel::updateVisualization()
{
    if (!myShapes.isEmpty()) {
        Q_EMIT dataChanged(index(0, 0), index(rowCount() - 1, columnCount() - 1), {Qt::DecorationRole});
    }
}

bool LvGPXFullShapeListModel::shows(LvGPXTrackDisplayOptionsEnum part) const
{
    return myDisplayOptions.reducedTo(part) != LvGPXTrackDisplayOptionsEnum::none;
}
