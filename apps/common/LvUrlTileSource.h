#pragma once

#include "LvTileUrlTemplate.h"
#include "LvTiledMapSource.h"

#include <QHash>
#include <QList>
#include <QNetworkReply>
#include <QObject>
#include <QSet>
#include <QTimer>

class QNetworkAccessManager;

/**
 * Map tiles from a server.
 *
 * Drawing never waits: tiles that are not at hand are left out and asked for, and tilesChanged() tells when
 * the picture should be drawn anew. Only a few requests are under way at a time, and only for the tiles of
 * the last drawing. A tile that the server refuses is not asked for again; after an answer that asks for
 * patience, or none at all, everything waits a while. Tiles are kept on disk for as long as the server
 * allows.
 *
 * Needs the event loop of the thread that it belongs to.
 */
class LvUrlTileSource : public QObject, public LvTiledMapSource
{
    Q_OBJECT

public:
    static constexpr int maximumRequests = 4; ///< under way at a time

    /// @param cacheDirectory where tiles are kept; by default "tiles" in the user's folder for caches
    explicit LvUrlTileSource(LvTileUrlTemplate address,
                             const QString& cacheDirectory = defaultCacheDirectory());
    ~LvUrlTileSource() override;
    Q_DISABLE_COPY_MOVE(LvUrlTileSource)

    /// The folder "tiles" below QStandardPaths::CacheLocation.
    [[nodiscard]] static QString defaultCacheDirectory();

    /// How the program names itself to servers, such as "lvtrackeditor/1.0 (LvGeoLocation)".
    [[nodiscard]] static QByteArray userAgent();

    [[nodiscard]] bool isValid() const override;
    [[nodiscard]] QString errorText() const override;

    /// Empty: which notice the owner of the map wants is for the user to say.
    [[nodiscard]] QString attribution() const override;

    void draw(QPainter& painter, const LvMapView& view, double paintFactor) override;

    /// Whether all tiles of the last drawing have come, or will not come soon.
    [[nodiscard]] bool isComplete() const;

    /// For how long nothing is asked for after an answer such as "too many requests"; the server may ask for
    /// a longer time, up to ten minutes. In milliseconds, by default half a minute.
    void setPause(int milliseconds) { myPause = milliseconds; }

Q_SIGNALS:
    /// Tiles of the last drawing have come, or it is clear that they will not.
    void tilesChanged();

    /// A server refuses its tiles or cannot be reached, one whole sentence; said once until tiles come again.
    void messageRaised(const QString& message);

protected:
    [[nodiscard]] int minimumZoom() const override;
    [[nodiscard]] int maximumZoom() const override;
    [[nodiscard]] QImage loadTile(const LvTileKey& key) override;
    [[nodiscard]] int tilePixelRatio() const override;
    [[nodiscard]] bool isMissingForever(const LvTileKey& key) const override;

private:
    void requestNext();
    void finish(QNetworkReply* reply);
    void refuse(const LvTileKey& key, const QNetworkReply& reply, int status);
    [[nodiscard]] static QString unreachableText(QNetworkReply::NetworkError error);
    void pauseFor(int milliseconds);
    void raise(const QString& message);

    LvTileUrlTemplate myAddress;
    QNetworkAccessManager* myNetwork;
    QList<LvTileKey> myWaiting; // of the last drawing, in the order of drawing
    QHash<LvTileKey, QNetworkReply*> myReplies;
    QSet<LvTileKey> myRefused;
    QTimer myPauseTimer;
    QString myLastMessage;
    int myPause;
};
