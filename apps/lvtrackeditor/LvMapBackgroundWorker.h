#pragma once

#include "LvMapLayerWorker.h"

#include <QTimer>

#include <memory>

class LvMapSource;

/// Draws the map below the tracks, from any of the sources of maps. Map tiles of a server that come later are
/// drawn into the last layer.
class LvMapBackgroundWorker : public LvMapLayerWorker
{
    Q_OBJECT

public:
    LvMapBackgroundWorker();
    ~LvMapBackgroundWorker() override;
    Q_DISABLE_COPY_MOVE(LvMapBackgroundWorker)

    /// Opens another source, later and in the thread of this object, and tells with one of the signals below
    /// what came out; the old one stays when the new one is not usable. Thread-safe.
    /// @param name "builtin", "none", a folder of tiles, an MBTiles file, or the address of a tile server
    void requestSource(const QString& name);

Q_SIGNALS:
    /// The next layer shows this source.
    void sourceChanged(const QString& name, const QString& attribution);

    /// @param message why the source is not usable, a whole sentence for people
    void sourceFailed(const QString& name, const QString& message);

    /// Something about map tiles that people should know, a whole sentence.
    void messageRaised(const QString& message);

    /// For this class only.
    void sourceRequested(const QString& name, QPrivateSignal);

protected:
    bool draw(QPainter& painter, const LvMapLayerRequest& request) override;
    [[nodiscard]] bool isComplete() const override;

private:
    void openSource(const QString& name);
    std::unique_ptr<LvMapSource> openUrl(const QString& name);
    [[nodiscard]] static QString problemOf(const QString& name);

    std::unique_ptr<LvMapSource> mySource;
    QTimer myRedrawTimer;
};
