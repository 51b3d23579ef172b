// The rules of an interface description, most of them as tables.
#include "src/server/mac/ui/interface_description_rules.h"

#include <cstddef>
#include <map>
#include <utility>
#include <vector>

namespace norvik::description_rules {
namespace {

struct KindWord {
  std::string_view word;
  ControlKind kind;
};

constexpr KindWord kKindWords[] = {
    {"check box", ControlKind::checkBox},
    {"radio button", ControlKind::radioButton},
    {"slider", ControlKind::slider},
    {"pop-up", ControlKind::popUp},
    {"text field", ControlKind::textField},
    {"label", ControlKind::label},
    {"push button", ControlKind::pushButton},
    {"lock button", ControlKind::lockButton},
    {"outline view", ControlKind::outlineView},
    {"tab view", ControlKind::tabView},
};

enum class Presence { needed, optional };

struct KindRule {
  std::string_view key;
  ControlKind kind;
  Presence presence;
};

// The keys that only some kinds have. Such a key is an error on every kind that has no row for it.
constexpr KindRule kKindRules[] = {
    {"setting", ControlKind::radioButton, Presence::needed},
    {"setting", ControlKind::checkBox, Presence::optional},
    {"setting", ControlKind::popUp, Presence::optional},
    {"setting", ControlKind::slider, Presence::optional},
    {"setting", ControlKind::textField, Presence::optional},
    {"choice", ControlKind::radioButton, Presence::needed},
    {"minimum", ControlKind::slider, Presence::needed},
    {"minimum", ControlKind::textField, Presence::optional},
    {"maximum", ControlKind::slider, Presence::needed},
    {"maximum", ControlKind::textField, Presence::optional},
    {"minimumLabel", ControlKind::slider, Presence::optional},
    {"maximumLabel", ControlKind::slider, Presence::optional},
    {"tickMarks", ControlKind::slider, Presence::optional},
    {"value", ControlKind::slider, Presence::needed},
    {"valueWords", ControlKind::slider, Presence::optional},
    {"items", ControlKind::popUp, Presence::needed},
    {"title", ControlKind::pushButton, Presence::needed},
    {"displayOnly", ControlKind::textField, Presence::optional},
};

bool suits(std::string_view key, ControlKind kind) {
  bool restricted = false;
  for (const KindRule& rule : kKindRules) {
    if (rule.key != key) continue;
    if (rule.kind == kind) return true;
    restricted = true;
  }
  return !restricted;
}

bool checkKeys(const PropertyList& record, ControlKind kind, const std::string& path, std::string& error) {
  for (const KindRule& rule : kKindRules)
    if (rule.kind == kind && rule.presence == Presence::needed && !record.find(rule.key))
      return fail(error, path, std::string(rule.key) + " is missing");
  for (const KindRule& rule : kKindRules)
    if (record.find(rule.key) && !suits(rule.key, kind))
      return fail(error, path, std::string(rule.key) + " means nothing for this kind of control");
  return true;
}

// The path of a control of this description; needed only for an error.
std::string pathOf(const InterfaceDescription& description, const ControlDescription* control) {
  const auto search = [control](const std::vector<ControlDescription>& some,
                                const std::string& path) -> std::string {
    for (std::size_t i = 0; i < some.size(); ++i)
      if (&some[i] == control) return inside(path, std::to_string(i));
    return {};
  };
  std::string found = search(description.frame, "frame");
  for (std::size_t t = 0; t < description.tabs.size() && found.empty(); ++t) {
    const auto& sections = description.tabs[t].sections;
    for (std::size_t s = 0; s < sections.size() && found.empty(); ++s) {
      for (std::size_t r = 0; r < sections[s].rows.size() && found.empty(); ++r)
        found = search(sections[s].rows[r].controls, "tabs/" + std::to_string(t) + "/sections/" +
                                                         std::to_string(s) + "/rows/" + std::to_string(r) +
                                                         "/controls");
    }
  }
  return found;
}

bool checkOutlets(const InterfaceDescription& description, std::string& error) {
  std::map<std::string_view, const ControlDescription*> seen;
  for (const ControlDescription* control : description.controls()) {
    const auto [first, added] = seen.try_emplace(control->outlet, control);
    if (!added)
      return fail(error, pathOf(description, control),
                  "outlet " + control->outlet + " is already at " + pathOf(description, first->second));
  }
  return true;
}

bool checkRequirements(const InterfaceDescription& description, std::string& error) {
  for (const ControlDescription* control : description.controls()) {
    const std::string& outlet = control->requiresOutlet;
    if (outlet.empty()) continue;
    const ControlDescription* box = description.find(outlet);
    if (!box) return fail(error, pathOf(description, control), "requires names no control: " + outlet);
    if (box->kind != ControlKind::checkBox)
      return fail(error, pathOf(description, control), "requires names no check box: " + outlet);
  }
  return true;
}

bool checkPreview(const InterfaceDescription& description, const TabDescription& tab, const std::string& path,
                  std::string& error) {
  const auto isKind = [&description](const std::string& outlet, ControlKind kind) {
    const ControlDescription* found = description.find(outlet);
    return found != nullptr && found->kind == kind;
  };
  const PreviewDescription& preview = *tab.preview;
  if (!isKind(preview.quality, ControlKind::popUp))
    return fail(error, inside(path, "quality"), "names no pop-up: " + preview.quality);
  if (!isKind(preview.depth, ControlKind::slider))
    return fail(error, inside(path, "depth"), "names no slider: " + preview.depth);
  if (!isKind(preview.shadow, ControlKind::slider))
    return fail(error, inside(path, "shadow"), "names no slider: " + preview.shadow);
  return true;
}

bool checkPreviews(const InterfaceDescription& description, std::string& error) {
  for (std::size_t i = 0; i < description.tabs.size(); ++i) {
    const TabDescription& tab = description.tabs[i];
    const std::string path = "tabs/" + std::to_string(i) + "/preview";
    if (tab.preview && !checkPreview(description, tab, path, error)) return false;
  }
  return true;
}

// Every value of the range has words, and no entry is out of reach.
bool checkValueWords(const ControlDescription& control, const std::string& path, std::string& error) {
  for (std::size_t i = 0; i < control.valueWords.size(); ++i) {
    const ValueWords& entry = control.valueWords[i];
    const std::string at = inside(path, "valueWords/" + std::to_string(i));
    if (entry.words.empty()) return fail(error, at, "words are empty");
    if (i == 0 && entry.from != control.minimum) return fail(error, at, "does not begin at the minimum");
    if (i > 0 && entry.from <= control.valueWords[i - 1].from)
      return fail(error, at, "is not above the entry before");
    if (entry.from > control.maximum) return fail(error, at, "is above the maximum");
  }
  return true;
}

bool checkSettings(const InterfaceDescription& description, std::string& error) {
  std::map<std::string_view, const ControlDescription*> owners;
  std::map<std::pair<std::string_view, std::string_view>, const ControlDescription*> choices;
  for (const ControlDescription* control : description.controls()) {
    if (control->setting.empty()) continue;
    const auto [owner, added] = owners.try_emplace(control->setting, control);
    const bool grouped = control->kind == ControlKind::radioButton && owner->second->kind == control->kind;
    if (!added && !grouped)
      return fail(error, pathOf(description, control),
                  "setting " + control->setting + " already belongs to " + owner->second->outlet);
    const auto [same, fresh] = choices.try_emplace({control->setting, control->choice}, control);
    if (!fresh)
      return fail(error, pathOf(description, control),
                  "choice " + control->choice + " of " + control->setting + " already belongs to " +
                      same->second->outlet);
  }
  return true;
}

}  // namespace

bool fail(std::string& error, const std::string& path, const std::string& message) {
  error = (path.empty() ? "description" : path) + ": " + message;
  return false;
}

std::string inside(const std::string& path, std::string_view part) {
  return path.empty() ? std::string(part) : path + "/" + std::string(part);
}

std::optional<ControlKind> kindOf(std::string_view word) {
  for (const KindWord& row : kKindWords)
    if (row.word == word) return row.kind;
  return std::nullopt;
}

bool checkControl(const PropertyList& record, const ControlDescription& control, const std::string& path,
                  std::string& error) {
  if (!checkKeys(record, control.kind, path, error)) return false;
  if (control.outlet.empty()) return fail(error, path, "outlet is empty");
  const auto& least = control.minimum;
  const auto& most = control.maximum;
  if (least && most && *least > *most) return fail(error, path, "minimum is above maximum");
  if (control.value && ((least && *control.value < *least) || (most && *control.value > *most)))
    return fail(error, path, "value is outside the range");
  return checkValueWords(control, path, error);
}

bool checkTab(const TabDescription& tab, const std::string& path, std::string& error) {
  constexpr std::string_view kAllowed = "abcdefghijklmnopqrstuvwxyz-";
  if (tab.icon.find_first_not_of(kAllowed) != std::string::npos)
    return fail(error, inside(path, "icon"), "must be small letters and hyphens");
  return true;
}

bool checkWhole(const InterfaceDescription& description, std::string& error) {
  return checkOutlets(description, error) && checkRequirements(description, error) &&
         checkSettings(description, error) && checkPreviews(description, error);
}

}  // namespace norvik::description_rules
