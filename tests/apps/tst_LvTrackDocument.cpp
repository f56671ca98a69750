#include "LvGPXTrackConfiguration.h"
#include "LvGPXTrackSelectionComparisonResult.h"
#include "LvTest.h"
#include "LvTestTracks.h"
#include "LvTrackDocument.h"

#include <QSignalSpy>

#include <functional>

using namespace LvTestTracks;

Q_DECLARE_METATYPE(LvGPXTrackSelectionComparisonResult)

namespace
{

using Edit = std::function<void(LvTrackDocument&)>;

LvTrackDocumentContent contentOf(const QStringList& names, const QList<bool>& visibility = {})
{
    return {LvGPXTrackSelection(list(names)), visibility};
}

QString namesIn(const LvTrackDocument& document)
{
    return names(document.selection().tracks());
}

/// One letter per row: shown or hidden.
QString visibilityOf(const LvTrackDocument& document)
{
    QString text;
    for (int row = 0; row < document.selection().count(); ++row) {
        text += document.isVisible(row) ? QLatin1Char('+') : QLatin1Char('-');
    }
    return text;
}

LvGPXTrackConfiguration withWidth(double width)
{
    LvGPXTrackConfiguration configuration = LvGPXTrackConfiguration::defaultValue();
    configuration.setTrackShape(LvGPXTrackShapeEnum::linestring);
    configuration.setLineWidth(width);
    return configuration;
}

} // namespace

Q_DECLARE_METATYPE(Edit)

class tst_LvTrackDocument : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void startsEmptyAndUnmodified();
    void changes_data();
    void changes();
    void changesNothing_data();
    void changesNothing();
    void shownRows();
    void hiddenTracksStayHiddenWhenMoved();
    void selectionFromElsewhereKeepsVisibility_data();
    void selectionFromElsewhereKeepsVisibility();
    void opacityChangesMerge();
    void styleChangesMerge_data();
    void styleChangesMerge();
    void stylesOfOneTrack();
    void mergedBackToTheStartIsNoChange();
    void savingEndsMerging();
    void modifiedMark();
    void earlierContentIsSaved();
    void comparisonIsHandedOn();
    void signalsComeWhenAllIsInPlace();
    void resetForgetsEverything();
    void manyTracks();
};

void tst_LvTrackDocument::startsEmptyAndUnmodified()
{
    LvTrackDocument document;
    QVERIFY(document.selection().isEmpty());
    QVERIFY(!document.isModified());
    QVERIFY(document.fileName().isEmpty());
    QVERIFY(!document.undoStack()->canUndo());
}

void tst_LvTrackDocument::changes_data()
{
    QTest::addColumn<Edit>("edit");
    QTest::addColumn<QString>("expectedNames");
    QTest::addColumn<QString>("expectedVisibility");
    QTest::addColumn<QString>("undoText");
    QTest::newRow("add one") << Edit([](LvTrackDocument& d) { d.addTracks(list({"N"})); }) << "A B C N"
                             << "+-++"
                             << "Spur „N“ hinzufügen";
    QTest::newRow("add two") << Edit([](LvTrackDocument& d) {
        d.addTracks(list({"N", "M"}));
    }) << "A B C N M"
                             << "+-+++"
                             << "2 Spuren hinzufügen";
    QTest::newRow("remove a shown one") << Edit([](LvTrackDocument& d) { d.removeTrack(0); }) << "B C"
                                        << "-+"
                                        << "Spur „A“ löschen";
    QTest::newRow("remove the hidden one") << Edit([](LvTrackDocument& d) { d.removeTrack(1); }) << "A C"
                                           << "++"
                                           << "Spur „B“ löschen";
    QTest::newRow("move down") << Edit([](LvTrackDocument& d) { d.moveTrack(0, 2); }) << "B C A"
                               << "-++"
                               << "Spur „A“ verschieben";
    QTest::newRow("move up") << Edit([](LvTrackDocument& d) { d.moveTrack(2, 0); }) << "C A B"
                             << "++-"
                             << "Spur „C“ verschieben";
    QTest::newRow("rename") << Edit([](LvTrackDocument& d) { d.renameTrack(1, "X %1"); }) << "A X %1 C"
                            << "+-+"
                            << "Spur „B“ umbenennen";
    QTest::newRow("style") << Edit([](LvTrackDocument& d) { d.setConfiguration(2, withWidth(3)); }) << "A B C"
                           << "+-+"
                           << "Darstellung von „C“ ändern";
    QTest::newRow("style of all") << Edit([](LvTrackDocument& d) { d.setConfigurationToAll(withWidth(3)); })
                                  << "A B C"
                                  << "+-+"
                                  << "Darstellung aller Spuren ändern";
    QTest::newRow("hide") << Edit([](LvTrackDocument& d) { d.setVisible(0, false); }) << "A B C"
                          << "--+"
                          << "Spur „A“ ausblenden";
    QTest::newRow("show") << Edit([](LvTrackDocument& d) { d.setVisible(1, true); }) << "A B C"
                          << "+++"
                          << "Spur „B“ einblenden";
    QTest::newRow("hide all") << Edit([](LvTrackDocument& d) { d.setAllVisible(false); }) << "A B C"
                              << "---"
                              << "Alle Spuren ausblenden";
    QTest::newRow("show all") << Edit([](LvTrackDocument& d) { d.setAllVisible(true); }) << "A B C"
                              << "+++"
                              << "Alle Spuren einblenden";
    QTest::newRow("cropping opacity") << Edit([](LvTrackDocument& d) { d.setCroppingOpacity(40); }) << "A B C"
                                      << "+-+"
                                      << "Deckkraft der Karte ändern";
    QTest::newRow("clear") << Edit([](LvTrackDocument& d) { d.clear(); }) << ""
                           << ""
                           << "Alle Spuren löschen";
    QTest::newRow("selection from elsewhere") << Edit([](LvTrackDocument& d) {
        d.setSelection(list({"C", "B"}), "Ziehen");
    }) << "C B"
                                              << "+-"
                                              << "Ziehen";
}

void tst_LvTrackDocument::changes()
{
    QFETCH(Edit, edit);
    QFETCH(QString, expectedNames);
    QFETCH(QString, expectedVisibility);
    QFETCH(QString, undoText);
    LvTrackDocument document;
    document.reset(contentOf({"A", "B", "C"}, {true, false, true}));
    const LvTrackDocumentContent before = document.content();

    edit(document);
    const LvTrackDocumentContent after = document.content();
    QVERIFY(!(after == before));
    QCOMPARE(namesIn(document), expectedNames);
    QCOMPARE(visibilityOf(document), expectedVisibility);
    QVERIFY(document.isModified());
    QCOMPARE(document.undoStack()->count(), 1);
    QCOMPARE(document.undoStack()->undoText(), undoText);

    document.undoStack()->undo();
    QVERIFY(document.content() == before);
    QVERIFY(!document.isModified());
    document.undoStack()->redo();
    QVERIFY(document.content() == after);
    QVERIFY(document.isModified());
}

void tst_LvTrackDocument::changesNothing_data()
{
    QTest::addColumn<Edit>("edit");
    QTest::newRow("add nothing") << Edit([](LvTrackDocument& d) { d.addTracks({}); });
    QTest::newRow("remove before the first") << Edit([](LvTrackDocument& d) { d.removeTrack(-1); });
    QTest::newRow("remove behind the last") << Edit([](LvTrackDocument& d) { d.removeTrack(3); });
    QTest::newRow("move to itself") << Edit([](LvTrackDocument& d) { d.moveTrack(1, 1); });
    QTest::newRow("move from outside") << Edit([](LvTrackDocument& d) { d.moveTrack(3, 0); });
    QTest::newRow("move to outside") << Edit([](LvTrackDocument& d) { d.moveTrack(0, 3); });
    QTest::newRow("move to before the first") << Edit([](LvTrackDocument& d) { d.moveTrack(0, -1); });
    QTest::newRow("same name") << Edit([](LvTrackDocument& d) { d.renameTrack(0, "A"); });
    QTest::newRow("name of no track") << Edit([](LvTrackDocument& d) { d.renameTrack(3, "X"); });
    QTest::newRow("same style") << Edit(
        [](LvTrackDocument& d) { d.setConfiguration(0, d.selection().configuration(0)); });
    QTest::newRow("style of no track")
        << Edit([](LvTrackDocument& d) { d.setConfiguration(3, withWidth(3)); });
    QTest::newRow("same style for all")
        << Edit([](LvTrackDocument& d) { d.setConfigurationToAll(d.selection().configuration(0)); });
    QTest::newRow("already shown") << Edit([](LvTrackDocument& d) { d.setVisible(0, true); });
    QTest::newRow("show no track") << Edit([](LvTrackDocument& d) { d.setVisible(3, true); });
    QTest::newRow("all already shown") << Edit([](LvTrackDocument& d) { d.setAllVisible(true); });
    QTest::newRow("same opacity") << Edit([](LvTrackDocument& d) { d.setCroppingOpacity(255); });
    QTest::newRow("opacity above the limit") << Edit([](LvTrackDocument& d) { d.setCroppingOpacity(256); });
    QTest::newRow("same selection") << Edit([](LvTrackDocument& d) { d.setSelection(d.selection(), "X"); });
}

void tst_LvTrackDocument::changesNothing()
{
    QFETCH(Edit, edit);
    LvTrackDocument document;
    document.reset(contentOf({"A", "B", "C"}));
    QSignalSpy selectionSpy(&document, &LvTrackDocument::selectionChanged);
    QSignalSpy visibilitySpy(&document, &LvTrackDocument::visibilityChanged);
    edit(document);
    QCOMPARE(document.undoStack()->count(), 0);
    QVERIFY(!document.isModified());
    QCOMPARE(selectionSpy.count(), 0);
    QCOMPARE(visibilitySpy.count(), 0);
}

void tst_LvTrackDocument::shownRows()
{
    LvTrackDocument document;
    document.reset(contentOf({"A", "B", "C", "D"}, {false, true, false, true}));
    document.setCroppingOpacity(12);
    const LvGPXTrackSelection shown = document.visibleSelection();
    QCOMPARE(names(shown.tracks()), QStringLiteral("B D"));
    QCOMPARE(shown.nominalCroppingOpacity(), 12);
    QCOMPARE(document.documentRow(-1), -1);
    QCOMPARE(document.documentRow(0), 1);
    QCOMPARE(document.documentRow(1), 3);
    QCOMPARE(document.documentRow(2), -1);
    QCOMPARE(document.visibleRow(-1), -1);
    QCOMPARE(document.visibleRow(0), -1);
    QCOMPARE(document.visibleRow(1), 0);
    QCOMPARE(document.visibleRow(2), -1);
    QCOMPARE(document.visibleRow(3), 1);
    QCOMPARE(document.visibleRow(4), -1);
    QVERIFY(!document.isVisible(-1));
    QVERIFY(!document.isVisible(4));
}

void tst_LvTrackDocument::hiddenTracksStayHiddenWhenMoved()
{
    LvTrackDocument document;
    document.reset(contentOf({"A", "B", "C"}, {true, false, true}));
    QSignalSpy visibilitySpy(&document, &LvTrackDocument::visibilityChanged);
    document.moveTrack(1, 2);
    QCOMPARE(names(document.visibleSelection().tracks()), QStringLiteral("A C"));
    QCOMPARE(visibilitySpy.count(), 1);
    document.moveTrack(0, 1); // both shown: the same rows are shown afterwards
    QCOMPARE(visibilitySpy.count(), 1);
}

void tst_LvTrackDocument::selectionFromElsewhereKeepsVisibility_data()
{
    QTest::addColumn<QStringList>("before");
    QTest::addColumn<QList<bool>>("visibility");
    QTest::addColumn<QStringList>("after");
    QTest::addColumn<QString>("expected");
    const QStringList abcd{"A", "B", "C", "D"};
    const QList<bool> hidden{false, true, false, true};
    QTest::newRow("reversed") << abcd << hidden << QStringList{"D", "C", "B", "A"} << "+-+-";
    QTest::newRow("block to the end") << abcd << hidden << QStringList{"C", "D", "A", "B"} << "-+-+";
    QTest::newRow("some removed") << abcd << hidden << QStringList{"C", "B"} << "-+";
    QTest::newRow("new ones between") << abcd << hidden << QStringList{"N", "A", "M", "B"} << "+-++";
    QTest::newRow("none left") << abcd << hidden << QStringList{} << "";
    QTest::newRow("none before") << QStringList{} << QList<bool>{} << QStringList{"A"} << "+";
    QTest::newRow("twins, one of them hidden") << QStringList{"A", "B", "A"} << QList<bool>{true, true, false}
                                               << QStringList{"A", "A", "B"} << "+-+";
    QTest::newRow("twin added") << QStringList{"A"} << QList<bool>{false} << QStringList{"A", "A"} << "-+";
}

void tst_LvTrackDocument::selectionFromElsewhereKeepsVisibility()
{
    QFETCH(QStringList, before);
    QFETCH(QList<bool>, visibility);
    QFETCH(QStringList, after);
    QFETCH(QString, expected);
    LvTrackDocument document;
    document.reset(contentOf(before, visibility));
    document.setSelection(list(after), QStringLiteral("Ziehen"));
    QCOMPARE(namesIn(document), after.join(QLatin1Char(' ')));
    QCOMPARE(visibilityOf(document), expected);
}

void tst_LvTrackDocument::opacityChangesMerge()
{
    LvTrackDocument document;
    document.reset(contentOf({"A"}));
    for (const int opacity : {200, 100, -5}) {
        document.setCroppingOpacity(opacity);
    }
    QCOMPARE(document.selection().nominalCroppingOpacity(), 0);
    QCOMPARE(document.undoStack()->count(), 1);
    document.undoStack()->undo();
    QCOMPARE(document.selection().nominalCroppingOpacity(), 255);
    document.undoStack()->redo();
    QCOMPARE(document.selection().nominalCroppingOpacity(), 0);
}

void tst_LvTrackDocument::styleChangesMerge_data()
{
    QTest::addColumn<Edit>("second");
    QTest::addColumn<int>("commands");
    LvGPXTrackConfiguration wider = withWidth(5);
    LvGPXTrackConfiguration redder = withWidth(4);
    redder.setLineColor(Qt::red);
    QTest::newRow("the same property of the same row")
        << Edit([wider](LvTrackDocument& d) { d.setConfiguration(0, wider); }) << 1;
    QTest::newRow("another property of the same row")
        << Edit([redder](LvTrackDocument& d) { d.setConfiguration(0, redder); }) << 2;
    QTest::newRow("the same property of another row")
        << Edit([wider](LvTrackDocument& d) { d.setConfiguration(1, wider); }) << 2;
    QTest::newRow("the same property of all rows")
        << Edit([wider](LvTrackDocument& d) { d.setConfigurationToAll(wider); }) << 2;
    QTest::newRow("another kind of change") << Edit([](LvTrackDocument& d) { d.setCroppingOpacity(4); }) << 2;
}

void tst_LvTrackDocument::styleChangesMerge()
{
    QFETCH(Edit, second);
    QFETCH(int, commands);
    LvTrackDocument document;
    document.reset(contentOf({"A", "B"}));
    const LvTrackDocumentContent before = document.content();
    document.setConfiguration(0, withWidth(4));
    second(document);
    QCOMPARE(document.undoStack()->count(), commands);
    for (int i = 0; i < commands; ++i) {
        document.undoStack()->undo();
    }
    QVERIFY(document.content() == before);
}

void tst_LvTrackDocument::stylesOfOneTrack()
{
    LvTrackDocument document;
    document.reset(contentOf({"A", "B"}));
    document.setConfiguration(1, withWidth(4));
    QCOMPARE(document.selection().configuration(0).lineWidth(), LvDistance(10));
    QCOMPARE(document.selection().configuration(1).lineWidth(), LvDistance(4));
    document.setConfigurationToAll(withWidth(7));
    QCOMPARE(document.selection().configuration(0).lineWidth(), LvDistance(7));
    QCOMPARE(document.selection().configuration(1).lineWidth(), LvDistance(7));
}

void tst_LvTrackDocument::mergedBackToTheStartIsNoChange()
{
    LvTrackDocument document;
    document.reset(contentOf({"A"}));
    document.setCroppingOpacity(100);
    document.setCroppingOpacity(255);
    QCOMPARE(document.undoStack()->count(), 0);
    QVERIFY(!document.isModified());
}

void tst_LvTrackDocument::savingEndsMerging()
{
    LvTrackDocument document;
    document.reset(contentOf({"A"}));
    document.setCroppingOpacity(100);
    document.markSaved(QStringLiteral("/somewhere/a.lvt"));
    document.setCroppingOpacity(50);
    QVERIFY(document.isModified());
    document.undoStack()->undo();
    QCOMPARE(document.selection().nominalCroppingOpacity(), 100);
    QVERIFY(!document.isModified());
}

void tst_LvTrackDocument::modifiedMark()
{
    LvTrackDocument document;
    QSignalSpy modifiedSpy(&document, &LvTrackDocument::modifiedChanged);
    QSignalSpy nameSpy(&document, &LvTrackDocument::fileNameChanged);
    document.addTracks(list({"A"}));
    QCOMPARE(modifiedSpy.count(), 1);
    QCOMPARE(modifiedSpy.last().first().toBool(), true);
    document.addTracks(list({"B"}));
    QCOMPARE(modifiedSpy.count(), 1);
    document.markSaved(QStringLiteral("/somewhere/a.lvt"));
    QCOMPARE(modifiedSpy.count(), 2);
    QCOMPARE(modifiedSpy.last().first().toBool(), false);
    QCOMPARE(nameSpy.count(), 1);
    QCOMPARE(document.fileName(), QStringLiteral("/somewhere/a.lvt"));
    document.undoStack()->undo();
    QVERIFY(document.isModified());
    document.undoStack()->redo();
    QVERIFY(!document.isModified());
    document.markSaved(QStringLiteral("/somewhere/a.lvt"));
    QCOMPARE(nameSpy.count(), 1);
}

void tst_LvTrackDocument::earlierContentIsSaved()
{
    const QString fileName = QStringLiteral("/somewhere/a.lvt");
    LvTrackDocument document;
    document.addTracks(list({"A"}));
    document.markSaved(fileName, document.content());
    QVERIFY(!document.isModified());

    document.setCroppingOpacity(100);
    const LvTrackDocumentContent earlier = document.content();
    document.setCroppingOpacity(50); // becomes one step with the one before
    document.markSaved(QStringLiteral("/somewhere/b.lvt"), earlier);
    QCOMPARE(document.fileName(), QStringLiteral("/somewhere/b.lvt"));
    QVERIFY(document.isModified());
    // Neither what is in the older file nor anything else counts as saved.
    document.undoStack()->undo();
    QCOMPARE(document.selection().nominalCroppingOpacity(), 255);
    QVERIFY(document.isModified());
    document.undoStack()->undo();
    QVERIFY(document.isModified());

    // Equal content counts, however it came about.
    document.undoStack()->redo();
    document.setCroppingOpacity(100);
    document.markSaved(fileName, earlier);
    QVERIFY(!document.isModified());
}

void tst_LvTrackDocument::comparisonIsHandedOn()
{
    LvTrackDocument document;
    document.reset(contentOf({"A", "B", "C"}));
    QSignalSpy spy(&document, &LvTrackDocument::selectionChanged);
    document.setConfiguration(1, withWidth(3));
    QCOMPARE(spy.count(), 1);
    auto result = spy.last().first().value<LvGPXTrackSelectionComparisonResult>();
    QCOMPARE(result.changingTracks(), (QList<int>{1, 1}));
    QCOMPARE(result.changingAspects(), LvGPXTrackAspect(LvGPXTrackAspectFlag::LineWidth));
    QVERIFY(!result.trackCountChanges());
    document.undoStack()->undo();
    QCOMPARE(spy.count(), 2);
    document.removeTrack(2);
    result = spy.last().first().value<LvGPXTrackSelectionComparisonResult>();
    QVERIFY(result.trackCountChanges());
    QVERIFY(result.changingTracks().isEmpty());
}

void tst_LvTrackDocument::signalsComeWhenAllIsInPlace()
{
    LvTrackDocument document;
    document.reset(contentOf({"A", "B"}, {false, true}));
    QStringList seen;
    const auto look = [&] { seen.append(namesIn(document) + visibilityOf(document)); };
    connect(&document, &LvTrackDocument::selectionChanged, &document, look);
    connect(&document, &LvTrackDocument::visibilityChanged, &document, look);
    document.removeTrack(0);
    QCOMPARE(seen, (QStringList{"B+", "B+"}));
}

void tst_LvTrackDocument::resetForgetsEverything()
{
    LvTrackDocument document;
    document.addTracks(list({"A"}));
    QSignalSpy selectionSpy(&document, &LvTrackDocument::selectionChanged);
    QSignalSpy nameSpy(&document, &LvTrackDocument::fileNameChanged);
    document.reset(contentOf({"B", "C", "D"}, {false}), QStringLiteral("/somewhere/b.lvt"));
    QCOMPARE(selectionSpy.count(), 1);
    QCOMPARE(nameSpy.count(), 1);
    QVERIFY(!document.isModified());
    QVERIFY(!document.undoStack()->canUndo());
    QCOMPARE(visibilityOf(document), QStringLiteral("-++"));
    document.reset();
    QVERIFY(document.selection().isEmpty());
    QVERIFY(document.fileName().isEmpty());
}

void tst_LvTrackDocument::manyTracks()
{
    QStringList all;
    for (int i = 0; i < 700; ++i) {
        all.append(QStringLiteral("T%1").arg(i));
    }
    QList<bool> visibility(all.size(), true);
    visibility[3] = false;
    LvTrackDocument document;
    document.reset(contentOf(all, visibility));
    all.move(3, 600);
    QElapsedTimer timer;
    timer.start();
    document.setSelection(list(all), QStringLiteral("Ziehen"));
    // Generous: it takes about a millisecond. Searching every row from the start would take seconds.
    QVERIFY2(timer.elapsed() < 1000, qPrintable(QString::number(timer.elapsed())));
    QVERIFY(!document.isVisible(600));
    QVERIFY(document.isVisible(3));
}

LV_TEST_MAIN(tst_LvTrackDocument)
#include "tst_LvTrackDocument.moc"
