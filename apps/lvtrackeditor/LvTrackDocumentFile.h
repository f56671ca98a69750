#pragma once

#include "LvFileHandler.h"
#include "LvTrackDocumentContent.h"

#include <QCoreApplication>
#include <QString>
#include <QStringList>

class LvTrackDocument;

/// What came out of a document file.
struct LvTrackDocumentReading {
    LvTrackDocumentContent content;
    /// Why there is no content at all, one line; empty when the document was read.
    QString errorText;
    /// What is missing in the content though the document names it, one line each.
    QStringList warnings;
};

/**
 * Writes and reads documents: XML files with the suffix "lvt" and the root element "lvtracks".
 *
 * Inside stands the element "selection" as the library reads it, with the attribute "visible" at each track.
 * Unlike the library's own writing, nothing gets lost: descriptions, time stamps to the millisecond, texts of
 * points and fractions of widths are there when the document is opened again. Positions keep seven decimals
 * of a degree (a centimetre) at least.
 *
 * A document takes the place of an older one in one step when it is complete: whatever interrupts the
 * writing, the older one stays whole. Files of single tracks are never written twice, so they stay what an
 * older document expects.
 */
class LvTrackDocumentFile
{
    Q_DECLARE_TR_FUNCTIONS(LvTrackDocumentFile)

public:
    /// Where the points of the tracks stand.
    enum class TrackStorage {
        Inline, ///< in the document
        SeparateFiles, ///< each in a file of its own beside the document, which unchanged tracks keep
    };

    LvTrackDocumentFile() = delete;

    /// "lvt", without the point.
    static QString suffix();

    /// For file dialogues.
    static QString nameFilter();

    /// Whether the name has the suffix, in whatever case.
    static bool hasSuffix(const QString& fileName);

    /// Writes the content. Returns why that failed, one line; an empty text on success. What would be too
    /// large for read() is not written: no file has more bytes than the maximum. May be called from any
    /// thread.
    [[nodiscard]] static QString write(const LvTrackDocumentContent& content, const QString& fileName,
                                       TrackStorage storage,
                                       qint64 maximumBytes = LvFileHandler::maximumFileSize);

    /// Reads a file. May be called from any thread.
    [[nodiscard]] static LvTrackDocumentReading read(const QString& fileName);

    /// Writes the document and marks it saved. Returns why that failed; an empty text on success.
    [[nodiscard]] static QString save(LvTrackDocument& document, const QString& fileName,
                                      TrackStorage storage);

    /// Replaces what the document holds by the file. Returns why that failed, then the document is as it was;
    /// an empty text on success.
    [[nodiscard]] static QString open(LvTrackDocument& document, const QString& fileName,
                                      QStringList* warnings = nullptr);
};
