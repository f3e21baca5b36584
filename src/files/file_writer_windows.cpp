#include <windows.h>

#include <algorithm>
#include <cerrno>
#include <utility>
#include <vector>

#include "files/file_writer.h"
#include "files/path.h"
#include "files/writing.h"

namespace files {

namespace {

// In words, for what the system says of its latest call.
std::string Words(DWORD error = ::GetLastError()) {
    switch (error) {
        case ERROR_FILE_NOT_FOUND:
        case ERROR_PATH_NOT_FOUND: return Reason(ENOENT);
        case ERROR_ACCESS_DENIED: return Reason(EACCES);
        case ERROR_DISK_FULL:
        case ERROR_HANDLE_DISK_FULL: return Reason(ENOSPC);
        case ERROR_SHARING_VIOLATION:
        case ERROR_LOCK_VIOLATION:
        case ERROR_USER_MAPPED_FILE: return "It is open in another program.";
        case ERROR_INVALID_NAME: return "It is not a name that a file can have.";
        default: return std::system_category().message(static_cast<int>(error));
    }
}

// The whole path, in the form in which it may have more than 260 characters. A name that belongs to a device, such as
// NUL, becomes that device.
std::wstring WholePath(const std::filesystem::path& path) {
    const DWORD room = ::GetFullPathNameW(path.c_str(), 0, nullptr, nullptr);
    std::wstring whole(room, L'\0');
    whole.resize(::GetFullPathNameW(path.c_str(), room, whole.data(), nullptr));
    const auto begins = [&whole](std::wstring_view with) { return whole.starts_with(with); };
    if (begins(LR"(\\?\)") || begins(LR"(\\.\)")) return whole;
    return begins(LR"(\\)") ? LR"(\\?\UNC)" + whole.substr(1) : LR"(\\?\)" + whole;
}

// What is written to "nul.asm" would be gone, and "com1" may be a serial port. Who writes NUL alone, or a path that
// begins as those of devices do, means it.
bool IsDeviceByAccident(std::filesystem::path path) {
    constexpr std::wstring_view device = LR"(\\.\)";
    return WholePath(path).starts_with(device) && !path.make_preferred().native().starts_with(device) &&
           ::_wcsicmp(path.filename().c_str(), L"NUL") != 0;
}

// As people write it.
std::wstring WithoutPrefix(const std::wstring& whole) {
    constexpr std::wstring_view prefix = LR"(\\?\)";
    return whole.starts_with(prefix) ? whole.substr(prefix.size()) : whole;
}

// An open file. Closes it at the end, whether or not the writing succeeded.
class Handle {
public:
    Handle() = default;
    ~Handle() { Close(); }
    Handle(const Handle&) = delete;
    Handle& operator=(const Handle&) = delete;

    bool Open(const std::wstring& path, DWORD access, DWORD sharing, DWORD how,
              SECURITY_ATTRIBUTES* security = nullptr) {
        Close();
        handle_ = ::CreateFileW(path.c_str(), access, sharing, security, how, FILE_ATTRIBUTE_NORMAL, nullptr);
        return handle_ != INVALID_HANDLE_VALUE;
    }

    bool Close() {
        const HANDLE handle = std::exchange(handle_, INVALID_HANDLE_VALUE);
        return handle == INVALID_HANDLE_VALUE || ::CloseHandle(handle) != 0;
    }

    bool IsDevice() const { return ::GetFileType(handle_) != FILE_TYPE_DISK; }
    bool Synchronize() const { return ::FlushFileBuffers(handle_) != 0; }

    // All zeros where nothing is known of it, as of a device.
    BY_HANDLE_FILE_INFORMATION Information() const {
        BY_HANDLE_FILE_INFORMATION information{};
        ::GetFileInformationByHandle(handle_, &information);
        return information;
    }

    // The path to which links have led. Empty where the file's system does not tell.
    std::wstring Path() const {
        std::wstring path(::GetFinalPathNameByHandleW(handle_, nullptr, 0, FILE_NAME_NORMALIZED), L'\0');
        const auto room = static_cast<DWORD>(path.size());
        path.resize(std::min(room, ::GetFinalPathNameByHandleW(handle_, path.data(), room, FILE_NAME_NORMALIZED)));
        return path;
    }

    bool Write(std::string_view bytes) const {
        constexpr std::size_t most = 0x1000000;
        while (!bytes.empty()) {
            DWORD written = 0;
            const auto wanted = static_cast<DWORD>(std::min(bytes.size(), most));
            if (::WriteFile(handle_, bytes.data(), wanted, &written, nullptr) == 0) return false;
            bytes.remove_prefix(written);
        }
        return true;
    }

    // The file ends at so many bytes from its beginning, and is written and read from its beginning on.
    bool SetSize(std::int64_t size) const { return GoTo(size) && ::SetEndOfFile(handle_) != 0 && GoTo(0); }

    std::int64_t Size() const {
        LARGE_INTEGER size{};
        ::GetFileSizeEx(handle_, &size);
        return size.QuadPart;
    }

    // Puts the other file's bytes over its own, from the beginning on.
    bool TakeFrom(const Handle& other) const {
        std::vector<char> block(0x10000);
        DWORD count = 0;
        if (!GoTo(0) || !other.GoTo(0)) return false;
        do {
            const auto wanted = static_cast<DWORD>(block.size());
            if (::ReadFile(other.handle_, block.data(), wanted, &count, nullptr) == 0) return false;
            if (!Write({block.data(), count})) return false;
        } while (count > 0);
        return true;
    }

private:
    bool GoTo(std::int64_t place) const {
        LARGE_INTEGER distance{};
        distance.QuadPart = place;
        return ::SetFilePointerEx(handle_, distance, nullptr, FILE_BEGIN) != 0;
    }

    HANDLE handle_ = INVALID_HANDLE_VALUE;
};

// Who may do what with a file, for another that is made. Nothing where that cannot be found out.
std::vector<char> AccessListOf(const std::wstring& path) {
    DWORD size = 0;
    ::GetFileSecurityW(path.c_str(), DACL_SECURITY_INFORMATION, nullptr, 0, &size);
    std::vector<char> list(size);
    if (::GetFileSecurityW(path.c_str(), DACL_SECURITY_INFORMATION, list.data(), size, &size) == 0) list.clear();
    return list;
}

}  // namespace

class FileWriter::Output {
public:
    Output(const std::filesystem::path& path, Writing how) { Open(path, how); }

    ~Output() {
        copy_.Close();
        if (!copyPath_.empty()) ::DeleteFileW(copyPath_.c_str());
    }

    bool Write(std::string_view bytes) {
        if (problem_.empty() && !copy_.Write(bytes)) Fail(Words());
        return problem_.empty();
    }

    std::optional<std::string> Commit() {
        if (problem_.empty() && !isDevice_ && !copy_.Synchronize()) Fail(Words());
        if (problem_.empty() && !isInPlace_) PutInPlace();
        if (!copy_.Close() && problem_.empty()) Fail(Words());
        if (problem_.empty()) return std::nullopt;
        return problem_;
    }

private:
    static constexpr DWORD toRead = FILE_SHARE_READ;
    static constexpr DWORD toAll = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;

    void Fail(std::string reason) { problem_ = std::move(reason); }

    void Open(const std::filesystem::path& path, Writing how) {
        if (IsDeviceByAccident(path)) return Fail("Windows keeps this name for a device.");
        path_ = WholePath(path);
        const DWORD attributes = ::GetFileAttributesW(path_.c_str());
        const bool exists = attributes != INVALID_FILE_ATTRIBUTES;
        if (exists && (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0) return Fail(Reason(EISDIR));
        if (exists && (attributes & FILE_ATTRIBUTE_READONLY) != 0) return Fail("It is read-only.");
        Handle old;
        const bool isOpen = old.Open(path_, GENERIC_WRITE, toAll, OPEN_EXISTING);
        if (!isOpen && ::GetLastError() != ERROR_FILE_NOT_FOUND) return Fail(Words());
        isDevice_ = isOpen && old.IsDevice();
        isInPlace_ = isDevice_ || how == Writing::InPlace;
        std::wstring linked = isOpen && !isDevice_ ? old.Path() : L"";
        if (!linked.empty()) path_ = std::move(linked);
        old.Close();
        if (!isInPlace_) return OpenCopy(isOpen);
        if (!copy_.Open(path_, GENERIC_WRITE, toRead, isDevice_ ? OPEN_EXISTING : OPEN_ALWAYS) ||
            (!isDevice_ && !copy_.SetSize(0)))
            Fail(Words());
    }

    // Nobody may read the new content of an old file who might not read the old one.
    void OpenCopy(bool exists) {
        std::vector<char> list = exists ? AccessListOf(path_) : std::vector<char>();
        SECURITY_ATTRIBUTES security{sizeof security, list.data(), FALSE};
        const auto open = [&](const std::filesystem::path& folder) {
            copyPath_ = NameForCopy(folder).wstring();
            return copy_.Open(copyPath_, GENERIC_READ | GENERIC_WRITE, toRead, CREATE_NEW,
                              list.empty() ? nullptr : &security);
        };
        liesBeside_ = open(std::filesystem::path(path_).parent_path());
        if (liesBeside_) return;
        const DWORD reason = ::GetLastError();
        std::error_code error;
        const std::filesystem::path elsewhere = std::filesystem::temp_directory_path(error);
        if (exists && !error && open(elsewhere)) return;
        copyPath_.clear();
        Fail(Words(reason));
    }

    void PutInPlace() {
        Handle old;
        const bool exists = old.Open(path_, FILE_READ_ATTRIBUTES, toAll, OPEN_EXISTING);
        const bool hasOtherNames = exists && old.Information().nNumberOfLinks > 1;
        old.Close();
        if (!liesBeside_ || hasOtherNames) return WriteOver();
        copy_.Close();
        const DWORD error = exists ? Replace() : Move(copyPath_, path_);
        if (error == ERROR_SUCCESS)
            copyPath_.clear();
        else if ((error == ERROR_UNABLE_TO_REMOVE_REPLACED || error == ERROR_UNABLE_TO_MOVE_REPLACEMENT) &&
                 copy_.Open(copyPath_, GENERIC_READ, toRead, OPEN_EXISTING))
            WriteOver();
        else if (problem_.empty())
            Fail(Words(error));
    }

    static DWORD Move(const std::wstring& from, const std::wstring& to) {
        return ::MoveFileExW(from.c_str(), to.c_str(), MOVEFILE_WRITE_THROUGH) != 0 ? ERROR_SUCCESS : ::GetLastError();
    }

    // The new file takes over the old one's access list, attributes and streams. Should it be cut off half-way, the old
    // one has its other name.
    DWORD Replace() {
        const std::wstring other = NameForCopy(std::filesystem::path(path_).parent_path()).wstring();
        const bool isReplaced =
            ::ReplaceFileW(path_.c_str(), copyPath_.c_str(), other.c_str(), 0, nullptr, nullptr) != 0;
        DWORD error = isReplaced ? ERROR_SUCCESS : ::GetLastError();
        if (error == ERROR_UNABLE_TO_MOVE_REPLACEMENT_2) {
            error = Move(copyPath_, path_);
            if (error != ERROR_SUCCESS && Move(other, path_) != ERROR_SUCCESS)
                Keep(Words(error) + ". What was there before is in " + TextOf(WithoutPrefix(other)));
        }
        if (error == ERROR_SUCCESS) ::DeleteFileW(other.c_str());
        return error;
    }

    // Room for the new content is made sure of first.
    void WriteOver() {
        Handle target;
        if (!target.Open(path_, GENERIC_WRITE, toRead, OPEN_EXISTING)) return Fail(Words());
        const std::int64_t before = target.Size();
        const std::int64_t after = copy_.Size();
        if (after > before && !target.SetSize(after)) {
            const std::string reason = Words();
            target.SetSize(before);
            return Fail(reason);
        }
        if (target.TakeFrom(copy_) && target.SetSize(after) && target.Synchronize() && target.Close()) return;
        Keep(Words());
    }

    // The copy is the only place that has the new content.
    void Keep(const std::string& reason) {
        Fail(reason + ". What was to be written is in " + TextOf(WithoutPrefix(copyPath_)));
        copyPath_.clear();
    }

    std::wstring path_;
    std::wstring copyPath_;  // empty where there is nothing to remove at the end
    Handle copy_;            // what is written goes here: into the file itself if it is written in place
    bool isDevice_ = false;
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
    Handle file;
    BY_HANDLE_FILE_INFORMATION input{};
    if (!file.Open(WholePath(path), FILE_READ_ATTRIBUTES, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE,
                   OPEN_EXISTING) ||
        ::GetFileInformationByHandle(::GetStdHandle(STD_INPUT_HANDLE), &input) == 0)
        return false;
    const BY_HANDLE_FILE_INFORMATION known = file.Information();
    return known.dwVolumeSerialNumber == input.dwVolumeSerialNumber && known.nFileIndexHigh == input.nFileIndexHigh &&
           known.nFileIndexLow == input.nFileIndexLow;
}

}  // namespace files
