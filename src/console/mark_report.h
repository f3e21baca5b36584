#pragma once

#include <span>
#include <string>

#include "console/marking.h"

namespace console {

// A line for each case, for whoever wrote the program: "sum.asm: case 1: passed".
std::string TestLines(const ProgramMark& mark);

// One line for the program: "students/07.asm: 3 of 4: one number: expected T-states <= 100, found 108".
std::string SheetLine(const ProgramMark& mark);

// What follows the lines of all programs: how many pass each case, if all have the same cases, and how many pass all of
// theirs.
std::string Summary(std::span<const ProgramMark> marks, bool hasSameCases);

// One JSON object on one line.
std::string MarkAsJson(const ProgramMark& mark);

// All programs as JUnit writes them in XML, each as a suite of its cases.
std::string JUnitReport(std::span<const ProgramMark> marks);

}  // namespace console
