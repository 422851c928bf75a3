#include "media/LocalMediaSource.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <functional>

#include "foundation/tests/support/TemporaryFolder.h"

namespace tavrix {
namespace {

using Kind = SourceError::Kind;

/// Stores the received bytes and calls `atPiece` for every piece.
class Receiver : public DownloadDestination {
 public:
  void append(std::span<const std::byte> bytes) override {
    content.append(reinterpret_cast<const char*>(bytes.data()), bytes.size());
    if (atPiece) atPiece();
  }
  std::string content;
  std::function<void()> atPiece;
};

class LocalMediaSourceTest : public ::testing::Test {
 protected:
  std::optional<Kind> failureOf(const std::string& name) {
    try {
      source.download(asset(name), receiver);
      return std::nullopt;
    } catch (const SourceError& error) {
      EXPECT_EQ(error.name(), name);
      return error.kind();
    }
  }
  static MediaAsset asset(const std::string& name) {
    return {"100APPLE/" + name, name, "100APPLE", MediaKind::photo, 3, {}, {}, false, {}, {}};
  }

  TemporaryFolder folder;
  LocalMediaSource source{folder / "media"};
  Receiver receiver;
};

TEST_F(LocalMediaSourceTest, file_arrivesByteForByte) {
  std::string content;
  for (int i = 0; i < 1'500'000; ++i) content += static_cast<char>(i * 31 + i / 256);
  folder.write("media/IMG_1.HEIC", content);
  folder.write("media/empty", "");
  EXPECT_FALSE(failureOf("empty"));
  EXPECT_EQ(receiver.content, "");
  EXPECT_FALSE(failureOf("IMG_1.HEIC"));
  EXPECT_TRUE(receiver.content == content);
}

TEST_F(LocalMediaSourceTest, whatIsNoFileOfTheFolder_failsOnlyItself) {
  folder.write("secret", "secret");
  folder.write("media/folder/x", "x");
  ASSERT_EQ(::mkfifo((folder / "media/pipe").c_str(), 0600), 0);
  EXPECT_EQ(failureOf("none.HEIC"), Kind::notFound);
  EXPECT_EQ(failureOf("folder"), Kind::unreadable);
  EXPECT_EQ(failureOf("pipe"), Kind::unreadable);
  for (const std::string& name :
       {std::string{"../secret"}, std::string{"folder/x"}, std::string{".."}, std::string{"."},
        std::string{}, std::string{"secret\0", 7}}) {
    EXPECT_EQ(failureOf(name), Kind::unsafeName) << name;
  }
  EXPECT_EQ(receiver.content, "");
}

TEST_F(LocalMediaSourceTest, fileThatGrowsWhileRead_isAnError) {
  folder.write("media/a", "abc");
  receiver.atPiece = [&] {
    receiver.atPiece = nullptr;
    folder.write("media/a", "abcdef");
  };
  EXPECT_EQ(failureOf("a"), Kind::changedWhileRead);
}

TEST_F(LocalMediaSourceTest, failureOfTheReceiver_passesThrough) {
  folder.write("media/a", "abc");
  receiver.atPiece = [] { throw std::runtime_error{"disk full"}; };
  EXPECT_THROW(source.download(asset("a"), receiver), std::runtime_error);
}

}  // namespace
}  // namespace tavrix
