#pragma once

#include <filesystem>
#include <random>
#include <string>
#include <system_error>

// What the writers of all systems share.
namespace files {

// A name in the folder that no other file has, for the copy that is written first.
inline std::filesystem::path NameForCopy(const std::filesystem::path& folder) {
    static std::random_device random;
    return folder / (".velmora-" + std::to_string(random()) + std::to_string(random()));
}

inline std::string Reason(int errorNumber) {
    return std::generic_category().message(errorNumber);
}

}  // namespace files
