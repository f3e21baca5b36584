#pragma once

#include <string>

#include "datafiles/data_file.h"
#include "machine/machine_state.h"

namespace console {

// The bytes of the range as they are.
std::string ComposeBinary(memedata::AddressRange range, const m8085::MemoryBytes& memory);

// The bytes of the range in Intel HEX, sixteen in a record, with the record that ends the file. Lines end in CR LF.
std::string ComposeIntelHex(memedata::AddressRange range, const m8085::MemoryBytes& memory);

}  // namespace console
