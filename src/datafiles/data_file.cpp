#include "datafiles/data_file.h"

#include <algorithm>
#include <array>
#include <limits>

#include "machine/bytes.h"
#include "machine/number_format.h"
#include "machine/text.h"

namespace memedata {

namespace {

using m8085::HexDigitValue;
using m8085::MemoryBytes;

// What is known of the file at one character. A number is stored only when the next one begins or the file ends, since
// a colon after it makes it an address.
class DataFileReader {
public:
    explicit DataFileReader(MemoryBytes& memory) : memory_(memory) {}

    // Each is false where the file is at fault.
    bool Take(char character);
    bool TakeEnd() { return StorePendingByte(); }

private:
    enum class State { BetweenNumbers, InNumber, InComment };
    static constexpr std::int32_t NoAddress = -1;

    bool TakeDigit(int digit);
    bool StorePendingByte();

    MemoryBytes& memory_;
    State state_ = State::BetweenNumbers;
    std::int32_t Value = 0;
    std::int32_t Target = NoAddress;
    bool TakenAsAddress = false;
};

bool DataFileReader::Take(char character) {
    const bool isLineEnd = character == '\r' || character == '\n';
    if (state_ == State::InComment) {
        if (isLineEnd) state_ = State::BetweenNumbers;
        return true;
    }
    const int digit = HexDigitValue(static_cast<unsigned char>(character));
    if (digit >= 0) return TakeDigit(digit);

    if (character == ';') {
        state_ = State::InComment;
    } else if (character == ':') {
        Target = Value;
        TakenAsAddress = true;
        state_ = State::BetweenNumbers;
    } else if (isLineEnd || character == ' ' || character == ',' || character == '\t') {
        state_ = State::BetweenNumbers;
    }
    return true;
}

bool DataFileReader::TakeDigit(int digit) {
    if (state_ == State::InNumber) {
        if (Value > std::numeric_limits<std::int32_t>::max() / 16) return false;
        Value = Value * 16 + digit;
        return true;
    }
    if (!StorePendingByte()) return false;
    Value = digit;
    TakenAsAddress = false;
    state_ = State::InNumber;
    return true;
}

bool DataFileReader::StorePendingByte() {
    if (Target == NoAddress || TakenAsAddress) return true;
    if (Target >= m8085::MemorySize) return false;
    memory_[m8085::Index(Target)] = m8085::Low(Value);
    ++Target;
    return true;
}

// Without a leading zero, and with a blank after it.
void AppendByte(std::string& text, std::uint8_t value) {
    const std::array<char, 3> both = {m8085::HexDigits[value >> 4], m8085::HexDigits[value & 0xF], ' '};
    const std::size_t leadingZeros = value > 0xF ? 0 : 1;
    text.append(both.data() + leadingZeros, both.size() - leadingZeros);
}

// A blank also follows the last byte.
void AppendLine(std::string& text, std::size_t first, std::size_t last, const MemoryBytes& memory) {
    text += m8085::FormatHexShort(static_cast<std::int32_t>(first)) + " : ";
    for (std::size_t address = first; address <= last; ++address) AppendByte(text, memory[address]);
}

std::string OnOneLine(std::string_view text) {
    std::string line(text);
    std::ranges::replace_if(
        line, [](char character) { return character == '\r' || character == '\n'; }, ' ');
    return line;
}

}  // namespace

bool LoadDataFile(std::istream& file, MemoryBytes& memory) {
    DataFileReader reader(memory);
    std::array<char, 0x10000> block;
    do {
        file.read(block.data(), block.size());
        const auto end = block.begin() + file.gcount();
        if (!std::all_of(block.begin(), end, [&reader](char character) { return reader.Take(character); }))
            return false;
    } while (file);
    return file.eof() && reader.TakeEnd();
}

std::string ComposeDataFile(std::span<const AddressRange> ranges, const MemoryBytes& memory, std::string_view date,
                            std::string_view time) {
    std::string text = "; Data file created on " + OnOneLine(date) + " at " + OnOneLine(time) + "\r\n";
    for (const AddressRange& range : ranges) {
        text += "\r\n";
        constexpr std::size_t longestByte = 3;  // characters
        if (range.First <= range.Last)
            text.reserve(text.size() + longestByte * (std::size_t{range.Last} - range.First + 1));
        AppendLine(text, range.First, range.Last, memory);
    }
    text += "\r\n";
    return text;
}

std::string ComposeLines(AddressRange range, const MemoryBytes& memory) {
    constexpr std::size_t bytesInLine = 16;
    std::string text;
    for (std::size_t first = range.First; first <= range.Last; first += bytesInLine) {
        if (!text.empty()) text.replace(text.size() - 1, 1, "\r\n");
        AppendLine(text, first, std::min<std::size_t>(first + bytesInLine - 1, range.Last), memory);
    }
    if (!text.empty()) text.pop_back();
    return text;
}

std::string ComposePortLine(std::uint8_t port, std::uint8_t byte) {
    return "; port " + m8085::FormatHexByte(port) + " : " + m8085::FormatHexShort(byte);
}

std::optional<std::uint16_t> ReadAddress(std::u16string_view text) {
    constexpr std::int32_t last = m8085::MemorySize - 1;
    const std::optional<std::int32_t> address = m8085::ReadHexNumber(text, last);
    if (!address || *address > last) return std::nullopt;
    return static_cast<std::uint16_t>(*address);
}

std::optional<AddressRange> ReadRange(std::u16string_view text) {
    const std::size_t sign = std::min(text.find(u'-'), text.size());
    const auto first = ReadAddress(m8085::Trimmed(text.substr(0, sign)));
    const auto last = sign < text.size() ? ReadAddress(m8085::Trimmed(text.substr(sign + 1))) : first;
    if (!first || !last || *first > *last) return std::nullopt;
    return AddressRange{*first, *last};
}

}  // namespace memedata
