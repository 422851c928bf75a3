#include "cli/sessions/ThumbnailBatch.h"

#include <exception>
#include <map>

namespace tavrix::cli {
namespace {

/// The store works at two pictures; the others keep it from waiting for the loop.
constexpr std::size_t requestsAtOnce = 16;

struct Batch {
  ThumbnailStore& store;
  const std::vector<MediaAsset>& pictures;
  std::uint32_t longestSide;
  const TakeThumbnail& take;
  std::map<std::size_t, ThumbnailRequest> requests{};
  std::vector<std::size_t> answered{};  ///< whose requests may be withdrawn
  std::size_t next = 0;
  std::exception_ptr failure{};

  bool isOver() const {
    return failure != nullptr || (next == pictures.size() && requests.empty());
  }

  void answer(std::size_t index, const ThumbnailAnswer& answer) {
    // A file that could not be read would be tried again only with the source.
    const bool isLast = answer.isFinal || answer.state == ThumbnailAnswer::State::notNow;
    if (!isLast || failure != nullptr) return;
    try {
      take(index, answer.image.get());
    } catch (...) {
      failure = std::current_exception();
    }
    answered.push_back(index);
  }

  void refill() {
    for (const std::size_t index : answered) requests.erase(index);
    answered.clear();
    while (next < pictures.size() && requests.size() < requestsAtOnce) {
      const std::size_t index = next++;
      requests.emplace(
          index,
          store.request(pictures[index], longestSide, ThumbnailPriority::onScreen,
                        [this, index](const ThumbnailAnswer& given) { answer(index, given); }));
    }
  }
};

}  // namespace

void makeThumbnails(StandardMainLoop& loop, ThumbnailStore& store,
                    const std::vector<MediaAsset>& pictures, std::uint32_t longestSide,
                    const TakeThumbnail& take, const std::stop_token& stop) {
  Batch batch{store, pictures, longestSide, take};
  const std::stop_callback wake{stop, [&] { loop.post([] {}); }};
  loop.runUntil([&] {
    batch.refill();
    return batch.isOver() || stop.stop_requested();
  });
  if (batch.failure) std::rethrow_exception(batch.failure);
}

}  // namespace tavrix::cli
