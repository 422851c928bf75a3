#pragma once

#include <gtest/gtest.h>

#include <cerrno>
#include <chrono>
#include <cstdint>
#include <exception>
#include <filesystem>
#include <fstream>
#include <functional>
#include <future>
#include <latch>
#include <memory>
#include <optional>
#include <ostream>
#include <span>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include "foundation/files/FileError.h"
#include "media/MediaSource.h"

namespace tavrix {

inline constexpr std::size_t mebibyte = 1024 * 1024;

/// Returns pseudo-random bytes, which differ from position to position.
inline std::string bytesOf(std::size_t count, std::uint32_t seed = 1) {
  std::string bytes(count, '\0');
  for (char& byte : bytes) {
    seed = seed * 1664525U + 1013904223U;
    byte = static_cast<char>(seed >> 24U);
  }
  return bytes;
}

/// Returns an asset with this id; its name is the last part of the id.
inline MediaAsset assetWithID(const std::string& id) {
  const std::string name = id.substr(id.rfind('/') + 1);
  return {id, name, {}, MediaKind::photo, 3, {}, {}, false, {}, {}};
}

/// Keeps the bytes that arrive. Calls `atPiece` for every piece before it is kept.
struct ReceivedBytes : DownloadDestination {
  void append(std::span<const std::byte> bytes) override {
    if (atPiece) atPiece();
    text.append(reinterpret_cast<const char*>(bytes.data()), bytes.size());
  }

  std::string text;
  std::function<void()> atPiece;
};

/// A source under test, and the means to change its files while it is open.
class SourceUnderTest {
 public:
  virtual ~SourceUnderTest() = default;
  virtual MediaSource& source() = 0;
  /// Creates or replaces the file of an asset.
  virtual void write(const MediaAsset& asset, const std::string& content) = 0;
  virtual void remove(const MediaAsset& asset) = 0;
  /// Makes reading an existing file fail.
  virtual void makeUnreadable(const MediaAsset& asset) = 0;
};

/// A source whose files are on the disk. The asset "100APPLE/name" is the file
/// "DCIM/100APPLE/name" of its root folder.
class StoredSource : public SourceUnderTest {
 public:
  virtual std::string root() const = 0;
  std::string pathOf(const MediaAsset& asset) const {
    return root() + "/DCIM/" + std::string{asset.id()};
  }

  void write(const MediaAsset& asset, const std::string& content) override {
    writeAt(pathOf(asset), content);
  }
  void remove(const MediaAsset& asset) override { std::filesystem::remove(pathOf(asset)); }
  /// Replaces the file by a folder, which root cannot read as a file either.
  void makeUnreadable(const MediaAsset& asset) override {
    remove(asset);
    std::filesystem::create_directory(pathOf(asset));
  }
  static void writeAt(const std::string& path, const std::string& content) {
    std::filesystem::create_directories(std::filesystem::path{path}.parent_path());
    std::ofstream file{path, std::ios::binary};
    file << content;
    if (!file.flush()) throw std::runtime_error{"cannot write " + path};
  }
};

/// Makes a source under test. `name` describes it in the names of the tests.
template <typename Source>
struct SourceMaker {
  std::string name;
  std::function<std::unique_ptr<Source>()> make;

  friend void PrintTo(const SourceMaker& maker, std::ostream* stream) { *stream << maker.name; }
};

/// The steps that the tests of every source share.
template <typename Source>
class SourceContract : public testing::TestWithParam<SourceMaker<Source>> {
 protected:
  MediaAsset add(const std::string& name, const std::string& content) {
    MediaAsset asset = assetWithID("100APPLE/" + name);
    tested->write(asset, content);
    return asset;
  }
  std::string download(const MediaAsset& asset) {
    ReceivedBytes received;
    tested->source().download(asset, received);
    return received.text;
  }
  /// Returns the kind of the SourceError with which the download fails, or nullopt if it succeeds.
  std::optional<SourceError::Kind> failureOf(const MediaAsset& asset, ReceivedBytes& received) {
    try {
      tested->source().download(asset, received);
      return std::nullopt;
    } catch (const SourceError& error) {
      EXPECT_EQ(error.name(), asset.name());
      return error.kind();
    }
  }

  std::unique_ptr<Source> tested = this->GetParam().make();
};

/// The requirements that every MediaSource meets.
class MediaSourceContract : public SourceContract<SourceUnderTest> {};

TEST_P(MediaSourceContract, filesOfAnySize_arriveByteForByte) {
  constexpr std::size_t half = mebibyte / 2;
  for (const std::size_t size : {std::size_t{0}, std::size_t{1}, half - 1, half, half + 1,
                                 mebibyte - 1, mebibyte, mebibyte + 1, 3 * mebibyte + 7}) {
    const std::string content = bytesOf(size);
    EXPECT_TRUE(download(add(std::to_string(size), content)) == content) << size;
  }
}

TEST_P(MediaSourceContract, filesReadInTurnAndAgain_areEachTheirOwn) {
  const std::string longer = bytesOf(3 * mebibyte, 2);
  const std::string shorter = bytesOf(1000, 3);
  const MediaAsset first = add("IMG_1.MOV", longer);
  const MediaAsset second = add("IMG_2.JPG", shorter);
  for (int turn = 0; turn < 2; ++turn) {
    EXPECT_TRUE(download(first) == longer) << turn;
    EXPECT_TRUE(download(second) == shorter) << turn;
    EXPECT_TRUE(download(second) == shorter) << turn;
  }
}

TEST_P(MediaSourceContract, fileThatIsMissing_failsAlone) {
  const MediaAsset whole = add("IMG_1.JPG", "whole");
  const MediaAsset removed = add("IMG_2.JPG", "removed");
  EXPECT_EQ(download(removed), "removed");
  tested->remove(removed);
  ReceivedBytes received;
  EXPECT_EQ(failureOf(removed, received), SourceError::Kind::notFound);
  EXPECT_EQ(received.text, "");
  EXPECT_EQ(download(whole), "whole");
}

TEST_P(MediaSourceContract, fileThatCannotBeRead_failsAlone) {
  const MediaAsset whole = add("IMG_1.JPG", "whole");
  const MediaAsset damaged = add("IMG_2.JPG", "damaged");
  tested->makeUnreadable(damaged);
  ReceivedBytes received;
  EXPECT_EQ(failureOf(damaged, received), SourceError::Kind::unreadable);
  EXPECT_EQ(received.text, "");
  EXPECT_EQ(download(whole), "whole");
}

TEST_P(MediaSourceContract, errorOfTheDestination_endsTheDownloadAndPassesUnchanged) {
  struct Cancelled {};
  const std::string content = bytesOf(3 * mebibyte);
  const MediaAsset asset = add("IMG_1.MOV", content);
  for (const std::exception_ptr& error :
       {std::make_exception_ptr(Cancelled{}),
        std::make_exception_ptr(FileError{FileOperation::write, "copy", ENOSPC}),
        std::make_exception_ptr(SourceError{SourceError::Kind::disconnected, "copy"})}) {
    for (const int last : {1, 2}) {
      int pieces = 0;
      ReceivedBytes received;
      received.atPiece = [&] {
        if (++pieces >= last) std::rethrow_exception(error);
      };
      std::exception_ptr caught;
      try {
        tested->source().download(asset, received);
      } catch (...) {
        caught = std::current_exception();
      }
      EXPECT_TRUE(caught == error) << last;
      EXPECT_EQ(pieces, last);
    }
    EXPECT_TRUE(download(asset) == content);
  }
}

TEST_P(MediaSourceContract, downloadsAtOnce_areNotMixed) {
  const int count = tested->source().concurrentDownloads();
  ASSERT_GE(count, 1);
  std::vector<std::string> contents;
  std::vector<MediaAsset> assets;
  for (int i = 0; i < count; ++i) {
    contents.push_back(bytesOf(3 * mebibyte, static_cast<std::uint32_t>(i)));
    assets.push_back(add(std::to_string(i), contents.back()));
  }
  // No download keeps a byte until each of them has its first piece.
  std::latch firstPieces{count};
  std::vector<std::future<std::string>> downloads;
  for (const MediaAsset& asset : assets) {
    downloads.push_back(std::async(std::launch::async, [&, this] {
      bool hasArrived = false;
      ReceivedBytes received;
      received.atPiece = [&] {
        if (!std::exchange(hasArrived, true)) firstPieces.arrive_and_wait();
      };
      try {
        tested->source().download(asset, received);
      } catch (...) {
        if (!hasArrived) firstPieces.count_down();
        throw;
      }
      if (!hasArrived) firstPieces.count_down();
      return received.text;
    }));
  }
  for (std::size_t i = 0; i < downloads.size(); ++i) {
    EXPECT_TRUE(downloads[i].get() == contents[i]) << i;
  }
}

/// The requirements that every MediaSource of stored files meets as well.
class StoredSourceContract : public SourceContract<StoredSource> {};

TEST_P(StoredSourceContract, pathThatLeadsOut_isRefused) {
  const MediaAsset whole = add("IMG_1.JPG", "whole");
  StoredSource::writeAt(tested->root() + "/secret", "secret");
  StoredSource::writeAt(tested->root() + "/DCIM/secret", "secret");
  for (const std::string& path :
       {std::string{"../secret"}, std::string{"../../secret"}, tested->root() + "/secret",
        std::string{".."}, std::string{"."}, std::string{}}) {
    const MediaAsset asset{path, path, {}, MediaKind::photo, 6, {}, {}, false, {}, {}};
    ReceivedBytes received;
    EXPECT_TRUE(failureOf(asset, received).has_value()) << path;
    EXPECT_EQ(received.text, "") << path;
    EXPECT_EQ(download(whole), "whole") << path;
  }
}

TEST_P(StoredSourceContract, fileThatChangesWhileRead_fails) {
  const MediaAsset asset = assetWithID("100APPLE/IMG_1.JPG");
  const std::string path = tested->pathOf(asset);
  // Once only the size differs, once only the time.
  for (const auto& [later, elapsed] :
       {std::pair{std::string{"abcdef"}, std::chrono::hours{0}}, {"xyz", std::chrono::hours{1}}}) {
    tested->write(asset, "abc");
    const auto time = std::filesystem::last_write_time(path) + elapsed;
    ReceivedBytes received;
    received.atPiece = [&, &content = later] {
      tested->write(asset, content);
      std::filesystem::last_write_time(path, time);
    };
    EXPECT_EQ(failureOf(asset, received), SourceError::Kind::changedWhileRead) << later;
    EXPECT_EQ(download(asset), later);
  }
}

}  // namespace tavrix
