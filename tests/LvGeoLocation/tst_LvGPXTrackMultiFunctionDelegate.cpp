#include "LvBlinkAnimation.h"
#include "LvElidedLabel.h"
#include "LvGPXTrackConfiguration.h"
#include "LvGPXTrackListModel.h"
#include "LvGPXTrackMultiFunctionDelegate.h"
#include "LvGPXTrackMultiFunctionDelegateWidget.h"
#include "LvGPXTrackPoint.h"
#include "LvGPXTrackSegment.h"
#include "LvGPXTrackSelection.h"
#include "LvTest.h"

#include <QListView>
#include <QPainter>
#include <QPointer>
#include <QSignalSpy>
#include <QStandardItemModel>
#include <QTableView>
#include <QToolButton>

#include <memory>

namespace
{

using Delegate = LvGPXTrackMultiFunctionDelegate;
using Widget = LvGPXTrackMultiFunctionDelegateWidget;

const LvGPXTrackEditOptions allButtons(15);

LvGPXConfiguredTrack track(const QString& name)
{
    const LvGPXTrackPoint start(LvGeoPosition(50, 8), 0, QDateTime(), QString());
    const LvGPXTrackPoint end(LvGeoPosition(51, 9), 0, QDateTime(), QString());
    return {LvGPXTrack(name, QString(), {LvGPXTrackSegment(QList<LvGPXTrackPoint>{start, end})},
                       LvGPXTrackShapeEnum::linestring),
            LvGPXTrackConfiguration::defaultValue()};
}

LvGPXTrackSelection selectionOf(const QStringList& names)
{
    LvGPXTrackSelection selection;
    for (const QString& name : names) {
        selection.addTrack(track(name));
    }
    return selection;
}

// A view of tracks as an application has it.
struct Fixture {
    explicit Fixture(const QStringList& names)
    {
        myModel.setSelection(selectionOf(names));
        myView.setModel(&myModel);
        myView.setItemDelegate(&myDelegate);
        myView.resize(300, 400);
    }

    [[nodiscard]] bool show()
    {
        myView.show();
        return QTest::qWaitForWindowExposed(&myView)
            && QTest::qWaitFor([this] { return myModel.rowCount() == 0 || rowWidget(0) != nullptr; });
    }

    // The widget that lies at the place of a row.
    [[nodiscard]] Widget* rowWidget(int row)
    {
        return qobject_cast<Widget*>(myView.indexWidget(myModel.index(row, 0)));
    }

    [[nodiscard]] QToolButton* button(int row, const char* name)
    {
        Widget* widget = rowWidget(row);
        return widget == nullptr ? nullptr : widget->findChild<QToolButton*>(QLatin1String(name));
    }

    [[nodiscard]] qsizetype countWidgets() const
    {
        return myView.viewport()->findChildren<Widget*>(QString(), Qt::FindDirectChildrenOnly).size();
    }

    LvGPXTrackListModel myModel{nullptr};
    QListView myView;
    Delegate& myDelegate{*new Delegate(&myView, allButtons)}; // owned by the view
};

} // namespace

class tst_LvGPXTrackMultiFunctionDelegate : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void parents();
    void sizeHint();
    void everyPaintedRowGetsAWidget();
    void drawsNothing();
    void rowsWithoutEditRole();
    void onlyTheFirstColumn();
    void createEditor();
    void signalsOfButtons_data();
    void signalsOfButtons();
    void signalsAfterDestroyEditor();
    void destroyEditorAfterReset();
    void destroyEditorOfSomethingElse();
    void editorsAreNotReadOrWritten();
    void nameChanges();
    void reordering();
    void equalSelectionKeepsWidgets();
    void animate();
    void animateWithoutWidget();
    void animateAfterReset();
    void deletingABlinkingRow();
    void removingTheRowInTheSlot();
    void theViewGoesFirst();
    void theDelegateGoesFirst();
    void manyRows();
};

void tst_LvGPXTrackMultiFunctionDelegate::parents()
{
    QListView view;
    const Delegate delegate(&view, allButtons);
    QCOMPARE(delegate.QObject::parent(), &view);
    const Widget* sizing = view.findChild<Widget*>(QString(), Qt::FindDirectChildrenOnly);
    QVERIFY(sizing != nullptr);
    view.show();
    QVERIFY(QTest::qWaitForWindowExposed(&view));
    QVERIFY(!sizing->isVisible());
}

void tst_LvGPXTrackMultiFunctionDelegate::sizeHint()
{
    Fixture fixture({"kurz", QString(200, u'x')});
    const QSize size = fixture.myDelegate.sizeHint({}, fixture.myModel.index(0, 0));
    const Widget empty(QModelIndex(), allButtons, nullptr);
    QCOMPARE(size, empty.sizeHint());
    QCOMPARE(fixture.myDelegate.sizeHint({}, fixture.myModel.index(1, 0)), size);
    QCOMPARE(fixture.myDelegate.sizeHint({}, QModelIndex()), size);
    const Delegate labelOnly(&fixture.myView, LvGPXTrackEditOptions());
    QVERIFY(labelOnly.sizeHint({}, QModelIndex()).width() < size.width());
}

void tst_LvGPXTrackMultiFunctionDelegate::everyPaintedRowGetsAWidget()
{
    Fixture fixture({"Harz", "Weser", "Leine"});
    QCOMPARE(fixture.countWidgets(), qsizetype{0});
    QVERIFY(fixture.show());
    for (int row = 0; row < 3; ++row) {
        Widget* widget = fixture.rowWidget(row);
        QVERIFY(widget != nullptr);
        QVERIFY(widget->isVisible());
        QVERIFY(fixture.myView.isPersistentEditorOpen(fixture.myModel.index(row, 0)));
        QCOMPARE(widget->findChild<LvElidedLabel*>()->fullText(), fixture.myModel.trackAt(row).name());
        QVERIFY(fixture.myView.visualRect(fixture.myModel.index(row, 0)).contains(widget->geometry()));
    }
    // Painting again makes no more of them.
    const QList<Widget*> before{fixture.rowWidget(0), fixture.rowWidget(1), fixture.rowWidget(2)};
    fixture.myView.viewport()->repaint();
    QCOMPARE(fixture.countWidgets(), qsizetype{3});
    QCOMPARE((QList<Widget*>{fixture.rowWidget(0), fixture.rowWidget(1), fixture.rowWidget(2)}), before);
}

void tst_LvGPXTrackMultiFunctionDelegate::drawsNothing()
{
    Fixture fixture({"Harz"});
    QImage image(100, 30, QImage::Format_ARGB32);
    image.fill(Qt::transparent);
    const QImage before = image;
    QPainter painter(&image);
    QStyleOptionViewItem option;
    option.rect = image.rect();
    option.state = QStyle::State_Selected | QStyle::State_Enabled | QStyle::State_HasFocus;
    fixture.myDelegate.paint(&painter, option, fixture.myModel.index(0, 0));
    painter.end();
    QCOMPARE(image, before);
    QCOMPARE(fixture.countWidgets(), qsizetype{1});
}

void tst_LvGPXTrackMultiFunctionDelegate::rowsWithoutEditRole()
{
    class Silent : public QStandardItemModel
    {
    public:
        using QStandardItemModel::QStandardItemModel;

        [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override
        {
            return role == Qt::EditRole && index.row() == 1 ? QVariant()
                                                            : QStandardItemModel::data(index, role);
        }
    };

    Silent model;
    for (const char* name : {"a", "b", "c"}) {
        model.appendRow(new QStandardItem(QString::fromLatin1(name)));
    }
    QListView view;
    view.setModel(&model);
    Delegate delegate(&view, allButtons);
    view.setItemDelegate(&delegate);
    for (int row = 0; row < 3; ++row) {
        delegate.paint(nullptr, {}, model.index(row, 0));
    }
    QVERIFY(view.isPersistentEditorOpen(model.index(0, 0)));
    QVERIFY(!view.isPersistentEditorOpen(model.index(1, 0)));
    QVERIFY(view.isPersistentEditorOpen(model.index(2, 0)));
    delegate.paint(nullptr, {}, QModelIndex());
}

void tst_LvGPXTrackMultiFunctionDelegate::onlyTheFirstColumn()
{
    LvGPXTrackListModel model(nullptr);
    model.setSelection(selectionOf({"Harz", "Weser"}));
    QTableView view;
    view.setModel(&model);
    Delegate delegate(&view, allButtons);
    view.setItemDelegate(&delegate);
    view.resize(500, 300);
    view.show();
    QVERIFY(QTest::qWaitForWindowExposed(&view));
    QTRY_VERIFY(view.isPersistentEditorOpen(model.index(1, 0)));
    QVERIFY(view.isPersistentEditorOpen(model.index(0, 0)));
    QVERIFY(!view.isPersistentEditorOpen(model.index(0, 1)));
    QVERIFY(!view.isPersistentEditorOpen(model.index(1, 1)));
    QVERIFY(delegate.createEditor(&view, {}, model.index(0, 1)) == nullptr);
    view.openPersistentEditor(model.index(0, 1)); // an application may try
    QVERIFY(!view.isPersistentEditorOpen(model.index(0, 1)));
}

void tst_LvGPXTrackMultiFunctionDelegate::createEditor()
{
    Fixture fixture({"Harz", "Weser"});
    QWidget parent;
    const QWidget* editor = fixture.myDelegate.createEditor(&parent, {}, fixture.myModel.index(1, 0));
    const auto* widget = qobject_cast<const Widget*>(editor);
    QVERIFY(widget != nullptr);
    QCOMPARE(widget->parentWidget(), &parent);
    QCOMPARE(widget->findChildren<QToolButton*>().size(), qsizetype{4});
    QCOMPARE(widget->findChild<LvElidedLabel*>()->fullText(), QStringLiteral("Weser"));
}

void tst_LvGPXTrackMultiFunctionDelegate::signalsOfButtons_data()
{
    QTest::addColumn<QString>("button");
    QTest::addColumn<int>("signal");
    QTest::newRow("edit") << "editButton" << 0;
    QTest::newRow("delete") << "deleteButton" << 1;
    QTest::newRow("add") << "addButton" << 2;
    QTest::newRow("zoom to") << "zoomToButton" << 3;
}

void tst_LvGPXTrackMultiFunctionDelegate::signalsOfButtons()
{
    QFETCH(QString, button);
    QFETCH(int, signal);
    Fixture fixture({"Harz", "Weser", "Leine"});
    QVERIFY(fixture.show());
    const QSignalSpy edit(&fixture.myDelegate, &Delegate::editItem);
    const QSignalSpy remove(&fixture.myDelegate, &Delegate::deleteItem);
    const QSignalSpy add(&fixture.myDelegate, &Delegate::addItem);
    const QSignalSpy zoom(&fixture.myDelegate, &Delegate::zoomToItem);
    const QList<const QSignalSpy*> spies{&edit, &remove, &add, &zoom};
    QTest::mouseClick(fixture.button(2, button.toLatin1().constData()), Qt::LeftButton);
    QTest::mouseClick(fixture.button(0, button.toLatin1().constData()), Qt::LeftButton);
    for (int i = 0; i < 4; ++i) {
        if (i == signal) {
            QCOMPARE(QList<QVariantList>(*spies.at(i)), (QList<QVariantList>{{2}, {0}}));
        } else {
            QCOMPARE(spies.at(i)->size(), qsizetype{0});
        }
    }
}

void tst_LvGPXTrackMultiFunctionDelegate::signalsAfterDestroyEditor()
{
    Fixture fixture({"Harz", "Weser"});
    QWidget parent;
    const QModelIndex index = fixture.myModel.index(1, 0);
    auto* widget = qobject_cast<Widget*>(fixture.myDelegate.createEditor(&parent, {}, index));
    const QPointer<Widget> watched(widget);
    const QSignalSpy edit(&fixture.myDelegate, &Delegate::editItem);
    const QSignalSpy remove(&fixture.myDelegate, &Delegate::deleteItem);
    const QSignalSpy add(&fixture.myDelegate, &Delegate::addItem);
    const QSignalSpy zoom(&fixture.myDelegate, &Delegate::zoomToItem);
    fixture.myDelegate.destroyEditor(widget, index);
    QVERIFY(!watched.isNull()); // goes later: one of its own signals may be on the way
    widget->onEditEventRequested();
    widget->onDeleteEventRequested();
    QCOMPARE(edit.size() + remove.size(), qsizetype{0});
    // These two do no harm and stay connected for the moment that is left.
    widget->onAddEventRequested();
    widget->onZoomEventRequested();
    QCOMPARE(add.size(), qsizetype{1});
    QCOMPARE(zoom.size(), qsizetype{1});
    fixture.myDelegate.animate(1); // forgotten
    QVERIFY(!widget->findChild<LvBlinkAnimation*>()->isRunning());
    QTRY_VERIFY(watched.isNull());
}

void tst_LvGPXTrackMultiFunctionDelegate::destroyEditorAfterReset()
{
    Fixture fixture({"Harz", "Weser"});
    QWidget parent;
    auto* widget =
        qobject_cast<Widget*>(fixture.myDelegate.createEditor(&parent, {}, fixture.myModel.index(1, 0)));
    auto* other =
        qobject_cast<Widget*>(fixture.myDelegate.createEditor(&parent, {}, fixture.myModel.index(0, 0)));
    const QPointer<Widget> watched(widget);
    fixture.myDelegate.destroyEditor(widget, QModelIndex());
    fixture.myDelegate.animate(1);
    QVERIFY(!widget->findChild<LvBlinkAnimation*>()->isRunning());
    fixture.myDelegate.animate(0); // the other row keeps its widget
    QVERIFY(other->findChild<LvBlinkAnimation*>()->isRunning());
    QTRY_VERIFY(watched.isNull());

    // A late goodbye takes nothing away from the widget that has the row by then.
    auto* older =
        qobject_cast<Widget*>(fixture.myDelegate.createEditor(&parent, {}, fixture.myModel.index(1, 0)));
    auto* newer =
        qobject_cast<Widget*>(fixture.myDelegate.createEditor(&parent, {}, fixture.myModel.index(1, 0)));
    fixture.myDelegate.destroyEditor(older, fixture.myModel.index(1, 0));
    fixture.myDelegate.animate(1);
    QVERIFY(newer->findChild<LvBlinkAnimation*>()->isRunning());
}

void tst_LvGPXTrackMultiFunctionDelegate::destroyEditorOfSomethingElse()
{
    const Fixture fixture({"Harz"});
    const QPointer<QWidget> editor(new QWidget);
    fixture.myDelegate.destroyEditor(editor, QModelIndex());
    QTRY_VERIFY(editor.isNull());
}

void tst_LvGPXTrackMultiFunctionDelegate::editorsAreNotReadOrWritten()
{
    Fixture fixture({"Harz", "Weser"});
    QWidget parent;
    QWidget* editor = fixture.myDelegate.createEditor(&parent, {}, fixture.myModel.index(0, 0));
    const auto* label = editor->findChild<LvElidedLabel*>();
    fixture.myDelegate.setEditorData(editor, fixture.myModel.index(1, 0));
    QCOMPARE(label->fullText(), QStringLiteral("Harz"));
    QStandardItemModel writable(1, 1);
    const QSignalSpy changed(&writable, &QAbstractItemModel::dataChanged);
    fixture.myDelegate.setModelData(editor, &writable, writable.index(0, 0));
    QCOMPARE(changed.size(), qsizetype{0});
    fixture.myDelegate.setEditorData(nullptr, QModelIndex());
    fixture.myDelegate.setModelData(nullptr, nullptr, QModelIndex());
}

void tst_LvGPXTrackMultiFunctionDelegate::nameChanges()
{
    QStandardItemModel model;
    model.appendRow(new QStandardItem(QStringLiteral("alt")));
    QListView view;
    view.setModel(&model);
    Delegate delegate(&view, allButtons);
    view.setItemDelegate(&delegate);
    view.show();
    QVERIFY(QTest::qWaitForWindowExposed(&view));
    QTRY_VERIFY(view.indexWidget(model.index(0, 0)) != nullptr);
    const QPointer<QWidget> widget(view.indexWidget(model.index(0, 0)));
    model.item(0)->setText(QStringLiteral("neu"));
    QCOMPARE(view.indexWidget(model.index(0, 0)), widget);
    QCOMPARE(widget->findChild<LvElidedLabel*>()->fullText(), QStringLiteral("neu"));
    QCOMPARE(widget->findChild<QToolButton*>("editButton")->toolTip(), QStringLiteral("neu bearbeiten"));
}

void tst_LvGPXTrackMultiFunctionDelegate::reordering()
{
    Fixture fixture({"a", "b", "c"});
    QVERIFY(fixture.show());
    const QList<Widget*> before{fixture.rowWidget(0), fixture.rowWidget(1), fixture.rowWidget(2)};
    fixture.myModel.moveTrack(0, 2);
    QString shown;
    for (int row = 0; row < 3; ++row) {
        QCOMPARE(fixture.rowWidget(row), before.at(row));
        shown += fixture.rowWidget(row)->findChild<LvElidedLabel*>()->fullText();
    }
    QCOMPARE(shown, QStringLiteral("bca"));
    const QSignalSpy remove(&fixture.myDelegate, &Delegate::deleteItem);
    QTest::mouseClick(fixture.button(2, "deleteButton"), Qt::LeftButton);
    QCOMPARE(remove.first(), QVariantList{2});
}

void tst_LvGPXTrackMultiFunctionDelegate::equalSelectionKeepsWidgets()
{
    Fixture fixture({"a", "b"});
    QVERIFY(fixture.show());
    const QPointer<Widget> before(fixture.rowWidget(1));
    fixture.myModel.setSelection(selectionOf({"a", "b"}));
    QTest::qWait(0);
    QCOMPARE(fixture.rowWidget(1), before.data());
    QVERIFY(!before.isNull());
    fixture.myModel.setSelection(selectionOf({"a", "x"}));
    QTRY_VERIFY(before.isNull());
    QTRY_VERIFY(fixture.rowWidget(1) != nullptr);
    QCOMPARE(fixture.rowWidget(1)->findChild<LvElidedLabel*>()->fullText(), QStringLiteral("x"));
    QTRY_COMPARE(fixture.countWidgets(), qsizetype{2});
}

void tst_LvGPXTrackMultiFunctionDelegate::animate()
{
    Fixture fixture({"a", "b"});
    QVERIFY(fixture.show());
    fixture.myDelegate.animate(1);
    const auto* label = fixture.rowWidget(1)->findChild<LvElidedLabel*>();
    QCOMPARE(label->animationState(), LvBlinkAnimation::highlightedState);
    QCOMPARE(fixture.rowWidget(0)->findChild<LvElidedLabel*>()->animationState(), 0);
    QTRY_COMPARE(label->animationState(), LvBlinkAnimation::normalState);
    // Also through the meta object, as a slot.
    QVERIFY(QMetaObject::invokeMethod(&fixture.myDelegate, "animate", Q_ARG(int, 0)));
    QVERIFY(fixture.rowWidget(0)->findChild<LvBlinkAnimation*>()->isRunning());
}

void tst_LvGPXTrackMultiFunctionDelegate::animateWithoutWidget()
{
    Fixture fixture({"a", "b"});
    for (const int row : {0, 1, -1, 2, 1000000}) { // nothing is painted yet
        fixture.myDelegate.animate(row);
    }
    QVERIFY(fixture.show());
    QVERIFY(!fixture.rowWidget(0)->findChild<LvBlinkAnimation*>()->isRunning());
    fixture.myDelegate.animate(-1); // the hidden widget for the size has no row
    const auto* sizing = fixture.myView.findChild<Widget*>(QString(), Qt::FindDirectChildrenOnly);
    QVERIFY(!sizing->findChild<LvBlinkAnimation*>()->isRunning());
}

void tst_LvGPXTrackMultiFunctionDelegate::animateAfterReset()
{
    Fixture fixture({"a", "b", "c"});
    QVERIFY(fixture.show());
    fixture.myModel.setSelection(selectionOf({"x"}));
    fixture.myDelegate.animate(2); // gone with the reset
    QTRY_VERIFY(fixture.rowWidget(0) != nullptr);
    QTRY_COMPARE(fixture.countWidgets(), qsizetype{1});
    fixture.myDelegate.animate(2);
    fixture.myDelegate.animate(0);
    QVERIFY(fixture.rowWidget(0)->findChild<LvBlinkAnimation*>()->isRunning());
}

void tst_LvGPXTrackMultiFunctionDelegate::deletingABlinkingRow()
{
    Fixture fixture({"a", "b"});
    QVERIFY(fixture.show());
    fixture.myDelegate.animate(0);
    const auto* animation = fixture.rowWidget(0)->findChild<LvBlinkAnimation*>();
    QVERIFY(animation->isRunning());
    bool wasRunning = true;
    connect(&fixture.myDelegate, &Delegate::deleteItem, this, [&] { wasRunning = animation->isRunning(); });
    QTest::mouseClick(fixture.button(0, "deleteButton"), Qt::LeftButton);
    QVERIFY(!wasRunning);
}

void tst_LvGPXTrackMultiFunctionDelegate::removingTheRowInTheSlot()
{
    Fixture fixture({"a", "b", "c"});
    connect(&fixture.myDelegate, &Delegate::deleteItem, &fixture.myModel,
            [&](int row) { fixture.myModel.remove(fixture.myModel.index(row, 0)); });
    for (int left = 3; left > 0; --left) {
        QVERIFY(fixture.show());
        QTRY_COMPARE(fixture.countWidgets(), qsizetype{left});
        QTest::mouseClick(fixture.button(0, "deleteButton"), Qt::LeftButton);
        QCOMPARE(fixture.myModel.rowCount(), left - 1);
    }
    QTRY_COMPARE(fixture.countWidgets(), qsizetype{0});
}

void tst_LvGPXTrackMultiFunctionDelegate::theViewGoesFirst()
{
    LvGPXTrackListModel model(nullptr);
    model.setSelection(selectionOf({"a", "b"}));
    auto view = std::make_unique<QListView>();
    const QPointer<Delegate> delegate(new Delegate(view.get(), allButtons));
    view->setModel(&model);
    view->setItemDelegate(delegate);
    view->show();
    QVERIFY(QTest::qWaitForWindowExposed(view.get()));
    QTRY_VERIFY(view->indexWidget(model.index(0, 0)) != nullptr);
    delegate->animate(0);
    view.reset();
    QVERIFY(delegate.isNull());
    model.moveTrack(0, 1); // no widget listens any more
}

void tst_LvGPXTrackMultiFunctionDelegate::theDelegateGoesFirst()
{
    Fixture fixture({"a"});
    QVERIFY(fixture.show());
    delete &fixture.myDelegate;
    // The size widget went with it, the row widgets belong to the view.
    QCOMPARE(fixture.myView.findChildren<Widget*>(QString(), Qt::FindDirectChildrenOnly).size(),
             qsizetype{0});
    QTest::mouseClick(fixture.button(0, "editButton"), Qt::LeftButton);
    fixture.myModel.setSelection(selectionOf({"b"}));
    QTest::qWait(0);

    Fixture other({"a"});
    QWidget* viewport = other.myView.viewport();
    auto* widget = other.myDelegate.createEditor(viewport, {}, other.myModel.index(0, 0));
    delete widget; // without destroyEditor()
    other.myDelegate.animate(0);
}

void tst_LvGPXTrackMultiFunctionDelegate::manyRows()
{
    // Only the rows that are seen cost a widget.
    QStringList names;
    for (int i = 0; i < 700; ++i) {
        names.append(QStringLiteral("Track %1").arg(i));
    }
    Fixture fixture(names);
    QVERIFY(fixture.show());
    const qsizetype seen = fixture.countWidgets();
    QVERIFY2(seen > 3 && seen < 60, qPrintable(QString::number(seen)));
    QVERIFY(fixture.rowWidget(699) == nullptr);
    fixture.myView.scrollToBottom();
    QTRY_VERIFY(fixture.rowWidget(699) != nullptr);
    QVERIFY(fixture.countWidgets() < 120);
}

LV_TEST_MAIN(tst_LvGPXTrackMultiFunctionDelegate)
#include "tst_LvGPXTrackMultiFunctionDelegate.moc"
