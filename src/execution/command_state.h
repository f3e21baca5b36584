#pragma once

namespace execution {

// What the enabled states of the command buttons say.
enum class CommandState { NoProgram, ProgramAssembled, Running };

// Which commands can be started.
struct EnabledCommands {
    bool Compile;
    bool Run;
    bool SlowRun;
    bool SingleStep;
    bool Reset;
    bool Halt;
    bool CodeAssistant;
    bool Delay;
};

constexpr EnabledCommands EnabledIn(CommandState state) {
    const bool running = state == CommandState::Running;
    const bool ready = state == CommandState::ProgramAssembled;
    return {.Compile = !running,
            .Run = ready,
            .SlowRun = ready,
            .SingleStep = ready,
            .Reset = ready,
            .Halt = running,
            .CodeAssistant = !running,
            .Delay = !running};
}

}  // namespace execution
