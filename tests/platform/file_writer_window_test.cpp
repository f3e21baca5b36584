#include "platform/file_writer.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>

#ifdef Q_OS_UNIX
#include <sys/resource.h>

#include <cerrno>
#include <csignal>
#include <cstring>
#endif

namespace platform {

class FileWriterTest : public testing::Test {
protected:
    QByteArray Content() const {
        QFile file(path);
        EXPECT_TRUE(file.open(QIODevice::ReadOnly));
        return file.readAll();
    }

    QTemporaryDir directory;
    const QString path = directory.filePath("program.asm");
};

TEST_F(FileWriterTest, ReplacesTheWholeContentAndLeavesNothingElseBehind) {
    EXPECT_EQ(WriteFile(path, "a longer text\r\n"), std::nullopt);
    EXPECT_EQ(WriteFile(path, QByteArray("\xFF\0\n", 3)), std::nullopt);
    EXPECT_EQ(Content(), QByteArray("\xFF\0\n", 3));
    EXPECT_EQ(WriteFile(path, ""), std::nullopt);
    EXPECT_EQ(Content(), "");
    EXPECT_EQ(QDir(directory.path()).entryList(QDir::Files).size(), 1);
}

TEST_F(FileWriterTest, GivesTheReasonWhereAFileCannotBe) {
    EXPECT_NE(WriteFile(directory.path(), "text").value_or(""), "");
    EXPECT_NE(WriteFile(directory.filePath("missing/program.asm"), "text").value_or(""), "");
}

#ifdef Q_OS_UNIX
TEST_F(FileWriterTest, AFailureInTheMiddleOfWritingLeavesTheOldFile) {
    ASSERT_EQ(WriteFile(path, "old"), std::nullopt);
    rlimit before{};
    getrlimit(RLIMIT_FSIZE, &before);
    const rlimit small{1000, before.rlim_max};
    std::signal(SIGXFSZ, SIG_IGN);
    setrlimit(RLIMIT_FSIZE, &small);
    const std::optional<QString> reason = WriteFile(path, QByteArray(100'000, 'n'));
    setrlimit(RLIMIT_FSIZE, &before);
    EXPECT_EQ(reason.value_or(""), std::strerror(EFBIG));
    EXPECT_EQ(Content(), "old");
    EXPECT_EQ(QDir(directory.path()).entryList(QDir::Files).size(), 1);
}

TEST_F(FileWriterTest, ADeviceIsWrittenToAndNotReplaced) {
    if (!QFile::exists("/dev/full")) GTEST_SKIP();
    EXPECT_NE(WriteFile("/dev/full", "text").value_or(""), "");
    EXPECT_FALSE(QFileInfo("/dev/full").isFile());
}
#endif

}  // namespace platform
