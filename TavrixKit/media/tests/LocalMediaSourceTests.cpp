#include "media/LocalMediaSource.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include "foundation/tests/support/TemporaryFolder.h"
#include "media/tests/MediaSourceContract.h"

namespace tavrix {
namespace {

class LocalFiles : public StoredSource {
 public:
  MediaSource& source() override { return source_; }
  std::string root() const override { return folder_.path(); }

 private:
  TemporaryFolder folder_;
  LocalMediaSource source_{folder_ / "DCIM/100APPLE"};
};

std::unique_ptr<StoredSource> makeLocalFiles() { return std::make_unique<LocalFiles>(); }

INSTANTIATE_TEST_SUITE_P(LocalMediaSource, MediaSourceContract,
                         testing::Values(MediaSourceContract::ParamType{"files", makeLocalFiles}));
INSTANTIATE_TEST_SUITE_P(LocalMediaSource, StoredSourceContract,
                         testing::Values(StoredSourceContract::ParamType{"files", makeLocalFiles}));

TEST(LocalMediaSource, nameThatIsNoRegularFile_isRefused) {
  using Kind = SourceError::Kind;
  const TemporaryFolder folder;
  folder.write("media/secret", "secret");
  folder.write("media/folder/x", "x");
  ASSERT_EQ(::mkfifo((folder / "media/pipe").c_str(), 0600), 0);
  LocalMediaSource source{folder / "media"};
  folder.write("elsewhere", "secret");
  std::filesystem::create_symlink(folder / "elsewhere", folder / "media/link");
  std::filesystem::create_symlink("secret", folder / "media/inner");
  for (const auto& [name, kind] : {std::pair{std::string{"pipe"}, Kind::notRegular},
                                   {"link", Kind::notRegular},
                                   {"inner", Kind::notRegular},
                                   {"folder/x", Kind::unsafeName},
                                   {"../secret", Kind::unsafeName},
                                   {"..", Kind::unsafeName},
                                   {".", Kind::unsafeName},
                                   {"", Kind::unsafeName},
                                   {std::string{"secret\0x", 8}, Kind::unsafeName}}) {
    const MediaAsset asset{name, name, {}, MediaKind::photo, 3, {}, {}, false, {}, {}};
    ReceivedBytes received;
    try {
      source.download(asset, received);
      ADD_FAILURE() << name;
    } catch (const SourceError& error) {
      EXPECT_EQ(error.kind(), kind) << name;
    }
    EXPECT_EQ(received.text, "") << name;
  }
}

}  // namespace
}  // namespace tavrix
