#include "platform/menu.h"

#include <QKeyEvent>

namespace platform {

QList<QAction*> Menu::EnabledEntriesWith(QChar letter) const {
    const QKeySequence accessKey(Qt::ALT | Qt::Key(letter.toUpper().unicode()));
    QList<QAction*> found = actions();
    found.removeIf([&accessKey](const QAction* entry) {
        return !entry->isEnabled() || QKeySequence::mnemonic(entry->text()) != accessKey;
    });
    return found;
}

// Qt would count the disabled entries too and move the mark between two with the same letter.
void Menu::keyPressEvent(QKeyEvent* event) {
    const bool isLetter = event->text().size() == 1 && event->text().front().isLetter();
    if (!isLetter) return QMenu::keyPressEvent(event);
    const QList<QAction*> found = EnabledEntriesWith(event->text().front());
    if (found.size() > 1) return QMenu::keyPressEvent(event);
    if (found.isEmpty()) return;
    setActiveAction(found.constFirst());
    QKeyEvent choose(QEvent::KeyPress, Qt::Key_Return, Qt::NoModifier);
    QMenu::keyPressEvent(&choose);
}

// It is painted whenever the keyboard has left it.
void MenuBar::paintEvent(QPaintEvent* event) {
    QMenuBar::paintEvent(event);
    if (hasFocus() && activeAction() == nullptr) emit FocusIsLeft();
}

void OpenMenu(QMenu* standard, const QList<QAction*>& entries, const QPoint& place) {
    standard->addSeparator();
    standard->addActions(entries);
    standard->setAttribute(Qt::WA_DeleteOnClose);
    standard->popup(place);
}

}  // namespace platform
