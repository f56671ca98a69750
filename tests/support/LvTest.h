#pragma once

#include <QApplication>
#include <QImage>
#include <QTest>

/// What all tests share: an isolated environment, the folders of test files, and golden pictures.
namespace LvTest
{

/// Whether a sanitizer watches this program, which then takes several times as long.
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
inline constexpr bool isInstrumented = true;
#elif defined(__has_feature)
inline constexpr bool isInstrumented =
    __has_feature(address_sanitizer) || __has_feature(thread_sanitizer) || __has_feature(memory_sanitizer);
#else
inline constexpr bool isInstrumented = false;
#endif

/// How many cases a test makes up: all of them, or an eighth where a sanitizer watches.
constexpr int generatedCases(int all)
{
    return isInstrumented ? (all + 7) / 8 : all;
}

/// Gives the process a settings store and a home of its own, UTC and a fixed font. Call it before the
/// application object exists.
void isolateEnvironment();

/// Finishes the environment once the application object exists: names, fixed font for "Arial".
void prepareApplication();

/// A file below tests/data.
QString dataFile(const QString& name);

/// A file of the folder with samples that the repository ships.
QString sampleFile(const QString& name);

/// The folder with real track files from elsewhere, which may stand beside the repository; an empty text
/// where it is missing.
QString corpusDirectory();

/// Whether the picture equals tests/golden/<name>.png: up to 6 of 255 per channel everywhere, and more than
/// that on at most 0.1 % of the pixels. Writes the actual picture and the difference below the build folder
/// on failure. With LV_UPDATE_GOLDEN=1 in the environment the golden picture is written anew.
bool matchesGolden(const QImage& image, const QString& name);

/// Runs the tests of one object inside an isolated QApplication.
template <class Test>
int run(int argc, char* argv[])
{
    isolateEnvironment();
    QApplication application(argc, argv);
    prepareApplication();
    Test test;
    return QTest::qExec(&test, argc, argv);
}

} // namespace LvTest

/// The main function of a test program; to be followed by the include of the moc file.
#define LV_TEST_MAIN(Test)                                                                                   \
    int main(int argc, char* argv[])                                                                         \
    {                                                                                                        \
        return LvTest::run<Test>(argc, argv);                                                                \
    }
