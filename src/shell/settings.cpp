#include "shell/settings.h"

#include <QDateTime>
#include <QFile>
#include <QFileInfo>
#include <QSettings>
#include <QStandardPaths>

#include "files/file_reader.h"

namespace shell {

namespace {

const QString countKey = QStringLiteral("meminfo/colcount");

QString StartKey(int index) {
    return "meminfo/" + QString::number(index);
}

QString StorePath() {
    return QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation) + "/Velmora/Velmora.conf";
}

// Qt waits half a minute for a lock that somebody left behind. A store is locked for some milliseconds only, so one
// that is older than this many seconds belongs to nobody.
void RemoveStaleLock(const QString& path) {
    constexpr qint64 longestHold = 2;
    const QFileInfo lock(path);
    const qint64 age = lock.lastModified().secsTo(QDateTime::currentDateTime());
    if (lock.exists() && (age < 0 || age > longestHold)) QFile::remove(lock.filePath());
}

}  // namespace

panels::ColumnList ReadColumns() {
    const QString path = StorePath();
    if (!files::IsFileOrNothing(path.toStdU16String())) return {};
    const QSettings store(path, QSettings::IniFormat);
    return panels::ColumnList::Restored(
        store.value(countKey, "3").toString().toStdString(), [&store](int index, const std::string& fallback) {
            return store.value(StartKey(index), QString::fromStdString(fallback)).toString().toStdString();
        });
}

// Keys of columns that were removed stay in the store; the count says that they are not to be read.
void SaveColumns(const panels::ColumnList& columns) {
    const QString path = StorePath();
    const QString lock = path + ".lock";
    RemoveStaleLock(lock);
    if (!files::IsFileOrNothing(path.toStdU16String()) || !files::IsFileOrNothing(lock.toStdU16String())) return;
    QSettings store(path, QSettings::IniFormat);
    store.setValue(countKey, QString::number(columns.ColCount()));
    for (int index = 0; index < columns.ColCount(); ++index)
        store.setValue(StartKey(index),
                       QString::fromStdString(columns.ColumnStarts()[static_cast<std::size_t>(index)]));
    store.sync();
}

}  // namespace shell
