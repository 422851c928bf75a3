#pragma once

#include <exception>
#include <string>
#include <variant>

#include "device/metadata/MetadataPass.h"

namespace tavrix::window {

/// The source that the window shows, apart from the state of the phones on the cable, which
/// AppState::device has.
namespace opened_source {
/// No source was opened yet.
struct None {};
/// The window follows the phones on the cable.
struct Phone {};
/// A folder, card or snapshot is being read.
struct Reading {
  std::string path;
  MetadataPass::Progress progress{};
};
/// It was read, and the model has it.
struct Open {
  std::string path;
};
/// The user stopped the reading; what was read is in the cache.
struct Stopped {
  std::string path;
  MetadataPass::Progress progress{};
};
/// It could not be read.
struct Failed {
  std::string path;
  std::exception_ptr error;
};
}  // namespace opened_source
using OpenedSource =
    std::variant<opened_source::None, opened_source::Phone, opened_source::Reading,
                 opened_source::Open, opened_source::Stopped, opened_source::Failed>;

}  // namespace tavrix::window
