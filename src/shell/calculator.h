#pragma once

class QWidget;

namespace shell {

// Starts the system's calculator and returns at once. Where there is none, a box over the control's window names the
// programs that were tried.
void StartCalculator(QWidget& control);

}  // namespace shell
