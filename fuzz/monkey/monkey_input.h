#pragma once

#include <QPoint>
#include <QString>
#include <Qt>

class QMimeData;
class QWidget;

// Keys and mouse as they come from the window system: they go through the same gates as a user's, so that a modal box
// keeps them from the window below it, and they come at once. What is sent to a window in the background only brings it
// to the front.
namespace input {

void PressKey(QWidget& window, Qt::Key key, Qt::KeyboardModifiers modifiers = {});

// `at` is a place in the widget, which need not be a window.
void MouseDown(QWidget& widget, QPoint at, Qt::MouseButton button = Qt::LeftButton);
void MouseMove(QWidget& widget, QPoint at);
void MouseUp(QWidget& widget, QPoint at, Qt::MouseButton button = Qt::LeftButton);
void Click(QWidget& widget, QPoint at, Qt::MouseButton button = Qt::LeftButton);

// A click so soon after the last one that both are a double click.
void ClickAgain(QWidget& widget, QPoint at);

void Wheel(QWidget& widget, QPoint at, int notches);

// Drags content over the widget and drops it there if it is taken.
void Drop(QWidget& widget, const QMimeData& content);

}  // namespace input
