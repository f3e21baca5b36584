#include "console/disassembling.h"

#include "assembler/program_disassembly.h"
#include "console/exit_code.h"
#include "console/text.h"
#include "datafiles/memory_image.h"

namespace console {

int Disassemble(const Options& options, const Inputs& inputs, std::ostream& out, std::ostream& err) {
    const std::string& path = options.Programs.front();
    const std::string error = Printable(ShownName(path)) + ": error: ";
    const files::Content file = inputs.Read(path, files::LargestFile);
    const memedata::MemoryImage image = memedata::ReadMemoryImage(file.Bytes, options.Origin);
    const std::string& problem = file.Problem.empty() ? image.Problem : file.Problem;
    if (!problem.empty()) {
        err << error << problem << '\n';
        return WrongUse;
    }
    const assembler::DisassembledProgram program = assembler::DisassembleProgram(image.Stretches);
    out << program.Text;
    for (const std::string& obstacle : program.Obstacles) err << error << obstacle << '\n';
    return program.Obstacles.empty() ? Success : DoesNotAssemble;
}

}  // namespace console
