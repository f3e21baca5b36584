#include "platform/event_loop.h"

#include <QCoreApplication>

namespace platform {

void Yield() {
    QCoreApplication::processEvents(QEventLoop::AllEvents);
}

}  // namespace platform
