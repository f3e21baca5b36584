#pragma once

#include "conversion/conversion.h"

namespace conversion {

// What was done to the program, for the person who asked for it: at most so many notes, the faults first.
std::u16string Summarize(const Conversion& conversion, std::size_t mostNotes);

}  // namespace conversion
