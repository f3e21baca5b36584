#include "aids/delay_designer.h"

#include <gtest/gtest.h>

#include <memory>

#include "platform/modal.h"

namespace aids {

TEST(DelayDesigner, PutsTheLoopInThePlaceOfTheSelectionAndRefusesALongTime) {
    platform::ProgramText txtCode{nullptr};
    txtCode.SetText(u"nop\r\nhlt");
    txtCode.SelectLine(2);
    DelayDesigner designer(txtCode);
    std::unique_ptr<MessageAnswer> message;
    for (const char* milliseconds : {"129001", "1"}) {
        const ModalAnswer answer([&](QWidget& widget) {
            auto& box = dynamic_cast<QInputDialog&>(widget);
            EXPECT_EQ(box.windowTitle() + '|' + box.labelText(), "Delay|How many milliseconds of delay do you want?");
            box.setTextValue(milliseconds);
            box.accept();
            if (!message) message = std::make_unique<MessageAnswer>(QMessageBox::Ok);
        });
        designer.cmdDelay_Click();
        EXPECT_EQ(message->Caption + '|' + message->Text, "Velmora|Cool down, dude!!");
    }
    EXPECT_EQ(txtCode.Text(), u"nop\r\n\r\nlxi d,80\r\ndd_1:\r\ndcx d\r\nmov a,e\r\nora d\r\njnz dd_1\r\n");
}

}  // namespace aids
