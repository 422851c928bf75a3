#include "foundation/Log.h"

#include "foundation/Text.h"

namespace tavrix {
namespace {

class SilentLog : public Log {
 public:
  bool showsPrivateFields() const override { return false; }
  void write(std::string_view) override {}
};

}  // namespace

Log& silentLog() {
  static SilentLog log;
  return log;
}

std::string detail::shownText(const Log& log, PrivateField field) {
  return log.showsPrivateFields() ? printable(field.text) : "<private>";
}

}  // namespace tavrix
