#pragma once

#include <QDir>
#include <QHash>
#include <QList>
#include <QString>
#include <QStringList>

#include <benchmark/benchmark.h>
#include <functional>
#include <vector>

/// The medians of what has been measured, by the names of the benchmarks. What was not measured is not a
/// number.
class LvBenchmarkResults
{
public:
    enum class Clock { Processor, Wall };

    /// One repetition: milliseconds per iteration.
    void append(const QString& name, double processor, double wall);

    [[nodiscard]] double milliseconds(const QString& name, Clock clock) const;

private:
    struct Samples {
        std::vector<double> processor;
        std::vector<double> wall;
    };

    QHash<QString, Samples> mySamples;
};

/**
 * A program of benchmarks that are compared with each other: it measures them in turns, several times each in
 * random order, so that a busy machine disturbs all of them alike, and prints how their medians compare.
 *
 * Options: `--quick` for small inputs, one repetition each, `--large` for the largest inputs as well,
 * `--inputs=DIR` where the inputs are kept, `--report=FILE` for the rows as a Markdown table; and those of
 * Google Benchmark.
 */
class LvBenchmarkProgram
{
public:
    using Clock = LvBenchmarkResults::Clock;
    using Work = std::function<void(benchmark::State& state)>;

    LvBenchmarkProgram(int argc, char* argv[]);

    [[nodiscard]] bool isQuick() const;
    [[nodiscard]] bool isLarge() const;
    [[nodiscard]] QDir inputFolder() const;

    /// A million, or fewer in a quick run.
    [[nodiscard]] qint64 points() const;

    /// The argument of an option of the program's own, such as "--write=FILE"; empty without.
    [[nodiscard]] QString argument(const QString& option) const;

    /// Processor time of the whole process. The counter of items becomes the number of points.
    void add(const QString& name, qint64 points, const Work& work);

    /// Processor time of a child process. A benchmark of another program that is not installed is left out.
    void addChild(const QString& name, qint64 points, const QString& program, const QStringList& arguments);

    /// A row: what the first costs in relation to the second one. Without a goal (0) the row is for
    /// comparison.
    void addRatio(const QString& workload, const QString& measured, const QString& comparedWith,
                  const QString& reference, double goal = 0.0);

    /// The same for the cost of one point.
    void addRatioPerPoint(const QString& workload, const QString& measured, const QString& comparedWith,
                          const QString& reference, double goal);

    /// A row: by how much the cost of a point differs at most, between any two of the benchmarks.
    void addSpread(const QString& workload, const QStringList& names, double goal);

    /// A row: by how much the cost of a point grows at most, from any of the benchmarks to a later one.
    void addGrowth(const QString& workload, const QStringList& names, double goal);

    /// A row that is already known. Measured without a clock; failing means that results are wrong.
    void addFact(const QString& workload, const QString& comparedWith, const QString& goal,
                 const QString& reached, bool isMet);

    /// Something went wrong that no figure can excuse: the program will return a failure.
    void fail(const QString& message);

    /// Measures everything, prints and writes the rows.
    [[nodiscard]] int run();

private:
    using Value = std::function<double(const LvBenchmarkResults& results, Clock clock)>;

    struct Row {
        QString workload;
        QString comparedWith;
        QString goal;
        double limit = 0.0;
        Value value;
        QString reached;
        bool isMet = false;
    };

    [[nodiscard]] double millisecondsPerPoint(const LvBenchmarkResults& results, const QString& name,
                                              Clock clock) const;
    [[nodiscard]] QList<QStringList> rowTexts(const LvBenchmarkResults& results) const;
    void addRow(const QString& workload, const QString& comparedWith, double goal, const Value& value);

    QStringList myArguments;
    std::vector<QByteArray> myBenchmarkArguments;
    QHash<QString, qint64> myPoints;
    QList<Row> myRows;
    bool myHasFailed = false;
};
