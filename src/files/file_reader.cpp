#include "files/file_reader.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <fstream>
#include <system_error>

namespace files {

bool IsFileOrNothing(const std::filesystem::path& path) {
    std::error_code error;
    const std::filesystem::file_status status = std::filesystem::status(path, error);
    return is_regular_file(status) || !exists(status);
}

Content ReadStream(std::istream& stream, std::size_t largest) {
    Content content;
    std::array<char, 0x10000> block;
    while (stream && content.Bytes.size() <= largest) {
        const std::size_t wanted = std::min(block.size(), largest + 1 - content.Bytes.size());
        stream.read(block.data(), static_cast<std::streamsize>(wanted));
        content.Bytes.append(block.data(), static_cast<std::size_t>(stream.gcount()));
    }
    if (content.Bytes.size() > largest) return {{}, "It has more than " + std::to_string(largest) + " bytes.", true};
    if (!stream.eof()) return {{}, "It could not be read to its end.", false};
    return content;
}

Content ReadFile(const std::filesystem::path& path, std::size_t largest) {
    std::error_code error;
    if (std::filesystem::is_other(path, error)) return {{}, "It is not an ordinary file.", false};
    return ReadFileOrPipe(path, largest);
}

Content ReadFileOrPipe(const std::filesystem::path& path, std::size_t largest) {
    std::error_code error;
    const std::filesystem::file_status status = std::filesystem::status(path, error);
    if (error) return {{}, error.message(), false};
    if (is_directory(status)) return {{}, "It is a folder.", false};
    errno = 0;
    std::ifstream file(path, std::ios::binary);
    if (!file) return {{}, std::generic_category().message(errno), false};
    return ReadStream(file, largest);
}

}  // namespace files
