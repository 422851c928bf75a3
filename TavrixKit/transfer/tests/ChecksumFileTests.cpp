#include "transfer/ChecksumFile.h"

#include <gmock/gmock.h>

#include "foundation/Digest.h"
#include "transfer/tests/TestLibrary.h"

namespace tavrix::ChecksumFile {
namespace {

const std::vector<std::string> oddNames{"plain.jpg",
                                        " leading and trailing ",
                                        "день/снимок «1».HEIC",
                                        "back\\slash",
                                        "line\nfeed",
                                        "return\r",
                                        "-",
                                        "--help",
                                        "*star",
                                        "#comment",
                                        "\\n",
                                        "quote\"'`$(x)"};

std::vector<Entry> listOf(const TemporaryFolder& folder, const std::vector<std::string>& names) {
  std::vector<Entry> entries;
  for (const std::string& name : names) {
    folder.write(name, contentOf(name, 100));
    entries.push_back({sha256Hex(contentOf(name, 100)), name});
  }
  return entries;
}

int exitStatusOf(const TemporaryFolder& folder, const std::string& command) {
  const int status = std::system(("cd '" + folder.path() + "' && " + command).c_str());
  return WEXITSTATUS(status);
}

TEST(ChecksumFile, oddNames_areAcceptedBySha256sum) {
  const TemporaryFolder folder;
  const auto opened = openFolder(folder.path());
  const auto entries = listOf(folder, oddNames);
  write(*opened, entries);
  const std::string check = "sha256sum --strict -c SHA256SUMS < /dev/null > checked.txt 2>&1";
  EXPECT_EQ(exitStatusOf(folder, check), 0) << folder.read("checked.txt");
  const std::string checked = folder.read("checked.txt");
  EXPECT_EQ(std::count(checked.begin(), checked.end(), '\n'),
            static_cast<std::ptrdiff_t>(oddNames.size()))
      << checked;
  folder.write(oddNames[4], "else");
  EXPECT_EQ(exitStatusOf(folder, check), 1);
  EXPECT_THAT(filesIn(folder.path()), testing::Not(testing::Contains(testing::EndsWith(".part"))));
}

TEST(ChecksumFile, lines_writtenAndRead_areTheSame) {
  for (const std::string& name : oddNames) {
    const Entry entry{sha256Hex(name), name};
    const std::string line = encode(entry);
    EXPECT_EQ(std::count(line.begin(), line.end(), '\n'), 1) << name;
    EXPECT_EQ(decode(line.substr(0, line.size() - 1)), entry) << name;
  }
  const std::string digest = sha256Hex("x");
  EXPECT_EQ(decode(digest + " *a"), (Entry{digest, "a"}));
  for (const std::string& line :
       {std::string{}, digest, digest + "  ", digest + " a", digest + "\ta b",
        digest.substr(1) + "   a", "x" + digest.substr(1) + "  a", "\\" + digest + "  a\\x",
        "\\" + digest + "  a\\", "SHA256 (a) = " + digest}) {
    EXPECT_FALSE(decode(line)) << line;
  }
}

TEST(ChecksumFile, list_isReadWholeAndNothingElseIs) {
  const Entry entry{sha256Hex("x"), "a"};
  const std::string line = encode(entry);
  struct Row {
    std::string content;
    std::optional<std::vector<Entry>> list;
  };
  std::string longList;
  for (int i = 0; i < 2000; ++i) longList += line;
  const std::vector<Row> rows{{"", std::vector<Entry>{}},
                              {line, std::vector{entry}},
                              {longList, std::vector<Entry>(2000, entry)},
                              {line + "my notes\n", std::nullopt},
                              {"\n", std::nullopt},
                              {line.substr(0, line.size() - 1), std::nullopt},
                              {std::string(200'000, 'a'), std::nullopt}};
  const TemporaryFolder folder;
  const auto opened = openFolder(folder.path());
  EXPECT_EQ(read(*opened), std::vector<Entry>{});
  for (const Row& row : rows) {
    folder.write(std::string{name}, row.content);
    EXPECT_EQ(read(*opened), row.list) << row.content.substr(0, 100);
  }
  folder.write("mine", line);
  std::filesystem::remove(folder / std::string{name});
  std::filesystem::create_symlink("mine", folder / std::string{name});
  EXPECT_FALSE(read(*opened));
  std::filesystem::remove(folder / std::string{name});
  std::filesystem::create_directory(folder / std::string{name});
  EXPECT_FALSE(read(*opened));
}

TEST(ChecksumFile, write_thatFails_leavesTheEarlierList) {
  const TemporaryFolder folder;
  FaultyFolder opened{openFolder(folder.path())};
  const auto entries = listOf(folder, {"a"});
  write(opened, entries);
  const std::string earlier = folder.read("SHA256SUMS");
  for (const FileOperation operation :
       {FileOperation::create, FileOperation::write, FileOperation::sync, FileOperation::rename}) {
    opened.faults().rule = failing(operation, ENOSPC);
    EXPECT_THROW(write(opened, {}), FileError);
    EXPECT_EQ(folder.read("SHA256SUMS"), earlier);
  }
  EXPECT_THAT(filesIn(folder.path()), testing::ElementsAre("SHA256SUMS", "a"));
}

}  // namespace
}  // namespace tavrix::ChecksumFile
