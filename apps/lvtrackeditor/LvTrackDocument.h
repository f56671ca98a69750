#pragma once

#include "LvTrackDocumentContent.h"

#include <QObject>
#include <QString>
#include <QUndoStack>

class LvGPXTrackConfiguration;
class LvGPXTrackSelectionComparisonResult;

/**
 * The tracks that the user works on, as one document: in which order and style they stand, which of them are
 * shown, how strongly the map fades away from them, and everything that was done to them, to be undone.
 *
 * Every change is one command on the undo stack that keeps the content before and after it. Contents are
 * cheap copies, so undoing the removal of a track is as sure as undoing a change of its colour. Changes that
 * change nothing leave no command. Rows out of range are ignored.
 */
class LvTrackDocument : public QObject
{
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(LvTrackDocument)

public:
    explicit LvTrackDocument(QObject* parent = nullptr);
    ~LvTrackDocument() override;

    /// Starts anew with this content as the saved state: nothing to undo, not modified. Missing entries of
    /// the visibility count as shown. An empty name belongs to a document without a file.
    void reset(const LvTrackDocumentContent& content = {}, const QString& fileName = QString());

    [[nodiscard]] const LvTrackDocumentContent& content() const { return myContent; }

    [[nodiscard]] const LvGPXTrackSelection& selection() const { return myContent.selection; }

    /// Whether the track at the row is shown; false for a row out of range.
    [[nodiscard]] bool isVisible(int row) const;

    /// The tracks that are shown, with the cropping opacity.
    [[nodiscard]] LvGPXTrackSelection visibleSelection() const;

    /// The row in the document of a row of visibleSelection(); -1 for a row out of range.
    [[nodiscard]] int documentRow(int visibleRow) const;

    /// The row in visibleSelection() of a row of the document; -1 for a hidden track and out of range.
    [[nodiscard]] int visibleRow(int row) const;

    [[nodiscard]] QUndoStack* undoStack() { return &myUndoStack; }

    /// Whether there are changes since the last markSaved() or reset().
    [[nodiscard]] bool isModified() const { return !myUndoStack.isClean(); }

    /// The file that the document was read from or written to last; empty for none.
    [[nodiscard]] QString fileName() const { return myFileName; }

    /// The content as it stands is now in that file.
    void markSaved(const QString& fileName);

    /// That content, the document's at an earlier moment, is now in that file. When there have been changes
    /// since, the document stays modified, whatever is undone.
    void markSaved(const QString& fileName, const LvTrackDocumentContent& savedContent);

    /// Appends the tracks, shown.
    void addTracks(const LvGPXConfiguredTrackList& tracks);
    void removeTrack(int row);
    /// Moves one track so that it ends at row "to".
    void moveTrack(int from, int to);
    void renameTrack(int row, const QString& name);
    /// Further changes of the same properties of the same row become one command with this one.
    void setConfiguration(int row, const LvGPXTrackConfiguration& configuration);
    /// Gives all tracks the same style. Each keeps its own kind of geometry where the style names none.
    void setConfigurationToAll(const LvGPXTrackConfiguration& configuration);
    void setVisible(int row, bool visible);
    void setAllVisible(bool visible);
    /// From 0, an invisible map, to 255; values beyond are limited. Further changes become one command.
    void setCroppingOpacity(int opacity);
    /// Removes all tracks.
    void clear();
    /// Takes over a selection that was changed elsewhere, as by dragging rows. Tracks that were there before
    /// stay shown or hidden, wherever they stand now; new ones are shown.
    void setSelection(const LvGPXTrackSelection& selection, const QString& undoText);

Q_SIGNALS:
    /// The selection is another one now; the result compares it with the one before.
    void selectionChanged(const LvGPXTrackSelectionComparisonResult& result);
    /// Other rows are shown, or the shown tracks stand in other rows.
    void visibilityChanged();
    void modifiedChanged(bool isModified);
    void fileNameChanged(const QString& fileName);

private:
    class Change;

    /// Takes over the content and tells what changed; called by the commands.
    void apply(const LvTrackDocumentContent& content);
    void push(const LvTrackDocumentContent& after, const QString& undoText);
    void pushConfiguration(const LvGPXTrackSelection& selection, int row, const QString& undoText);
    void setFileName(const QString& fileName);

    LvTrackDocumentContent myContent;
    QString myFileName;
    QUndoStack myUndoStack;
};
