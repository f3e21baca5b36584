#include <benchmark/benchmark.h>

#include <QApplication>
#include <QFile>
#include <QSysInfo>
#include <QTemporaryDir>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <string>
#include <vector>

#include "shell/workbench.h"

namespace {

std::string ProcessorName() {
    QFile file("/proc/cpuinfo");
    if (file.open(QIODevice::ReadOnly))
        for (const QByteArray& line : file.readAll().split('\n'))
            if (line.startsWith("model name")) return line.mid(line.indexOf(':') + 2).toStdString();
    return QSysInfo::currentCpuArchitecture().toStdString();
}

// One row for each benchmark: its median, its bound, and whether it holds.
class BoundsReporter : public benchmark::BenchmarkReporter {
public:
    bool ReportContext(const Context& context) override {
        std::printf("Processor: %s, %d cores\n", ProcessorName().c_str(), context.cpu_info.num_cpus);
#if defined(__VERSION__)
        std::printf("Compiler: %s, Qt %s\n\n", __VERSION__, qVersion());
#endif
        std::printf("%-46s %18s %18s  %s\n", "Figure", "median", "bound", "holds");
        return true;
    }

    void ReportRuns(const std::vector<Run>& runs) override {
        for (const Run& run : runs) {
            if (Failed(run)) PrintError(run);
            if (run.run_type == Run::RT_Aggregate && run.aggregate_name == "median") Print(run);
        }
    }

    bool AllHold() const {
        return allHold;
    }

private:
    void Print(const Run& run) {
        const auto counter = [&run](const char* name) {
            const auto found = run.counters.find(name);
            return found == run.counters.end() ? 0.0 : found->second.value;
        };
        if (counter("at_least_per_s") > 0)
            Print(run, counter("items_per_s"), counter("at_least_per_s"), "/s", true);
        else if (counter("at_most_mb") > 0)
            Print(run, counter("megabytes"), counter("at_most_mb"), "MB", false);
        else if (run.counters.contains("allocations"))
            Print(run, counter("allocations"), counter("at_most_allocations"), "new", false);
        else
            Print(run, 1e3 * run.real_accumulated_time / static_cast<double>(run.iterations), counter("at_most_ms"),
                  "ms", false);
    }

    void Print(const Run& run, double value, double bound, const char* unit, bool atLeast) {
        const bool holds = atLeast ? value >= bound : value <= bound;
        allHold = allHold && holds;
        std::printf("%-46s %13s %-4s %13s %-4s  %s\n", run.run_name.function_name.c_str(), Text(value).c_str(), unit,
                    Text(bound).c_str(), unit, holds ? "yes" : "NO");
        std::fflush(stdout);
    }

    void PrintError(const Run& run) {
        allHold = false;
        std::printf("%-46s %s\n", run.run_name.function_name.c_str(), Reason(run).c_str());
    }

    // Google Benchmark renamed these two in version 1.8.
    template <class AnyRun>
    static bool Failed(const AnyRun& run) {
        if constexpr (requires { run.error_occurred; })
            return run.error_occurred;
        else
            return run.skipped != 0;
    }

    template <class AnyRun>
    static const std::string& Reason(const AnyRun& run) {
        if constexpr (requires { run.error_message; })
            return run.error_message;
        else
            return run.skip_message;
    }

    static std::string Text(double value) {
        char text[40];
        if (value >= 1e6)
            std::snprintf(text, sizeof text, "%.1f M", value / 1e6);
        else
            std::snprintf(text, sizeof text, "%.4g", value);
        return text;
    }

    bool allHold = true;
};

// What the benchmark of the start measures: the program's own start, up to the first moment at which it is idle.
int StartWindow(int argc, char** argv) {
    QApplication application(argc, argv);
    shell::Prepare(application);
    shell::Workbench workbench([] {});
    workbench.Start();
    QCoreApplication::processEvents();
    QFile statistics("/proc/self/statm");
    constexpr double pagesPerMegabyte = 256;
    if (statistics.open(QIODevice::ReadOnly))
        std::printf("%.1f", statistics.readAll().split(' ').at(1).toDouble() / pagesPerMegabyte);
    std::fflush(stdout);
    std::_Exit(EXIT_SUCCESS);
}

}  // namespace

int main(int argc, char** argv) {
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
    const QTemporaryDir settings;
    qputenv("XDG_CONFIG_HOME", settings.path().toUtf8());
    if (argc > 1 && std::strcmp(argv[1], "--start-window") == 0) return StartWindow(argc, argv);
    std::vector<char*> arguments(argv, argv + argc);
    char repetitions[] = "--benchmark_repetitions=5";
    arguments.insert(arguments.begin() + 1, repetitions);
    int count = static_cast<int>(arguments.size());
    benchmark::Initialize(&count, arguments.data());
    QApplication application(argc, argv);
    shell::Prepare(application);
    BoundsReporter reporter;
    benchmark::RunSpecifiedBenchmarks(&reporter);
    return reporter.AllHold() ? 0 : 1;
}
