#pragma once

#include <QElapsedTimer>
#include <QHash>
#include <QObject>
#include <QPointer>
#include <QWidget>

class QKeyEvent;

namespace platform {

// Keeps a key that was meant for one window from going on in another. A key that is held repeats only in the window in
// which it was pressed: the one that closes a box or a menu does nothing more until it is released. And where Enter or
// a blank has closed a window, the same key pressed again as the next one within the double-click time does nothing
// either.
//
// One is installed on the application as its event filter.
class HeldKeys : public QObject {
    Q_OBJECT

public:
    using QObject::QObject;

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    struct Press {
        QPointer<QWidget> Window;  // none after the window's end
        QElapsedTimer Since;
    };

    bool IsMeantForAnother(const QKeyEvent& key, QWidget* window);

    QHash<quint32, Press> presses_;  // the latest of each key
    quint32 latest_ = 0;             // of all keys
};

}  // namespace platform
