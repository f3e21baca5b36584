#include "platform/settings_store.h"

#include <QSettings>

namespace platform {

QString GetSetting(const QString& application, const QString& section, const QString& key, const QString& fallback) {
    return QSettings(QSettings::NativeFormat, QSettings::UserScope, application, application)
        .value(section + '/' + key, fallback)
        .toString();
}

void SaveSetting(const QString& application, const QString& section, const QString& key, const QString& value) {
    QSettings(QSettings::NativeFormat, QSettings::UserScope, application, application)
        .setValue(section + '/' + key, value);
}

void FlushSettings(const QString& application) {
    QSettings(QSettings::NativeFormat, QSettings::UserScope, application, application).sync();
}

}  // namespace platform
