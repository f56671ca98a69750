#pragma once

#include "LvGPXTrackEditOptions.h"
#include "lvgeolocation_export.h"

#include <QRecursiveMutex>
#include <QWidget>

class LvBlinkAnimation;
class LvElidedLabel;
class QModelIndex;

/**
 * One row of a track list: the name of the track in an eliding label and up to four buttons.
 *
 * Label and tool tips follow the name in the model. The row number is that of the construction.
 * User-interface thread only.
 */
class LVGEOLOCATION_EXPORT LvGPXTrackMultiFunctionDelegateWidget : public QWidget
{
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(LvGPXTrackMultiFunctionDelegateWidget)

public:
    /// @param index the row that is shown; an invalid one gives an empty row
    LvGPXTrackMultiFunctionDelegateWidget(const QModelIndex& index, LvGPXTrackEditOptions options,
                                          QWidget* parent);
    ~LvGPXTrackMultiFunctionDelegateWidget() override;

    /// Makes label and buttons; called once, by the constructor.
    void setupUi(const QModelIndex& index, LvGPXTrackEditOptions options);

    /// A label of this widget that shows the text, word-wrapped and elided.
    [[nodiscard]] LvElidedLabel* createTextLabel(const QString& text);

public Q_SLOTS: // NOLINT(readability-redundant-access-specifiers) says more than public
    /// Shows the name anew when the row lies in the changed block.
    void modelDataChanged(const QModelIndex& topLeft, const QModelIndex& bottomRight);

    /// Lets the label blink for a while.
    void startAnimation();

    /// Shows a state of the blinking at once, see LvElidedLabel::setAnimationState().
    void animate(int state);

    void onEditEventRequested();
    /// Ends the blinking before the signal leaves: whoever deletes the row deletes this widget.
    void onDeleteEventRequested();
    void onZoomEventRequested();
    void onAddEventRequested();

Q_SIGNALS:
    void editItem(int row);
    void deleteItem(int row);
    void zoomToItem(int row);
    void addItem(int row);

protected:
    void changeEvent(QEvent* event) override;

private:
    void showName(const QString& name);

    int myRow;
    QRecursiveMutex myMutex; // guards the starting and stopping of the animation
    LvElidedLabel* myLabel = nullptr;
    LvBlinkAnimation* myAnimation;
};
