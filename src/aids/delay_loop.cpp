#include "aids/delay_loop.h"

#include <cmath>
#include <limits>

#include "machine/number_format.h"
#include "machine/registers.h"
#include "machine/text.h"

namespace aids {

namespace {

constexpr double nanosecondsPerTState = m8085::NanosecondsPerTState;
constexpr double nanosecondsPerMillisecond = 1'000'000;
constexpr double tStatesPerPass = 24;     // of the inner loop, dcx d to jnz
constexpr double tStatesToLoad = 10;      // of the lxi d, counted in the short loop only
constexpr double passesPerRound = 65000;  // of the inner loop in one round of the outer, at the most
constexpr std::int32_t firstLongTime = 512;
constexpr std::int32_t longestTime = 129000;

constexpr std::int32_t largest = std::numeric_limits<std::int32_t>::max();

std::u16string_view TakeDigits(std::u16string_view& text) {
    const std::u16string_view digits = text.substr(0, text.find_first_not_of(u"0123456789"));
    text.remove_prefix(digits.size());
    return digits;
}

// Whether a number with this fraction is rounded away from zero.
bool RoundsUp(std::u16string_view fraction, bool isOdd) {
    if (fraction.empty() || fraction.front() < u'5') return false;
    const bool isHalf = fraction.front() == u'5' && fraction.find_first_not_of(u'0', 1) == fraction.npos;
    return !isHalf || isOdd;
}

// To the nearest whole number, a half to the even one.
double Rounded(double value) {
    return std::nearbyint(value);
}

std::u16string Hexadecimal(double count) {
    return m8085::Wide(m8085::FormatHexShort(static_cast<std::int32_t>(Rounded(count))));
}

std::u16string Label(int number) {
    return u"dd_" + m8085::Wide(std::to_string(number));
}

// Counts DE down to zero.
std::u16string InnerLoop(double count, const std::u16string& label) {
    return u"lxi d," + Hexadecimal(count) + u"\r\n" + label + u":\r\ndcx d\r\nmov a,e\r\nora d\r\njnz " + label +
           u"\r\n";
}

std::u16string ShortLoop(double tStates, int lastLabel) {
    return u"\r\n" + InnerLoop((tStates - tStatesToLoad) / tStatesPerPass, Label(lastLabel));
}

std::u16string LongLoop(double tStates, int lastLabel) {
    const double passes = Rounded(tStates / tStatesPerPass);
    const double rounds = Rounded(passes / passesPerRound + 1);
    const std::u16string outer = Label(lastLabel);
    return u"\r\nmvi b," + Hexadecimal(rounds) + u"\r\n" + outer + u":\r\n" +
           InnerLoop(passes / rounds, Label(lastLabel - 1)) + u"dcr b\r\njnz " + outer + u"\r\n";
}

}  // namespace

std::optional<std::int32_t> ReadWholeNumber(std::u16string_view answer) {
    std::u16string_view rest = m8085::Trimmed(answer);
    const bool isNegative = rest.starts_with(u'-');
    if (isNegative || rest.starts_with(u'+')) rest.remove_prefix(1);

    const std::u16string_view whole = TakeDigits(rest);
    std::u16string_view fraction;
    if (rest.starts_with(u'.')) {
        rest.remove_prefix(1);
        fraction = TakeDigits(rest);
        if (fraction.empty()) return std::nullopt;
    }
    if (whole.empty() || !rest.empty()) return std::nullopt;

    const std::int64_t largestMagnitude = std::int64_t{largest} + (isNegative ? 1 : 0);
    std::int64_t magnitude = m8085::ReadDigits(whole, 10, largestMagnitude).value_or(0);
    if (RoundsUp(fraction, magnitude % 2 != 0)) ++magnitude;
    if (magnitude > largestMagnitude) return std::nullopt;
    return static_cast<std::int32_t>(isNegative ? -magnitude : magnitude);
}

Delay DelayLoops::Design(std::u16string_view answer) {
    const std::optional<std::int32_t> milliseconds = ReadWholeNumber(answer);
    if (!milliseconds || *milliseconds < 0) return {};
    const double tStates = Rounded(*milliseconds / nanosecondsPerTState * nanosecondsPerMillisecond);
    if (tStates > largest) return {};
    if (*milliseconds > longestTime) return {DelayOutcome::TooLong, {}};

    const bool isShort = *milliseconds < firstLongTime;
    const int lastLabel = DelayLabelCounter + (isShort ? 1 : 2);
    if (lastLabel > std::numeric_limits<std::int16_t>::max()) return {};
    DelayLabelCounter = static_cast<std::int16_t>(lastLabel);
    return {DelayOutcome::Insert, isShort ? ShortLoop(tStates, lastLabel) : LongLoop(tStates, lastLabel)};
}

}  // namespace aids
