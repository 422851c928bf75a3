#include "library/ContinuedFolders.h"

#include "foundation/Text.h"
#include "settings/FolderMaking.h"
#include "transfer/FolderContinuation.h"

namespace tavrix {
namespace {

using TransferPlanner::NamedGroup;

bool isByHand(const MediaGroup& group, const Settings& settings) {
  const auto& names = settings.naming.nameOverrides;
  const auto manual = names.find(group.id);
  return !group.children.empty() || (manual != names.end() && !manual->second.empty());
}

bool hasFolders(const TransferOptions& options) {
  return options.container == TransferOptions::Container::folder && !options.flatLayout;
}

}  // namespace

std::vector<NamedGroup> continuedFolders(const std::vector<FolderNaming::Row>& rows,
                                         const ContinuationContext& context,
                                         const DestinationView& destination) {
  const Settings& settings = *context.settings;
  if (!settings.layout.continueFolders || !hasFolders(context.options) || destination.isEmpty()) {
    std::vector<NamedGroup> folders;
    folders.reserve(rows.size());
    for (const FolderNaming::Row& row : rows) folders.push_back({row.name, row.group});
    return folders;
  }
  const FolderContinuation::Names names{
      .making = folderMaking(settings, context.systemLocaleID),
      .isShared = settings.naming.mergeSameNames,
      .clock = groupingSettings(settings, context.naming).clock(),
      .isByHand = [&](const MediaGroup& group) { return isByHand(group, settings); },
      .nameOf =
          [&](const MediaGroup& group) {
            return nameGroups({group}, settings, context.systemLocaleID, context.naming, nullptr)
                .rows.front()
                .name;
          }};
  return FolderContinuation::folders(rows, names, context.options, destination);
}

std::vector<FolderNaming::Row> rowsOf(const std::vector<NamedGroup>& folders) {
  std::vector<FolderNaming::Row> rows;
  rows.reserve(folders.size());
  for (const NamedGroup& folder : folders) {
    rows.push_back({folder.folderName, folder.group, folder.templateName});
  }
  return rows;
}

std::vector<DestinationMarker::FolderNote> notesOf(const std::vector<NamedGroup>& folders,
                                                   const ContinuationContext& context) {
  std::vector<DestinationMarker::FolderNote> notes;
  if (!hasFolders(context.options)) return notes;
  const Shared<DestinationMarker::FolderMaking> making =
      folderMaking(*context.settings, context.systemLocaleID);
  for (const NamedGroup& folder : folders) {
    if (!isByHand(*folder.group, *context.settings)) {
      notes.push_back({replacingInvalidUtf8(folder.folderName), making});
    }
  }
  return notes;
}

}  // namespace tavrix
