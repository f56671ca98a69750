#pragma once

#include "LvGPXTrackSelection.h"

#include <QList>
#include <QWidget>

class LvGPXTrackListModel;
class LvGPXTrackMultiFunctionDelegate;
class LvTrackRowsModel;
class QSlider;
class QTableView;

/**
 * The list of the tracks with their buttons, and the slider that fades the map beside them.
 *
 * It shows what it is given and asks for changes by signals; only a drag reorders its own rows at once.
 */
class LvTrackListPanel : public QWidget
{
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(LvTrackListPanel)

public:
    explicit LvTrackListPanel(QWidget* parent = nullptr);
    ~LvTrackListPanel() override;

    /// Shows these tracks. Rows that stay what they are keep their widgets, the current row stays current.
    void setSelection(const LvGPXTrackSelection& selection);
    /// One entry per row.
    void setVisibility(const QList<bool>& visibility);

    [[nodiscard]] int rowCount() const;
    /// The row with the keyboard cursor; -1 for none.
    [[nodiscard]] int currentRow() const;
    /// Makes a row current and selects it; does nothing for a row out of range.
    void setCurrentRow(int row);
    /// Lets the name of a row blink.
    void blink(int row);

    [[nodiscard]] QTableView* view() const { return myView; }

    /// Room for names of a usual length beside the buttons.
    [[nodiscard]] QSize sizeHint() const override;

Q_SIGNALS:
    void currentRowChanged(int row);
    void editRequested(int row);
    void deleteRequested(int row);
    void zoomRequested(int row);
    void markRequested(int row);
    void visibilityEdited(int row, bool isVisible);
    void croppingOpacityEdited(int opacity);
    /// A drag has put the tracks into this order.
    void reordered(const LvGPXConfiguredTrackList& tracks, int currentRow);

private:
    void adoptChangedRows(const LvGPXConfiguredTrackList& tracks);
    void onCurrentChanged(const QModelIndex& current);

    LvGPXTrackListModel* myTracks;
    LvTrackRowsModel* myRows;
    QTableView* myView;
    LvGPXTrackMultiFunctionDelegate* myDelegate;
    QSlider* myOpacity;
};
