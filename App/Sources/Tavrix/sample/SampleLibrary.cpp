#include "sample/SampleLibrary.h"

#include <vector>

#include "foundation/files/AtomicFile.h"
#include "media/Snapshot.h"
#include "sample/ExifSegment.h"
#include "sample/JpegFile.h"
#include "sample/Landscape.h"
#include "sample/Placeholders.h"
#include "sample/SampleShot.h"

namespace tavrix {
namespace {

constexpr std::size_t motionPartBytes = 600'000;
constexpr std::size_t videoBytes = 4'000'000;

/// Generates the files of one shot after another.
class ShotFiles {
 public:
  ShotFiles(const SampleOptions& options, const std::function<void(SampleFile)>& receiver)
      : options_(options), receiver_(receiver) {}

  void make(const SampleShot& shot) const {
    using Kind = SampleShot::Kind;
    switch (shot.kind) {
      case Kind::still:
        still(shot, shot.fileName("JPG"));
        break;
      case Kind::live:
        still(shot, shot.fileName("JPG"));
        movie(shot, motionPartBytes);
        break;
      case Kind::edited:
        still(shot, shot.fileName("JPG"));
        still(shot, shot.fileName("JPG", "E"), 1.2);
        handOn(item(shot, shot.fileName("AAE"), "sidecar"), placeholderSidecar());
        break;
      case Kind::video:
        movie(shot, videoBytes);
        break;
      case Kind::savedPicture:
        savedPicture(shot);
        break;
    }
  }

 private:
  static SnapshotItem item(const SampleShot& shot, std::string name, std::string kind) {
    SnapshotItem item;
    item.name = std::move(name);
    item.dir = shot.directory();
    item.kind = std::move(kind);
    item.itemDate = static_cast<double>(shot.instant().time_since_epoch().count()) / 1000;
    return item;
  }

  void handOn(SnapshotItem item, std::string bytes) const {
    item.size = bytes.size();
    receiver_({std::move(item), std::move(bytes)});
  }

  /// `warmth` multiplies red and divides blue, as an edit could.
  std::string picture(const SampleShot& shot, int width, int height, double warmth,
                      const std::string& exif) const {
    const auto midnight = std::chrono::floor<std::chrono::days>(shot.taken);
    const double hour =
        std::chrono::duration<double, std::ratio<3600>>(shot.taken - midnight).count();
    const std::uint64_t seed = options_.seed * 100'000 + static_cast<std::uint64_t>(shot.number);
    const Landscape view{shot.scene, hour, seed, width, height};
    const auto rows = [&](int y, std::span<std::uint8_t> pixels) {
      view.drawRow(y, pixels);
      if (warmth == 1) return;
      for (std::size_t at = 0; at + 2 < pixels.size(); at += 3) {
        pixels[at] = static_cast<std::uint8_t>(std::min(255.0, pixels[at] * warmth));
        pixels[at + 2] = static_cast<std::uint8_t>(pixels[at + 2] / warmth);
      }
    };
    return encodeJpeg(width, height, rows, exif);
  }

  /// Omits the optics data of a camera, so that no picture is taken for a reduced copy.
  void still(const SampleShot& shot, std::string name, double warmth = 1) const {
    const int longSide = options_.longSide;
    const int shortSide = longSide * 3 / 4;
    const ExifData exif{shot.taken, shot.utcOffset, shot.place, longSide, shortSide};
    SnapshotItem entry = item(shot, std::move(name), "photo");
    entry.exifDate = exifDateText(shot.taken);
    entry.exifOffset = exifOffsetText(shot.utcOffset);
    entry.lat = shot.place.latitude;
    entry.lon = shot.place.longitude;
    entry.px = longSide;
    entry.py = shortSide;
    entry.cam = false;
    handOn(std::move(entry), picture(shot, longSide, shortSide, warmth, exifSegment(exif)));
  }

  /// A placeholder film contains neither date nor place, but the phone lists the date of the file.
  void movie(const SampleShot& shot, std::size_t mediaBytes) const {
    const std::string name = shot.fileName("MOV");
    handOn(item(shot, name, "video"), placeholderMovie(name, mediaBytes));
  }

  void savedPicture(const SampleShot& shot) const {
    const int width = options_.longSide / 3;
    const int height = width * 4 / 3;
    SnapshotItem entry = item(shot, shot.fileName("JPG"), "photo");
    entry.itemDate.reset();
    entry.px = width;
    entry.py = height;
    entry.cam = false;
    handOn(std::move(entry), picture(shot, width, height, 1, ""));
  }

  const SampleOptions& options_;
  const std::function<void(SampleFile)>& receiver_;
};

}  // namespace

void SampleLibrary::makeEach(const SampleOptions& options,
                             const std::function<void(SampleFile)>& receiver) {
  const ShotFiles files{options, receiver};
  for (const SampleShot& shot : sampleShots(options.seed)) files.make(shot);
}

std::size_t SampleLibrary::write(const SampleOptions& options, Folder& folder) {
  std::vector<SnapshotItem> items;
  folder.makeFolders("media");
  makeEach(options, [&](const SampleFile& file) {
    writeFileAtomically(folder, "media/" + file.item.name, file.bytes);
    items.push_back(file.item);
  });
  Snapshot::write(items, folder, "snapshot.json");
  return items.size();
}

}  // namespace tavrix
