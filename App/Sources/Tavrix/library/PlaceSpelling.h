#pragma once

#include <vector>

#include "Settings.h"
#include "media/AssetBundle.h"
#include "media/PlaceLookup.h"

namespace tavrix {

/// The settings with the chosen places as the places of a library are called, so that a filter
/// finds them. Letter case and the dots of "ё" do not count, and a country may be given by its
/// code. A name may be Russian or English, unless the settings say in which language the names are.
/// What no shot was taken at stays as it was typed.
Settings withPlacesSpelled(const Settings& settings, const std::vector<AssetBundle>& bundles,
                           const PlaceLookup* lookup);

}  // namespace tavrix
