#include "cases/verdict.h"

#include <algorithm>
#include <memory>
#include <optional>
#include <utility>

#include "cases/case.h"
#include "machine/number_format.h"

namespace cases {

namespace {

using m8085::MachineState;

// Why what the case is given was not there; nothing if it was.
std::optional<std::string> WhyNotGiven(const Case& which, const MachineState& before, const LoadDataFile& load) {
    // What was there stands first: there is seldom room for more.
    const std::string soWhat = ", so not tried";
    const auto expected = std::make_unique<MachineState>(before);
    for (const std::string& file : which.DataFiles)
        if (!load(file, expected->Memory)) return "there is no data file " + file + " beside the program";
    for (const auto& [line, claim] : which.Given) claim.Store(*expected);
    if (const auto differ = std::ranges::mismatch(before.Memory, expected->Memory); differ.in1 != before.Memory.end()) {
        const auto address = static_cast<std::int32_t>(differ.in1 - before.Memory.begin());
        return m8085::FormatHexLong(address) + " was " + m8085::FormatHexByte(*differ.in1) + soWhat;
    }
    if (*expected == before) return std::nullopt;
    const auto broken = std::ranges::find_if(which.Given, [&](const auto& each) { return !each.What.Holds(before); });
    return broken->What.Contradiction(before, "was") + soWhat;
}

Verdict ResultOf(int line, const std::vector<std::string>& contradictions) {
    if (contradictions.empty()) return {line, Verdict::Kind::Held, "held"};
    constexpr std::size_t most = 4;
    std::string text = contradictions[0];
    for (std::size_t i = 1; i < std::min(most, contradictions.size()); ++i) text += ", " + contradictions[i];
    if (contradictions.size() > most) text += " and " + std::to_string(contradictions.size() - most) + " more";
    return {line, Verdict::Kind::Failed, text};
}

// One verdict for each line with claims; these stand in the order of their lines.
void AppendResults(std::vector<Verdict>& verdicts, const Case& which, const MachineState& after) {
    for (auto claim = which.Gives.begin(); claim != which.Gives.end();) {
        const int line = claim->Line;
        std::vector<std::string> contradictions;
        for (; claim != which.Gives.end() && claim->Line == line; ++claim)
            if (!claim->What.Holds(after)) contradictions.push_back(claim->What.Contradiction(after, "is"));
        verdicts.push_back(ResultOf(line, contradictions));
    }
}

// Of several on a line the worst stays, with the texts of all that are as bad.
std::vector<Verdict> OneForEachLine(std::vector<Verdict> verdicts) {
    std::ranges::stable_sort(verdicts, {}, &Verdict::Line);
    std::vector<Verdict> result;
    for (Verdict& verdict : verdicts) {
        if (result.empty() || result.back().Line != verdict.Line)
            result.push_back(std::move(verdict));
        else if (verdict.What > result.back().What)
            result.back() = std::move(verdict);
        else if (verdict.What == result.back().What)
            result.back().Text += "; " + verdict.Text;
    }
    return result;
}

}  // namespace

std::vector<Verdict> VerdictsOf(std::string_view program, const MachineState& before, const MachineState& after,
                                const LoadDataFile& load) {
    const Cases cases = ReadCases(program);
    std::vector<Verdict> verdicts;
    for (const Fault& fault : cases.Faults) verdicts.push_back({fault.Line, Verdict::Kind::Failed, fault.Text});
    for (const Case& which : cases.All) {
        // A line that cannot be read may be what it is given.
        if (std::ranges::find(cases.Faults, which.Line, &Fault::Line) != cases.Faults.end()) continue;
        const auto whyNot = WhyNotGiven(which, before, load);
        const bool saysWhatIsGiven = which.Gives.empty() || which.Gives[0].Line != which.Line;
        if (whyNot)
            verdicts.push_back({which.Line, Verdict::Kind::NotGiven, *whyNot});
        else if (saysWhatIsGiven)
            verdicts.push_back({which.Line, Verdict::Kind::Held, "held"});
        if (!whyNot) AppendResults(verdicts, which, after);
    }
    return OneForEachLine(std::move(verdicts));
}

}  // namespace cases
