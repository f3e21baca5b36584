#pragma once

#include <functional>

#include "support/window_test.h"

// Answers the next modal box of its kind, whatever opens it, as soon as it is there. The box must come up for
// `Answered` to be true. Answers to boxes of different kinds may wait at once.
template <class Box>
class BoxAnswer {
public:
    explicit BoxAnswer(const std::function<void(Box& box)>& answer) {
        QObject::connect(&timer, &QTimer::timeout, [this, answer] {
            auto* box = dynamic_cast<Box*>(QApplication::activeModalWidget());
            if (box == nullptr) return;
            timer.stop();
            answered = true;
            answer(*box);
        });
        timer.start(0);
    }

    bool Answered() const { return answered; }

private:
    QTimer timer;
    bool answered = false;
};

using ModalAnswer = BoxAnswer<QWidget>;

// Presses a button of a message box and keeps what the box said. Before that it looks at what stands under the box.
struct MessageAnswer : BoxAnswer<QMessageBox> {
    explicit MessageAnswer(
        QMessageBox::StandardButton button = QMessageBox::Ok, const std::function<void()>& look = [] {})
        : BoxAnswer([this, button, look](QMessageBox& box) {
              look();
              Text = box.text();
              Caption = box.windowTitle();
              Details = box.detailedText();
              box.button(button)->click();
          }) {}

    QString Text, Caption, Details;
};

// Types a text into an input box and accepts it, or cancels the box if the text is empty. Keeps what the box said.
struct InputAnswer : BoxAnswer<QInputDialog> {
    explicit InputAnswer(const QString& text)
        : BoxAnswer([this, text](QInputDialog& box) {
              Said = box.windowTitle() + '|' + box.labelText();
              box.setTextValue(text);
              box.done(text.isEmpty() ? QDialog::Rejected : QDialog::Accepted);
          }) {}

    QString Said;
};

// Types a path into a file dialog and accepts it; cancels the dialog if the path is empty. Keeps the folder and the
// name with which it came up, and the places at its side. A name that has not the focus would be replaced by what the
// dialog's list selects.
struct FileAnswer : BoxAnswer<QFileDialog> {
    explicit FileAnswer(const QString& path)
        : BoxAnswer([this, path](QFileDialog& dialog) {
              auto& name = *dialog.findChild<QLineEdit*>("fileNameEdit");
              Offered = dialog.directory().filePath(name.text());
              Places = dialog.sidebarUrls();
              if (path.isEmpty()) return dialog.reject();
              EXPECT_TRUE(QTest::qWaitForWindowActive(&dialog));
              name.setFocus();
              name.setText(path);
              static_cast<QDialog&>(dialog).accept();
          }) {}

    QString Offered;
    QList<QUrl> Places;
};
