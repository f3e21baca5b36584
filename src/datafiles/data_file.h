#pragma once

#include <cstdint>
#include <istream>
#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "machine/address_space.h"

namespace memedata {

// A data file gives bytes for addresses of memory, in hexadecimal text: "8000 : 3E 5 76". A number with a colon after
// it is an address, every other number a byte for the current address, which then moves up by one. Of a byte above FF
// the low eight bits count, and bytes before the first address are dropped. Numbers end at a blank, comma, tab or line
// end, ";" starts a comment that runs to the line end, and any other character is skipped.

// Reads the stream once, to its end or to the first fault. True if it came to the end. False if the stream cannot be
// read, a number is above 7FFFFFFF, or a byte is to go beyond FFFF; what was stored by then stays.
bool LoadDataFile(std::istream& file, m8085::MemoryBytes& memory);

// Both ends belong to the range. It is empty if the last address lies below the first.
struct AddressRange {
    std::uint16_t First = 0;
    std::uint16_t Last = 0;
};

// A data file's whole text: a comment with date and time, then one line for each range. Lines end in CR LF; a line end
// in the date or the time becomes a blank.
std::string ComposeDataFile(std::span<const AddressRange> ranges, const m8085::MemoryBytes& memory,
                            std::string_view date, std::string_view time);

// Bytes of memory as a data file has them, sixteen in a line: "8000 : 3E 5 76". Lines end in CR LF, but for the last.
std::string ComposeLines(AddressRange range, const m8085::MemoryBytes& memory);

// A port with its byte, as a comment: data files have no ports.
std::string ComposePortLine(std::uint8_t port, std::uint8_t byte);

// The address that the user typed: hexadecimal digits in either case, with any number of leading zeros, and nothing
// else around them. Nothing for any other text and for an address above FFFF.
std::optional<std::uint16_t> ReadAddress(std::u16string_view text);

// One such address, or two with "-" between them of which the first is not the higher one, with blanks around each or
// not. Nothing for any other text.
std::optional<AddressRange> ReadRange(std::u16string_view text);

}  // namespace memedata
