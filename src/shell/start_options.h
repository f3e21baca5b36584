#pragma once

#include <string>
#include <vector>

namespace shell {

// What the words after the program's name ask for.
struct StartOptions {
    std::string Scale;    // the factor of --scale, a decimal number; empty where none is given
    std::string File;     // the program to open; empty where none is given
    std::string Answer;   // to be printed instead of a start
    std::string Problem;  // why this cannot be done, in words; empty where it can
    std::string Surplus;  // the same of words that the toolkit may take: they count once it has had its own
};

// Reads UTF-8. The last of two factors counts; of two files the second is one too many.
StartOptions ReadStartOptions(const std::vector<std::string>& words);

}  // namespace shell
