#include <QApplication>
#include <QSessionManager>
#include <cstdio>
#include <cstdlib>
#include <memory>

#include "shell/start_options.h"
#include "shell/workbench.h"

#if defined(Q_OS_WIN)
#include <windows.h>
#endif

namespace {

constexpr int exitUsage = 2;

// On Windows a program with a window has no console: where the text was not sent elsewhere either, it is in a box.
bool Tell(std::FILE* stream, const std::string& text) {
#if defined(Q_OS_WIN)
    if (GetFileType(GetStdHandle(stream == stderr ? STD_ERROR_HANDLE : STD_OUTPUT_HANDLE)) == FILE_TYPE_UNKNOWN)
        return MessageBoxW(nullptr, QString::fromStdString(text).toStdWString().c_str(), L"Velmora", MB_OK) != 0;
#endif
    return std::fputs(text.c_str(), stream) >= 0 && std::fflush(stream) == 0;
}

int Refuse(const std::string& problem) {
    Tell(stderr, "velmora: " + problem + '\n');
    return exitUsage;
}

int Print(const std::string& answer) {
    return Tell(stdout, answer) ? EXIT_SUCCESS : EXIT_FAILURE;
}

// The window has light colours on every desktop, and so has its frame.
void UseLightFrame() {
#if defined(Q_OS_WIN)
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "windows:darkmode=0");
#endif
}

// The factor is for this program, and not for those that it starts.
std::unique_ptr<QApplication> MakeApplication(int& argc, char** argv, const std::string& scale) {
    constexpr auto variable = "QT_SCALE_FACTOR";
    if (scale.empty()) return std::make_unique<QApplication>(argc, argv);
    const QByteArray before = qgetenv(variable);
    qputenv(variable, scale.c_str());
    auto application = std::make_unique<QApplication>(argc, argv);
    before.isNull() ? qunsetenv(variable) : qputenv(variable, before);
    return application;
}

std::vector<std::string> WordsLeft() {
    std::vector<std::string> words;
    for (const QString& word : QCoreApplication::arguments().sliced(1)) words.push_back(word.toStdString());
    return words;
}

}  // namespace

int main(int argc, char** argv) {
    const shell::StartOptions first = shell::ReadStartOptions({argv + 1, argv + argc});
    if (!first.Problem.empty()) return Refuse(first.Problem);
    if (!first.Answer.empty()) return Print(first.Answer);
    UseLightFrame();
    auto application = MakeApplication(argc, argv, first.Scale);
    const shell::StartOptions options = shell::ReadStartOptions(WordsLeft());
    if (!options.Surplus.empty()) return Refuse(options.Surplus);

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
    workbench.Start(QString::fromStdString(options.File));
    return QApplication::exec();
}
