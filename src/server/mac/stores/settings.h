// What the settings groups share: a setting as a row of a table, and how a row is loaded, compared, shown and
// stored. The tables are in the groups' own files.
#pragma once

#include <cstdint>
#include <limits>
#include <span>
#include <string>
#include <string_view>
#include <variant>

#include "src/server/mac/pane/member_name.h"
#include "src/server/mac/pane/pane.h"
#include "src/server/mac/platform/property_list.h"

namespace norvik {

enum class StoredAs {
  boolean,
  invertedBoolean,        // the file has the opposite of the field
  invertedUnlessUnknown,  // the same; -1, unknown, leaves the file's value as it is
  integer32,              // read as the low 32 bits of the stored number
  integer64,
  nowhere,  // not in the group's file
};

// How a load positions the controls from the field.
enum class Shown {
  value,       // as it is
  on,          // on if not 0
  onPositive,  // on if above 0
  onZero,      // on if 0: the box shows the negation of the setting
  item,        // a pop-up's item number, from 1
  elsewhere,   // by code of its own, or intentionally not at all
};

inline constexpr int64_t kLeast = std::numeric_limits<int64_t>::min();
inline constexpr int64_t kMost = std::numeric_limits<int64_t>::max();

// One setting. Field and pending value are whole numbers, or booleans where the group keeps them so.
struct Setting {
  using Number = int64_t NVKServerPrefs::*;
  using Flag = bool NVKServerPrefs::*;
  using PendingNumber = int64_t (NVKServerPrefs::*)() const;
  using PendingFlag = bool (NVKServerPrefs::*)() const;

  // The member that holds the value last loaded or saved.
  struct Field {
    std::string_view name;
    std::variant<Number, Flag> member;
  };
  // The accessor that reads the controls.
  struct Pending {
    std::string_view name;
    std::variant<PendingNumber, PendingFlag> operation;
  };
  // The server's setting that a control of the user shows instead of the user's own while the user follows
  // the server's image settings. Empty for a setting that follows none.
  struct Followed {
    Number field = nullptr;
    PendingNumber pending = nullptr;

    explicit operator bool() const { return field != nullptr; }
    int64_t baseline(const NVKServerPrefs& pane) const { return pane.*field; }
    int64_t pendingValue(const NVKServerPrefs& pane) const { return (pane.*pending)(); }
  };

  const char* service;  // the dictionary within the root that holds the key; null for the root itself
  const char* key;
  StoredAs stored;
  Field field;
  Pending pending;
  int64_t missing;  // what a missing key means
  int64_t least;    // a value outside these two becomes that of a missing key: nothing is clamped
  int64_t most;
  Shown shown;
  Control NVKServerPrefs::*controls[4];  // those that edit it; null if there are fewer
  int64_t standard = 0;                  // what a value of 0 means
  Followed followed = {};

  int64_t baseline(const NVKServerPrefs& pane) const;
  void setBaseline(NVKServerPrefs& pane, int64_t value) const;
  int64_t pendingValue(const NVKServerPrefs& pane) const;
  bool differs(const NVKServerPrefs& pane) const { return baseline(pane) != pendingValue(pane); }

  // The value that a loaded dictionary gives the setting.
  int64_t valueIn(const PropertyList& dictionary) const;
  // Stores a value, making the service's dictionary if there is none; other keys stay.
  void storeIn(PropertyList& dictionary, int64_t value) const;
  // Positions the first control from the field, as `shown` says.
  void show(NVKServerPrefs& pane) const;
};

// For the rows of a table: a member and an accessor, each with its name.
template <auto member>
inline constexpr Setting::Field fieldOf{memberName<member>(), member};
template <auto operation>
inline constexpr Setting::Pending pendingOf{memberName<operation>(), operation};

using SettingsTable = std::span<const Setting>;

SettingsTable userSettings();
SettingsTable serverSettings();
SettingsTable notificationSettings();

// Reads every field of the table from the dictionary.
void loadSettings(NVKServerPrefs& pane, SettingsTable table, const PropertyList& dictionary);
bool settingsDiffer(const NVKServerPrefs& pane, SettingsTable table);
// Stores every pending value of the table.
void storeSettings(const NVKServerPrefs& pane, SettingsTable table, PropertyList& dictionary);
// Makes the pending values the baseline.
void adoptSettings(NVKServerPrefs& pane, SettingsTable table);

// Writes the dictionary to a file. If that fails, logs `failure` with the path as its one %s.
bool writeSettingsFile(const PropertyList& dictionary, const std::string& path, const char* failure);

// Every save of the agent's and of the server's file writes this key, changed or not.
inline constexpr const char* kConfigVersionKey = "NVKConfigVersion";
inline constexpr const char* kConfigVersion = "1.0";

}  // namespace norvik
