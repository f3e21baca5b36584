#include "platform/held_keys.h"

#include "support/window_test.h"

namespace platform {

TEST(HeldKeys, AKeyThatHasClosedAWindowTypesNothingInAnotherUntilItIsPressedAgain) {
    HeldKeys guard;
    qApp->installEventFilter(&guard);
    QLineEdit box;
    QLineEdit editor;
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
}

}  // namespace platform
