#include "panels/register_panel.h"

#include <gtest/gtest.h>

#include <QAccessible>
#include <QApplication>
#include <QDropEvent>
#include <QMimeData>
#include <QPlainTextEdit>
#include <QTest>
#include <vector>

#include "platform/palette.h"

namespace panels {

class RegisterPanelTest : public testing::Test {
protected:
    RegisterPanelTest() {
        QObject::connect(&panel, &RegisterPanel::Edited, [this] { ++edits; });
        cmdRun.move(0, 200);
        panel.DisplayRegs();
        window.show();
        window.activateWindow();
        EXPECT_TRUE(QTest::qWaitForWindowActive(&window));
    }

    QLineEdit& Box(const char* name) { return *window.findChild<QLineEdit*>(name); }
    QString Text(const char* name) { return Box(name).text(); }
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
    for (const char* name : {"txtCyf", "txtSf", "txtACf", "txtPf", "txtZf", "txtUndef2"})
        QTest::mouseClick(window.findChild<QPushButton*>(name), Qt::LeftButton);
    const std::vector<int> registers{machine.C, machine.A, machine.B, machine.D, machine.E, machine.H, machine.L};
    EXPECT_EQ(registers, (std::vector{0, 1, 2, 3, 4, 5, 6}));
    EXPECT_EQ(Text("txtF"), "94");
    Box("txtA").setFocus();
    txtCode.setFocus();
    EXPECT_EQ(edits, 7 + 5) << "a box that is only passed is not a change";
    EXPECT_TRUE(txtCode.hasFocus());
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
    EXPECT_TRUE(QTest::qWaitFor([&] { return seen == 0x0A; }));

    TypeOver("txtB", "77");
    panel.DisplayRegs();
    EXPECT_EQ(Text("txtB"), "00") << "a refresh overwrites what is typed";
    Box("txtB").setText("5 to paste");  // not a number, so the register stays
    txtCode.setFocus();
    EXPECT_EQ(Text("txtB"), "00");

    QMimeData dragged;
    dragged.setText("3c");
    QDragEnterEvent enter({3, 5}, Qt::CopyAction | Qt::MoveAction, &dragged, Qt::LeftButton, {});
    QDropEvent drop({3, 5}, Qt::CopyAction | Qt::MoveAction, &dragged, Qt::LeftButton, {});
    drop.setDropAction(Qt::MoveAction);
    for (QDropEvent* event : {static_cast<QDropEvent*>(&enter), &drop}) QApplication::sendEvent(&Box("txtB"), event);
    EXPECT_EQ(drop.dropAction(), Qt::CopyAction) << "the text would be taken out of the program";
    txtCode.setFocus();
    EXPECT_EQ(machine.B, 0x3C);
}

TEST_F(RegisterPanelTest, WhatHasChangedIsColouredAndHeard) {
    const auto heard = [this](const char* name, QAccessible::Text kind) {
        return QAccessible::queryAccessibleInterface(window.findChild<QWidget*>(name))->text(kind);
    };
    machine.A = machine.Memory[0x9000] = 0x80;
    machine.S = true;
    panel.MarkChanges(m8085::Between({}, machine));
    panel.DisplayRegs();
    QStringList coloured;
    for (const QWidget* control : panel.findChildren<QWidget*>())
        for (const QPalette::ColorRole role : {QPalette::Text, QPalette::ButtonText})
            if (control->palette().color(role) == platform::ChangedText) coloured += control->objectName();
    EXPECT_EQ(coloured.join(' '), "txtA txtF txtSf");
    EXPECT_EQ(heard("txtTstates", QAccessible::Description), "Changed: A 80, flag S 1, memory 9000 80");
    EXPECT_EQ(heard("txtSf", QAccessible::Name), "Sign flag S, bit 7 of F: 1");
    EXPECT_EQ(heard("txtA", QAccessible::Description),
              "Register A, the accumulator\nBinary 1000 0000, decimal 128, signed -128");
}

}  // namespace panels
