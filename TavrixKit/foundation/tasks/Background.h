#pragma once

#include <functional>
#include <memory>
#include <utility>

#include "foundation/tasks/MainLoop.h"

namespace tavrix {

/// Runs pieces of work on a thread other than the main loop's, one after another.
using Background = std::function<void(std::function<void()>)>;

/// Computes a value in the background and passes it to `apply` on the main loop, unless `life` has
/// expired by then. `compute` must not throw. `compute` and `apply` must be copyable.
template <typename Compute, typename Apply>
void computeThen(const Background& background, MainLoop& loop, std::weak_ptr<const bool> life,
                 Compute compute, Apply apply) {
  background([&loop, life = std::move(life), compute = std::move(compute),
              apply = std::move(apply)]() mutable {
    loop.post([life, apply, value = compute()]() mutable {
      if (life.lock()) apply(std::move(value));
    });
  });
}

}  // namespace tavrix
