#include <gtest/gtest.h>

#include <cerrno>
#include <cstring>
#include <fstream>
#include <random>

#include "files/file_reader.h"
#include "files/file_writer.h"

#if defined(__unix__) || defined(__APPLE__)
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#elif defined(_WIN32)
#include <windows.h>
#endif

namespace files {

namespace {

using std::filesystem::path;

struct FilesTest : testing::Test {
    FilesTest() {
        create_directory(folder);
        std::ofstream(file) << "the old text";
    }
    ~FilesTest() override { remove_all(folder); }

    // How many files the folder has.
    void ExpectFiles(std::ptrdiff_t count) const {
        EXPECT_EQ(std::distance(std::filesystem::directory_iterator(folder), {}), count);
    }

    static std::string Reason(int errorNumber) { return std::strerror(errorNumber); }

    const path folder =
        std::filesystem::temp_directory_path() / ("velmora-files-" + std::to_string(std::random_device()()));
    const path file = folder / "program.asm";
};

}  // namespace

TEST_F(FilesTest, EveryByteIsWrittenAndReadAndTheOtherNamesOfAFileAreKept) {
    constexpr std::string_view bytes("\xFF\0\n", 3);
    EXPECT_EQ(WriteFile(file, bytes), std::nullopt);
    EXPECT_EQ(ReadFile(file).Bytes, bytes);
    ExpectFiles(1);
    create_hard_link(file, folder / "other");
    for (const std::string_view text : {"a longer text than the old one", "short"}) {
        EXPECT_EQ(WriteFile(file, text), std::nullopt);
        EXPECT_EQ(ReadFile(folder / "other").Bytes, text);
    }
    ExpectFiles(2);
}

#if defined(__unix__) || defined(__APPLE__)

namespace {

struct stat StatusOf(const path& of) {
    struct stat status {};
    EXPECT_EQ(::stat(of.c_str(), &status), 0) << of;
    return status;
}

// Whether it holds for a user who may not do everything: root plays another.
bool HoldsForAnother(const auto& work) {
    if (::geteuid() != 0) return work();
    const pid_t child = ::fork();
    if (child == 0) {
        const bool isOther = ::setegid(23456) == 0 && ::seteuid(12345) == 0;
        ::_exit(isOther && work() ? 0 : 1);
    }
    int status = -1;
    ::waitpid(child, &status, 0);
    return status == 0;
}

}  // namespace

TEST_F(FilesTest, ANewFileTakesThePlaceOfTheOldAndKeepsItsModeAndOwner) {
    ::umask(022);
    ::chmod(file.c_str(), 0666);
    const bool isRoot = ::geteuid() == 0;  // nobody else may give files away
    for (const uid_t owner : {12345U, 0U}) {
        EXPECT_EQ(::chown(file.c_str(), isRoot ? owner : -1U, isRoot ? 23456 : -1U), 0);
        const struct stat before = StatusOf(file);
        EXPECT_EQ(WriteFile(file, "text"), std::nullopt);
        const struct stat after = StatusOf(file);
        EXPECT_NE(after.st_ino, before.st_ino);
        EXPECT_EQ(after.st_mode, before.st_mode);
        EXPECT_EQ(after.st_uid, before.st_uid);
        EXPECT_EQ(after.st_gid, before.st_gid);
    }

    EXPECT_EQ(WriteFile(folder / "new", "text"), std::nullopt);
    EXPECT_EQ(StatusOf(folder / "new").st_mode & 0777U, 0644U);
    ExpectFiles(2);
}

TEST_F(FilesTest, LinksAreFollowed) {
    for (const auto& [link, target] : {std::pair{"link", "program.asm"}, {"dangling", "to come"}}) {
        create_symlink(path(target), folder / link);
        EXPECT_EQ(WriteFile(folder / link, "text"), std::nullopt);
        EXPECT_EQ(ReadFile(folder / target).Bytes, "text");
        EXPECT_TRUE(is_symlink(folder / link));
    }
    create_symlink(path("loop"), folder / "loop");
    EXPECT_EQ(WriteFile(folder / "loop", "text"), Reason(ELOOP));
    EXPECT_EQ(ReadFile(folder / "loop").Problem, Reason(ELOOP));
    ExpectFiles(5);
}

TEST_F(FilesTest, WhatMightHoldUpItsReaderIsNeitherAFileNorNothing) {
    EXPECT_EQ(::mkfifo((folder / "pipe").c_str(), 0600), 0);
    ::alarm(20);  // ends the test where it waits for somebody to write
    EXPECT_EQ(ReadFile(folder / "pipe").Problem, "It is not an ordinary file.");
    ::alarm(0);
    for (const auto& [name, expected] : {std::pair{"program.asm", true}, {"none", true}, {"pipe", false}, {".", false}})
        EXPECT_EQ(IsFileOrNothing(folder / name), expected) << name;
}

// A limit on the size of files does as a full disk would.
TEST_F(FilesTest, WithoutRoomTheOldFileStaysWhole) {
    create_hard_link(file, folder / "other");
    rlimit before{};
    getrlimit(RLIMIT_FSIZE, &before);
    const rlimit small{1000, before.rlim_max};
    std::signal(SIGXFSZ, SIG_IGN);
    {
        FileWriter writer(file);
        EXPECT_TRUE(writer.Write(std::string(100'000, 'n')));
        setrlimit(RLIMIT_FSIZE, &small);
        EXPECT_EQ(writer.Commit(), Reason(EFBIG));
        setrlimit(RLIMIT_FSIZE, &before);
    }
    EXPECT_EQ(ReadFile(file).Bytes, "the old text");
    ExpectFiles(2);
}

TEST_F(FilesTest, AProtectedFileOfOnesOwnIsNotReplaced) {
    ::chmod(file.c_str(), 0444);
    const bool isGiven =
        ::geteuid() != 0 || (::chown(file.c_str(), 12345, 23456) == 0 && ::chown(folder.c_str(), 12345, 23456) == 0);
    ASSERT_TRUE(isGiven);
    EXPECT_TRUE(HoldsForAnother([&] { return WriteFile(file, "text") == Reason(EACCES); }));
    EXPECT_EQ(ReadFile(file).Bytes, "the old text");
    ExpectFiles(1);
}

// Whoever is not root cannot replace another's file in a sticky folder, nor make one in a folder that is closed.
TEST_F(FilesTest, WhereNoNewFileCanTakeItsPlaceTheOldIsWrittenOver) {
    if (::geteuid() != 0) GTEST_SKIP() << "only root can play another user";
    ::chmod(file.c_str(), 0666);
    for (const mode_t mode : {01777, 0755}) {
        ::chmod(folder.c_str(), mode);
        EXPECT_TRUE(HoldsForAnother([&] { return WriteFile(file, "by another") == std::nullopt; })) << mode;
        EXPECT_EQ(ReadFile(file).Bytes, "by another");
        EXPECT_EQ(StatusOf(file).st_uid, 0U);
        std::ofstream(file) << "the old text";
        ExpectFiles(1);
    }
}

#elif defined(_WIN32)

TEST_F(FilesTest, AFileThatIsOpenElsewhereOrReadOnlyKeepsItsTextAndItIsSaidWhy) {
    for (const DWORD sharing : {0, FILE_SHARE_READ | FILE_SHARE_WRITE}) {
        const HANDLE reader = ::CreateFileW(file.c_str(), GENERIC_READ, sharing, nullptr, OPEN_EXISTING, 0, nullptr);
        EXPECT_EQ(WriteFile(file, "new"), "It is open in another program.");
        ::CloseHandle(reader);
        EXPECT_EQ(ReadFile(file).Bytes, "the old text");
    }
    ::SetFileAttributesW(file.c_str(), FILE_ATTRIBUTE_READONLY);
    EXPECT_EQ(WriteFile(file, "new"), "It is read-only.");
    EXPECT_EQ(ReadFile(file).Bytes, "the old text");
    ExpectFiles(1);
    ::SetFileAttributesW(file.c_str(), FILE_ATTRIBUTE_NORMAL);
    EXPECT_EQ(WriteFile(folder, "new"), "Is a directory");
    EXPECT_EQ(WriteFile(folder / "none" / "a.asm", "new"), "No such file or directory");
    EXPECT_EQ(WriteFile("NUL", "new"), std::nullopt) << "a device takes everything";
    for (const char* device : {"aux.asm", "nul.hex", "COM1"})
        EXPECT_EQ(WriteFile(folder / device, "new"), "Windows keeps this name for a device.");
}

TEST_F(FilesTest, APathMayHaveMoreThan260Characters) {
    std::wstring deep = LR"(\\?\)" + folder.wstring();
    for (int level = 0; level < 3; ++level) {
        deep += L'\\' + std::wstring(120, L'd');
        ASSERT_TRUE(::CreateDirectoryW(deep.c_str(), nullptr));
    }
    EXPECT_EQ(WriteFile(deep.substr(4) + L"\\\u03B1.asm", "new"), std::nullopt);
    EXPECT_NE(::GetFileAttributesW((deep + L"\\\u03B1.asm").c_str()), INVALID_FILE_ATTRIBUTES);
    ::DeleteFileW((deep + L"\\\u03B1.asm").c_str());
    for (int level = 0; level < 3; ++level, deep.resize(deep.rfind(L'\\'))) ::RemoveDirectoryW(deep.c_str());
}

#endif

}  // namespace files
