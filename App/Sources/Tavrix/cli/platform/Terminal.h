#pragma once

#include <optional>

namespace tavrix::cli {

enum class StandardStream { output, error };

/// Returns the columns of the terminal behind a stream, or 80 if the terminal does not report its
/// width. Returns nullopt if the stream is not a terminal.
std::optional<int> terminalColumns(StandardStream stream);

}  // namespace tavrix::cli
