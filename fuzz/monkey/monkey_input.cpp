#include "monkey_input.h"

#include <QApplication>
#include <QDropEvent>
#include <QMimeData>
#include <QPointer>
#include <QTest>
#include <QWheelEvent>
#include <QWidget>
#include <QWindow>

namespace input {

namespace {

int timestamp = 0;  // milliseconds; a double click is meant where two clicks come close together

Qt::MouseButtons down;

void SendMouse(QWidget& widget, QPoint at, Qt::MouseButton button, QEvent::Type type) {
    QWindow* window = widget.window()->windowHandle();
    if (window == nullptr) return;
    const QPoint local = widget.mapTo(widget.window(), at);
    qt_handleMouseEvent(window, local, window->mapToGlobal(local), down, button, type, Qt::NoModifier, ++timestamp);
}

// Where another window is active, a window manager would first bring this one to the front, and not before a modal box.
bool Activates(const QWidget& widget) {
    QWidget* window = widget.window();
    const bool isBelow = QApplication::activeModalWidget() != nullptr || QApplication::activePopupWidget() != nullptr;
    if (isBelow || window->isActiveWindow()) return false;
    window->activateWindow();
    return true;
}

QString TextOf(Qt::Key key, Qt::KeyboardModifiers modifiers) {
    const bool isTyped = !(modifiers & Qt::ControlModifier);
    const char character = isTyped ? QTest::keyToAscii(key) : '\0';
    if (character == '\0') return {};
    const QString text(QChar::fromLatin1(character));
    return modifiers & Qt::ShiftModifier ? text.toUpper() : text;
}

}  // namespace

void PressKey(QWidget& window, Qt::Key key, Qt::KeyboardModifiers modifiers) {
    if (Activates(window)) return;
    const QPointer<QWindow> handle = window.windowHandle();
    const QString text = TextOf(key, modifiers);
    for (const QEvent::Type type : {QEvent::KeyPress, QEvent::KeyRelease})
        if (handle) qt_handleKeyEvent(handle, type, key, modifiers, text);
}

void MouseDown(QWidget& widget, QPoint at, Qt::MouseButton button) {
    down |= button;
    SendMouse(widget, at, button, QEvent::MouseButtonPress);
}

void MouseMove(QWidget& widget, QPoint at) {
    SendMouse(widget, at, Qt::NoButton, QEvent::MouseMove);
}

void MouseUp(QWidget& widget, QPoint at, Qt::MouseButton button) {
    down &= ~Qt::MouseButtons(button);
    SendMouse(widget, at, button, QEvent::MouseButtonRelease);
}

// The widget may be gone once the button is down.
void Click(QWidget& widget, QPoint at, Qt::MouseButton button) {
    if (Activates(widget)) return;
    timestamp += 1000;
    const QPointer<QWidget> target = &widget;
    MouseDown(widget, at, button);
    if (target)
        MouseUp(*target, at, button);
    else
        down &= ~Qt::MouseButtons(button);
}

void ClickAgain(QWidget& widget, QPoint at) {
    MouseDown(widget, at);
    MouseUp(widget, at);
}

void Wheel(QWidget& widget, QPoint at, int notches) {
    QWindow* window = widget.window()->windowHandle();
    if (window == nullptr) return;
    const QPoint local = widget.mapTo(widget.window(), at);
    constexpr int notch = 120;
    QWheelEvent event(local, window->mapToGlobal(local), {}, {0, notch * notches}, Qt::NoButton, Qt::NoModifier,
                      Qt::NoScrollPhase, false);
    QCoreApplication::sendEvent(window, &event);
}

void Drop(QWidget& widget, const QMimeData& content) {
    const QPoint at = widget.rect().center();
    QDragEnterEvent enter(at, Qt::CopyAction, &content, Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(&widget, &enter);
    if (!enter.isAccepted()) return;
    QDropEvent drop(at, Qt::CopyAction, &content, Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(&widget, &drop);
}

}  // namespace input
