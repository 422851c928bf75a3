#pragma once

#include <string>

namespace tavrix::cli {

/// Returns the page docs/settings.md: every setting with its meaning, its values, its initial value
/// and whether it is kept between calls.
std::string settingsPage();

}  // namespace tavrix::cli
