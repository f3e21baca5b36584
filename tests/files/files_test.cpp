#include <gtest/gtest.h>

#include <cerrno>
#include <fstream>

#include "files/file_reader.h"
#include "files/file_writer.h"

#if defined(__unix__) || defined(__APPLE__)

#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <cstring>

namespace files {

namespace {

using std::filesystem::path;

struct FilesTest : testing::Test {
    FilesTest() {
        char name[] = "/tmp/velmora-files-XXXXXX";
        folder = ::mkdtemp(name);
        file = folder / "program.asm";
        std::ofstream(file) << "the old text";
    }
    ~FilesTest() override {
        std::filesystem::permissions(folder, std::filesystem::perms::owner_all);
        std::filesystem::remove_all(folder);
    }

    // How many files the folder has.
    void ExpectFiles(std::ptrdiff_t count) const {
        EXPECT_EQ(std::distance(std::filesystem::directory_iterator(folder), {}), count);
    }

    static struct stat Status(const path& of) {
        struct stat status {};
        EXPECT_EQ(::stat(of.c_str(), &status), 0) << of;
        return status;
    }

    static std::string Reason(int errorNumber) { return std::strerror(errorNumber); }

    path folder;
    path file;
};

// Runs `work` with a limit on the size of files, as if the disk were full beyond it.
template <class Work>
void WithRoomFor(rlim_t bytes, Work work) {
    rlimit before{};
    getrlimit(RLIMIT_FSIZE, &before);
    const rlimit small{bytes, before.rlim_max};
    std::signal(SIGXFSZ, SIG_IGN);
    setrlimit(RLIMIT_FSIZE, &small);
    work();
    setrlimit(RLIMIT_FSIZE, &before);
}

// Whether it holds for a user who may not do everything: root plays another.
template <class Work>
bool HoldsForAnother(Work work) {
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
    EXPECT_EQ(::chown(file.c_str(), isRoot ? 12345 : -1U, isRoot ? 23456 : -1U), 0);
    const struct stat before = Status(file);
    EXPECT_EQ(WriteFile(file, std::string_view("\xFF\0\n", 3)), std::nullopt);
    EXPECT_EQ(ReadFile(file).Bytes, std::string("\xFF\0\n", 3));
    const struct stat after = Status(file);
    EXPECT_NE(after.st_ino, before.st_ino);
    EXPECT_EQ(after.st_mode, before.st_mode);
    EXPECT_EQ(after.st_uid, before.st_uid);
    EXPECT_EQ(after.st_gid, before.st_gid);

    EXPECT_EQ(WriteFile(folder / "new", "text"), std::nullopt);
    EXPECT_EQ(Status(folder / "new").st_mode & 0777U, 0644U);
    ExpectFiles(2);
}

TEST_F(FilesTest, LinksAreFollowedAndOtherNamesKept) {
    std::filesystem::create_hard_link(file, folder / "other");
    std::filesystem::create_symlink("program.asm", folder / "link");
    std::filesystem::create_symlink("to come", folder / "dangling");
    std::filesystem::create_symlink("loop", folder / "loop");
    for (const std::string_view text : {"a longer text than the old one", "short"}) {
        EXPECT_EQ(WriteFile(folder / "link", text), std::nullopt);
        EXPECT_EQ(ReadFile(folder / "other").Bytes, text);
    }
    EXPECT_EQ(WriteFile(folder / "dangling", "text"), std::nullopt);
    EXPECT_EQ(ReadFile(folder / "to come").Bytes, "text");
    EXPECT_TRUE(is_symlink(folder / "dangling"));
    EXPECT_EQ(WriteFile(folder / "loop", "text"), Reason(ELOOP));
    EXPECT_EQ(ReadFile(folder / "loop").Problem, Reason(ELOOP));
    ExpectFiles(6);
}

TEST_F(FilesTest, WhatMightHoldUpItsReaderIsNeitherAFileNorNothing) {
    EXPECT_EQ(::mkfifo((folder / "pipe").c_str(), 0600), 0);
    ::alarm(20);  // ends the test where it waits for somebody to write
    EXPECT_EQ(ReadFile(folder / "pipe").Problem, "It is not an ordinary file.");
    ::alarm(0);
    for (const auto& [name, expected] : {std::pair{"program.asm", true}, {"none", true}, {"pipe", false}, {".", false}})
        EXPECT_EQ(IsFileOrNothing(folder / name), expected) << name;
}

TEST_F(FilesTest, WithoutRoomTheOldFileStaysWhole) {
    const std::string tooLong(100'000, 'n');
    std::filesystem::create_hard_link(file, folder / "other");
    {
        FileWriter writer(file);
        EXPECT_TRUE(writer.Write(tooLong));
        WithRoomFor(1000, [&] { EXPECT_EQ(writer.Commit(), Reason(EFBIG)); });
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
        EXPECT_EQ(Status(file).st_uid, 0U);
        std::ofstream(file) << "the old text";
        ExpectFiles(1);
    }
}

}  // namespace files

#elif defined(_WIN32)

#include <windows.h>

namespace files {

namespace {

struct FilesTest : testing::Test {
    FilesTest() : folder(std::filesystem::temp_directory_path() / std::to_string(::GetCurrentProcessId())) {
        std::filesystem::create_directory(folder);
        file = folder / "program.asm";
        std::ofstream(file) << "the old text";
    }
    ~FilesTest() override { std::filesystem::remove_all(folder); }

    // What happens to the file when text is written to it, and how many files there are then.
    std::string Writes(std::string_view text) {
        const std::string problem = WriteFile(file, text).value_or("");
        EXPECT_EQ(ReadFile(file).Bytes, problem.empty() ? text : "the old text");
        EXPECT_EQ(std::distance(std::filesystem::directory_iterator(folder), {}), count);
        return problem;
    }

    HANDLE OpenFor(DWORD sharing) const {
        return ::CreateFileW(file.c_str(), GENERIC_READ, sharing, nullptr, OPEN_EXISTING, 0, nullptr);
    }

    std::filesystem::path folder;
    std::filesystem::path file;
    int count = 1;
};

}  // namespace

TEST_F(FilesTest, ANewFileTakesThePlaceOfTheOldAndItsOtherNamesAreKept) {
    EXPECT_EQ(Writes("new"), "");
    ASSERT_TRUE(::CreateHardLinkW((folder / "other").c_str(), file.c_str(), nullptr));
    count = 2;
    for (const std::string_view text : {"a longer text than the old one", "short"}) {
        EXPECT_EQ(Writes(text), "");
        EXPECT_EQ(ReadFile(folder / "other").Bytes, text);
    }
}

TEST_F(FilesTest, AFileThatIsOpenElsewhereOrReadOnlyKeepsItsTextAndItIsSaidWhy) {
    const HANDLE alone = OpenFor(0);
    EXPECT_EQ(WriteFile(file, "new"), "It is open in another program.");
    ::CloseHandle(alone);
    const HANDLE reader = OpenFor(FILE_SHARE_READ | FILE_SHARE_WRITE);
    EXPECT_EQ(Writes("new"), "It is open in another program.");
    ::CloseHandle(reader);
    ::SetFileAttributesW(file.c_str(), FILE_ATTRIBUTE_READONLY);
    EXPECT_EQ(Writes("new"), "It is read-only.");
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

}  // namespace files

#endif
