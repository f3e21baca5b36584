#include "conversion/summary.h"

#include <algorithm>

#include "machine/text.h"

namespace conversion {

std::u16string Summarize(const Conversion& conversion, std::size_t mostNotes) {
    if (conversion.Notes.empty()) return u"Nothing had to be changed.";
    std::u16string text;
    std::size_t count = 0;
    for (const bool isFault : {true, false}) {
        if (std::ranges::count(conversion.Notes, isFault, &Note::IsFault) == 0) continue;
        if (count > 0) text += u"\n";
        text += isFault ? u"Left to you:\n" : u"Changed and noticed:\n";
        for (const Note& note : conversion.Notes) {
            if (note.IsFault != isFault || count++ >= mostNotes) continue;
            if (note.Line > 0) text += u"Line " + m8085::Wide(std::to_string(note.Line)) + u": ";
            text += note.Text + u"\n";
        }
    }
    if (count > mostNotes) text += u"and " + m8085::Wide(std::to_string(count - mostNotes)) + u" more\n";
    if (!conversion.Data.empty())
        text += u"\nThe data need a data file: choose its name next, and load it before a run.";
    return text;
}

}  // namespace conversion
