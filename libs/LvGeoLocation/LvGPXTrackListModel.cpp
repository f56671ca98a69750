#include "LvGPXTrackListModel.h"

#include "LvGPXTrackConfiguration.h"
#include "LvGPXTrackSelection.h"

#include <QDataStream>
#include <QIODevice>
#include <QMimeData>

#include <algorithm>
#include <memory>

namespace
{

constexpr int nameColumn = 0;
constexpr int columns = 2;

} // namespace

const QString LvGPXTrackListModel::myMimeType = QStringLiteral("application/gpxtrack");

LvGPXTrackListModel::LvGPXTrackListModel(QObject* parent)
    : QAbstractTableModel(parent)
{
}

LvGPXTrackListModel::~LvGPXTrackListModel() = default;

int LvGPXTrackListModel::rowCount(const QModelIndex& /*parent*/) const
{
    return static_cast<int>(myTracks.count());
}

int LvGPXTrackListModel::columnCount(const QModelIndex& /*parent*/) const
{
    return columns;
}

QModelIndex LvGPXTrackListModel::parent(const QModelIndex& /*index*/) const
{
    return {};
}

QVariant LvGPXTrackListModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation == Qt::Horizontal && role == Qt::DisplayRole) {
        return section == nameColumn ? QVariant(tr("Name")) : QVariant();
    }
    return QAbstractItemModel::headerData(section, orientation, role);
}

Qt::ItemFlags LvGPXTrackListModel::flags(const QModelIndex& index) const
{
    if (!index.isValid()) {
        return Qt::ItemIsDropEnabled;
    }
    return Qt::ItemIsSelectable | Qt::ItemIsDragEnabled | Qt::ItemIsDropEnabled | Qt::ItemIsEnabled;
}

QVariant LvGPXTrackListModel::data(const QModelIndex& index, int role) const
{
    if (!index.isValid()) {
        return {};
    }
    // Without a copy of the configured track: views ask for this all the time.
    const auto text = [this, &index](QString (LvGPXConfiguredTrack::*field)() const) {
        return isValidRow(index.row()) ? (myTracks.at(index.row()).*field)() : QString();
    };
    switch (role) {
    case Qt::ToolTipRole:
        return text(&LvGPXConfiguredTrack::description);
    case Qt::EditRole:
        return text(&LvGPXConfiguredTrack::name);
    case Qt::DisplayRole:
        return index.column() == nameColumn ? QVariant(text(&LvGPXConfiguredTrack::name)) : QVariant();
    default:
        return {};
    }
}

bool LvGPXTrackListModel::setData(const QModelIndex& /*index*/, const QVariant& /*value*/, int /*role*/)
{
    return false;
}

QStringList LvGPXTrackListModel::mimeTypes() const
{
    return {myMimeType};
}

QMimeData* LvGPXTrackListModel::mimeData(const QModelIndexList& indexes) const
{
    QByteArray payload;
    QDataStream stream(&payload, QIODevice::WriteOnly);
    for (const QModelIndex& index : indexes) {
        if (index.isValid()) {
            stream << QString::number(index.row());
        }
    }
    auto data = std::make_unique<QMimeData>();
    data->setData(myMimeType, payload);
    return data.release();
}

Qt::DropActions LvGPXTrackListModel::supportedDropActions() const
{
    return Qt::MoveAction;
}

bool LvGPXTrackListModel::dropMimeData(const QMimeData* data, Qt::DropAction action, int row, int column,
                                       const QModelIndex& parent)
{
    if (action == Qt::IgnoreAction) {
        return true;
    }
    if (data == nullptr || !data->hasFormat(myMimeType)) {
        return false;
    }
    const int lastRow = rowCount() - 1;
    if (lastRow < 0) {
        return true;
    }
    int destination = row;
    if (row == -1 && column == -1) {
        destination = parent.row() == -1 ? lastRow : parent.row();
    }
    destination = std::clamp(destination, 0, lastRow);
    const int firstDestination = destination;

    const QByteArray payload = data->data(myMimeType);
    QDataStream stream(payload);
    while (!stream.atEnd()) {
        QString source;
        stream >> source;
        if (stream.status() != QDataStream::Ok) {
            break; // damaged: what is left are no row numbers
        }
        moveTrack(source.toInt(), destination);
        destination = std::min(destination + 1, lastRow);
    }
    Q_EMIT pleaseSelectTrack(firstDestination);
    return true;
}

void LvGPXTrackListModel::moveTrack(int from, int to)
{
    if (from == to || !isValidRow(from) || !isValidRow(to)) {
        return;
    }
    myTracks.moveTrack(from, to);
    Q_EMIT dataChanged(index(std::min(from, to), 0), index(std::max(from, to), columnCount() - 1));
}

LvGPXConfiguredTrackList LvGPXTrackListModel::tracks() const
{
    return myTracks;
}

LvGPXConfiguredTrack LvGPXTrackListModel::trackAt(const QModelIndex& index) const
{
    return trackAt(index.row());
}

LvGPXConfiguredTrack LvGPXTrackListModel::trackAt(int row) const
{
    return isValidRow(row) ? myTracks.at(row) : LvGPXConfiguredTrack();
}

bool LvGPXTrackListModel::isValidRow(int row) const
{
    return myTracks.checkRange(row);
}

void LvGPXTrackListModel::setSelection(const LvGPXTrackSelection& selection)
{
    const LvGPXConfiguredTrackList tracks = selection.tracks();
    if (tracks == myTracks) {
        return;
    }
    beginResetModel();
    myTracks = tracks;
    endResetModel();
}

void LvGPXTrackListModel::addTracks(const LvGPXConfiguredTrackList& tracks)
{
    beginResetModel();
    myTracks.append(tracks);
    endResetModel();
}

void LvGPXTrackListModel::remove(const QModelIndex& index)
{
    if (!isValidRow(index.row())) {
        return;
    }
    beginResetModel();
    myTracks.removeAt(index.row());
    endResetModel();
}

void LvGPXTrackListModel::setConfiguration(int row, const LvGPXTrackConfiguration& configuration)
{
    if (myTracks.setConfiguration(row, configuration)) {
        Q_EMIT dataChanged(index(row, 0), index(row, columnCount() - 1));
    }
}

void LvGPXTrackListModel::setConfiguration(const QModelIndex& index,
                                           const LvGPXTrackConfiguration& configuration)
{
    setConfiguration(index.row(), configuration);
}

void LvGPXTrackListModel::setConfigurationToAll(const LvGPXTrackConfiguration& configuration)
{
    for (int row = 0; row < rowCount(); ++row) {
        setConfiguration(row, configuration);
    }
}
