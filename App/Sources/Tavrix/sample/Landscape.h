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

/// A synthetic view: a sky for the time of day, sun or moon, and the scene in front. Equal
/// arguments give equal pixels; each seed gives a different view.
class Landscape {
 public:
  /// `hour` is the time of day, from 0 to less than 24. The size is in pixels.
  Landscape(Scene scene, double hour, std::uint64_t seed, int width, int height);

  int width() const { return width_; }
  int height() const { return height_; }
  /// Fills `pixels` (3 · width bytes: red, green, blue) with row `y`, where 0 is the top.
  void drawRow(int y, std::span<std::uint8_t> pixels) const;

 private:
  /// A silhouette that covers everything from top[x] downward. Nearer layers cover farther ones.
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
