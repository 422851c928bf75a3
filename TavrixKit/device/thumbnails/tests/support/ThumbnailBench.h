#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <condition_variable>
#include <functional>
#include <limits>
#include <map>
#include <memory>
#include <mutex>
#include <stdexcept>
#include <stop_token>
#include <string>
#include <vector>

#include "device/thumbnails/ThumbnailStore.h"
#include "foundation/files/FileError.h"
#include "foundation/tests/support/ManualMainLoop.h"
#include "foundation/tests/support/TemporaryFolder.h"
#include "transfer/MediaConverter.h"

namespace tavrix {

/// A place that so many threads may pass.
class Gate {
 public:
  explicit Gate(MainLoop& loop) : loop_(loop) {}

  void close() { allow(0); }
  void open() { allow(std::numeric_limits<int>::max()); }
  void allow(int passes) {
    const std::lock_guard lock{mutex_};
    passes_ = passes;
    changed_.notify_all();
  }
  /// Waits for the permission, or for a stop.
  void pass(const std::stop_token& stop) {
    std::unique_lock lock{mutex_};
    ++waiting_;
    loop_.post([] {});  // a loop that waits for the arrival looks again
    changed_.wait(lock, stop, [this] { return passes_ > 0; });
    --waiting_;
    --passes_;
  }
  int waiting() const {
    const std::lock_guard lock{mutex_};
    return waiting_;
  }

 private:
  MainLoop& loop_;
  mutable std::mutex mutex_;
  std::condition_variable_any changed_;
  int passes_ = std::numeric_limits<int>::max();
  int waiting_ = 0;
};

/// A store whose files are texts "EMBEDDED WHOLE" or "EMBEDDED WHOLE LENGTH": the longest sides of
/// the embedded picture and of the whole one, then, for a film, its length in seconds. The side 0
/// stands for none, "broken" for one that cannot be decoded, "busy" for one that the decoder fails
/// at for another reason.
struct ThumbnailBench : testing::Test {
  ThumbnailBench() {
    ThumbnailCache{cacheSetup()}.keep(ThumbnailKey::of(asset("settled"), "P", thumbnailSide),
                                      NotShowable{});
    openStore(1);
  }
  ~ThumbnailBench() override {
    reading.open();
    decoding.open();
  }

  static MediaAsset asset(const std::string& id, MediaKind kind = MediaKind::photo) {
    return {id,           id,           std::nullopt, kind,         9,
            std::nullopt, std::nullopt, false,        std::nullopt, std::nullopt};
  }
  ThumbnailCache::Setup cacheSetup() const {
    return {
        .folder = folder / "cache", .programVersion = "1.0", .now = [] {
          return std::chrono::floor<std::chrono::milliseconds>(std::chrono::system_clock::now());
        }};
  }

  /// Opens a store on the same cache, as the next start of the program does, and its source.
  void openStore(std::size_t workers) {
    store.reset();
    ThumbnailDecoder decoder;
    decoder.decode = [this](const PictureRequest& request, const std::stop_token& stop) {
      return decoded(request.bytes, stop);
    };
    decoder.prepare = [this] { ++prepared; };
    const FindPicture find = [this](RangedReader& file, const MediaAsset&, std::uint32_t leastSide,
                                    bool mayReadWhole) {
      return found(file, leastSide, mayReadWhole);
    };
    ThumbnailMaking::Tools tools{find, std::make_shared<ThumbnailCache>(cacheSetup()),
                                 folder / "desktop"};
    store = std::make_unique<ThumbnailStore>(
        ThumbnailStore::Setup{loop, std::move(tools), std::vector(workers, decoder)});
    plugIn();
  }
  void plugIn(const std::string& key = "P") {
    ThumbnailFiles source;
    source.open = [this](const MediaAsset& asset) { return opened(std::string{asset.id()}); };
    source.localPath = [this](const MediaAsset& asset) { return folder / std::string{asset.id()}; };
    store->setSource(key, std::move(source));
  }
  void unplug() { store->setSource("P", std::nullopt); }

  /// Requests a thumbnail. Its answers go to `answers`: "ID SIDE", with "…" unless final.
  ThumbnailRequest request(const std::string& id,
                           ThumbnailPriority priority = ThumbnailPriority::onScreen,
                           MediaKind kind = MediaKind::photo) {
    using State = ThumbnailAnswer::State;
    return store->request(
        asset(id, kind), thumbnailSide, priority, [this, id](const ThumbnailAnswer& answer) {
          const std::string text = answer.state == State::notShowable ? "not showable"
                                   : answer.state == State::notNow    ? "not now"
                                                                      : answer.image->jpeg;
          const std::string length =
              answer.filmLength ? " " + std::to_string(answer.filmLength->count()) + "ms" : "";
          answers.push_back(id + " " + text + length + (answer.isFinal ? "" : "…"));
        });
  }
  /// Waits for the next answers and returns them.
  std::vector<std::string> awaitAnswers(std::size_t count) {
    EXPECT_TRUE(loop.runUntil([&] { return answers.size() >= count; }));
    return std::exchange(answers, {});
  }
  void awaitWaiting(const Gate& gate, int count) {
    EXPECT_TRUE(loop.runUntil([&] { return gate.waiting() == count; }));
  }
  /// Makes requests and waits until all of them have been looked up in the cache.
  void settle(const std::function<void()>& makeRequests) {
    // The earliest request of the lowest priority is looked up last.
    const auto last = request("settled", ThumbnailPriority::idle);
    makeRequests();
    const std::string text = "settled not showable";
    EXPECT_TRUE(loop.runUntil([&] { return std::erase(answers, text) > 0; }));
  }
  std::vector<std::string> takeLog() {
    const std::lock_guard lock{mutex};
    return std::exchange(log, {});
  }

  TemporaryFolder folder;
  ManualMainLoop loop;
  Gate reading{loop};
  Gate decoding{loop};
  std::map<std::string, std::string> files{{"a", "200 4000"}, {"b", "201 4000"},
                                           {"c", "202 4000"}, {"d", "203 4000"},
                                           {"e", "204 4000"}, {"poor", "100 300"}};
  std::vector<std::string> answers;
  std::atomic<int> prepared = 0;  ///< decoders that were started
  std::unique_ptr<ThumbnailStore> store;

 private:
  class TextFile : public RangedReader {
   public:
    explicit TextFile(std::string text) : text_(std::move(text)) {}
    std::uint64_t size() const override { return text_.size(); }
    std::size_t read(std::uint64_t offset, std::span<char> buffer) override {
      return text_.copy(buffer.data(), buffer.size(), static_cast<std::size_t>(offset));
    }

   private:
    std::string text_;
  };

  void note(const std::string& line) {
    const std::lock_guard lock{mutex};
    log.push_back(line);
  }
  std::unique_ptr<RangedReader> opened(const std::string& id) {
    note("open " + id);
    const auto file = files.find(id);
    if (file == files.end()) throw FileError{FileOperation::open, id, EIO};
    return std::make_unique<TextFile>(file->second);
  }
  std::optional<EmbeddedPicture> found(RangedReader& file, std::uint32_t leastSide,
                                       bool mayReadWhole) {
    reading.pass({});
    std::string text(64, ' ');
    text.resize(file.read(0, text));
    const std::string embedded = text.substr(0, text.find(' '));
    std::string whole = text.substr(text.find(' ') + 1);
    EmbeddedPicture picture;
    if (const auto end = whole.find(' '); end != std::string::npos) {
      picture.filmLength = std::chrono::seconds{std::stoi(whole.substr(end))};
      whole.resize(end);
    }
    const std::uint32_t side = sideOf(embedded);
    if (mayReadWhole && side < leastSide && whole != "0") {
      picture.request.bytes = whole;
      return picture;
    }
    picture.origin = EmbeddedPicture::Origin::preview;
    picture.request.bytes = embedded;
    picture.width = side;
    return side > 0 ? std::optional{picture} : std::nullopt;
  }
  static std::uint32_t sideOf(const std::string& word) {
    return word < "a" ? static_cast<std::uint32_t>(std::stoul(word)) : 2000;
  }
  SmallImage decoded(const std::string& bytes, const std::stop_token& stop) {
    const std::string side = bytes.starts_with("\x89PNG") ? "256" : bytes;
    note("decode " + side);
    decoding.pass(stop);
    if (stop.stop_requested() || side == "busy") throw ConversionError{ConversionFailure::failed};
    if (side == "broken") throw ConversionError{ConversionFailure::damagedInput};
    return {sideOf(side), 1, side};
  }

  std::mutex mutex;
  std::vector<std::string> log;
};

}  // namespace tavrix
