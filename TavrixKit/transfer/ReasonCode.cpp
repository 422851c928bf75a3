#include "transfer/ReasonCode.h"

namespace tavrix {

void encode(const ReasonCode& reason, JsonWriter& json) {
  json.beginObject().field("code", reason.code);
  if (reason.expectedBytes) json.field("expectedBytes", *reason.expectedBytes);
  if (reason.receivedBytes) json.field("receivedBytes", *reason.receivedBytes);
  if (reason.systemError) json.field("systemError", std::int64_t{*reason.systemError});
  json.endObject();
}

}  // namespace tavrix
