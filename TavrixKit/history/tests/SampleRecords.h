#pragma once

#include <string>

#include "history/TransferRecord.h"

namespace tavrix {

inline Uuid idOf(int number) {
  Uuid id;
  id.bytes[0] = static_cast<std::uint8_t>(number);
  id.bytes[15] = 1;
  return id;
}

/// Returns a record in which every field has a value of its own.
inline TransferRecord fullRecord() {
  using Record = TransferRecord;
  Record record;
  record.id = idOf(0xAB);
  record.startedAt = *parseIso8601("2026-05-20T12:00:00.250Z");
  record.finishedAt = *parseIso8601("2026-05-20T12:01:00Z");
  record.status = Record::Status::completedWithFailures;
  record.phoneName = "iPhone «Маши»\n";
  record.phoneHash = std::string(64, 'a');
  record.destinationPath = "/photos/из телефона";
  record.options = {.includePhotos = false,
                    .includeLive = false,
                    .liveOnlyPhoto = true,
                    .includeVideos = false,
                    .includeAAE = false,
                    .editedPolicy = "editedOnly",
                    .onlyNew = false,
                    .skipOptimized = true,
                    .mode = "trips",
                    .granularity = "month",
                    .homeName = "Дом",
                    .eventGapHours = 4.5,
                    .eventGapKm = 30.25,
                    .tripDistanceKm = 100,
                    .tripCityKm = 50.125,
                    .templateName = "Дата",
                    .photoFormat = "jpeg",
                    .jpegQuality = 0.85,
                    .videoFormat = "h264",
                    .container = "zipPerGroup",
                    .separatePhotoVideo = true,
                    .flattenSingleKind = true,
                    .fileNamePrefix = "VK_"};
  const Record::Place place{{{"en", "Rome"}, {"ru", "Рим"}}, "IT", 41.9, 12.5};
  const Record::File copied{
      "1/A.HEIC", Record::Role::original,   "A.HEIC",     "VK_A.jpg", "d/A.jpg",
      1000,       Record::PartState::onMac, std::nullopt, true};
  const Record::File failed{
      "1/A.MOV",
      Record::Role::liveVideo,
      "A.MOV",
      std::nullopt,
      std::nullopt,
      5,
      Record::PartState::failed,
      "нет файла",
      false,
      ReasonCode{.code = "sizesDiffer", .systemError = 5, .expectedBytes = 9, .receivedBytes = 7}};
  const Record::Shot live{
      "1/A.HEIC", "A.HEIC",         Record::ShotKind::livePhoto, record.startedAt, 41.9,
      12.5,       {copied, failed}, Record::Outcome::failed};
  const Record::Shot film{
      "1/B.MOV",    "B.MOV", Record::ShotKind::video,   std::nullopt, std::nullopt,
      std::nullopt, {},      Record::Outcome::optimized};
  record.folders = {{"2026-05-20", place, {live}}, {"", std::nullopt, {film}}};
  record.totals = totalsOf(record.folders);
  record.notes = {"Перенос остановлен: нет места"};
  return record;
}

/// Returns a small record of a run that copied one shot.
inline TransferRecord smallRecord(int number, const std::string& startedAt,
                                  const std::string& destination = "/photos") {
  TransferRecord record;
  record.id = idOf(number);
  record.startedAt = *parseIso8601(startedAt);
  record.finishedAt = record.startedAt + std::chrono::minutes{1};
  record.phoneName = "iPhone";
  record.destinationPath = destination;
  const TransferRecord::File file{"100APPLE/IMG_1.HEIC",
                                  TransferRecord::Role::original,
                                  "IMG_1.HEIC",
                                  "IMG_1.HEIC",
                                  "2026-05-20/IMG_1.HEIC",
                                  10,
                                  TransferRecord::PartState::onMac,
                                  std::nullopt,
                                  false};
  TransferRecord::Shot shot;
  shot.id = file.assetID;
  shot.name = file.name;
  shot.files = {file};
  shot.outcome = TransferRecord::Outcome::onMac;
  record.folders = {{"2026-05-20", std::nullopt, {shot}}};
  record.totals = totalsOf(record.folders);
  return record;
}

}  // namespace tavrix
