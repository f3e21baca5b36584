#pragma once

#include <QString>

namespace shell {

// The path of a file or folder among those that were installed for reading: the guide, the examples, the labs. Nothing
// may be there.
QString DocumentPath(const QString& name);

}  // namespace shell
