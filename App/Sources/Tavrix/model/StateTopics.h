#pragma once

#include <cstdint>
#include <initializer_list>

#include "model/AppState.h"

namespace tavrix {

/// A part of the state that changes together and is displayed together.
enum class StateTopic {
  device,       ///< origin, catalogue, phones, sample library
  rows,         ///< the folders and which of them are visible
  checks,       ///< the check marks
  counters,     ///< the effect of a transfer, and whether it is being computed
  outline,      ///< sidebar and search
  settings,     ///< the choices, presets and candidates for the home
  destination,  ///< the destination folder
  phase,        ///< the screen, and what is fixed during a run
  progress,     ///< of a run, and why it waits
  questions,    ///< what lies over the screen, and what is highlighted
};

/// A set of topics.
class StateTopics {
 public:
  StateTopics() = default;
  StateTopics(std::initializer_list<StateTopic> topics) {
    for (const StateTopic topic : topics) add(topic);
  }

  void add(StateTopic topic) { bits_ |= 1U << static_cast<unsigned>(topic); }
  bool has(StateTopic topic) const { return (bits_ & 1U << static_cast<unsigned>(topic)) != 0; }
  bool isEmpty() const { return bits_ == 0; }

  friend bool operator==(const StateTopics&, const StateTopics&) = default;

 private:
  std::uint32_t bits_ = 0;
};

/// Returns the topics in which the states differ. Compares shared values by pointer only, so an
/// equal value in another object is a change, and the cost does not depend on the sizes.
StateTopics changedTopics(const AppState& before, const AppState& after);

}  // namespace tavrix
