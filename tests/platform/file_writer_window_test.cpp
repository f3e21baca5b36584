#include "platform/file_writer.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#ifdef Q_OS_UNIX
#include <sys/resource.h>

#include <cerrno>
#include <csignal>
#include <cstring>
#endif

namespace platform {

TEST(FileWriter, ReplacesTheWholeContentOrGivesTheReasonAndLeavesTheOldFile) {
    const QTemporaryDir directory;
    const QString path = directory.filePath("program.asm");
    EXPECT_EQ(WriteFile(path, "a longer text\r\n"), std::nullopt);
    const QByteArray bytes("\xFF\0\n", 3);
    EXPECT_EQ(WriteFile(path, bytes), std::nullopt);
    EXPECT_NE(WriteFile(directory.path(), "text").value_or(""), "");
#ifdef Q_OS_UNIX
    rlimit before{};
    getrlimit(RLIMIT_FSIZE, &before);
    const rlimit small{1000, before.rlim_max};
    std::signal(SIGXFSZ, SIG_IGN);
    setrlimit(RLIMIT_FSIZE, &small);
    const std::optional<QString> reason = WriteFile(path, QByteArray(100'000, 'n'));
    setrlimit(RLIMIT_FSIZE, &before);
    EXPECT_EQ(reason.value_or(""), std::strerror(EFBIG));
#endif
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    EXPECT_EQ(file.readAll(), bytes);
    EXPECT_EQ(QDir(directory.path()).entryList(QDir::Files | QDir::Hidden).size(), 1);
}

}  // namespace platform
