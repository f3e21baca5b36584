#pragma once

#include <QGroupBox>
#include <vector>

#include "machine/changes.h"
#include "platform/button.h"
#include "platform/text_box.h"

class QLabel;

namespace panels {

// Shows the registers, flags and T-states, and lets the user change the 8-bit registers and the flags. It keeps no
// value of its own: a change by hand goes into the machine at once, and DisplayRegs rewrites everything.
class RegisterPanel : public QGroupBox {
    Q_OBJECT

public:
    // A click on a flag gives the focus to txtCode.
    RegisterPanel(m8085::MachineState& machine, QWidget& txtCode, QWidget* parent);

    // Rewrites every control from the machine, also over what is being typed.
    void DisplayRegs();

    // Colours the registers and flags that have changed, until the next call, and describes all changes to those who
    // hear and do not see them.
    void MarkChanges(const m8085::Changes& changes);

signals:
    // The user has changed a register or a flag.
    void Edited();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    struct RegisterBox {
        platform::TextBox* Box;
        std::uint8_t m8085::Registers::*Register;
        QString Name;
    };
    struct FlagButton {
        platform::Button* Button;
        bool m8085::Registers::*Flag;
        QString Name;
    };

    void AddRegisters();
    void AddFlags();
    void AddTStates();

    QLabel* AddLabel(const QString& text, const QRect& place, Qt::Alignment alignment);
    platform::TextBox* AddBox(const QString& name, const QString& accessibleName, const QRect& place);

    void ShowStackPointer();
    void ShowRegister(const RegisterBox& box);
    void RegisterLostFocus(const RegisterBox& registerBox);
    void ToggleFlag(bool m8085::Registers::*flag);

    m8085::MachineState& machine_;
    QWidget& txtCode_;
    std::vector<RegisterBox> registerBoxes_;
    std::vector<FlagButton> flagButtons_;
    platform::TextBox* txtF_ = nullptr;
    platform::TextBox* txtPC_ = nullptr;
    platform::TextBox* txtSP_ = nullptr;
    platform::TextBox* txtTstates_ = nullptr;
};

}  // namespace panels
