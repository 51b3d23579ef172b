// A property list as a value: any type that a property list can hold, so that keys which are not ours
// survive a load and a save unchanged. Knows nothing of files or encodings.
#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>
#include <variant>
#include <vector>

namespace norvik {

class PropertyList {
 public:
  // Raw bytes, a type of its own so that data is never taken for text.
  struct Data {
    std::string bytes;
    bool operator==(const Data&) const = default;
  };
  // A moment, in seconds since 2001-01-01T00:00:00Z; may be negative and may have a fraction.
  struct Date {
    double seconds = 0;
    bool operator==(const Date&) const = default;
  };
  using Array = std::vector<PropertyList>;
  // Keys are UTF-8. The order of keys has no meaning, so they are kept sorted.
  using Dictionary = std::map<std::string, PropertyList, std::less<>>;
  // An integer is an int64_t whenever it fits; uint64_t holds only what is above its range.
  using Value = std::variant<Dictionary, Array, std::string, bool, int64_t, uint64_t, double, Date, Data>;

  // Whether T is one of the types above, to the letter: an int or a float must be cast by its owner.
  template <typename T>
  static constexpr bool kIsValue =
      std::is_same_v<T, Dictionary> || std::is_same_v<T, Array> || std::is_same_v<T, std::string> ||
      std::is_same_v<T, bool> || std::is_same_v<T, int64_t> || std::is_same_v<T, uint64_t> ||
      std::is_same_v<T, double> || std::is_same_v<T, Date> || std::is_same_v<T, Data>;

  // An empty dictionary, which is what a missing settings file reads as.
  PropertyList() = default;
  template <typename T>
  requires(kIsValue<std::remove_cvref_t<T>>) PropertyList(T&& value)
      : value_(std::in_place_type<std::remove_cvref_t<T>>, std::forward<T>(value)) {}
  PropertyList(const char* text) : value_(std::string(text)) {}

  // The value as type T, or null if it is of another type. The pointer lives as long as this list is
  // neither assigned to nor destroyed.
  template <typename T>
  const T* as() const {
    return std::get_if<T>(&value_);
  }
  template <typename T>
  T* as() {
    return std::get_if<T>(&value_);
  }

  const Value& value() const { return value_; }

  // The value under a key; null if this is not a dictionary or has no such key.
  const PropertyList* find(std::string_view key) const;
  PropertyList* find(std::string_view key);

  bool operator==(const PropertyList&) const = default;

 private:
  Value value_;
};

// Conversions of a stored value, of whatever type, to what a setting wants. A null pointer means a
// missing value and converts like a value of a type that has no number.

// A number truncated toward zero, its low 64 bits if it does not fit; a text's leading integer; a boolean
// as 0 or 1; anything else 0.
int64_t integerValue(const PropertyList* value);
// The low 32 bits of integerValue, as a signed number.
int32_t intValue(const PropertyList* value);
// A number is true when it is not zero; a text when, after white space, a sign and zeros, it goes on with one
// of Y y T t 1 to 9; anything else is false.
bool boolValue(const PropertyList* value);

// The leading integer of a text: white space, an optional sign, digits; no digits give 0. What exceeds 64
// bits keeps its low 64.
int64_t leadingInteger(std::string_view text);
// The same, except that what exceeds 32 bits is the largest or smallest 32-bit number.
int32_t clampedLeadingInteger(std::string_view text);

}  // namespace norvik
