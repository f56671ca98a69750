#include "LvTrackRowsModel.h"

#include "LvGPXTrackListModel.h"

LvTrackRowsModel::LvTrackRowsModel(LvGPXTrackListModel* tracks, QObject* parent)
    : QIdentityProxyModel(parent)
{
    setSourceModel(tracks);
}

LvTrackRowsModel::~LvTrackRowsModel() = default;

void LvTrackRowsModel::setVisibility(const QList<bool>& visibility)
{
    if (visibility == myVisibility) {
        return;
    }
    myVisibility = visibility;
    if (rowCount() > 0) {
        Q_EMIT dataChanged(index(0, visibilityColumn), index(rowCount() - 1, visibilityColumn),
                           {Qt::CheckStateRole, Qt::ToolTipRole});
    }
}

bool LvTrackRowsModel::isTrackVisible(int row) const
{
    return myVisibility.value(row, true);
}

QVariant LvTrackRowsModel::data(const QModelIndex& index, int role) const
{
    if (!index.isValid() || index.column() != visibilityColumn) {
        return QIdentityProxyModel::data(index, role);
    }
    const bool isVisible = isTrackVisible(index.row());
    switch (role) {
    case Qt::CheckStateRole:
        return isVisible ? Qt::Checked : Qt::Unchecked;
    case Qt::ToolTipRole:
        return isVisible ? tr("Die Spur ist auf der Karte zu sehen.") : tr("Die Spur ist ausgeblendet.");
    case Qt::AccessibleTextRole:
        return isVisible ? tr("sichtbar") : tr("ausgeblendet");
    default:
        return {}; // above all no text to edit: the second column has no row widget
    }
}

bool LvTrackRowsModel::setData(const QModelIndex& index, const QVariant& value, int role)
{
    if (!index.isValid() || index.column() != visibilityColumn || role != Qt::CheckStateRole) {
        return false;
    }
    Q_EMIT visibilityEdited(index.row(), value.toInt() == Qt::Checked);
    return true;
}

Qt::ItemFlags LvTrackRowsModel::flags(const QModelIndex& index) const
{
    const Qt::ItemFlags flags = QIdentityProxyModel::flags(index);
    if (!index.isValid() || index.column() != visibilityColumn) {
        return flags;
    }
    return (flags | Qt::ItemIsUserCheckable) & ~Qt::ItemFlags(Qt::ItemIsDragEnabled);
}

QVariant LvTrackRowsModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation == Qt::Horizontal && section == visibilityColumn && role == Qt::DisplayRole) {
        return tr("Zeigen");
    }
    return QIdentityProxyModel::headerData(section, orientation, role);
}
