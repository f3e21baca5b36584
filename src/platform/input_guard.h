#pragma once

#include <QElapsedTimer>
#include <QHash>
#include <QObject>
#include <QPoint>
#include <QPointer>
#include <QWidget>

class QKeyEvent;
class QMouseEvent;

namespace platform {

// Keeps what was meant for one window from going on in another. A key that is held repeats only in the window in which
// it was pressed, and only until a box or a menu has closed: it does nothing more then until it is released. Where
// Enter, a blank or the mouse has closed a window, the same pressed again as the next one within the double-click time
// does nothing either. And a key held with Alt does not repeat at all, since it is a command.
//
// One is installed on the application as its event filter.
class InputGuard : public QObject {
    Q_OBJECT

public:
    using QObject::QObject;

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    struct Press {
        QPointer<QWidget> Window;  // none after the window's end
        QElapsedTimer Since;
        bool IsOver = false;  // a box or a menu has closed after it

        bool WasJustIn(const QWidget* other) const;
    };

    bool IsMeantForAnother(const QKeyEvent& key, QWidget* window);
    bool IsMeantForAnother(const QMouseEvent& press, QWidget* window);

    QHash<quint32, Press> presses_;  // the latest of each key
    quint32 latest_ = 0;             // of all keys
    Press click_;                    // the latest of the mouse, in the window under it
    QPoint clickedAt_;               // on the screen
};

}  // namespace platform
