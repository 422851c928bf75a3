#pragma once

#include <functional>
#include <memory>
#include <vector>

#include "foundation/tasks/Background.h"
#include "model/AppState.h"
#include "model/StateTopics.h"

namespace tavrix {

/// The argument of an observer: the last state that it has seen, the present one, and in which
/// topics they differ.
struct StateChange {
  const AppState& before;
  const AppState& after;
  StateTopics topics;

  bool has(StateTopic topic) const { return topics.has(topic); }
};

/// The state of a model with its observers. Each is called once per turn of the main loop, however
/// many changes there were in the turn before. All observers of a turn get the same state: changes
/// that one of them makes are published in the next turn. Must be used on the main loop only.
class PublishedState {
 public:
  using Observer = std::function<void(const StateChange&)>;
  /// Ends when its last copy is destroyed.
  using Subscription = std::shared_ptr<const void>;

  /// Old states are destroyed in the background, because they may own large values.
  PublishedState(MainLoop& loop, Background background);

  const AppState& operator*() const { return now_; }
  const AppState* operator->() const { return &now_; }

  template <typename Edit>
  void change(Edit edit) {
    edit(now_);
    announce();
  }
  /// Subscribes an observer to all changes from the next one on.
  [[nodiscard]] Subscription subscribe(Observer observer);

 private:
  struct Subscriber;

  void announce();
  void tell();

  MainLoop& loop_;
  Background background_;
  std::shared_ptr<const bool> life_ = std::make_shared<bool>(true);
  AppState now_;
  bool isAnnounced_ = false;  ///< a task that tells the observers is posted
  std::vector<std::weak_ptr<Subscriber>> subscribers_;
};

}  // namespace tavrix
