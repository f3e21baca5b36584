#pragma once

#include <filesystem>
#include <string>
#include <string_view>

namespace files {

// The path that a text in UTF-8 names. The text alone would be read in the code page of the system where it has one.
inline std::filesystem::path PathOf(std::string_view text) {
    return std::u8string(text.begin(), text.end());
}

// The other way round, with "/" between folders on all systems.
inline std::string TextOf(const std::filesystem::path& path) {
    const std::u8string text = path.generic_u8string();
    return {text.begin(), text.end()};
}

}  // namespace files
