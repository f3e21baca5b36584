#include "invariants.h"

#include <QAbstractButton>
#include <QAction>
#include <QApplication>
#include <QFile>
#include <QLineEdit>
#include <QMenuBar>
#include <QMessageBox>
#include <algorithm>

#include "editor/program_file.h"
#include "platform/palette.h"

namespace {

constexpr int rows = 256;

QString Hex(int value, int digits) {
    return QString::number(value, 16).rightJustified(digits, '0').toUpper();
}

bool IsOneOf(const QString& name, std::initializer_list<const char*> names) {
    return std::ranges::find(names, name) != names.end();
}

using ShownValues = std::vector<std::pair<const char*, QString>>;

// What the boxes and buttons of the register panel show, by their names.
ShownValues Shown(const m8085::Registers& of) {
    const auto bit = [](bool flag) { return QString(flag ? "1" : "0"); };
    return {{"txtA", Hex(of.A, 2)},
            {"txtB", Hex(of.B, 2)},
            {"txtC", Hex(of.C, 2)},
            {"txtD", Hex(of.D, 2)},
            {"txtE", Hex(of.E, 2)},
            {"txtH", Hex(of.H, 2)},
            {"txtL", Hex(of.L, 2)},
            {"txtPC", Hex(of.PC, 4)},
            {"txtSP", Hex(of.SP, 4)},
            {"txtF", Hex(of.S << 7 | of.Z << 6 | of.AC << 4 | of.P << 2 | of.CY, 2)},
            {"txtTstates", QString::number(of.TStates)},
            {"txtSf", bit(of.S)},
            {"txtZf", bit(of.Z)},
            {"txtACf", bit(of.AC)},
            {"txtPf", bit(of.P)},
            {"txtCyf", bit(of.CY)}};
}

// The boxes by which Assemble and Load Data File report a failure, after they have changed memory. Another box may
// stand before them.
bool IsFailureTold() {
    return std::ranges::any_of(QApplication::topLevelWidgets(), [](const QWidget* widget) {
        return widget->isVisible() && widget->windowTitle().startsWith("Error");
    });
}

// The message at the end of a run comes after the refresh, and before the commands can be started again.
bool IsEndTold() {
    return std::ranges::any_of(QApplication::topLevelWidgets(), [](const QWidget* widget) {
        return widget->isVisible() && widget->property("text").toString().startsWith("End of code");
    });
}

// A text without what opening and saving may change: line ends, and the half of a surrogate pair.
QList<uint> Comparable(const std::u16string& text) {
    return QString::fromStdU16String(text).replace("\r\n", "\n").replace('\r', '\n').toUcs4();
}

}  // namespace

Invariants::Invariants(shell::Workbench& workbench)
    : window_(workbench.Window),
      machine_(*workbench.Machine),
      editor_(Find<platform::ProgramText>("txtCode")),
      grid_(Find<QTableView>("grdRAM")),
      cellEditor_(Find<QLineEdit>("txtEdit")),
      memory_(machine_.Memory),
      ports_(machine_.Ports) {
    Follow();
}

// A command has done its work when it is noted here.
void Invariants::Follow() {
    for (const auto* entry : window_.findChildren<QAction*>())
        connect(entry, &QAction::triggered, this, [this, name = entry->objectName()] { NoteCommand(name); });
    for (const auto* button : window_.findChildren<QAbstractButton*>())
        connect(button, &QAbstractButton::clicked, this, [this, name = button->objectName()] { NoteCommand(name); });
    connect(&editor_, &platform::ProgramText::TextChanged, this, &Invariants::NoteTextChange);
    connect(&cellEditor_, &QLineEdit::textEdited, this, &Invariants::NoteTypedByte);
    QApplication::instance()->installEventFilter(this);
}

bool Invariants::IsRunning() const {
    return IsEnabled("cmdHalt");
}

// Looks at the machine before any key and any button of the mouse reaches the program.
bool Invariants::eventFilter(QObject* receiver, QEvent* event) {
    const bool mayBeCommand = event->type() == QEvent::KeyPress || event->type() == QEvent::KeyRelease ||
                              event->type() == QEvent::ShortcutOverride || event->type() == QEvent::MouseButtonPress ||
                              event->type() == QEvent::MouseButtonRelease;
    if (mayBeCommand) LookBeforeCommand();
    return QObject::eventFilter(receiver, event);
}

// What stands in a box that is still being typed into goes to the machine before the command that comes next.
void Invariants::LookBeforeCommand() {
    if (IsRunning()) return;
    before_ = machine_;
    const auto* const box = qobject_cast<QLineEdit*>(window_.focusWidget());
    isTypingBefore_ = box != nullptr && box->isModified();
}

void Invariants::NoteTypedByte() {
    typedAt_ += cellEditor_.accessibleName();
}

void Invariants::EndEvent() {
    --depth_;
    LookBeforeCommand();
    selection_ = SelectionNow();
}

Invariants::Selection Invariants::SelectionNow() const {
    const QTextCursor cursor = editor_.textCursor();
    return {depth_, cursor.anchor(), cursor.position()};
}

void Invariants::NoteTextChange() {
    textIsAssembled_ = false;
    selection_.reset();
    textHasChanged_ = true;
    (IsRunning() ? programIsLostInRun_ : programIsLost_) = true;
}

// A halted machine steps no further: Single Step reports the end, and Slow Run only lifts the halt.
void Invariants::NoteCommand(const QString& name) {
    const bool isAssemble = IsOneOf(name, {"cmdCompile", "mnuCompile"});
    const bool isLoad = name == "mnuLoadData";
    const bool isClear = IsOneOf(name, {"cmdClear", "mnuMemoryClear"});
    const bool isStep = IsOneOf(name, {"cmdSingleStep", "mnuSingleStep"});
    const bool isRun = IsOneOf(name, {"cmdRun", "mnuRun", "cmdSlowRun", "mnuSlowRun"});
    const bool isStepBack = name == "mnuStepBack";

    if (isAssemble || isLoad || isClear || isStep || isRun || isStepBack) memoryMayChange_ = true;
    if (IsOneOf(name, {"cmdHalt", "mnuHalt"}) && IsRunning()) stoppedAt_ = {machine_.PC, machine_.TStates};
    if (isClear) (IsRunning() ? programIsLostInRun_ : programIsLost_) = true;
    if (IsRunning()) return;

    LookAfterStop();
    if (isAssemble) programIsLost_ = false, textIsAssembled_ = IsEnabled("cmdRun");
    if (isRun) programIsLost_ = std::exchange(programIsLostInRun_, false);
    // A run may have ended before it in the same event, and shown all.
    if (name == "mnuCompile" || (isLoad && wasToldOfFailure_)) gridMayBeOld_ = true, wasRunning_ = false;
    const bool isFullRun = IsOneOf(name, {"cmdRun", "mnuRun"});
    const bool hasStepped = isStep && !wasHalted_;
    if (isRun || isStepBack) beforeMarked_.reset();
    if (isFullRun || (isStep && !before_.Halted)) beforeMarked_ = before_;
    if (isTypingBefore_) beforeMarked_.reset();
    if (hasStepped || isFullRun || isClear || name == "cmdCompile" || (isLoad && !wasToldOfFailure_)) {
        allCellsAreDue_ = true;
        if (!isLoad) gridMayBeOld_ = false;
    }
    if (isLoad || isAssemble) wasToldOfFailure_ = false;
}

std::optional<QString> Invariants::FindFault() {
    LookBeforeCommand();
    const bool hasExecuted = (IsRunning() || wasRunning_) && machine_.TStates != tStatesSeen_;
    if (hasExecuted) gridMayBeOld_ = false;
    if (IsFailureTold()) gridMayBeOld_ = wasToldOfFailure_ = true;
    for (const auto& fault :
         {FaultInMemory(), FaultAfterStop(), FaultInRegisters(), FaultInCells(), FaultInCellEditor(),
          FaultInCommandStates(), FaultInTitle(), FaultInFocus(), FaultInSelection(), FaultInMarks(), FaultInLines()})
        if (fault) return fault;
    wasRunning_ = IsRunning();
    wasHalted_ = machine_.Halted;
    tStatesSeen_ = machine_.TStates;
    return std::nullopt;
}

// A full-speed run shows nothing until its end.
std::optional<QString> Invariants::FaultInRegisters() const {
    if (IsRunning() && !IsEndTold()) return std::nullopt;
    for (const auto& [name, value] : Shown(machine_)) {
        const QWidget& control = Find<QWidget>(name);
        const auto* const box = qobject_cast<const QLineEdit*>(&control);
        const QWidget* focus = window_.focusWidget();
        const bool keepsText = focus == box || focus == window_.menuBar() || !window_.isActiveWindow();
        const bool isBeingTyped = box != nullptr && box->isModified() && keepsText;
        const QString text = control.property("text").toString();
        if (text != value && !isBeingTyped) return QString(name) + " shows " + text + " for " + value;
    }
    return std::nullopt;
}

// The caret, stop marks and what a screen reader is told of the notes are about lines that the text has, the latter two
// in their order.
std::optional<QString> Invariants::FaultInLines() const {
    if (!editor_.textCursor().block().isValid()) return "the caret stands outside of the text";
    const auto isInOrder = [this](const std::vector<int>& lines) {
        return std::ranges::is_sorted(lines, std::ranges::less_equal()) &&
               (lines.empty() || (lines.front() >= 1 && lines.back() <= editor_.blockCount()));
    };
    std::vector<int> noted;
    for (const QString& note : editor_.accessibleDescription().split("; "))
        if (note.startsWith("Line ")) noted.push_back(note.section(' ', 1, 1).chopped(1).toInt());
    if (!isInOrder(editor_.Marks().Lines())) return "marks on lines that are not there";
    return isInOrder(noted) ? std::nullopt : std::optional<QString>("notes on lines that are not there");
}

// A mark says that the value is another one than before the step or run. After a Slow Run that is not known here.
std::optional<QString> Invariants::FaultInMarks() const {
    if (IsRunning() || !beforeMarked_) return std::nullopt;
    const ShownValues before = Shown(*beforeMarked_);
    const ShownValues now = Shown(machine_);
    for (std::size_t value = 0; value < now.size(); ++value) {
        const QPalette& colours = Find<QWidget>(now[value].first).palette();
        const bool isMarked = colours.color(QPalette::Text) == platform::ChangedText ||
                              colours.color(QPalette::ButtonText) == platform::ChangedText;
        if (isMarked && now[value] == before[value]) return QString(now[value].first) + " is marked, but as before";
    }
    const QAbstractItemModel& cells = *grid_.model();
    for (int look = 0; look < 16; ++look) {
        const int row = static_cast<int>(random_() % rows);
        const int column = 2 * static_cast<int>(random_() % static_cast<unsigned>(cells.columnCount() / 2)) + 1;
        const bool isMarked =
            cells.index(row, column).data(Qt::ForegroundRole).value<QColor>() == platform::ChangedText;
        if (isMarked && ByteOf(machine_, row, column) == ByteOf(*beforeMarked_, row, column))
            return "the cell beside " + CellText(row, column - 1) + " is marked, but as before";
    }
    return std::nullopt;
}

QString Invariants::CellText(int row, int column) const {
    return grid_.model()->index(row, column).data().toString();
}

// A machine's byte at the address on the left of a data cell.
std::uint8_t Invariants::ByteOf(const m8085::MachineState& machine, int row, int column) const {
    const auto address = CellText(row, column - 1).toUInt(nullptr, 16);
    return column == grid_.model()->columnCount() - 1 ? machine.Ports[address] : machine.Memory[address];
}

// Only what the grid was left out of may make it differ from memory: a run that is not over, and Assemble from the menu
// and a data file that failed half-way, until the next instruction has been executed; a Slow Run may end without one.
// All cells are checked when they have just been rewritten, or else a few.
std::optional<QString> Invariants::FaultInCells() {
    if (IsRunning() && !IsEndTold()) return std::nullopt;
    if (wasRunning_) allCellsAreDue_ = true;
    if (gridMayBeOld_ && !IsRunning()) return std::nullopt;
    const auto faultAt = [this](int row, int column) -> std::optional<QString> {
        if (CellText(row, column) == Hex(ByteOf(machine_, row, column), 2)) return std::nullopt;
        return "the cell beside " + CellText(row, column - 1) + " shows " + CellText(row, column) + " for " +
               Hex(ByteOf(machine_, row, column), 2);
    };
    const int columns = grid_.model()->columnCount();
    for (int row = 0; allCellsAreDue_ && row < rows; ++row)
        for (int column = 1; column < columns; column += 2)
            if (const auto fault = faultAt(row, column)) return fault;
    allCellsAreDue_ = false;
    for (int look = 0; look < 16; ++look)
        if (const auto fault = faultAt(static_cast<int>(random_() % rows),
                                       2 * static_cast<int>(random_() % static_cast<unsigned>(columns / 2)) + 1))
            return fault;
    return std::nullopt;
}

// Beside the last row, where it does not follow, the editor may hold what it stores there.
std::optional<QString> Invariants::FaultInCellEditor() const {
    if (!cellEditor_.isVisible()) return std::nullopt;
    const QPoint centre = cellEditor_.mapTo(&window_, cellEditor_.rect().center());
    const QModelIndex cell = grid_.indexAt(grid_.viewport()->mapFrom(&window_, centre));
    const int row = grid_.currentIndex().row();
    if (row == rows - 1) return std::nullopt;
    if (cell != grid_.currentIndex()) return "the editor is not over the current cell";
    if (cellEditor_.text().toInt(nullptr, 16) == CellText(cell.row(), cell.column()).toInt(nullptr, 16))
        return std::nullopt;
    return "the editor holds " + cellEditor_.text() + " over " + CellText(cell.row(), cell.column());
}

std::optional<QString> Invariants::FaultInCommandStates() const {
    QString enabled;
    for (const char* button :
         {"cmdCompile", "cmdRun", "cmdSlowRun", "cmdSingleStep", "cmdReset", "cmdHalt", "cmdCodeAssistant", "cmdDelay"})
        enabled += IsEnabled(button) ? '1' : '0';
    if (!IsOneOf(enabled, {"10000011", "11111011", "00000100"})) return "enabled buttons " + enabled;
    if (programIsLost_ && enabled == "11111011") return "a program that is lost can be run";
    return std::nullopt;
}

// Without the mark the text is what the file holds; with it, the text has changed.
std::optional<QString> Invariants::FaultInTitle() {
    const QString title = window_.windowTitle();
    const bool isMarked = title.endsWith("*]");
    if (isMarked) {
        titleSeen_ = title;
        return textHasChanged_ ? std::nullopt : std::optional<QString>("marked as changed, without a change");
    }
    if (title == titleSeen_ && !textHasChanged_) return std::nullopt;
    titleSeen_ = title;
    textHasChanged_ = false;
    const QString name = title.section('[', 1).chopped(1);
    QFile file(name);
    if (name != "Untitled" && !file.open(QIODevice::ReadOnly)) return "no file " + name;
    const std::u16string saved =
        name == "Untitled" ? u"" : editor::DecodeProgramFile(file.readAll().toStdString()).Text;
    if (Comparable(editor_.Text()) != Comparable(saved)) return "not what is in " + name + ", and not marked";
    return std::nullopt;
}

// A byte changes by what the machine does, or where the editor says that it writes.
std::optional<QString> Invariants::FaultInMemory() {
    QStringList changed;
    for (std::size_t address = 0; memory_ != machine_.Memory && address < memory_.size(); ++address)
        if (std::exchange(memory_[address], machine_.Memory[address]) != machine_.Memory[address])
            changed += "Address " + Hex(static_cast<int>(address), 4);
    for (std::size_t port = 0; port < ports_.size(); ++port)
        if (std::exchange(ports_[port], machine_.Ports[port]) != machine_.Ports[port])
            changed += "IO Port " + Hex(static_cast<int>(port), 2);
    const QStringList typedAt = std::exchange(typedAt_, {});
    const bool isByMachine = std::exchange(memoryMayChange_, false) || IsRunning() || wasRunning_ || IsFailureTold();
    if (isByMachine) return std::nullopt;
    for (const QString& place : changed)
        if (!typedAt.contains(place)) return place + " has changed, typed was " + typedAt.join(", ");
    return std::nullopt;
}

// While a program runs whose text has changed, only the user selects.
std::optional<QString> Invariants::FaultInSelection() const {
    if (!IsRunning() || textIsAssembled_ || !selection_ || selection_->Depth != depth_ || selection_ == SelectionNow())
        return std::nullopt;
    return "a line is selected in a changed text";
}

// Also at the very end of the run: one event may press several keys, of which the next steps or starts another run.
void Invariants::LookAfterStop() {
    if (stoppedAt_ && *stoppedAt_ != Progress{machine_.PC, machine_.TStates}) hasGoneOnAfterStop_ = true;
    if (!IsRunning()) stoppedAt_.reset();
}

std::optional<QString> Invariants::FaultAfterStop() {
    LookAfterStop();
    return hasGoneOnAfterStop_ ? std::optional<QString>("an instruction was executed after Stop") : std::nullopt;
}

std::optional<QString> Invariants::FaultInFocus() const {
    const QWidget* focus = window_.focusWidget();
    if (focus == nullptr || (focus->isVisible() && focus->isEnabled())) return std::nullopt;
    return "the focus is on the hidden or disabled " + focus->objectName();
}
