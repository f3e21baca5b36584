#pragma once

#include <QElapsedTimer>
#include <QGroupBox>
#include <array>

#include "aids/instruction_entry.h"
#include "aids/mnemonic_buttons.h"
#include "platform/button.h"
#include "platform/program_text.h"

namespace aids {

// Panels of keys that write instructions at the caret. While they are on, they stand in the place of the register and
// memory panels. The elements of their button arrays have the array's name and their number as object name: cmdCodes1,
// cmdDigits15. cmdCodes1 is the button "Label", the mnemonics follow from cmdCodes2 on.
class CodeAssistant : public QObject {
    Q_OBJECT

public:
    static constexpr auto StartCaption = "Start &Code Assistant";
    static constexpr auto StopCaption = "Stop &Code Assistant";

    // The panels are made inside the parent, at their place in the main window.
    CodeAssistant(platform::ProgramText& txtCode, QWidget& frmRegs, QWidget& frmRAM, QWidget* parent);

    // Starts where the assistant is off, and stops where it is on.
    void cmdCodeAssistant_Click();

    // Where the assistant is on, it asks for a mnemonic again, whatever was being entered.
    void StartOver();

    // Gives the focus to the key of the panel that is shown which had it last, or to the first one.
    void TakeFocus();

    // All keys, in the order in which the Tab key is to run through them.
    QList<QWidget*> Keys() const;

signals:
    // The new caption of the button which starts and stops.
    void CaptionChanged(const QString& caption);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    QGroupBox* MakePanel(const char* name, const QString& caption, int width, int height, QWidget* parent);
    platform::Button* MakeKey(const char* array, int index, const QString& caption, QWidget* panel, const QRect& place,
                              std::function<void()> press);
    void InitCodeAssistant();
    void InitDigits();
    void InitRegisters();

    void AskForLabelLine();
    void AskForBranchTarget();

    bool IsRestOfDoubleClick(const QMouseEvent& press);
    bool IsRestOfDoublePress(const QKeyEvent& press);
    bool TakeDigit(const QKeyEvent& press);
    bool IsOn() const { return frmRAM_.isHidden(); }
    void Take(const EntryStep& step);
    void Stop();
    void ShowOnly(QWidget* panel);

    platform::ProgramText& txtCode_;
    QWidget& frmRegs_;
    QWidget& frmRAM_;
    QGroupBox* frmCA_;
    QGroupBox* frmCA2_;
    QGroupBox* frmCA3_;
    std::array<platform::Button*, 16> cmdDigits_{};
    std::array<platform::Button*, assembler::RegisterNames.size()> cmdRegs_{};
    InstructionEntry entry_;
    QPoint latestPress_;    // of the mouse on a key
    QPoint bringingPress_;  // the one that brought up the panel which is shown
    QElapsedTimer sinceBrought_;
};

}  // namespace aids
