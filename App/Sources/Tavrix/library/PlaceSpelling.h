#pragma once

#include <vector>

#include "media/AssetBundle.h"
#include "media/PlaceLookup.h"
#include "settings/Settings.h"

namespace tavrix {

/// Returns the settings with the chosen places replaced by the names that the library uses, so that
/// a filter finds them. Ignores letter case and the dots of "ё", and accepts a country code as
/// well. A name may be Russian or English, unless the settings give the language of the names. A
/// name without a matching shot stays as typed.
Settings withPlacesSpelled(const Settings& settings, const std::vector<AssetBundle>& bundles,
                           const PlaceLookup* lookup);

}  // namespace tavrix
