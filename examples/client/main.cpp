#include <QTextStream>

#include <LvGPXTrackFile.h>

int main(int argc, char* argv[])
{
    const LvGPXTrackFile file(QFileInfo(QString::fromLocal8Bit(argc > 1 ? argv[1] : "track.gpx")));
    for (const LvGPXTrack& track : file.tracks())
        QTextStream(stdout) << track.name() << ": " << track.countPoints() << " points\n";
    return file.isValid() ? 0 : 1;
}
