#include "shell/frm_splash.h"

#include "support/window_test.h"

namespace shell {

namespace {

void Click(frmSplash& splash, const char* label) {
    QTest::mouseClick(&splash, Qt::LeftButton, {}, splash.findChild<QLabel*>(label)->geometry().center());
}

}  // namespace

TEST(FrmSplash, TheTimerTakesItAwayOnceHoweverItWasShown) {
    frmSplash splash;
    splash.ShowAtStart();
    QTest::mouseClick(&splash, Qt::LeftButton, {}, {20, 200});
    EXPECT_FALSE(splash.isVisible());
    splash.ShowAbout();
    EXPECT_TRUE(QTest::qWaitFor([&splash] { return !splash.isVisible(); }, 4000));
    splash.ShowAbout();
    QTest::qWait(2700);
    EXPECT_TRUE(splash.isVisible());
}

TEST(FrmSplash, CharactersAndMostClicksHideIt) {
    frmSplash splash;
    splash.ShowAbout();
    for (const Qt::Key key : {Qt::Key_Left, Qt::Key_F1, Qt::Key_Delete, Qt::Key_Shift}) QTest::keyClick(&splash, key);
    for (const char* label : {"Label6", "Label7"}) Click(splash, label);
    QTest::mouseClick(&splash, Qt::RightButton);
    EXPECT_TRUE(splash.isVisible());
    for (const char* label : {"Label1", "Label2", "Label3", "Label4"}) {
        splash.ShowAbout();
        Click(splash, label);
        EXPECT_FALSE(splash.isVisible()) << label;
    }
    splash.ShowAbout();
    QTest::keyClick(&splash, Qt::Key_Space);
    EXPECT_FALSE(splash.isVisible());
    splash.ShowAbout();
    EXPECT_FALSE(splash.close() || splash.isVisible());
}

}  // namespace shell
