#pragma once

#include <QIdentityProxyModel>
#include <QList>

class LvGPXTrackListModel;

/**
 * The rows of a track list model with a check box in its second column: whether the track is shown.
 *
 * Rows are dragged by their first column only, so that a row stands once in what is dragged.
 */
class LvTrackRowsModel : public QIdentityProxyModel
{
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(LvTrackRowsModel)

public:
    static constexpr int nameColumn = 0;
    static constexpr int visibilityColumn = 1;

    LvTrackRowsModel(LvGPXTrackListModel* tracks, QObject* parent);
    ~LvTrackRowsModel() override;

    /// One entry per row; rows beyond the list are shown.
    void setVisibility(const QList<bool>& visibility);
    [[nodiscard]] bool isTrackVisible(int row) const;

    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
    /// Only asks for a change through visibilityEdited().
    bool setData(const QModelIndex& index, const QVariant& value, int role) override;
    [[nodiscard]] Qt::ItemFlags flags(const QModelIndex& index) const override;
    [[nodiscard]] QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

Q_SIGNALS:
    void visibilityEdited(int row, bool isVisible);

private:
    QList<bool> myVisibility;
};
