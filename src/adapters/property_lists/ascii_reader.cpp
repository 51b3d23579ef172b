// The old-style ASCII format: { key = value; }, ( value, value ), <hexadecimal data> and strings, quoted or
// bare. A file of bare "key" = "value"; lines is a dictionary as well. No packaged library reads it.
#include <array>
#include <utility>

#include "src/adapters/property_lists/formats.h"
#include "src/server/mac/text/trim.h"
#include "src/server/mac/text/utf8.h"

namespace norvik {

namespace {

using Result = std::optional<PropertyList>;

constexpr std::string_view kSpace = " \t\r\n\v\f";

// The characters above 127 of the NeXTSTEP encoding, which octal escapes use.
constexpr std::array<char16_t, 128> kNextStep = {
    0x00A0, 0x00C0, 0x00C1, 0x00C2, 0x00C3, 0x00C4, 0x00C5, 0x00C7, 0x00C8, 0x00C9, 0x00CA, 0x00CB, 0x00CC,
    0x00CD, 0x00CE, 0x00CF, 0x00D0, 0x00D1, 0x00D2, 0x00D3, 0x00D4, 0x00D5, 0x00D6, 0x00D9, 0x00DA, 0x00DB,
    0x00DC, 0x00DD, 0x00DE, 0x00B5, 0x00D7, 0x00F7, 0x00A9, 0x00A1, 0x00A2, 0x00A3, 0x2044, 0x00A5, 0x0192,
    0x00A7, 0x00A4, 0x2019, 0x201C, 0x00AB, 0x2039, 0x203A, 0xFB01, 0xFB02, 0x00AE, 0x2013, 0x2020, 0x2021,
    0x00B7, 0x00A6, 0x00B6, 0x2022, 0x201A, 0x201E, 0x201D, 0x00BB, 0x2026, 0x2030, 0x00AC, 0x00BF, 0x00B9,
    0x02CB, 0x00B4, 0x02C6, 0x02DC, 0x00AF, 0x02D8, 0x02D9, 0x00A8, 0x00B2, 0x02DA, 0x00B8, 0x00B3, 0x02DD,
    0x02DB, 0x02C7, 0x2014, 0x00B1, 0x00BC, 0x00BD, 0x00BE, 0x00E0, 0x00E1, 0x00E2, 0x00E3, 0x00E4, 0x00E5,
    0x00E7, 0x00E8, 0x00E9, 0x00EA, 0x00EB, 0x00EC, 0x00C6, 0x00ED, 0x00AA, 0x00EE, 0x00EF, 0x00F0, 0x00F1,
    0x0141, 0x00D8, 0x0152, 0x00BA, 0x00F2, 0x00F3, 0x00F4, 0x00F5, 0x00F6, 0x00E6, 0x00F9, 0x00FA, 0x00FB,
    0x0131, 0x00FC, 0x00FD, 0x0142, 0x00F8, 0x0153, 0x00DF, 0x00FE, 0x00FF, 0xFFFD, 0xFFFD};

struct Escape {
  char letter;
  char32_t character;
};
constexpr Escape kEscapes[] = {{'a', '\a'}, {'b', '\b'}, {'f', '\f'}, {'n', '\n'},
                               {'r', '\r'}, {'t', '\t'}, {'v', '\v'}};

int digitOf(char c) {
  if (c >= '0' && c <= '9') return c - '0';
  if (c >= 'a' && c <= 'f') return c - 'a' + 10;
  if (c >= 'A' && c <= 'F') return c - 'A' + 10;
  return 16;
}

bool isBare(char c) {
  return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') ||
         std::string_view("_$/:.-").find(c) != std::string_view::npos;
}

class AsciiReader {
 public:
  AsciiReader(std::string_view text, PropertyListDamage& report) : rest_(text), note_(text, report) {}

  Result document();

 private:
  bool take(char c);
  bool passSpace();
  std::nullopt_t missing(std::string_view wanted);
  bool charge(std::size_t bytes);
  Result value(int depth);
  Result entries(bool braced, int depth);
  Result array(int depth);
  Result data();
  std::optional<std::string> text();
  std::optional<std::string> quoted(char quote);
  bool escape(std::string& to);
  std::optional<char32_t> digits(int base, std::size_t most);

  std::string_view rest_;
  DamageNote note_;
  Allowance allowance_;
};

// Notes that something else than what is wanted comes here.
std::nullopt_t AsciiReader::missing(std::string_view wanted) {
  const std::string found = rest_.empty() ? "the file ends" : shown(rest_.substr(0, 1)) + " is";
  return note_.set(rest_, found + " where " + std::string(wanted) + " should be");
}

bool AsciiReader::charge(std::size_t bytes) {
  const bool allowed = allowance_.take(bytes);
  if (!allowed) note_.set(rest_, kTooMuch);
  return allowed;
}

bool AsciiReader::take(char c) {
  if (!rest_.starts_with(c)) return false;
  rest_.remove_prefix(1);
  return true;
}

// Skips white space and comments; false when a comment has no end.
bool AsciiReader::passSpace() {
  while (true) {
    rest_ = withoutLeading(rest_, kSpace);
    const bool line = rest_.starts_with("//");
    if (!line && !rest_.starts_with("/*")) return true;
    const std::size_t end = line ? rest_.find_first_of("\r\n") : rest_.find("*/", 2);
    if (!line && end == std::string_view::npos) {
      note_.set(rest_, "the comment has no end");
      return false;
    }
    rest_.remove_prefix(line ? std::min(end, rest_.size()) : end + 2);
  }
}

Result AsciiReader::document() {
  const std::string_view whole = rest_;
  Result root = value(1);
  if (root && passSpace() && rest_.empty()) return root;
  if (!root) return std::nullopt;
  // A string followed by more may be the first key of a file of keys and values without braces.
  if (!root->as<std::string>()) return missing("the end of the file");
  rest_ = whole;
  note_.clear();
  allowance_ = Allowance();
  return entries(false, 1);
}

Result AsciiReader::value(int depth) {
  if (!passSpace()) return std::nullopt;
  if (rest_.empty()) return missing("a value");
  if (rest_.starts_with('{')) return entries(true, depth);
  if (rest_.starts_with('(')) return array(depth);
  if (rest_.starts_with('<')) return data();
  auto string = text();
  if (!string) return missing("a value");
  return PropertyList(std::move(*string));
}

// Keys and values up to the closing brace, or to the end of the file if there is none.
Result AsciiReader::entries(bool braced, int depth) {
  PropertyList::Dictionary entries;
  const std::string_view begin = rest_;
  if (braced) take('{');
  if (!isDepthAllowed(depth)) return note_.set(begin, kTooDeep);
  if (!charge(0)) return std::nullopt;
  while (true) {
    if (!passSpace()) return std::nullopt;
    if (braced ? take('}') : rest_.empty()) return PropertyList(std::move(entries));
    if (rest_.empty()) return note_.set(rest_, "the file ends inside \"{\"" + begunIn(note_.lineOf(begin)));
    auto key = text();
    if (!key || !passSpace()) return missing("a key");
    // A key alone is its own value.
    Result entry = PropertyList(*key);
    if (take('=')) entry = value(depth + 1);
    if (!entry || !passSpace() || !take(';')) return missing("\";\"");
    entries.insert_or_assign(std::move(*key), std::move(*entry));
  }
}

Result AsciiReader::array(int depth) {
  PropertyList::Array items;
  const std::string_view begin = rest_;
  take('(');
  if (!isDepthAllowed(depth)) return note_.set(begin, kTooDeep);
  if (!charge(0)) return std::nullopt;
  while (true) {
    if (!passSpace()) return std::nullopt;
    if (take(')')) return PropertyList(std::move(items));
    if (rest_.empty()) return note_.set(rest_, "the file ends inside \"(\"" + begunIn(note_.lineOf(begin)));
    Result item = value(depth + 1);
    if (!item || !passSpace()) return std::nullopt;
    items.push_back(std::move(*item));
    if (!rest_.empty() && !take(',') && !rest_.starts_with(')')) return missing("\",\" or \")\"");
  }
}

Result AsciiReader::data() {
  PropertyList::Data data;
  const std::string_view begin = rest_;
  take('<');
  int high = -1;
  while (!rest_.empty()) {
    const char c = rest_.front();
    if (c == '>' && high < 0) {
      take(c);
      if (!charge(data.bytes.size())) return std::nullopt;
      return PropertyList(std::move(data));
    }
    const bool space = kSpace.find(c) != std::string_view::npos;
    const int digit = digitOf(c);
    if (!space && digit > 15) return missing("a hexadecimal digit");
    take(c);
    if (space) continue;
    if (high >= 0) data.bytes += static_cast<char>(static_cast<unsigned char>(high * 16 + digit));
    high = high >= 0 ? -1 : digit;
  }
  return note_.set(rest_, "the file ends inside \"<\"" + begunIn(note_.lineOf(begin)));
}

// Text in quotation marks or without; nothing, and nothing noted, where there is none.
std::optional<std::string> AsciiReader::text() {
  for (const char quote : {'"', '\''})
    if (rest_.starts_with(quote)) return quoted(quote);
  std::size_t length = 0;
  while (length < rest_.size() && isBare(rest_[length])) ++length;
  if (length == 0 || !charge(length)) return std::nullopt;
  std::string bare(rest_.substr(0, length));
  rest_.remove_prefix(length);
  return bare;
}

std::optional<std::string> AsciiReader::quoted(char quote) {
  std::string string;
  const std::string_view begin = rest_;
  take(quote);
  while (!rest_.empty()) {
    const std::string_view here = rest_;
    if (take(quote)) {
      if (!charge(string.size())) return std::nullopt;
      return string;
    }
    if (take('\\')) {
      if (!escape(string)) return note_.set(here, shown(here.substr(0, 6)) + " is no character");
      continue;
    }
    string += rest_.front();
    rest_.remove_prefix(1);
  }
  return note_.set(rest_, "the file ends inside the text in quotation marks" + begunIn(note_.lineOf(begin)));
}

bool AsciiReader::escape(std::string& to) {
  if (rest_.empty()) return false;
  if (digitOf(rest_.front()) < 8) {
    const char32_t c = *digits(8, 3) & 0xFF;
    appendCharacter(to, c < 128 ? c : kNextStep[c - 128]);
    return true;
  }
  const char letter = rest_.front();
  rest_.remove_prefix(1);
  if (letter == 'U' || letter == 'u') {
    auto unit = digits(16, 4);
    // A character beyond 16 bits is written as two escapes, a surrogate pair.
    if (unit && *unit >= 0xD800 && *unit < 0xDC00 && (rest_.starts_with("\\U") || rest_.starts_with("\\u"))) {
      rest_.remove_prefix(2);
      const auto low = digits(16, 4);
      if (!low || *low < 0xDC00 || *low >= 0xE000) return false;
      unit = 0x10000 + ((*unit - 0xD800) << 10) + (*low - 0xDC00);
    }
    if (!unit || !isScalar(*unit)) return false;
    appendCharacter(to, *unit);
    return true;
  }
  for (const Escape& escape : kEscapes) {
    if (escape.letter != letter) continue;
    appendCharacter(to, escape.character);
    return true;
  }
  // Any other character, or its first byte, is taken literally.
  to += letter;
  return true;
}

// A number of one to `most` digits.
std::optional<char32_t> AsciiReader::digits(int base, std::size_t most) {
  char32_t number = 0;
  std::size_t count = 0;
  for (; count < most && count < rest_.size() && digitOf(rest_[count]) < base; ++count)
    number = number * static_cast<char32_t>(base) + static_cast<char32_t>(digitOf(rest_[count]));
  rest_.remove_prefix(count);
  if (count == 0) return std::nullopt;
  return number;
}

}  // namespace

std::optional<PropertyList> readAscii(std::string_view text, PropertyListDamage& report) {
  return AsciiReader(text, report).document();
}

}  // namespace norvik
