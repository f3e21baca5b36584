#include "datafiles/memory_image.h"

#include <algorithm>
#include <memory>
#include <sstream>

#include "datafiles/data_file.h"
#include "machine/bytes.h"
#include "machine/number_format.h"
#include "machine/text.h"

namespace memedata {

namespace {

// A byte for each address, or none.
using Places = std::vector<std::optional<std::uint8_t>>;

constexpr std::string_view noByte = "there is no byte in it";

MemoryImage ImageOf(const Places& places) {
    MemoryImage image;
    bool goesOn = false;
    for (std::size_t address = 0; address < places.size(); ++address) {
        if (places[address] && !goesOn) image.Stretches.push_back({static_cast<std::int32_t>(address), {}});
        if (places[address]) image.Stretches.back().Bytes.push_back(*places[address]);
        goesOn = places[address].has_value();
    }
    if (image.Stretches.empty()) image.Problem = noByte;
    return image;
}

// Each record is a line: ":", then in hexadecimal the number of its data bytes, two bytes of address, its type, the
// data, and what makes the sum of all of them 0 in its low byte.
class IntelHexReader {
public:
    MemoryImage Read(std::string_view text) {
        for (int number = 1; const std::string_view line : m8085::LinesOf(text)) {
            const std::string problem = ReadLine(m8085::Trimmed(line));
            if (!problem.empty()) return {{}, "line " + std::to_string(number) + ": " + problem};
            ++number;
        }
        if (!isComplete_) return {{}, "its last record, :00000001FF, is missing"};
        return ImageOf(places_);
    }

private:
    enum Type : std::uint8_t { Data, EndOfFile, SegmentAddress, SegmentStart, LinearAddress, LinearStart };
    static constexpr std::size_t headLength = 4;
    static constexpr std::size_t checksumLength = 1;

    // Each gives what is wrong, or nothing.
    std::string ReadLine(std::string_view line) {
        if (line.empty()) return {};
        if (isComplete_) return line[0] == ':' ? "a record after the last one" : "";
        const auto record = BytesOf(line);
        if (!record || record->size() < headLength + checksumLength ||
            record->size() != headLength + (*record)[0] + checksumLength)
            return "it is not a record of Intel HEX";
        int sum = 0;
        for (const std::uint8_t byte : *record) sum += byte;
        if (m8085::Low(sum) != 0) return "its checksum is wrong";
        return Take(*record);
    }

    static std::optional<std::vector<std::uint8_t>> BytesOf(std::string_view line) {
        if (line[0] != ':' || line.size() % 2 == 0) return std::nullopt;
        std::vector<std::uint8_t> bytes;
        for (line.remove_prefix(1); !line.empty(); line.remove_prefix(2)) {
            const auto byte = m8085::ReadHexNumber(line.substr(0, 2), 0xFF);
            if (!byte) return std::nullopt;
            bytes.push_back(m8085::Low(*byte));
        }
        return bytes;
    }

    std::string Take(const std::vector<std::uint8_t>& record) {
        const std::size_t length = record[0];
        switch (record[3]) {
            case Data: return Store(base_ + m8085::Join(record[1], record[2]), record);
            case EndOfFile: isComplete_ = true; return {};
            case SegmentAddress:
            case LinearAddress:
                if (length != 2) return "it is not a record of Intel HEX";
                base_ = static_cast<std::size_t>(m8085::Join(record[4], record[5]))
                        << (record[3] == LinearAddress ? 16 : 4);
                return {};
            case SegmentStart:
            case LinearStart: return {};
            default: return "it is not a record of Intel HEX";
        }
    }

    std::string Store(std::size_t address, const std::vector<std::uint8_t>& record) {
        const std::size_t length = record[0];
        if (address + length > places_.size()) return "its bytes lie beyond FFFF";
        std::copy_n(record.begin() + headLength, length, places_.begin() + static_cast<std::ptrdiff_t>(address));
        return {};
    }

    Places places_ = Places(m8085::MemorySize);
    std::size_t base_ = 0;
    bool isComplete_ = false;
};

// Where memory that was all 0 and memory that was all 1 hold the same, the file has stored a byte.
std::optional<Places> ReadDataFile(std::string_view file) {
    Places places(m8085::MemorySize);
    const auto zeros = std::make_unique<m8085::MemoryBytes>();
    const auto ones = std::make_unique<m8085::MemoryBytes>();
    ones->fill(0xFF);
    for (m8085::MemoryBytes* memory : {zeros.get(), ones.get()}) {
        std::istringstream stream{std::string(file)};
        if (!LoadDataFile(stream, *memory)) return std::nullopt;
    }
    for (std::size_t address = 0; address < places.size(); ++address)
        if ((*zeros)[address] == (*ones)[address]) places[address] = (*zeros)[address];
    return places;
}

// As Intel HEX and data files do. The reader of data files skips what it does not know, and so would find bytes in any
// text.
bool HasAddresses(std::string_view file) {
    bool isInComment = false;
    bool hasAddress = false;
    for (const char character : file) {
        const bool isLineEnd = character == '\r' || character == '\n';
        isInComment = !isLineEnd && (isInComment || character == ';');
        if (isInComment || isLineEnd || m8085::HexDigitValue(static_cast<unsigned char>(character)) >= 0) continue;
        if (std::string_view(":, \t").find(character) == std::string_view::npos) return false;
        hasAddress = hasAddress || character == ':';
    }
    return hasAddress;
}

bool LooksLikeIntelHex(std::string_view file) {
    return file.substr(std::min(file.find_first_not_of(" \t\r\n"), file.size())).starts_with(':');
}

MemoryImage ReadBytes(std::string_view file, std::int32_t origin) {
    if (file.empty()) return {{}, std::string(noByte)};
    return {{{origin, {file.begin(), file.end()}}}, {}};
}

}  // namespace

MemoryImage ReadMemoryImage(std::string_view file, std::optional<std::int32_t> origin) {
    if (origin && HasAddresses(file)) return {{}, "it has its addresses in it, and goes without --origin"};
    if (origin) return ReadBytes(file, *origin);
    if (LooksLikeIntelHex(file)) return IntelHexReader().Read(file);
    if (!HasAddresses(file)) return {{}, "it is neither Intel HEX nor a data file; bytes as they are need --origin"};
    const auto places = ReadDataFile(file);
    return places ? ImageOf(*places) : MemoryImage{{}, "a byte in it lies beyond FFFF, or a number is above 7FFFFFFF"};
}

}  // namespace memedata
