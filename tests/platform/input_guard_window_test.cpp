#include "platform/input_guard.h"

#include "support/window_test.h"

namespace platform {

TEST(InputGuard, AKeyThatHasClosedAWindowTypesNothingInAnotherUntilItIsPressedAgain) {
    InputGuard guard;
    qApp->installEventFilter(&guard);
    QLineEdit box, editor;
    box.show();
    editor.show();
    const auto press = [](QLineEdit& target, Qt::Key key, bool repeats) {
        const QString text(QChar(static_cast<char16_t>(key)));
        QKeyEvent event(QEvent::KeyPress, key, Qt::NoModifier, text, repeats);
        QApplication::sendEvent(&target, &event);
    };
    press(box, Qt::Key_Space, false);
    box.hide();
    press(editor, Qt::Key_Space, true);   // still held
    press(editor, Qt::Key_Space, false);  // the second of two quick ones
    press(editor, Qt::Key_Space, true);
    EXPECT_EQ(editor.text(), "");
    press(editor, Qt::Key_A, false);
    press(editor, Qt::Key_A, true);
    press(editor, Qt::Key_Space, false);
    EXPECT_EQ(editor.text(), "AA ");

    box.show();
    press(box, Qt::Key_Space, false);
    box.hide();
    QTest::qWait(QApplication::doubleClickInterval() + 50);
    press(editor, Qt::Key_Space, false);
    EXPECT_EQ(editor.text(), "AA  ");

    QDialog dialog;
    dialog.setModal(true);
    QMenu menu;
    const QSignalSpy closed(&menu, &QMenu::aboutToHide);
    for (QWidget* shown : std::initializer_list<QWidget*>{&dialog, &menu}) {
        press(editor, Qt::Key_B, false);
        shown->show();
        shown->hide();
        press(editor, Qt::Key_B, true);
    }
    EXPECT_EQ(editor.text(), "AA  BB") << "it was held while a box or a menu was there";
    EXPECT_EQ(closed.count(), 1);
}

TEST(InputGuard, TheSecondOfTwoQuickClicksPressesNothingUnderTheWindowThatTheFirstHasClosed) {
    InputGuard guard;
    qApp->installEventFilter(&guard);
    QPushButton box, under;
    for (QPushButton* button : {&under, &box}) {
        button->setGeometry(100, 100, 80, 40);
        button->show();
    }
    const auto press = [](QPushButton& button, int across) {
        button.setDown(false);
        const QPointF place(across, 20);
        QMouseEvent event(QEvent::MouseButtonPress, place, button.mapToGlobal(place), Qt::LeftButton, Qt::LeftButton,
                          {});
        QApplication::sendEvent(&button, &event);
        return button.isDown();
    };
    EXPECT_TRUE(press(box, 20));
    EXPECT_TRUE(press(under, 20)) << "the box is still there";
    EXPECT_TRUE(press(box, 20));
    box.hide();
    EXPECT_FALSE(press(under, 21));
    EXPECT_TRUE(press(under, 60)) << "in another place";
    box.show();
    press(box, 20);
    box.hide();
    QTest::qWait(QApplication::doubleClickInterval() + 50);
    EXPECT_TRUE(press(under, 20));
}

}  // namespace platform
