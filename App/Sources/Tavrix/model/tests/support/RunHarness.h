#pragma once

#include "model/tests/support/ModelHarness.h"

namespace tavrix {

/// A model for tests of its runs.
struct RunHarness : ModelHarness {
  void transfer() {
    model->startTransfer();
    settle();
  }
  void passSeconds(int count) {
    loop.advance(std::chrono::seconds{count});
    settle();
  }
  /// Requires `files` pictures at the destination, each with the content of its own shot.
  void checkWhole(std::size_t files) {
    const auto onDisk = filesOnDisk();
    EXPECT_THAT(onDisk, testing::SizeIs(files));
    for (const auto& [path, content] : onDisk) {
      const std::string name = path.substr(path.rfind('/') + 1);
      EXPECT_EQ(content.substr(0, 8), name.substr(0, 8)) << path;
      EXPECT_EQ(content.size(), 10) << path;
    }
  }
};

}  // namespace tavrix
