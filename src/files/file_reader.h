#pragma once

#include <cstddef>
#include <filesystem>
#include <istream>
#include <string>

namespace files {

// The largest program or data file that is read whole, in bytes. A larger file is neither.
inline constexpr std::size_t LargestFile = 16 * 1024 * 1024;

// Whether an ordinary file is there, or nothing at all. A pipe or a device in its place would hold up whoever opens it.
bool IsFileOrNothing(const std::filesystem::path& path);

struct Content {
    std::string Bytes;
    std::string Problem;  // why the file could not be read, in words; empty on success
    bool IsTooLarge = false;
};

// Reads a whole regular file. Folders, devices and pipes are refused, since reading them might never end, and so is a
// file of more than `largest` bytes.
Content ReadFile(const std::filesystem::path& path, std::size_t largest = LargestFile);

// The same, but pipes and devices are read too, for whoever can wait for their end.
Content ReadFileOrPipe(const std::filesystem::path& path, std::size_t largest = LargestFile);

// Reads a stream to its end, under the same limit.
Content ReadStream(std::istream& stream, std::size_t largest = LargestFile);

}  // namespace files
