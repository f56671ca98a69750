#pragma once

#include "LvSingleton.h"
#include "lvguiwidgets_export.h"

#include <QString>

#include <functional>

/**
 * The one place where the user is asked for a file.
 *
 * The answer comes from the platform's file dialog, or from an asker that the application puts in its place
 * (a dialog of its own, a sandbox portal, a fixed answer in a test). User-interface thread only.
 */
class LVGUIWIDGETS_EXPORT LvRequestDiskAccess : public LvSingleton<LvRequestDiskAccess>
{
    Q_DISABLE_COPY_MOVE(LvRequestDiskAccess)
    friend class LvSingleton<LvRequestDiskAccess>;

public:
    /// Open one existing file for reading: the only mode so far.
    static constexpr int openForReading = 1;

    /// Gets the title, the name filters in the form of a QFileDialog (";;" between them) and the directory to
    /// start in; returns the path of the chosen file, an empty text when the user cancelled.
    using Asker =
        std::function<QString(const QString& title, const QString& nameFilters, const QString& directory)>;

    virtual ~LvRequestDiskAccess();

    /// Asks for a file and waits for the answer: the path of the chosen file, or an empty text when the user
    /// cancelled, the mode is unknown, or there is no user interface to ask in (no QApplication, or a thread
    /// other than its own). The filter is a list of patterns with blanks between them ("*.gpx *.kml"), see
    /// nameFilters(). An empty directory starts where the user was last.
    [[nodiscard]] QString getOpenFileName(int mode, const QString& filter, const QString& title,
                                          const QString& directory = {}) const;

    /// The name filters of a file dialog for the patterns: one for all of them together and one for all
    /// files. A text that is a name filter already ("GPX (*.gpx)") keeps its label.
    [[nodiscard]] static QString nameFilters(const QString& patterns);

    /// Replaces the file dialog; an empty function brings it back.
    void setAsker(Asker asker);

private:
    LvRequestDiskAccess();

    Asker myAsker;
};
