#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace aids {

enum class DelayOutcome {
    Insert,   // Text is to go into the program
    TooLong,  // no loop reaches that far
    Nothing,  // the answer gives no delay
};

struct Delay {
    DelayOutcome Outcome = DelayOutcome::Nothing;
    std::u16string Text;  // lines ended by CR LF; begins with a line end
};

// A decimal number with an optional sign and an optional fraction after a point, blanks around it aside, rounded to a
// whole number; a half goes to the even neighbour. Nothing for any other text and for what 32 bits with sign don't
// hold.
std::optional<std::int32_t> ReadWholeNumber(std::u16string_view answer);

// Writes the delay loops of one session, which share one count of labels.
class DelayLoops {
public:
    // The loop for the time that the user gave, a number of milliseconds from 0 to 129000. Above that it is TooLong,
    // and Nothing where the T-states exceed 32 bits; a negative time and a text that is not a number give Nothing too,
    // as does a loop whose labels would be numbered beyond 32767. Only a loop that is given out counts its labels.
    Delay Design(std::u16string_view answer);

private:
    std::int16_t DelayLabelCounter = 0;  // the number of the last label given
};

}  // namespace aids
