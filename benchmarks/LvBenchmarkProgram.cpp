#include "LvBenchmarkProgram.h"

#include "LvChildProcess.h"

#include <QCoreApplication>
#include <QFile>
#include <QStandardPaths>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <limits>
#include <utility>

namespace
{

constexpr qint64 usualPoints = 1'000'000;
constexpr qint64 quickPoints = 10'000;
constexpr double noNumber = std::numeric_limits<double>::quiet_NaN();

double median(std::vector<double> samples)
{
    if (samples.empty()) {
        return noNumber;
    }
    const auto middle = samples.begin() + static_cast<std::ptrdiff_t>(samples.size() / 2);
    std::nth_element(samples.begin(), middle, samples.end());
    return *middle;
}

QString ratioText(double ratio)
{
    return std::isnan(ratio) ? QStringLiteral("-") : QString::number(ratio, 'f', ratio < 0.095 ? 3 : 2);
}

/// Keeps all repetitions and shows their medians.
class Reporter : public benchmark::ConsoleReporter
{
public:
    explicit Reporter(LvBenchmarkResults& results)
        : benchmark::ConsoleReporter(OO_None)
        , myResults(results)
    {
    }

    void ReportRuns(const std::vector<Run>& runs) override
    {
        std::vector<Run> shown;
        for (const Run& run : runs) {
            if (run.error_occurred) {
                myHasFailed = true;
                shown.push_back(run);
            } else if (run.run_type == Run::RT_Iteration) {
                const bool isManual = run.run_name.time_type.find("manual_time") != std::string::npos;
                const double wall = run.GetAdjustedRealTime();
                myResults.append(QString::fromStdString(run.run_name.function_name),
                                 isManual ? wall : run.GetAdjustedCPUTime(), isManual ? noNumber : wall);
                if (runs.size() == 1) {
                    shown.push_back(run);
                }
            } else if (run.aggregate_name == "median") {
                shown.push_back(run);
            }
        }
        benchmark::ConsoleReporter::ReportRuns(shown);
    }

    [[nodiscard]] bool hasFailed() const { return myHasFailed; }

private:
    LvBenchmarkResults& myResults;
    bool myHasFailed = false;
};

} // namespace

void LvBenchmarkResults::append(const QString& name, double processor, double wall)
{
    Samples& samples = mySamples[name];
    samples.processor.push_back(processor);
    samples.wall.push_back(wall);
}

double LvBenchmarkResults::milliseconds(const QString& name, Clock clock) const
{
    const Samples samples = mySamples.value(name);
    return median(clock == Clock::Processor ? samples.processor : samples.wall);
}

LvBenchmarkProgram::LvBenchmarkProgram(int argc, char* argv[])
{
    const QStringList ownOptions{QStringLiteral("--quick"), QStringLiteral("--large")};
    const QStringList ownPrefixes{QStringLiteral("--inputs="), QStringLiteral("--report="),
                                  QStringLiteral("--write="), QStringLiteral("--read=")};
    QList<QByteArray> others;
    for (int index = 1; index < argc; ++index) {
        const QString text = QString::fromLocal8Bit(argv[index]);
        const bool isOwn = ownOptions.contains(text)
            || std::any_of(ownPrefixes.cbegin(), ownPrefixes.cend(),
                           [&text](const QString& prefix) { return text.startsWith(prefix); });
        if (isOwn) {
            myArguments.append(text);
        } else {
            others.append(QByteArray(argv[index]));
        }
    }
    myBenchmarkArguments = {QByteArray(argv[0])};
    if (isQuick()) {
        myBenchmarkArguments.insert(myBenchmarkArguments.end(),
                                    {"--benchmark_repetitions=1", "--benchmark_min_time=0.01"});
    } else {
        myBenchmarkArguments.insert(myBenchmarkArguments.end(),
                                    {"--benchmark_repetitions=5", "--benchmark_min_time=0.1",
                                     "--benchmark_enable_random_interleaving=true"});
    }
    myBenchmarkArguments.insert(myBenchmarkArguments.end(), others.cbegin(), others.cend());
}

bool LvBenchmarkProgram::isQuick() const
{
    return myArguments.contains(QLatin1String("--quick"));
}

bool LvBenchmarkProgram::isLarge() const
{
    return myArguments.contains(QLatin1String("--large"));
}

QDir LvBenchmarkProgram::inputFolder() const
{
    const QString folder = argument(QStringLiteral("--inputs="));
    return QDir(folder.isEmpty() ? QCoreApplication::applicationDirPath() + QStringLiteral("/../inputs")
                                 : folder);
}

qint64 LvBenchmarkProgram::points() const
{
    return isQuick() ? quickPoints : usualPoints;
}

QString LvBenchmarkProgram::argument(const QString& option) const
{
    for (const QString& text : myArguments) {
        if (text.startsWith(option)) {
            return text.mid(option.size());
        }
    }
    return {};
}

void LvBenchmarkProgram::add(const QString& name, qint64 points, const Work& work)
{
    myPoints.insert(name, points);
    benchmark::RegisterBenchmark(qPrintable(name),
                                 [work, points](benchmark::State& state) {
                                     work(state);
                                     state.SetItemsProcessed(state.iterations() * points);
                                 })
        ->Unit(benchmark::kMillisecond)
        ->MeasureProcessCPUTime();
}

void LvBenchmarkProgram::addChild(const QString& name, qint64 points, const QString& program,
                                  const QStringList& arguments)
{
    const QString path = QStandardPaths::findExecutable(program);
    if (path.isEmpty()) {
        return;
    }
    myPoints.insert(name, points);
    benchmark::RegisterBenchmark(qPrintable(name),
                                 [path, arguments, points](benchmark::State& state) {
                                     for (auto _ : state) {
                                         const LvChildUsage usage = LvChildProcess::run(path, arguments);
                                         if (!usage.hasSucceeded) {
                                             state.SkipWithError("the program failed");
                                             break;
                                         }
                                         state.SetIterationTime(usage.processorSeconds);
                                     }
                                     state.SetItemsProcessed(state.iterations() * points);
                                 })
        ->Unit(benchmark::kMillisecond)
        ->UseManualTime();
}

void LvBenchmarkProgram::addRow(const QString& workload, const QString& comparedWith, double goal,
                                const Value& value)
{
    Row row;
    row.workload = workload;
    row.comparedWith = comparedWith;
    row.goal = goal > 0.0 ? QStringLiteral("≤ %1").arg(QString::number(goal)) : QString();
    row.limit = goal;
    row.value = value;
    myRows.append(row);
}

void LvBenchmarkProgram::addRatio(const QString& workload, const QString& measured,
                                  const QString& comparedWith, const QString& reference, double goal)
{
    addRow(workload, comparedWith, goal,
           [measured, reference](const LvBenchmarkResults& results, Clock clock) {
               return results.milliseconds(measured, clock) / results.milliseconds(reference, clock);
           });
}

void LvBenchmarkProgram::addRatioPerPoint(const QString& workload, const QString& measured,
                                          const QString& comparedWith, const QString& reference, double goal)
{
    addRow(workload, comparedWith, goal,
           [this, measured, reference](const LvBenchmarkResults& results, Clock clock) {
               return millisecondsPerPoint(results, measured, clock)
                   / millisecondsPerPoint(results, reference, clock);
           });
}

void LvBenchmarkProgram::addSpread(const QString& workload, const QStringList& names, double goal)
{
    addRow(workload, QStringLiteral("each other"), goal,
           [this, names](const LvBenchmarkResults& results, Clock clock) {
               double least = std::numeric_limits<double>::infinity();
               double most = 0.0;
               for (const QString& name : names) {
                   const double cost = millisecondsPerPoint(results, name, clock);
                   if (std::isnan(cost)) {
                       return noNumber;
                   }
                   least = std::min(least, cost);
                   most = std::max(most, cost);
               }
               return most / least;
           });
}

void LvBenchmarkProgram::addGrowth(const QString& workload, const QStringList& names, double goal)
{
    addRow(workload, QStringLiteral("any smaller one"), goal,
           [this, names](const LvBenchmarkResults& results, Clock clock) {
               double least = std::numeric_limits<double>::infinity();
               double growth = 0.0;
               for (const QString& name : names) {
                   const double cost = millisecondsPerPoint(results, name, clock);
                   if (std::isnan(cost)) {
                       return noNumber;
                   }
                   growth = std::max(growth, cost / least);
                   least = std::min(least, cost);
               }
               return growth;
           });
}

void LvBenchmarkProgram::addFact(const QString& workload, const QString& comparedWith, const QString& goal,
                                 const QString& reached, bool isMet)
{
    Row row;
    row.workload = workload;
    row.comparedWith = comparedWith;
    row.goal = goal;
    row.reached = reached;
    row.isMet = isMet;
    myRows.append(row);
}

void LvBenchmarkProgram::fail(const QString& message)
{
    std::fprintf(stderr, "%s\n", qPrintable(message));
    myHasFailed = true;
}

double LvBenchmarkProgram::millisecondsPerPoint(const LvBenchmarkResults& results, const QString& name,
                                                Clock clock) const
{
    return results.milliseconds(name, clock) / static_cast<double>(myPoints.value(name));
}

QList<QStringList> LvBenchmarkProgram::rowTexts(const LvBenchmarkResults& results) const
{
    QList<QStringList> texts;
    for (const Row& row : myRows) {
        if (!row.value) {
            texts.append({row.workload, row.comparedWith, row.goal, row.reached, QString(),
                          row.goal.isEmpty() ? QString() : QString::fromLatin1(row.isMet ? "yes" : "no")});
            continue;
        }
        const double processor = row.value(results, Clock::Processor);
        if (std::isnan(processor)) {
            continue; // not measured in this run
        }
        const QString met =
            row.limit > 0.0 ? QString::fromLatin1(processor <= row.limit ? "yes" : "no") : QString();
        texts.append({row.workload, row.comparedWith, row.goal, ratioText(processor),
                      ratioText(row.value(results, Clock::Wall)), met});
    }
    return texts;
}

int LvBenchmarkProgram::run()
{
    std::vector<char*> arguments;
    for (QByteArray& argument : myBenchmarkArguments) {
        arguments.push_back(argument.data());
    }
    int count = static_cast<int>(arguments.size());
    arguments.push_back(nullptr);
    benchmark::Initialize(&count, arguments.data());
    if (benchmark::ReportUnrecognizedArguments(count, arguments.data())) {
        return 1;
    }
    LvBenchmarkResults results;
    Reporter reporter(results);
    if (!myPoints.isEmpty()) {
        benchmark::RunSpecifiedBenchmarks(&reporter);
    }

    QByteArray table =
        "| Workload | compared with | goal | reached | by the clock | met |\n|---|---|---|---|---|---|\n";
    const QList<QStringList> rows = rowTexts(results);
    for (const QStringList& row : rows) {
        table += QByteArray("| ") + row.join(QLatin1String(" | ")).toUtf8() + " |\n";
    }
    std::printf("\n%s", table.constData());
    const QString report = argument(QStringLiteral("--report="));
    if (!report.isEmpty()) {
        QFile file(report);
        if (!file.open(QIODevice::WriteOnly) || file.write(table) != table.size()) {
            fail(QStringLiteral("%1 cannot be written.").arg(report));
        }
    }
    return myHasFailed || reporter.hasFailed() ? 1 : 0;
}
