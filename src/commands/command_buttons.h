#pragma once

#include <QAction>
#include <utility>
#include <vector>

#include "commands/command.h"
#include "platform/button.h"

namespace commands {

// The buttons that start commands.
class CommandButtons {
public:
    // Makes the button of a command at its place and lets it start the command.
    platform::Button* Add(const Command& command);

    // Enables an entry that has no button together with those that have one.
    void Follow(QAction* entry, execution::Startable when);

    // Notes that the command of this button is being started, by the button itself or by its menu entry.
    void NoteStart(platform::Button* button) { started_ = button; }

    // Enables what can be started. The focus never stays on a button that is disabled nor strays to another control:
    // during a run it goes to Stop, after it back to the button whose command ran.
    void Enable(execution::CommandState state);

    // Gives the focus to the button that would have had it.
    void TakeFocus() { PlaceForFocus()->setFocus(); }

private:
    struct Entry {
        platform::Button* Button;
        execution::Startable When;
    };

    platform::Button* PlaceForFocus() const;

    std::vector<Entry> entries_;
    std::vector<std::pair<QAction*, execution::Startable>> followers_;
    execution::CommandState state_ = execution::CommandState::NoProgram;
    platform::Button* started_ = nullptr;  // the latest
    platform::Button* running_ = nullptr;  // of the latest run
};

}  // namespace commands
