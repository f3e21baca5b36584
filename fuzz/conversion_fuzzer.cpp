#include <memory>
#include <sstream>
#include <string>

#include "assembler/assembler.h"
#include "assembler/source_preparation.h"
#include "assembler/warnings.h"
#include "check.h"
#include "conversion/conversion.h"
#include "datafiles/data_file.h"

namespace {

bool Assembles(const std::u16string& source, bool withoutWarning) {
    const auto machine = std::make_unique<m8085::MachineState>();
    const auto code = std::make_unique<m8085::CodeMap>();
    const assembler::PreparedProgram program = assembler::PrepareProgram(source);
    return assembler::AssembleProgram(program.Text, *machine, *code).Succeeded &&
           (!withoutWarning || assembler::FindWarnings(program).empty());
}

// Line ends, one character each.
std::u16string LineEnds(const std::u16string& text) {
    std::u16string ends;
    for (const char16_t character : text)
        if (character == u'\r' || character == u'\n') ends += character;
    return ends;
}

}  // namespace

// Any text as a program from elsewhere: it keeps its lines, another conversion changes nothing, what assembles without
// a warning stays as it is, and what does not assemble in the end was said.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size == 0) return 0;
    const bool allDecimal = (data[0] & 1) != 0;
    const std::u16string source(data + 1, data + size);
    const conversion::Conversion once = conversion::ConvertProgram(source, allDecimal);
    CHECK(LineEnds(once.Program) == LineEnds(source));
    CHECK(conversion::ConvertProgram(once.Program, allDecimal).Program == once.Program);
    if (!allDecimal && Assembles(source, true))
        CHECK(once.Program == source && once.Data.empty() && once.Notes.empty());

    bool hasFault = false;
    int latest = 0;
    for (const conversion::Note& note : once.Notes) {
        CHECK(note.Line >= latest && !note.Text.empty());
        latest = note.Line;
        hasFault = hasFault || note.IsFault;
    }
    CHECK(hasFault || Assembles(once.Program, false));
    CHECK(once.Program == source || !once.Notes.empty());

    const auto memory = std::make_unique<m8085::MemoryBytes>();
    std::istringstream stream(once.Data);
    CHECK(memedata::LoadDataFile(stream, *memory));
    return 0;
}
