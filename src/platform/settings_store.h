#pragma once

#include <QString>

namespace platform {

// The user's settings: text values by application, section and key.
QString GetSetting(const QString& application, const QString& section, const QString& key, const QString& fallback);
void SaveSetting(const QString& application, const QString& section, const QString& key, const QString& value);

// Makes sure that what was saved outlasts the process.
void FlushSettings(const QString& application);

}  // namespace platform
