#include "model/PublishedState.h"

#include <utility>

namespace tavrix {

struct PublishedState::Subscriber {
  Observer observer;
  AppState seen;
};

PublishedState::PublishedState(MainLoop& loop, Background background)
    : loop_(loop), background_(std::move(background)) {}

PublishedState::Subscription PublishedState::subscribe(Observer observer) {
  auto subscriber = std::make_shared<Subscriber>(std::move(observer), now_);
  subscribers_.push_back(subscriber);
  return subscriber;
}

void PublishedState::announce() {
  if (subscribers_.empty() || std::exchange(isAnnounced_, true)) return;
  loop_.post([this, life = std::weak_ptr{life_}] {
    if (life.lock()) tell();
  });
}

void PublishedState::tell() {
  isAnnounced_ = false;
  std::erase_if(subscribers_, [](const auto& subscriber) { return subscriber.expired(); });
  const auto subscribers = subscribers_;  // an observer may subscribe another one
  const AppState after = now_;
  const std::weak_ptr<const bool> life{life_};
  std::vector<AppState> old;
  for (const auto& weak : subscribers) {
    const auto subscriber = weak.lock();
    if (!subscriber) continue;
    const StateTopics topics = changedTopics(subscriber->seen, after);
    if (topics.isEmpty()) continue;
    old.push_back(std::exchange(subscriber->seen, after));
    subscriber->observer({old.back(), after, topics});
    if (life.expired()) return;  // the observer has destroyed the model
  }
  if (!old.empty()) background_([states = std::move(old)] {});
}

}  // namespace tavrix
