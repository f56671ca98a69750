#include "LvGPXTrackConfiguration.h"
#include "LvGPXTrackListModel.h"
#include "LvGPXTrackPoint.h"
#include "LvGPXTrackSegment.h"
#include "LvGPXTrackSelection.h"
#include "LvTest.h"

#include <QAbstractItemModelTester>
#include <QDataStream>
#include <QDropEvent>
#include <QHeaderView>
#include <QListView>
#include <QMimeData>
#include <QSignalSpy>
#include <QTableView>
#include <QTranslator>
#include <QTreeView>

#include <memory>
#include <type_traits>

namespace
{

LvGPXConfiguredTrack track(const QString& name)
{
    const LvGPXTrackPoint start(LvGeoPosition(50, 8), 0, QDateTime(), QString());
    const LvGPXTrackPoint end(LvGeoPosition(51, 9), 0, QDateTime(), QString());
    return {LvGPXTrack(name, QStringLiteral("about ") + name,
                       {LvGPXTrackSegment(QList<LvGPXTrackPoint>{start, end})},
                       LvGPXTrackShapeEnum::linestring),
            LvGPXTrackConfiguration::defaultValue()};
}

// One track per letter.
LvGPXTrackSelection selectionOf(const QString& names)
{
    LvGPXTrackSelection selection;
    for (const QChar name : names) {
        selection.addTrack(track(QString(name)));
    }
    return selection;
}

QString namesOf(const LvGPXTrackListModel& model)
{
    QString names;
    const LvGPXConfiguredTrackList tracks = model.tracks();
    for (const LvGPXConfiguredTrack& each : tracks) {
        names += each.name();
    }
    return names;
}

LvGPXTrackConfiguration wide()
{
    LvGPXTrackConfiguration configuration = LvGPXTrackConfiguration::defaultValue();
    configuration.setLineWidth(LvDistance(33.0));
    configuration.setTrackShape(LvGPXTrackShapeEnum::linestring);
    return configuration;
}

std::unique_ptr<QMimeData> payloadOf(const QStringList& strings)
{
    QByteArray payload;
    QDataStream stream(&payload, QIODevice::WriteOnly);
    for (const QString& string : strings) {
        stream << string;
    }
    auto data = std::make_unique<QMimeData>();
    data->setData(QStringLiteral("application/gpxtrack"), payload);
    return data;
}

std::unique_ptr<QMimeData> dragOf(const LvGPXTrackListModel& model, const QList<int>& rows)
{
    QModelIndexList indexes;
    for (const int row : rows) {
        indexes.append(model.index(row, 0));
    }
    return std::unique_ptr<QMimeData>(model.mimeData(indexes));
}

// What a view sends for a drop at a point of its viewport.
bool dropOn(QAbstractItemView& view, QMimeData* data, const QPoint& where)
{
    const auto action = Qt::MoveAction;
    QDragEnterEvent enter(where, action, data, Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(view.viewport(), &enter);
    QDragMoveEvent move(where, action, data, Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(view.viewport(), &move);
    QDropEvent drop(where, action, data, Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(view.viewport(), &drop);
    return enter.isAccepted() && drop.isAccepted();
}

// The model counts its rows for every parent, which the tester does not accept; everything else it checks.
class FlatModel : public LvGPXTrackListModel
{
public:
    using LvGPXTrackListModel::LvGPXTrackListModel;

    [[nodiscard]] int rowCount(const QModelIndex& parent = QModelIndex()) const override
    {
        return parent.isValid() ? 0 : LvGPXTrackListModel::rowCount(parent);
    }
};

class Marker : public QTranslator
{
public:
    [[nodiscard]] bool isEmpty() const override { return false; }

    [[nodiscard]] QString translate(const char* context, const char* source, const char* /*disambiguation*/,
                                    int /*count*/) const override
    {
        return QStringLiteral("%1|%2").arg(QString::fromUtf8(context), QString::fromUtf8(source));
    }
};

struct Block {
    int myFirst;
    int myLast;

    bool operator==(const Block& other) const = default;
};

// The blocks of all dataChanged() signals; -1 where a block is not as wide as the model or names roles.
QList<Block> blocksOf(const QSignalSpy& changed)
{
    QList<Block> blocks;
    for (const QList<QVariant>& arguments : changed) {
        const auto first = arguments.at(0).toModelIndex();
        const auto last = arguments.at(1).toModelIndex();
        const bool isWhole =
            first.column() == 0 && last.column() == 1 && arguments.at(2).value<QList<int>>().isEmpty();
        blocks.append(isWhole ? Block{first.row(), last.row()} : Block{-1, -1});
    }
    return blocks;
}

} // namespace

class tst_LvGPXTrackListModel : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void empty();
    void structure();
    void header();
    void headerTranslation();
    void flags();
    void data();
    void setData();
    void trackAt();
    void setSelection();
    void addTracks();
    void remove();
    void setConfiguration();
    void setConfigurationToAll();
    void moveTrack_data();
    void moveTrack();
    void mimeData();
    void dropRefusals();
    void drop_data();
    void drop();
    void dropOfDraggedRows();
    void dropOnEmptyModel();
    void damagedPayload();
    void dropInListView();
    void dropInTableView();
    void treeView();
    void equalSelectionKeepsEditors();
    void tester();
};

void tst_LvGPXTrackListModel::empty()
{
    QObject owner;
    const LvGPXTrackListModel model(&owner);
    QCOMPARE(model.QObject::parent(), &owner);
    QCOMPARE(model.rowCount(), 0);
    QCOMPARE(model.columnCount(), 2);
    QVERIFY(model.tracks().isEmpty());
    QCOMPARE(LvGPXTrackListModel::myMimeType, QStringLiteral("application/gpxtrack"));
    static_assert(std::is_base_of_v<QAbstractTableModel, LvGPXTrackListModel>);
}

void tst_LvGPXTrackListModel::structure()
{
    LvGPXTrackListModel model(nullptr);
    model.setSelection(selectionOf("abc"));
    QCOMPARE(model.rowCount(), 3);
    QCOMPARE(model.columnCount(), 2);
    // Whatever the parent.
    QCOMPARE(model.rowCount(model.index(1, 0)), 3);
    QCOMPARE(model.columnCount(model.index(1, 0)), 2);
    QVERIFY(!model.parent(model.index(1, 1)).isValid());
    QVERIFY(!model.parent(QModelIndex()).isValid());
    const QAbstractItemModel& base = model;
    QVERIFY(base.hasChildren());
    QVERIFY(model.isValidRow(0));
    QVERIFY(model.isValidRow(2));
    QVERIFY(!model.isValidRow(3));
    QVERIFY(!model.isValidRow(-1));
}

void tst_LvGPXTrackListModel::header()
{
    LvGPXTrackListModel model(nullptr);
    model.setSelection(selectionOf("abc"));
    QCOMPARE(model.headerData(0, Qt::Horizontal, Qt::DisplayRole).toString(), QStringLiteral("Name"));
    QVERIFY(!model.headerData(1, Qt::Horizontal, Qt::DisplayRole).isValid());
    QVERIFY(!model.headerData(2, Qt::Horizontal, Qt::DisplayRole).isValid());
    QVERIFY(!model.headerData(-1, Qt::Horizontal, Qt::DisplayRole).isValid());
    QCOMPARE(model.headerData(1, Qt::Vertical, Qt::DisplayRole), QVariant(2)); // the toolkit counts the rows
    QVERIFY(!model.headerData(0, Qt::Horizontal, Qt::EditRole).isValid());
}

void tst_LvGPXTrackListModel::headerTranslation()
{
    const LvGPXTrackListModel model(nullptr);
    Marker translator;
    QVERIFY(QCoreApplication::installTranslator(&translator));
    const QString name = model.headerData(0, Qt::Horizontal).toString();
    QCoreApplication::removeTranslator(&translator);
    QCOMPARE(name, QStringLiteral("LvGPXTrackListModel|Name"));
}

void tst_LvGPXTrackListModel::flags()
{
    LvGPXTrackListModel model(nullptr);
    model.setSelection(selectionOf("abc"));
    const Qt::ItemFlags row =
        Qt::ItemIsSelectable | Qt::ItemIsDragEnabled | Qt::ItemIsDropEnabled | Qt::ItemIsEnabled;
    QCOMPARE(model.flags(model.index(0, 0)), row);
    QCOMPARE(model.flags(model.index(2, 1)), row);
    QCOMPARE(model.flags(QModelIndex()), Qt::ItemFlags(Qt::ItemIsDropEnabled));
    QCOMPARE(model.supportedDropActions(), Qt::DropActions(Qt::MoveAction));
    QCOMPARE(model.supportedDragActions(), Qt::DropActions(Qt::MoveAction));
    QCOMPARE(model.mimeTypes(), QStringList{"application/gpxtrack"});
}

void tst_LvGPXTrackListModel::data()
{
    LvGPXTrackListModel model(nullptr);
    model.setSelection(selectionOf("abc"));
    QCOMPARE(model.data(model.index(1, 0), Qt::DisplayRole), QVariant("b"));
    QVERIFY(!model.data(model.index(1, 1), Qt::DisplayRole).isValid());
    for (const int column : {0, 1}) {
        QCOMPARE(model.data(model.index(1, column), Qt::EditRole), QVariant("b"));
        QCOMPARE(model.data(model.index(1, column), Qt::ToolTipRole), QVariant("about b"));
        for (const int role :
             {int{Qt::DecorationRole}, int{Qt::StatusTipRole}, int{Qt::CheckStateRole}, int{Qt::UserRole}}) {
            QVERIFY(!model.data(model.index(1, column), role).isValid());
        }
    }
    for (const int role : {int{Qt::DisplayRole}, int{Qt::EditRole}, int{Qt::ToolTipRole}}) {
        QVERIFY(!model.data(QModelIndex(), role).isValid());
    }
    const QModelIndex stale = model.index(2, 0);
    model.remove(model.index(0, 0));
    QCOMPARE(model.data(stale, Qt::DisplayRole), QVariant(QString()));
    QCOMPARE(model.data(stale, Qt::EditRole), QVariant(QString()));
}

void tst_LvGPXTrackListModel::setData()
{
    LvGPXTrackListModel model(nullptr);
    model.setSelection(selectionOf("abc"));
    const QSignalSpy changed(&model, &QAbstractItemModel::dataChanged);
    QVERIFY(!model.setData(model.index(0, 0), QStringLiteral("x"), Qt::EditRole));
    QVERIFY(!model.setData(model.index(0, 0), QStringLiteral("x"), Qt::DisplayRole));
    QCOMPARE(namesOf(model), QStringLiteral("abc"));
    QCOMPARE(changed.size(), qsizetype{0});
}

void tst_LvGPXTrackListModel::trackAt()
{
    LvGPXTrackListModel model(nullptr);
    model.setSelection(selectionOf("abc"));
    QVERIFY(model.trackAt(1) == track("b"));
    QVERIFY(model.trackAt(model.index(2, 1)) == track("c"));
    QVERIFY(model.trackAt(3) == LvGPXConfiguredTrack());
    QVERIFY(model.trackAt(-1) == LvGPXConfiguredTrack());
    QVERIFY(model.trackAt(QModelIndex()) == LvGPXConfiguredTrack());
    QVERIFY(model.tracks() == selectionOf("abc").tracks());
}

void tst_LvGPXTrackListModel::setSelection()
{
    LvGPXTrackListModel model(nullptr);
    const QSignalSpy reset(&model, &QAbstractItemModel::modelReset);
    const QSignalSpy changed(&model, &QAbstractItemModel::dataChanged);
    model.setSelection(LvGPXTrackSelection());
    QCOMPARE(reset.size(), qsizetype{0});
    model.setSelection(selectionOf("abc"));
    QCOMPARE(reset.size(), qsizetype{1});
    model.setSelection(selectionOf("abc")); // equal, though built anew
    QCOMPARE(reset.size(), qsizetype{1});
    LvGPXTrackSelection faded = selectionOf("abc");
    faded.setCroppingOpacity(3);
    model.setSelection(faded); // the tracks count, not the fade
    QCOMPARE(reset.size(), qsizetype{1});
    model.setSelection(selectionOf("acb"));
    QCOMPARE(reset.size(), qsizetype{2});
    model.setSelection(selectionOf("ac"));
    QCOMPARE(reset.size(), qsizetype{3});
    LvGPXTrackSelection styled = selectionOf("ac");
    QVERIFY(styled.setConfiguration(1, wide()));
    model.setSelection(styled);
    QCOMPARE(reset.size(), qsizetype{4});
    model.setSelection(LvGPXTrackSelection());
    QCOMPARE(reset.size(), qsizetype{5});
    QCOMPARE(model.rowCount(), 0);
    QCOMPARE(changed.size(), qsizetype{0});
}

void tst_LvGPXTrackListModel::addTracks()
{
    LvGPXTrackListModel model(nullptr);
    model.setSelection(selectionOf("ab"));
    const QSignalSpy aboutToReset(&model, &QAbstractItemModel::modelAboutToBeReset);
    const QSignalSpy reset(&model, &QAbstractItemModel::modelReset);
    model.addTracks(selectionOf("cd").tracks());
    QCOMPARE(namesOf(model), QStringLiteral("abcd"));
    model.addTracks(model.tracks());
    QCOMPARE(namesOf(model), QStringLiteral("abcdabcd"));
    model.addTracks({});
    QCOMPARE(aboutToReset.size(), qsizetype{3});
    QCOMPARE(reset.size(), qsizetype{3});
}

void tst_LvGPXTrackListModel::remove()
{
    LvGPXTrackListModel model(nullptr);
    model.setSelection(selectionOf("abc"));
    const QSignalSpy reset(&model, &QAbstractItemModel::modelReset);
    const QModelIndex last = model.index(2, 1);
    model.remove(QModelIndex());
    QCOMPARE(reset.size(), qsizetype{0});
    model.remove(model.index(0, 0));
    QCOMPARE(reset.size(), qsizetype{1});
    QCOMPARE(namesOf(model), QStringLiteral("bc"));
    model.remove(last); // no longer a row
    QCOMPARE(reset.size(), qsizetype{1});
    QCOMPARE(namesOf(model), QStringLiteral("bc"));
}

void tst_LvGPXTrackListModel::setConfiguration()
{
    LvGPXTrackListModel model(nullptr);
    model.setSelection(selectionOf("abc"));
    const QSignalSpy changed(&model, &QAbstractItemModel::dataChanged);
    const QSignalSpy reset(&model, &QAbstractItemModel::modelReset);
    model.setConfiguration(1, wide());
    QCOMPARE(blocksOf(changed), (QList<Block>{{1, 1}}));
    QCOMPARE(model.trackAt(1).lineWidth().value(), 33.0);
    QCOMPARE(model.trackAt(0).configuration(), track("a").configuration());
    model.setConfiguration(1, wide()); // no change, no signal
    model.setConfiguration(3, wide());
    model.setConfiguration(-1, wide());
    model.setConfiguration(QModelIndex(), wide());
    QCOMPARE(changed.size(), qsizetype{1});
    model.setConfiguration(model.index(2, 1), wide());
    QCOMPARE(blocksOf(changed), (QList<Block>{{1, 1}, {2, 2}}));
    QCOMPARE(model.trackAt(2).lineWidth().value(), 33.0);
    QCOMPARE(reset.size(), qsizetype{0});
}

void tst_LvGPXTrackListModel::setConfigurationToAll()
{
    LvGPXTrackListModel model(nullptr);
    const QSignalSpy changed(&model, &QAbstractItemModel::dataChanged);
    model.setConfigurationToAll(wide());
    QCOMPARE(changed.size(), qsizetype{0});
    model.setSelection(selectionOf("abc"));
    model.setConfiguration(1, wide());
    model.setConfigurationToAll(wide());
    QCOMPARE(blocksOf(changed), (QList<Block>{{1, 1}, {0, 0}, {2, 2}}));
    for (int row = 0; row < 3; ++row) {
        QCOMPARE(model.trackAt(row).lineWidth().value(), 33.0);
    }
}

void tst_LvGPXTrackListModel::moveTrack_data()
{
    QTest::addColumn<int>("from");
    QTest::addColumn<int>("to");
    QTest::addColumn<QString>("names");
    QTest::addColumn<int>("first");
    QTest::addColumn<int>("last");
    QTest::newRow("down") << 0 << 2 << "bcade" << 0 << 2;
    QTest::newRow("up") << 3 << 1 << "adbce" << 1 << 3;
    QTest::newRow("to the end") << 0 << 4 << "bcdea" << 0 << 4;
    QTest::newRow("to itself") << 2 << 2 << "abcde" << -1 << -1;
    QTest::newRow("from beyond") << 5 << 2 << "abcde" << -1 << -1;
    QTest::newRow("from before") << -1 << 2 << "abcde" << -1 << -1;
    QTest::newRow("to beyond") << 2 << 5 << "abcde" << -1 << -1;
    QTest::newRow("to before") << 2 << -1 << "abcde" << -1 << -1;
}

void tst_LvGPXTrackListModel::moveTrack()
{
    QFETCH(int, from);
    QFETCH(int, to);
    QFETCH(QString, names);
    QFETCH(int, first);
    QFETCH(int, last);
    LvGPXTrackListModel model(nullptr);
    model.setSelection(selectionOf("abcde"));
    const QSignalSpy changed(&model, &QAbstractItemModel::dataChanged);
    const QSignalSpy moved(&model, &QAbstractItemModel::rowsMoved);
    const QSignalSpy reset(&model, &QAbstractItemModel::modelReset);
    const QSignalSpy select(&model, &LvGPXTrackListModel::pleaseSelectTrack);
    model.moveTrack(from, to);
    QCOMPARE(namesOf(model), names);
    QCOMPARE(blocksOf(changed), first < 0 ? QList<Block>() : (QList<Block>{{first, last}}));
    QCOMPARE(moved.size() + reset.size() + select.size(), qsizetype{0});
}

void tst_LvGPXTrackListModel::mimeData()
{
    LvGPXTrackListModel model(nullptr);
    model.setSelection(selectionOf("abc"));
    const std::unique_ptr<QMimeData> data(
        model.mimeData({model.index(2, 0), model.index(2, 1), QModelIndex(), model.index(0, 0)}));
    QCOMPARE(data->formats(), QStringList{"application/gpxtrack"});
    QCOMPARE(data->data("application/gpxtrack"), payloadOf({"2", "2", "0"})->data("application/gpxtrack"));
    const std::unique_ptr<QMimeData> nothing(model.mimeData({}));
    QVERIFY(nothing->data("application/gpxtrack").isEmpty());
}

void tst_LvGPXTrackListModel::dropRefusals()
{
    LvGPXTrackListModel model(nullptr);
    model.setSelection(selectionOf("abc"));
    const QSignalSpy select(&model, &LvGPXTrackListModel::pleaseSelectTrack);
    const auto data = dragOf(model, {0});
    QMimeData text;
    text.setText(QStringLiteral("2"));
    QVERIFY(model.dropMimeData(data.get(), Qt::IgnoreAction, 2, 0, QModelIndex()));
    QVERIFY(model.dropMimeData(&text, Qt::IgnoreAction, 2, 0, QModelIndex()));
    QVERIFY(!model.dropMimeData(&text, Qt::MoveAction, 2, 0, QModelIndex()));
    QVERIFY(!model.dropMimeData(nullptr, Qt::MoveAction, 2, 0, QModelIndex()));
    QCOMPARE(namesOf(model), QStringLiteral("abc"));
    QCOMPARE(select.size(), qsizetype{0});
}

void tst_LvGPXTrackListModel::drop_data()
{
    QTest::addColumn<QStringList>("payload");
    QTest::addColumn<int>("row");
    QTest::addColumn<int>("column");
    QTest::addColumn<int>("parentRow");
    QTest::addColumn<QString>("names");
    QTest::addColumn<int>("selected");
    QTest::newRow("between rows") << QStringList{"0"} << 3 << 0 << -1 << "bcdaefgh" << 3;
    QTest::newRow("on a row") << QStringList{"0"} << -1 << -1 << 3 << "bcdaefgh" << 3;
    QTest::newRow("on itself") << QStringList{"3"} << -1 << -1 << 3 << "abcdefgh" << 3;
    QTest::newRow("below the last row") << QStringList{"1"} << -1 << -1 << -1 << "acdefghb" << 7;
    QTest::newRow("behind the last row") << QStringList{"1"} << 8 << 0 << -1 << "acdefghb" << 7;
    QTest::newRow("far behind the last row") << QStringList{"1"} << 2000000000 << 0 << -1 << "acdefghb" << 7;
    QTest::newRow("before the first row") << QStringList{"3"} << -1 << 0 << -1 << "dabcefgh" << 0;
    QTest::newRow("a row and a parent: the row") << QStringList{"0"} << 2 << 0 << 5 << "bcadefgh" << 2;
    QTest::newRow("nothing dragged") << QStringList() << 4 << 0 << -1 << "abcdefgh" << 4;
    // Rows count as they were when dragged: 0 → 5 gives bcdefagh, then 1 → 6 gives bdefagch, then 2 → 7.
    QTest::newRow("three rows") << QStringList{"0", "1", "2"} << 5 << 0 << -1 << "bdfagche" << 5;
    QTest::newRow("three rows upwards") << QStringList{"5", "6", "7"} << 1 << 0 << -1 << "afghbcde" << 1;
    QTest::newRow("three rows onto the last one: none beyond it")
        << QStringList{"0", "0", "0"} << -1 << -1 << 7 << "defghabc" << 7;
    QTest::newRow("no number moves row 0") << QStringList{"Weg"} << 2 << 0 << -1 << "bcadefgh" << 2;
    QTest::newRow("a number too large for an int moves row 0")
        << QStringList{"99999999999"} << 2 << 0 << -1 << "bcadefgh" << 2;
    QTest::newRow("an empty string moves row 0") << QStringList{""} << 2 << 0 << -1 << "bcadefgh" << 2;
    QTest::newRow("no hexadecimal numbers") << QStringList{"0x3"} << 2 << 0 << -1 << "bcadefgh" << 2;
    QTest::newRow("no rows are left out") << QStringList{"8", "-1"} << 2 << 0 << -1 << "abcdefgh" << 2;
    QTest::newRow("a row behind one that is none")
        << QStringList{"8", "0"} << 2 << 0 << -1 << "bcdaefgh" << 2;
}

void tst_LvGPXTrackListModel::drop()
{
    QFETCH(QStringList, payload);
    QFETCH(int, row);
    QFETCH(int, column);
    QFETCH(int, parentRow);
    QFETCH(QString, names);
    QFETCH(int, selected);
    LvGPXTrackListModel model(nullptr);
    model.setSelection(selectionOf("abcdefgh"));
    const QSignalSpy select(&model, &LvGPXTrackListModel::pleaseSelectTrack);
    const QSignalSpy reset(&model, &QAbstractItemModel::modelReset);
    const QModelIndex parent = parentRow < 0 ? QModelIndex() : model.index(parentRow, 0);
    QVERIFY(model.dropMimeData(payloadOf(payload).get(), Qt::MoveAction, row, column, parent));
    QCOMPARE(namesOf(model), names);
    QCOMPARE(select.size(), qsizetype{1});
    QCOMPARE(select.first().first().toInt(), selected);
    QCOMPARE(reset.size(), qsizetype{0});
}

void tst_LvGPXTrackListModel::dropOfDraggedRows()
{
    LvGPXTrackListModel model(nullptr);
    model.setSelection(selectionOf("abcdefgh"));
    LvGPXConfiguredTrackList expected = model.tracks();
    expected.moveTrack(1, 5);
    expected.moveTrack(3, 6);
    expected.moveTrack(4, 7);
    const QSignalSpy changed(&model, &QAbstractItemModel::dataChanged);
    const QSignalSpy select(&model, &LvGPXTrackListModel::pleaseSelectTrack);
    QVERIFY(model.dropMimeData(dragOf(model, {1, 3, 4}).get(), Qt::MoveAction, 5, 0, QModelIndex()));
    QVERIFY(model.tracks() == expected);
    QCOMPARE(blocksOf(changed), (QList<Block>{{1, 5}, {3, 6}, {4, 7}}));
    QCOMPARE(select.size(), qsizetype{1});
    QCOMPARE(select.first().first().toInt(), 5);

    // Both columns of a row carry it twice: the second time whatever stands there by then.
    LvGPXTrackListModel both(nullptr);
    both.setSelection(selectionOf("abcd"));
    const std::unique_ptr<QMimeData> twice(both.mimeData({both.index(0, 0), both.index(0, 1)}));
    QVERIFY(both.dropMimeData(twice.get(), Qt::MoveAction, 2, 0, QModelIndex()));
    QCOMPARE(namesOf(both), QStringLiteral("cadb"));
}

void tst_LvGPXTrackListModel::dropOnEmptyModel()
{
    LvGPXTrackListModel model(nullptr);
    const QSignalSpy select(&model, &LvGPXTrackListModel::pleaseSelectTrack);
    const QSignalSpy changed(&model, &QAbstractItemModel::dataChanged);
    QVERIFY(model.dropMimeData(payloadOf({"0", "1"}).get(), Qt::MoveAction, -1, -1, QModelIndex()));
    QVERIFY(model.dropMimeData(payloadOf({"0"}).get(), Qt::MoveAction, 0, 0, QModelIndex()));
    QCOMPARE(select.size() + changed.size(), qsizetype{0});
    QCOMPARE(model.rowCount(), 0);
}

void tst_LvGPXTrackListModel::damagedPayload()
{
    // Anything may be dropped under the type: it must end and leave every track in the list.
    const QByteArray whole = payloadOf({"2", "1"})->data("application/gpxtrack");
    QList<QByteArray> payloads{QByteArray("\xff\xff\xff\xfe", 4), QByteArray("\x7f\xff\xff\xfe 2", 6),
                               QByteArray(100000, '\x0')};
    for (qsizetype length = 0; length < whole.size(); ++length) {
        payloads.append(whole.left(length));
    }
    for (const QByteArray& payload : std::as_const(payloads)) {
        LvGPXTrackListModel model(nullptr);
        model.setSelection(selectionOf("abcd"));
        QMimeData data;
        data.setData(QStringLiteral("application/gpxtrack"), payload);
        QVERIFY(model.dropMimeData(&data, Qt::MoveAction, 0, 0, QModelIndex()));
        QString names = namesOf(model);
        std::sort(names.begin(), names.end());
        QCOMPARE(names, QStringLiteral("abcd"));
    }
    // What stands whole before the damage counts.
    LvGPXTrackListModel model(nullptr);
    model.setSelection(selectionOf("abcd"));
    QMimeData data;
    data.setData(QStringLiteral("application/gpxtrack"), whole.left(whole.size() - 1));
    QVERIFY(model.dropMimeData(&data, Qt::MoveAction, 0, 0, QModelIndex()));
    QCOMPARE(namesOf(model), QStringLiteral("cabd"));
}

void tst_LvGPXTrackListModel::dropInListView()
{
    LvGPXTrackListModel model(nullptr);
    model.setSelection(selectionOf("abcdefgh"));
    QListView view;
    view.setModel(&model);
    view.setSelectionMode(QAbstractItemView::ExtendedSelection);
    view.setDragDropMode(QAbstractItemView::DragDrop); // a drag without a mouse has no source
    view.resize(200, 500);
    view.show();
    QVERIFY(QTest::qWaitForWindowExposed(&view));
    connect(&model, &LvGPXTrackListModel::pleaseSelectTrack, &view,
            [&](int row) { view.setCurrentIndex(model.index(row, 0)); });

    QVERIFY(dropOn(view, dragOf(model, {0}).get(), view.visualRect(model.index(3, 0)).center()));
    QCOMPARE(namesOf(model), QStringLiteral("bcdaefgh"));
    QCOMPARE(view.currentIndex().row(), 3);

    const QPoint below(20, view.visualRect(model.index(7, 0)).bottom() + 50);
    QVERIFY(view.viewport()->rect().contains(below));
    QVERIFY(dropOn(view, dragOf(model, {0}).get(), below));
    QCOMPARE(namesOf(model), QStringLiteral("cdaefghb"));
    QCOMPARE(view.currentIndex().row(), 7);

    const QRect third = view.visualRect(model.index(2, 0));
    QVERIFY(dropOn(view, dragOf(model, {5, 6}).get(), QPoint(third.center().x(), third.top())));
    QCOMPARE(namesOf(model), QStringLiteral("cdghaefb"));
    QCOMPARE(view.currentIndex().row(), 2);

    QMimeData text;
    text.setText(QStringLiteral("x"));
    QVERIFY(!dropOn(view, &text, third.center()));
}

void tst_LvGPXTrackListModel::dropInTableView()
{
    LvGPXTrackListModel model(nullptr);
    model.setSelection(selectionOf("abcde"));
    QTableView view;
    view.setModel(&model);
    view.setSelectionBehavior(QAbstractItemView::SelectRows);
    view.setDragDropMode(QAbstractItemView::DragDrop);
    view.setDragDropOverwriteMode(false);
    view.resize(300, 400);
    view.show();
    QVERIFY(QTest::qWaitForWindowExposed(&view));
    QVERIFY(dropOn(view, dragOf(model, {4}).get(), view.visualRect(model.index(1, 1)).center()));
    QCOMPARE(namesOf(model), QStringLiteral("aebcd"));
    const QRect last = view.visualRect(model.index(4, 0));
    QVERIFY(dropOn(view, dragOf(model, {0}).get(), QPoint(last.center().x(), last.bottom())));
    QCOMPARE(namesOf(model), QStringLiteral("ebcda"));
}

void tst_LvGPXTrackListModel::treeView()
{
    // A tree asks for the children of every row: there must be none, else it would never end.
    LvGPXTrackListModel model(nullptr);
    model.setSelection(selectionOf("abc"));
    const QAbstractItemModel& base = model;
    QVERIFY(!base.hasChildren(model.index(0, 0)));
    QTreeView view;
    view.setModel(&model);
    view.expandAll();
    view.show();
    QVERIFY(QTest::qWaitForWindowExposed(&view));
    QVERIFY(!view.indexBelow(model.index(2, 0)).isValid());
    QCOMPARE(view.header()->count(), 2);
}

void tst_LvGPXTrackListModel::equalSelectionKeepsEditors()
{
    LvGPXTrackListModel model(nullptr);
    model.setSelection(selectionOf("abc"));
    QListView view;
    view.setModel(&model);
    view.show();
    QVERIFY(QTest::qWaitForWindowExposed(&view));
    view.setCurrentIndex(model.index(2, 0));
    view.openPersistentEditor(model.index(1, 0));
    QVERIFY(view.isPersistentEditorOpen(model.index(1, 0)));
    model.setSelection(selectionOf("abc"));
    QVERIFY(view.isPersistentEditorOpen(model.index(1, 0)));
    QCOMPARE(view.currentIndex().row(), 2);
    model.moveTrack(0, 2);
    model.setConfigurationToAll(wide());
    QVERIFY(view.isPersistentEditorOpen(model.index(1, 0)));
    LvGPXTrackSelection styled(model.tracks());
    LvGPXTrackConfiguration configuration = wide();
    configuration.setLineColor(Qt::green);
    QVERIFY(styled.setConfiguration(0, configuration));
    model.setSelection(styled);
    QVERIFY(!view.isPersistentEditorOpen(model.index(1, 0)));
}

void tst_LvGPXTrackListModel::tester()
{
    FlatModel model(nullptr);
    const QAbstractItemModelTester tester(&model, QAbstractItemModelTester::FailureReportingMode::QtTest);
    model.setSelection(selectionOf("abcdefgh"));
    model.moveTrack(0, 5);
    model.moveTrack(7, 2);
    QVERIFY(model.dropMimeData(dragOf(model, {1, 2, 3}).get(), Qt::MoveAction, 5, 0, QModelIndex()));
    model.setConfigurationToAll(wide());
    model.addTracks(selectionOf("xy").tracks());
    model.remove(model.index(4, 0));
    model.setSelection(selectionOf("z"));
    model.remove(model.index(0, 0));
    QCOMPARE(model.rowCount(), 0);
}

LV_TEST_MAIN(tst_LvGPXTrackListModel)
#include "tst_LvGPXTrackListModel.moc"
