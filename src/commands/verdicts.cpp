#include "commands/verdicts.h"

#include <QDir>
#include <algorithm>

#include "cases/verdict.h"
#include "commands/data_file_commands.h"

namespace commands {

namespace {

using Kind = cases::Verdict::Kind;

platform::LineNote NoteFor(const cases::Verdict& verdict) {
    using enum platform::LineNote::Kind;
    const auto what = verdict.What == Kind::Held ? Good : verdict.What == Kind::NotGiven ? Neutral : Bad;
    // The text of what cannot be read may be as long as a line.
    constexpr int longest = 200;
    const QString text = QString::fromStdString(verdict.Text);
    return {verdict.Line, text.size() > longest ? text.left(longest) + "..." : text, what};
}

}  // namespace

void ShowVerdicts(editor::ProgramDocument& document, const m8085::MachineState& before,
                  const m8085::MachineState& after) {
    const QString folder = document.Folder();
    const auto load = [&folder](const std::string& name, m8085::MemoryBytes& memory) {
        return !folder.isEmpty() && LoadDataFile(QDir(folder).filePath(QString::fromStdString(name)), memory);
    };
    const std::string text = QString::fromStdU16String(document.txtCode().Text()).toStdString();
    const std::vector<cases::Verdict> verdicts = cases::VerdictsOf(text, before, after, load);
    std::vector<platform::LineNote> notes;
    std::ranges::transform(verdicts, std::back_inserter(notes), NoteFor);
    document.txtCode().Notes().ShowBesideHints(notes);
    for (const Kind kind : {Kind::Failed, Kind::Held, Kind::NotGiven})
        if (const auto first = std::ranges::find(verdicts, kind, &cases::Verdict::What); first != verdicts.end())
            return document.txtCode().ScrollToLine(first->Line);
}

}  // namespace commands
