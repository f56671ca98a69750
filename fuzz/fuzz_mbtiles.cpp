// Tile archives. An input is either an SQLite database as it is, or its content: lines of "key<TAB>value" for
// the metadata and "tile zoom column row" for the tiles, then an empty line, then the bytes of every tile.

#include "LvFuzz.h"
#include "LvMBTilesSource.h"
#include "LvMapView.h"

#include <QFile>
#include <QImage>
#include <QPainter>
#include <QSqlDatabase>
#include <QSqlQuery>
#include <QVariant>

namespace
{

constexpr int mostTiles = 16;
constexpr qsizetype longestAttribution = 200;

void writeArchive(const QString& fileName, const QByteArray& input)
{
    const qsizetype end = input.indexOf("\n\n");
    const QByteArray picture = end < 0 ? QByteArray() : input.mid(end + 2);
    const QList<QByteArray> lines = (end < 0 ? input : input.first(end)).split('\n');
    QSqlDatabase database = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), QStringLiteral("writer"));
    database.setDatabaseName(fileName);
    if (!database.open()) {
        qFatal("cannot write %s", qUtf8Printable(fileName));
    }
    QSqlQuery query(database);
    query.exec(QStringLiteral("PRAGMA journal_mode = OFF"));
    query.exec(QStringLiteral("PRAGMA synchronous = OFF"));
    query.exec(QStringLiteral("BEGIN"));
    query.exec(QStringLiteral("CREATE TABLE metadata (name text, value text)"));
    query.exec(QStringLiteral("CREATE TABLE tiles (zoom_level, tile_column, tile_row, tile_data)"));
    int tiles = 0;
    for (const QByteArray& line : lines) {
        if (line.startsWith("tile ") && tiles < mostTiles) {
            const QList<QByteArray> fields = line.split(' ');
            query.prepare(QStringLiteral("INSERT INTO tiles VALUES (?, ?, ?, ?)"));
            for (int field = 1; field <= 3; ++field) {
                bool isNumber = false;
                const qlonglong number = fields.value(field).toLongLong(&isNumber);
                // The columns of a hostile file hold anything.
                query.addBindValue(isNumber ? QVariant(number)
                                            : QVariant(QString::fromUtf8(fields.value(field))));
            }
            query.addBindValue(picture);
            query.exec();
            ++tiles;
        } else if (line.contains('\t')) {
            query.prepare(QStringLiteral("INSERT INTO metadata VALUES (?, ?)"));
            query.addBindValue(QString::fromUtf8(line.first(line.indexOf('\t'))));
            query.addBindValue(QString::fromUtf8(line.mid(line.indexOf('\t') + 1)));
            query.exec();
        }
    }
    query.exec(QStringLiteral("COMMIT"));
}

void checkDrawing(LvMBTilesSource& source, const LvMapView& view)
{
    const int zoom = source.zoomFor(view);
    LvFuzz::expect(!source.isValid() || (zoom >= 0 && zoom <= 30), "only tiles that there can be are drawn");
    QImage picture(view.size(), QImage::Format_ARGB32_Premultiplied);
    picture.fill(Qt::transparent);
    QPainter painter(&picture);
    source.draw(painter, view, 1.0);
    painter.end();
    LvFuzz::expect(qAlpha(picture.pixel(0, 0)) == 255, "a map fills the picture");
}

} // namespace

void LvFuzz::run(const QByteArray& input)
{
    const QString fileName = path(QStringLiteral("map.mbtiles"));
    QFile::remove(fileName);
    if (input.startsWith("SQLite format 3")) {
        writeFile(QStringLiteral("map.mbtiles"), input);
    } else {
        writeArchive(fileName, input);
        QSqlDatabase::removeDatabase(QStringLiteral("writer"));
    }
    LvMBTilesSource source(fileName);
    expect(source.isValid() == source.errorText().isEmpty(), "either there is a map or a reason");
    expect(!source.errorText().contains(QLatin1Char('\n')), "a reason is one line");
    expect(source.attribution().size() <= longestAttribution
               && source.attribution() == source.attribution().simplified(),
           "an attribution is one short line");
    checkDrawing(source, LvMapView(QSize(48, 32)));
    checkDrawing(source, LvMapView::aroundCenter(LvGeoPosition(53.14, 8.8), 5.5, QSize(48, 32)));
    checkDrawing(source, LvMapView::aroundCenter(LvGeoPosition(-85.0, 180.0), 30.0, QSize(300, 8)));
}
