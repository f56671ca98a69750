#include "LvUrlTileSource.h"

#include <QCoreApplication>
#include <QDir>
#include <QNetworkAccessManager>
#include <QNetworkDiskCache>
#include <QNetworkReply>
#include <QNetworkRequest>
#include <QStandardPaths>

#include <algorithm>
#include <chrono>
#include <utility>

namespace
{

using namespace std::chrono_literals;

constexpr int deepestZoom = 19; // of what servers usually have; beyond it tiles are enlarged
constexpr qint64 cacheBytes = qint64{256} * 1024 * 1024;
constexpr qint64 maximumTileBytes = qint64{16} * 1024 * 1024;
constexpr std::chrono::milliseconds timeout = 30s;
constexpr std::chrono::milliseconds defaultPause = 30s;
constexpr std::chrono::milliseconds longestPause = 10min;

constexpr int firstErrorStatus = 400;
constexpr int notFoundStatus = 404;
constexpr int goneStatus = 410;
constexpr int tooManyRequestsStatus = 429;
constexpr int unavailableStatus = 503;

} // namespace

LvUrlTileSource::LvUrlTileSource(LvTileUrlTemplate address, const QString& cacheDirectory)
    : myAddress(std::move(address))
    , myNetwork(new QNetworkAccessManager(this)) // a child of this
    , myPause(static_cast<int>(defaultPause.count()))
{
    auto* cache = new QNetworkDiskCache(myNetwork); // its child
    cache->setCacheDirectory(cacheDirectory);
    cache->setMaximumCacheSize(cacheBytes);
    myNetwork->setCache(cache);
    myNetwork->setTransferTimeout(static_cast<int>(timeout.count()));
    myPauseTimer.setSingleShot(true);
    connect(&myPauseTimer, &QTimer::timeout, this, &LvUrlTileSource::tilesChanged);
}

LvUrlTileSource::~LvUrlTileSource()
{
    // Aborting tells at once, and nobody is left to listen.
    for (QNetworkReply* reply : std::as_const(myReplies)) {
        reply->disconnect(this);
        reply->abort();
    }
}

QString LvUrlTileSource::defaultCacheDirectory()
{
    return QDir(QStandardPaths::writableLocation(QStandardPaths::CacheLocation))
        .filePath(QStringLiteral("tiles"));
}

QByteArray LvUrlTileSource::userAgent()
{
    return QStringLiteral("%1/%2 (LvGeoLocation)")
        .arg(QCoreApplication::applicationName(), QCoreApplication::applicationVersion())
        .toUtf8();
}

bool LvUrlTileSource::isValid() const
{
    return myAddress.isValid();
}

QString LvUrlTileSource::errorText() const
{
    return myAddress.errorText();
}

QString LvUrlTileSource::attribution() const
{
    return {};
}

bool LvUrlTileSource::isComplete() const
{
    return myReplies.isEmpty() && (myWaiting.isEmpty() || myPauseTimer.isActive());
}

void LvUrlTileSource::draw(QPainter& painter, const LvMapView& view, double paintFactor)
{
    myWaiting.clear();
    LvTiledMapSource::draw(painter, view, paintFactor);
    requestNext();
}

int LvUrlTileSource::minimumZoom() const
{
    return 0;
}

int LvUrlTileSource::maximumZoom() const
{
    return deepestZoom;
}

QImage LvUrlTileSource::loadTile(const LvTileKey& key)
{
    if (!myRefused.contains(key) && !myReplies.contains(key) && !myWaiting.contains(key)) {
        myWaiting.append(key);
    }
    return {};
}

int LvUrlTileSource::tilePixelRatio() const
{
    return myAddress.tilePixelRatio();
}

bool LvUrlTileSource::isMissingForever(const LvTileKey& key) const
{
    return myRefused.contains(key);
}

void LvUrlTileSource::requestNext()
{
    if (myPauseTimer.isActive()) {
        return;
    }
    while (!myWaiting.isEmpty() && myReplies.size() < maximumRequests) {
        const LvTileKey key = myWaiting.takeFirst();
        QNetworkRequest request(myAddress.urlFor(key));
        request.setHeader(QNetworkRequest::UserAgentHeader, userAgent());
        // A server of maps has no business with knowing its visitors.
        request.setAttribute(QNetworkRequest::CookieLoadControlAttribute, QNetworkRequest::Manual);
        request.setAttribute(QNetworkRequest::CookieSaveControlAttribute, QNetworkRequest::Manual);
        QNetworkReply* reply = myNetwork->get(request);
        myReplies.insert(key, reply);
        connect(reply, &QNetworkReply::downloadProgress, this, [this, key, reply](qint64 received) {
            if (received > maximumTileBytes) {
                myRefused.insert(key);
                reply->abort();
            }
        });
        connect(reply, &QNetworkReply::finished, this, [this, reply] { finish(reply); });
    }
}

void LvUrlTileSource::finish(QNetworkReply* reply)
{
    reply->deleteLater();
    const LvTileKey key = myReplies.key(reply);
    myReplies.remove(key);
    const int status = reply->attribute(QNetworkRequest::HttpStatusCodeAttribute).toInt();
    if (reply->error() == QNetworkReply::NoError) {
        const QByteArray bytes = reply->readAll();
        const QImage image = decodeTile(bytes);
        if (image.isNull()) {
            myRefused.insert(key);
            if (!bytes.isEmpty()) { // an empty answer is a common way to say that there is no tile
                raise(tr("Der Kartenserver „%1“ liefert etwas anderes als Bilder.").arg(myAddress.host()));
            }
        } else {
            storeTile(key, image);
            myLastMessage.clear();
        }
    } else {
        refuse(key, *reply, status);
    }
    requestNext();
    Q_EMIT tilesChanged();
}

QString LvUrlTileSource::unreachableText(QNetworkReply::NetworkError error)
{
    switch (error) {
    case QNetworkReply::HostNotFoundError:
        return tr("Der Kartenserver „%1“ ist unbekannt, oder es besteht keine Verbindung zum Netz.");
    case QNetworkReply::SslHandshakeFailedError:
        return tr("Der Kartenserver „%1“ kann sich nicht ausweisen; die Verbindung wäre nicht sicher.");
    case QNetworkReply::TimeoutError:
    case QNetworkReply::OperationCanceledError: // how a transfer that took too long ends
        return tr("Der Kartenserver „%1“ antwortet nicht.");
    default:
        return tr("Der Kartenserver „%1“ ist nicht erreichbar.");
    }
}

void LvUrlTileSource::refuse(const LvTileKey& key, const QNetworkReply& reply, int status)
{
    if (myRefused.contains(key)) {
        raise(tr("Der Kartenserver „%1“ liefert etwas anderes als Bilder.").arg(myAddress.host()));
        return;
    }
    if (status < firstErrorStatus) {
        // No answer from the server itself: it may come back.
        pauseFor(myPause);
        raise(unreachableText(reply.error()).arg(myAddress.host()));
        return;
    }
    if (status == tooManyRequestsStatus || status == unavailableStatus) {
        const qint64 wanted = reply.rawHeader("Retry-After").toLongLong() * 1000;
        pauseFor(static_cast<int>(std::clamp<qint64>(wanted, myPause, longestPause.count())));
        raise(tr("Der Kartenserver „%1“ ist überlastet und bittet um Geduld (HTTP %2).")
                  .arg(myAddress.host(), QString::number(status)));
        return;
    }
    myRefused.insert(key);
    if (status != notFoundStatus && status != goneStatus) {
        raise(tr("Der Kartenserver „%1“ verweigert seine Kacheln (HTTP %2).")
                  .arg(myAddress.host(), QString::number(status)));
    }
}

void LvUrlTileSource::pauseFor(int milliseconds)
{
    // What was waiting is asked for by the next drawing, which is due at the end of the pause.
    myWaiting.clear();
    if (!myPauseTimer.isActive()) {
        myPauseTimer.start(milliseconds);
    }
}

void LvUrlTileSource::raise(const QString& message)
{
    if (message != myLastMessage) {
        myLastMessage = message;
        Q_EMIT messageRaised(message);
    }
}
