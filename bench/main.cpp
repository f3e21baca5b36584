#include <benchmark/benchmark.h>

#include <QApplication>
#include <QFile>
#include <QSysInfo>
#include <cstdio>
#include <string>
#include <vector>

#include "platform/palette.h"

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
            if (run.error_occurred) PrintError(run);
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
        const double rate = counter("items_per_s");
        const bool isRate = rate > 0;
        const double value = isRate ? rate : 1e3 * run.real_accumulated_time / double(run.iterations);
        const double bound = isRate ? counter("at_least_per_s") : counter("at_most_ms");
        const bool holds = bound == 0 || (isRate ? value >= bound : value <= bound);
        allHold = allHold && holds;
        std::printf("%-46s %13s %-4s %13s %-4s  %s\n", run.run_name.function_name.c_str(), Text(value).c_str(),
                    isRate ? "/s" : "ms", bound == 0 ? "-" : Text(bound).c_str(), isRate ? "/s" : "ms",
                    bound == 0 ? "" : (holds ? "yes" : "NO"));
        std::fflush(stdout);
    }

    void PrintError(const Run& run) {
        allHold = false;
        std::printf("%-46s %s\n", run.run_name.function_name.c_str(), run.error_message.c_str());
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

}  // namespace

int main(int argc, char** argv) {
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
    std::vector<char*> arguments(argv, argv + argc);
    char repetitions[] = "--benchmark_repetitions=5";
    arguments.insert(arguments.begin() + 1, repetitions);
    int count = static_cast<int>(arguments.size());
    benchmark::Initialize(&count, arguments.data());
    QApplication application(argc, argv);
    platform::ApplyFixedAppearance(application);
    BoundsReporter reporter;
    benchmark::RunSpecifiedBenchmarks(&reporter);
    return reporter.AllHold() ? 0 : 1;
}
