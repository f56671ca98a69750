#include "LvBlinkAnimation.h"
#include "LvElidedLabel.h"
#include "LvGPXTrackMultiFunctionDelegateWidget.h"
#include "LvIconRegistry.h"
#include "LvTest.h"

#include <QHBoxLayout>
#include <QSignalSpy>
#include <QStandardItemModel>
#include <QToolButton>
#include <QTranslator>

#include <thread>

namespace
{

using Widget = LvGPXTrackMultiFunctionDelegateWidget;

const LvGPXTrackEditOptions allButtons(15);

// Puts the texts into brackets with where they are looked up; the place for the name stays.
class Marker : public QTranslator
{
public:
    [[nodiscard]] bool isEmpty() const override { return false; }

    [[nodiscard]] QString translate(const char* context, const char* source, const char* /*disambiguation*/,
                                    int /*count*/) const override
    {
        return QStringLiteral("%1[%2]").arg(QString::fromUtf8(context), QString::fromUtf8(source));
    }
};

void fill(QStandardItemModel& model, const QStringList& names)
{
    for (const QString& name : names) {
        model.appendRow({new QStandardItem(name), new QStandardItem(QStringLiteral("second column"))});
    }
}

LvElidedLabel* labelOf(const Widget& widget)
{
    return widget.findChild<LvElidedLabel*>();
}

QList<QToolButton*> buttonsOf(const Widget& widget)
{
    // In the order of the layout.
    QList<QToolButton*> buttons;
    for (int i = 0; i < widget.layout()->count(); ++i) {
        if (auto* button = qobject_cast<QToolButton*>(widget.layout()->itemAt(i)->widget())) {
            buttons.append(button);
        }
    }
    return buttons;
}

QStringList toolTipsOf(const Widget& widget)
{
    QStringList toolTips;
    const QList<QToolButton*> buttons = buttonsOf(widget);
    for (const QToolButton* button : buttons) {
        toolTips.append(button->toolTip());
    }
    return toolTips;
}

QStringList accessibleNamesOf(const Widget& widget)
{
    QStringList names;
    const QList<QToolButton*> buttons = buttonsOf(widget);
    for (const QToolButton* button : buttons) {
        names.append(button->accessibleName());
    }
    return names;
}

QImage pictureOf(const QIcon& icon)
{
    return icon.pixmap(QSize(16, 16)).toImage();
}

} // namespace

class tst_LvGPXTrackMultiFunctionDelegateWidget : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void layout();
    void invalidIndex();
    void options_data();
    void options();
    void icons();
    void texts();
    void namesAreNoMarkup();
    void translation();
    void languageChange();
    void createTextLabel();
    void clicks();
    void dataChanged();
    void otherBlocks();
    void elides();
    void blinks();
    void deletingStopsTheBlinking();
    void busyAnimation();
    void repaintsAtOnce();
    void picture();
};

void tst_LvGPXTrackMultiFunctionDelegateWidget::layout()
{
    QStandardItemModel model;
    fill(model, {"Harz", "Weser"});
    QWidget parent;
    const auto* widget = new Widget(model.index(1, 0), allButtons, &parent);
    QCOMPARE(widget->parentWidget(), &parent);
    const auto* row = qobject_cast<QHBoxLayout*>(widget->layout());
    QVERIFY(row != nullptr);
    QCOMPARE(row->spacing(), 1);
    QCOMPARE(row->contentsMargins(), QMargins(2, 2, 2, 2));
    QCOMPARE(row->count(), 5);
    QCOMPARE(row->itemAt(0)->widget(), labelOf(*widget));
    QCOMPARE(row->stretch(0), 1);
    for (int i = 1; i < 5; ++i) {
        QCOMPARE(row->stretch(i), 0);
        QCOMPARE(row->itemAt(i)->widget()->parentWidget(), widget);
    }
    QCOMPARE(labelOf(*widget)->fullText(), QStringLiteral("Weser"));
    QVERIFY(labelOf(*widget)->wordWrap());
    QCOMPARE(widget->findChildren<LvBlinkAnimation*>(QString(), Qt::FindDirectChildrenOnly).size(),
             qsizetype{1});
}

void tst_LvGPXTrackMultiFunctionDelegateWidget::invalidIndex()
{
    Widget widget(QModelIndex(), allButtons, nullptr);
    QCOMPARE(labelOf(widget)->fullText(), QString());
    QCOMPARE(buttonsOf(widget).size(), qsizetype{4});
    QVERIFY(widget.sizeHint().height() >= buttonsOf(widget).first()->sizeHint().height() + 4);
    const QSignalSpy edit(&widget, &Widget::editItem);
    buttonsOf(widget).first()->click();
    QCOMPARE(edit.first().first().toInt(), -1);
    widget.modelDataChanged(QModelIndex(), QModelIndex());
    QCOMPARE(labelOf(widget)->fullText(), QString());
}

void tst_LvGPXTrackMultiFunctionDelegateWidget::options_data()
{
    QTest::addColumn<int>("options");
    QTest::addColumn<QStringList>("toolTips");
    const QString edit = QStringLiteral("Harz bearbeiten");
    const QString remove = QStringLiteral("Harz löschen");
    const QString zoom = QStringLiteral("<b>Zoome auf</b> Harz");
    const QString add = QStringLiteral("<b>Markiere</b> Harz");
    QTest::newRow("the label alone") << 0 << QStringList();
    QTest::newRow("add") << 1 << QStringList{add};
    QTest::newRow("delete") << 2 << QStringList{remove};
    QTest::newRow("zoom to") << 4 << QStringList{zoom};
    QTest::newRow("edit") << 8 << QStringList{edit};
    QTest::newRow("all, in this order") << 15 << QStringList{edit, remove, zoom, add};
    QTest::newRow("two") << 5 << QStringList{zoom, add};
    QTest::newRow("other flags mean nothing") << 16 << QStringList();
}

void tst_LvGPXTrackMultiFunctionDelegateWidget::options()
{
    QFETCH(int, options);
    QFETCH(QStringList, toolTips);
    QStandardItemModel model;
    fill(model, {"Harz"});
    const Widget widget(model.index(0, 0), LvGPXTrackEditOptions(options), nullptr);
    QCOMPARE(toolTipsOf(widget), toolTips);
    QCOMPARE(widget.findChildren<QToolButton*>().size(), toolTips.size());
    QCOMPARE(widget.layout()->count(), static_cast<int>(toolTips.size()) + 1);
}

void tst_LvGPXTrackMultiFunctionDelegateWidget::icons()
{
    const Widget widget(QModelIndex(), allButtons, nullptr);
    const QStringList names{"ico_editListItem", "ico_deleteListItem", "ico_fit_map", "ico_add_route"};
    const QList<QToolButton*> buttons = buttonsOf(widget);
    for (qsizetype i = 0; i < names.size(); ++i) {
        QVERIFY(LvIconRegistry::instance()->contains(names.at(i)));
        QCOMPARE(pictureOf(buttons.at(i)->icon()), pictureOf(LvIconRegistry::instance()->icon(names.at(i))));
        QVERIFY(pictureOf(buttons.at(i)->icon()) != pictureOf(buttons.at((i + 1) % 4)->icon()));
    }
}

void tst_LvGPXTrackMultiFunctionDelegateWidget::texts()
{
    QStandardItemModel model;
    fill(model, {"Harz %1"}); // a name is no place for another name
    const Widget widget(model.index(0, 0), allButtons, nullptr);
    QCOMPARE(toolTipsOf(widget),
             (QStringList{"Harz %1 bearbeiten", "Harz %1 löschen", "<b>Zoome auf</b> Harz %1",
                          "<b>Markiere</b> Harz %1"}));
    QCOMPARE(accessibleNamesOf(widget),
             (QStringList{"Harz %1 bearbeiten", "Harz %1 löschen", "Zoome auf Harz %1", "Markiere Harz %1"}));
    QCOMPARE(labelOf(widget)->accessibleName(), QStringLiteral("Harz %1"));
    QCOMPARE(widget.accessibleName(), QStringLiteral("Harz %1"));
}

void tst_LvGPXTrackMultiFunctionDelegateWidget::namesAreNoMarkup()
{
    QStandardItemModel model;
    fill(model, {"<img src=x>"});
    const Widget widget(model.index(0, 0), allButtons, nullptr);
    QCOMPARE(toolTipsOf(widget),
             (QStringList{"<p>&lt;img src=x&gt; bearbeiten</p>", "<p>&lt;img src=x&gt; löschen</p>",
                          "<b>Zoome auf</b> &lt;img src=x&gt;", "<b>Markiere</b> &lt;img src=x&gt;"}));
    QCOMPARE(labelOf(widget)->fullText(), QStringLiteral("<img src=x>"));
    QCOMPARE(accessibleNamesOf(widget).first(), QStringLiteral("<img src=x> bearbeiten"));
}

void tst_LvGPXTrackMultiFunctionDelegateWidget::translation()
{
    QStandardItemModel model;
    fill(model, {"Harz"});
    Marker translator;
    QVERIFY(QCoreApplication::installTranslator(&translator));
    const Widget widget(model.index(0, 0), allButtons, nullptr);
    QCoreApplication::removeTranslator(&translator);
    const QString context = QStringLiteral("LvGPXTrackMultiFunctionDelegateWidget");
    QCOMPARE(toolTipsOf(widget),
             (QStringList{context + "[Harz bearbeiten]", context + "[Harz löschen]",
                          context + "[<b>Zoome auf</b> Harz]", context + "[<b>Markiere</b> Harz]"}));
    QCOMPARE(accessibleNamesOf(widget),
             (QStringList{context + "[Harz bearbeiten]", context + "[Harz löschen]",
                          context + "[Zoome auf Harz]", context + "[Markiere Harz]"}));
    QCOMPARE(labelOf(widget)->fullText(), QStringLiteral("Harz"));
}

void tst_LvGPXTrackMultiFunctionDelegateWidget::languageChange()
{
    QStandardItemModel model;
    fill(model, {"Harz"});
    const Widget widget(model.index(0, 0), allButtons, nullptr);
    Marker translator;
    QVERIFY(QCoreApplication::installTranslator(&translator));
    QTRY_VERIFY(toolTipsOf(widget).first().endsWith(QLatin1String("[Harz bearbeiten]")));
    QCoreApplication::removeTranslator(&translator);
    QTRY_COMPARE(toolTipsOf(widget).first(), QStringLiteral("Harz bearbeiten"));
}

void tst_LvGPXTrackMultiFunctionDelegateWidget::createTextLabel()
{
    Widget widget(QModelIndex(), LvGPXTrackEditOptions(), nullptr);
    const LvElidedLabel* label = widget.createTextLabel(QStringLiteral("Zeile"));
    QCOMPARE(label->fullText(), QStringLiteral("Zeile"));
    QVERIFY(label->wordWrap());
    QCOMPARE(label->parentWidget(), &widget);
    QCOMPARE(labelOf(widget)->fullText(), QString()); // the row keeps its own
    QCOMPARE(widget.layout()->count(), 1);
}

void tst_LvGPXTrackMultiFunctionDelegateWidget::clicks()
{
    QStandardItemModel model;
    fill(model, {"a", "b", "c"});
    Widget widget(model.index(2, 0), allButtons, nullptr);
    widget.show();
    QVERIFY(QTest::qWaitForWindowExposed(&widget));
    const QSignalSpy edit(&widget, &Widget::editItem);
    const QSignalSpy remove(&widget, &Widget::deleteItem);
    const QSignalSpy zoom(&widget, &Widget::zoomToItem);
    const QSignalSpy add(&widget, &Widget::addItem);
    const QList<const QSignalSpy*> spies{&edit, &remove, &zoom, &add};
    const QList<QToolButton*> buttons = buttonsOf(widget);
    for (qsizetype i = 0; i < 4; ++i) {
        QTest::mouseClick(buttons.at(i), Qt::LeftButton);
        for (qsizetype j = 0; j < 4; ++j) {
            QCOMPARE(spies.at(j)->size(), qsizetype{j <= i ? 1 : 0});
        }
        QCOMPARE(spies.at(i)->first(), QVariantList{2});
    }
    buttons.at(3)->setFocus(Qt::TabFocusReason);
    QTest::keyClick(buttons.at(3), Qt::Key_Space);
    QCOMPARE(add.size(), qsizetype{2});
    for (const QToolButton* button : buttons) {
        QVERIFY(button->focusPolicy() & Qt::TabFocus);
    }
}

void tst_LvGPXTrackMultiFunctionDelegateWidget::dataChanged()
{
    QStandardItemModel model;
    fill(model, {"a", "b", "c"});
    const Widget widget(model.index(1, 0), allButtons, nullptr);
    model.item(1, 0)->setText(QStringLiteral("Neu"));
    QCOMPARE(labelOf(widget)->fullText(), QStringLiteral("Neu"));
    QCOMPARE(toolTipsOf(widget),
             (QStringList{"Neu bearbeiten", "Neu löschen", "<b>Zoome auf</b> Neu", "<b>Markiere</b> Neu"}));
    QCOMPARE(accessibleNamesOf(widget),
             (QStringList{"Neu bearbeiten", "Neu löschen", "Zoome auf Neu", "Markiere Neu"}));
    QCOMPARE(widget.accessibleName(), QStringLiteral("Neu"));
    model.item(0, 0)->setText(QStringLiteral("another row"));
    QCOMPARE(labelOf(widget)->fullText(), QStringLiteral("Neu"));
    model.item(1, 1)->setText(QStringLiteral("the other column"));
    QCOMPARE(labelOf(widget)->fullText(), QStringLiteral("Neu")); // the name is in the first column
}

void tst_LvGPXTrackMultiFunctionDelegateWidget::otherBlocks()
{
    QStandardItemModel model;
    fill(model, {"a", "b", "c", "d"});
    Widget widget(model.index(1, 0), allButtons, nullptr);
    model.blockSignals(true);
    model.item(1, 0)->setText(QStringLiteral("silent"));
    model.blockSignals(false);
    widget.modelDataChanged(model.index(2, 0), model.index(3, 1));
    QCOMPARE(labelOf(widget)->fullText(), QStringLiteral("b"));
    widget.modelDataChanged(model.index(0, 0), model.index(0, 1));
    QCOMPARE(labelOf(widget)->fullText(), QStringLiteral("b"));
    widget.modelDataChanged(model.index(0, 1), model.index(1, 1));
    QCOMPARE(labelOf(widget)->fullText(), QStringLiteral("silent"));
    model.blockSignals(true);
    model.item(1, 0)->setText(QStringLiteral("again"));
    model.blockSignals(false);
    widget.modelDataChanged(model.index(1, 0), model.index(3, 1));
    QCOMPARE(labelOf(widget)->fullText(), QStringLiteral("again"));
}

void tst_LvGPXTrackMultiFunctionDelegateWidget::elides()
{
    QStandardItemModel model;
    fill(model, {"Von Bremerhaven die Weser hinauf bis nach Hannoversch Münden und wieder zurück"});
    Widget widget(model.index(0, 0), allButtons, nullptr);
    widget.resize(220, 30);
    widget.show();
    QVERIFY(QTest::qWaitForWindowExposed(&widget));
    const LvElidedLabel* label = labelOf(widget);
    QVERIFY(label->isElided());
    QVERIFY(label->shownLines().last().endsWith(QChar(0x2026)));
    QCOMPARE(label->fullText(), model.item(0, 0)->text());
    const QList<QToolButton*> buttons = buttonsOf(widget);
    for (const QToolButton* button : buttons) { // the buttons keep their room
        QCOMPARE(button->width(), button->sizeHint().width());
        QVERIFY(widget.rect().contains(button->geometry()));
    }
    widget.resize(1000, 30);
    QTRY_VERIFY(!label->isElided());
}

void tst_LvGPXTrackMultiFunctionDelegateWidget::blinks()
{
    QStandardItemModel model;
    fill(model, {"a"});
    Widget widget(model.index(0, 0), allButtons, nullptr);
    widget.show();
    QVERIFY(QTest::qWaitForWindowExposed(&widget));
    const auto* animation = widget.findChild<LvBlinkAnimation*>();
    const QSignalSpy blink(animation, &LvBlinkAnimation::blink);
    QCOMPARE(labelOf(widget)->animationState(), 0);
    widget.startAnimation();
    QVERIFY(animation->isRunning());
    QCOMPARE(labelOf(widget)->animationState(), LvBlinkAnimation::highlightedState);
    QTRY_COMPARE(labelOf(widget)->animationState(), LvBlinkAnimation::normalState);
    QTRY_COMPARE(labelOf(widget)->animationState(), LvBlinkAnimation::highlightedState);
    QTRY_VERIFY(!animation->isRunning());
    QCOMPARE(labelOf(widget)->animationState(), LvBlinkAnimation::normalState);
    QCOMPARE(blink.size(), qsizetype{2 * LvBlinkAnimation::repetitions});
}

void tst_LvGPXTrackMultiFunctionDelegateWidget::deletingStopsTheBlinking()
{
    QStandardItemModel model;
    fill(model, {"a"});
    Widget widget(model.index(0, 0), allButtons, nullptr);
    const auto* animation = widget.findChild<LvBlinkAnimation*>();
    bool wasRunning = true;
    int stateThen = -1;
    connect(&widget, &Widget::deleteItem, this, [&] {
        wasRunning = animation->isRunning();
        stateThen = labelOf(widget)->animationState();
    });
    widget.startAnimation();
    for (auto other :
         {&Widget::onEditEventRequested, &Widget::onZoomEventRequested, &Widget::onAddEventRequested}) {
        (widget.*other)();
        QVERIFY(animation->isRunning());
    }
    widget.onDeleteEventRequested();
    QVERIFY(!wasRunning);
    QCOMPARE(stateThen, LvBlinkAnimation::normalState);
}

void tst_LvGPXTrackMultiFunctionDelegateWidget::busyAnimation()
{
    // While the start is under way, another thread finds the animation taken: it neither starts nor stops it
    // and does not wait; the request to delete arrives nevertheless.
    QStandardItemModel model;
    fill(model, {"a"});
    Widget widget(model.index(0, 0), allButtons, nullptr);
    auto* animation = widget.findChild<LvBlinkAnimation*>();
    int blinks = 0;
    int deletions = 0;
    connect(
        &widget, &Widget::deleteItem, &widget, [&] { ++deletions; }, Qt::DirectConnection);
    connect(
        animation, &LvBlinkAnimation::blink, &widget,
        [&] {
            if (++blinks == 1) {
                std::thread other([&] {
                    widget.startAnimation();
                    widget.onDeleteEventRequested();
                });
                other.join();
            }
        },
        Qt::DirectConnection);
    widget.startAnimation();
    QCOMPARE(blinks, 1);
    QCOMPARE(deletions, 1);
    QVERIFY(animation->isRunning());
    // The thread that holds it may go on.
    widget.onDeleteEventRequested();
    QVERIFY(!animation->isRunning());
    QCOMPARE(deletions, 2);
}

void tst_LvGPXTrackMultiFunctionDelegateWidget::repaintsAtOnce()
{
    class PaintCounter : public QObject
    {
    public:
        using QObject::QObject;

        bool eventFilter(QObject* /*watched*/, QEvent* event) override
        {
            myPaints += event->type() == QEvent::Paint ? 1 : 0;
            return false;
        }

        int myPaints = 0;
    };

    QStandardItemModel model;
    fill(model, {"a"});
    Widget widget(model.index(0, 0), allButtons, nullptr);
    widget.show();
    QVERIFY(QTest::qWaitForWindowExposed(&widget));
    PaintCounter counter;
    labelOf(widget)->installEventFilter(&counter);
    widget.animate(1); // no event loop in between
    QCOMPARE(labelOf(widget)->animationState(), 1);
    QCOMPARE(counter.myPaints, 1);
    widget.animate(2);
    QCOMPARE(labelOf(widget)->animationState(), 2);
    QCOMPARE(counter.myPaints, 2);
}

void tst_LvGPXTrackMultiFunctionDelegateWidget::picture()
{
    QStandardItemModel model;
    fill(model, {"Rund um den Brocken und durch das Ilsetal"});
    Widget widget(model.index(0, 0), allButtons, nullptr);
    QApplication::setStyle(QStringLiteral("Fusion"));
    QPalette palette(QColor(240, 240, 240));
    palette.setColor(QPalette::Window, Qt::white);
    palette.setColor(QPalette::Highlight, QColor(0x30, 0x8C, 0xC6));
    palette.setColor(QPalette::HighlightedText, Qt::white);
    widget.setPalette(palette);
    widget.setAutoFillBackground(true);
    QFont font(QStringLiteral("Liberation Sans"));
    font.setPixelSize(14);
    widget.setFont(font);
    widget.resize(260, 36);
    QImage plain(widget.size(), QImage::Format_ARGB32);
    widget.render(&plain);
    QVERIFY(LvTest::matchesGolden(plain, QStringLiteral("track-row")));
    widget.animate(1);
    QImage blinking(widget.size(), QImage::Format_ARGB32);
    widget.render(&blinking);
    QVERIFY(LvTest::matchesGolden(blinking, QStringLiteral("track-row-blinking")));
}

LV_TEST_MAIN(tst_LvGPXTrackMultiFunctionDelegateWidget)
#include "tst_LvGPXTrackMultiFunctionDelegateWidget.moc"
