#include "panels/register_panel.h"

#include <QLabel>
#include <string>
#include <utility>

#include "machine/number_format.h"
#include "panels/byte_text.h"
#include "panels/tips.h"
#include "platform/fonts.h"
#include "platform/palette.h"
#include "platform/tip.h"

namespace panels {

namespace {

using m8085::FormatBool;
using m8085::FormatHexByte;
using m8085::FormatHexLong;
using m8085::Registers;

// The layout, in pixels inside the frame: six rows of boxes on the left, the flags and the T-states on the right.
constexpr int firstRow = 23;
constexpr int rowPitch = 17;
constexpr int rowHeight = 16;
constexpr int boxWidth = 36;
constexpr int leftLabel = 8;
constexpr int leftLabelWidth = 18;
constexpr int leftBox = 30;
constexpr int rightBox = leftBox + boxWidth + 2;
constexpr int rightLabel = rightBox + boxWidth + 4;
constexpr int flags = 129;
constexpr int flagPitch = 21;
constexpr int rightEdge = flags + 8 * flagPitch - 1;

constexpr QRect InRow(int row, int left, int width) {
    return {left, firstRow + row * rowPitch, width, rowHeight};
}

// A control that already shows the text keeps its caret, and is not painted again. Returns whether the text is new.
template <class Control>
bool Show(Control& control, const std::string& text) {
    const QString shown = QString::fromStdString(text);
    if (control.text() == shown) return false;
    control.setText(shown);
    return true;
}

// What was to be typed over still is. Also sets the tooltip: a line that says what the box is, and one with the value
// in other forms.
void Show(QLineEdit& box, const std::string& text, const QString& name, const std::string& figures) {
    if (Show(box, text) && box.hasFocus()) box.selectAll();
    const QString tip = name + '\n' + QString::fromStdString(figures);
    if (box.toolTip() != tip) box.setToolTip(tip);
}

void Mark(QWidget& control, QPalette::ColorRole role, bool hasChanged) {
    platform::SetColour(control, role, hasChanged ? platform::ChangedText : Qt::black);
}

}  // namespace

RegisterPanel::RegisterPanel(m8085::MachineState& machine, QWidget& txtCode, QWidget* parent)
    : QGroupBox("8085 Registers", parent), machine_(machine), txtCode_(txtCode) {
    setObjectName("frmRegs");
    setFont(platform::WindowFont());
    AddRegisters();
    AddFlags();
    AddTStates();
}

// Controls are made in the order in which the Tab key runs through them. The labels stand outside of their boxes.
void RegisterPanel::AddRegisters() {
    constexpr int wide = rightBox + boxWidth - leftBox;
    const auto addBox = [this](const QString& label, const QString& name, int row, int left, int width = boxWidth) {
        if (left == leftBox)
            AddLabel(label, InRow(row, leftLabel, leftLabelWidth), Qt::AlignRight);
        else
            AddLabel(label, InRow(row, rightLabel, leftLabelWidth), Qt::AlignLeft);
        return AddBox("txt" + label, name, InRow(row, left, width));
    };
    const auto addRegister = [&](const QString& letter, std::uint8_t Registers::*member, int row, int left,
                                 const QString& use) {
        platform::TextBox* box = addBox(letter, "Register " + letter, row, left);
        box->SetKeyFilter(ValidateInput);
        const RegisterBox registerBox{box, member, box->accessibleName() + use};
        connect(box, &platform::TextBox::LostFocus, this, [this, registerBox] { RegisterLostFocus(registerBox); });
        registerBoxes_.push_back(registerBox);
    };
    addRegister("A", &Registers::A, 0, leftBox, ", the accumulator");
    txtF_ = addBox("F", "Flag byte F", 0, rightBox);
    addRegister("B", &Registers::B, 1, leftBox, ", the high byte of BC");
    addRegister("C", &Registers::C, 1, rightBox, ", the low byte of BC");
    addRegister("D", &Registers::D, 2, leftBox, ", the high byte of DE");
    addRegister("E", &Registers::E, 2, rightBox, ", the low byte of DE");
    addRegister("H", &Registers::H, 3, leftBox, ", the high byte of HL, the address of M");
    addRegister("L", &Registers::L, 3, rightBox, ", the low byte of HL, the address of M");
    txtPC_ = addBox("PC", "Program counter PC", 4, leftBox, wide);
    txtSP_ = addBox("SP", "Stack pointer SP", 5, leftBox, wide);
    for (platform::TextBox* box : {txtF_, txtPC_, txtSP_}) box->setReadOnly(true);
    txtSP_->installEventFilter(this);
}

void RegisterPanel::AddFlags() {
    struct Bit {
        const char* Label;
        const char* ObjectName;
        const char* Name;
        const char* IsSet;
        bool Registers::*Flag;  // none for a bit that has no meaning
    };
    constexpr auto noMeaning = "It has no meaning and is always 0";
    const Bit bits[] = {
        {" S", "txtSf", "Sign flag S, bit 7 of F", "1 when bit 7 of the result is 1", &Registers::S},
        {" Z", "txtZf", "Zero flag Z, bit 6 of F", "1 when the result is 0", &Registers::Z},
        {" -", "txtUndef1", "Undefined bit 5 of F", noMeaning, nullptr},
        {"AC", "txtACf", "Auxiliary carry flag AC, bit 4 of F",
         "1 when the low digits of an addition came to ten or more", &Registers::AC},
        {" -", "txtUndef2", "Undefined bit 3 of F", noMeaning, nullptr},
        {" P", "txtPf", "Parity flag P, bit 2 of F", "1 when the result has an even number of bits that are 1",
         &Registers::P},
        {" -", "txtUndef3", "Undefined bit 1 of F", noMeaning, nullptr},
        {"CY", "txtCyf", "Carry flag CY, bit 0 of F",
         "1 when a sum was too large, a difference below 0, or a rotation moved a 1 into it", &Registers::CY},
    };
    for (int left = flags; const Bit& bit : bits) {
        QLabel* label = AddLabel(bit.Label, InRow(0, left, flagPitch - 1), Qt::AlignHCenter);
        if (*bit.Label == ' ') label->setContentsMargins(0, 0, fontMetrics().horizontalAdvance(' '), 0);
        auto* button = new platform::Button(bit.ObjectName, bit.Flag ? "" : "0", this);
        button->setAccessibleName(bit.Name);
        button->setToolTip(QString(bit.Name) + '\n' + bit.IsSet + (bit.Flag ? "\nClick to change it" : ""));
        button->setGeometry({InRow(1, left, 0).topLeft(), QSize(flagPitch - 1, flagPitch - 1)});
        connect(button, &QPushButton::clicked, this, [this, flag = bit.Flag] { ToggleFlag(flag); });
        if (bit.Flag) flagButtons_.push_back({button, bit.Flag, bit.Name});
        left += flagPitch;
    }
    auto* hint = new QLabel("Click buttons to toggle flags", this);
    hint->setFont(platform::SansSerif(8.25));
    hint->setGeometry(InRow(1, flags, rightEdge - flags).translated(0, flagPitch + 5));
    hint->setAlignment(Qt::AlignCenter);
}

void RegisterPanel::AddTStates() {
    constexpr int labelWidth = 58;
    AddLabel("T-states:", InRow(5, flags, labelWidth), Qt::AlignLeft);
    const int left = flags + labelWidth;
    txtTstates_ = AddBox("txtTstates", "T-states", InRow(5, left, rightEdge - left));
    txtTstates_->setReadOnly(true);
    txtTstates_->setAlignment(Qt::AlignLeft);
}

QLabel* RegisterPanel::AddLabel(const QString& text, const QRect& place, Qt::Alignment alignment) {
    auto* label = new QLabel(text, this);
    label->setGeometry(place);
    label->setAlignment(alignment | Qt::AlignVCenter);
    return label;
}

platform::TextBox* RegisterPanel::AddBox(const QString& name, const QString& accessibleName, const QRect& place) {
    auto* box = new platform::TextBox(name, this);
    box->setAccessibleName(accessibleName);
    box->setGeometry(place);
    box->setAlignment(Qt::AlignCenter);
    box->SelectAllWhenClicked();
    platform::SetColour(*box, QPalette::Base, QColor(224, 224, 224));
    return box;
}

void RegisterPanel::DisplayRegs() {
    platform::HideTip();
    for (const RegisterBox& box : registerBoxes_) ShowRegister(box);
    for (const auto& [button, flag, name] : flagButtons_) {
        const std::string bit = FormatBool(machine_.*flag);
        // A screen reader says the name and not the caption.
        if (Show(*button, bit)) button->setAccessibleName(name + ": " + QString::fromStdString(bit));
    }
    const std::uint8_t flagByte = machine_.GetFlagByte();
    Show(*txtF_, FormatHexByte(flagByte), "Flag byte F, read only: S Z 0 AC 0 P 0 CY", ByteTip(flagByte));
    Show(*txtPC_, FormatHexLong(machine_.PC), "Program counter PC, read only: the address of the next instruction",
         AddressTip(machine_.PC));
    ShowStackPointer();
    Show(*txtTstates_, std::to_string(machine_.TStates), "T-states since the latest Reset or Assemble, read only",
         TimeTip(machine_.TStates));
}

void RegisterPanel::ShowStackPointer() {
    Show(*txtSP_, FormatHexLong(machine_.SP),
         "Stack pointer SP, read only: the address of the byte on top of the stack",
         AddressTip(machine_.SP) + StackTip(machine_));
}

// Bytes on the stack may have changed since the registers were last shown. During a run at full speed SP may have, too.
bool RegisterPanel::eventFilter(QObject* watched, QEvent* event) {
    if (watched == txtSP_ && event->type() == QEvent::ToolTip &&
        txtSP_->text() == QString::fromStdString(FormatHexLong(machine_.SP)))
        ShowStackPointer();
    return QGroupBox::eventFilter(watched, event);
}

void RegisterPanel::ShowRegister(const RegisterBox& box) {
    const std::uint8_t value = machine_.*box.Register;
    Show(*box.Box, FormatHexByte(value), box.Name, ByteTip(value));
}

void RegisterPanel::MarkChanges(const m8085::Changes& changes) {
    for (const RegisterBox& box : registerBoxes_) Mark(*box.Box, QPalette::Text, changes.Of(box.Register));
    for (const FlagButton& button : flagButtons_) Mark(*button.Button, QPalette::ButtonText, changes.Of(button.Flag));
    Mark(*txtF_, QPalette::Text, changes.OfFlags());
    Mark(*txtPC_, QPalette::Text, changes.Of(&Registers::PC));
    Mark(*txtSP_, QPalette::Text, changes.Of(&Registers::SP));
    txtTstates_->setAccessibleDescription(QString::fromStdString(DescribeChanges(changes, machine_)));
}

void RegisterPanel::RegisterLostFocus(const RegisterBox& registerBox) {
    std::uint8_t& value = machine_.*registerBox.Register;
    const std::uint8_t typed = ReadByteText(registerBox.Box->text().toStdU16String()).value_or(value);
    const bool isNew = std::exchange(value, typed) != typed;
    ShowRegister(registerBox);
    if (isNew) emit Edited();
}

void RegisterPanel::ToggleFlag(bool m8085::Registers::*flag) {
    txtCode_.setFocus();
    if (flag == nullptr) return;
    machine_.*flag = !(machine_.*flag);
    DisplayRegs();
    emit Edited();
}

}  // namespace panels
