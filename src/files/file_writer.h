#pragma once

#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace files {

// Whether a file takes the old one's place when it is complete, or is written where it is, from the beginning on, so
// that all that has been written by then is there if the program ends.
enum class Writing { WhenComplete, InPlace };

// Writes a file that takes the place of one of the same name only when it is complete. Until then the old file stays as
// it was, and what was written is dropped if it is never committed.
//
// A file that is replaced keeps its owner, its group, its mode (on Windows its access list and attributes) and its
// other names (hard links). Where a new file cannot have them, or the folder does not let it take the old one's place,
// the old file is written over, after room for the new content has been made sure of; a complete copy of it lies beside
// the file, or among the temporary files, until that is done. A link is followed. A device takes what is written to it
// at once. A pipe is refused, since nobody might read it, and so is a file that is standard output or standard error:
// what is printed would be lost with it.
class FileWriter {
public:
    // Nothing is written yet, but a file that is written in place is empty from here on. Commit says what is wrong with
    // the path.
    explicit FileWriter(const std::filesystem::path& path, Writing how = Writing::WhenComplete);
    ~FileWriter();

    FileWriter(const FileWriter&) = delete;
    FileWriter& operator=(const FileWriter&) = delete;

    // False once something has gone wrong; nothing more need be written then.
    bool Write(std::string_view bytes);

    // Puts the file in its place. Gives nothing on success, and otherwise the reason in words.
    std::optional<std::string> Commit();

private:
    class Output;
    std::unique_ptr<Output> output_;
};

// Whether standard input comes from this file. It need not exist.
bool IsStandardInput(const std::filesystem::path& path);

// Makes the bytes the whole content of the file, in the same way.
inline std::optional<std::string> WriteFile(const std::filesystem::path& path, std::string_view bytes) {
    FileWriter writer(path);
    writer.Write(bytes);
    return writer.Commit();
}

}  // namespace files
