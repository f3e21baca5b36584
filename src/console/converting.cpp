#include "console/converting.h"

#include "console/exit_code.h"
#include "console/text.h"
#include "conversion/conversion.h"
#include "editor/program_file.h"
#include "files/file_writer.h"
#include "files/path.h"

namespace console {

namespace {

// Says what becomes of the data. False if that is nothing.
bool WriteData(const Options& options, const std::string& name, const std::string& data, std::ostream& err) {
    if (data.empty() && options.Data)
        err << name << ": note: it has no data, and " << Printable(*options.Data) << " is not written\n";
    if (data.empty()) return true;
    if (!options.Data) {
        err << name << ": error: it has data, which need a file: --data=FILE\n";
        return false;
    }
    const auto reason = files::WriteFile(files::PathOf(*options.Data), data);
    if (reason) throw UsageError("\"" + *options.Data + "\" could not be written: " + *reason);
    err << name << ": note: a run needs its data: --load " << Printable(*options.Data) << '\n';
    return true;
}

}  // namespace

int Convert(const Options& options, const Inputs& inputs, std::ostream& out, std::ostream& err) {
    const std::string& path = options.Programs.front();
    const std::string name = Printable(ShownName(path));
    const files::Content file = inputs.Read(path, editor::LargestProgramFile);
    const editor::ProgramFile source = editor::DecodeProgramFile(file.Bytes);
    for (const std::string& problem : {file.Problem, source.Problem}) {
        if (problem.empty()) continue;
        err << name << ": error: " << problem << '\n';
        return WrongUse;
    }
    const conversion::Conversion conversion = conversion::ConvertProgram(source.Text, options.Decimal);
    const bool isSame = conversion.Program == source.Text;
    out << (isSame ? file.Bytes : editor::EncodeProgramFile(conversion.Program, source.ReadAs).Bytes);
    if (conversion.Notes.empty()) err << name << ": note: nothing had to be changed\n";
    bool isWhole = WriteData(options, name, conversion.Data, err);
    for (const auto& [line, isFault, text] : conversion.Notes) {
        const std::string place = line > 0 ? name + ':' + std::to_string(line) : name;
        err << place << (isFault ? ": error: " : ": note: ") << Printable(Utf8(text)) << '\n';
        isWhole = isWhole && !isFault;
    }
    return isWhole ? Success : DoesNotAssemble;
}

}  // namespace console
