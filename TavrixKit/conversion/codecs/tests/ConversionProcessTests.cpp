#include <fcntl.h>
#include <sys/stat.h>

#include <chrono>
#include <thread>

#include "conversion/ProcessConverter.h"
#include "conversion/codecs/tests/TestStills.h"
#include "foundation/files/FileError.h"
#include "transfer/tests/MediaConverterContract.h"

namespace tavrix {
namespace {

using namespace std::chrono_literals;

TestPicture gradient() {
  return TestPicture::make(48, 32, 3, 8, [](int x, int y, int c) { return x * 5 + y + c; });
}

INSTANTIATE_TEST_SUITE_P(ProcessConverter, MediaConverterContract,
                         testing::Values(ConverterUnderTest{
                             [] {
                               return std::make_unique<ProcessConverter>(TAVRIX_CONVERT_PROGRAM);
                             },
                             pngOf(gradient())}));

/// A replacement for the program that misbehaves according to its script; descriptor 5 is the
/// report.
struct MisbehavingProcess : testing::Test {
  void convertBy(const std::string& script, std::stop_token stop = {}) {
    folder.write("program", "#!/bin/sh\n" + script + "\n");
    ::chmod((folder / "program").c_str(), 0700);
    folder.write("in.part", pngOf(gradient()));
    std::filesystem::remove(folder / "out.part");
    ConversionLimits limits;
    limits.silence = 1s;
    ProcessConverter converter{folder / "program", limits};
    converter.convert(assetOf("100APPLE/IMG_1.PNG"), planned_conversion::Jpeg{0.8},
                      *openFolder(folder.path()), "in.part", "out.part", {}, std::move(stop));
  }
  std::string failureOf(const std::string& script) {
    try {
      convertBy(script);
    } catch (const ConversionError& error) {
      return std::string{textOf(error.failure())};
    } catch (const FileError& error) {
      return "FileError " + std::to_string(error.code());
    }
    return "none";
  }

  TemporaryFolder folder;
};

TEST_F(MisbehavingProcess, everyEnd_hasItsReason) {
  const std::pair<const char*, const char*> rows[] = {
      {"kill -SEGV $$", "crashed"},
      {"kill -XCPU $$", "tooSlow"},
      {"kill -KILL $$", "failed"},
      {"exit 3", "crashed"},
      {"exit 0", "crashed"},
      {"echo 'kept rawPicture' >&5", "rawPicture"},
      {"echo 'unwritable 28' >&5", "FileError 28"},
      {"echo 'unwritable 27' >&5", "tooLarge"},
      {"echo 'done 48 32 0 0' >&5; exit 1", "crashed"},
      // No result, an invalid one, and one of another size.
      {"echo 'done 48 32 0 0' >&5", "wrongResult"},
      {"echo hello >&4; echo 'done 48 32 0 0' >&5", "wrongResult"},
      {"printf '\\377\\330\\377\\300\\0\\013\\010\\0\\010\\0\\010\\1\\1\\021\\0\\377\\332\\0\\002"
       "\\377\\331' >&4; echo 'done 8 8 0 0' >&5",
       "wrongResult"},
      {"sleep 60", "tooSlow"},
      {"exec 5>&-; sleep 60", "failed"},
  };
  for (const auto& [script, reason] : rows) EXPECT_EQ(failureOf(script), reason) << script;
  EXPECT_THROW(ProcessConverter{"/no/such/program"}.convert(
                   assetOf("100APPLE/IMG_1.PNG"), planned_conversion::Jpeg{},
                   *openFolder(folder.path()), "in.part", "other", {}, {}),
               ConversionError);
}

TEST_F(MisbehavingProcess, stop_endsItAtOnce_andNothingStaysBehind) {
  std::stop_source stop;
  std::jthread stopper{[&] {
    std::this_thread::sleep_for(100ms);
    stop.request_stop();
  }};
  const auto begin = std::chrono::steady_clock::now();
  EXPECT_THROW(convertBy("echo $$ > " + (folder / "id") + "; exec sleep 60", stop.get_token()),
               ConversionError);
  EXPECT_LT(std::chrono::steady_clock::now() - begin, 20s);
  EXPECT_NE(::kill(std::stoi(folder.read("id")), 0), 0);
}

TEST_F(MisbehavingProcess, descriptors_areItsThreeAlone) {
  EXPECT_EQ(
      failureOf("[ -e /proc/$$/fd/5 ] && ! [ -e /proc/$$/fd/6 ] && echo 'kept rawPicture' >&5"),
      "rawPicture");
}

}  // namespace
}  // namespace tavrix
