#include "panels/register_panel.h"

#include <vector>

#include "platform/palette.h"
#include "support/window_test.h"

namespace panels {

class RegisterPanelTest : public testing::Test {
protected:
    RegisterPanelTest() {
        QObject::connect(&panel, &RegisterPanel::Edited, [this] { ++edits; });
        cmdRun.move(0, 200);
        panel.DisplayRegs();
        Activate(window);
    }

    QLineEdit& Box(const char* name) { return *window.findChild<QLineEdit*>(name); }
    QString Text(const char* name) { return Box(name).text(); }
    // What stands beside a box or over a flag.
    QString LabelAt(const QWidget& control) const {
        const QMargins reach = control.inherits("QLineEdit") ? QMargins(5, 0, 5, 0) : QMargins(0, 0, 0, 2);
        QStringList labels;
        for (const auto* label : panel.findChildren<QLabel*>())
            if (label->geometry().marginsAdded(reach).intersects(control.geometry())) labels += label->text().trimmed();
        return labels.join(' ');
    }

    // The click that brings the focus selects all, wherever it falls and though the mouse moves a little.
    void TypeOver(const char* box, const QString& keys) {
        QTest::mousePress(&Box(box), Qt::LeftButton, {}, {3, 5});
        QTest::mouseMove(&Box(box), {7, 5});
        QTest::mouseRelease(&Box(box), Qt::LeftButton, {}, {7, 5});
        QTest::keyClicks(&Box(box), keys);
    }

    m8085::MachineState machine;
    int edits = 0;
    QWidget window;
    QPlainTextEdit txtCode{&window};
    RegisterPanel panel{machine, txtCode, &window};
    platform::Button cmdRun{"cmdRun", "&Run", &window};
};

TEST_F(RegisterPanelTest, EachControlStandsInItsPlaceWithItsLabelItsNameAndItsTip) {
    struct Row {
        QString Control, Label, Name, Tip;
    };
    const Row rows[] = {
        {"txtA", "A", "Register A", "Register A, the accumulator\n"},
        {"txtF", "F", "Flag byte F", "Flag byte F, read only: S Z 0 AC 0 P 0 CY\n"},
        {"txtB", "B", "Register B", "Register B, the high byte of BC\n"},
        {"txtC", "C", "Register C", "Register C, the low byte of BC\n"},
        {"txtSf", "S", "Sign flag S, bit 7 of F: 0", "\n1 when bit 7 of the result is 1\n"},
        {"txtZf", "Z", "Zero flag Z, bit 6 of F: 0", "\n1 when the result is 0\n"},
        {"txtUndef1", "-", "Undefined bit 5 of F", "\nIt has no meaning and is always 0"},
        {"txtACf", "AC", "Auxiliary carry flag AC, bit 4 of F: 0",
         "\n1 when the low digits of an addition came to ten"},
        {"txtUndef2", "-", "Undefined bit 3 of F", "\nIt has no meaning and is always 0"},
        {"txtPf", "P", "Parity flag P, bit 2 of F: 0", "\n1 when the result has an even number of bits that are 1\n"},
        {"txtUndef3", "-", "Undefined bit 1 of F", "\nIt has no meaning and is always 0"},
        {"txtCyf", "CY", "Carry flag CY, bit 0 of F: 0", "\n1 when a sum was too large, a difference below 0, or a"},
        {"txtD", "D", "Register D", "Register D, the high byte of DE\n"},
        {"txtE", "E", "Register E", "Register E, the low byte of DE\n"},
        {"txtH", "H", "Register H", "Register H, the high byte of HL, the address of M\n"},
        {"txtL", "L", "Register L", "Register L, the low byte of HL, the address of M\n"},
        {"txtPC", "PC", "Program counter PC", "Program counter PC, read only: the address of the next instruction\n"},
        {"txtSP", "SP", "Stack pointer SP", "Stack pointer SP, read only: the address of the byte on top of the stack"},
        {"txtTstates", "T-states:", "T-states", "T-states since the latest Reset or Assemble, read only\n"},
    };
    QList<QWidget*> controls = panel.findChildren<QWidget*>();
    controls.removeIf([](const auto* control) { return control->focusPolicy() == Qt::NoFocus; });
    std::ranges::sort(controls, {}, [](const auto* control) { return std::pair(control->y(), control->x()); });
    ASSERT_EQ(controls.size(), std::ssize(rows));
    EXPECT_EQ(panel.grab().toImage().pixelColor(0, 60), panel.palette().color(QPalette::Mid)) << "its edge";
    for (const auto* label : panel.findChildren<QLabel*>())
        EXPECT_TRUE(!label->text().startsWith("Click") ||
                    (label->alignment() == Qt::AlignCenter && !label->font().bold()));
    for (qsizetype i = 0; const auto& [name, label, accessibleName, tip] : rows) {
        const QWidget& control = *controls[i++];
        EXPECT_EQ(control.objectName(), name);
        EXPECT_EQ(LabelAt(control), label) << qPrintable(name);
        EXPECT_EQ(control.accessibleName(), accessibleName) << qPrintable(name);
        EXPECT_TRUE(control.toolTip().contains(tip)) << qPrintable(control.toolTip());
        const bool isGrey = control.palette().color(QPalette::Base) == QColor(224, 224, 224);
        const auto* const box = qobject_cast<const QLineEdit*>(&control);
        const Qt::Alignment alignment = name == "txtTstates" ? Qt::AlignLeft : Qt::AlignCenter;
        EXPECT_TRUE(isGrey == (box != nullptr) && (!isGrey || box->alignment() == alignment)) << qPrintable(name);
        EXPECT_EQ(control.property("readOnly").toBool(), control.toolTip().contains("read only")) << qPrintable(name);
    }
}

TEST_F(RegisterPanelTest, BoxesAndFlagButtonsChangeTheMachineThatIsShown) {
    machine.Z = machine.CY = true;
    machine.SP = machine.C = 10;
    machine.PC = 65536;
    machine.TStates = 1000000;
    panel.DisplayRegs();
    const QString shown = Text("txtF") + ' ' + Text("txtPC") + ' ' + Text("txtSP") + ' ' + Text("txtTstates");
    EXPECT_EQ(shown, "41 10000 000A 1000000");
    TypeOver("txtC", "\b");  // an empty box is zero
    for (int digit = 1; const char* box : {"txtA", "txtB", "txtD", "txtE", "txtH", "txtL"})
        TypeOver(box, QString::number(digit++));
    txtCode.setFocus();
    EXPECT_EQ(edits, 7);
    for (const char* name : {"txtCyf", "txtSf", "txtACf", "txtPf", "txtZf", "txtUndef2"}) {
        Box("txtA").setFocus();
        QTest::mouseClick(window.findChild<QPushButton*>(name), Qt::LeftButton);
        EXPECT_TRUE(txtCode.hasFocus()) << name;
    }
    const std::vector<int> registers{machine.C, machine.A, machine.B, machine.D, machine.E, machine.H, machine.L};
    EXPECT_EQ(registers, (std::vector{0, 1, 2, 3, 4, 5, 6}));
    EXPECT_EQ(Text("txtF"), "94");
    Box("txtA").setFocus();
    txtCode.setFocus();
    EXPECT_EQ(edits, 7 + 5) << "a box that is only passed is not a change";
    EXPECT_TRUE(txtCode.hasFocus());
    Box("txtB").setFocus();
    Box("txtA").setFocus();
    machine.B = 0x99;
    Box("txtD").setFocus();
    EXPECT_EQ(machine.B, 0x99) << "what a box shows is stored once, not again";
}

TEST_F(RegisterPanelTest, WhatWasTypedIsInTheMachineBeforeAButtonRuns) {
    int seen = -1;
    QObject::connect(&cmdRun, &QPushButton::clicked, [&] { seen = machine.L; });
    TypeOver("txtL", "1g \rFF");
    EXPECT_EQ(machine.L, 0);
    QTest::mouseClick(&Box("txtL"), Qt::LeftButton);
    EXPECT_FALSE(Box("txtL").hasSelectedText()) << "a further click goes to its place";
    QTest::mouseClick(&cmdRun, Qt::LeftButton);
    EXPECT_EQ(seen, 0x1F);
    TypeOver("txtL", "a");
    QTest::keyClick(&Box("txtL"), Qt::Key_F, Qt::AltModifier);
    EXPECT_EQ(Text("txtL"), "a");
    QTest::keyClick(window.windowHandle(), Qt::Key_R, Qt::AltModifier);
    EXPECT_EQ(seen, 0x0A);

    TypeOver("txtB", "77");
    panel.DisplayRegs();
    EXPECT_EQ(Text("txtB"), "00") << "a refresh overwrites what is typed";
    EXPECT_EQ(Box("txtB").selectedText(), "00") << "and what is typed next takes its place";
    txtCode.setFocus();
    Box("txtB").setFocus(Qt::TabFocusReason);
    QTest::mouseClick(&Box("txtB"), Qt::LeftButton);
    panel.DisplayRegs();
    EXPECT_FALSE(Box("txtB").hasSelectedText()) << "a click goes to its place, and what is the same keeps it";
    Box("txtB").setText("5 to paste");  // not a number, so the register stays
    txtCode.setFocus();
    EXPECT_EQ(Text("txtB"), "00");

    QMimeData dragged;
    dragged.setText("mov 3,c");
    QDragEnterEvent enter({3, 5}, Qt::CopyAction | Qt::MoveAction, &dragged, Qt::LeftButton, {});
    QDropEvent drop({3, 5}, Qt::CopyAction | Qt::MoveAction, &dragged, Qt::LeftButton, {});
    drop.setDropAction(Qt::MoveAction);
    QWidget source;
    Activate(source);
    for (const char* box : {"txtPC", "txtB", "txtC"}) {
        Box(box).deselect();
        for (QDropEvent* event : {static_cast<QDropEvent*>(&enter), &drop}) QApplication::sendEvent(&Box(box), event);
    }
    EXPECT_EQ(Text("txtPC"), "0000");
    EXPECT_EQ(drop.dropAction(), Qt::CopyAction) << "the text would be taken out of the program";
    Activate(window);
    txtCode.setFocus();
    EXPECT_TRUE(machine.B == 0x3C && machine.C == 0x3C);
}

TEST_F(RegisterPanelTest, TheTipOfSpShowsTheStackAsItIsWhenTheMouseRests) {
    machine.SP = 0xFFFB;
    panel.DisplayRegs();
    machine.Memory[0xFFFB] = 0x34;
    machine.Memory[0xFFFC] = 0x12;
    QHelpEvent rest(QEvent::ToolTip, {}, {});
    QApplication::sendEvent(&Box("txtSP"), &rest);
    EXPECT_TRUE(Box("txtSP").toolTip().endsWith("Decimal 65531\nWord 1234 at FFFB\nWord 0000 at FFFD"))
        << "half a word at FFFF is none";
    machine.SP = 0x10000;
    EXPECT_TRUE(QToolTip::isVisible());
    QApplication::sendEvent(&Box("txtSP"), &rest);
    EXPECT_EQ(Text("txtSP"), "FFFB") << "as the other registers, which a run has not shown either";
    panel.DisplayRegs();
    EXPECT_TRUE(QTest::qWaitFor([] { return !QToolTip::isVisible(); }));
    EXPECT_TRUE(Box("txtSP").toolTip().endsWith("Decimal 65536"));
}

TEST_F(RegisterPanelTest, WhatHasChangedIsColouredAndHeard) {
    const auto heard = [this](const char* name, QAccessible::Text kind) {
        return QAccessible::queryAccessibleInterface(window.findChild<QWidget*>(name))->text(kind);
    };
    machine.A = machine.Memory[0x9000] = 0x80;
    machine.S = true;
    machine.SP = 0xFFEE;
    panel.MarkChanges(m8085::Between({}, machine));
    panel.DisplayRegs();
    EXPECT_TRUE(IsPaintedAnew(window));
    QStringList coloured;
    for (const QWidget* control : panel.findChildren<QWidget*>())
        for (const QPalette::ColorRole role : {QPalette::Text, QPalette::ButtonText})
            if (control->palette().color(role) == platform::ChangedText) coloured += control->objectName();
    EXPECT_EQ(coloured.join(' '), "txtA txtF txtSP txtSf");
    EXPECT_EQ(heard("txtTstates", QAccessible::Description), "Changed: A 80, flag S 1, SP FFEE, memory 9000 80");
    EXPECT_EQ(heard("txtSf", QAccessible::Name), "Sign flag S, bit 7 of F: 1");
    EXPECT_EQ(heard("txtA", QAccessible::Description),
              "Register A, the accumulator\nBinary 1000 0000, decimal 128, signed -128");
}

}  // namespace panels
