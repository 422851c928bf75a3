#include "cli/printing/TerminalSink.h"

#include <gtest/gtest.h>

namespace tavrix::cli {
namespace {

struct KeptText : TextSink {
  void write(std::string_view more) override { text += more; }
  std::string text;
};

TEST(TerminalSink, charactersThatControlATerminal_areReplaced) {
  KeptText kept;
  TerminalSink sink{kept};
  sink.write("a\tПляж\n\nb\x1b[2Jc\r\x7f");
  sink.write("\u009b31m IMG\u202egpj.exe\u2066\u2028\n");
  EXPECT_EQ(kept.text,
            "a\tПляж\n\nb\uFFFD[2Jc\uFFFD\uFFFD\uFFFD31m IMG\uFFFDgpj.exe\uFFFD\uFFFD\n");
}

}  // namespace
}  // namespace tavrix::cli
