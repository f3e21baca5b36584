#include "cases/claim.h"

#include <algorithm>

#include "machine/number_format.h"
#include "machine/text.h"

namespace cases {

namespace {

using m8085::Trimmed;

[[noreturn]] void Refuse(std::string_view text, const std::string& reason) {
    throw Misread('"' + std::string(text) + "\": " + reason);
}

// The place of the word T-states, however it is spelt, and its length; none if the text is about something else.
struct Word {
    std::size_t Start = std::string_view::npos;
    std::size_t Length = 0;
};

Word FindTStates(std::string_view text) {
    const std::string upper = m8085::UpperCase(text);
    for (const std::string_view word : {"T-STATES", "TSTATES", "T STATES"})
        if (const std::size_t start = upper.find(word); start != std::string::npos) return {start, word.size()};
    return {};
}

bool IsFileName(std::string_view text) {
    const std::size_t dot = text.rfind('.');
    return dot != text.npos && dot + 1 < text.size() && text.find_first_of(" \t=,:") == text.npos;
}

// What a comparison other than "=" is to be written as. Does nothing where there is none.
void RefuseOtherSigns(std::string_view text, std::size_t sign) {
    if (text.find_first_of("<>") != text.npos) Refuse(text, "only T-states are compared: T-states <= 200");
    if (sign == text.npos) {
        const std::size_t colon = text.find(':');
        if (colon != text.npos)
            Refuse(text, "a value follows a =: " + std::string(Trimmed(text.substr(0, colon))) + '=' +
                             std::string(Trimmed(text.substr(colon + 1))));
        Refuse(text, "this is not WHERE=VALUE, such as A=05 or 9000=05,06");
    }
    const char before = sign > 0 ? text[sign - 1] : ' ';
    if (before == '!') Refuse(text, "only what a place holds can be said, not what it does not hold");
    if (before == ':')
        Refuse(text, "one = is enough: " + std::string(text.substr(0, sign - 1)) + std::string(text.substr(sign)));
    if (text.substr(sign).starts_with("=="))
        Refuse(text, "one = is enough: " + std::string(text.substr(0, sign)) + std::string(text.substr(sign + 1)));
}

// One value or more, separated by commas. The whole text is for the message.
std::vector<int> ValuesIn(std::string_view values, const Place& where, std::string_view text) {
    const int largest = where.Largest();
    std::vector<int> read;
    for (const std::string_view each : m8085::PartsOf(values, ',')) {
        const std::string_view part = Trimmed(each);
        if (part.find_first_of(" \t;") != part.npos)
            Refuse(text, "after a value stands a comma, or nothing: \"" + std::string(part) + "\" is not one value");
        const auto value = ReadNumber(part, largest);
        if (!value || *value > largest)
            Refuse(text, "a value of " + where.Name() + " is hexadecimal, from 0 to " + m8085::FormatHexShort(largest));
        read.push_back(where.Kept(*value));
    }
    return read;
}

}  // namespace

Claim::Claim(std::string_view text) : text_(Trimmed(text)) {
    if (ReadTStates()) return;
    const std::size_t sign = text_.find('=');
    RefuseOtherSigns(text_, sign);
    where_ = ReadPlace(std::string_view(text_).substr(0, sign));
    ReadValues(std::string_view(text_).substr(sign + 1));
}

bool Claim::ReadTStates() {
    const std::string_view text = text_;
    const Word word = FindTStates(text);
    if (word.Start == text.npos) return false;
    isOfTStates_ = true;
    const std::string_view before = Trimmed(text.substr(0, word.Start));
    const std::string_view after = Trimmed(text.substr(word.Start + word.Length));
    const bool isMost = before.empty() && after.starts_with("<=");
    const bool isLeast = before.empty() && after.starts_with(">=");
    const auto count = m8085::ReadDecimal(isMost || isLeast ? Trimmed(after.substr(2)) : before);
    if (!count || (!isMost && !isLeast && !after.empty()))
        Refuse(text, "T-states are decimal, and written 119 T-states, T-states <= 200 or T-states >= 100");
    if (!isMost) least_ = *count;
    if (!isLeast) most_ = *count;
    return true;
}

void Claim::ReadValues(std::string_view values) {
    const bool isRange = where_.First != where_.Last;
    values_ = ValuesIn(values, where_, text_);
    const int count = static_cast<int>(values_.size());
    if (count == 1) return;
    if (!where_.IsMany()) Refuse(text_, where_.Name() + " holds one value");
    if (isRange && count != Count())
        Refuse(text_, "the range has " + std::to_string(Count()) + " places (decimal), and this is for " +
                          std::to_string(count));
    where_.Last = where_.First + count - 1;
    const bool isPort = where_.What == Place::Kind::Port;
    if (where_.Last >= (isPort ? m8085::PortCount : m8085::MemorySize))
        Refuse(text_, std::string("this goes beyond the last ") + (isPort ? "port" : "address"));
}

void Claim::Store(m8085::MachineState& machine) const {
    for (int index = 0; index < Count(); ++index) where_.Store(machine, where_.First + index, ValueFor(index));
}

bool Claim::Holds(const m8085::MachineState& machine) const {
    const auto tStates = static_cast<std::uint64_t>(machine.TStates);
    if (isOfTStates_) return tStates >= least_ && tStates <= most_;
    for (int index = 0; index < Count(); ++index)
        if (where_.Value(machine, where_.First + index) != ValueFor(index)) return false;
    return true;
}

std::string Claim::Found(const m8085::MachineState& machine) const {
    if (isOfTStates_) return std::to_string(machine.TStates);
    constexpr int mostShown = 16;
    std::string text;
    for (int number = where_.First; number <= std::min(where_.Last, where_.First + mostShown - 1); ++number) {
        if (!text.empty()) text += ',';
        text += where_.Format(where_.Value(machine, number));
    }
    return Count() > mostShown ? text + ",..." : text;
}

std::string Claim::Contradiction(const m8085::MachineState& machine, std::string_view verb) const {
    if (isOfTStates_) return std::to_string(machine.TStates) + " T-states";
    int index = 0;
    while (index + 1 < Count() && where_.Value(machine, where_.First + index) == ValueFor(index)) ++index;
    Place differing = where_;
    if (where_.IsMany()) differing.First += index;
    return differing.Name() + ' ' + std::string(verb) + ' ' +
           differing.Format(differing.Value(machine, differing.First));
}

bool IsAboutTStates(std::string_view text) {
    return FindTStates(text).Start != text.npos;
}

Feed ReadFeed(std::string_view text) {
    text = Trimmed(text);
    const std::size_t sign = text.find('=');
    RefuseOtherSigns(text, sign);
    const Place port = ReadPlace(text.substr(0, sign));
    if (port.What != Place::Kind::Port || port.First != port.Last) Refuse(text, "one port is fed: port 0=01,01,00");
    return {port.First, ValuesIn(text.substr(sign + 1), port, text)};
}

Claims ReadClaims(std::string_view text) {
    std::vector<std::string> items;
    for (const std::string_view each : m8085::PartsOf(text, ',')) {
        const std::string_view part = Trimmed(each);
        const bool begins = part.find('=') != part.npos || IsAboutTStates(part) || IsFileName(part);
        if (begins || items.empty())
            items.emplace_back(part);
        else
            items.back().append(",").append(part);
    }
    Claims claims;
    for (std::string& item : items) {
        if (IsFileName(item))
            claims.Files.push_back(std::move(item));
        else
            claims.All.emplace_back(item);
    }
    return claims;
}

}  // namespace cases
