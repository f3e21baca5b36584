#pragma once

#include <QMap>
#include <QString>

namespace platform {

// The user's settings: text values by application, section and key.
QString GetSetting(const QString& application, const QString& section, const QString& key, const QString& fallback);

// Stores all of the values at once, so that they outlast the process.
void SaveSettings(const QString& application, const QString& section, const QMap<QString, QString>& values);

}  // namespace platform
