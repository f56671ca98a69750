#include "LvGPXTrackMultiFunctionDelegate.h"

#include "LvGPXTrackMultiFunctionDelegateWidget.h"

#include <QAbstractItemView>

namespace
{

using Widget = LvGPXTrackMultiFunctionDelegateWidget;
using Delegate = LvGPXTrackMultiFunctionDelegate;

constexpr int editorColumn = 0;

} // namespace

LvGPXTrackMultiFunctionDelegate::LvGPXTrackMultiFunctionDelegate(QAbstractItemView* view,
                                                                 LvGPXTrackEditOptions options)
    : QStyledItemDelegate(view)
    , myView(view)
    , myOptions(options)
    , mySizingWidget(new Widget(QModelIndex(), options, view))
{
    mySizingWidget->setVisible(false);
}

LvGPXTrackMultiFunctionDelegate::~LvGPXTrackMultiFunctionDelegate()
{
    delete mySizingWidget;
}

void LvGPXTrackMultiFunctionDelegate::paint(QPainter* /*painter*/, const QStyleOptionViewItem& /*option*/,
                                            const QModelIndex& index) const
{
    if (myView != nullptr && index.column() == editorColumn && index.data(Qt::EditRole).isValid()) {
        myView->openPersistentEditor(index);
    }
}

QSize LvGPXTrackMultiFunctionDelegate::sizeHint(const QStyleOptionViewItem& /*option*/,
                                                const QModelIndex& /*index*/) const
{
    return mySizingWidget != nullptr ? mySizingWidget->sizeHint() : QSize();
}

QWidget* LvGPXTrackMultiFunctionDelegate::createEditor(QWidget* parent,
                                                       const QStyleOptionViewItem& /*option*/,
                                                       const QModelIndex& index) const
{
    if (index.column() != editorColumn) {
        return nullptr;
    }
    auto* editor = new Widget(index, myOptions, parent);
    connect(editor, &Widget::editItem, this, &Delegate::editItem);
    connect(editor, &Widget::deleteItem, this, &Delegate::deleteItem);
    connect(editor, &Widget::addItem, this, &Delegate::addItem);
    connect(editor, &Widget::zoomToItem, this, &Delegate::zoomToItem);
    // Not every editor comes back through destroyEditor(): it may go with the viewport.
    connect(editor, &QObject::destroyed, this, &Delegate::forget);
    myEditors.insert(index.row(), editor);
    return editor;
}

void LvGPXTrackMultiFunctionDelegate::destroyEditor(QWidget* editor, const QModelIndex& index) const
{
    if (const auto* widget = qobject_cast<Widget*>(editor)) {
        forget(widget); // by the widget: after a reset the index says nothing any more
        // A widget on its way out must neither edit nor delete the row that has taken its place.
        disconnect(widget, &Widget::editItem, this, &Delegate::editItem);
        disconnect(widget, &Widget::deleteItem, this, &Delegate::deleteItem);
    }
    QAbstractItemDelegate::destroyEditor(editor, index);
}

void LvGPXTrackMultiFunctionDelegate::setEditorData(QWidget* /*editor*/, const QModelIndex& /*index*/) const
{
}

void LvGPXTrackMultiFunctionDelegate::setModelData(QWidget* /*editor*/, QAbstractItemModel* /*model*/,
                                                   const QModelIndex& /*index*/) const
{
}

void LvGPXTrackMultiFunctionDelegate::animate(int row)
{
    if (Widget* editor = myEditors.value(row)) {
        editor->startAnimation();
    }
}

void LvGPXTrackMultiFunctionDelegate::forget(const QObject* editor) const
{
    // Compared as addresses: when the signal comes the widget is no more than a QObject.
    myEditors.removeIf([editor](auto entry) { return static_cast<const QObject*>(entry.value()) == editor; });
}
