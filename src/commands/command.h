#pragma once

#include <QKeySequence>
#include <QRect>
#include <QString>
#include <functional>
#include <optional>
#include <vector>

#include "execution/command_state.h"

class QWidget;

namespace commands {

// The rows of the one table of commands. Names become object names; "&" in a caption marks the access key.

// A button that starts what a menu entry starts.
struct CommandButton {
    QString Name;
    QString Caption;
    QWidget* Parent;
    QRect Place;  // in the parent, in twips
    execution::Startable When;
    QString Tip;                       // what it does, in a few words
    std::function<void()> Click = {};  // where the button does more than the entry
};

// An entry of a menu; one without a routine is a separator.
struct Command {
    QString Name;
    QString Caption = {};
    QKeySequence Key = {};
    std::function<void()> Start = {};
    std::optional<CommandButton> Button = {};
    bool Repeats = false;  // while its key is held; and a double click on its button counts as two
};

// An entry of a control's context menu. Its key works wherever the focus is.
struct ContextCommand {
    Command Entry;
    execution::Startable When = execution::Startable::Always;
    std::function<bool()> IsPossible = {};  // where that is known only when the menu opens
    std::function<bool()> IsOn = {};        // where the entry has a tick
};

// A menu of the menu bar, or, without entries, a command that stands on the bar itself.
struct Menu {
    QString Name;
    QString Caption;
    std::vector<Command> Commands = {};
    std::function<void()> Start = {};
};

}  // namespace commands
