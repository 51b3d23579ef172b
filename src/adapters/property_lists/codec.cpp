// Recognises the format and the encoding of text, and passes the bytes to the reader of the format.
#include "src/adapters/property_lists/codec.h"

#include <algorithm>
#include <cctype>
#include <utility>

#include "src/adapters/property_lists/formats.h"
#include "src/adapters/property_lists/unicode.h"
#include "src/server/mac/text/trim.h"
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

// The encodings of 8 bits that an XML declaration may name, by the letters and digits of their names:
// programs write "UTF-8", "utf8" and "Utf_8". ASCII is a part of UTF-8.
enum class Encoding { utf8, latin1 };
struct EncodingName {
  std::string_view letters;
  Encoding encoding;
};
constexpr EncodingName kEncodingNames[] = {
    {"", Encoding::utf8},           {"utf8", Encoding::utf8},        {"ascii", Encoding::utf8},
    {"usascii", Encoding::utf8},    {"ansix341968", Encoding::utf8}, {"iso646us", Encoding::utf8},
    {"iso88591", Encoding::latin1}, {"latin1", Encoding::latin1},    {"isolatin1", Encoding::latin1},
    {"l1", Encoding::latin1},       {"cp819", Encoding::latin1},     {"ibm819", Encoding::latin1}};

std::optional<Encoding> encodingNamed(std::string_view name) {
  std::string letters;
  for (const char c : name) {
    const auto byte = static_cast<unsigned char>(c);
    if (std::isalnum(byte) != 0) letters += static_cast<char>(std::tolower(byte));
  }
  const auto* row = std::ranges::find(kEncodingNames, letters, &EncodingName::letters);
  if (row == std::end(kEncodingNames)) return std::nullopt;
  return row->encoding;
}

std::string hexadecimal(char byte) {
  constexpr std::string_view kDigits = "0123456789ABCDEF";
  const auto number = static_cast<unsigned char>(byte);
  return {'0', 'x', kDigits[number >> 4], kDigits[number & 0xF]};
}

std::optional<std::string> utf16Text(std::string_view bytes, bool bigEndian, PropertyListDamage& report) {
  std::string text;
  if (fromUtf16(bytes, bigEndian, text)) return text;
  return DamageNote(text, report).set({}, "the text has half a character of UTF-16");
}

std::optional<std::string> utf8Text(std::string_view bytes, PropertyListDamage& report) {
  if (isUtf8(bytes)) return std::string(bytes);
  std::string_view rest = bytes;
  while (firstCharacter(rest)) takeCharacter(rest);
  return DamageNote(bytes, report)
      .set(rest, "the byte " + hexadecimal(rest.front()) + " is no text in UTF-8");
}

// The whole text as UTF-8; nothing if it is not well formed.
std::optional<std::string> unicodeText(std::string_view bytes, PropertyListDamage& report) {
  for (const Utf16Beginning& beginning : kUtf16Beginnings)
    if (bytes.starts_with(beginning.bytes))
      return utf16Text(bytes.substr(beginning.markBytes), beginning.bigEndian, report);
  if (bytes.starts_with(kUtf8Mark)) return utf8Text(bytes.substr(kUtf8Mark.size()), report);
  if (!looksLikeXml(bytes)) return utf8Text(bytes, report);
  const std::string_view name = declaredEncoding(bytes);
  const std::optional<Encoding> encoding = encodingNamed(name);
  if (!encoding)
    return DamageNote(bytes, report).set(bytes, "the encoding " + shown(name) + " is not known here");
  return *encoding == Encoding::latin1 ? fromLatin1(bytes) : utf8Text(bytes, report);
}

}  // namespace

std::optional<PropertyList> decodePropertyList(std::string_view bytes) {
  PropertyListDamage damage;
  return decodePropertyList(bytes, damage);
}

std::optional<PropertyList> decodePropertyList(std::string_view bytes, PropertyListDamage& damage) {
  damage = {};
  if (bytes.size() > kMaxPropertyListBytes) {
    damage.what = "it is larger than " + std::to_string(kMaxPropertyListBytes >> 20) + " MB";
    return std::nullopt;
  }
  if (bytes.starts_with(kBinaryMagic)) return readBinary(bytes, damage);
  auto text = unicodeText(bytes, damage);
  if (!text) return std::nullopt;
  if (withoutLeading(*text, kBlanks).empty()) {
    damage.what = text->empty() ? "it is empty" : "it has nothing but white space";
    return std::nullopt;
  }
  return looksLikeXml(*text) ? readXml(std::move(*text), damage) : readAscii(*text, damage);
}

std::optional<std::string> encodeReadableXmlPropertyList(const PropertyList& list) {
  std::optional<std::string> xml = encodeXmlWithinLimits(list);
  if (xml && !decodePropertyList(*xml)) xml.reset();
  return xml;
}

}  // namespace norvik
