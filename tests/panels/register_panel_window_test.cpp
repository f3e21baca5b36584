#include "panels/register_panel.h"

#include <gtest/gtest.h>

#include <QAction>
#include <QPlainTextEdit>
#include <QTest>

namespace panels {

class RegisterPanelTest : public testing::Test {
protected:
    RegisterPanelTest() {
        cmdRun.move(0, 200);
        panel.DisplayRegs();
        window.show();
        window.activateWindow();
        EXPECT_TRUE(QTest::qWaitForWindowActive(&window));
    }

    QLineEdit& Box(const char* name) { return *window.findChild<QLineEdit*>(name); }
    QPushButton& Flag(const char* name) { return *window.findChild<QPushButton*>(name); }
    std::string Text(const char* name) { return Box(name).text().toStdString(); }

    void TypeOver(const char* box, const QString& keys) {
        QTest::mouseDClick(&Box(box), Qt::LeftButton);
        QTest::keyClicks(&Box(box), keys);
    }

    m8085::MachineState machine;
    QWidget window;
    QPlainTextEdit txtCode{&window};
    RegisterPanel panel{machine, txtCode, &window};
    platform::Button cmdRun{"cmdRun", "&Run", &window};
};

TEST_F(RegisterPanelTest, ShowsTheMachine) {
    machine.A = 0xA5;
    machine.L = 7;
    machine.Z = machine.CY = true;
    machine.PC = 65536;
    machine.SP = 10;
    machine.TStates = 1000000;
    panel.DisplayRegs();
    EXPECT_EQ(Text("txtA") + Text("txtF") + Text("txtL"), "A54107");
    EXPECT_EQ(Text("txtPC") + ' ' + Text("txtSP") + ' ' + Text("txtTstates"), "10000 000A 1000000");
    EXPECT_EQ(Flag("txtZf").text() + Flag("txtSf").text() + Flag("txtUndef1").text(), "100");
    for (const char* name : {"txtF", "txtPC", "txtSP", "txtTstates"}) EXPECT_TRUE(Box(name).isReadOnly()) << name;
}

TEST_F(RegisterPanelTest, WhatWasTypedIsInTheMachineBeforeAButtonRuns) {
    int seen = -1;
    QObject::connect(&cmdRun, &QPushButton::clicked, [&] { seen = machine.L; });
    TypeOver("txtL", "1g \rFF");
    EXPECT_EQ(Text("txtL"), "1FF");
    EXPECT_EQ(machine.L, 0);
    QTest::mouseClick(&cmdRun, Qt::LeftButton);
    EXPECT_EQ(seen, 0x1F);
    EXPECT_EQ(Text("txtL"), "1F");

    TypeOver("txtL", "a");
    QTest::keyClick(window.windowHandle(), Qt::Key_R, Qt::AltModifier);
    EXPECT_TRUE(QTest::qWaitFor([&] { return seen == 0x0A; }));
    EXPECT_EQ(Text("txtL"), "0A");
}

TEST_F(RegisterPanelTest, AMenuKeyRunsBeforeTheTypedValueIsStored) {
    QAction mnuRun;
    mnuRun.setShortcut(Qt::Key_F5);
    window.addAction(&mnuRun);
    QObject::connect(&mnuRun, &QAction::triggered, [&] { panel.DisplayRegs(); });
    machine.B = 0x42;
    TypeOver("txtB", "77");
    QTest::keyClick(window.windowHandle(), Qt::Key_F5);
    EXPECT_EQ(machine.B, 0x42);
    EXPECT_EQ(Text("txtB"), "42");
    EXPECT_TRUE(Box("txtB").hasFocus());
}

TEST_F(RegisterPanelTest, AnEmptyBoxIsZeroAndATextThatIsNoNumberGoesBack) {
    machine.C = 0x42;
    panel.DisplayRegs();
    TypeOver("txtC", "\b");
    txtCode.setFocus();
    EXPECT_EQ(machine.C, 0);
    EXPECT_EQ(Text("txtC"), "00");

    machine.C = 0x42;
    panel.DisplayRegs();
    Box("txtC").setFocus();
    Box("txtC").selectAll();
    Box("txtC").insert("5 to paste");
    txtCode.setFocus();
    EXPECT_EQ(machine.C, 0x42);
    EXPECT_EQ(Text("txtC"), "42");
}

TEST_F(RegisterPanelTest, AFlagButtonTogglesItsFlagAndGivesTheFocusToTheProgramText) {
    TypeOver("txtE", "9");
    for (const char* name : {"txtCyf", "txtSf", "txtZf", "txtACf", "txtPf", "txtZf"})
        QTest::mouseClick(&Flag(name), Qt::LeftButton);
    EXPECT_EQ(machine.E, 9);
    EXPECT_EQ(Text("txtF"), "95");
    EXPECT_TRUE(txtCode.hasFocus());
    Box("txtA").setFocus();
    QTest::mouseClick(&Flag("txtUndef2"), Qt::LeftButton);
    EXPECT_EQ(machine.GetFlagByte(), 0x95);
    EXPECT_EQ(Flag("txtUndef2").text(), "0");
    EXPECT_TRUE(txtCode.hasFocus());
}

TEST_F(RegisterPanelTest, TabRunsThroughTheRowsLineByLine) {
    Box("txtA").setFocus();
    for (const char* next : {"txtF", "txtB", "txtC", "txtD", "txtE", "txtH", "txtL", "txtPC", "txtSP", "txtSf"}) {
        QTest::keyClick(window.windowHandle(), Qt::Key_Tab);
        EXPECT_EQ(QApplication::focusWidget()->objectName(), next);
    }
}

}  // namespace panels
