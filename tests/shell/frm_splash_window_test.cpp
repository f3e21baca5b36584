#include "shell/frm_splash.h"

#include "platform/modal.h"
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
    EXPECT_TRUE(splash.isVisible());
    EXPECT_LT((splash.geometry().center() - splash.screen()->availableGeometry().center()).manhattanLength(), 3);
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

TEST(FrmSplash, ItsTextsStandOnAGradientInsideABlackFrameAndALinkThatCannotOpenSaysWhereItLeads) {
    frmSplash splash;
    splash.ShowAbout();
    const QImage picture = splash.grab().toImage();
    EXPECT_EQ(picture.size(), QSize(450, 301));
    for (const int edge : {0, 4, 291, 295}) EXPECT_EQ(picture.pixelColor(220, edge), QColor(Qt::black)) << edge;
    for (const int edge : {0, 4, 443, 447}) EXPECT_EQ(picture.pixelColor(edge, 150), QColor(Qt::black)) << edge;
    for (const auto* label : splash.findChildren<QLabel*>()) EXPECT_EQ(label->size(), label->sizeHint());
    EXPECT_TRUE(splash.findChild<QLabel*>("Label5")->font().underline());
    EXPECT_GT(splash.findChild<QLabel*>("Label1")->height(), splash.findChild<QLabel*>("Label2")->height());
    EXPECT_EQ(splash.findChild<QLabel*>("Label5")->palette().color(QPalette::WindowText), QColor(Qt::blue));
    for (const int y : {10, 285}) EXPECT_NEAR(picture.pixelColor(20, y).blue(), 100 + 100 * y / 301, 2);
    EXPECT_EQ(splash.findChild<QLabel*>("Label3")->text(), "Version " VELMORA_VERSION);
    EXPECT_EQ(splash.objectName() + '|' + splash.accessibleName(), "frmSplash|About Velmora");
    const MessageAnswer message;
    QTest::mouseMove(&splash, splash.findChild<QLabel*>("Label5")->geometry().center());
    Click(splash, "Label5");
    EXPECT_EQ(splash.cursor().shape(), Qt::UpArrowCursor);
    EXPECT_TRUE(message.Text.startsWith("The page could not be opened in a browser. Its address is "));
    EXPECT_TRUE(splash.isVisible());
}

}  // namespace shell
