#include "shell/settings.h"

#include "platform/settings_store.h"

namespace shell {

namespace {

const QString application = QStringLiteral("Velmora");
const QString section = QStringLiteral("meminfo");
const QString countKey = QStringLiteral("colcount");

}  // namespace

panels::ColumnList ReadColumns() {
    const QString count = platform::GetSetting(application, section, countKey, "3");
    return panels::ColumnList::Restored(count.toStdString(), [](int index, const std::string& fallback) {
        const QString key = QString::number(index);
        return platform::GetSetting(application, section, key, QString::fromStdString(fallback)).toStdString();
    });
}

// Keys of columns that were removed stay in the store; the count tells that they are not to be read.
void SaveColumns(const panels::ColumnList& columns) {
    QMap<QString, QString> values{{countKey, QString::number(columns.ColCount())}};
    for (int index = 0; index < columns.ColCount(); ++index)
        values[QString::number(index)] =
            QString::fromStdString(columns.ColumnStarts()[static_cast<std::size_t>(index)]);
    platform::SaveSettings(application, section, values);
}

}  // namespace shell
