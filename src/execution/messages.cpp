#include "execution/messages.h"

#include <array>
#include <charconv>
#include <limits>

#include "machine/number_format.h"

namespace execution {

namespace {

// At most 15 significant digits, no trailing zeros, a point in every locale.
std::string GeneralDecimal(double value) {
    std::array<char, 40> digits{};
    const auto end = std::to_chars(digits.data(), digits.data() + digits.size(), value, std::chars_format::general, 15);
    return {digits.data(), end.ptr};
}

}  // namespace

std::string EndMessage(std::int32_t tStates, double microsecondsPerTState) {
    std::string message = "End of code encountered. The program would take " +
                          GeneralDecimal(tStates * microsecondsPerTState) + " microsec on 8085 (" +
                          std::to_string(tStates) + " T-States)";
    if (tStates == std::numeric_limits<std::int32_t>::max())
        message += ". The T-state counter has reached its limit; the program took at least this long.";
    return message;
}

std::string RefusalMessage(const m8085::Refusal& refusal) {
    using m8085::FormatHexByte;
    using m8085::FormatHexLong;
    using m8085::Limit;

    const std::string at = " at address " + FormatHexLong(refusal.PC);
    const std::string instruction = "The instruction" + at + " (opcode " + FormatHexByte(refusal.Opcode) + ") ";
    const std::string operand = FormatHexLong(refusal.Operand);
    const std::string after = " Nothing has been changed.";
    switch (refusal.Reason) {
        case Limit::Fetch:
            return "The program has come to address " + operand +
                   ", too close to the end of memory: the last address at which an instruction can be executed is "
                   "FFFD." +
                   after;
        case Limit::WordAddress:
            return instruction + "reaches for two bytes at " + operand +
                   ", but memory ends there: the second byte would lie beyond FFFF." + after;
        case Limit::Push:
            return instruction + "has no room to push two bytes on the stack: SP is " + operand +
                   ", at the lower end of memory." + after;
        case Limit::Pop:
            return instruction + "finds no two bytes on the stack: SP is " + operand + ", at the upper end of memory." +
                   after;
        case Limit::ReturnAddress:
            return "The call" + at + " stands at the end of memory: it would have to return to " + operand +
                   ", which is not an address." + after;
        case Limit::None: break;
    }
    return {};
}

}  // namespace execution
