#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <utility>

#include "files/file_writer.h"
#include "files/writing.h"

namespace files {

namespace {

// An open file. Closes it at the end, whether or not the writing succeeded.
class Descriptor {
public:
    Descriptor() = default;
    ~Descriptor() { Close(); }
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;

    bool Open(const std::filesystem::path& path, int flags, mode_t mode = 0) {
        Close();
        number_ = ::open(path.c_str(), flags | O_CLOEXEC | O_NOCTTY, mode);
        return IsOpen();
    }

    bool IsOpen() const { return number_ >= 0; }
    int Number() const { return number_; }

    // False where the system had something left to write and could not.
    bool Close() {
        const int number = std::exchange(number_, -1);
        return number < 0 || ::close(number) == 0 || errno == EINTR;
    }

    // Some files, such as devices, have nothing that could be brought to the disk.
    bool Synchronize() const { return ::fsync(number_) == 0 || errno == EINVAL || errno == ENOTSUP; }

    // At the offset given, or at the current one for -1. A disk that fills up takes a part at first, and gives the
    // reason only when the rest is written.
    bool Write(std::string_view bytes, off_t place = -1) const {
        while (!bytes.empty()) {
            const ssize_t written = place < 0 ? ::write(number_, bytes.data(), bytes.size())
                                              : ::pwrite(number_, bytes.data(), bytes.size(), place);
            if (written < 0 && errno == EINTR) continue;
            if (written < 0) return false;
            bytes.remove_prefix(static_cast<std::size_t>(written));
            if (place >= 0) place += written;
        }
        return true;
    }

    // Sees that so many bytes from its beginning have their room, also where a sparse file has none yet. The content
    // stays and is followed by zeros. Also true where the system cannot reserve room.
    bool Reserve([[maybe_unused]] off_t size) const {
#if defined(_POSIX_ADVISORY_INFO) && _POSIX_ADVISORY_INFO > 0
        const int error = size > 0 ? ::posix_fallocate(number_, 0, size) : 0;
        if (error != 0 && error != EINVAL && error != EOPNOTSUPP) {
            errno = error;
            return false;
        }
#endif
        return true;
    }

    // Takes the bytes from `first` up to and without `end` from the other file's same place.
    bool TakeFrom(const Descriptor& other, off_t first, off_t end) const {
        std::array<char, 0x10000> block;
        while (first < end) {
            const auto wanted = static_cast<std::size_t>(std::min<off_t>(block.size(), end - first));
            const ssize_t count = ::pread(other.number_, block.data(), wanted, first);
            if (count < 0 && errno == EINTR) continue;
            if (count == 0) errno = EIO;
            if (count <= 0 || !Write({block.data(), static_cast<std::size_t>(count)}, first)) return false;
            first += count;
        }
        return true;
    }

private:
    int number_ = -1;
};

// Where a chain of links leads, even if nothing is there yet. The chain is known to end.
std::filesystem::path WithoutLinks(std::filesystem::path path) {
    std::error_code error;
    while (is_symlink(symlink_status(path, error))) {
        const std::filesystem::path target = read_symlink(path, error);
        if (error) break;
        path = path.parent_path() / target;
    }
    return path;
}

bool IsSame(const struct stat& one, const struct stat& other) {
    return one.st_dev == other.st_dev && one.st_ino == other.st_ino;
}

// Whether it is the same file as standard output or standard error. What is printed would be lost with the old file.
bool IsPrintedTo(const struct stat& file) {
    return std::ranges::any_of(std::array{STDOUT_FILENO, STDERR_FILENO}, [&file](int number) {
        struct stat printed {};
        return ::fstat(number, &printed) == 0 && IsSame(printed, file);
    });
}

}  // namespace

class FileWriter::Output {
public:
    Output(const std::filesystem::path& path, Writing how) { Open(path, how); }

    ~Output() {
        if (!copyPath_.empty()) ::unlink(copyPath_.c_str());
    }

    bool Write(std::string_view bytes) {
        if (problem_.empty() && !copy_.Write(bytes)) Fail(Reason(errno));
        return problem_.empty();
    }

    std::optional<std::string> Commit() {
        if (problem_.empty() && !copy_.Synchronize()) Fail(Reason(errno));
        if (problem_.empty()) PutInPlace();
        if (!copy_.Close() && problem_.empty()) Fail(Reason(errno));
        if (problem_.empty()) return std::nullopt;
        return problem_;
    }

private:
    void Fail(std::string reason) { problem_ = std::move(reason); }

    void Open(const std::filesystem::path& path, Writing how) {
        struct stat old {};
        exists_ = ::stat(path.c_str(), &old) == 0;
        if (!exists_ && errno != ENOENT) return Fail(Reason(errno));
        if (exists_ && S_ISDIR(old.st_mode)) return Fail(Reason(EISDIR));
        if (exists_ && S_ISFIFO(old.st_mode)) return Fail("It is a pipe.");
        const bool isDevice = exists_ && !S_ISREG(old.st_mode);
        if (exists_ && !isDevice && IsPrintedTo(old)) return Fail("It is what the program prints to.");
        isInPlace_ = isDevice || how == Writing::InPlace;
        if (isInPlace_) {
            if (!copy_.Open(path, O_WRONLY | (isDevice ? 0 : O_CREAT | O_TRUNC), 0666)) Fail(Reason(errno));
            return;
        }
        if (exists_ && ::faccessat(AT_FDCWD, path.c_str(), W_OK, AT_EACCESS) != 0) return Fail(Reason(errno));
        path_ = WithoutLinks(path);
        OpenCopy();
    }

    // Nobody may read the new content of an old file before it has that file's mode.
    void OpenCopy() {
        constexpr int flags = O_RDWR | O_CREAT | O_EXCL | O_NOFOLLOW;
        copyPath_ = NameForCopy(path_.parent_path());
        liesBeside_ = copy_.Open(copyPath_, flags, exists_ ? 0600 : 0666);
        if (liesBeside_) return;
        const int reason = errno;
        copyPath_.clear();
        std::error_code error;
        const std::filesystem::path elsewhere = NameForCopy(std::filesystem::temp_directory_path(error));
        if (!exists_ || error || !copy_.Open(elsewhere, flags, 0600)) return Fail(Reason(reason));
        copyPath_ = elsewhere;
    }

    void PutInPlace() {
        if (isInPlace_) return;
        struct stat old {};
        const bool exists = ::stat(path_.c_str(), &old) == 0;
        if (liesBeside_ && (!exists || BecomesLike(old)) && ::rename(copyPath_.c_str(), path_.c_str()) == 0)
            copyPath_.clear();
        else if (exists)
            WriteOver();
        else
            Fail(Reason(errno));
    }

    // Whether the copy could take over all that the old file is but its content.
    bool BecomesLike(const struct stat& old) const {
        struct stat own {};
        if (old.st_nlink > 1 || ::fstat(copy_.Number(), &own) != 0) return false;
        const bool sameOwner = own.st_uid == old.st_uid && own.st_gid == old.st_gid;
        if (!sameOwner && ::fchown(copy_.Number(), old.st_uid, old.st_gid) != 0) return false;
        return ::fchmod(copy_.Number(), old.st_mode & 07777) == 0;
    }

    // Where the room could not be reserved, what goes beyond the old file's end is most likely to lack it: it is
    // written first, and leaves the old content alone.
    void WriteOver() {
        Descriptor target;
        struct stat old {};
        struct stat copy {};
        if (!target.Open(path_, O_WRONLY | O_NOFOLLOW) || ::fstat(target.Number(), &old) != 0 ||
            ::fstat(copy_.Number(), &copy) != 0)
            return Fail(Reason(errno));
        if (!target.Reserve(copy.st_size) || !target.TakeFrom(copy_, old.st_size, copy.st_size) ||
            !target.Synchronize()) {
            const int reason = errno;
            [[maybe_unused]] const int asBefore = ::ftruncate(target.Number(), old.st_size);
            return Fail(Reason(reason));
        }
        const off_t head = std::min(old.st_size, copy.st_size);
        if (target.TakeFrom(copy_, 0, head) && ::ftruncate(target.Number(), copy.st_size) == 0 &&
            target.Synchronize() && target.Close())
            return;
        Fail(Reason(errno) + ". What was to be written is in " + copyPath_.string());
        copyPath_.clear();
    }

    std::filesystem::path path_;
    std::filesystem::path copyPath_;  // empty where there is nothing to remove at the end
    Descriptor copy_;                 // what is written goes here: into the file itself if it is written in place
    bool exists_ = false;
    bool isInPlace_ = false;
    bool liesBeside_ = false;
    std::string problem_;
};

FileWriter::FileWriter(const std::filesystem::path& path, Writing how) : output_(std::make_unique<Output>(path, how)) {}

FileWriter::~FileWriter() = default;

bool FileWriter::Write(std::string_view bytes) {
    return output_->Write(bytes);
}

std::optional<std::string> FileWriter::Commit() {
    return output_->Commit();
}

bool IsStandardInput(const std::filesystem::path& path) {
    struct stat file {};
    struct stat input {};
    return ::stat(path.c_str(), &file) == 0 && ::fstat(STDIN_FILENO, &input) == 0 && IsSame(file, input);
}

}  // namespace files
