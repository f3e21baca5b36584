#include "console/report.h"

#include <algorithm>
#include <cmath>
#include <map>
#include <nlohmann/json.hpp>
#include <span>

#include "console/text.h"
#include "execution/messages.h"
#include "machine/changes.h"
#include "machine/number_format.h"

namespace console {

namespace {

using Json = nlohmann::ordered_json;
using m8085::FormatHexByte;
using m8085::FormatHexLong;

constexpr std::size_t bytesInRow = 16;
constexpr const char* noInstruction = "there is no instruction";

// Bytes that stand side by side.
struct Stretch {
    std::size_t First = 0;
    std::span<const std::uint8_t> Bytes;
};

std::vector<Stretch> Marked(std::span<const bool> marks, std::span<const std::uint8_t> bytes) {
    std::vector<Stretch> stretches;
    for (std::size_t first = 0; first < bytes.size(); ++first) {
        std::size_t end = first;
        while (end < bytes.size() && marks[end]) ++end;
        if (end > first) stretches.push_back({first, bytes.subspan(first, end - first)});
        first = end;
    }
    return stretches;
}

Stretch BytesAt(const Simulation& simulation, const cases::Place& place) {
    const std::span<const std::uint8_t> all = place.What == cases::Place::Kind::Port
                                                  ? std::span<const std::uint8_t>(simulation.Machine.Ports)
                                                  : std::span<const std::uint8_t>(simulation.Machine.Memory);
    const auto first = static_cast<std::size_t>(place.First);
    return {first, all.subspan(first, static_cast<std::size_t>(place.Last - place.First + 1))};
}

// Rows of at most sixteen bytes, each after its address or port.
void AppendRows(std::vector<std::string>& rows, const Stretch& stretch, bool isPort) {
    for (std::size_t done = 0; done < stretch.Bytes.size(); done += bytesInRow) {
        const std::size_t address = stretch.First + done;
        std::string row = isPort ? "port " + FormatHexByte(static_cast<std::uint8_t>(address))
                                 : FormatHexLong(static_cast<std::int32_t>(address));
        row += ':';
        for (std::size_t i = done; i < std::min(done + bytesInRow, stretch.Bytes.size()); ++i)
            row += ' ' + FormatHexByte(stretch.Bytes[i]);
        rows.push_back(std::move(row));
    }
}

std::string RegisterLines(const m8085::MachineState& machine) {
    std::string text;
    for (const auto& [name, field] : m8085::ByteRegisters)
        text += std::string(name) + '=' + FormatHexByte(machine.*field) + ' ';
    text += "SP=" + FormatHexLong(machine.SP) + " PC=" + FormatHexLong(machine.PC) + '\n';
    for (const auto& [name, flag] : m8085::Flags)
        text += std::string(name) + '=' + m8085::FormatBool(machine.*flag) + ' ';
    return text + "T-states=" + std::to_string(machine.TStates) + '\n';
}

std::string ChangedLines(const Simulation& simulation, std::size_t most) {
    const m8085::Changes changes = m8085::Between(simulation.Before, simulation.Machine);
    std::vector<std::string> rows;
    for (const Stretch& stretch : Marked(changes.Memory, simulation.Machine.Memory)) AppendRows(rows, stretch, false);
    for (const Stretch& stretch : Marked(changes.Ports, simulation.Machine.Ports)) AppendRows(rows, stretch, true);
    std::string text;
    for (std::size_t i = 0; i < std::min(most, rows.size()); ++i) text += rows[i] + '\n';
    if (rows.size() > most)
        text += std::to_string(rows.size() - most) + " more lines of changed bytes; --show changed shows them all\n";
    return text;
}

std::string RightAligned(const std::string& text, std::size_t width) {
    return std::string(width - std::min(width, text.size()), ' ') + text;
}

std::string TrafficLines(const Simulation& simulation) {
    constexpr std::size_t tStatesWidth = 10;
    std::string text;
    for (const Transfer& transfer : simulation.Traffic)
        text += RightAligned(std::to_string(transfer.TStates), tStatesWidth) + "  " + FormatHexLong(transfer.Address) +
                (transfer.IsOut ? "  OUT port " : "  IN  port ") + FormatHexByte(transfer.Port) + ": " +
                FormatHexByte(transfer.Byte) + '\n';
    if (simulation.TrafficIsCutOff)
        text += "More went in or out than these " + std::to_string(simulation.Traffic.size()) +
                " bytes: see --trace-lines\n";
    return text.empty() ? "Nothing went out or came in.\n" : text;
}

// What each line of the file took that has an instruction, by its number. A line that a colon breaks can have more than
// one; it was executed as often as the most executed of them.
std::map<int, m8085::Profile::Use> UseByLine(const Simulation& simulation) {
    std::map<int, m8085::Profile::Use> uses;
    for (std::int32_t address = 0; address < m8085::MemorySize; ++address) {
        const int line = simulation.Program.SourceLine(simulation.Code.LineAt(address));
        if (line == 0) continue;
        const m8085::Profile::Use& use = simulation.Profile->ByAddress[static_cast<std::size_t>(address)];
        uses[line].Times = std::max(uses[line].Times, use.Times);
        uses[line].TStates += use.TStates;
    }
    return uses;
}

std::string ProfileLines(const Simulation& simulation) {
    constexpr std::size_t width = 12;
    if (!simulation.Profile) return {};
    const auto uses = UseByLine(simulation);
    std::uint64_t all = 0;
    for (const auto& [line, use] : uses) all += use.TStates;
    std::string text = "       times    T-states   share  line\n";
    for (const auto& [line, use] : uses) {
        const std::uint64_t tenths = all == 0 ? 0 : (use.TStates * 1000 + all / 2) / all;
        const std::string share = std::to_string(tenths / 10) + '.' + std::to_string(tenths % 10) + '%';
        text += RightAligned(std::to_string(use.Times), width) + RightAligned(std::to_string(use.TStates), width) +
                RightAligned(share, 8) + RightAligned(std::to_string(line), 6) + "  " +
                std::string(simulation.SourceOf(line)) + '\n';
    }
    return text;
}

std::string ViewText(const Simulation& simulation, const View& view) {
    if (view.What == View::Kind::Registers) return RegisterLines(simulation.Machine);
    if (view.What == View::Kind::Traffic) return TrafficLines(simulation);
    if (view.What == View::Kind::Changed) return ChangedLines(simulation, m8085::MemorySize);
    const cases::Place& place = view.Where;
    if (!place.IsMany()) return place.Name() + '=' + place.Format(place.Value(simulation.Machine, place.First)) + '\n';
    std::vector<std::string> rows;
    AppendRows(rows, BytesAt(simulation, place), place.What == cases::Place::Kind::Port);
    std::string text;
    for (const std::string& row : rows) text += row + '\n';
    return text;
}

bool WasRun(const Simulation& simulation) {
    return simulation.HowItEnded != Outcome::Assembled && simulation.HowItEnded != Outcome::NotAssembled &&
           simulation.HowItEnded != Outcome::Unreadable;
}

// A program without an instruction does nothing, and so nothing that was expected of it.
bool AllHold(const Simulation& simulation, const Options& options) {
    if (options.Expectations.empty()) return true;
    return simulation.HasInstructions() &&
           std::ranges::all_of(options.Expectations, [&simulation](const cases::Claim& expectation) {
               return expectation.Holds(simulation.Machine);
           });
}

std::string_view OutcomeName(Outcome outcome) {
    switch (outcome) {
        case Outcome::Assembled: return "assembled";
        case Outcome::Ended: return "ended";
        case Outcome::Unreadable: return "unreadable";
        case Outcome::NotAssembled: return "not assembled";
        case Outcome::LimitReached: return "limit reached";
        case Outcome::NoInstruction: return "no instruction";
        case Outcome::Refused: return "refused";
    }
    return {};
}

std::string RemarkLines(const Simulation& simulation, const Remark& remark) {
    const std::string place =
        Printable(simulation.Name) + ':' + (remark.Line == 0 ? "" : std::to_string(remark.Line) + ':');
    return place + (remark.IsWarning ? " warning: " : " error: ") + remark.Message + '\n' +
           (remark.Note.empty() ? "" : place + " note: " + remark.Note + '\n');
}

Json RemarksAsJson(const Simulation& simulation, bool areWarnings) {
    Json list = Json::array();
    for (const auto& [line, isWarning, message, note] : simulation.Remarks) {
        if (isWarning != areWarnings) continue;
        Json& remark = list.emplace_back(Json{{"message", message}});
        if (!note.empty()) remark["note"] = note;
        if (line != 0) remark.update({{"line", line}, {"source", simulation.SourceOf(line)}});
    }
    return list;
}

Json StretchesAsJson(std::span<const Stretch> stretches, const char* place) {
    Json list = Json::array();
    for (const Stretch& stretch : stretches) list.push_back({{place, stretch.First}, {"bytes", stretch.Bytes}});
    return list;
}

Json MachineAsJson(const m8085::MachineState& machine) {
    Json registers;
    for (const auto& [name, field] : m8085::ByteRegisters) registers[std::string(name)] = machine.*field;
    registers["SP"] = machine.SP;
    registers["PC"] = machine.PC;
    Json flags;
    for (const auto& [name, flag] : m8085::Flags) flags[std::string(name)] = machine.*flag;
    return {{"registers", registers}, {"flags", flags}};
}

Json LabelsAsJson(const assembler::LabelTable& labels) {
    Json list = Json::object();
    for (int slot = 0; slot < labels.LabelCount(); ++slot)
        if (labels[slot].Kind == assembler::LabelKind::Definition)
            list.emplace(Utf8(labels[slot].Name), labels[slot].Address);  // the first of a name holds
    return list;
}

Json ExpectationsAsJson(const Simulation& simulation, const Options& options) {
    Json list = Json::array();
    for (const cases::Claim& expectation : options.Expectations)
        list.push_back({{"expected", expectation.Text()},
                        {"found", expectation.Found(simulation.Machine)},
                        {"holds", expectation.Holds(simulation.Machine)}});
    return list;
}

Json TrafficAsJson(const Simulation& simulation) {
    Json list = Json::array();
    for (const Transfer& transfer : simulation.Traffic)
        list.push_back({{"direction", transfer.IsOut ? "out" : "in"},
                        {"port", transfer.Port},
                        {"byte", transfer.Byte},
                        {"address", transfer.Address},
                        {"tStates", transfer.TStates}});
    return list;
}

Json ProfileAsJson(const Simulation& simulation) {
    Json list = Json::array();
    for (const auto& [line, use] : UseByLine(simulation))
        list.push_back({{"line", line}, {"times", use.Times}, {"tStates", use.TStates}});
    return list;
}

Json ViewsAsJson(const Simulation& simulation, const Options& options) {
    Json list = Json::array();
    for (const View& view : options.Views) {
        const cases::Place& place = view.Where;
        if (view.What == View::Kind::Traffic)
            list.push_back({{"traffic", TrafficAsJson(simulation)}, {"complete", !simulation.TrafficIsCutOff}});
        if (view.What != View::Kind::Place) continue;
        if (place.IsMany())
            list.push_back({{place.What == cases::Place::Kind::Port ? "port" : "address", place.First},
                            {"bytes", BytesAt(simulation, place).Bytes}});
        else
            list.push_back({{"place", place.Name()}, {"value", place.Value(simulation.Machine, place.First)}});
    }
    return list;
}

}  // namespace

ExitCode ExitCodeOf(const Simulation& simulation, const Options& options) {
    switch (simulation.HowItEnded) {
        case Outcome::Unreadable: return WrongUse;
        case Outcome::NotAssembled: return DoesNotAssemble;
        case Outcome::Assembled: return Success;
        case Outcome::Refused: return AccessRefused;
        default: break;
    }
    if (!AllHold(simulation, options)) return Unexpected;
    return simulation.HowItEnded == Outcome::Ended ? Success : DoesNotEnd;
}

std::string Remarks(const Simulation& simulation) {
    std::string text;
    for (const Remark& remark : simulation.Remarks) text += RemarkLines(simulation, remark);
    const auto faults = std::ranges::count(simulation.Remarks, false, &Remark::IsWarning);
    if (faults == 0) return text;
    return text + Printable(simulation.Name) + ": " + std::to_string(faults) + (faults == 1 ? " fault\n" : " faults\n");
}

std::string Diagnosis(const Simulation& simulation) {
    if (simulation.HowItEnded == Outcome::Assembled || simulation.HowItEnded == Outcome::Ended) return {};
    std::string text = RemarkLines(simulation, {simulation.Line, false, simulation.Message, simulation.Note});
    if (const auto source = simulation.SourceOf(simulation.Line); WasRun(simulation) && !source.empty())
        text += "    " + std::string(source) + '\n';
    return text;
}

std::string ProblemOf(const Simulation& simulation) {
    std::string_view message = simulation.Message;
    if (message.ends_with('.')) message.remove_suffix(1);
    return (simulation.Line == 0 ? "" : "line " + std::to_string(simulation.Line) + ": ") + std::string(message) +
           (simulation.Note.empty() ? "" : " (" + simulation.Note + ")");
}

std::string Expected(const cases::Claim& claim, const std::string& found) {
    return "expected " + claim.Text() + ", found " + found;
}

std::string TextReport(const Simulation& simulation, const Options& options) {
    if (simulation.HowItEnded == Outcome::Unreadable || simulation.HowItEnded == Outcome::NotAssembled) return {};
    if (simulation.HowItEnded == Outcome::Assembled) {
        const auto [first, last] = simulation.ProgramRange();
        if (!simulation.HasInstructions()) return "Assembled: there is no instruction.\n";
        return "Assembled: " + std::to_string(last - first + 1) + " bytes, " + FormatHexLong(first) + " to " +
               FormatHexLong(last) + ".\n";
    }
    std::string text = simulation.HowItEnded == Outcome::Ended ? simulation.Message + '\n' : "";
    constexpr std::size_t mostRows = 32;
    if (options.Views.empty()) text += RegisterLines(simulation.Machine) + ChangedLines(simulation, mostRows);
    for (const View& view : options.Views) text += ViewText(simulation, view);
    return text + ProfileLines(simulation);
}

std::string Verdict(const Simulation& simulation, const Options& options) {
    std::vector<std::string> reasons;
    if (simulation.HowItEnded != Outcome::Ended) reasons.push_back(ProblemOf(simulation));
    if (WasRun(simulation) && !simulation.HasInstructions()) reasons.emplace_back(noInstruction);
    if (WasRun(simulation))
        for (const cases::Claim& expectation : options.Expectations)
            if (!expectation.Holds(simulation.Machine))
                reasons.push_back(Expected(expectation, expectation.Found(simulation.Machine)));
    std::string line = Printable(simulation.Name) + (reasons.empty() ? ": pass" : ": fail");
    for (const std::string& reason : reasons) line += (&reason == &reasons.front() ? ": " : "; ") + Printable(reason);
    return line + '\n';
}

std::string JsonReport(const Simulation& simulation, const Options& options) {
    Json report = {{"program", simulation.Name},
                   {"outcome", OutcomeName(simulation.HowItEnded)},
                   {"exitCode", ExitCodeOf(simulation, options)},
                   {"message", simulation.Message}};
    if (!simulation.Note.empty()) report["note"] = simulation.Note;
    if (WasRun(simulation) && !simulation.HasInstructions()) report["note"] = noInstruction;
    if (simulation.Line != 0) {
        report["line"] = simulation.Line;
        report["source"] = simulation.SourceOf(simulation.Line);
    }
    for (const auto& [name, areWarnings] : {std::pair("faults", false), std::pair("warnings", true)})
        if (Json list = RemarksAsJson(simulation, areWarnings); !list.empty()) report[name] = std::move(list);
    if (simulation.Assembly.Succeeded) {
        report["size"] = simulation.Assembly.End - simulation.Assembly.Origin;
        report["labels"] = LabelsAsJson(simulation.Assembly.Labels);
    }
    if (WasRun(simulation)) {
        report["tStates"] = simulation.Machine.TStates;
        report["microseconds"] = std::round(simulation.Machine.TStates * execution::RunMicroseconds * 1000) / 1000;
        report.update(MachineAsJson(simulation.Machine));
        const m8085::Changes changes = m8085::Between(simulation.Before, simulation.Machine);
        report["changedMemory"] = StretchesAsJson(Marked(changes.Memory, simulation.Machine.Memory), "address");
        report["changedPorts"] = StretchesAsJson(Marked(changes.Ports, simulation.Machine.Ports), "port");
        if (!options.Views.empty()) report["shown"] = ViewsAsJson(simulation, options);
        if (simulation.Profile) report["profile"] = ProfileAsJson(simulation);
        if (!options.Expectations.empty()) report["expectations"] = ExpectationsAsJson(simulation, options);
    }
    if (!options.Expectations.empty()) report["pass"] = ExitCodeOf(simulation, options) == Success;
    return report.dump(-1, ' ', false, Json::error_handler_t::replace) + '\n';
}

}  // namespace console
