#include "LvTrackListPanel.h"

#include "LvGPXTrackListModel.h"
#include "LvGPXTrackMultiFunctionDelegate.h"
#include "LvTrackRowsModel.h"

#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QPainter>
#include <QSignalBlocker>
#include <QSlider>
#include <QTableView>
#include <QVBoxLayout>

namespace
{

constexpr int opaque = 255;
constexpr int opacityPageStep = 32;
constexpr int selectionAlpha = 90;
constexpr int nameCharacters = 50;

LvGPXTrackEditOptions allButtons()
{
    return LvGPXTrackEditOption::EditButton | LvGPXTrackEditOption::DeleteButton
        | LvGPXTrackEditOption::ZoomToButton | LvGPXTrackEditOption::AddButton;
}

/// Shows which row is selected below its widget. The colour is thin, so that the widget needs no other ones.
class SelectedRowDelegate : public LvGPXTrackMultiFunctionDelegate
{
public:
    using LvGPXTrackMultiFunctionDelegate::LvGPXTrackMultiFunctionDelegate;

    void paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const override
    {
        if (option.state.testFlag(QStyle::State_Selected)) {
            QColor color = option.palette.color(QPalette::Highlight);
            color.setAlpha(selectionAlpha);
            painter->fillRect(option.rect, color);
        }
        LvGPXTrackMultiFunctionDelegate::paint(painter, option, index);
    }
};

} // namespace

LvTrackListPanel::LvTrackListPanel(QWidget* parent)
    : QWidget(parent)
    , myTracks(new LvGPXTrackListModel(this))
    , myRows(new LvTrackRowsModel(myTracks, this))
    , myView(new QTableView(this))
    , myDelegate(new SelectedRowDelegate(myView, allButtons()))
    , myOpacity(new QSlider(Qt::Horizontal, this))
{
    myView->setObjectName(QStringLiteral("trackView"));
    myView->setAccessibleName(tr("Liste der Spuren"));
    myView->setModel(myRows);
    myView->setItemDelegateForColumn(LvTrackRowsModel::nameColumn, myDelegate);
    myView->setSelectionBehavior(QAbstractItemView::SelectRows);
    myView->setSelectionMode(QAbstractItemView::SingleSelection);
    myView->setEditTriggers(QAbstractItemView::NoEditTriggers);
    myView->setTabKeyNavigation(false); // the Tab key leads out of the list
    myView->setShowGrid(false);
    myView->setWordWrap(false);
    myView->setDragEnabled(true);
    myView->setAcceptDrops(true);
    myView->setDropIndicatorShown(true);
    myView->setDragDropMode(QAbstractItemView::InternalMove);
    // Otherwise the view empties the cells that were dragged away, the check box with them.
    myView->setDragDropOverwriteMode(false);
    myView->verticalHeader()->hide();
    // All rows are equally high: measuring hundreds of them would take its time.
    myView->verticalHeader()->setDefaultSectionSize(
        myDelegate->sizeHint(QStyleOptionViewItem(), QModelIndex()).height());
    QHeaderView* header = myView->horizontalHeader();
    header->setSectionResizeMode(LvTrackRowsModel::nameColumn, QHeaderView::Stretch);
    header->setSectionResizeMode(LvTrackRowsModel::visibilityColumn, QHeaderView::ResizeToContents);
    header->setStretchLastSection(false);
    header->setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    header->setHighlightSections(false);

    auto* opacityLabel = new QLabel(tr("&Karte neben den Spuren:"), this);
    opacityLabel->setBuddy(myOpacity);
    myOpacity->setObjectName(QStringLiteral("croppingOpacity"));
    myOpacity->setAccessibleName(tr("Deckkraft der Karte neben den Spuren"));
    myOpacity->setToolTip(tr("Blendet die Karte überall aus, wo keine Spur ist."));
    myOpacity->setRange(0, opaque);
    myOpacity->setPageStep(opacityPageStep);
    myOpacity->setValue(opaque);

    auto* opacityLayout = new QHBoxLayout;
    opacityLayout->addWidget(opacityLabel);
    opacityLayout->addWidget(myOpacity, 1);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(myView, 1);
    layout->addLayout(opacityLayout);

    connect(myDelegate, &LvGPXTrackMultiFunctionDelegate::editItem, this, &LvTrackListPanel::editRequested);
    connect(myDelegate, &LvGPXTrackMultiFunctionDelegate::deleteItem, this,
            &LvTrackListPanel::deleteRequested);
    connect(myDelegate, &LvGPXTrackMultiFunctionDelegate::zoomToItem, this, &LvTrackListPanel::zoomRequested);
    connect(myDelegate, &LvGPXTrackMultiFunctionDelegate::addItem, this, &LvTrackListPanel::markRequested);
    connect(myRows, &LvTrackRowsModel::visibilityEdited, this, &LvTrackListPanel::visibilityEdited);
    connect(myOpacity, &QSlider::valueChanged, this, &LvTrackListPanel::croppingOpacityEdited);
    connect(myTracks, &LvGPXTrackListModel::pleaseSelectTrack, this, [this](int row) {
        Q_EMIT reordered(myTracks->tracks(), row);
        setCurrentRow(row);
    });
    connect(myView->selectionModel(), &QItemSelectionModel::currentChanged, this,
            &LvTrackListPanel::onCurrentChanged);
}

LvTrackListPanel::~LvTrackListPanel() = default;

void LvTrackListPanel::setSelection(const LvGPXTrackSelection& selection)
{
    {
        const QSignalBlocker blocker(myOpacity);
        myOpacity->setValue(selection.nominalCroppingOpacity());
    }
    const int row = currentRow();
    adoptChangedRows(selection.tracks());
    myTracks->setSelection(selection); // resets the rows only where they still differ
    if (currentRow() < 0 && rowCount() > 0) {
        setCurrentRow(qBound(0, row, rowCount() - 1));
    } else if (rowCount() == 0 && row >= 0) {
        Q_EMIT currentRowChanged(-1);
    }
}

void LvTrackListPanel::adoptChangedRows(const LvGPXConfiguredTrackList& tracks)
{
    if (tracks.count() != myTracks->rowCount(QModelIndex())) {
        return;
    }
    for (int row = 0; row < static_cast<int>(tracks.count()); ++row) {
        if (myTracks->trackAt(row).track() == tracks.at(row).track()) {
            myTracks->setConfiguration(row, tracks.at(row).configuration());
        }
    }
}

void LvTrackListPanel::setVisibility(const QList<bool>& visibility)
{
    myRows->setVisibility(visibility);
}

int LvTrackListPanel::rowCount() const
{
    return myRows->rowCount();
}

int LvTrackListPanel::currentRow() const
{
    const QModelIndex current = myView->currentIndex();
    return current.isValid() ? current.row() : -1;
}

void LvTrackListPanel::setCurrentRow(int row)
{
    if (row < 0 || row >= rowCount()) {
        return;
    }
    myView->selectionModel()->setCurrentIndex(myRows->index(row, LvTrackRowsModel::nameColumn),
                                              QItemSelectionModel::ClearAndSelect
                                                  | QItemSelectionModel::Rows);
}

void LvTrackListPanel::blink(int row)
{
    if (row >= 0 && row < rowCount()) {
        myView->scrollTo(myRows->index(row, LvTrackRowsModel::nameColumn));
        myDelegate->animate(row);
    }
}

QSize LvTrackListPanel::sizeHint() const
{
    return QWidget::sizeHint().expandedTo(QSize(fontMetrics().averageCharWidth() * nameCharacters, 0));
}

void LvTrackListPanel::onCurrentChanged(const QModelIndex& current)
{
    Q_EMIT currentRowChanged(current.isValid() ? current.row() : -1);
}
