#include "conversion/platform/DescriptorReader.h"

#include "conversion/platform/Descriptors.h"
#include "foundation/files/FileError.h"

namespace tavrix {
namespace {

std::uint64_t checked(std::int64_t result) {
  if (result < 0) throw FileError{FileOperation::read, {}, static_cast<int>(-result)};
  return static_cast<std::uint64_t>(result);
}

}  // namespace

std::uint64_t DescriptorReader::size() const { return checked(descriptors::size(descriptor_)); }

std::size_t DescriptorReader::read(std::uint64_t offset, std::span<char> buffer) {
  return checked(descriptors::readAt(descriptor_, offset, buffer));
}

}  // namespace tavrix
