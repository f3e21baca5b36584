#include "platform/settings_store.h"

#include <QSettings>

namespace platform {

QString GetSetting(const QString& application, const QString& section, const QString& key, const QString& fallback) {
    return QSettings(QSettings::NativeFormat, QSettings::UserScope, application, application)
        .value(section + '/' + key, fallback)
        .toString();
}

void SaveSettings(const QString& application, const QString& section, const QMap<QString, QString>& values) {
    QSettings store(QSettings::NativeFormat, QSettings::UserScope, application, application);
    for (auto value = values.begin(); value != values.end(); ++value)
        store.setValue(section + '/' + value.key(), value.value());
    store.sync();
}

}  // namespace platform
