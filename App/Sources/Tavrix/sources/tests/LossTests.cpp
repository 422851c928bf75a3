// Every loss of the way to the phone is a wait: runs that lose it at every single call.

#include "device/metadata/tests/support/SampleFiles.h"
#include "foundation/Digest.h"
#include "foundation/Sanitizers.h"
#include "sources/tests/CableSession.h"
#include "transfer/DestinationMarker.h"

namespace tavrix {
namespace {

using namespace std::chrono_literals;
using Fault = SimulatedPhone::Fault;

struct LossTest : testing::Test {
  LossTest() {
    content["IMG_0001.JPG"] = testbytes::sampleFiles().front().bytes;
    content["IMG_0002.MOV"] = std::string(1'500'000, 'x');  // more than one read
    content["IMG_0001.AAE"] = "";
    for (const auto& [name, bytes] : content) cable.write("100APPLE/" + name, bytes);
  }

  SimulatedCable cable;
  std::map<std::string, std::string> content;
};

struct CallLossTest : LossTest, testing::WithParamInterface<Fault::Kind> {};

INSTANTIATE_TEST_SUITE_P(faults, CallLossTest,
                         testing::Values(Fault::Kind::leaves, Fault::Kind::leavesHalf,
                                         Fault::Kind::stalls, Fault::Kind::losesAnswer),
                         [](const auto& test) -> std::string {
                           switch (test.param) {
                             case Fault::Kind::leaves:
                               return "leaves";
                             case Fault::Kind::leavesHalf:
                               return "leavesHalf";
                             case Fault::Kind::stalls:
                               return "stalls";
                             case Fault::Kind::losesAnswer:
                               return "losesAnswer";
                           }
                           return {};
                         });

TEST_P(CallLossTest, atAnyCallOfARun_isWaitedForAndEveryFileIsWhole) {
  const bool isLate = GetParam() == Fault::Kind::stalls;
  if (isLate) cable.setPatience(250ms);
  // The sanitizers take several times as long, and find nothing more at every call.
  constexpr std::uint64_t step = hasShadowMemory ? 6 : 1;
  for (std::uint64_t call = 0;; call += step) {
    SCOPED_TRACE(call);
    auto& simulator = cable.plugIn([&](SimulatedPhone& phone) {
      phone.fault = {GetParam(), call};
      phone.usesTLS = false;  // the library is slower with it
      phone.returnsAfter = isLate ? 300ms : 20ms;
    });
    CableSession session{cable};
    ASSERT_NO_FATAL_FAILURE(session.startTransfer(content.size()));
    ASSERT_TRUE(session.runUntil([&] { return session.isDone(); }));
    EXPECT_THAT(std::get<app_phase::Done>(session.model.state().phase).report->failures,
                testing::IsEmpty());
    EXPECT_EQ(session.records, 1);
    EXPECT_TRUE(session.copiesOf(content) == content);
    const std::string hash = sha256Hex(SimulatedPhone{}.serialNumber);
    EXPECT_TRUE(session.destination.has(DestinationMarker::fileName(hash)))
        << "it would be another phone the next time";
    if (simulator.phone(0).fault) {
      EXPECT_GT(call, 40U);
      break;  // the run ended before the fault struck
    }
  }
}

TEST_F(LossTest, serviceThatEndsEveryConnectionForAWhile_isOutlasted) {
  auto& simulator = cable.plugIn([](SimulatedPhone& phone) {
    phone.vanishesAfterBytes = 1'000'000;
    phone.returnsAfter = 1s;  // the service must reject before the phone is back
  });
  CableSession session{cable};
  ASSERT_NO_FATAL_FAILURE(session.startTransfer(content.size()));
  // Rejected earlier, the phone would be lost before the run has begun.
  ASSERT_TRUE(session.runUntil([&] { return !simulator.phone(0).isPluggedIn; }));
  simulator.rejectConnections(true);
  ASSERT_TRUE(session.runUntil(
      [&] { return simulator.rejections() > 3 && session.model.state().pause.has_value(); }));
  simulator.rejectConnections(false);
  ASSERT_TRUE(session.runUntil([&] { return session.isDone(); }));
  EXPECT_EQ(session.records, 1);
  EXPECT_TRUE(session.copiesOf(content) == content);
}

}  // namespace
}  // namespace tavrix
