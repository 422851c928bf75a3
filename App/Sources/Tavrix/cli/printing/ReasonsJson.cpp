#include "cli/printing/ReasonsJson.h"

#include "cli/printing/GroupText.h"

namespace tavrix::cli {
namespace {

using namespace grouping_reason;

void writePoint(JsonWriter& json, std::string_view key, const GeoPoint& point) {
  json.key(key).beginObject().field("latitude", point.latitude);
  json.field("longitude", point.longitude).endObject();
}

std::string_view textOf(DateGranularity granularity) {
  switch (granularity) {
    case DateGranularity::day:
      return "day";
    case DateGranularity::month:
      return "month";
    case DateGranularity::year:
      return "year";
  }
  return {};
}

/// Writes the fields of one reason into an open object.
class ReasonFields {
 public:
  explicit ReasonFields(JsonWriter& json) : json_(json) {}

  void operator()(const FirstShot&) const { name("firstShot"); }
  void operator()(const LastShot&) const { name("lastShot"); }
  void operator()(const NoHome&) const { name("noHome"); }
  void operator()(const NoPosition&) const { name("noPosition"); }
  void operator()(const Pause& pause) const {
    name("pause");
    json_.field("gapSeconds", std::chrono::duration<double>{pause.gap}.count());
    json_.field("limitHours", pause.limitHours);
  }
  void operator()(const Jump& reason) const { distance("jump", reason); }
  void operator()(const AwayFromHome& reason) const { distance("awayFromHome", reason); }
  void operator()(const NearHome& reason) const { distance("nearHome", reason); }
  void operator()(const NewCity& reason) const { distance("newCity", reason); }
  void operator()(const Outing& outing) const {
    name("outing");
    json_.field("stay", outing.stay);
  }

 private:
  void name(std::string_view text) const { json_.field("reason", text); }
  template <typename Reason>
  void distance(std::string_view text, const Reason& reason) const {
    name(text);
    json_.field("km", reason.km).field("limitKm", reason.limitKm);
  }

  JsonWriter& json_;
};

template <typename Reason>
void writeReason(JsonWriter& json, std::string_view key, const Reason& reason) {
  json.key(key).beginObject();
  std::visit(ReasonFields{json}, reason);
  json.endObject();
}

void writeStay(JsonWriter& json, const TripReasons::Stay& stay) {
  json.beginObject().field("groupID", stay.groupID);
  json.field("dateStart", iso8601(stay.dateStart)).field("dateEnd", iso8601(stay.dateEnd));
  writePoint(json, "center", stay.center);
  json.field("shotCount", stay.shotCount).field("days", stay.days).field("minDays", stay.minDays);
  writeReason(json, "begin", stay.begin);
  writeReason(json, "end", stay.end);
  json.endObject();
}

void writeMonth(JsonWriter& json, const MediaGroup& group, const TripReasons::Month& month) {
  json.beginObject().field("groupID", month.groupID).key("shots").beginArray();
  for (std::size_t i = 0; i < month.shots.size(); ++i) {
    json.beginObject().field("bundle", group.bundles.at(i).id());
    std::visit(ReasonFields{json}, month.shots[i]);
    json.endObject();
  }
  json.endArray().endObject();
}

/// Writes the fields of the explanation into an open object.
class Explanation {
 public:
  Explanation(JsonWriter& json, const Library& library) : json_(json), library_(library) {}

  void operator()(const CalendarReasons& reasons) const {
    json_.field("mode", "byDate").field("granularity", textOf(reasons.granularity));
  }

  void operator()(const FlatReasons&) const { json_.field("mode", "flat"); }

  void operator()(const EventReasons& reasons) const {
    json_.field("mode", "events").key("events").beginArray();
    for (const EventReasons::Event& event : reasons.events) {
      json_.beginObject().field("groupID", event.groupID);
      writeReason(json_, "begin", event.begin);
      json_.endObject();
    }
    json_.endArray();
  }

  void operator()(const TripReasons& reasons) const {
    json_.field("mode", "trips");
    if (library_.home && library_.home->point) writePoint(json_, "home", *library_.home->point);
    json_.field("homeIsManual", library_.home && library_.home->isManual);
    json_.key("stays").beginArray();
    for (const TripReasons::Stay& stay : reasons.stays) writeStay(json_, stay);
    json_.endArray().key("months").beginArray();
    const GroupIndex index{library_};
    for (const TripReasons::Month& month : reasons.months) {
      writeMonth(json_, *index.at(month.groupID).group, month);
    }
    json_.endArray();
  }

 private:
  JsonWriter& json_;
  const Library& library_;
};

}  // namespace

void writeReasons(JsonWriter& json, const Library& library) {
  if (!library.reasons) return;
  json.key("explanation").beginObject();
  std::visit(Explanation{json, library}, *library.reasons);
  json.endObject();
}

}  // namespace tavrix::cli
