#pragma once

#include <functional>
#include <memory>

#include "execution/command_state.h"
#include "platform/modal.h"
#include "platform/program_text.h"
#include "shell/workbench.h"
#include "support/window_test.h"

namespace shell {

struct Store : QSettings {
    Store() : QSettings(QSettings::NativeFormat, QSettings::UserScope, "Velmora", "Velmora") {}
    void Put(const QString& key, const QString& text) { setValue("meminfo/" + key, text); }
    QString Get(const QString& key) { return value("meminfo/" + key).toString(); }
};

// The whole program. The exit sequence ends in a count instead of the end of the process.
class MainWindowTest : public testing::Test {
protected:
    MainWindowTest() { Store().clear(); }

    void Start() {
        workbench = std::make_unique<Workbench>([this] { ++exits; });
        window = &workbench->Window;
        machine = workbench->Machine.get();
        Activate(*window);
    }

    void StartWith(std::u16string_view program) {
        Start();
        Editor().SetText(program);
        Click("cmdCompile");
    }

    template <class Control>
    Control& Find(const QString& name) {
        auto* control = window->findChild<Control*>(name);
        if (control == nullptr) throw std::runtime_error("no control " + name.toStdString());
        return *control;
    }

    platform::ProgramText& Editor() { return Find<platform::ProgramText>("txtCode"); }
    QPushButton& Button(const QString& name) { return Find<QPushButton>(name); }
    QAbstractItemModel& Cells() { return *Find<QTableView>("grdRAM").model(); }
    QString Cell(int row, int column) { return Cells().index(row, column).data().toString(); }
    QString Register(const QString& name) { return Find<QLineEdit>("txt" + name).text(); }
    void Click(const QString& name) { QTest::mouseClick(&Button(name), Qt::LeftButton); }

    // What is shown in all windows: of each control what it says, whether it can be used, and where keys go.
    static QStringList Seen() {
        QCoreApplication::processEvents();
        QStringList seen{QApplication::activeWindow() == nullptr ? "" : QApplication::activeWindow()->windowTitle()};
        for (const QWidget* control : QApplication::allWidgets()) {
            if (!control->isVisible() || control->objectName().isEmpty()) continue;
            QStringList facts{control->objectName(), control->accessibleName()};
            for (const char* said : {"text", "title", "plainText", "count"})
                facts += control->property(said).toString();
            if (!control->isEnabled()) facts += "disabled";
            if (control->window()->focusWidget() == control) facts += "focused";
            seen += facts.join('|');
        }
        seen.sort();
        return seen;
    }

    // What the enabled buttons show.
    execution::CommandState State() {
        if (Button("cmdHalt").isEnabled()) return execution::CommandState::Running;
        return Button("cmdRun").isEnabled() ? execution::CommandState::ProgramAssembled
                                            : execution::CommandState::NoProgram;
    }

    // Acts once, from inside the next run.
    static void DuringTheRun(std::function<void()> action) { QTimer::singleShot(0, std::move(action)); }

    std::unique_ptr<Workbench> workbench;
    frmMain* window = nullptr;
    m8085::MachineState* machine = nullptr;
    int exits = 0;
};

}  // namespace shell
