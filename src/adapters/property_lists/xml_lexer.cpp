// The lexer of the XML format.
#include "src/adapters/property_lists/xml_lexer.h"

#include <charconv>
#include <utility>

#include "src/adapters/property_lists/formats.h"
#include "src/server/mac/text/utf8.h"

namespace norvik {

namespace {

constexpr std::string_view kXmlSpace = " \t\r\n";
constexpr std::string_view kNameEnd = " \t\r\n/><=\"'";

struct Entity {
  std::string_view name;
  char character;
};
constexpr Entity kEntities[] = {{"lt", '<'}, {"gt", '>'}, {"amp", '&'}, {"quot", '"'}, {"apos", '\''}};

}  // namespace

bool XmlLexer::take(std::string_view prefix) {
  if (!rest_.starts_with(prefix)) return false;
  rest_.remove_prefix(prefix.size());
  return true;
}

// Skips everything to the end of the next `end`.
bool XmlLexer::passTo(std::string_view end) {
  const std::size_t at = rest_.find(end);
  if (at == std::string_view::npos) return false;
  rest_.remove_prefix(at + end.size());
  return true;
}

XmlLexer::Token XmlLexer::damage(std::string_view at, std::string what) {
  return {Kind::damage, {}, std::move(what), at};
}

XmlLexer::Token XmlLexer::next() {
  while (!rest_.empty()) {
    const std::string_view at = rest_;
    if (take("<!--")) {
      if (!passTo("-->")) return damage(at, "the comment has no end");
    } else if (take("<?")) {
      if (!passTo("?>")) return damage(at, "\"<?\" is not followed by \"?>\"");
    } else if (take("<!DOCTYPE")) {
      if (!passDocumentType()) return damage(at, "the document type has no end");
    } else if (rest_.front() != '<' || rest_.starts_with("<![CDATA[")) {
      return text();
    } else {
      return element();
    }
  }
  return {Kind::endOfText, {}, {}, rest_};
}

XmlLexer::Token XmlLexer::element() {
  const std::string_view at = rest_;
  rest_.remove_prefix(1);
  Kind kind = take("/") ? Kind::end : Kind::start;
  const std::string_view name = rest_.substr(0, rest_.find_first_of(kNameEnd));
  rest_.remove_prefix(name.size());
  if (name.empty()) return damage(at, "\"<\" is not followed by the name of an element");
  const bool passed = passAttributes();
  if (passed && kind == Kind::start && take("/")) kind = Kind::empty;
  if (!passed || !take(">"))
    return damage(at, "the element " + shown(name) + " is not well formed, or has no \">\"");
  return {kind, name, {}, at};
}

bool XmlLexer::passAttributes() {
  while (true) {
    const std::size_t space = rest_.find_first_not_of(kXmlSpace);
    if (space == std::string_view::npos) return false;
    rest_.remove_prefix(space);
    if (rest_.front() == '/' || rest_.front() == '>') return true;
    const std::size_t name = rest_.find_first_of(kNameEnd);
    if (space == 0 || name == 0 || name == std::string_view::npos) return false;
    rest_.remove_prefix(name);
    const std::size_t equals = rest_.find_first_not_of(kXmlSpace);
    if (equals == std::string_view::npos || rest_[equals] != '=') return false;
    const std::size_t value = rest_.find_first_not_of(kXmlSpace, equals + 1);
    if (value == std::string_view::npos || (rest_[value] != '"' && rest_[value] != '\'')) return false;
    const std::size_t end = rest_.find(rest_[value], value + 1);
    if (end == std::string_view::npos || rest_.substr(value, end - value).find('<') != std::string_view::npos)
      return false;
    rest_.remove_prefix(end + 1);
  }
}

// Declarations inside a document type are skipped: an entity that a file defines is not an entity to us,
// which also keeps entities that double from growing without end.
bool XmlLexer::passDocumentType() {
  bool internal = false;
  while (!rest_.empty()) {
    const char c = rest_.front();
    if (take("<!--")) {
      if (!passTo("-->")) return false;
      continue;
    }
    rest_.remove_prefix(1);
    if (c == '[') internal = true;
    if (c == ']') internal = false;
    if (c == '>' && !internal) return true;
    if ((c == '"' || c == '\'') && !passTo(std::string_view(&c, 1))) return false;
  }
  return false;
}

XmlLexer::Token XmlLexer::text() {
  Token token{Kind::text, {}, {}, rest_};
  while (!rest_.empty()) {
    const std::string_view at = rest_;
    if (take("<![CDATA[")) {
      const std::size_t end = rest_.find("]]>");
      if (end == std::string_view::npos) return damage(at, "\"<![CDATA[\" is not followed by \"]]>\"");
      token.text += rest_.substr(0, end);
      rest_.remove_prefix(end + 3);
      continue;
    }
    if (rest_.front() == '<') break;
    if (take("&")) {
      if (!reference(token.text)) return damage(at, "\"&\" is not followed by the name of a character");
      continue;
    }
    const std::size_t plain = std::min(rest_.find_first_of("<&"), rest_.size());
    token.text += rest_.substr(0, plain);
    rest_.remove_prefix(plain);
  }
  return token;
}

bool XmlLexer::reference(std::string& to) {
  // The longest meaningful one is a number with some leading zeros; without a bound, every lone "&" would
  // cost a search of the whole rest.
  constexpr std::size_t kLongest = 32;
  const std::size_t end = rest_.substr(0, kLongest).find(';');
  if (end == std::string_view::npos) return false;
  std::string_view name = rest_.substr(0, end);
  rest_.remove_prefix(end + 1);
  if (name.starts_with('#')) {
    const bool hexadecimal = name.starts_with("#x");
    name.remove_prefix(hexadecimal ? 2 : 1);
    uint32_t number = 0;
    auto [stop, error] =
        std::from_chars(name.data(), name.data() + name.size(), number, hexadecimal ? 16 : 10);
    if (error != std::errc{} || stop != name.data() + name.size() || !isScalar(number)) return false;
    appendCharacter(to, number);
    return true;
  }
  for (const Entity& entity : kEntities) {
    if (entity.name != name) continue;
    to += entity.character;
    return true;
  }
  return false;
}

}  // namespace norvik
