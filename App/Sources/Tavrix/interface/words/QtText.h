#pragma once

#include <QString>
#include <string>

namespace tavrix::window {

/// Returns a text in UTF-8 as Qt has it.
inline QString qt(const std::string& text) { return QString::fromStdString(text); }

}  // namespace tavrix::window
