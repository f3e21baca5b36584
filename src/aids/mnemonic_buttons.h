#pragma once

#include <string_view>
#include <vector>

namespace aids {

// Where a button or a caption of the mnemonic panel stands, in twips from the panel's upper left corner.
struct PanelPlace {
    int Left = 0;
    int Top = 0;
};

struct MnemonicButton {
    std::string_view Word;  // in upper case
    PanelPlace Place;
};

// The panel's buttons in the order of the list, in rows of six, and the captions over its groups, the first one's
// included.
struct MnemonicLayout {
    std::vector<MnemonicButton> Buttons;
    std::vector<PanelPlace> Captions;
};

// The list is one of words with a space before each, where a line feed after the space begins a new group.
MnemonicLayout LayOutMnemonics(std::string_view list);

}  // namespace aids
