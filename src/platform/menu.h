#pragma once

#include <QMenu>
#include <QMenuBar>

namespace platform {

// A menu in which disabled entries take no part in the search for the letter that was pressed.
class Menu : public QMenu {
    Q_OBJECT

public:
    using QMenu::QMenu;

protected:
    void keyPressEvent(QKeyEvent* event) override;

private:
    QList<QAction*> EnabledEntriesWith(QChar letter) const;
};

// A menu bar that says when the keyboard has left it and it still has the focus, because the control that had the focus
// before is disabled by now.
class MenuBar : public QMenuBar {
    Q_OBJECT

public:
    using QMenuBar::QMenuBar;

signals:
    void FocusIsLeft();

protected:
    void paintEvent(QPaintEvent* event) override;
};

// Opens a control's standard menu at a place on the screen, with the control's own entries below, and then deletes it.
void OpenMenu(QMenu* standard, const QList<QAction*>& entries, const QPoint& place);

}  // namespace platform
