// The encodings, strict where they are read: text that is not well formed is damage, not a guess.
#include "src/adapters/property_lists/unicode.h"

#include <algorithm>

#include "src/server/mac/text/utf8.h"

namespace norvik {

namespace {

constexpr char32_t kHighSurrogate = 0xD800;
constexpr char32_t kLowSurrogate = 0xDC00;
constexpr char32_t kSurrogateEnd = 0xE000;
constexpr char32_t kFirstSupplementary = 0x10000;

unsigned char byteOf(char c) {
  return static_cast<unsigned char>(c);
}

}  // namespace

bool fromUtf16(std::string_view bytes, bool bigEndian, std::string& text) {
  const auto unitAt = [&](std::size_t i) -> char32_t {
    const unsigned char a = byteOf(bytes[i]), b = byteOf(bytes[i + 1]);
    return static_cast<char32_t>(bigEndian ? a << 8 | b : b << 8 | a);
  };
  text.reserve(text.size() + bytes.size());
  for (std::size_t i = 0; i + 1 < bytes.size(); i += 2) {
    char32_t c = unitAt(i);
    if (c >= kHighSurrogate && c < kLowSurrogate && i + 3 < bytes.size()) {
      const char32_t low = unitAt(i + 2);
      if (low < kLowSurrogate || low >= kSurrogateEnd) return false;
      c = kFirstSupplementary + ((c - kHighSurrogate) << 10) + (low - kLowSurrogate);
      i += 2;
    }
    if (!isScalar(c)) return false;
    appendCharacter(text, c);
  }
  return bytes.size() % 2 == 0;
}

std::vector<char16_t> toUtf16(std::string_view text) {
  std::vector<char16_t> units;
  units.reserve(text.size());
  while (!text.empty()) {
    char32_t c = takeCharacter(text).value_or(kReplacementCharacter);
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
  const auto twoBytes = std::ranges::count_if(bytes, [](char c) { return byteOf(c) > 0x7F; });
  text.reserve(bytes.size() + static_cast<std::size_t>(twoBytes));
  for (const char c : bytes) appendCharacter(text, byteOf(c));
  return text;
}

}  // namespace norvik
