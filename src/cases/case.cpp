#include "cases/case.h"
#include "machine/text.h"

#include <algorithm>
#include <optional>

namespace cases {

namespace {

using m8085::Trimmed;

// A line that begins with one of the two words, taken apart.
struct Statement {
    bool IsGiven = false;
    bool HasName = false;
    std::string_view Name;
    std::string_view Rest;  // what is claimed
};

std::optional<Statement> ReadStatement(std::string_view text) {
    constexpr std::size_t wordLength = 5;
    const std::string word = m8085::UpperCase(text.substr(0, wordLength));
    if (word != "GIVEN" && word != "GIVES") return std::nullopt;
    Statement statement{word == "GIVEN", false, {}, text.substr(wordLength)};
    const std::string after = m8085::UpperCase(statement.Rest.substr(0, 1));
    if (after >= "A" && after <= "Z") return std::nullopt;  // another word
    statement.Rest = Trimmed(statement.Rest);
    const std::size_t end = statement.Rest.find(']');
    if (!statement.IsGiven || !statement.Rest.starts_with('[') || end == text.npos) return statement;
    statement.HasName = true;
    statement.Name = Trimmed(statement.Rest.substr(1, end - 1));
    statement.Rest = Trimmed(statement.Rest.substr(end + 1));
    return statement;
}

bool NamesFilesAlone(std::string_view text) {
    try {
        return ReadClaims(text).All.empty();
    } catch (const Misread&) {
        return false;
    }
}

bool IsProse(const Statement& statement) {
    return !statement.HasName && statement.Rest.find('=') == std::string_view::npos &&
           !IsAboutTStates(statement.Rest) && !NamesFilesAlone(statement.Rest);
}

// That of the line itself, or else that of its comment.
std::optional<Statement> FindStatement(std::string_view line) {
    const std::size_t start = std::min(line.find(';'), line.size());
    const std::size_t comment = std::min(line.find_first_not_of("; \t", start), line.size());
    for (const std::string_view part : {line.substr(0, start), line.substr(comment)})
        if (const auto statement = ReadStatement(Trimmed(part)); statement && !IsProse(*statement)) return statement;
    return std::nullopt;
}

Claims ReadClaimsOf(const Statement& statement) {
    if (statement.Rest.starts_with('[')) throw Misread("a name in brackets stands after given, once, and ends with ]");
    return ReadClaims(statement.Rest);
}

// Builds the cases line by line.
class Reader {
public:
    void Take(std::string_view text, int line) {
        const auto statement = FindStatement(text);
        if (!statement) return;
        try {
            if (statement->IsGiven)
                TakeGiven(*statement, line);
            else
                TakeGives(*statement, line);
        } catch (const Misread& problem) {
            result_.Faults.push_back({line, problem.what()});
        }
    }

    Cases Finish() {
        ExpectComplete();
        std::ranges::stable_sort(result_.Faults, {}, &Fault::Line);
        return std::move(result_);
    }

private:
    // A case is there even if its line has a fault, so that what it gives is not taken for another one's.
    void TakeGiven(const Statement& statement, int line) {
        ExpectComplete();
        Begin(std::string(statement.Name), line);
        if (statement.Rest.empty()) return;
        Claims claims = ReadClaimsOf(statement);
        Case& last = result_.All.back();
        for (Claim& claim : claims.All) {
            if (claim.IsOfTStates()) throw Misread('"' + claim.Text() + "\": T-states are not given, they begin at 0");
            last.Given.push_back({line, std::move(claim)});
        }
        last.DataFiles = std::move(claims.Files);
    }

    void TakeGives(const Statement& statement, int line) {
        if (result_.All.empty()) Begin({}, line);
        hasGives_ = true;
        Claims claims = ReadClaimsOf(statement);
        if (!claims.Files.empty()) throw Misread('"' + claims.Files[0] + "\": a file can only be given");
        for (Claim& claim : claims.All) result_.All.back().Gives.push_back({line, std::move(claim)});
    }

    void Begin(std::string name, int line) {
        if (name.empty()) name = "case " + std::to_string(result_.All.size() + 1);
        result_.All.push_back({std::move(name), line, {}, {}, {}});
        hasGives_ = false;
    }

    void ExpectComplete() {
        if (result_.All.empty() || hasGives_) return;
        result_.Faults.push_back(
            {result_.All.back().Line, "no gives follows this given: all that is given stands on one line"});
    }

    Cases result_;
    bool hasGives_ = false;  // the last case, readable or not
};

}  // namespace

Cases ReadCases(std::string_view source) {
    Reader reader;
    for (int number = 1; const std::string_view line : m8085::LinesOf(source)) reader.Take(line, number++);
    return reader.Finish();
}

std::vector<Failure> Judge(const Case& which, const m8085::MachineState& after) {
    std::vector<Failure> failures;
    for (const ClaimOfLine& claim : which.Gives)
        if (!claim.What.Holds(after)) failures.push_back({claim, claim.What.Found(after)});
    return failures;
}

}  // namespace cases
