#include "aids/delay_designer.h"

#include "platform/dialogs.h"

namespace aids {

void DelayDesigner::cmdDelay_Click() {
    const QString answer = platform::AskText(txtCode_, "How many milliseconds of delay do you want?", "Delay");
    const Delay delay = loops_.Design(answer.toStdU16String());
    switch (delay.Outcome) {
        case DelayOutcome::Insert:
            txtCode_.ReplaceSelection(delay.Text);
            txtCode_.setFocus();
            break;
        case DelayOutcome::TooLong: platform::ShowMessage(txtCode_, "Cool down, dude!!", QMessageBox::NoIcon); break;
        case DelayOutcome::Nothing: break;
    }
}

}  // namespace aids
