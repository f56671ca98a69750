#pragma once

#include "LvConfigItem.h"
#include "LvSettings.h"
#include "LvSingleton.h"
#include "LvTrackDocumentFile.h"

#include <QByteArray>
#include <QString>

/**
 * What the program remembers from one run to the next, beside the settings of the library.
 *
 * Loaded on first use. Setters save at once, so that nothing is lost when the program ends unexpectedly, and
 * send changed() when the value is another one. For the user interface thread.
 */
class LvEditorSettings : public LvSettings, public LvSingleton<LvEditorSettings>
{
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(LvEditorSettings)

public:
    ~LvEditorSettings() override;

    void setupInstance() override;
    void loadSettings() override;
    void saveSettings() override;

    /// The map below the tracks: "builtin" (default), "none", a folder, an MBTiles file or a URL template.
    [[nodiscard]] QString mapSource() const;
    void setMapSource(const QString& mapSource);

    /// The attribution that the user wants on maps; empty (default) for that of the map.
    [[nodiscard]] QString attribution() const;
    void setAttribution(const QString& attribution);

    /// Where new documents keep their tracks; by default in the document.
    [[nodiscard]] LvTrackDocumentFile::TrackStorage trackStorage() const;
    void setTrackStorage(LvTrackDocumentFile::TrackStorage storage);

    /// As QWidget::saveGeometry() and QMainWindow::saveState() give them; empty for none.
    [[nodiscard]] QByteArray windowGeometry() const;
    void setWindowGeometry(const QByteArray& geometry);
    [[nodiscard]] QByteArray windowState() const;
    void setWindowState(const QByteArray& state);

    /// Where the last file was opened or saved; empty for none.
    [[nodiscard]] QString lastDirectory() const;
    void setLastDirectory(const QString& directory);

Q_SIGNALS:
    /// One of the settings that the user chooses has changed: map, attribution or storage.
    void changed();

private:
    friend class LvSingleton<LvEditorSettings>;
    LvEditorSettings();

    template <class T>
    bool store(LvConfigItem<T>& item, const T& value);

    LvConfigItem<QString> myMapSource;
    LvConfigItem<QString> myAttribution;
    LvConfigItem<bool> myHasSeparateTrackFiles;
    LvConfigItem<QByteArray> myWindowGeometry;
    LvConfigItem<QByteArray> myWindowState;
    LvConfigItem<QString> myLastDirectory;
};
