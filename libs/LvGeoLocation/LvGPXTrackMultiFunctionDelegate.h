#pragma once

#include "LvGPXTrackEditOptions.h"
#include "lvgeolocation_export.h"

#include <QHash>
#include <QPointer>
#include <QStyledItemDelegate>

class LvGPXTrackMultiFunctionDelegateWidget;
class QAbstractItemView;

/**
 * Turns every row of a view of tracks into a permanent widget with the name and buttons, see
 * LvGPXTrackMultiFunctionDelegateWidget, and passes on which button of which row was pressed.
 *
 * A row gets its widget, in column 0, when it is painted for the first time. User-interface thread only.
 */
class LVGEOLOCATION_EXPORT LvGPXTrackMultiFunctionDelegate : public QStyledItemDelegate
{
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(LvGPXTrackMultiFunctionDelegate)

public:
    /// @param view the view that the delegate is for; it becomes the parent
    LvGPXTrackMultiFunctionDelegate(QAbstractItemView* view, LvGPXTrackEditOptions options);
    ~LvGPXTrackMultiFunctionDelegate() override;

    /// Draws nothing: opens the widget of the row, which stays.
    void paint(QPainter* painter, const QStyleOptionViewItem& option,
               const QModelIndex& index) const override;
    /// The same for all rows.
    [[nodiscard]] QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override;

    /// The widget of the row; null for every column but the first.
    [[nodiscard]] QWidget* createEditor(QWidget* parent, const QStyleOptionViewItem& option,
                                        const QModelIndex& index) const override;
    /// Takes the widget away, whether the index is still valid or not.
    void destroyEditor(QWidget* editor, const QModelIndex& index) const override;
    /// Nothing: the widget reads the model itself.
    void setEditorData(QWidget* editor, const QModelIndex& index) const override;
    /// Nothing: the widget changes no data.
    void setModelData(QWidget* editor, QAbstractItemModel* model, const QModelIndex& index) const override;

public Q_SLOTS: // NOLINT(readability-redundant-access-specifiers) says more than public
    /// Lets the row blink; nothing happens while it has no widget.
    void animate(int row);

Q_SIGNALS:
    void editItem(int row);
    void deleteItem(int row);
    void addItem(int row);
    void zoomToItem(int row);

private:
    void forget(const QObject* editor) const;

    QAbstractItemView* myView;
    LvGPXTrackEditOptions myOptions;
    QPointer<LvGPXTrackMultiFunctionDelegateWidget> mySizingWidget; // belongs to the view, which may go first
    mutable QHash<int, LvGPXTrackMultiFunctionDelegateWidget*> myEditors;
};
