// The kinds by name.
#include "src/frontends/scenario/trace.h"

#include "src/frontends/scenario/known_words.h"

namespace norvik::scenario {

namespace {

struct Kind {
  std::string_view name;
  EffectKind kind;
  bool shownAtFirst;
};

constexpr Kind kKinds[] = {
    {"launch", EffectKind::launch, true},
    {"log", EffectKind::log, true},
    {"alert", EffectKind::alert, true},
    {"signal", EffectKind::signal, true},
    {"post", EffectKind::post, true},
    {"open-url", EffectKind::openUrl, true},
    {"authorization", EffectKind::authorization, false},
    {"rights", EffectKind::rights, false},
    {"display", EffectKind::display, false},
    {"sleep", EffectKind::sleep, false},
    {"run-loop", EffectKind::runLoop, false},
    {"write", EffectKind::write, false},
    {"mkdir", EffectKind::makeDirectory, false},
};

}  // namespace

Trace::Trace() {
  for (const Kind& kind : kKinds) {
    if (kind.shownAtFirst) shown_.insert(kind.kind);
  }
}

void Trace::set(std::string_view name, bool shown) {
  const EffectKind kind = rowNamed<Kind>("kind", name, kKinds).kind;
  if (shown) {
    shown_.insert(kind);
  } else {
    shown_.erase(kind);
  }
}

}  // namespace norvik::scenario
