#include <cerrno>
#include <fstream>
#include <utility>

#include "files/file_writer.h"
#include "files/writing.h"

namespace files {

class FileWriter::Output {
public:
    Output(const std::filesystem::path& path, Writing how) { Open(path, how); }

    ~Output() {
        copy_.close();
        std::error_code error;
        if (!copyPath_.empty()) std::filesystem::remove(copyPath_, error);
    }

    Output(const Output&) = delete;
    Output& operator=(const Output&) = delete;

    bool Write(std::string_view bytes) {
        copy_.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
        if (problem_.empty() && !copy_) Fail("There is no room for it.");
        return problem_.empty();
    }

    std::optional<std::string> Commit() {
        copy_.close();
        if (problem_.empty() && !copy_) Fail("There is no room for it.");
        if (problem_.empty() && !isInPlace_) PutInPlace();
        if (problem_.empty()) return std::nullopt;
        return problem_;
    }

private:
    void Fail(std::string reason) { problem_ = std::move(reason); }

    void Open(const std::filesystem::path& path, Writing how) {
        std::error_code error;
        const std::filesystem::file_status status = std::filesystem::status(path, error);
        exists_ = std::filesystem::exists(status);
        if (error && status.type() != std::filesystem::file_type::not_found) return Fail(error.message());
        if (is_directory(status)) return Fail(Reason(EISDIR));
        if (exists_ && !is_regular_file(status)) return Fail("It is not an ordinary file.");
        const bool isReadOnly =
            (status.permissions() & std::filesystem::perms::owner_write) == std::filesystem::perms{};
        if (exists_ && isReadOnly) return Fail(Reason(EACCES));
        isInPlace_ = how == Writing::InPlace;
        path_ = is_symlink(symlink_status(path, error)) ? canonical(path, error) : path;
        if (!isInPlace_) copyPath_ = NameForCopy(path_.parent_path());
        errno = 0;
        copy_.open(isInPlace_ ? path_ : copyPath_, std::ios::binary);
        if (!copy_) Fail(Reason(errno));
    }

    void PutInPlace() {
        std::error_code error;
        const bool hasOtherNames = exists_ && std::filesystem::hard_link_count(path_, error) > 1;
        if (hasOtherNames) {
            std::filesystem::copy_file(copyPath_, path_, std::filesystem::copy_options::overwrite_existing, error);
        } else {
            if (exists_) std::filesystem::permissions(copyPath_, std::filesystem::status(path_).permissions(), error);
            std::filesystem::rename(copyPath_, path_, error);
        }
        if (error) Fail(error.message());
    }

    std::filesystem::path path_;
    std::filesystem::path copyPath_;
    std::ofstream copy_;
    bool exists_ = false;
    bool isInPlace_ = false;
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

}  // namespace files
