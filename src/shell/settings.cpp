#include "shell/settings.h"

#include <QSettings>

namespace shell {

namespace {

const QString countKey = QStringLiteral("meminfo/colcount");

QString StartKey(int index) {
    return "meminfo/" + QString::number(index);
}

struct Store : QSettings {
    Store() : QSettings(QSettings::NativeFormat, QSettings::UserScope, "Velmora", "Velmora") {}
};

}  // namespace

panels::ColumnList ReadColumns() {
    const Store store;
    return panels::ColumnList::Restored(
        store.value(countKey, "3").toString().toStdString(), [&store](int index, const std::string& fallback) {
            return store.value(StartKey(index), QString::fromStdString(fallback)).toString().toStdString();
        });
}

// Keys of columns that were removed stay in the store; the count tells that they are not to be read.
void SaveColumns(const panels::ColumnList& columns) {
    Store store;
    store.setValue(countKey, QString::number(columns.ColCount()));
    for (int index = 0; index < columns.ColCount(); ++index)
        store.setValue(StartKey(index),
                       QString::fromStdString(columns.ColumnStarts()[static_cast<std::size_t>(index)]));
    store.sync();
}

}  // namespace shell
