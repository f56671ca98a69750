#include "LvTest.h"

#include <QDir>
#include <QFile>
#include <QFont>
#include <QStandardPaths>
#include <QTemporaryDir>

#include <cstdlib>

namespace
{

constexpr int channelTolerance = 6;
constexpr double outlierShare = 0.001;

int largestDifference(QRgb a, QRgb b)
{
    return std::max({std::abs(qRed(a) - qRed(b)), std::abs(qGreen(a) - qGreen(b)),
                     std::abs(qBlue(a) - qBlue(b)), std::abs(qAlpha(a) - qAlpha(b))});
}

} // namespace

void LvTest::isolateEnvironment()
{
    static QTemporaryDir myHome;
    const QByteArray home = QFile::encodeName(myHome.path());
    for (const char* name : {"HOME", "XDG_CONFIG_HOME", "XDG_DATA_HOME", "XDG_CACHE_HOME"}) {
        qputenv(name, home);
    }
    qputenv("TZ", "UTC");
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM")) {
        qputenv("QT_QPA_PLATFORM", "offscreen");
    }
}

void LvTest::prepareApplication()
{
    QCoreApplication::setOrganizationName(QStringLiteral("LvTest"));
    QCoreApplication::setApplicationName(QStringLiteral("LvTest"));
    QFont::insertSubstitution(QStringLiteral("Arial"), QStringLiteral("Liberation Sans"));
    QApplication::setFont(QFont(QStringLiteral("Liberation Sans"), 10));
}

QString LvTest::dataFile(const QString& name)
{
    return QStringLiteral(LV_DATA_DIR "/") + name;
}

QString LvTest::sampleFile(const QString& name)
{
    return QStringLiteral(LV_SAMPLES_DIR "/") + name;
}

QString LvTest::corpusDirectory()
{
    const QDir directory(QStringLiteral(LV_CORPUS_DIR));
    return directory.exists() ? directory.canonicalPath() : QString();
}

bool LvTest::matchesGolden(const QImage& image, const QString& name)
{
    const QString goldenName = QStringLiteral(LV_GOLDEN_DIR "/") + name + QStringLiteral(".png");
    const QImage actual = image.convertToFormat(QImage::Format_ARGB32);
    if (qEnvironmentVariableIntValue("LV_UPDATE_GOLDEN") == 1) {
        return QDir().mkpath(QStringLiteral(LV_GOLDEN_DIR)) && actual.save(goldenName);
    }
    const QImage golden = QImage(goldenName).convertToFormat(QImage::Format_ARGB32);
    const QDir output(QStringLiteral(LV_GOLDEN_OUTPUT_DIR));
    if (golden.size() != actual.size()) {
        output.mkpath(QStringLiteral("."));
        actual.save(output.filePath(name + QStringLiteral("-actual.png")));
        qWarning("golden picture %s is missing or has another size", qUtf8Printable(goldenName));
        return false;
    }
    QImage difference(actual.size(), QImage::Format_RGB32);
    qint64 outliers = 0;
    for (int y = 0; y < actual.height(); ++y) {
        for (int x = 0; x < actual.width(); ++x) {
            const int distance = largestDifference(actual.pixel(x, y), golden.pixel(x, y));
            outliers += distance > channelTolerance ? 1 : 0;
            difference.setPixel(x, y, qRgb(distance, distance, distance));
        }
    }
    const double allowed = outlierShare * actual.width() * actual.height();
    if (static_cast<double>(outliers) <= allowed) {
        return true;
    }
    output.mkpath(QStringLiteral("."));
    actual.save(output.filePath(name + QStringLiteral("-actual.png")));
    difference.save(output.filePath(name + QStringLiteral("-difference.png")));
    qWarning("%lld pixels differ from %s", static_cast<long long>(outliers), qUtf8Printable(goldenName));
    return false;
}
