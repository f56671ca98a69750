#pragma once

#include <QByteArray>
#include <QString>

/**
 * What all fuzz targets share.
 *
 * A target is one source that implements LvFuzz::run(). With LV_FUZZ_WITH_LIBFUZZER it becomes a libFuzzer
 * program, otherwise a program that replays the files and folders given on its command line once and prints
 * how many of them kept every rule.
 */
namespace LvFuzz
{

/// One input from anywhere. Implemented by the target; must leave no state behind that a later input could
/// meet.
void run(const QByteArray& input);

/// States a rule that holds for every input. A broken one ends a libFuzzer program, which then keeps the
/// input; a replay program counts the file as failed and goes on.
void expect(bool holds, const char* rule);

/// A path in a folder of this process, which lies in memory where the system offers that.
[[nodiscard]] QString path(const QString& name);

/// Writes a file into that folder, over an older one, and returns its path.
QString writeFile(const QString& name, const QByteArray& bytes);

/// The content of a file, wherever it is; nothing when it cannot be read.
[[nodiscard]] QByteArray readFile(const QString& path);

} // namespace LvFuzz
