#pragma once

#include <QLabel>
#include <QTimer>
#include <QWidget>

namespace shell {

// The start-up and About box: one window that is hidden and shown again. A timer takes it away once, a moment after
// the start; after that it stays until the user dismisses it.
class frmSplash : public QWidget {
    Q_OBJECT

public:
    frmSplash();

    // At the start: over the main window, without taking the keyboard from it.
    void ShowAtStart();

    // For the About command: comes to the front and takes the keyboard. Leaves the timer alone.
    void ShowAbout();

protected:
    void paintEvent(QPaintEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void closeEvent(QCloseEvent* event) override;

private:
    QLabel& AddLabel(const QString& name, const QString& text, const QFont& font, const QColor& colour, int left,
                     int top);
    void Label5_Click();

    QLabel* Label5 = nullptr;
    QLabel* Label6 = nullptr;
    QLabel* Label7 = nullptr;
    QTimer Timer1;
};

}  // namespace shell
