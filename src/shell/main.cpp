#include <QApplication>
#include <QSessionManager>
#include <cstdlib>
#include <memory>

#include "shell/workbench.h"

int main(int argc, char** argv) {
    auto application = std::make_unique<QApplication>(argc, argv);
    shell::Prepare(*application);
    // The process ends from inside whatever is going on. The application goes before it: only then are its windows gone
    // and is the clipboard handed over to the desktop, which would be empty otherwise.
    shell::Workbench workbench([&application] {
        application.reset();
        std::_Exit(EXIT_SUCCESS);
    });
    const auto commitSession = [&workbench](QSessionManager& manager) {
        const bool mayAsk = manager.allowsInteraction();
        workbench.Window.CommitSession(mayAsk);
        if (mayAsk) manager.release();
    };
    QObject::connect(application.get(), &QGuiApplication::commitDataRequest, &workbench.Window, commitSession,
                     Qt::DirectConnection);
    workbench.Start();
    return QApplication::exec();
}
