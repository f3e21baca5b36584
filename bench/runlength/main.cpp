// Runs one of the benchmark programs for a number of instructions through the Run command and prints nothing:
// velmora_runlength delay|mixed INSTRUCTIONS. An instruction counter shows what it costs the host.

#include <cstdlib>
#include <string_view>

#include "core_programs.h"
#include "support/test_rig.h"

int main(int argc, char** argv) {
    if (argc != 3) return EXIT_FAILURE;
    const bool delay = std::string_view(argv[1]) == "delay";
    long instructionsLeft = std::atol(argv[2]);

    support::TestRig rig;
    if (!rig.Assemble(delay ? bench::DelayLoop : bench::MixedProgram).Succeeded) return EXIT_FAILURE;
    execution::RunControl* running = nullptr;
    execution::RunView view;
    view.Yield = [&] {
        instructionsLeft -= execution::RunControl::DefaultSliceLength;
        if (instructionsLeft <= 0) running->Stop();
    };
    execution::RunControl control(rig.machine, rig.codeMap, view);
    running = &control;
    control.RunProgram();
    return instructionsLeft <= 0 ? EXIT_SUCCESS : EXIT_FAILURE;
}
