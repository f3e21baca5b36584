#pragma once

#include "editor/program_document.h"

namespace commands {

// Brings the text in the editor, a program that was written for another assembler, into this language.
class ConvertCommand {
public:
    explicit ConvertCommand(editor::ProgramDocument& document) : document_(document) {}

    // One step to undo. A box says what was changed, and what could not be; if the program defines data, a dialog then
    // asks for the data file to put them into.
    void Convert();

private:
    void SaveData(const std::string& data);

    editor::ProgramDocument& document_;
};

}  // namespace commands
