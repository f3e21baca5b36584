#pragma once

#include <QGroupBox>
#include <QObject>
#include <array>

#include "aids/instruction_entry.h"
#include "platform/button.h"
#include "platform/program_text.h"

namespace aids {

// Panels of buttons that write instructions at the caret. While they are on, they stand in the place of the memory
// panel. The elements of their button arrays have the array's name and their number as object name: cmdCodes1,
// cmdDigits15. cmdCodes1 is the button "Label", the mnemonics follow from cmdCodes2 on.
class CodeAssistant : public QObject {
public:
    // The panels are made inside the parent, at their place in the main window.
    CodeAssistant(platform::ProgramText& programText, platform::Button& startButton, QWidget& memoryPanel,
                  QWidget* parent);

    // Starts and stops, as the button's caption says.
    void cmdCodeAssistant_Click();

private:
    void InitCodeAssistant();
    void InitDigits();
    void InitRegisters();

    void cmdCodes_Click(std::string_view mnemonic);
    void cmdDigits_Click(int index);
    void cmdRegs_Click(int index);
    void AskForLabelLine();
    void AskForBranchTarget();

    void Take(const EntryStep& step);
    void ShowOnly(QWidget& panel);
    static bool Covers(const QWidget& panel, const QWidget* control);

    static constexpr std::array<const char*, 13> registerCaptions = {"A", "B",  "C",  "D",  "E",  "H",  "L",
                                                                     "M", "BC", "DE", "HL", "SP", "PSW"};

    platform::ProgramText& txtCode;
    platform::Button& cmdCodeAssistant;
    QWidget& frmRAM;
    QGroupBox& frmCA;
    QGroupBox& frmCA2;
    QGroupBox& frmCA3;
    std::array<platform::Button*, registerCaptions.size()> cmdRegs{};
    InstructionEntry entry;
};

}  // namespace aids
