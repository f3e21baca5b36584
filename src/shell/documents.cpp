#include "shell/documents.h"

#include <QCoreApplication>

namespace shell {

QString DocumentPath(const QString& name) {
#if defined(Q_OS_WIN)
    constexpr auto folder = "/";
#else
    constexpr auto folder = "/../share/doc/velmora/";
#endif
    return QCoreApplication::applicationDirPath() + folder + name;
}

}  // namespace shell
