#include "console/listing.h"

#include "assembler/listing.h"
#include "console/text.h"

namespace console {

std::string ComposeListing(const Simulation& simulation) {
    std::string text;
    for (const std::u16string& line : assembler::ListingOf(simulation.Source, simulation.Program, simulation.Assembly,
                                                           simulation.Code, simulation.Machine.Memory))
        text += Printable(Utf8(line)) + '\n';
    return text.empty() ? "\n" : text;
}

}  // namespace console
