#pragma once

#include <string>

/// Each function measures one part of the program against a yardstick and prints its rows. `folder`
/// is an empty folder on a real disk for the files it needs.
namespace tavrix::bench {

void benchStart(const std::string& folder);
/// Only in the benchmark of the window.
void benchWindow(const std::string& folder);
void benchPipeline(const std::string& folder);
void benchGrouping();
void benchModel(const std::string& folder);
void benchOnlyNew(const std::string& folder);
void benchHistory(const std::string& folder);
void benchCopying(const std::string& folder);
void benchPacking(const std::string& folder);
void benchVerifying(const std::string& folder);
void benchPlaces(const std::string& folder);
void benchMetadata(const std::string& folder);
void benchPhone(const std::string& folder);
void benchVideos(const std::string& folder);
void benchStills(const std::string& folder);
void benchThumbnails(const std::string& folder);

}  // namespace tavrix::bench
