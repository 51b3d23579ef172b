// What the pane does to the simulated computer, one line of text for each effect. A test installs a sink to
// read them. Knows nothing of the platform interfaces.
#pragma once

#include <functional>
#include <string>
#include <utility>

namespace norvik {

enum class EffectKind {
  launch,
  log,
  alert,
  signal,
  post,
  openUrl,
  authorization,
  rights,
  display,
  sleep,
  runLoop,
  write,
  makeDirectory,
};

// Called while the effect happens, before the operation returns.
using EffectSink = std::function<void(EffectKind kind, const std::string& line)>;

class EffectReporter {
 public:
  // At most one; none drops the effects.
  void setSink(EffectSink sink) { sink_ = std::move(sink); }
  void report(EffectKind kind, const std::string& line) const {
    if (sink_) sink_(kind, line);
  }

 private:
  EffectSink sink_;
};

}  // namespace norvik
