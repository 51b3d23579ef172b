// The text is read event by event, so that a key that is given twice is noticed and every fault has its line.
#include "src/frontends/shared/profile/profile.h"

#include <algorithm>
#include <iterator>
#include <nlohmann/json.hpp>
#include <optional>
#include <set>

#include "src/frontends/shared/checks/nearest.h"
#include "src/frontends/shared/checks/value_check.h"
#include "src/frontends/shared/language/language.h"
#include "src/server/mac/text/utf8.h"

namespace norvik {

namespace {

using Json = nlohmann::ordered_json;

constexpr const char* kVersionKey = "norvikProfile";
constexpr const char* kSettingsKey = "settings";
// Free for the person who writes the profile; not read here.
constexpr const char* kDescriptionKey = "description";
constexpr const char* kSchemaKey = "$schema";
constexpr std::string_view kNoneWord = "none";
constexpr std::size_t kMostFaults = 100;
constexpr std::string_view kByteOrderMark = "\xef\xbb\xbf";
constexpr std::string_view kJsonBlanks = " \t\r\n";

// Goes over a text and counts its lines.
class LineCountingIterator {
 public:
  using iterator_category = std::input_iterator_tag;
  using value_type = char;
  using difference_type = std::ptrdiff_t;
  using pointer = const char*;
  using reference = const char&;

  LineCountingIterator(const char* at, std::size_t& line) : at_(at), line_(&line) {}
  reference operator*() const { return *at_; }
  LineCountingIterator& operator++() {
    if (*at_ == '\n') ++*line_;
    ++at_;
    return *this;
  }
  bool operator==(const LineCountingIterator& other) const { return at_ == other.at_; }

 private:
  const char* at_;
  std::size_t* line_;
};

// The line of the byte at this place.
std::size_t lineAt(std::string_view text, std::size_t at) {
  return static_cast<std::size_t>(std::ranges::count(text.substr(0, at), '\n')) + 1;
}

// A value as it is shown in a message. Texts may be as long as the file.
std::string shown(const Json& value) {
  constexpr std::size_t kMost = 60;
  if (value.is_array()) return translated("a list");
  if (value.is_object()) return translated("an object");
  std::string text = value.dump(-1, ' ', false, Json::error_handler_t::replace);
  if (text.size() <= kMost) return text;
  text.resize(kMost);
  while (!isUtf8(text)) text.pop_back();
  return text + "...";
}

bool isBox(const SettingDescription& setting) {
  return setting.first().kind == ControlKind::checkBox;
}

bool isNumber(const SettingDescription& setting) {
  return setting.first().kind == ControlKind::slider || setting.first().kind == ControlKind::textField;
}

// What the setting takes in a profile, in words.
std::string takenValues(const SettingDescription& setting) {
  return isBox(setting) ? oneOf({"true", "false"}) : acceptedValues(setting);
}

std::optional<int64_t> valueIn(const SettingDescription& setting, const Json& value) {
  if (isBox(setting)) return value.is_boolean() ? std::optional(int64_t{value.get<bool>()}) : std::nullopt;
  if (isNumber(setting)) {
    return value.is_number_integer() ? checkedValue(setting, value.dump()) : std::nullopt;
  }
  if (!value.is_string()) return std::nullopt;
  const auto& text = value.get_ref<const std::string&>();
  // The number of an item is another one as soon as the items are.
  if (wholeNumber(text)) return std::nullopt;
  if (setting.isChoice() && folded(text) == kNoneWord) return kNoChoice;
  return checkedValue(setting, text);
}

// What is read of a profile, as nlohmann's parser reports it. An operation that returns false ends the
// reading.
class ProfileReader : public nlohmann::json_sax<Json> {
 public:
  ProfileReader(std::string_view text, const std::vector<SettingDescription>& known, const std::size_t& line)
      : text_(text), known_(known), line_(line) {}

  ProfileReading result();

  bool null() override { return take(nullptr); }
  bool boolean(bool value) override { return take(value); }
  bool number_integer(number_integer_t value) override { return take(value); }
  bool number_unsigned(number_unsigned_t value) override { return take(value); }
  bool number_float(number_float_t value, const string_t& /*digits*/) override { return take(value); }
  bool string(string_t& value) override { return take(value); }
  bool binary(binary_t& /*value*/) override { return false; }
  bool start_object(std::size_t /*size*/) override { return begin(Json::object()); }
  bool start_array(std::size_t /*size*/) override { return begin(Json::array()); }
  bool end_object() override { return end(); }
  bool end_array() override { return end(); }
  bool key(string_t& name) override;
  bool parse_error(std::size_t position, const std::string& token,
                   const nlohmann::detail::exception& problem) override;

 private:
  // Where a value is in the file.
  enum class Place { root, top, settings, elsewhere };
  Place place() const;
  bool begin(const Json& empty);
  bool end();
  bool take(const Json& value);
  void takeTop(const Json& value);
  void takeSetting(const Json& value);
  bool addFault(std::string key, std::string words);
  bool endUnreadable(std::size_t line, std::string words);

  const std::string_view text_;
  const std::vector<SettingDescription>& known_;
  const std::size_t& line_;        // where the parser is
  std::vector<std::string> path_;  // the keys around; empty texts for lists
  std::string key_;
  std::size_t keyLine_ = 1;
  std::set<std::string> topKeys_, names_;
  bool isSkipped_ = false;  // the value of a key that is wrong itself
  ProfileReading reading_;
};

ProfileReader::Place ProfileReader::place() const {
  if (path_.empty()) return Place::root;
  if (path_.size() == 1) return Place::top;
  return path_.size() == 2 && path_[1] == kSettingsKey ? Place::settings : Place::elsewhere;
}

bool ProfileReader::addFault(std::string key, std::string words) {
  reading_.faults.push_back({false, keyLine_, std::move(key), std::move(words)});
  if (reading_.faults.size() < kMostFaults) return true;
  reading_.faults.push_back({false, 0, "", translated("there may be more; no more were looked for.")});
  return false;
}

bool ProfileReader::endUnreadable(std::size_t line, std::string words) {
  reading_.faults = {{true, line, "", std::move(words)}};
  return false;
}

bool ProfileReader::begin(const Json& empty) {
  const bool isProfile = place() == Place::root && empty.is_object();
  const bool isSettings = place() == Place::top && key_ == kSettingsKey && empty.is_object();
  // The value of a wrong key counts as nothing, whatever it holds.
  if (!isProfile && !isSettings && !take(empty)) return false;
  path_.push_back(isSettings ? kSettingsKey : "");
  return true;
}

bool ProfileReader::end() {
  path_.pop_back();
  return true;
}

bool ProfileReader::key(string_t& name) {
  const Place here = place();
  if (here == Place::elsewhere) return true;
  key_ = name;
  keyLine_ = line_;
  std::set<std::string>& given = here == Place::top ? topKeys_ : names_;
  isSkipped_ = !given.insert(name).second;
  return !isSkipped_ || addFault(name, sentence("\"{1}\" is given twice.", {name}));
}

bool ProfileReader::take(const Json& value) {
  const Place here = place();
  if (here == Place::root)
    return endUnreadable(1, sentence("a profile is an object, not {1}.", {shown(value)}));
  if (here == Place::elsewhere || isSkipped_) return true;
  if (here == Place::top) {
    takeTop(value);
  } else {
    takeSetting(value);
  }
  return reading_.faults.size() <= kMostFaults && (reading_.faults.empty() || !reading_.faults[0].unreadable);
}

void ProfileReader::takeTop(const Json& value) {
  if (key_ == kVersionKey) {
    if (value == kProfileVersion && value.is_number_integer()) return;
    endUnreadable(keyLine_,
                  sentence("\"{1}\" is the format's version, which is {2}; this program reads version {3}.",
                           {key_, shown(value), std::to_string(kProfileVersion)}));
  } else if (key_ == kSettingsKey) {
    addFault(key_, sentence("\"{1}\" takes an object, not {2}.", {key_, shown(value)}));
  } else if (key_ == kDescriptionKey || key_ == kSchemaKey) {
    if (!value.is_string()) addFault(key_, sentence("\"{1}\" takes a text, not {2}.", {key_, shown(value)}));
  } else {
    addFault(key_, sentence("unknown key \"{1}\".", {key_}) +
                       suggestion(key_, {kVersionKey, kDescriptionKey, kSettingsKey, kSchemaKey}));
  }
}

void ProfileReader::takeSetting(const Json& value) {
  const auto setting = std::ranges::find(known_, key_, &SettingDescription::name);
  if (setting == known_.end()) {
    std::vector<std::string> names;
    for (const SettingDescription& each : known_) names.push_back(each.name);
    addFault(key_, sentence("unknown setting \"{1}\".", {key_}) + suggestion(key_, names));
  } else if (const auto checked = valueIn(*setting, value)) {
    reading_.settings.push_back({key_, *checked});
  } else {
    addFault(key_, sentence("{1} takes {2}, not {3}.", {key_, takenValues(*setting), shown(value)}));
  }
}

// The position counts the byte that is wrong; the end of the text counts as one.
bool ProfileReader::parse_error(std::size_t position, const std::string& token,
                                const nlohmann::detail::exception& /*problem*/) {
  constexpr std::size_t kMost = 60;
  const std::size_t line = lineAt(text_, std::max(position, std::size_t{1}) - 1);
  if (position > text_.size()) return endUnreadable(line, translated("it ends before the profile does."));
  const bool isLong = token.size() > kMost;
  std::string last = isLong ? token.substr(token.size() - kMost) : token;
  while (!isUtf8(last)) last.erase(0, 1);
  return endUnreadable(line, sentence("it is no JSON at \"{1}\".", {isLong ? "..." + last : last}));
}

ProfileReading ProfileReader::result() {
  const bool isUnreadable = !reading_.faults.empty() && reading_.faults[0].unreadable;
  if (isUnreadable || reading_.faults.size() > kMostFaults) return reading_;
  if (!topKeys_.contains(kVersionKey)) {
    endUnreadable(0, sentence("it is no profile: \"{1}\" is missing.", {kVersionKey}));
  } else if (!topKeys_.contains(kSettingsKey)) {
    reading_.faults.push_back({false, 0, kSettingsKey, sentence("\"{1}\" is missing.", {kSettingsKey})});
  }
  return reading_;
}

// Where the text ends that can be read; its size where all of it can.
std::size_t endOfUtf8(std::string_view text) {
  const std::size_t size = text.size();
  while (const auto character = firstCharacter(text)) text.remove_prefix(character->length);
  return size - text.size();
}

std::string_view withoutMark(std::string_view text) {
  if (text.starts_with(kByteOrderMark)) text.remove_prefix(kByteOrderMark.size());
  return text;
}

void skipBlanks(std::string_view& text) {
  text.remove_prefix(std::min(text.find_first_not_of(kJsonBlanks), text.size()));
}

}  // namespace

std::string ProfileFault::withLine() const {
  return line > 0 ? norvik::sentence("line {1}: {2}", {std::to_string(line), sentence}) : sentence;
}

ProfileReading readProfile(std::string_view text, const std::vector<SettingDescription>& known) {
  const auto unreadable = [](std::size_t line, const char* why) {
    return ProfileReading{{}, {{true, line, "", translated(why)}}};
  };
  if (text.size() > kMaxProfileBytes) return unreadable(0, english("it is too large for a profile."));
  const std::size_t end = endOfUtf8(text);
  if (end < text.size()) return unreadable(lineAt(text, end), english("it is not UTF-8."));
  // To the parser a zero byte is the end, whatever follows it.
  const std::size_t zero = text.find('\0');
  if (zero < text.size()) return unreadable(lineAt(text, zero), english("it has a zero byte."));
  text = withoutMark(text);
  if (text.find_first_not_of(kJsonBlanks) == std::string_view::npos)
    return unreadable(0, english("it is empty."));
  std::size_t line = 1;
  ProfileReader reader(text, known, line);
  Json::sax_parse(LineCountingIterator(text.data(), line),
                  LineCountingIterator(text.data() + text.size(), line), &reader);
  return reader.result();
}

// An old-style property list has an equals sign where JSON has a colon.
bool isProfileText(std::string_view text) {
  text = withoutMark(text);
  skipBlanks(text);
  if (!text.starts_with('{')) return false;
  text.remove_prefix(1);
  skipBlanks(text);
  if (!text.starts_with('"')) return false;
  text.remove_prefix(1);
  text.remove_prefix(std::min(text.find('"'), text.size()));
  if (text.empty()) return false;
  text.remove_prefix(1);
  skipBlanks(text);
  return text.starts_with(':');
}

std::string profileText(const std::vector<std::pair<std::string, SettingValue>>& values) {
  Json settings = Json::object();
  for (const auto& [name, value] : values) {
    settings[name] = std::visit([](const auto& held) { return Json(held); }, value);
  }
  const Json profile{{kVersionKey, kProfileVersion}, {kSettingsKey, std::move(settings)}};
  return profile.dump(2) + '\n';
}

}  // namespace norvik
