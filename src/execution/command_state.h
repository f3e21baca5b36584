#pragma once

namespace execution {

// What the enabled states of the command buttons say.
enum class CommandState { NoProgram, ProgramAssembled, Running };

// In which states a command can be started.
enum class Startable { Always, WhenIdle, WithProgram, DuringRun };

constexpr bool CanStart(Startable startable, CommandState state) {
    switch (startable) {
        case Startable::WhenIdle: return state != CommandState::Running;
        case Startable::WithProgram: return state == CommandState::ProgramAssembled;
        case Startable::DuringRun: return state == CommandState::Running;
        case Startable::Always: break;
    }
    return true;
}

}  // namespace execution
