#include "assembler/directives.h"

#include <algorithm>
#include <span>
#include <utility>

#include "assembler/line_words.h"
#include "machine/text.h"

namespace assembler {

namespace {

using Pair = std::pair<View, View>;

constexpr View atOrigin = u"a program begins at 8000, and elsewhere by the --origin of velmora-run";
constexpr View numberItself = u"write the number itself";
constexpr View dataOtherwise = u"put data into memory by instructions or by a data file";
constexpr View writeOut = u"write out what it stands for";
constexpr View leaveOut = u"leave it out";

// Their names, and what to do without them.
constexpr Pair directives[] = {
    {u"ORG", atOrigin},       {u"BEGIN", atOrigin},     {u"END", leaveOut},       {u"EQU", numberItself},
    {u"SET", numberItself},   {u"DB", dataOtherwise},   {u"DW", dataOtherwise},   {u"DS", dataOtherwise},
    {u"DEFB", dataOtherwise}, {u"DEFW", dataOtherwise}, {u"DEFS", dataOtherwise}, {u"MACRO", writeOut},
    {u"ENDM", leaveOut},      {u"INCLUDE", writeOut},   {u"IF", leaveOut},        {u"ELSE", leaveOut},
    {u"ENDIF", leaveOut},     {u"RADIX", leaveOut},     {u"CPU", leaveOut},       {u"HOF", leaveOut}};

// Those that are plain words where nothing marks them.
constexpr Pair markedDirectives[] = {
    {u"WORD", dataOtherwise}, {u"BYTE", dataOtherwise}, {u"ASCII", dataOtherwise}, {u"DEFINE", numberItself}};

// nullptr for none.
const Pair* FindPair(std::span<const Pair> list, View first) {
    const auto found = std::ranges::find(list, first, &Pair::first);
    return found == list.end() ? nullptr : &*found;
}

}  // namespace

std::optional<std::u16string> ExplainDirective(std::u16string_view word) {
    word = word.substr(0, word.find(u';'));
    const bool isMarked = word.size() > 1 && (word[0] == u'.' || word[0] == u'#') && m8085::IsLetter(word[1]);
    const View name = word.substr(isMarked ? 1 : 0);
    const Pair* found = FindPair(directives, name);
    if (isMarked && found == nullptr) found = FindPair(markedDirectives, name);
    if (!isMarked && found == nullptr) return {};
    return Shortened(name) + u" is a directive, and there are none here: " +
           std::u16string(found == nullptr ? leaveOut : found->second);
}

}  // namespace assembler
