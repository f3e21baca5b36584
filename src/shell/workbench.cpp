#include "shell/workbench.h"

#include "platform/file_dialog.h"
#include "platform/palette.h"
#include "shell/documents.h"

namespace shell {

// The process ends in the exit sequence of the main window, and not because a window was closed.
void Prepare(QApplication& application) {
    QApplication::setApplicationName("Velmora");
    QApplication::setDesktopFileName("velmora");
    QApplication::setWindowIcon(QIcon(":/velmora.svg"));
    QApplication::setQuitOnLastWindowClosed(false);
    platform::ApplyFixedAppearance(application);
    for (const char* const folder : {"examples", "labs"}) platform::FileDialog::AddPlace(DocumentPath(folder));
}

Workbench::Workbench(std::function<void()> endProcess)
    : Window(
          *Machine, *CodeMap, [this] { Splash.ShowAbout(); }, std::move(endProcess)) {}

void Workbench::Start(const QString& file) {
    Window.showMaximized();
    Splash.ShowAtStart();
    if (!file.isEmpty()) Window.Open(file);
}

}  // namespace shell
