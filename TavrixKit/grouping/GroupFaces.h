#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <vector>

#include "media/AssetBundle.h"

namespace tavrix {

/// Returns the file that shows a shot: the edited version of its kind if there is one, otherwise
/// its primary picture. Of a Live Photo it is the still.
const MediaAsset& shownFile(const AssetBundle& shot);

/// The few pictures that stand for a group where it is shown as one object.
struct GroupFaces {
  struct Face {
    enum class Kind : std::uint8_t { photograph, film, screenshot };

    MediaAsset asset;      ///< see shownFile()
    std::size_t shot = 0;  ///< its index in the shots of the group
    Kind kind = Kind::photograph;

    friend bool operator==(const Face&, const Face&) = default;
  };
  static constexpr std::size_t usualCount = 5;
  /// Shots closer in time than this are of one moment, such as the shots of a burst.
  static constexpr std::chrono::seconds moment{10};

  std::vector<Face> faces;     ///< photographs first, then films; each in capture order
  std::size_t otherShots = 0;  ///< shots with pictures that are not among the faces

  /// Chooses up to `most` faces from shots in capture order. Each next face is as far in time from
  /// those before it as possible, with these exceptions:
  /// - A shot of the same moment as a face follows only when no other moment is left.
  /// - A film follows only when no moment with a photograph is left.
  /// - A screenshot is not chosen if the group has a photograph. Otherwise it follows the films.
  ///
  /// Undated shots are treated as taken right after the last dated one, in their order. The time
  /// grows linearly with the number of shots times `most`.
  static GroupFaces of(const std::vector<AssetBundle>& shots, std::size_t most = usualCount);

  friend bool operator==(const GroupFaces&, const GroupFaces&) = default;
};

}  // namespace tavrix
