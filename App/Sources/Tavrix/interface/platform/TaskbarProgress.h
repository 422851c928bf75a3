#pragma once

#include <optional>

namespace tavrix::window {

/// Shows a share of work, 0 to 1, on the program's entry in the task bar; nullopt removes it. Task
/// bars without the protocol of launcher entries ignore it.
void showInTaskbar(std::optional<double> fraction);

}  // namespace tavrix::window
