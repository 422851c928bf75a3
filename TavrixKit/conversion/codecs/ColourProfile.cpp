#include "conversion/codecs/ColourProfile.h"

#include <lcms2.h>

#include <algorithm>
#include <memory>

#include "transfer/MediaConverter.h"

namespace tavrix {
namespace {

struct CloseProfile {
  void operator()(void* profile) const { cmsCloseProfile(profile); }
};
using Profile = std::unique_ptr<void, CloseProfile>;
struct FreeCurve {
  void operator()(cmsToneCurve* curve) const { cmsFreeToneCurve(curve); }
};
using Curve = std::unique_ptr<cmsToneCurve, FreeCurve>;

struct NamedPrimaries {
  const char* name;
  cmsCIExyYTRIPLE values;
};

[[noreturn]] void refuse() { throw ConversionError{ConversionFailure::unsupportedColour}; }

/// Returns the primaries of H.273, table 2; all of these have the white point D65.
NamedPrimaries primariesOf(int code) {
  switch (code) {
    case 1:
    case 2:
      return {"sRGB", {{0.64, 0.33, 1}, {0.30, 0.60, 1}, {0.15, 0.06, 1}}};
    case 5:
      return {"BT.601 (625)", {{0.64, 0.33, 1}, {0.29, 0.60, 1}, {0.15, 0.06, 1}}};
    case 6:
    case 7:
      return {"BT.601 (525)", {{0.63, 0.34, 1}, {0.31, 0.595, 1}, {0.155, 0.07, 1}}};
    case 9:
      return {"BT.2020", {{0.708, 0.292, 1}, {0.170, 0.797, 1}, {0.131, 0.046, 1}}};
    case 12:
      return {"Display P3", {{0.680, 0.320, 1}, {0.265, 0.690, 1}, {0.150, 0.060, 1}}};
    default:
      refuse();
  }
}

Curve gammaCurve(double gamma) { return Curve{cmsBuildGamma(nullptr, gamma)}; }

/// Returns the transfer curve of H.273, table 3.
Curve curveOf(int code) {
  switch (code) {
    case 1:
    case 2:
    case 6:
    case 13:
    case 14:
    case 15: {
      // IEC 61966-2-1
      const cmsFloat64Number values[] = {2.4, 1 / 1.055, 0.055 / 1.055, 1 / 12.92, 0.04045};
      return Curve{cmsBuildParametricToneCurve(nullptr, 4, values)};
    }
    case 4:
      return gammaCurve(2.2);
    case 5:
      return gammaCurve(2.8);
    case 8:
      return gammaCurve(1.0);
    default:
      refuse();
  }
}

void setName(cmsHPROFILE profile, const char* name) {
  cmsMLU* const text = cmsMLUalloc(nullptr, 1);
  cmsMLUsetASCII(text, "en", "US", name);
  cmsWriteTag(profile, cmsSigProfileDescriptionTag, text);
  cmsMLUfree(text);
}

std::string profileOf(const char* name, const cmsCIExyY& white, const cmsCIExyYTRIPLE& primaries,
                      const Curve& curve) {
  cmsToneCurve* const curves[] = {curve.get(), curve.get(), curve.get()};
  const Profile profile{cmsCreateRGBProfile(&white, &primaries, curves)};
  if (profile == nullptr) refuse();
  setName(profile.get(), name);
  cmsUInt32Number size = 0;
  if (!cmsSaveProfileToMem(profile.get(), nullptr, &size)) refuse();
  std::string bytes(size, '\0');
  if (!cmsSaveProfileToMem(profile.get(), bytes.data(), &size)) refuse();
  // Clears the creation date, so that the same picture always gives the same bytes.
  std::fill_n(bytes.begin() + 24, 12, '\0');
  return bytes;
}

constexpr cmsCIExyY d65{0.3127, 0.3290, 1};

}  // namespace

std::string profileOf(const CodedColours& colours) {
  const NamedPrimaries primaries = primariesOf(colours.primaries);
  return profileOf(primaries.name, d65, primaries.values, curveOf(colours.transfer));
}

std::string profileOf(const MeasuredColours& colours) {
  return profileOf("RGB", {colours.whiteX, colours.whiteY, 1},
                   {{colours.redX, colours.redY, 1},
                    {colours.greenX, colours.greenY, 1},
                    {colours.blueX, colours.blueY, 1}},
                   gammaCurve(colours.gamma));
}

bool fitsChannels(const std::string& icc, int channels) {
  return icc.size() >= 128 && icc.compare(16, 4, channels == 1 ? "GRAY" : "RGB ") == 0;
}

namespace {

using Transform = std::unique_ptr<void, void (*)(void*)>;

Transform transformToSrgb(const std::string& icc, int channels) {
  const Profile from{cmsOpenProfileFromMem(icc.data(), static_cast<cmsUInt32Number>(icc.size()))};
  const Profile to{cmsCreate_sRGBProfile()};
  Transform transform{nullptr, cmsDeleteTransform};
  if (from == nullptr || to == nullptr) return transform;
  transform.reset(cmsCreateTransform(from.get(), channels == 1 ? TYPE_GRAY_8 : TYPE_RGB_8, to.get(),
                                     TYPE_RGB_8, INTENT_RELATIVE_COLORIMETRIC, 0));
  return transform;
}

/// The transform of the last profile. To make one takes longer than to use it, and the pictures of
/// one phone have the same profile.
struct LastTransform {
  std::string icc;
  int channels = 0;
  Transform transform{nullptr, cmsDeleteTransform};
};

}  // namespace

std::optional<std::vector<std::uint8_t>> inSrgb(std::span<const std::uint8_t> values, int channels,
                                                const std::string& icc) {
  if (!fitsChannels(icc, channels)) return std::nullopt;
  static thread_local LastTransform last;
  if (last.icc != icc || last.channels != channels)
    last = {icc, channels, transformToSrgb(icc, channels)};
  if (last.transform == nullptr) return std::nullopt;
  const std::size_t pixels = values.size() / static_cast<std::size_t>(channels);
  std::vector<std::uint8_t> result(pixels * 3);
  cmsDoTransform(last.transform.get(), values.data(), result.data(),
                 static_cast<cmsUInt32Number>(pixels));
  return result;
}

}  // namespace tavrix
