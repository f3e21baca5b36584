#include "platform/text_box.h"

#include <QApplication>
#include <QDropEvent>
#include <QFocusEvent>
#include <QKeyEvent>
#include <QMenuBar>
#include <QMimeData>
#include <utility>

#include "platform/clipboard.h"
#include "platform/keys.h"
#include "platform/menu.h"

namespace platform {

TextBox::TextBox(const QString& name, QWidget* parent) : QLineEdit(parent) {
    setObjectName(name);
    connect(qApp, &QApplication::focusChanged, this,
            [this](const QWidget*, const QWidget* focused) { FollowFocus(focused); });
}

// The focus still moves while the rest of the control is destroyed.
TextBox::~TextBox() {
    disconnect(qApp, nullptr, this, nullptr);
}

void TextBox::keyPressEvent(QKeyEvent* event) {
    if (IsAltCharacter(*event)) {
        event->ignore();
        return;
    }
    if (acceptsKey_ && IsCharacterKey(*event) && !acceptsKey_(event->text().front().unicode())) return;
    QLineEdit::keyPressEvent(event);
}

void TextBox::keyReleaseEvent(QKeyEvent* event) {
    QLineEdit::keyReleaseEvent(event);
    if (!event->isAutoRepeat()) emit KeyReleased(event->key());
}

void TextBox::contextMenuEvent(QContextMenuEvent* event) {
    OpenMenu(MakeContextMenu(), {}, event->globalPos());
}

// Qt puts plain text alone on the clipboard.
QMenu* TextBox::MakeContextMenu() {
    QMenu* menu = createStandardContextMenu();
    for (QAction* action : menu->actions())
        if (action->text().startsWith("Cu&t") || action->text().startsWith("&Copy"))
            connect(action, &QAction::triggered, this, [text = selectedText()] { PutRichText(text.toStdU16String()); });
    return menu;
}

// Text that is dragged from the program also stays there.
void TextBox::dropEvent(QDropEvent* event) {
    if (event->source() == this) return QLineEdit::dropEvent(event);
    event->setDropAction(Qt::CopyAction);
    event->setAccepted(selectsAll_ && !isReadOnly() && event->mimeData()->hasText() && !event->mimeData()->hasUrls());
    if (!event->isAccepted()) return;
    setFocus();
    holdsFocus_ = true;  // also where the text comes from another window, which is still the active one
    selectAll();
    QString typed;
    for (const QChar character : event->mimeData()->text())
        if (character.isPrint() && (!acceptsKey_ || acceptsKey_(character.unicode()))) typed += character;
    if (!typed.isEmpty()) insert(typed);
}

void TextBox::focusInEvent(QFocusEvent* event) {
    QLineEdit::focusInEvent(event);
    holdsFocus_ = true;
    keepsAllSelected_ = selectsAll_ && event->reason() == Qt::MouseFocusReason;
}

void TextBox::KeepAllSelected() {
    keepsAllSelected_ = true;
    selectAll();
}

void TextBox::mousePressEvent(QMouseEvent* event) {
    QLineEdit::mousePressEvent(event);
    if (keepsAllSelected_) selectAll();
}

// The mouse may move a little before the button is released.
void TextBox::mouseMoveEvent(QMouseEvent* event) {
    if (!keepsAllSelected_) QLineEdit::mouseMoveEvent(event);
}

void TextBox::mouseReleaseEvent(QMouseEvent* event) {
    QLineEdit::mouseReleaseEvent(event);
    keepsAllSelected_ = false;
}

// The box may have lost the keys long before, to a menu or to a message box. What counts is that another control of its
// window has them now.
void TextBox::FollowFocus(const QWidget* focused) {
    const bool elsewhere = focused != nullptr && focused != this && focused->window() == window() &&
                           qobject_cast<const QMenuBar*>(focused) == nullptr;
    if (elsewhere && std::exchange(holdsFocus_, false)) emit LostFocus();
}

}  // namespace platform
