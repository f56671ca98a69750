#pragma once

#include <QByteArray>
#include <QDir>
#include <QFile>
#include <QList>
#include <QString>

#include <utility>

/// Files that the tests of the programs write.
namespace LvTestFiles
{

/// Writes a file and the folders that it needs; false when that failed.
inline bool write(const QString& path, const QByteArray& bytes)
{
    QDir().mkpath(QFileInfo(path).path());
    QFile file(path);
    return file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size();
}

inline QByteArray read(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

/// A GPX document with one track through the positions (latitude, longitude).
inline QByteArray gpx(const QList<std::pair<double, double>>& positions, const QByteArray& name = "Track")
{
    QByteArray text = "<gpx version=\"1.1\"><trk><name>" + name + "</name><trkseg>";
    for (const auto& [latitude, longitude] : positions) {
        text += "<trkpt lat=\"" + QByteArray::number(latitude, 'g', 12) + "\" lon=\""
            + QByteArray::number(longitude, 'g', 12) + "\"/>";
    }
    return text + "</trkseg></trk></gpx>";
}

} // namespace LvTestFiles
