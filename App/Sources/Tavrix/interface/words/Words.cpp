#include "interface/words/Words.h"

#include "interface/engine/EngineObjects.h"

namespace tavrix::window {

Words* Words::create(QQmlEngine* engine, QJSEngine* /*script*/) {
  return &EngineObjects::of<Words>(*engine);
}

void Words::setLanguage(Language language) {
  if (language_ == language) return;
  language_ = language;
  Q_EMIT languageChanged();
}

}  // namespace tavrix::window
