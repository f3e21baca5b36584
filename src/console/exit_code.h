#pragma once

namespace console {

// What the program ends with: the highest of all programs counts.
enum ExitCode {
    Success = 0,
    DoesNotAssemble = 1,
    WrongUse = 2,  // or a file that cannot be read or written
    DoesNotEnd = 3,
    Unexpected = 4,
    AccessRefused = 5,
};

}  // namespace console
