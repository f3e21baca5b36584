#include "editor/program_file.h"

#include <algorithm>
#include <array>
#include <optional>

#include "editor/plain_source.h"
#include "machine/text.h"

namespace editor {

namespace {

constexpr std::string_view byteOrderMark = "\xEF\xBB\xBF";
constexpr char32_t replacement = U'\uFFFD';

// What Windows-1252 has at 80 to 9F (hexadecimal). The five codes it leaves open stand for themselves, so that every
// byte reads and writes back as it was.
constexpr std::array<char16_t, 32> windows1252High = {0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021,
                                                      0x02C6, 0x2030, 0x0160, 0x2039, 0x0152, 0x008D, 0x017D, 0x008F,
                                                      0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022, 0x2013, 0x2014,
                                                      0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178};

constexpr std::size_t firstHigh = 0x80;
constexpr std::size_t endOfHigh = 0xA0;

bool IsSurrogate(char32_t code) {
    return code >= 0xD800 && code <= 0xDFFF;
}

void AppendUtf16(std::u16string& text, char32_t code) {
    if (code < 0x10000) {
        text += static_cast<char16_t>(code);
        return;
    }
    text += static_cast<char16_t>(0xD800 + ((code - 0x10000) >> 10));
    text += static_cast<char16_t>(0xDC00 + ((code - 0x10000) & 0x3FF));
}

void AppendUtf8(std::string& bytes, char32_t code) {
    const auto append = [&bytes](char32_t byte) { bytes += static_cast<char>(static_cast<unsigned char>(byte)); };
    constexpr std::array<char32_t, 4> marks = {0, 0xC0, 0xE0, 0xF0};  // of the first byte, by how many follow it
    std::size_t following = code < 0x80 ? 0 : code < 0x800 ? 1 : code < 0x10000 ? 2 : 3;
    append(marks[following] | code >> 6 * following);
    while (following-- > 0) append(0x80 | (code >> 6 * following & 0x3F));
}

// The code point that begins at `position`, which moves past it. Nothing where the bytes are not UTF-8.
std::optional<char32_t> TakeUtf8(std::string_view bytes, std::size_t& position) {
    const auto first = static_cast<unsigned char>(bytes[position++]);
    if (first < 0x80) return first;
    const int following = first >= 0xF0 ? 3 : first >= 0xE0 ? 2 : 1;
    if (first < 0xC2 || first > 0xF4) return std::nullopt;
    char32_t code = first & (0x3F >> following);
    for (int i = 0; i < following; ++i) {
        if (position == bytes.size()) return std::nullopt;
        const auto next = static_cast<unsigned char>(bytes[position++]);
        if ((next & 0xC0) != 0x80) return std::nullopt;
        code = code << 6 | (next & 0x3F);
    }
    constexpr std::array<char32_t, 4> least = {0, 0x80, 0x800, 0x10000};
    if (code < least[static_cast<std::size_t>(following)] || code > 0x10FFFF || IsSurrogate(code)) return std::nullopt;
    return code;
}

std::optional<std::u16string> FromUtf8(std::string_view bytes) {
    std::u16string text;
    for (std::size_t position = 0; position < bytes.size();) {
        const auto code = TakeUtf8(bytes, position);
        if (!code) return std::nullopt;
        AppendUtf16(text, *code);
    }
    return text;
}

std::string ToUtf8(std::u16string_view text) {
    std::string bytes;
    for (std::size_t i = 0; i < text.size(); ++i) {
        char32_t code = text[i];
        const bool pair =
            code >= 0xD800 && code <= 0xDBFF && i + 1 < text.size() && text[i + 1] >= 0xDC00 && text[i + 1] <= 0xDFFF;
        if (pair)
            code = 0x10000 + ((code - 0xD800) << 10) + (text[++i] - 0xDC00U);
        else if (IsSurrogate(code))
            code = replacement;
        AppendUtf8(bytes, code);
    }
    return bytes;
}

std::u16string FromWindows1252(std::string_view bytes) {
    std::u16string text;
    for (const char character : bytes) {
        const std::size_t byte = static_cast<unsigned char>(character);
        const bool high = byte >= firstHigh && byte < endOfHigh;
        text += high ? windows1252High[byte - firstHigh] : static_cast<char16_t>(byte);
    }
    return text;
}

std::optional<std::string> ToWindows1252(std::u16string_view text) {
    std::string bytes;
    for (const char16_t character : text) {
        std::size_t byte = character;
        if (character >= firstHigh && (character < endOfHigh || character > 0xFF)) {
            const auto found = std::ranges::find(windows1252High, character);
            if (found == windows1252High.end()) return std::nullopt;
            byte = firstHigh + static_cast<std::size_t>(found - windows1252High.begin());
        }
        bytes += static_cast<char>(static_cast<unsigned char>(byte));
    }
    return bytes;
}

// Half a character at the end makes it something else than a text.
std::u16string FromUtf16(std::string_view bytes, bool bigEndian) {
    std::u16string text;
    for (std::size_t i = 0; i + 1 < bytes.size(); i += 2) {
        const auto first = static_cast<unsigned char>(bytes[i]);
        const auto second = static_cast<unsigned char>(bytes[i + 1]);
        text += static_cast<char16_t>(bigEndian ? first << 8 | second : second << 8 | first);
    }
    if (bytes.size() % 2 != 0) text += u'\0';
    return text;
}

ProgramFile Decode(std::string_view bytes) {
    for (const bool bigEndian : {false, true})
        if (bytes.starts_with(bigEndian ? "\xFE\xFF" : "\xFF\xFE"))
            return {FromUtf16(bytes.substr(2), bigEndian), Encoding::Utf8, {}};
    std::string_view unmarked = bytes;
    if (unmarked.starts_with(byteOrderMark)) unmarked.remove_prefix(byteOrderMark.size());
    if (auto text = FromUtf8(unmarked)) return {std::move(*text), Encoding::Utf8, {}};
    return {FromWindows1252(bytes), Encoding::Windows1252, {}};
}

std::string WhyNotAText(std::u16string_view text) {
    const auto isForeign = [](char16_t character) {
        return (character < u' ' && (character < u'\t' || character > u'\r')) || character == u'\x7F';
    };
    const bool isText = !text.starts_with(u"{\\rtf") && std::ranges::none_of(text, isForeign);
    return isText ? "" : "It is not a text file.";
}

// In UTF-8, and with CR LF for each line end.
std::size_t SavedSize(std::u16string_view text) {
    std::size_t bytes = 0;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const char16_t character = text[i];
        const bool isLineEnd = character == u'\n' || (character == u'\r' && text.substr(i, 2) != u"\r\n");
        if (character == u'\r' && !isLineEnd) continue;
        bytes += isLineEnd ? 2 : character < 0x80 ? 1 : character < 0x800 || IsSurrogate(character) ? 2 : 3;
    }
    return bytes;
}

}  // namespace

ProgramFile DecodeProgramFile(std::string_view bytes) {
    ProgramFile file = Decode(bytes);
    file.Text.erase(file.Text.find_last_not_of(u'\x1A') + 1);
    file.Text = PlainSource(file.Text);
    file.Problem = WhyNotAText(file.Text);
    return file;
}

std::string FindProblem(std::u16string_view text) {
    if (auto reason = WhyNotAText(text); !reason.empty()) return reason;
    const auto isTooLong = [](std::u16string_view line) { return line.size() > LongestLine; };
    if (std::ranges::any_of(m8085::LinesOf(text), isTooLong))
        return "It has a line of more than " + std::to_string(LongestLine) + " characters.";
    if (RoomIn(text) < 0)
        return "As UTF-8 with CR LF it has more than " + std::to_string(LargestProgramFile) + " bytes.";
    return {};
}

std::ptrdiff_t RoomIn(std::u16string_view text) {
    const auto room = static_cast<std::ptrdiff_t>(LargestProgramFile) - static_cast<std::ptrdiff_t>(SavedSize(text));
    constexpr std::ptrdiff_t mostBytesOfACharacter = 3;
    return room < 0 ? room : room / mostBytesOfACharacter;
}

EncodedProgram EncodeProgramFile(std::u16string_view text, Encoding encoding) {
    if (encoding == Encoding::Windows1252)
        if (auto bytes = ToWindows1252(text); bytes && DecodeProgramFile(*bytes).Text == text)
            return {std::move(*bytes), Encoding::Windows1252};
    return {ToUtf8(text), Encoding::Utf8};
}

}  // namespace editor
