#include "console/memory_file.h"

#include <array>
#include <ctime>

#include "machine/number_format.h"

namespace console {

namespace {

// Length, address, type and data, then what makes the sum of all of them 0 in its low byte.
void AppendRecord(std::string& text, std::string_view bytes) {
    unsigned sum = 0;
    text += ':';
    for (const char byte : bytes) {
        sum += static_cast<unsigned char>(byte);
        text += m8085::FormatHexByte(static_cast<std::uint8_t>(byte));
    }
    text += m8085::FormatHexByte(static_cast<std::uint8_t>(-sum & 0xFF)) + "\r\n";
}

std::string ComposeBinary(memedata::AddressRange range, const m8085::MemoryBytes& memory) {
    if (range.First > range.Last) return {};
    return {memory.begin() + range.First, memory.begin() + range.Last + 1};
}

std::string ComposeIntelHex(memedata::AddressRange range, const m8085::MemoryBytes& memory) {
    constexpr std::size_t longestRecord = 16;
    constexpr std::string_view endOfFile("\x00\x00\x00\x01", 4);
    const std::string bytes = ComposeBinary(range, memory);
    std::string text;
    for (std::size_t done = 0; done < bytes.size(); done += longestRecord) {
        const std::string_view data = std::string_view(bytes).substr(done, longestRecord);
        const std::size_t address = range.First + done;
        std::string record = {static_cast<char>(data.size()), static_cast<char>(address >> 8),
                              static_cast<char>(address & 0xFF), '\0'};
        AppendRecord(text, record += data);
    }
    AppendRecord(text, endOfFile);
    return text;
}

std::string Now(const char* format) {
    const std::time_t now = std::time(nullptr);
    std::array<char, 40> text{};
    const std::size_t length = std::strftime(text.data(), text.size(), format, std::localtime(&now));
    return {text.data(), length};
}

}  // namespace

std::string Compose(const MemoryFile& file, const Simulation& simulation) {
    const m8085::MemoryBytes& memory = simulation.Machine.Memory;
    std::vector<memedata::AddressRange> ranges = file.Ranges;
    if (ranges.empty() && simulation.HasInstructions()) ranges.push_back(simulation.ProgramRange());
    if (file.As == MemoryFile::Format::DataFile)
        return memedata::ComposeDataFile(ranges, memory, Now("%Y-%m-%d"), Now("%H:%M:%S"));
    const memedata::AddressRange range = ranges.empty() ? memedata::AddressRange{1, 0} : ranges.front();
    return file.As == MemoryFile::Format::Binary ? ComposeBinary(range, memory) : ComposeIntelHex(range, memory);
}

}  // namespace console
