#pragma once

namespace tavrix::window {

/// Chooses how Qt Quick draws: without graphics hardware, its own software renderer is several
/// times faster than an emulated one. Must be called before the first window is created. Respects
/// a choice that the user made in the environment.
void chooseRenderer();

}  // namespace tavrix::window
