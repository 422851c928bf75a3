#include "model/FolderTotals.h"

namespace tavrix {

PlanCounters countersOf(const FolderTotals& totals, const CheckMarks& checks) {
  PlanCounters sum;
  bool isAnyChosen = false;
  for (const FolderTotals::Folder& folder : totals.visible) {
    if (!checks.isIncluded(folder.key)) continue;
    isAnyChosen = true;
    sum.newFilesCount += folder.share.newFilesCount;
    sum.newBytes += folder.share.newBytes;
    sum.knownFilesCount += folder.share.knownFilesCount;
    sum.optimizedCount += folder.share.optimizedCount;
  }
  if (!isAnyChosen && totals.hasFolders) return sum;
  for (const FolderTotals::Folder& folder : totals.hidden) {
    if (checks.isIncluded(folder.key)) sum.optimizedCount += folder.share.optimizedCount;
  }
  return sum;
}

}  // namespace tavrix
