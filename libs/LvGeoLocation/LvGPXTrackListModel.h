#pragma once

#include "LvGPXConfiguredTrackList.h"
#include "lvgeolocation_export.h"

#include <QAbstractTableModel>
#include <QString>

class LvGPXTrackConfiguration;
class LvGPXTrackSelection;

/**
 * The configured tracks as rows of a view: their names in column 0, nothing in column 1.
 *
 * Rows are reordered by drag and drop inside the view. Setting, adding and removing rows resets the model;
 * reordering and styling only tell that data changed, so that editors stay open. The list lives here, views
 * hold no copies. Every row counts for every parent; a view that shows trees asks hasChildren() first, which
 * knows that rows have none. User-interface thread only.
 */
class LVGEOLOCATION_EXPORT LvGPXTrackListModel : public QAbstractTableModel
{
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(LvGPXTrackListModel)

public:
    /// The MIME type of dragged rows: the row number of each index as a decimal QString, written by a
    /// QDataStream in its default version. For drags inside one process.
    static const QString myMimeType;

    explicit LvGPXTrackListModel(QObject* parent = nullptr);
    ~LvGPXTrackListModel() override;

    using QObject::parent;
    /// The number of tracks, whatever the parent.
    [[nodiscard]] int rowCount(const QModelIndex& parent = QModelIndex()) const override;
    /// Always 2.
    [[nodiscard]] int columnCount(const QModelIndex& parent = QModelIndex()) const override;
    /// Always an invalid index.
    [[nodiscard]] QModelIndex parent(const QModelIndex& index) const override;
    [[nodiscard]] QVariant headerData(int section, Qt::Orientation orientation,
                                      int role = Qt::DisplayRole) const override;
    [[nodiscard]] Qt::ItemFlags flags(const QModelIndex& index) const override;
    /// Name (display, in column 0 only, and edit role) and description (tool tip) of the track.
    [[nodiscard]] QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
    /// Always false: tracks are changed through setConfiguration().
    bool setData(const QModelIndex& index, const QVariant& value, int role = Qt::EditRole) override;

    [[nodiscard]] QStringList mimeTypes() const override;
    /// Every valid index contributes: two columns of one row carry that row twice.
    [[nodiscard]] QMimeData* mimeData(const QModelIndexList& indexes) const override;
    [[nodiscard]] Qt::DropActions supportedDropActions() const override;
    /// Moves the dragged rows one after the other to the row, the row after it, and so on, none beyond the
    /// last row; then asks for the selection of the first destination. Dropped on a track the row is that of
    /// the track, below all tracks it is the last one. Row numbers count as they were when the drag began,
    /// without correction for the moves before; numbers that are no row are left out.
    /// Returns false only for data of another type.
    bool dropMimeData(const QMimeData* data, Qt::DropAction action, int row, int column,
                      const QModelIndex& parent) override;

    /// Moves one track so that it ends at row "to"; does nothing unless both rows are valid and differ.
    void moveTrack(int from, int to);

    [[nodiscard]] LvGPXConfiguredTrackList tracks() const;
    /// The track of the row; a default-constructed one for a row out of range.
    [[nodiscard]] LvGPXConfiguredTrack trackAt(const QModelIndex& index) const;
    [[nodiscard]] LvGPXConfiguredTrack trackAt(int row) const;
    /// Whether 0 <= row < rowCount().
    [[nodiscard]] bool isValidRow(int row) const;

    /// Shows the tracks of the selection. Nothing happens, not even a reset, when they equal the present
    /// ones.
    void setSelection(const LvGPXTrackSelection& selection);
    void addTracks(const LvGPXConfiguredTrackList& tracks);
    /// Removes the row of the index; does nothing when there is no such row (any more).
    void remove(const QModelIndex& index);

    /// Configures one track, see LvGPXConfiguredTrackList::setConfiguration().
    void setConfiguration(int row, const LvGPXTrackConfiguration& configuration);
    void setConfiguration(const QModelIndex& index, const LvGPXTrackConfiguration& configuration);
    void setConfigurationToAll(const LvGPXTrackConfiguration& configuration);

Q_SIGNALS:
    /// Sent after a drop with the row of the first moved track.
    void pleaseSelectTrack(int row);

private:
    LvGPXConfiguredTrackList myTracks;
};
