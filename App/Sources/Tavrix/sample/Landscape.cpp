#include "sample/Landscape.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <numbers>

#include "sample/SampleRandom.h"

namespace tavrix {
namespace {

Color mixed(const Color& a, const Color& b, double share) {
  return {std::lerp(a.red, b.red, share), std::lerp(a.green, b.green, share),
          std::lerp(a.blue, b.blue, share)};
}

Color shaded(const Color& color, double factor) {
  return {color.red * factor, color.green * factor, color.blue * factor};
}

/// The colours of the sky at an hour, at the zenith and at the horizon.
struct Sky {
  double hour;
  Color zenith;
  Color horizon;
};

constexpr std::array<Sky, 7> skies{{{0, {8, 12, 36}, {24, 32, 64}},
                                    {5, {40, 52, 104}, {232, 150, 110}},
                                    {8, {70, 130, 210}, {214, 226, 236}},
                                    {14, {44, 112, 206}, {178, 212, 238}},
                                    {18.5, {64, 98, 178}, {246, 196, 128}},
                                    {21, {26, 28, 78}, {214, 92, 72}},
                                    {24, {8, 12, 36}, {24, 32, 64}}}};

Sky skyOf(double hour) {
  const auto after = std::find_if(skies.begin() + 1, skies.end() - 1,
                                  [&](const Sky& sky) { return sky.hour >= hour; });
  const Sky& before = *(after - 1);
  const double share = (hour - before.hour) / (after->hour - before.hour);
  return {hour, mixed(before.zenith, after->zenith, share),
          mixed(before.horizon, after->horizon, share)};
}

/// Returns the brightness of the ground, from 0.25 at night to 1 in the middle of the day.
double daylight(double hour) {
  return 0.25 + 0.75 * std::max(0.0, std::sin((hour - 4.5) / 17 * std::numbers::pi));
}

/// Returns a ridge line: a few sine waves around `level`. Heights are fractions of the picture's
/// height.
std::vector<int> ridge(int width, int height, double level, double swing, SampleRandom& random) {
  std::vector<int> top(static_cast<std::size_t>(width));
  std::array<double, 3> phase{};
  for (double& angle : phase) angle = random.between(0, 2 * std::numbers::pi);
  for (std::size_t x = 0; x < top.size(); ++x) {
    const double t = static_cast<double>(x) / width * 2 * std::numbers::pi;
    const double wave = std::sin(1.3 * t + phase[0]) + std::sin(2.9 * t + phase[1]) / 2 +
                        std::sin(7.1 * t + phase[2]) / 8;
    top[x] = static_cast<int>((level + swing * wave / 1.6) * height);
  }
  return top;
}

/// Returns a row of houses of random widths and heights, with their tops at or above `level`.
std::vector<int> skyline(int width, int height, double level, double swing, SampleRandom& random) {
  std::vector<int> top;
  while (std::ssize(top) < width) {
    const int houseWidth = std::max(1, static_cast<int>(random.between(0.04, 0.11) * width));
    const int houseTop = static_cast<int>((level - random.between(0, swing)) * height);
    top.insert(top.end(), static_cast<std::size_t>(houseWidth), houseTop);
  }
  top.resize(static_cast<std::size_t>(width));
  return top;
}

std::uint8_t pixel(double value) {
  return static_cast<std::uint8_t>(std::clamp(value, 0.0, 255.0));
}

}  // namespace

Landscape::Landscape(Scene scene, double hour, std::uint64_t seed, int width, int height)
    : width_(width), height_(height), hour_(hour), seed_(seed) {
  SampleRandom random{seed, 1};
  sunX_ = random.between(0.15, 0.85) * width;
  sunY_ = random.between(0.12, 0.42) * height;
  sunRadius_ = random.between(0.03, 0.05) * width;
  const Color land{random.between(50, 110), random.between(95, 145), random.between(50, 90)};
  const Color stone{random.between(120, 170), random.between(100, 130), random.between(85, 115)};
  const Color water{random.between(20, 50), random.between(85, 125), random.between(130, 170)};
  const double light = daylight(hour);
  const auto add = [&](const Color& color, double brightness, std::vector<int> top) -> Layer& {
    return layers_.emplace_back(Layer{shaded(color, brightness * light), std::move(top)});
  };
  add({110, 125, 150}, 1, ridge(width, height, 0.52, 0.06, random));
  if (scene == Scene::hills) {
    add(land, 0.9, ridge(width, height, 0.64, 0.07, random));
    add(land, 0.65, ridge(width, height, 0.82, 0.06, random));
  } else if (scene == Scene::city) {
    add(stone, 0.85, skyline(width, height, 0.62, 0.22, random)).hasWindows = true;
    add(stone, 0.6, skyline(width, height, 0.78, 0.2, random)).hasWindows = true;
  } else {
    add(water, 1, std::vector<int>(static_cast<std::size_t>(width), height * 58 / 100)).hasWaves =
        true;
    add({214, 190, 140}, 0.9, ridge(width, height, 0.88, 0.04, random));
  }
}

void Landscape::drawRow(int y, std::span<std::uint8_t> pixels) const {
  const Color sky = skyAt(y);
  for (int x = 0; x < width_; ++x) {
    const Color color = colorAt(x, y, sky);
    const std::size_t at = static_cast<std::size_t>(x) * 3;
    pixels[at] = pixel(color.red);
    pixels[at + 1] = pixel(color.green);
    pixels[at + 2] = pixel(color.blue);
  }
}

Color Landscape::skyAt(int y) const {
  const Sky sky = skyOf(hour_);
  return mixed(sky.zenith, sky.horizon, std::min(1.0, y / (0.6 * height_)));
}

Color Landscape::colorAt(int x, int y, const Color& sky) const {
  for (auto layer = layers_.rbegin(); layer != layers_.rend(); ++layer) {
    if (y >= layer->top[static_cast<std::size_t>(x)]) return layerColor(*layer, x, y);
  }
  const double dx = x - sunX_;
  const double dy = y - sunY_;
  return dx * dx + dy * dy < sunRadius_ * sunRadius_ ? Color{255, 244, 214} : sky;
}

Color Landscape::layerColor(const Layer& layer, int x, int y) const {
  if (layer.hasWaves)
    return shaded(layer.color, 1 + 0.12 * std::sin(y * 90.0 / height_ + x * 12.0 / width_));
  if (!layer.hasWindows) return layer.color;
  const int cell = std::max(4, width_ / 80);
  const bool isPane = x % cell > cell / 3 && y % cell > cell / 3;
  const auto window =
      seed_ + static_cast<std::uint64_t>(y / cell) * 1000 + static_cast<std::uint64_t>(x / cell);
  const bool isLit = window * 0x9E3779B97F4A7C15ULL >> 62U == 0;  // Fibonacci hashing: one in four
  if (!isPane) return layer.color;
  return isLit && daylight(hour_) < 0.6 ? Color{250, 214, 130} : shaded(layer.color, 0.75);
}

}  // namespace tavrix
