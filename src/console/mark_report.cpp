#include "console/mark_report.h"

#include <algorithm>
#include <nlohmann/json.hpp>

#include "console/text.h"
#include "editor/program_file.h"

namespace console {

namespace {

using Json = nlohmann::ordered_json;

std::string OutOf(std::size_t some, std::size_t all) {
    return std::to_string(some) + " of " + std::to_string(all);
}

// Fit for an attribute. What is not UTF-8, or not a character that XML can have, is replaced.
std::string Escaped(const std::string& text) {
    std::u16string valid = editor::DecodeProgramFile(text).Text;
    std::ranges::replace(valid, u'\uFFFE', u'?');
    std::ranges::replace(valid, u'\uFFFF', u'?');
    std::string escaped;
    for (const char character : Printable(Utf8(valid))) {
        switch (character) {
            case '&': escaped += "&amp;"; break;
            case '<': escaped += "&lt;"; break;
            case '>': escaped += "&gt;"; break;
            case '"': escaped += "&quot;"; break;
            default: escaped += character;
        }
    }
    return escaped;
}

std::string Attribute(const char* name, const std::string& value) {
    return std::string(" ") + name + "=\"" + Escaped(value) + '"';
}

// A run that did not end, or was not even begun, is an error; what was not left is a failure.
struct Counts {
    std::size_t Tests = 0;
    std::size_t Failures = 0;
    std::size_t Errors = 0;

    void Add(const CaseMark& mark) {
        ++Tests;
        if (!mark.Problem.empty())
            ++Errors;
        else if (!mark.Passed())
            ++Failures;
    }

    std::string Attributes() const {
        return Attribute("tests", std::to_string(Tests)) + Attribute("failures", std::to_string(Failures)) +
               Attribute("errors", std::to_string(Errors));
    }
};

std::string TestCase(const ProgramMark& program, const CaseMark& mark) {
    const std::string start = "    <testcase" + Attribute("classname", program.Name) + Attribute("name", mark.Name);
    if (mark.Passed()) return start + "/>\n";
    const std::string element = mark.Problem.empty() ? "failure" : "error";
    return start + "><" + element + Attribute("message", mark.Reasons()) + "/></testcase>\n";
}

Json CaseAsJson(const CaseMark& mark) {
    Json report = {{"name", mark.Name}, {"pass", mark.Passed()}, {"tStates", mark.TStates}};
    if (!mark.Problem.empty()) report["message"] = mark.Problem;
    report["failures"] = Json::array();
    for (const cases::Failure& failure : mark.Failures)
        report["failures"].push_back(
            {{"line", failure.Expected.Line}, {"expected", failure.Expected.What.Text()}, {"found", failure.Found}});
    return report;
}

}  // namespace

std::string TestLines(const ProgramMark& mark) {
    const std::string name = Printable(mark.Name) + ": ";
    if (!mark.Problem.empty()) return name + "failed: " + Printable(mark.Problem) + '\n';
    std::string lines;
    for (const CaseMark& caseMark : mark.Cases)
        lines += name + Printable(caseMark.Name) +
                 (caseMark.Passed() ? ": passed" : ": failed: " + Printable(caseMark.Reasons())) + '\n';
    return lines;
}

std::string SheetLine(const ProgramMark& mark) {
    std::string line = Printable(mark.Name) + ": " + OutOf(mark.PassedCases(), mark.Cases.size());
    if (!mark.Problem.empty()) return line + ": " + Printable(mark.Problem) + '\n';
    std::string_view separator = ": ";
    for (const CaseMark& caseMark : mark.Cases) {
        if (caseMark.Passed()) continue;
        line.append(separator).append(Printable(caseMark.Name)).append(": ").append(Printable(caseMark.Reasons()));
        separator = "; ";
    }
    return line + '\n';
}

std::string Summary(std::span<const ProgramMark> marks, bool hasSameCases) {
    std::string text = "\n";
    for (std::size_t i = 0; hasSameCases && i < marks[0].Cases.size(); ++i) {
        const auto passed =
            std::ranges::count_if(marks, [i](const ProgramMark& mark) { return mark.Cases[i].Passed(); });
        text += OutOf(static_cast<std::size_t>(passed), marks.size()) + ": " + Printable(marks[0].Cases[i].Name) + '\n';
    }
    const auto passed = std::ranges::count_if(marks, &ProgramMark::Passed);
    return text + OutOf(static_cast<std::size_t>(passed), marks.size()) + ": all cases\n";
}

std::string MarkAsJson(const ProgramMark& mark) {
    Json report = {{"program", mark.Name}, {"exitCode", mark.Code}, {"pass", mark.Passed()}};
    if (!mark.Problem.empty()) report["message"] = mark.Problem;
    report["passed"] = mark.PassedCases();
    report["cases"] = Json::array();
    for (const CaseMark& caseMark : mark.Cases) report["cases"].push_back(CaseAsJson(caseMark));
    return report.dump(-1, ' ', false, Json::error_handler_t::replace) + '\n';
}

std::string JUnitReport(std::span<const ProgramMark> marks) {
    Counts all;
    std::string suites;
    for (ProgramMark mark : marks) {
        if (mark.Cases.empty()) mark.Cases.push_back({"cases", mark.Problem, 0, {}});
        Counts counts;
        std::string testCases;
        for (const CaseMark& caseMark : mark.Cases) {
            testCases += TestCase(mark, caseMark);
            counts.Add(caseMark);
            all.Add(caseMark);
        }
        suites += "  <testsuite" + Attribute("name", mark.Name) + counts.Attributes() + ">\n" + testCases +
                  "  </testsuite>\n";
    }
    return "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<testsuites" + all.Attributes() + ">\n" + suites +
           "</testsuites>\n";
}

}  // namespace console
