#include "conversion/source_lines.h"

#include <algorithm>

#include "machine/text.h"

namespace conversion {

namespace {

using Text = std::u16string;
using View = std::u16string_view;

// The place after a quoted text that begins here, or the place itself if none does: an apostrophe may stand in a word.
std::size_t AfterQuotes(View line, std::size_t at) {
    if (!m8085::IsQuote(line[at])) return at;
    const bool isAfterSeparator = at > 0 && (m8085::IsBlank(line[at - 1]) || line[at - 1] == u',');
    const std::size_t end = line.find(line[at], at + 1);
    return isAfterSeparator && end != View::npos ? end + 1 : at;
}

class Division {
public:
    explicit Division(View source) : rest_(source), lastEnd_(source.rfind(u"*/")), size_(source.size()) {}

    std::vector<SourceLine> Run() {
        std::vector<SourceLine> lines;
        while (true) {
            SourceLine line;
            lineEnd_ = std::min(rest_.find_first_of(u"\r\n"), rest_.size());
            TakeApart(line);
            TidyComment(line);
            const std::size_t length = rest_.starts_with(u"\r\n") ? 2 : std::min<std::size_t>(rest_.size(), 1);
            line.End = Take(length);
            lines.push_back(std::move(line));
            if (length == 0) return lines;
        }
    }

private:
    Text Take(std::size_t length) {
        Text taken(rest_.substr(0, length));
        rest_.remove_prefix(length);
        lineEnd_ -= std::min(lineEnd_, length);
        return taken;
    }

    bool BlockBegins(std::size_t at) const {
        const std::size_t place = size_ - rest_.size() + at;
        return rest_.substr(at).starts_with(u"/*") && lastEnd_ != View::npos && lastEnd_ >= place + 2;
    }

    // Or the line's end.
    std::size_t FindComment() const {
        for (std::size_t at = 0; at < lineEnd_; ++at) {
            const View rest = rest_.substr(at);
            if (rest.starts_with(u';') || rest.starts_with(u"//") || BlockBegins(at)) return at;
            if (const std::size_t after = AfterQuotes(rest_.substr(0, lineEnd_), at); after > at) at = after - 1;
        }
        return lineEnd_;
    }

    // Goes on after each "*/": code may follow.
    void TakeApart(SourceLine& line) {
        bool isOther = false;
        while (isInBlock_ || lineEnd_ > 0) {
            if (!isInBlock_) line.Code += Take(FindComment());
            if (!isInBlock_ && !BlockBegins(0)) {
                const bool isSlashes = rest_.starts_with(u"//");
                if (isSlashes) Take(2);
                isOther = isOther || isSlashes;
                if (isSlashes) line.Comment += u';';
                line.Comment += Take(lineEnd_);
                break;
            }
            isOther = true;
            if (!isInBlock_) Take(2);
            const std::size_t end = rest_.substr(0, lineEnd_).find(u"*/");
            isInBlock_ = end == View::npos;
            if (const Text text = Take(std::min(end, lineEnd_)); !text.empty()) line.Comment += u';' + text;
            if (isInBlock_) break;
            Take(2);
            if (!line.Code.empty()) line.Code += u' ';
        }
        if (isOther) line.Changes.emplace_back(u"the comment has the form of this language now");
    }

    static void TidyComment(SourceLine& line) {
        if (Text harmless = WithoutColons(line.Comment); harmless != line.Comment) {
            line.Comment = std::move(harmless);
            line.Changes.emplace_back(u"a colon in the comment became a dash");
        }
        if (line.Comment.empty() || line.Code.empty() || m8085::IsBlank(line.Code.back())) return;
        line.Code += u' ';
        line.Changes.emplace_back(u"a blank stands before the comment now");
    }

    View rest_;
    std::size_t lineEnd_ = 0;  // in rest_
    std::size_t lastEnd_;      // of a block, in the source
    std::size_t size_;         // of the source
    bool isInBlock_ = false;
};

}  // namespace

std::vector<SourceLine> DivideLines(View source) {
    return Division(source).Run();
}

std::u16string WithoutColons(View comment) {
    Text text;
    for (std::size_t at = 0; at < comment.size(); ++at) {
        std::size_t next = at + 1;
        while (next < comment.size() && m8085::IsBlank(comment[next])) ++next;
        const bool breaks = comment[at] == u':' && next < comment.size() && comment[next] != u';';
        if (breaks && next > at + 1 && !text.empty() && !text.ends_with(u' ')) text += u' ';
        text += breaks ? u'-' : comment[at];
    }
    return text;
}

}  // namespace conversion
