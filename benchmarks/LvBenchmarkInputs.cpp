#include "LvBenchmarkInputs.h"

#include "LvGPXTrack.h"
#include "LvGPXTrackFile.h"

#include <QByteArray>
#include <QDateTime>
#include <QRandomGenerator>
#include <QSaveFile>

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <numbers>

namespace
{

/// To be changed with whatever changes the files, so that those of older builds are not taken for them.
constexpr char version[] = "inputs-1";
constexpr quint32 defaultSeed = 20240521;
constexpr qint64 startSeconds = 1700000000;
constexpr qsizetype writtenAtOnce = qsizetype{4} << 20;
constexpr int coordinateDigits = 7;
constexpr char head[] = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
                        "<gpx version=\"1.1\" creator=\"bench\" xmlns=\"http://www.topografix.com/GPX/1/1\" "
                        "xmlns:gpxtpx=\"http://www.garmin.com/xmlschemas/TrackPointExtension/v1\">\n";

[[noreturn]] void stop(const QString& path)
{
    std::fprintf(stderr, "%s cannot be written.\n", qPrintable(path));
    std::exit(EXIT_FAILURE);
}

/// A text of any size on its way to its file.
class Writer
{
public:
    explicit Writer(const QFileInfo& file)
        : myFile(file.filePath())
    {
        if (!QDir().mkpath(file.path()) || !myFile.open(QIODevice::WriteOnly)) {
            stop(file.filePath());
        }
    }

    Writer& operator<<(const char* text)
    {
        myText.append(text);
        if (myText.size() >= writtenAtOnce) {
            flush();
        }
        return *this;
    }

    Writer& operator<<(qint64 number)
    {
        myText.append(QByteArray::number(number));
        return *this;
    }

    Writer& fixed(double number, int digits)
    {
        char buffer[64] = {};
        const auto result =
            std::to_chars(std::begin(buffer), std::end(buffer), number, std::chars_format::fixed, digits);
        myText.append(buffer, result.ptr - std::begin(buffer));
        return *this;
    }

    /// As many digits as the number has.
    Writer& shortest(double number)
    {
        char buffer[64] = {};
        const auto result = std::to_chars(std::begin(buffer), std::end(buffer), number);
        myText.append(buffer, result.ptr - std::begin(buffer));
        return *this;
    }

    Writer& time(qint64 index, const char* suffix)
    {
        const QDateTime time = QDateTime::fromSecsSinceEpoch(startSeconds + index, Qt::UTC);
        const QDate date = time.date();
        const QTime clock = time.time();
        char buffer[32] = {};
        std::snprintf(std::begin(buffer), sizeof buffer, "%04d-%02d-%02dT%02d:%02d:%02d", date.year(),
                      date.month(), date.day(), clock.hour(), clock.minute(), clock.second());
        return *this << std::begin(buffer) << suffix;
    }

    void finish()
    {
        flush();
        if (!myFile.commit()) {
            stop(myFile.fileName());
        }
    }

private:
    void flush()
    {
        myFile.write(myText);
        myText.resize(0);
    }

    QSaveFile myFile;
    QByteArray myText;
};

/// Hills of some hundred metres.
double elevationAt(qint64 index)
{
    return 200.0 + (150.0 * std::sin(static_cast<double>(index) / 700.0));
}

void writePoints(Writer& writer, const std::vector<LvBenchmarkInputs::Degrees>& walk, qint64 first,
                 qint64 end)
{
    for (qint64 index = first; index < end; ++index) {
        const LvBenchmarkInputs::Degrees& place = walk.at(static_cast<size_t>(index));
        writer << "<trkpt lat=\"";
        writer.fixed(place.latitude, coordinateDigits) << "\" lon=\"";
        writer.fixed(place.longitude, coordinateDigits) << "\"><ele>";
        writer.fixed(elevationAt(index), 1) << "</ele><time>";
        writer.time(index, "Z</time></trkpt>\n");
    }
}

void writeTrack(Writer& writer, const std::vector<LvBenchmarkInputs::Degrees>& walk, qint64 first, qint64 end,
                qint64 number)
{
    writer << "<trk><name>Weg " << number << "</name><trkseg>\n";
    writePoints(writer, walk, first, end);
    writer << "</trkseg></trk>\n";
}

QFileInfo fileIn(const QDir& folder, const QString& kind, qint64 points, const QString& suffix)
{
    return QFileInfo(folder.filePath(QStringLiteral("%1-%2.%3").arg(kind).arg(points).arg(suffix)));
}

} // namespace

LvBenchmarkInputs::LvBenchmarkInputs(const QDir& folder)
    : myFolder(folder.filePath(QLatin1String(version)))
{
}

std::vector<LvBenchmarkInputs::Degrees> LvBenchmarkInputs::walk(qint64 count, quint32 seed)
{
    constexpr double stepDegrees = 0.0001;
    constexpr double largestTurn = 0.09; // radians to either side
    QRandomGenerator random(seed);
    Degrees place{53.0792962 + (0.5 * random.generateDouble()), 8.806422 + (0.5 * random.generateDouble())};
    double direction = 2.0 * std::numbers::pi * random.generateDouble();
    std::vector<Degrees> places;
    places.reserve(static_cast<size_t>(count));
    for (qint64 index = 0; index < count; ++index) {
        places.push_back(place);
        direction += (2.0 * random.generateDouble() - 1.0) * largestTurn;
        place.latitude += stepDegrees * std::sin(direction);
        place.longitude +=
            stepDegrees * std::cos(direction) / std::cos(place.latitude * std::numbers::pi / 180.0);
        // Long walks turn round before they leave the middle latitudes.
        if (place.latitude < 40.0 || place.latitude > 65.0) {
            direction = -direction;
            place.latitude = std::clamp(place.latitude, 40.0, 65.0);
        }
    }
    return places;
}

std::vector<LvBenchmarkInputs::Degrees> LvBenchmarkInputs::walk(qint64 count)
{
    return walk(count, defaultSeed);
}

QFileInfo LvBenchmarkInputs::gpx(qint64 points, int tracks) const
{
    const QFileInfo file =
        fileIn(myFolder, QStringLiteral("tracks-%1").arg(tracks), points, QStringLiteral("gpx"));
    if (!file.exists()) {
        const std::vector<Degrees> places = walk(points);
        Writer writer(file);
        writer << std::begin(head);
        for (int number = 0; number < tracks; ++number) {
            writeTrack(writer, places, points * number / tracks, points * (number + 1) / tracks, number);
        }
        writer << "</gpx>\n";
        writer.finish();
    }
    return QFileInfo(file.filePath());
}

QFileInfo LvBenchmarkInputs::gpxWithExtensions(qint64 points) const
{
    const QFileInfo file = fileIn(myFolder, QStringLiteral("extensions"), points, QStringLiteral("gpx"));
    if (!file.exists()) {
        const std::vector<Degrees> places = walk(points);
        Writer writer(file);
        writer << std::begin(head)
               << "  <trk>\n    <name>Weg</name>\n    <type>cycling</type>\n    <trkseg>\n";
        for (qint64 index = 0; index < points; ++index) {
            const Degrees& place = places.at(static_cast<size_t>(index));
            writer << "      <trkpt lat=\"";
            writer.shortest(place.latitude) << "\" lon=\"";
            writer.shortest(place.longitude) << "\">\n        <ele>";
            writer.shortest(elevationAt(index)) << "</ele>\n        <time>";
            writer.time(index, ".000Z</time>\n")
                << "        <extensions>\n"
                   "          <gpxtpx:TrackPointExtension>\n"
                   "            <gpxtpx:atemp>"
                << 10 + (index / 3600 % 20) << ".0</gpxtpx:atemp>\n            <gpxtpx:hr>"
                << 110 + (index / 7 % 60) << "</gpxtpx:hr>\n            <gpxtpx:cad>" << 70 + (index % 25)
                << "</gpxtpx:cad>\n"
                   "          </gpxtpx:TrackPointExtension>\n"
                   "        </extensions>\n"
                   "      </trkpt>\n";
        }
        writer << "    </trkseg>\n  </trk>\n</gpx>\n";
        writer.finish();
    }
    return QFileInfo(file.filePath());
}

QList<QFileInfo> LvBenchmarkInputs::collection(int files, qint64 points) const
{
    const QDir folder(myFolder.filePath(QStringLiteral("collection-%1-%2").arg(files).arg(points)));
    std::vector<Degrees> places;
    QList<QFileInfo> result;
    for (int number = 0; number < files; ++number) {
        const QFileInfo file(folder.filePath(QStringLiteral("%1.gpx").arg(number, 4, 10, QLatin1Char('0'))));
        if (!file.exists()) {
            if (places.empty()) {
                places = walk(points);
            }
            Writer writer(file);
            writer << std::begin(head);
            writeTrack(writer, places, points * number / files, points * (number + 1) / files, number);
            writer << "</gpx>\n";
            writer.finish();
        }
        result.append(QFileInfo(file.filePath()));
    }
    return result;
}

QFileInfo LvBenchmarkInputs::compactGpx(qint64 points) const
{
    const QFileInfo file = fileIn(myFolder, QStringLiteral("compact"), points, QStringLiteral("gpx"));
    if (!file.exists()) {
        const QList<LvGPXTrack> tracks = LvGPXTrackFile(gpx(points)).tracks();
        if (tracks.isEmpty()) {
            stop(file.filePath());
        }
        tracks.constFirst().saveAsGpxFile(file);
    }
    return QFileInfo(file.filePath());
}

QFileInfo LvBenchmarkInputs::kml(qint64 points) const
{
    const QFileInfo file = fileIn(myFolder, QStringLiteral("line"), points, QStringLiteral("kml"));
    if (!file.exists()) {
        const std::vector<Degrees> places = walk(points);
        Writer writer(file);
        writer << "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<kml xmlns=\"http://www.opengis.net/kml/2.2\">"
                  "<Document><Placemark><name>Weg</name><LineString><coordinates>\n";
        for (qint64 index = 0; index < points; ++index) {
            const Degrees& place = places.at(static_cast<size_t>(index));
            writer.fixed(place.longitude, coordinateDigits) << ",";
            writer.fixed(place.latitude, coordinateDigits) << ",";
            writer << static_cast<qint64>(elevationAt(index)) << "\n";
        }
        writer << "</coordinates></LineString></Placemark></Document></kml>\n";
        writer.finish();
    }
    return QFileInfo(file.filePath());
}
