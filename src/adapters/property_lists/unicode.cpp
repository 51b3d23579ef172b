// The Unicode encodings, strict where they are read: text that is not well formed is damage, not a guess.
#include "src/adapters/property_lists/unicode.h"

#include <algorithm>

namespace norvik {

namespace {

constexpr char32_t kHighSurrogate = 0xD800;
constexpr char32_t kLowSurrogate = 0xDC00;
constexpr char32_t kSurrogateEnd = 0xE000;
constexpr char32_t kFirstSupplementary = 0x10000;

unsigned char byteOf(char c) {
  return static_cast<unsigned char>(c);
}

// How a lead byte begins a character: bytes that follow, payload bits, and the least character that needs
// as many bytes (a shorter one so written is not well formed).
struct Lead {
  unsigned char mask, pattern;
  size_t following;
  char32_t least;
};
constexpr Lead kLeads[] = {
    {0x80, 0x00, 0, 0}, {0xE0, 0xC0, 1, 0x80}, {0xF0, 0xE0, 2, 0x800}, {0xF8, 0xF0, 3, kFirstSupplementary}};

}  // namespace

bool isScalar(char32_t c) {
  return c <= 0x10FFFF && (c < kHighSurrogate || c >= kSurrogateEnd);
}

void appendUtf8(std::string& text, char32_t c) {
  auto add = [&text](char32_t byte) { text += static_cast<char>(static_cast<unsigned char>(byte)); };
  if (c < 0x80) return add(c);
  if (c < 0x800) {
    add(0xC0 | (c >> 6));
  } else if (c < kFirstSupplementary) {
    add(0xE0 | (c >> 12));
    add(0x80 | ((c >> 6) & 0x3F));
  } else {
    add(0xF0 | (c >> 18));
    add(0x80 | ((c >> 12) & 0x3F));
    add(0x80 | ((c >> 6) & 0x3F));
  }
  add(0x80 | (c & 0x3F));
}

std::optional<char32_t> takeUtf8(std::string_view& text) {
  unsigned char first = byteOf(text.front());
  for (const Lead& lead : kLeads) {
    if ((first & lead.mask) != lead.pattern || text.size() <= lead.following) continue;
    char32_t c = first & static_cast<unsigned char>(~lead.mask);
    bool whole = true;
    for (size_t i = 1; i <= lead.following; ++i) {
      whole = whole && (byteOf(text[i]) & 0xC0) == 0x80;
      c = (c << 6) | (byteOf(text[i]) & 0x3F);
    }
    if (!whole || c < lead.least || !isScalar(c)) break;
    text.remove_prefix(lead.following + 1);
    return c;
  }
  text.remove_prefix(1);
  return std::nullopt;
}

bool isWellFormedUtf8(std::string_view text) {
  while (!text.empty()) {
    // Most text is ASCII, and a file may be large.
    auto beyond = std::find_if(text.begin(), text.end(), [](char c) { return byteOf(c) >= 0x80; });
    text.remove_prefix(static_cast<size_t>(beyond - text.begin()));
    if (!text.empty() && !takeUtf8(text)) return false;
  }
  return true;
}

std::optional<std::string> fromUtf16(std::string_view bytes, bool bigEndian) {
  if (bytes.size() % 2 != 0) return std::nullopt;
  auto unitAt = [&](size_t i) -> char32_t {
    unsigned char a = byteOf(bytes[i]), b = byteOf(bytes[i + 1]);
    return static_cast<char32_t>(bigEndian ? a << 8 | b : b << 8 | a);
  };
  std::string text;
  text.reserve(bytes.size());
  for (size_t i = 0; i < bytes.size(); i += 2) {
    char32_t c = unitAt(i);
    if (c >= kHighSurrogate && c < kLowSurrogate && i + 3 < bytes.size()) {
      char32_t low = unitAt(i + 2);
      if (low < kLowSurrogate || low >= kSurrogateEnd) return std::nullopt;
      c = kFirstSupplementary + ((c - kHighSurrogate) << 10) + (low - kLowSurrogate);
      i += 2;
    }
    if (!isScalar(c)) return std::nullopt;
    appendUtf8(text, c);
  }
  return text;
}

std::vector<char16_t> toUtf16(std::string_view text) {
  std::vector<char16_t> units;
  units.reserve(text.size());
  while (!text.empty()) {
    char32_t c = takeUtf8(text).value_or(kReplacement);
    if (c < kFirstSupplementary) {
      units.push_back(static_cast<char16_t>(c));
      continue;
    }
    c -= kFirstSupplementary;
    units.push_back(static_cast<char16_t>(kHighSurrogate + (c >> 10)));
    units.push_back(static_cast<char16_t>(kLowSurrogate + (c & 0x3FF)));
  }
  return units;
}

std::string fromLatin1(std::string_view bytes) {
  std::string text;
  for (char c : bytes) appendUtf8(text, byteOf(c));
  return text;
}

}  // namespace norvik
