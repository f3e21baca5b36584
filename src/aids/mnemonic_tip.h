#pragma once

#include <string>
#include <string_view>

namespace aids {

// Two lines about the mnemonic under the mouse: what it does; then its length, its T-states and the flags that
// it changes. Takes a mnemonic of the instruction table, in upper case.
std::string MnemonicTip(std::string_view mnemonic);

}  // namespace aids
