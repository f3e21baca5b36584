#include "aids/delay_designer.h"

#include "platform/dialogs.h"

namespace aids {

void DelayDesigner::cmdDelay_Click() {
    const QString answer = platform::AskText(txtCode, "How many milliseconds of delay do you want?", "Delay");
    const Delay delay = loops.Design(answer.toStdU16String());
    switch (delay.Outcome) {
        case DelayOutcome::Insert: txtCode.ReplaceSelection(delay.Text); break;
        case DelayOutcome::TooLong:
            platform::ShowMessage(txtCode, "Cool down, dude!!", platform::ApplicationTitle, platform::Icon::None);
            break;
        case DelayOutcome::Nothing: break;
    }
}

}  // namespace aids
