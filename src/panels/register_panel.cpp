#include "panels/register_panel.h"

#include <QLabel>
#include <string>

#include "machine/number_format.h"
#include "panels/register_edit.h"
#include "platform/fonts.h"

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

constexpr int RowTop(int row) {
    return firstRow + row * rowPitch;
}

constexpr QRect LeftBox(int row) {
    return {leftBox, RowTop(row), boxWidth, rowHeight};
}

constexpr QRect RightBox(int row) {
    return {rightBox, RowTop(row), boxWidth, rowHeight};
}

constexpr QRect WideBox(int row) {
    return {leftBox, RowTop(row), rightBox + boxWidth - leftBox, rowHeight};
}

constexpr QRect LeftLabel(int row) {
    return {leftLabel, RowTop(row), leftLabelWidth, rowHeight};
}

constexpr QRect RightLabel(int row) {
    return {rightLabel, RowTop(row), leftLabelWidth, rowHeight};
}

// A box or button that shows the text already keeps its caret, and is not painted again.
template <class Control>
void Show(Control& control, const std::string& text) {
    if (const QString shown = QString::fromStdString(text); control.text() != shown) control.setText(shown);
}

void FixColours(QWidget& box) {
    QPalette palette = box.palette();
    palette.setColor(QPalette::Base, QColor(224, 224, 224));
    palette.setColor(QPalette::Text, Qt::black);
    box.setPalette(palette);
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

// Controls are made in the order in which the Tab key runs through them.
void RegisterPanel::AddRegisters() {
    const auto addRegister = [this](const QString& letter, const QRect& place, std::uint8_t Registers::*member) {
        platform::TextBox* box = AddBox("txt" + letter, "Register " + letter, place);
        box->SetKeyFilter(ValidateInput);
        const RegisterBox registerBox{box, member};
        connect(box, &platform::TextBox::LostFocus, this, [this, registerBox] { RegisterLostFocus(registerBox); });
        registerBoxes_.push_back(registerBox);
    };
    addRegister("A", LeftBox(0), &Registers::A);
    txtF_ = AddReadOnlyBox("txtF", "Flag byte F", RightBox(0));
    addRegister("B", LeftBox(1), &Registers::B);
    addRegister("C", RightBox(1), &Registers::C);
    addRegister("D", LeftBox(2), &Registers::D);
    addRegister("E", RightBox(2), &Registers::E);
    addRegister("H", LeftBox(3), &Registers::H);
    addRegister("L", RightBox(3), &Registers::L);
    txtPC_ = AddReadOnlyBox("txtPC", "Program counter PC", WideBox(4));
    txtSP_ = AddReadOnlyBox("txtSP", "Stack pointer SP", WideBox(5));

    const char* const leftLabels[] = {"A", "B", "D", "H", "PC", "SP"};
    const char* const rightLabels[] = {"F", "C", "E", "L"};
    for (int row = 0; const char* label : leftLabels) AddLabel(label, LeftLabel(row++), Qt::AlignRight);
    for (int row = 0; const char* label : rightLabels) AddLabel(label, RightLabel(row++), Qt::AlignLeft);
}

void RegisterPanel::AddFlags() {
    struct Bit {
        const char* Label;
        const char* Name;
        const char* AccessibleName;
        bool Registers::*Flag;  // none for a bit that has no meaning
    };
    const Bit bits[] = {
        {" S", "txtSf", "Sign flag", &Registers::S},     {" Z", "txtZf", "Zero flag", &Registers::Z},
        {" -", "txtUndef1", "Undefined bit 5", nullptr}, {"AC", "txtACf", "Auxiliary carry flag", &Registers::AC},
        {" -", "txtUndef2", "Undefined bit 3", nullptr}, {" P", "txtPf", "Parity flag", &Registers::P},
        {" -", "txtUndef3", "Undefined bit 1", nullptr}, {"CY", "txtCyf", "Carry flag", &Registers::CY},
    };
    for (int left = flags; const Bit& bit : bits) {
        QLabel* label = AddLabel(bit.Label, {left, RowTop(0), flagPitch - 1, rowHeight}, Qt::AlignHCenter);
        if (*bit.Label == ' ') label->setContentsMargins(0, 0, fontMetrics().horizontalAdvance(' '), 0);
        auto* button = new platform::Button(bit.Name, bit.Flag ? "" : "0", this);
        button->setAccessibleName(bit.AccessibleName);
        button->setGeometry(left, RowTop(1), flagPitch - 1, flagPitch - 1);
        connect(button, &QPushButton::clicked, this, [this, flag = bit.Flag] { ToggleFlag(flag); });
        if (bit.Flag) flagButtons_.push_back({button, bit.Flag});
        left += flagPitch;
    }
    auto* hint = new QLabel("Click buttons to toggle flags", this);
    hint->setFont(platform::SansSerif(8.25));
    hint->setGeometry(flags, RowTop(1) + flagPitch + 5, rightEdge - flags, rowHeight);
    hint->setAlignment(Qt::AlignCenter);
}

void RegisterPanel::AddTStates() {
    constexpr int labelWidth = 58;
    AddLabel("T-states:", {flags, RowTop(5), labelWidth, rowHeight}, Qt::AlignLeft);
    const int left = flags + labelWidth;
    txtTstates_ = AddReadOnlyBox("txtTstates", "T-states", {left, RowTop(5), rightEdge - left, rowHeight});
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
    FixColours(*box);
    return box;
}

platform::TextBox* RegisterPanel::AddReadOnlyBox(const QString& name, const QString& accessibleName,
                                                 const QRect& place) {
    platform::TextBox* box = AddBox(name, accessibleName, place);
    box->setReadOnly(true);
    return box;
}

void RegisterPanel::DisplayRegs() {
    for (const RegisterBox& box : registerBoxes_) Show(*box.Box, FormatHexByte(machine_.*box.Register));
    for (const FlagButton& button : flagButtons_) Show(*button.Button, FormatBool(machine_.*button.Flag));
    Show(*txtF_, FormatHexByte(machine_.GetFlagByte()));
    Show(*txtPC_, FormatHexLong(machine_.PC));
    Show(*txtSP_, FormatHexLong(machine_.SP));
    Show(*txtTstates_, std::to_string(machine_.TStates));
}

void RegisterPanel::RegisterLostFocus(const RegisterBox& registerBox) {
    if (const auto value = ReadByteText(registerBox.Box->text().toStdU16String()))
        machine_.*registerBox.Register = *value;
    Show(*registerBox.Box, FormatHexByte(machine_.*registerBox.Register));
}

void RegisterPanel::ToggleFlag(bool m8085::Registers::*flag) {
    txtCode_.setFocus();
    if (flag == nullptr) return;
    machine_.*flag = !(machine_.*flag);
    DisplayRegs();
}

}  // namespace panels
