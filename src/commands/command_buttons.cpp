#include "commands/command_buttons.h"

#include <algorithm>

#include "platform/twips.h"

namespace commands {

using execution::CanStart;
using execution::CommandState;
using execution::Startable;

platform::Button* CommandButtons::Add(const Command& command) {
    const CommandButton& row = *command.Button;
    auto* button = new platform::Button(row.Name, row.Caption, row.Parent);
    platform::Place(*button, row.Place.left(), row.Place.top(), row.Place.width(), row.Place.height());
    button->setEnabled(CanStart(row.When, CommandState::NoProgram));
    const QString key = command.Key.toString(QKeySequence::NativeText);
    button->SetCountsDoubleClicks(command.Repeats);
    button->setToolTip(key.isEmpty() ? row.Tip : row.Tip + " (" + key + ')');
    QObject::connect(button, &QPushButton::clicked, button,
                     [this, button, start = row.Click ? row.Click : command.Start] {
                         NoteStart(button);
                         start();
                     });
    entries_.push_back({button, row.When});
    return button;
}

void CommandButtons::Follow(QAction* entry, Startable when) {
    entry->setEnabled(CanStart(when, CommandState::NoProgram));
    followers_.emplace_back(entry, when);
}

// Qt would give the focus of a disabled button to the next control in the tab order, which may be a text box
// that then writes an old value back.
void CommandButtons::Enable(CommandState state) {
    state_ = state;
    if (state == CommandState::Running) running_ = started_;
    for (const Entry& entry : entries_)
        if (CanStart(entry.When, state)) entry.Button->setEnabled(true);
    // The window need not be active: a message box over it may just have closed.
    const auto losesFocus = [state](const Entry& entry) {
        return !CanStart(entry.When, state) && entry.Button == entry.Button->window()->focusWidget();
    };
    if (std::ranges::any_of(entries_, losesFocus)) TakeFocus();
    for (const Entry& entry : entries_) entry.Button->setEnabled(CanStart(entry.When, state));
    for (const auto& [entry, when] : followers_) entry->setEnabled(CanStart(when, state));
}

// Stop during a run, after it the button whose command ran, and where that is disabled the first one that is not.
platform::Button* CommandButtons::PlaceForFocus() const {
    const auto canTake = [this](const Entry& entry) {
        const bool isWanted =
            state_ == CommandState::Running ? entry.When == Startable::DuringRun : entry.Button == running_;
        return isWanted && CanStart(entry.When, state_);
    };
    const auto found = std::ranges::find_if(entries_, canTake);
    if (found != entries_.end()) return found->Button;
    return std::ranges::find_if(entries_, [this](const Entry& entry) { return CanStart(entry.When, state_); })->Button;
}

}  // namespace commands
