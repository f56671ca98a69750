#include "LvTrackDocument.h"

#include "LvGPXConfiguredTrack.h"
#include "LvGPXConfiguredTrackList.h"
#include "LvGPXTrackConfiguration.h"
#include "LvGPXTrackSelectionComparisonResult.h"

#include <QUndoCommand>

#include <algorithm>
#include <array>
#include <utility>

namespace
{

constexpr int opaqueMap = 255;
constexpr int allRows = -1; // instead of a row: a style for all tracks

/// Which properties of a style a change touches, one bit each.
using PropertySet = unsigned int;

PropertySet changedProperties(const LvGPXTrackConfiguration& before, const LvGPXTrackConfiguration& after)
{
    const std::array changes{
        before.lineColor() != after.lineColor(),
        before.lineWidth() != after.lineWidth(),
        before.penStyle() != after.penStyle(),
        before.fillColor() != after.fillColor(),
        before.haloWidth() != after.haloWidth(),
        before.currentDisplayOptions() != after.currentDisplayOptions(),
        before.markerShape() != after.markerShape(),
        before.trackShape() != after.trackShape(),
        before.smoothingStrength() != after.smoothingStrength(),
        before.smoothingSteps() != after.smoothingSteps(),
    };
    PropertySet properties = 0;
    PropertySet bit = 1;
    for (const bool isChanged : changes) {
        properties |= isChanged ? bit : 0;
        bit <<= 1;
    }
    return properties;
}

PropertySet changedProperties(const LvGPXTrackSelection& before, const LvGPXTrackSelection& after)
{
    PropertySet properties = 0;
    for (int row = 0; row < before.count(); ++row) {
        properties |= changedProperties(before.configuration(row), after.configuration(row));
    }
    return properties;
}

/// Which of the tracks are shown when they were taken from the content before.
QList<bool> carriedVisibility(const LvTrackDocumentContent& before, const LvGPXConfiguredTrackList& tracks)
{
    const LvGPXConfiguredTrackList oldTracks = before.selection.tracks();
    QList<bool> isTaken(oldTracks.count(), false);
    QList<bool> visibility(tracks.count(), true);
    QList<bool> isFound(tracks.count(), false);
    const auto take = [&](qsizetype row, qsizetype oldRow) {
        isTaken[oldRow] = true;
        isFound[row] = true;
        visibility[row] = before.visibility.at(oldRow);
    };
    // Most rows stay where they are. Only the others are searched, from the row behind the last find on: a
    // block of rows moves as a whole.
    for (qsizetype row = 0; row < std::min(tracks.count(), oldTracks.count()); ++row) {
        if (tracks.at(row).track() == oldTracks.at(row).track()) {
            take(row, row);
        }
    }
    qsizetype start = 0;
    for (qsizetype row = 0; row < tracks.count(); ++row) {
        for (qsizetype step = 0; !isFound.at(row) && step < oldTracks.count(); ++step) {
            const qsizetype oldRow = (start + step) % oldTracks.count();
            if (!isTaken.at(oldRow) && tracks.at(row).track() == oldTracks.at(oldRow).track()) {
                take(row, oldRow);
                start = oldRow + 1;
            }
        }
    }
    return visibility;
}

} // namespace

/// One step of the undo stack.
class LvTrackDocument::Change : public QUndoCommand
{
public:
    enum Kind : int { Single = -1, CroppingOpacity = 1, Configuration = 2 }; // -1: never merged

    Change(LvTrackDocument* document, LvTrackDocumentContent after, const QString& undoText)
        : QUndoCommand(undoText)
        , myDocument(document)
        , myBefore(document->myContent)
        , myAfter(std::move(after))
    {
    }

    /// Lets the step take in further ones of its kind that change the same properties of the same row.
    void setMergeable(Kind kind, int row = allRows, PropertySet properties = 0)
    {
        myKind = kind;
        myRow = row;
        myProperties = properties;
    }

    void undo() override { myDocument->apply(myBefore); }

    void redo() override { myDocument->apply(myAfter); }

    [[nodiscard]] int id() const override { return myKind; }

    bool mergeWith(const QUndoCommand* other) override
    {
        const auto* change = static_cast<const Change*>(other); // the ids are those of this class only
        if (change->myRow != myRow || change->myProperties != myProperties) {
            return false;
        }
        myAfter = change->myAfter;
        setObsolete(myAfter == myBefore);
        return true;
    }

private:
    LvTrackDocument* myDocument;
    LvTrackDocumentContent myBefore;
    LvTrackDocumentContent myAfter;
    Kind myKind = Single;
    int myRow = allRows;
    PropertySet myProperties = 0;
};

LvTrackDocument::LvTrackDocument(QObject* parent)
    : QObject(parent)
{
    connect(&myUndoStack, &QUndoStack::cleanChanged, this,
            [this](bool isClean) { Q_EMIT modifiedChanged(!isClean); });
}

LvTrackDocument::~LvTrackDocument()
{
    // The stack reports its end; nobody shall be told by a document that is half gone.
    myUndoStack.disconnect(this);
}

void LvTrackDocument::reset(const LvTrackDocumentContent& content, const QString& fileName)
{
    LvTrackDocumentContent complete = content;
    complete.visibility.resize(complete.selection.count(), true);
    apply(complete);
    myUndoStack.clear();
    setFileName(fileName);
}

bool LvTrackDocument::isVisible(int row) const
{
    return myContent.visibility.value(row, false);
}

LvGPXTrackSelection LvTrackDocument::visibleSelection() const
{
    const LvGPXConfiguredTrackList tracks = myContent.selection.tracks();
    LvGPXConfiguredTrackList visibleTracks;
    for (int row = 0; row < tracks.count(); ++row) {
        if (isVisible(row)) {
            visibleTracks.append(tracks.at(row));
        }
    }
    LvGPXTrackSelection visible = myContent.selection;
    visible.setTracks(visibleTracks);
    return visible;
}

int LvTrackDocument::documentRow(int visibleRow) const
{
    int count = -1;
    for (int row = 0; row < myContent.visibility.size(); ++row) {
        count += isVisible(row) ? 1 : 0;
        if (isVisible(row) && count == visibleRow) {
            return row;
        }
    }
    return -1;
}

int LvTrackDocument::visibleRow(int row) const
{
    if (!isVisible(row)) {
        return -1;
    }
    const auto first = myContent.visibility.cbegin();
    return static_cast<int>(std::count(first, first + row, true));
}

void LvTrackDocument::markSaved(const QString& fileName)
{
    setFileName(fileName);
    myUndoStack.setClean();
}

void LvTrackDocument::markSaved(const QString& fileName, const LvTrackDocumentContent& savedContent)
{
    if (myContent == savedContent) {
        markSaved(fileName);
        return;
    }
    setFileName(fileName);
    // Undoing as far as to what was saved before must not count as saved either: the file holds newer tracks.
    myUndoStack.resetClean();
}

void LvTrackDocument::addTracks(const LvGPXConfiguredTrackList& tracks)
{
    if (tracks.isEmpty()) {
        return;
    }
    LvTrackDocumentContent after = myContent;
    after.selection.addTracks(tracks);
    after.visibility.resize(after.selection.count(), true);
    push(after,
         tracks.count() == 1 ? tr("Spur „%1“ hinzufügen").arg(tracks.at(0).name())
                             : tr("%1 Spuren hinzufügen").arg(tracks.count()));
}

void LvTrackDocument::removeTrack(int row)
{
    if (!selection().isValidRow(row)) {
        return;
    }
    LvTrackDocumentContent after = myContent;
    after.selection.removeAt(row);
    after.visibility.removeAt(row);
    push(after, tr("Spur „%1“ löschen").arg(selection().value(row).name()));
}

void LvTrackDocument::moveTrack(int from, int to)
{
    if (!selection().isValidRow(from) || !selection().isValidRow(to) || from == to) {
        return;
    }
    LvTrackDocumentContent after = myContent;
    after.selection.moveTrack(from, to);
    after.visibility.move(from, to);
    push(after, tr("Spur „%1“ verschieben").arg(selection().value(from).name()));
}

void LvTrackDocument::renameTrack(int row, const QString& name)
{
    if (!selection().isValidRow(row)) {
        return;
    }
    LvGPXConfiguredTrackList tracks = selection().tracks();
    LvGPXTrack track = tracks.at(row).track();
    const QString oldName = track.name();
    track.setName(name);
    tracks[row].setTrack(track);
    LvTrackDocumentContent after = myContent;
    after.selection.setTracks(tracks);
    push(after, tr("Spur „%1“ umbenennen").arg(oldName));
}

void LvTrackDocument::setConfiguration(int row, const LvGPXTrackConfiguration& configuration)
{
    LvGPXTrackSelection changed = selection();
    if (changed.setConfiguration(row, configuration)) {
        pushConfiguration(changed, row, tr("Darstellung von „%1“ ändern").arg(changed.value(row).name()));
    }
}

void LvTrackDocument::setConfigurationToAll(const LvGPXTrackConfiguration& configuration)
{
    LvGPXTrackSelection changed = selection();
    if (changed.setConfiguration(configuration)) {
        pushConfiguration(changed, allRows, tr("Darstellung aller Spuren ändern"));
    }
}

void LvTrackDocument::setVisible(int row, bool visible)
{
    if (!selection().isValidRow(row)) {
        return;
    }
    const QString name = selection().value(row).name();
    LvTrackDocumentContent after = myContent;
    after.visibility[row] = visible;
    push(after, visible ? tr("Spur „%1“ einblenden").arg(name) : tr("Spur „%1“ ausblenden").arg(name));
}

void LvTrackDocument::setAllVisible(bool visible)
{
    LvTrackDocumentContent after = myContent;
    after.visibility.fill(visible);
    push(after, visible ? tr("Alle Spuren einblenden") : tr("Alle Spuren ausblenden"));
}

void LvTrackDocument::setCroppingOpacity(int opacity)
{
    LvTrackDocumentContent after = myContent;
    if (after.selection.setCroppingOpacity(std::clamp(opacity, 0, opaqueMap))) {
        auto* change = new Change(this, after, tr("Deckkraft der Karte ändern"));
        change->setMergeable(Change::CroppingOpacity);
        myUndoStack.push(change);
    }
}

void LvTrackDocument::clear()
{
    LvTrackDocumentContent after = myContent;
    after.selection.setTracks({});
    after.visibility.clear();
    push(after, tr("Alle Spuren löschen"));
}

void LvTrackDocument::setSelection(const LvGPXTrackSelection& selection, const QString& undoText)
{
    push({selection, carriedVisibility(myContent, selection.tracks())}, undoText);
}

void LvTrackDocument::apply(const LvTrackDocumentContent& content)
{
    const LvTrackDocumentContent before = std::exchange(myContent, content);
    // Both are in place before anybody is told.
    if (before.selection != myContent.selection) {
        Q_EMIT selectionChanged(myContent.selection.compare(before.selection));
    }
    if (before.visibility != myContent.visibility) {
        Q_EMIT visibilityChanged();
    }
}

void LvTrackDocument::push(const LvTrackDocumentContent& after, const QString& undoText)
{
    if (!(after == myContent)) {
        myUndoStack.push(new Change(this, after, undoText));
    }
}

void LvTrackDocument::pushConfiguration(const LvGPXTrackSelection& selection, int row,
                                        const QString& undoText)
{
    if (selection == myContent.selection) {
        return;
    }
    const PropertySet properties = changedProperties(myContent.selection, selection);
    auto* change = new Change(this, {selection, myContent.visibility}, undoText);
    change->setMergeable(Change::Configuration, row, properties);
    myUndoStack.push(change);
}

void LvTrackDocument::setFileName(const QString& fileName)
{
    if (fileName != myFileName) {
        myFileName = fileName;
        Q_EMIT fileNameChanged(myFileName);
    }
}
