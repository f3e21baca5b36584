#include "aids/mnemonic_buttons.h"

namespace aids {

MnemonicLayout LayOutMnemonics(std::string_view list) {
    constexpr int firstColumn = 100;
    constexpr int columnStep = 700;
    constexpr int lastColumn = 3500;  // a button to the right of it ends its row
    constexpr int rowStep = 380;
    constexpr int groupStep = 700;
    constexpr int captionStep = 400;

    MnemonicLayout layout;
    layout.Captions.push_back({120, 360});
    int x = firstColumn - columnStep;
    int y = 600;
    for (std::size_t at = list.find(' '); at != list.npos; at = list.find(' ', at + 1)) {
        if (list.substr(at + 1).starts_with('\n')) {
            ++at;
            layout.Captions.push_back({firstColumn, y + captionStep});
            x = firstColumn;
            y += groupStep;
        } else if (x > lastColumn) {
            x = firstColumn;
            y += rowStep;
        } else {
            x += columnStep;
        }
        const std::size_t end = list.find(' ', at + 1);
        layout.Buttons.push_back({list.substr(at + 1, end - at - 1), {x, y}});
    }
    return layout;
}

}  // namespace aids
