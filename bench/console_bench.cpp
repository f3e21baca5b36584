#include <QTemporaryDir>
#include <fstream>
#include <sstream>

#include "bounds.h"
#include "console/console.h"

namespace {

// A class that hands in far more than any does: each program is read, assembled, and run in four cases.
void MarkingOfAThousandSubmissions(benchmark::State& state) {
    constexpr int submissions = 1000;
    const std::string program =
        "; the largest number of a list\nlxi h,9000\nmov b,m\nmvi a,0\ninr b\njmp count\nlook:\ninx h\ncmp m\njnc "
        "count\n"
        "mov a,m\ncount:\ndcr b\njnz look\nsta 9100\nhlt\n"
        "; given 9000=5,11,7,2A,3,19\n; gives 9100=2A\n; given [one] 9000=1,7F\n; gives 9100=7F, T-states <= 120\n"
        "; given [none] 9000=0,63\n; gives 9100=00\n; given [equal] 9000=3,8,8,8\n; gives 9100=08\n";
    const QTemporaryDir folder;
    const auto path = [&folder](int number) { return folder.filePath(QString::number(number) + ".asm").toStdString(); };
    std::vector<std::string> arguments = {"--cases", path(0)};
    for (int number = 0; number < submissions; ++number) {
        arguments.push_back(path(number));
        std::ofstream(arguments.back()) << program;
    }
    for (auto _ : state) {
        std::istringstream in;
        std::ostringstream out;
        std::ostringstream err;
        if (console::Main(arguments, in, out, err) != 0 || !out.str().ends_with("1000 of 1000: all cases\n"))
            return state.SkipWithError("the submissions do not pass");
    }
    BoundMilliseconds(state, 2000);
}
BENCHMARK(MarkingOfAThousandSubmissions)->Unit(benchmark::kMillisecond);

}  // namespace
