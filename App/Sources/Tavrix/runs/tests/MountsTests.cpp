#include "runs/Mounts.h"

#include <gtest/gtest.h>
#include <sys/mount.h>

#include <filesystem>

#include "foundation/tests/support/TemporaryFolder.h"

namespace tavrix {
namespace {

constexpr std::string_view mountinfo =
    R"(22 1 8:1 / / rw,relatime shared:1 - ext4 /dev/sda1 rw
30 22 8:17 / /media/card rw - vfat /dev/sdb1 rw
31 22 8:17 /DCIM/100APPLE /mnt/bound rw - vfat /dev/sdb1 rw
32 22 8:17 /DCIM/101\040A /mnt/with\040space rw - vfat /dev/sdb1 rw
33 22 8:1 /home/me/photos /media/card/DCIM/999APPLE rw - ext4 /dev/sda1 rw
34 22 8:33 / /media/card2 rw - vfat /dev/sdc1 rw
damaged line
35 22 8:49 / /media/card2 rw - vfat /dev/sdd1 rw)";

TEST(Mounts, foldersOfTheDisk_areFoundByWhateverMountLeadsThere) {
  const auto mounts = parseMounts(mountinfo);
  ASSERT_EQ(mounts.size(), 7U);
  EXPECT_EQ(mounts[3], (Mount{"/mnt/with space", "8:17/DCIM/101 A"}));
  struct Row {
    const char* path;
    const char* folder;
    bool lies;
  };
  for (const Row& row :
       {Row{"/mnt/bound", "/media/card/DCIM", true}, Row{"/mnt/bound/out", "/media/card", true},
        Row{"/mnt/with space", "/media/card/DCIM/101 A", true},
        Row{"/media/card/DCIM/100APPLE/x", "/mnt/bound", true},
        Row{"/media/card/DCIM", "/mnt/bound", false},
        Row{"/mnt/bound", "/media/card/DCIM/101 A", false},
        // A folder that is mounted inside the source.
        Row{"/home/me/photos", "/media/card", true},
        Row{"/home/me/photos/2026", "/media/card/DCIM/999APPLE", true},
        Row{"/home/me", "/media/card", false}, Row{"/home/me/photos-2", "/media/card", false},
        Row{"/media/card2/DCIM", "/media/card", false}, Row{"/media/card2", "/media/card2", true},
        Row{"/home/me/a", "/home/me", true}}) {
    EXPECT_EQ(liesInByMounts(row.path, row.folder, mounts), row.lies)
        << row.path << " in " << row.folder;
  }
  EXPECT_FALSE(liesInByMounts("/a/b", "/a", {}));
}

TEST(Mounts, listOfThisProcess_tellsWhereItsFoldersLie) {
  const auto mounts = readMounts();
  ASSERT_FALSE(mounts.empty());
  const std::string here = std::filesystem::current_path().string();
  EXPECT_TRUE(liesInByMounts(here + "/x", here, mounts));
  EXPECT_FALSE(liesInByMounts(here, here + "/x", mounts));
}

TEST(Mounts, volumeThatIsUnmounted_isAwayAndAFolderThatWasRemovedIsNot) {
  const TemporaryFolder point;
  if (::mount("tmpfs", point.path().c_str(), "tmpfs", 0, "size=1m") != 0) {
    GTEST_SKIP() << "mounting is not permitted here";
  }
  point.write("2026/Pictures/a", "");
  const std::string path = point / "2026/Pictures";
  const auto identity = folderIdentity(path);
  ASSERT_TRUE(identity);
  EXPECT_FALSE(isVolumeAway(path, *identity));
  std::filesystem::remove_all(point / "2026");
  EXPECT_EQ(folderIdentity(path), std::nullopt);
  EXPECT_FALSE(isVolumeAway(path, *identity));
  ASSERT_EQ(::umount2(point.path().c_str(), MNT_DETACH), 0);
  EXPECT_TRUE(isVolumeAway(path, *identity));
  point.write("2026/Pictures/a", "");
  EXPECT_TRUE(isVolumeAway(path, *identity)) << "a folder of the volume below has its place";
}

}  // namespace
}  // namespace tavrix
