// The three formats behind the codec, each read from memory or written to it as a whole. The codec recognises
// the format and enforces the limit of size; each reader enforces the limits of depth and of expansion.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "src/adapters/property_lists/codec.h"

namespace norvik {

// Whether a dictionary or an array may be at this depth, where the root is at 1. A single value has no depth.
inline bool isDepthAllowed(int depth) {
  return depth <= kMaxPropertyListDepth;
}

// What a list may still stand for.
class Allowance {
 public:
  // Takes a value or a key with so many bytes of text or data; false when the list has become too large.
  bool take(uint64_t bytes) {
    ++values_;
    bytes_ += bytes;
    return values_ <= kMaxPropertyListValues && bytes_ <= kMaxPropertyListBytes;
  }

 private:
  std::size_t values_ = 0;
  uint64_t bytes_ = 0;
};

// Words for what several readers find wrong.
inline constexpr std::string_view kTooDeep = "it is nested too deeply";
inline constexpr std::string_view kTooMuch = "it stands for too many values, or for too much text or data";

// Notes the first thing that a reader finds wrong, and where: further ones only follow from it.
class DamageNote {
 public:
  // Borrows the report. `whole` is the text that lines are counted in; it must outlive the note.
  DamageNote(std::string_view whole, PropertyListDamage& report) : whole_(whole), report_(report) {}

  // `rest` is the text from the place on, a part of the whole text at its end. Returns what a reader returns.
  std::nullopt_t set(std::string_view rest, std::string_view what);
  // Forgets what was noted.
  void clear() { report_ = {}; }
  // The line of a place.
  int lineOf(std::string_view rest) const;

 private:
  std::string_view whole_;
  PropertyListDamage& report_;
};

// How a message shows a piece of the text: in quotation marks, and no more than its beginning; a zero byte by
// name.
std::string shown(std::string_view text);
// How a message names the place where something was begun and not ended.
std::string begunIn(int line);

// Whether text begins, after white space, like the XML format. The old-style format may begin with "<" too.
bool looksLikeXml(std::string_view text);

// UTF-8 text to a list; nothing for text that is not entirely a property list, and the reason in the report.
std::optional<PropertyList> readXml(std::string text, PropertyListDamage& report);
std::optional<PropertyList> readAscii(std::string_view text, PropertyListDamage& report);

// The name of the encoding in an XML declaration; empty if there is none.
std::string_view declaredEncoding(std::string_view text);

// Bytes that begin with kBinaryMagic to a list, as above. The two digits of the version follow it.
inline constexpr std::string_view kBinaryMagic = "bplist";
std::optional<PropertyList> readBinary(std::string_view bytes, PropertyListDamage& report);

// A list as XML; nothing where it is larger than a file may be, nested too deeply or has a date that is none.
// Needs no more memory than a file may have bytes.
std::optional<std::string> encodeXmlWithinLimits(const PropertyList& list);

// A reference in a keyed archive. Only the binary format has a type for it; elsewhere it is a dictionary with
// this one key.
inline constexpr std::string_view kUidKey = "CF$UID";

}  // namespace norvik
