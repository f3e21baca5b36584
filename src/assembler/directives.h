#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace assembler {

// What to say of a word in upper case that is a directive to other assemblers, and what to do without it: a sentence
// without capital and full stop. A name that is marked, such as ".TITLE" and "#ORG", is always that of a directive.
// Nothing for another word. A comment may stick to the word.
std::optional<std::u16string> ExplainDirective(std::u16string_view word);

}  // namespace assembler
