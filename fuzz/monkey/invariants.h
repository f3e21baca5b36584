#pragma once

#include <QString>
#include <QTableView>
#include <optional>
#include <random>

#include "machine/machine_state.h"
#include "platform/program_text.h"
#include "shell/workbench.h"

// What must be true of the window between any two events, whatever has been done to it. It checks controls, files and
// the machine, and follows by signals which commands have been carried out.
class Invariants : public QObject {
public:
    explicit Invariants(shell::Workbench& workbench);

    // The first thing that is wrong, in words; nothing while all is right.
    std::optional<QString> FindFault();

    // To be called around every event. Events nest: the next ones may come while one opens a box or runs a program.
    void BeginEvent() { ++depth_; }
    void EndEvent();

    bool IsRunning() const;

private:
    bool eventFilter(QObject* receiver, QEvent* event) override;
    void Follow();
    void NoteCommand(const QString& name);
    void LookBeforeCommand();
    void NoteTypedByte();
    void NoteTextChange();
    void LookAfterStop();

    std::optional<QString> FaultInRegisters() const;
    std::optional<QString> FaultInCells();
    std::optional<QString> FaultInCellEditor() const;
    std::optional<QString> FaultInCommandStates() const;
    std::optional<QString> FaultInTitle();
    std::optional<QString> FaultInMemory();
    std::optional<QString> FaultAfterStop();
    std::optional<QString> FaultInFocus() const;
    std::optional<QString> FaultInSelection() const;
    std::optional<QString> FaultInMarks() const;
    std::optional<QString> FaultInLines() const;

    template <class Control>
    Control& Find(const QString& name) const {
        return *window_.findChild<Control*>(name);
    }
    bool IsEnabled(const char* button) const { return Find<QWidget>(button).isEnabled(); }
    QString CellText(int row, int column) const;
    std::uint8_t ByteOf(const m8085::MachineState& machine, int row, int column) const;

    shell::frmMain& window_;
    const m8085::MachineState& machine_;
    platform::ProgramText& editor_;
    QTableView& grid_;
    QLineEdit& cellEditor_;
    mutable std::mt19937 random_;

    // What the machine held when it was last checked, and what may have changed it since.
    m8085::MemoryBytes memory_;
    decltype(m8085::MachineState::Ports) ports_;
    bool memoryMayChange_ = false;
    QStringList typedAt_;  // the names of the cells that the editor has written into

    // Before the command of the latest event, and before the step or run whose changes are marked, if that is known.
    m8085::MachineState before_;
    bool isTypingBefore_ = false;
    std::optional<m8085::MachineState> beforeMarked_;

    // After the latest event that has come to its end, until the text changes.
    struct Selection {
        int Depth, Anchor, Position;
        bool operator==(const Selection&) const = default;
    };
    Selection SelectionNow() const;
    int depth_ = 0;
    std::optional<Selection> selection_;
    bool textIsAssembled_ = false;

    bool gridMayBeOld_ = false;
    bool allCellsAreDue_ = true;
    bool wasRunning_ = false;
    bool wasToldOfFailure_ = false;
    bool wasHalted_ = false;
    std::int32_t tStatesSeen_ = 0;

    bool textHasChanged_ = false;  // since the title was last without its mark
    QString titleSeen_;
    bool programIsLost_ = true;
    bool programIsLostInRun_ = false;

    struct Progress {
        std::int32_t PC, TStates;
        bool operator==(const Progress&) const = default;
    };
    std::optional<Progress> stoppedAt_;  // until the end of the run
    bool hasGoneOnAfterStop_ = false;
};
