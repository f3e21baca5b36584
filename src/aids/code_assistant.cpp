#include "aids/code_assistant.h"

#include <QApplication>
#include <QLabel>

#include "aids/mnemonic_buttons.h"
#include "assembler/mnemonic_list.h"
#include "platform/dialogs.h"
#include "platform/fonts.h"
#include "platform/twips.h"

namespace aids {

namespace {

using platform::Button;
using platform::Place;

constexpr auto startCaption = "Start &Code Assistant";
constexpr auto stopCaption = "Stop &Code Assistant";

QString ElementName(const char* array, int index) {
    return array + QString::number(index);
}

QString ToQString(std::string_view text) {
    return QString::fromLatin1(text.data(), static_cast<qsizetype>(text.size()));
}

QGroupBox& MakePanel(const char* name, const QString& caption, int width, int height, QWidget* parent) {
    auto& panel = *new QGroupBox(caption, parent);
    panel.setObjectName(name);
    panel.setAccessibleName(caption);
    Place(panel, 7200, 600, width, height);
    panel.setAutoFillBackground(true);  // it covers the register panel
    panel.hide();
    return panel;
}

void MakeCaption(const QString& name, const QString& text, PanelPlace place, QWidget& panel) {
    auto& label = *new QLabel(text, &panel);
    label.setObjectName(name);
    label.move(platform::Pixels(place.Left), platform::Pixels(place.Top));
    label.adjustSize();
}

bool CanTakeFocus(const QWidget& control, const QWidget& panel) {
    return control.isEnabled() && control.isVisibleTo(&panel) && (control.focusPolicy() & Qt::TabFocus) != 0;
}

// The control that had the focus last, or else the first one that can take it.
void FocusInto(QWidget& panel) {
    QWidget* latest = panel.focusWidget();
    if (latest != nullptr && CanTakeFocus(*latest, panel)) return latest->setFocus();
    for (QWidget* control : panel.findChildren<QWidget*>())
        if (CanTakeFocus(*control, panel)) return control->setFocus();
}

}  // namespace

CodeAssistant::CodeAssistant(platform::ProgramText& programText, Button& startButton, QWidget& memoryPanel,
                             QWidget* parent)
    : txtCode(programText),
      cmdCodeAssistant(startButton),
      frmRAM(memoryPanel),
      frmCA(MakePanel("frmCA", "Code Assistant", 4575, 7575, parent)),
      frmCA2(MakePanel("frmCA2", "Hexadecimal Keypad", 4695, 3615, parent)),
      frmCA3(MakePanel("frmCA3", "Register Keypad", 4575, 3615, parent)) {
    InitCodeAssistant();
    InitDigits();
    InitRegisters();
    connect(&cmdCodeAssistant, &Button::clicked, this, &CodeAssistant::cmdCodeAssistant_Click);
}

void CodeAssistant::InitCodeAssistant() {
    const MnemonicLayout layout = LayOutMnemonics(assembler::MnemonicList);
    constexpr std::array captions = {"Data transfer instructions:", "Arithmetic instructions:", "Logical instructions:",
                                     "Branch control instructions:", "Machine control instructions:"};
    for (std::size_t i = 0; i < captions.size(); ++i)
        MakeCaption(ElementName("lblCaption", static_cast<int>(i)), captions[i], layout.Captions[i], frmCA);

    int index = 1;
    const auto makeButton = [this, &index](const QString& caption, PanelPlace place, int width) {
        auto* button = new Button(ElementName("cmdCodes", index++), caption, &frmCA);
        button->setFont(platform::CourierNew(8.25));
        Place(*button, place.Left, place.Top, width, 255);
        return button;
    };
    const Button* label = makeButton("Label", {120, 7200}, 735);
    connect(label, &Button::clicked, this, &CodeAssistant::AskForLabelLine);
    for (const MnemonicButton& mnemonic : layout.Buttons) {
        const Button* button = makeButton(ToQString(mnemonic.Word), mnemonic.Place, 615);
        connect(button, &Button::clicked, this, [this, word = mnemonic.Word] { cmdCodes_Click(word); });
    }
}

void CodeAssistant::InitDigits() {
    MakeCaption("lblDigits", "Key in a hexadecimal number", {960, 360}, frmCA2);
    for (int i = 0; i < 16; ++i) {
        auto* button = new Button(ElementName("cmdDigits", i), QString::number(i, 16).toUpper(), &frmCA2);
        Place(*button, 1200 + 480 * (i % 4), 720 + 480 * (i / 4), 495, 495);
        connect(button, &Button::clicked, this, [this, i] { cmdDigits_Click(i); });
    }
}

void CodeAssistant::InitRegisters() {
    constexpr int singleRegisters = 8;
    MakeCaption("lblRegisters", "8 Bit Registers:", {240, 480}, frmCA3);
    MakeCaption("lblPairs", "16 Bit Registers:", {240, 1920}, frmCA3);
    for (int i = 0; i < static_cast<int>(cmdRegs.size()); ++i) {
        auto* button = new Button(ElementName("cmdRegs", i), registerCaptions[static_cast<std::size_t>(i)], &frmCA3);
        if (i < singleRegisters)
            Place(*button, 240 + 480 * i, 840, 495, 495);
        else
            Place(*button, 240 + 600 * (i - singleRegisters), 2280, 615, 495);
        connect(button, &Button::clicked, this, [this, i] { cmdRegs_Click(i); });
        cmdRegs[static_cast<std::size_t>(i)] = button;
    }
}

void CodeAssistant::cmdCodeAssistant_Click() {
    const bool starts = cmdCodeAssistant.text() == startCaption;
    cmdCodeAssistant.SetCaption(starts ? stopCaption : startCaption);
    ShowOnly(starts ? frmCA : frmRAM);
}

void CodeAssistant::cmdCodes_Click(std::string_view mnemonic) {
    Take(entry.ChooseMnemonic(mnemonic));
}

void CodeAssistant::cmdDigits_Click(int index) {
    Take(entry.ChooseDigit(index));
}

void CodeAssistant::cmdRegs_Click(int index) {
    Take(entry.ChooseRegister(registerCaptions[static_cast<std::size_t>(index)]));
}

void CodeAssistant::AskForLabelLine() {
    const QString answer = platform::AskText(txtCode, "Enter a label:", "Label");
    txtCode.ReplaceSelection(LabelLine(answer.toStdU16String()));
}

void CodeAssistant::AskForBranchTarget() {
    const QString prompt = "Enter a label for " + ToQString(entry.Mnemonic()) + ":";
    Take(InstructionEntry::ChooseLabel(platform::AskText(txtCode, prompt, "Label").toStdU16String()));
}

void CodeAssistant::Take(const EntryStep& step) {
    txtCode.ReplaceSelection(step.Text);
    switch (step.Next) {
        case NextEntry::Mnemonic: return ShowOnly(frmCA);
        case NextEntry::Digit: return ShowOnly(frmCA2);
        case NextEntry::Label: return AskForBranchTarget();
        case NextEntry::Register:
            for (std::size_t i = 0; i < cmdRegs.size(); ++i) cmdRegs[i]->setEnabled(entry.IsLive(registerCaptions[i]));
            return ShowOnly(frmCA3);
    }
}

// Whether the control lies unseen under the panel, as the register boxes do.
bool CodeAssistant::Covers(const QWidget& panel, const QWidget* control) {
    const QWidget* client = panel.parentWidget();
    return control != nullptr && client->isAncestorOf(control) && !panel.isAncestorOf(control) &&
           panel.geometry().contains(control->mapTo(client, control->rect().center()));
}

// One of the panels takes the place of the others, and the focus, where one of them had it: left to the toolkit, it
// would stray to a text box and out of it again, as if the user had been there.
void CodeAssistant::ShowOnly(QWidget& panel) {
    panel.show();
    panel.raise();
    for (QWidget* other :
         {&frmRAM, static_cast<QWidget*>(&frmCA), static_cast<QWidget*>(&frmCA2), static_cast<QWidget*>(&frmCA3)}) {
        if (other == &panel) continue;
        if (other->isAncestorOf(QApplication::focusWidget())) FocusInto(panel);
        other->hide();
    }
    if (Covers(panel, panel.window()->focusWidget())) FocusInto(panel);
}

}  // namespace aids
