#pragma once

#include <gtest/gtest.h>

#include <QtTest>
#include <QtWidgets>
#include <ostream>

// What every test with a window includes, compiled once for all of them.

// Lets a failed comparison show its texts. Were it missing in one test, the linker would choose among two printers.
inline void PrintTo(const QString& text, std::ostream* out) {
    *out << '"' << text.toStdString() << '"';
}

// Whether all that looks different now has been painted again: what is on the screen is what painting it whole gives.
inline bool IsPaintedAnew(QWidget& window) {
    QCoreApplication::processEvents();
    QCoreApplication::sendPostedEvents();  // what a timer, such as the caret's, has just wanted to be painted
    const QImage shown = window.screen()->grabWindow(window.winId()).toImage();
    return shown == window.grab().toImage().convertToFormat(shown.format());
}

// Shows a window in front, where keys go. Also needed after a modal box: there is no window manager here to give the
// window its activation back.
inline void Activate(QWidget& window) {
    window.show();
    window.activateWindow();
    EXPECT_TRUE(QTest::qWaitForWindowActive(&window));
}

inline void Write(const QString& path, const QByteArray& bytes) {
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size());
}

inline QByteArray Read(const QString& path) {
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("(no file)");
}
