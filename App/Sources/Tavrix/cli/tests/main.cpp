#include <gmock/gmock.h>

#include "conversion/ConversionProcess.h"

/// Conversions start this program again, as they do the real one.
int main(int argc, char** argv) {
  if (const auto status = tavrix::ConversionProcess::runAsChild(argc, argv)) return *status;
  testing::InitGoogleMock(&argc, argv);
  return RUN_ALL_TESTS();
}
