// Reads the interface description from a property list. The keys of each record are a table, and one loop
// reads any record. A key that no table has is an error, so that a slip of the pen in the resource is found
// when the resource is read.
#include "src/server/mac/ui/interface_description.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <span>
#include <utility>

#include "src/server/mac/ui/interface_description_rules.h"

namespace norvik {

namespace {

using description_rules::fail;
using description_rules::inside;

bool readValue(const PropertyList& value, const std::string& path, std::string& out, std::string& error) {
  const auto* text = value.as<std::string>();
  if (!text) return fail(error, path, "must be a text");
  out = *text;
  return true;
}

bool readValue(const PropertyList& value, const std::string& path, bool& out, std::string& error) {
  const auto* flag = value.as<bool>();
  if (!flag) return fail(error, path, "must be true or false");
  out = *flag;
  return true;
}

bool readValue(const PropertyList& value, const std::string& path, double& out, std::string& error) {
  if (const auto* whole = value.as<int64_t>()) {
    out = static_cast<double>(*whole);
    return true;
  }
  const auto* real = value.as<double>();
  if (!real || !std::isfinite(*real)) return fail(error, path, "must be a number");
  out = *real;
  return true;
}

bool readValue(const PropertyList& value, const std::string& path, std::optional<double>& out,
               std::string& error) {
  return readValue(value, path, out.emplace(), error);
}

constexpr int64_t kMostTickMarks = 1000;

bool readValue(const PropertyList& value, const std::string& path, int& out, std::string& error) {
  const auto* whole = value.as<int64_t>();
  if (!whole || *whole < 0 || *whole > kMostTickMarks)
    return fail(error, path, "must be a whole number from 0 to " + std::to_string(kMostTickMarks));
  out = static_cast<int>(*whole);
  return true;
}

bool readValue(const PropertyList& value, const std::string& path, ControlKind& out, std::string& error) {
  std::string word;
  if (!readValue(value, path, word, error)) return false;
  const auto kind = description_rules::kindOf(word);
  if (!kind) return fail(error, path, "unknown kind \"" + word + "\"");
  out = *kind;
  return true;
}

bool readValue(const PropertyList& value, const std::string& path, ControlDescription& out,
               std::string& error);
bool readValue(const PropertyList& value, const std::string& path, ValueWords& out, std::string& error);
bool readValue(const PropertyList& value, const std::string& path, std::optional<PreviewDescription>& out,
               std::string& error);
bool readValue(const PropertyList& value, const std::string& path, RowDescription& out, std::string& error);
bool readValue(const PropertyList& value, const std::string& path, SectionDescription& out,
               std::string& error);
bool readValue(const PropertyList& value, const std::string& path, TabDescription& out, std::string& error);

template <typename Element>
bool readValue(const PropertyList& value, const std::string& path, std::vector<Element>& out,
               std::string& error) {
  const auto* array = value.as<PropertyList::Array>();
  if (!array) return fail(error, path, "must be an array");
  out.resize(array->size());
  for (std::size_t i = 0; i < array->size(); ++i)
    if (!readValue((*array)[i], inside(path, std::to_string(i)), out[i], error)) return false;
  return true;
}

// ---- Records ----------------------------------------------------------------------------------------------

enum class Presence { needed, optional };

template <typename Record>
struct Key {
  std::string_view name;
  Presence presence;
  bool (*read)(const PropertyList& value, const std::string& path, Record& record, std::string& error);
};

// Reads a value into one member of a record.
template <auto member, typename Record>
bool into(const PropertyList& value, const std::string& path, Record& record, std::string& error) {
  return readValue(value, path, record.*member, error);
}

template <typename Record>
bool readRecord(std::span<const Key<Record>> keys, const PropertyList& value, const std::string& path,
                Record& record, std::string& error) {
  const auto* dictionary = value.as<PropertyList::Dictionary>();
  if (!dictionary) return fail(error, path, "must be a dictionary");
  for (const Key<Record>& key : keys) {
    const auto found = dictionary->find(key.name);
    if (found == dictionary->end()) {
      if (key.presence == Presence::optional) continue;
      return fail(error, path, std::string(key.name) + " is missing");
    }
    if (!key.read(found->second, inside(path, key.name), record, error)) return false;
  }
  for (const auto& entry : *dictionary) {
    const auto named = [&entry](const Key<Record>& key) { return key.name == entry.first; };
    if (std::ranges::none_of(keys, named)) return fail(error, path, "unknown key \"" + entry.first + "\"");
  }
  return true;
}

constexpr Key<ValueWords> kValueWordsKeys[] = {
    {"from", Presence::needed, into<&ValueWords::from>},
    {"words", Presence::needed, into<&ValueWords::words>},
};

constexpr Key<ControlDescription> kControlKeys[] = {
    {"outlet", Presence::needed, into<&ControlDescription::outlet>},
    {"kind", Presence::needed, into<&ControlDescription::kind>},
    {"label", Presence::needed, into<&ControlDescription::label>},
    {"help", Presence::optional, into<&ControlDescription::help>},
    {"setting", Presence::optional, into<&ControlDescription::setting>},
    {"choice", Presence::optional, into<&ControlDescription::choice>},
    {"requires", Presence::optional, into<&ControlDescription::requiresOutlet>},
    {"minimum", Presence::optional, into<&ControlDescription::minimum>},
    {"maximum", Presence::optional, into<&ControlDescription::maximum>},
    {"minimumLabel", Presence::optional, into<&ControlDescription::minimumLabel>},
    {"maximumLabel", Presence::optional, into<&ControlDescription::maximumLabel>},
    {"tickMarks", Presence::optional, into<&ControlDescription::tickMarks>},
    {"value", Presence::optional, into<&ControlDescription::value>},
    {"valueWords", Presence::optional, into<&ControlDescription::valueWords>},
    {"items", Presence::optional, into<&ControlDescription::items>},
    {"synonyms", Presence::optional, into<&ControlDescription::synonyms>},
    {"title", Presence::optional, into<&ControlDescription::title>},
    {"copyTitle", Presence::optional, into<&ControlDescription::copyTitle>},
    {"indicator", Presence::optional, into<&ControlDescription::indicator>},
    {"displayOnly", Presence::optional, into<&ControlDescription::displayOnly>},
    {"hidden", Presence::optional, into<&ControlDescription::hidden>},
};

constexpr Key<RowDescription> kRowKeys[] = {
    {"label", Presence::optional, into<&RowDescription::label>},
    {"controls", Presence::needed, into<&RowDescription::controls>},
};

constexpr Key<SectionDescription> kSectionKeys[] = {
    {"title", Presence::optional, into<&SectionDescription::title>},
    {"note", Presence::optional, into<&SectionDescription::note>},
    {"rows", Presence::needed, into<&SectionDescription::rows>},
};

constexpr Key<PreviewDescription> kPreviewKeys[] = {
    {"quality", Presence::needed, into<&PreviewDescription::quality>},
    {"depth", Presence::needed, into<&PreviewDescription::depth>},
    {"shadow", Presence::needed, into<&PreviewDescription::shadow>},
};

constexpr Key<TabDescription> kTabKeys[] = {
    {"label", Presence::needed, into<&TabDescription::label>},
    {"icon", Presence::optional, into<&TabDescription::icon>},
    {"purpose", Presence::optional, into<&TabDescription::purpose>},
    {"preview", Presence::optional, into<&TabDescription::preview>},
    {"sections", Presence::needed, into<&TabDescription::sections>},
};

// A width or height.
bool readLength(const PropertyList& value, const std::string& path, double& length, std::string& error) {
  if (!readValue(value, path, length, error)) return false;
  return length > 0 || fail(error, path, "must be above 0");
}

bool readWidth(const PropertyList& value, const std::string& path, InterfaceDescription& description,
               std::string& error) {
  return readLength(value, path, description.size.width, error);
}

bool readHeight(const PropertyList& value, const std::string& path, InterfaceDescription& description,
                std::string& error) {
  return readLength(value, path, description.size.height, error);
}

constexpr Key<InterfaceDescription> kRootKeys[] = {
    {"title", Presence::needed, into<&InterfaceDescription::title>},
    {"changedHelp", Presence::optional, into<&InterfaceDescription::changedHelp>},
    {"width", Presence::needed, readWidth},
    {"height", Presence::needed, readHeight},
    {"frame", Presence::needed, into<&InterfaceDescription::frame>},
    {"tabs", Presence::needed, into<&InterfaceDescription::tabs>},
};

bool readValue(const PropertyList& value, const std::string& path, ValueWords& out, std::string& error) {
  return readRecord<ValueWords>(kValueWordsKeys, value, path, out, error);
}

bool readValue(const PropertyList& value, const std::string& path, std::optional<PreviewDescription>& out,
               std::string& error) {
  return readRecord<PreviewDescription>(kPreviewKeys, value, path, out.emplace(), error);
}

bool readValue(const PropertyList& value, const std::string& path, ControlDescription& out,
               std::string& error) {
  return readRecord<ControlDescription>(kControlKeys, value, path, out, error) &&
         description_rules::checkControl(value, out, path, error);
}

bool readValue(const PropertyList& value, const std::string& path, RowDescription& out, std::string& error) {
  return readRecord<RowDescription>(kRowKeys, value, path, out, error);
}

bool readValue(const PropertyList& value, const std::string& path, SectionDescription& out,
               std::string& error) {
  return readRecord<SectionDescription>(kSectionKeys, value, path, out, error);
}

bool readValue(const PropertyList& value, const std::string& path, TabDescription& out, std::string& error) {
  return readRecord<TabDescription>(kTabKeys, value, path, out, error) &&
         description_rules::checkTab(out, path, error);
}

}  // namespace

std::vector<const ControlDescription*> InterfaceDescription::controls() const {
  std::vector<const ControlDescription*> all;
  const auto add = [&all](const std::vector<ControlDescription>& some) {
    for (const ControlDescription& control : some) all.push_back(&control);
  };
  add(frame);
  for (const TabDescription& tab : tabs)
    for (const SectionDescription& section : tab.sections)
      for (const RowDescription& row : section.rows) add(row.controls);
  return all;
}

const ControlDescription* InterfaceDescription::find(std::string_view outlet) const {
  for (const ControlDescription* control : controls())
    if (control->outlet == outlet) return control;
  return nullptr;
}

std::optional<InterfaceDescription> readInterfaceDescription(const PropertyList& list, std::string& error) {
  InterfaceDescription description;
  if (!readRecord<InterfaceDescription>(kRootKeys, list, "", description, error)) return std::nullopt;
  if (!description_rules::checkWhole(description, error)) return std::nullopt;
  return description;
}

}  // namespace norvik
