#include "transfer/TransferOptions.h"

#include "transfer/TransferPlan.h"

namespace tavrix {

std::string_view textOf(PhotoOutputFormat format) {
  return format == PhotoOutputFormat::jpeg ? "jpeg" : "original";
}

std::string_view textOf(VideoOutputFormat format) {
  return format == VideoOutputFormat::h264 ? "h264" : "original";
}

std::string_view textOf(TransferOptions::Container container) {
  switch (container) {
    case TransferOptions::Container::folder:
      return "folder";
    case TransferOptions::Container::zipPerGroup:
      return "zipPerGroup";
    case TransferOptions::Container::zipWhole:
      return "zipWhole";
  }
  return {};
}

std::uint64_t TransferPlan::totalBytes() const {
  std::uint64_t bytes = 0;
  for (const PlannedFile& file : files) bytes += file.asset.sizeBytes();
  return bytes;
}

std::string_view textOf(const PlannedConversion& conversion) {
  if (std::holds_alternative<planned_conversion::Jpeg>(conversion)) return "jpeg";
  return std::holds_alternative<planned_conversion::H264>(conversion) ? "h264" : "none";
}

}  // namespace tavrix
