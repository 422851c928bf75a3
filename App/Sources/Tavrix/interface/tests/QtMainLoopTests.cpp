#include "interface/platform/QtMainLoop.h"

#include <QCoreApplication>

#include "foundation/tests/support/MainLoopContract.h"

namespace tavrix::window {
namespace {

TEST(QtMainLoop, keepsTheContract) {
  QtMainLoop loop;
  checkMainLoopContract(loop, [](const auto& isDone) {
    while (!isDone()) QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
  });
}

}  // namespace
}  // namespace tavrix::window
