#include "transfer/MarkerClaims.h"

namespace tavrix::DestinationMarker {

bool isDigest(std::string_view text) {
  return text.size() == 64 &&
         text.find_first_not_of("0123456789abcdefABCDEF") == std::string_view::npos;
}

bool Claim::hasDigest() const { return file->sha256 && isDigest(*file->sha256); }

Claims claims(const Marker& marker) {
  std::size_t count = 0;
  for (const PhoneRecord& record : marker.records) count += record.files.size();
  Claims result;
  result.reserve(count);
  for (const PhoneRecord& record : marker.records) {
    for (const FileRecord& file : record.files) {
      const Claim claim{&record, &file};
      const auto [found, isNew] = result.try_emplace(file.path, claim);
      if (!isNew && claim.outranks(found->second)) found->second = claim;
    }
  }
  return result;
}

}  // namespace tavrix::DestinationMarker
