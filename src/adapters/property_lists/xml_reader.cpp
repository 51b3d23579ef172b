// The XML format, from elements to values. Recursive up to the limit of depth.
#include <optional>
#include <utility>

#include "src/adapters/property_lists/formats.h"
#include "src/adapters/property_lists/scalars.h"
#include "src/adapters/property_lists/xml_lexer.h"
#include "src/server/mac/text/trim.h"

namespace norvik {

namespace {

using Kind = XmlLexer::Kind;
using Token = XmlLexer::Token;
using Result = std::optional<PropertyList>;

bool isBlank(std::string_view text) {
  return withoutLeading(text, kBlanks).empty();
}

Result booleanOf(std::string& text, bool value) {
  if (!isBlank(text)) return std::nullopt;
  return PropertyList(value);
}

Result dateOf(std::string& text) {
  const auto seconds = parseDate(text);
  if (!seconds) return std::nullopt;
  return PropertyList(PropertyList::Date{*seconds});
}

Result dataOf(std::string& text) {
  auto bytes = parseBase64(text);
  if (!bytes) return std::nullopt;
  return PropertyList(PropertyList::Data{std::move(*bytes)});
}

Result realOf(std::string& text) {
  const auto number = parseReal(text);
  if (!number) return std::nullopt;
  return PropertyList(*number);
}

struct Leaf {
  std::string_view element;
  Result (*valueOf)(std::string& text);
};
constexpr Leaf kLeaves[] = {
    {"string", [](std::string& text) -> Result { return PropertyList(std::move(text)); }},
    {"integer", [](std::string& text) -> Result { return parseInteger(text); }},
    {"real", realOf},
    {"true", [](std::string& text) -> Result { return booleanOf(text, true); }},
    {"false", [](std::string& text) -> Result { return booleanOf(text, false); }},
    {"date", dateOf},
    {"data", dataOf},
};

class XmlReader {
 public:
  XmlReader(std::string_view text, PropertyListDamage& report) : lexer_(text), note_(text, report) {}

  Result document();

 private:
  Token nextElement();
  std::nullopt_t missing(const Token& found, std::string_view wanted);
  std::nullopt_t unended(const Token& found, const Token& start);
  bool charge(const Token& start, std::size_t bytes);
  std::optional<std::string> textIn(const Token& start);
  Result value(const Token& start, int depth);
  Result leaf(const Leaf& kind, const Token& start);
  Result array(const Token& start, int depth);
  Result dictionary(const Token& start, int depth);

  XmlLexer lexer_;
  DamageNote note_;
  Allowance allowance_;
};

// The next token that is not white space between elements; other text there is damage.
Token XmlReader::nextElement() {
  Token token = lexer_.next();
  while (token.kind == Kind::text) {
    const std::string_view text = withoutLeading(token.text, kBlanks);
    if (!text.empty())
      return {
          Kind::damage, {}, shown(text) + " is outside of every value", withoutLeading(token.at, kBlanks)};
    token = lexer_.next();
  }
  return token;
}

// Notes that something else than what is wanted was found.
std::nullopt_t XmlReader::missing(const Token& found, std::string_view wanted) {
  if (found.kind == Kind::damage) return note_.set(found.at, found.text);
  std::string what = "the file ends";
  if (found.kind != Kind::endOfText)
    what = std::string(found.kind == Kind::end ? "</" : "<") + std::string(found.name) + "> is";
  return note_.set(found.at, what + " where " + std::string(wanted) + " should be");
}

// Notes that something else than the end of the element was found.
std::nullopt_t XmlReader::unended(const Token& found, const Token& start) {
  const std::string name(start.name);
  if (found.kind != Kind::endOfText) return missing(found, "</" + name + ">");
  return note_.set(found.at, "the file ends inside <" + name + ">" + begunIn(note_.lineOf(start.at)));
}

bool XmlReader::charge(const Token& start, std::size_t bytes) {
  const bool allowed = allowance_.take(bytes);
  if (!allowed) note_.set(start.at, kTooMuch);
  return allowed;
}

Result XmlReader::document() {
  Token start = nextElement();
  const bool wrapped = start.kind == Kind::start && start.name == "plist";
  if (wrapped) start = nextElement();
  Result root = value(start, 1);
  if (!root) return std::nullopt;
  if (wrapped) {
    const Token end = nextElement();
    if (end.kind != Kind::end || end.name != "plist") return missing(end, "</plist>");
  }
  const Token end = nextElement();
  if (end.kind != Kind::endOfText) return missing(end, "the end of the file");
  return root;
}

// The whole text of an element that holds nothing but text.
std::optional<std::string> XmlReader::textIn(const Token& start) {
  std::string text;
  while (start.kind != Kind::empty) {
    Token token = lexer_.next();
    if (token.kind == Kind::end && token.name == start.name) break;
    if (token.kind != Kind::text) return unended(token, start);
    if (text.empty())
      text = std::move(token.text);  // nearly always the only one, and it may be large
    else
      text += token.text;
  }
  if (!charge(start, text.size())) return std::nullopt;
  return text;
}

Result XmlReader::value(const Token& start, int depth) {
  if (start.kind != Kind::start && start.kind != Kind::empty) return missing(start, "a value");
  const bool isDictionary = start.name == "dict";
  if (isDictionary || start.name == "array") {
    if (!isDepthAllowed(depth)) return note_.set(start.at, kTooDeep);
    if (!charge(start, 0)) return std::nullopt;
    return isDictionary ? dictionary(start, depth) : array(start, depth);
  }
  for (const Leaf& kind : kLeaves)
    if (kind.element == start.name) return leaf(kind, start);
  return missing(start, "a value");
}

Result XmlReader::leaf(const Leaf& kind, const Token& start) {
  auto text = textIn(start);
  if (!text) return std::nullopt;
  Result value = kind.valueOf(*text);
  if (!value) note_.set(start.at, "<" + std::string(start.name) + "> cannot hold " + shown(*text));
  return value;
}

Result XmlReader::array(const Token& start, int depth) {
  PropertyList::Array items;
  if (start.kind == Kind::empty) return PropertyList(std::move(items));
  for (Token token = nextElement();; token = nextElement()) {
    if (token.kind == Kind::end && token.name == start.name) return PropertyList(std::move(items));
    if (token.kind == Kind::endOfText) return unended(token, start);
    Result item = value(token, depth + 1);
    if (!item) return std::nullopt;
    items.push_back(std::move(*item));
  }
}

Result XmlReader::dictionary(const Token& start, int depth) {
  PropertyList::Dictionary entries;
  if (start.kind == Kind::empty) return PropertyList(std::move(entries));
  for (Token token = nextElement();; token = nextElement()) {
    if (token.kind == Kind::end && token.name == start.name) return PropertyList(std::move(entries));
    if (token.kind == Kind::endOfText) return unended(token, start);
    if ((token.kind != Kind::start && token.kind != Kind::empty) || token.name != "key")
      return missing(token, "<key> or </dict>");
    auto key = textIn(token);
    if (!key) return std::nullopt;
    const Token first = nextElement();
    if (first.kind == Kind::end) return missing(first, "the value of the key " + shown(*key));
    Result entry = value(first, depth + 1);
    if (!entry) return std::nullopt;
    entries.insert_or_assign(std::move(*key), std::move(*entry));
  }
}

// Converts line ends to line feeds, as XML demands.
void convertLineEnds(std::string& text) {
  std::size_t length = text.find('\r');
  if (length == std::string::npos) return;
  for (std::size_t i = length; i < text.size(); ++i) {
    const bool carriageReturn = text[i] == '\r';
    if (carriageReturn && i + 1 < text.size() && text[i + 1] == '\n') continue;
    text[length++] = carriageReturn ? '\n' : text[i];
  }
  text.resize(length);
}

}  // namespace

bool looksLikeXml(std::string_view text) {
  constexpr std::string_view kBeginnings[] = {"<?",    "<!",     "<plist",  "<dict",    "<array",
                                              "<data", "<key",   "<string", "<integer", "<real",
                                              "<true", "<false", "<date"};
  text = withoutLeading(text, kBlanks);
  for (const std::string_view beginning : kBeginnings)
    if (text.starts_with(beginning)) return true;
  return false;
}

std::string_view declaredEncoding(std::string_view text) {
  text = withoutLeading(text, kBlanks);
  if (!text.starts_with("<?xml")) return {};
  const std::string_view declaration = text.substr(0, text.find("?>"));
  constexpr std::string_view kName = "encoding";
  const std::size_t at = declaration.find(kName);
  if (at == std::string_view::npos) return {};
  const std::size_t open = declaration.find_first_of("\"'", at + kName.size());
  if (open == std::string_view::npos) return {};
  return declaration.substr(open + 1, declaration.find(declaration[open], open + 1) - open - 1);
}

std::optional<PropertyList> readXml(std::string text, PropertyListDamage& report) {
  convertLineEnds(text);
  return XmlReader(text, report).document();
}

}  // namespace norvik
