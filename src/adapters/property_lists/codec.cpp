// Recognises the format and the encoding of text, and passes the bytes to the reader of the format.
#include "src/adapters/property_lists/codec.h"

#include <algorithm>
#include <cctype>

#include "src/adapters/property_lists/formats.h"
#include "src/adapters/property_lists/unicode.h"
#include "src/server/mac/text/utf8.h"

namespace norvik {

namespace {

constexpr std::string_view kUtf8Mark = "\xEF\xBB\xBF";

// What the first bytes of a text say about its encoding. Without a mark, a zero beside an ASCII character
// shows that characters have 16 bits.
struct Utf16Beginning {
  std::string_view bytes;
  std::size_t markBytes;
  bool bigEndian;
};
constexpr Utf16Beginning kUtf16Beginnings[] = {
    {{"\xFE\xFF", 2}, 2, true}, {{"\xFF\xFE", 2}, 2, false}, {{"\0<", 2}, 0, true}, {{"<\0", 2}, 0, false}};

// The whole text as UTF-8; nothing if it is not well formed.
std::optional<std::string> unicodeText(std::string_view bytes) {
  for (const Utf16Beginning& beginning : kUtf16Beginnings)
    if (bytes.starts_with(beginning.bytes))
      return fromUtf16(bytes.substr(beginning.markBytes), beginning.bigEndian);
  const bool marked = bytes.starts_with(kUtf8Mark);
  if (marked) bytes.remove_prefix(kUtf8Mark.size());
  if (!marked && looksLikeXml(bytes)) {
    std::string encoding(declaredEncoding(bytes));
    std::transform(encoding.begin(), encoding.end(), encoding.begin(),
                   [](unsigned char c) { return static_cast<char>(std::toupper(c)); });
    if (encoding == "ISO-8859-1") return fromLatin1(bytes);
    if (encoding != "" && encoding != "UTF-8" && encoding != "US-ASCII") return std::nullopt;
  }
  if (!isUtf8(bytes)) return std::nullopt;
  return std::string(bytes);
}

}  // namespace

std::optional<PropertyList> decodePropertyList(std::string_view bytes) {
  if (bytes.size() > kMaxPropertyListBytes) return std::nullopt;
  if (bytes.starts_with(kBinaryMagic)) return readBinary(bytes);
  const auto text = unicodeText(bytes);
  if (!text) return std::nullopt;
  return looksLikeXml(*text) ? readXml(*text) : readAscii(*text);
}

}  // namespace norvik
