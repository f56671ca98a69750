#include "LvGPXTrackMultiFunctionDelegateWidget.h"

#include "LvBlinkAnimation.h"
#include "LvElidedLabel.h"
#include "LvIconRegistry.h"

#include <QAbstractItemModel>
#include <QEvent>
#include <QHBoxLayout>
#include <QTextDocument>
#include <QToolButton>

#include <array>

namespace
{

using Widget = LvGPXTrackMultiFunctionDelegateWidget;

struct LvRowButton {
    LvGPXTrackEditOption myOption;
    const char* myObjectName;
    const char* myIconName;
    const char* myToolTip;
    const char* myAccessibleName;
    void (Widget::*myHandler)();
};

// In the order in which they stand in the row.
constexpr std::array<LvRowButton, 4> rowButtons{{
    {LvGPXTrackEditOption::EditButton, "editButton", "ico_editListItem",
     QT_TRANSLATE_NOOP("LvGPXTrackMultiFunctionDelegateWidget", "%1 bearbeiten"),
     QT_TRANSLATE_NOOP("LvGPXTrackMultiFunctionDelegateWidget", "%1 bearbeiten"),
     &Widget::onEditEventRequested},
    {LvGPXTrackEditOption::DeleteButton, "deleteButton", "ico_deleteListItem",
     QT_TRANSLATE_NOOP("LvGPXTrackMultiFunctionDelegateWidget", "%1 löschen"),
     QT_TRANSLATE_NOOP("LvGPXTrackMultiFunctionDelegateWidget", "%1 löschen"),
     &Widget::onDeleteEventRequested},
    {LvGPXTrackEditOption::ZoomToButton, "zoomToButton", "ico_fit_map",
     QT_TRANSLATE_NOOP("LvGPXTrackMultiFunctionDelegateWidget", "<b>Zoome auf</b> %1"),
     QT_TRANSLATE_NOOP("LvGPXTrackMultiFunctionDelegateWidget", "Zoome auf %1"),
     &Widget::onZoomEventRequested},
    {LvGPXTrackEditOption::AddButton, "addButton", "ico_add_route",
     QT_TRANSLATE_NOOP("LvGPXTrackMultiFunctionDelegateWidget", "<b>Markiere</b> %1"),
     QT_TRANSLATE_NOOP("LvGPXTrackMultiFunctionDelegateWidget", "Markiere %1"), &Widget::onAddEventRequested},
}};

// Names come out of files: none of them may pass for markup.
QString filledToolTip(const QString& text, const QString& name)
{
    if (Qt::mightBeRichText(text)) {
        return text.arg(name.toHtmlEscaped());
    }
    const QString filled = text.arg(name);
    return Qt::mightBeRichText(filled) ? QStringLiteral("<p>%1</p>").arg(filled.toHtmlEscaped()) : filled;
}

} // namespace

LvGPXTrackMultiFunctionDelegateWidget::LvGPXTrackMultiFunctionDelegateWidget(const QModelIndex& index,
                                                                             LvGPXTrackEditOptions options,
                                                                             QWidget* parent)
    : QWidget(parent)
    , myRow(index.row())
    , myAnimation(new LvBlinkAnimation(this))
{
    setupUi(index, options);
    if (index.model() != nullptr) {
        connect(index.model(), &QAbstractItemModel::dataChanged, this, &Widget::modelDataChanged);
    }
    connect(myAnimation, &LvBlinkAnimation::blink, this, &Widget::animate);
}

LvGPXTrackMultiFunctionDelegateWidget::~LvGPXTrackMultiFunctionDelegateWidget() = default;

void LvGPXTrackMultiFunctionDelegateWidget::setupUi(const QModelIndex& index, LvGPXTrackEditOptions options)
{
    auto* layout = new QHBoxLayout(this);
    layout->setSpacing(1);
    layout->setContentsMargins(2, 2, 2, 2);
    const QString name = index.data(Qt::DisplayRole).toString();
    myLabel = createTextLabel(name);
    layout->addWidget(myLabel, 1);
    for (const LvRowButton& description : rowButtons) {
        if (options.testFlag(description.myOption)) {
            auto* button = new QToolButton(this);
            button->setObjectName(QLatin1String(description.myObjectName));
            button->setAutoRaise(true);
            LvIconRegistry::instance()->setIcon(button, QLatin1String(description.myIconName));
            connect(button, &QToolButton::clicked, this, description.myHandler);
            layout->addWidget(button);
        }
    }
    showName(name);
}

LvElidedLabel* LvGPXTrackMultiFunctionDelegateWidget::createTextLabel(const QString& text)
{
    auto* label = new LvElidedLabel(text, this);
    label->setWordWrap(true);
    return label;
}

void LvGPXTrackMultiFunctionDelegateWidget::modelDataChanged(const QModelIndex& topLeft,
                                                             const QModelIndex& bottomRight)
{
    const QAbstractItemModel* model = topLeft.model();
    if (model != nullptr && topLeft.row() <= myRow && myRow <= bottomRight.row()) {
        showName(model->index(myRow, 0).data(Qt::DisplayRole).toString());
        update();
    }
}

void LvGPXTrackMultiFunctionDelegateWidget::startAnimation()
{
    if (myMutex.tryLock()) {
        myAnimation->start();
        myMutex.unlock();
    }
}

void LvGPXTrackMultiFunctionDelegateWidget::animate(int state)
{
    myLabel->setAnimationState(state);
    myLabel->repaint(); // the caller may be busy for a while
}

void LvGPXTrackMultiFunctionDelegateWidget::onEditEventRequested()
{
    Q_EMIT editItem(myRow);
}

void LvGPXTrackMultiFunctionDelegateWidget::onDeleteEventRequested()
{
    if (myMutex.tryLock()) {
        myAnimation->stop();
        myMutex.unlock();
    }
    Q_EMIT deleteItem(myRow);
}

void LvGPXTrackMultiFunctionDelegateWidget::onZoomEventRequested()
{
    Q_EMIT zoomToItem(myRow);
}

void LvGPXTrackMultiFunctionDelegateWidget::onAddEventRequested()
{
    Q_EMIT addItem(myRow);
}

void LvGPXTrackMultiFunctionDelegateWidget::changeEvent(QEvent* event)
{
    if (event->type() == QEvent::LanguageChange && myLabel != nullptr) {
        showName(myLabel->fullText());
    }
    QWidget::changeEvent(event);
}

void LvGPXTrackMultiFunctionDelegateWidget::showName(const QString& name)
{
    myLabel->setFullText(name);
    setAccessibleName(name);
    for (const LvRowButton& description : rowButtons) {
        auto* button = findChild<QToolButton*>(QLatin1String(description.myObjectName));
        if (button != nullptr) {
            button->setToolTip(filledToolTip(tr(description.myToolTip), name));
            button->setAccessibleName(tr(description.myAccessibleName).arg(name));
        }
    }
}
