#include "LvMapBackgroundWorker.h"

#include "LvMapSource.h"
#include "LvTileUrlTemplate.h"
#include "LvUrlTileSource.h"

#include <QFileInfo>
#include <QPainter>

namespace
{

constexpr int redrawMilliseconds = 60; // tiles that come in quick succession share one drawing

} // namespace

LvMapBackgroundWorker::LvMapBackgroundWorker()
    : myRedrawTimer(this) // a child, to move to another thread with this object
{
    myRedrawTimer.setSingleShot(true);
    myRedrawTimer.setInterval(redrawMilliseconds);
    connect(&myRedrawTimer, &QTimer::timeout, this, &LvMapBackgroundWorker::redraw);
    // Sources belong to one thread.
    connect(this, &LvMapBackgroundWorker::sourceRequested, this, &LvMapBackgroundWorker::openSource,
            Qt::QueuedConnection);
}

LvMapBackgroundWorker::~LvMapBackgroundWorker() = default;

void LvMapBackgroundWorker::requestSource(const QString& name)
{
    Q_EMIT sourceRequested(name, {});
}

bool LvMapBackgroundWorker::draw(QPainter& painter, const LvMapLayerRequest& request)
{
    if (mySource != nullptr) {
        mySource->draw(painter, request.view(), request.pixelRatio);
    }
    return true;
}

bool LvMapBackgroundWorker::isComplete() const
{
    const auto* tiles = dynamic_cast<const LvUrlTileSource*>(mySource.get());
    return tiles == nullptr || tiles->isComplete();
}

void LvMapBackgroundWorker::openSource(const QString& name)
{
    if (LvTileUrlTemplate::looksLikeUrl(name)) {
        const LvTileUrlTemplate address(name);
        if (!address.isValid()) {
            Q_EMIT sourceFailed(name, address.errorText());
            return;
        }
        mySource = openUrl(name);
    } else {
        std::unique_ptr<LvMapSource> source = LvMapSource::create(name);
        if (source != nullptr && !source->isValid()) {
            Q_EMIT sourceFailed(name, problemOf(name));
            return;
        }
        mySource = std::move(source);
    }
    myRedrawTimer.stop();
    Q_EMIT sourceChanged(name, mySource != nullptr ? mySource->attribution() : QString());
}

std::unique_ptr<LvMapSource> LvMapBackgroundWorker::openUrl(const QString& name)
{
    auto source = std::make_unique<LvUrlTileSource>(LvTileUrlTemplate(name));
    connect(source.get(), &LvUrlTileSource::tilesChanged, this, [this] {
        if (!myRedrawTimer.isActive()) {
            myRedrawTimer.start();
        }
    });
    connect(source.get(), &LvUrlTileSource::messageRaised, this, &LvMapBackgroundWorker::messageRaised);
    return source;
}

QString LvMapBackgroundWorker::problemOf(const QString& name)
{
    const QFileInfo file(name);
    if (file.isDir()) {
        return tr("Im Ordner „%1“ liegen keine Kartenkacheln der Form {z}/{x}/{y}.png.").arg(name);
    }
    if (!file.exists()) {
        return tr("Die Karte „%1“ gibt es nicht.").arg(name);
    }
    return tr("„%1“ ist keine lesbare Kartendatei (MBTiles mit Bildern).").arg(name);
}
