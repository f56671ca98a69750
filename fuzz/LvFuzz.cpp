#include "LvFuzz.h"

#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QFileInfo>
#include <QGuiApplication>
#include <QTemporaryDir>

#include <array>
#include <cstdint>
#include <cstdio>
#include <cstdlib>

namespace
{

const QTemporaryDir& folder()
{
    static const QString myMemory = QStringLiteral("/dev/shm");
    static const QTemporaryDir myFolder((QFileInfo(myMemory).isWritable() ? myMemory : QDir::tempPath())
                                        + QStringLiteral("/lv-fuzz-XXXXXX"));
    return myFolder;
}

// Hostile input makes the toolkit write warnings by the thousand.
void ignoreWarnings(QtMsgType type, const QMessageLogContext& /*context*/, const QString& message)
{
    if (type == QtFatalMsg) {
        std::fprintf(stderr, "%s\n", qUtf8Printable(message));
        std::abort();
    }
}

/// Makes the application object, with settings and caches of its own.
void startApplication()
{
    const QByteArray home = QFile::encodeName(folder().path());
    for (const char* name :
         {"HOME", "XDG_CONFIG_HOME", "XDG_DATA_HOME", "XDG_CACHE_HOME", "XDG_RUNTIME_DIR"}) {
        qputenv(name, home);
    }
    qputenv("TZ", "UTC");
    qputenv("QT_QPA_PLATFORM", "offscreen");
    qInstallMessageHandler(ignoreWarnings);
    static std::array<char, 5> myName{'f', 'u', 'z', 'z', '\0'};
    static std::array<char*, 2> myArguments{myName.data(), nullptr};
    static int myCount = 1;
    static const QGuiApplication myApplication(myCount, myArguments.data());
}

} // namespace

QString LvFuzz::path(const QString& name)
{
    return folder().filePath(name);
}

QString LvFuzz::writeFile(const QString& name, const QByteArray& bytes)
{
    QString target = path(name);
    QFile file(target);
    if (!file.open(QIODevice::WriteOnly | QIODevice::Truncate) || file.write(bytes) != bytes.size()) {
        qFatal("cannot write %s", qUtf8Printable(target));
    }
    return target;
}

QByteArray LvFuzz::readFile(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

#ifdef LV_FUZZ_WITH_LIBFUZZER

void LvFuzz::expect(bool holds, const char* rule)
{
    if (!holds) {
        std::fprintf(stderr, "broken rule: %s\n", rule);
        std::abort();
    }
}

extern "C" int LLVMFuzzerInitialize(int* /*count*/, char*** /*arguments*/)
{
    startApplication();
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size)
{
    LvFuzz::run(QByteArray(reinterpret_cast<const char*>(bytes), static_cast<qsizetype>(size)));
    return 0;
}

#else

namespace
{

int& brokenRules()
{
    static int myCount = 0;
    return myCount;
}

QStringList filesBelow(const QString& path)
{
    if (!QFileInfo(path).isDir()) {
        return {path};
    }
    QStringList files;
    QDirIterator entries(path, QDir::Files, QDirIterator::Subdirectories);
    while (entries.hasNext()) {
        files.append(entries.next());
    }
    files.sort();
    return files;
}

bool replay(const QString& name)
{
    QFile file(name);
    if (!file.open(QIODevice::ReadOnly)) {
        std::printf("FAIL!  : %s cannot be read\n", qUtf8Printable(name));
        return false;
    }
    brokenRules() = 0;
    LvFuzz::run(file.readAll());
    std::printf("%s : %s\n", brokenRules() == 0 ? "PASS  " : "FAIL! ", qUtf8Printable(name));
    std::fflush(stdout); // a crash must not take the name of its file along
    return brokenRules() == 0;
}

} // namespace

void LvFuzz::expect(bool holds, const char* rule)
{
    if (!holds) {
        ++brokenRules();
        std::printf("broken rule: %s\n", rule);
    }
}

int main(int argc, char* argv[])
{
    startApplication();
    int passed = 0;
    int failed = 0;
    for (int index = 1; index < argc; ++index) {
        const QStringList files = filesBelow(QFile::decodeName(argv[index]));
        for (const QString& file : files) {
            ++(replay(file) ? passed : failed);
        }
    }
    if (passed + failed == 0) {
        std::printf("FAIL!  : there is nothing to replay\n");
        failed = 1;
    }
    // The form of Qt Test, which scripts/test counts.
    std::printf("Totals: %d passed, %d failed, 0 skipped\n", passed, failed);
    return failed == 0 ? EXIT_SUCCESS : EXIT_FAILURE;
}

#endif
