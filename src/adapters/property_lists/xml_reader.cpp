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
  explicit XmlReader(std::string_view text) : lexer_(text) {}

  Result document();

 private:
  Token nextElement();
  std::optional<std::string> textIn(const Token& start);
  Result value(const Token& start, int depth);
  Result array(const Token& start, int depth);
  Result dictionary(const Token& start, int depth);

  XmlLexer lexer_;
};

// The next token that is not white space between elements; other text there is damage.
Token XmlReader::nextElement() {
  Token token = lexer_.next();
  while (token.kind == Kind::text) {
    if (!isBlank(token.text)) return {Kind::damage, {}, {}};
    token = lexer_.next();
  }
  return token;
}

Result XmlReader::document() {
  Token start = nextElement();
  const bool wrapped = start.kind == Kind::start && start.name == "plist";
  if (wrapped) start = nextElement();
  Result root = value(start, 1);
  if (!root) return std::nullopt;
  if (wrapped) {
    const Token end = nextElement();
    if (end.kind != Kind::end || end.name != "plist") return std::nullopt;
  }
  if (nextElement().kind != Kind::endOfText) return std::nullopt;
  return root;
}

// The whole text of an element that holds nothing but text.
std::optional<std::string> XmlReader::textIn(const Token& start) {
  std::string text;
  if (start.kind == Kind::empty) return text;
  for (Token token = lexer_.next();; token = lexer_.next()) {
    if (token.kind == Kind::end && token.name == start.name) return text;
    if (token.kind != Kind::text) return std::nullopt;
    text += token.text;
  }
}

Result XmlReader::value(const Token& start, int depth) {
  if (start.kind != Kind::start && start.kind != Kind::empty) return std::nullopt;
  if (start.name == "dict") return dictionary(start, depth);
  if (start.name == "array") return array(start, depth);
  for (const Leaf& leaf : kLeaves) {
    if (leaf.element != start.name) continue;
    auto text = textIn(start);
    return text ? leaf.valueOf(*text) : std::nullopt;
  }
  return std::nullopt;
}

Result XmlReader::array(const Token& start, int depth) {
  PropertyList::Array items;
  if (!isDepthAllowed(depth)) return std::nullopt;
  if (start.kind == Kind::empty) return PropertyList(std::move(items));
  for (Token token = nextElement();; token = nextElement()) {
    if (token.kind == Kind::end && token.name == start.name) return PropertyList(std::move(items));
    Result item = value(token, depth + 1);
    if (!item) return std::nullopt;
    items.push_back(std::move(*item));
  }
}

Result XmlReader::dictionary(const Token& start, int depth) {
  PropertyList::Dictionary entries;
  if (!isDepthAllowed(depth)) return std::nullopt;
  if (start.kind == Kind::empty) return PropertyList(std::move(entries));
  for (Token token = nextElement();; token = nextElement()) {
    if (token.kind == Kind::end && token.name == start.name) return PropertyList(std::move(entries));
    if ((token.kind != Kind::start && token.kind != Kind::empty) || token.name != "key") return std::nullopt;
    auto key = textIn(token);
    if (!key) return std::nullopt;
    Result entry = value(nextElement(), depth + 1);
    if (!entry) return std::nullopt;
    entries.insert_or_assign(std::move(*key), std::move(*entry));
  }
}

// Converts line ends to line feeds, as XML demands.
std::string withLineFeeds(std::string_view text) {
  std::string result;
  result.reserve(text.size());
  for (std::size_t i = 0; i < text.size(); ++i) {
    const bool carriageReturn = text[i] == '\r';
    if (carriageReturn && i + 1 < text.size() && text[i + 1] == '\n') continue;
    result += carriageReturn ? '\n' : text[i];
  }
  return result;
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

std::optional<PropertyList> readXml(std::string_view text) {
  const std::string normalised = withLineFeeds(text);
  return XmlReader(normalised).document();
}

}  // namespace norvik
