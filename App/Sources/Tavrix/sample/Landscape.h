#pragma once

#include <cstdint>
#include <span>
#include <vector>

namespace tavrix {

enum class Scene { hills, city, sea };

/// A colour with red, green and blue from 0 to 255.
struct Color {
  double red = 0;
  double green = 0;
  double blue = 0;

  friend bool operator==(const Color&, const Color&) = default;
};

/// A made-up view: sky by the hour of the day, sun or moon, and the scene before it. Equal
/// arguments give equal pixels; every seed gives another view.
class Landscape {
 public:
  /// `hour` is the time of day from 0 to below 24; the size is in pixels.
  Landscape(Scene scene, double hour, std::uint64_t seed, int width, int height);

  int width() const { return width_; }
  int height() const { return height_; }
  /// Fills `pixels` (3 · width bytes: red, green, blue) with the row `y`, 0 being the top.
  void drawRow(int y, std::span<std::uint8_t> pixels) const;

 private:
  /// A silhouette: everything from top[x] downward, nearer ones over farther ones.
  struct Layer {
    Color color;
    std::vector<int> top;
    bool hasWindows = false;
    bool hasWaves = false;
  };

  Color skyAt(int y) const;
  Color colorAt(int x, int y, const Color& sky) const;
  Color layerColor(const Layer& layer, int x, int y) const;

  int width_;
  int height_;
  double hour_;
  std::uint64_t seed_;
  double sunX_ = 0;
  double sunY_ = 0;
  double sunRadius_ = 0;
  std::vector<Layer> layers_;
};

}  // namespace tavrix
