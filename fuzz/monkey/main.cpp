// Uses the whole window at random and looks between any two events for what must not be. Under the sanitizers it also
// finds what they find.
//
//   velmora_monkey EVENTS [SEED]

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <cstdio>

#include "monkey.h"

namespace {

void PutFile(const QString& name, const QByteArray& content) {
    QFile file(name);
    if (file.open(QIODevice::WriteOnly)) file.write(content);
}

}  // namespace

int main(int argc, char** argv) {
    const QTemporaryDir settings;
    qputenv("XDG_CONFIG_HOME", settings.path().toUtf8());
    qputenv("PATH", "");  // no calculator and no browser is to be found
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication application(argc, argv);
    shell::Prepare(application);

    const QTemporaryDir folder;
    QDir::setCurrent(folder.path());
    PutFile("p0.asm", "mvi a,5\r\nsta 9000\r\nhlt\r\n");
    PutFile("p1.asm", "loop: inr a\nout 3\njmp loop\n");
    PutFile("good.dat", "; a table\r\n8000 : 3E 5 76\r\n90F0 : 1 2 3\r\n");
    PutFile("bad.dat", "8000 : 11 22 33\r\n9000 : 44 80000000\r\n");
    PutFile("noise.dat", QByteArray("\0\xFF:\r\n\xE2\x80\xA8", 8).repeated(50));

    int events = argc > 1 ? QByteArray(argv[1]).toInt() : 3000;
    unsigned seed = argc > 2 ? QByteArray(argv[2]).toUInt() : std::random_device()();
    std::printf("%d events from seed %u\n", events, seed);
    std::fflush(stdout);
    // The exit sequence may come sooner than its turn; then the program is started again.
    while (events > 0) events = Monkey(events, seed++, folder.path()).Use();
    std::puts("All events done.");
    return 0;
}
