// Converts a film of 20 seconds in full HD to H.264, against FFmpeg's own program with the same
// settings.

#include <filesystem>
#include <string>

#include "Benches.h"
#include "Measure.h"
#include "conversion/ProcessConverter.h"

namespace tavrix::bench {
namespace {

void makeClip(const std::string& path) {
  shell(
      "ffmpeg -v error -y -f lavfi -i testsrc2=s=1920x1080:r=30:d=20 -f lavfi -i sine=440:d=20 "
      "-vf noise=alls=6:allf=t -pix_fmt yuv420p -c:v libx265 -preset ultrafast "
      "-x265-params log-level=error -tag:v hvc1 -c:a aac '" +
      path + "'");
}

void convert(const std::string& folder, const std::string& clip, const std::string& result) {
  std::filesystem::remove(folder + "/" + result);
  const MediaAsset asset{"clip",       "IMG_1.MOV",  "100APPLE", MediaKind::video, 1,
                         std::nullopt, std::nullopt, false,      std::nullopt,     std::nullopt};
  ProcessConverter{TAVRIX_CONVERT_PROGRAM}.convert(asset, planned_conversion::H264{},
                                                   *openFolder(folder), clip, result, {}, {});
}

}  // namespace

void benchVideos(const std::string& folder) {
  std::filesystem::create_directories(folder);
  const std::string clip = folder + "/clip.mov";
  makeClip(clip);
  const Duel films = duel(
      2, [&] { convert(folder, "clip.mov", "ours.mp4"); },
      [&] {
        shell("ffmpeg -v error -y -i '" + clip +
              "' -c:v libx264 -preset veryfast -crf 20 -profile:v high -g 60 -enc_time_base -1 "
              "-fps_mode passthrough -c:a copy -movflags +faststart '" +
              folder + "/theirs.mp4'");
      });
  print({"20 s of HEVC to H.264 : ffmpeg with the same settings", time(films.ours),
         time(films.theirs), films.ratio(), 1.1});
  std::filesystem::remove_all(folder);
}

}  // namespace tavrix::bench
