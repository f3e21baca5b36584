#include "aids/code_assistant.h"

#include <QGuiApplication>
#include <QLabel>
#include <QStyleHints>
#include <algorithm>

#include "aids/mnemonic_tip.h"
#include "assembler/mnemonic_list.h"
#include "machine/number_format.h"
#include "platform/dialogs.h"
#include "platform/fonts.h"
#include "platform/keys.h"
#include "platform/twips.h"

namespace aids {

namespace {

using platform::Button;

void MakeCaption(const QString& name, const QString& text, PanelPlace place, QWidget* panel) {
    auto* label = new QLabel(text, panel);
    label->setObjectName(name);
    label->move(platform::Pixels(place.Left), platform::Pixels(place.Top));
    label->adjustSize();
}

bool CanTakeFocus(const QWidget& control, const QWidget& panel) {
    return control.isEnabled() && control.isVisibleTo(&panel) && (control.focusPolicy() & Qt::TabFocus) != 0;
}

// The control that had the focus last, or else the first one that can take it.
void FocusInto(QWidget& panel) {
    QWidget* latest = panel.focusWidget();
    if (latest != nullptr && CanTakeFocus(*latest, panel)) return latest->setFocus(Qt::ShortcutFocusReason);
    for (QWidget* control : panel.findChildren<QWidget*>())
        if (CanTakeFocus(*control, panel)) return control->setFocus(Qt::ShortcutFocusReason);
}

}  // namespace

CodeAssistant::CodeAssistant(platform::ProgramText& txtCode, QWidget& frmRegs, QWidget& frmRAM, QWidget* parent)
    : txtCode_(txtCode),
      frmRegs_(frmRegs),
      frmRAM_(frmRAM),
      frmCA_(MakePanel("frmCA", "Code Assistant", 4575, 7575, parent)),
      frmCA2_(MakePanel("frmCA2", "Hexadecimal Keypad", 4695, 3615, parent)),
      frmCA3_(MakePanel("frmCA3", "Register Keypad", 4575, 3615, parent)) {
    InitCodeAssistant();
    InitDigits();
    InitRegisters();
    frmCA2_->installEventFilter(this);
}

QGroupBox* CodeAssistant::MakePanel(const char* name, const QString& caption, int width, int height, QWidget* parent) {
    auto* panel = new QGroupBox(caption, parent);
    panel->setObjectName(name);
    platform::Place(*panel, 7200, 600, width, height);
    panel->hide();
    return panel;
}

// A key pressed by the mouse leaves the caret in view where the text goes, and itself without the focus, so that a
// blank does not press it again. A key that was reached by the Tab key keeps the focus.
Button* CodeAssistant::MakeKey(const char* array, int index, const QString& caption, QWidget* panel, const QRect& place,
                               std::function<void()> press) {
    auto* key = new Button(array + QString::number(index), caption, panel);
    key->setFocusPolicy(Qt::TabFocus);
    key->installEventFilter(this);
    platform::Place(*key, place.left(), place.top(), place.width(), place.height());
    connect(key, &Button::clicked, this, [this, key, press = std::move(press)] {
        if (key->window()->focusWidget() != key) txtCode_.setFocus();
        press();
    });
    return key;
}

void CodeAssistant::InitCodeAssistant() {
    const MnemonicLayout layout = LayOutMnemonics(assembler::MnemonicList);
    constexpr std::array captions = {"Data transfer instructions:", "Arithmetic instructions:", "Logical instructions:",
                                     "Branch control instructions:", "Machine control instructions:"};
    for (std::size_t i = 0; i < captions.size(); ++i)
        MakeCaption("lblCaption" + QString::number(i), captions[i], layout.Captions[i], frmCA_);

    constexpr int height = 255;
    int index = 1;
    Button* label =
        MakeKey("cmdCodes", index++, "Label", frmCA_, {120, 7200, 735, height}, [this] { AskForLabelLine(); });
    label->setFont(platform::CourierNew(8.25));
    label->setToolTip("Write a label on a line of its own");
    for (const MnemonicButton& mnemonic : layout.Buttons) {
        const QRect place(mnemonic.Place.Left, mnemonic.Place.Top, 615, height);
        Button* key = MakeKey("cmdCodes", index++, QString::fromLatin1(mnemonic.Word), frmCA_, place,
                              [this, word = mnemonic.Word] { Take(entry_.ChooseMnemonic(word)); });
        key->setFont(platform::CourierNew(8.25));
        key->setToolTip(QString::fromStdString(MnemonicTip(mnemonic.Word)));
    }
}

void CodeAssistant::InitDigits() {
    MakeCaption("lblDigits", "Key in a hexadecimal number", {960, 360}, frmCA2_);
    for (int i = 0; i < static_cast<int>(cmdDigits_.size()); ++i) {
        const QRect place(1200 + 480 * (i % 4), 720 + 480 * (i / 4), 495, 495);
        cmdDigits_[static_cast<std::size_t>(i)] = MakeKey("cmdDigits", i, QString::number(i, 16).toUpper(), frmCA2_,
                                                          place, [this, i] { Take(entry_.ChooseDigit(i)); });
    }
}

void CodeAssistant::InitRegisters() {
    constexpr int singleRegisters = 8;
    MakeCaption("lblRegisters", "8 Bit Registers:", {240, 480}, frmCA3_);
    MakeCaption("lblPairs", "16 Bit Registers:", {240, 1920}, frmCA3_);
    for (int i = 0; i < static_cast<int>(cmdRegs_.size()); ++i) {
        const std::string_view name = assembler::RegisterNames[static_cast<std::size_t>(i)];
        const QRect place = i < singleRegisters ? QRect(240 + 480 * i, 840, 495, 495)
                                                : QRect(240 + 600 * (i - singleRegisters), 2280, 615, 495);
        cmdRegs_[static_cast<std::size_t>(i)] = MakeKey("cmdRegs", i, QString::fromLatin1(name), frmCA3_, place,
                                                        [this, name] { Take(entry_.ChooseRegister(name)); });
    }
}

// "Label" stands at the bottom of its panel, and comes last there.
QList<QWidget*> CodeAssistant::Keys() const {
    QList<QWidget*> keys;
    for (const QGroupBox* panel : {frmCA_, frmCA2_, frmCA3_})
        for (Button* key : panel->findChildren<Button*>()) keys.append(key);
    const auto label = std::ranges::find(keys, "cmdCodes1", &QWidget::objectName);
    const auto firstDigit = std::ranges::find(keys, cmdDigits_[0]);
    std::rotate(label, label + 1, firstDigit);
    return keys;
}

void CodeAssistant::cmdCodeAssistant_Click() {
    if (IsOn())
        Stop();
    else
        ShowOnly(frmCA_);
    emit CaptionChanged(IsOn() ? StopCaption : StartCaption);
}

void CodeAssistant::TakeFocus() {
    for (QGroupBox* panel : {frmCA_, frmCA2_, frmCA3_})
        if (panel->isVisible()) FocusInto(*panel);
}

void CodeAssistant::StartOver() {
    if (IsOn()) ShowOnly(frmCA_);
}

void CodeAssistant::AskForLabelLine() {
    const QString answer = platform::AskText(txtCode_, "Enter a label:", "Label");
    txtCode_.ReplaceSelection(LabelLine(answer.toStdU16String()));
}

void CodeAssistant::AskForBranchTarget() {
    const QString prompt = "Enter a label for " + QString::fromLatin1(entry_.Mnemonic()) + ":";
    const EntryStep line = InstructionEntry::ChooseLabel(platform::AskText(txtCode_, prompt, "Label").toStdU16String());
    // The assistant may have been stopped under the box.
    if (IsOn())
        Take(line);
    else
        txtCode_.ReplaceSelection(line.Text);
}

void CodeAssistant::Take(const EntryStep& step) {
    if (!txtCode_.ReplaceSelection(step.Text)) return StartOver();
    switch (step.Next) {
        case NextEntry::Mnemonic: return ShowOnly(frmCA_);
        case NextEntry::Digit: return ShowOnly(frmCA2_);
        case NextEntry::Label: return AskForBranchTarget();
        case NextEntry::Register:
            for (std::size_t i = 0; i < cmdRegs_.size(); ++i)
                cmdRegs_[i]->setEnabled(entry_.IsLive(assembler::RegisterNames[i]));
            return ShowOnly(frmCA3_);
    }
}

// One of the panels takes the place of all others, and the focus, where one of them had it: Qt would let it stray to a
// text box and out of it again, as if the user had been there.
void CodeAssistant::ShowOnly(QWidget* panel) {
    if (panel->isHidden()) {
        bringingPress_ = latestPress_;
        sinceBrought_.start();
    }
    panel->show();
    for (QWidget* other : std::initializer_list<QWidget*>{&frmRegs_, &frmRAM_, frmCA_, frmCA2_, frmCA3_}) {
        if (other == panel) continue;
        if (other->isAncestorOf(panel->window()->focusWidget())) FocusInto(*panel);
        other->hide();
    }
}

void CodeAssistant::Stop() {
    for (QGroupBox* panel : {frmCA_, frmCA2_, frmCA3_}) {
        if (panel->isAncestorOf(panel->window()->focusWidget())) txtCode_.setFocus();
        panel->hide();
    }
    frmRegs_.show();
    frmRAM_.show();
}

// The second click of a double click may fall on a key of the panel that the first one has brought up.
bool CodeAssistant::IsRestOfDoubleClick(const QMouseEvent& press) {
    latestPress_ = press.globalPosition().toPoint();
    const QStyleHints& mouse = *QGuiApplication::styleHints();
    return sinceBrought_.isValid() && !sinceBrought_.hasExpired(mouse.mouseDoubleClickInterval()) &&
           (latestPress_ - bringingPress_).manhattanLength() <= mouse.mouseDoubleClickDistance();
}

// So may the second of two quick Enters or blanks, with no other key between them.
bool CodeAssistant::IsRestOfDoublePress(const QKeyEvent& press) {
    if (!platform::PressesButton(press)) sinceBrought_.invalidate();
    return sinceBrought_.isValid() &&
           !sinceBrought_.hasExpired(QGuiApplication::styleHints()->mouseDoubleClickInterval());
}

// While a key of the hexadecimal keypad has the focus, the digits of the keyboard press its keys, once each time.
bool CodeAssistant::TakeDigit(const QKeyEvent& press) {
    const bool isPlain = (press.modifiers() & ~(Qt::ShiftModifier | Qt::KeypadModifier)) == 0;
    const int digit = isPlain && press.text().size() == 1 ? m8085::HexDigitValue(press.text().front().unicode()) : -1;
    if (digit < 0) return false;
    if (press.isAutoRepeat()) return true;
    Button* key = cmdDigits_[static_cast<std::size_t>(digit)];
    key->setFocus();
    key->click();
    return true;
}

bool CodeAssistant::eventFilter(QObject* watched, QEvent* event) {
    const bool isPress = event->type() == QEvent::MouseButtonPress || event->type() == QEvent::MouseButtonDblClick;
    if (watched == frmCA2_)
        return event->type() == QEvent::KeyPress && TakeDigit(static_cast<const QKeyEvent&>(*event));
    if (event->type() == QEvent::KeyPress) return IsRestOfDoublePress(static_cast<const QKeyEvent&>(*event));
    return isPress && IsRestOfDoubleClick(static_cast<const QMouseEvent&>(*event));
}

}  // namespace aids
