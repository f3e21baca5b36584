#pragma once

#include <QApplication>
#include <QFileDialog>
#include <QInputDialog>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>
#include <QTimer>
#include <functional>

// Answers the next modal box, whatever opens it, as soon as it is there. The box must come up for `Answered` to be
// true.
class ModalAnswer {
public:
    explicit ModalAnswer(std::function<void(QWidget& box)> give) : answer(std::move(give)) {
        QObject::connect(&timer, &QTimer::timeout, [this] {
            QWidget* box = QApplication::activeModalWidget();
            if (box == nullptr) return;
            timer.stop();
            answered = true;
            answer(*box);
        });
        timer.start(0);
    }

    bool Answered() const { return answered; }

private:
    std::function<void(QWidget& box)> answer;
    QTimer timer;
    bool answered = false;
};

// Presses a button of a message box and keeps what the box said.
class MessageAnswer {
public:
    explicit MessageAnswer(QMessageBox::StandardButton button)
        : modal([this, button](QWidget& widget) {
              auto& box = dynamic_cast<QMessageBox&>(widget);
              Text = box.text();
              Caption = box.windowTitle();
              box.button(button)->click();
          }) {}

    bool Answered() const { return modal.Answered(); }

    QString Text;
    QString Caption;

private:
    ModalAnswer modal;
};

// Types a path into a file dialog and accepts it; cancels the dialog if the path is empty.
class FileAnswer : public ModalAnswer {
public:
    explicit FileAnswer(const QString& path)
        : ModalAnswer([path](QWidget& widget) {
              auto& dialog = dynamic_cast<QFileDialog&>(widget);
              if (path.isEmpty()) {
                  dialog.reject();
                  return;
              }
              dialog.findChild<QLineEdit*>("fileNameEdit")->setText(path);
              static_cast<QDialog&>(dialog).accept();
          }) {}
};
