// The tokens of an XML document as far as property lists use XML: elements and text. Comments, processing
// instructions, the document type and attributes are skipped, since none has a meaning here.
//
// A lexer of our own, because no packaged reader preserves every text: XML parsers reject control characters,
// which old files have in texts, and the packaged property-list library cuts texts at a NUL character and
// dates at 32 bits, and accepts documents that end early.
#pragma once

#include <string>
#include <string_view>

namespace norvik {

class XmlLexer {
 public:
  enum class Kind { start, empty, end, text, endOfText, damage };
  struct Token {
    Kind kind;
    std::string_view name;  // of an element
    std::string text;       // of a stretch of text, its references resolved; of damage, what is wrong
    std::string_view at;    // the text from where the token, or the damage, begins
  };

  // The text is UTF-8 with line feeds as line ends, and must outlive the lexer.
  explicit XmlLexer(std::string_view text) : rest_(text) {}

  // The next token. An empty element, such as <true/>, is one token.
  Token next();

 private:
  static Token damage(std::string_view at, std::string what);
  Token element();
  Token text();
  bool reference(std::string& to);
  bool passAttributes();
  bool passDocumentType();
  bool take(std::string_view prefix);
  bool passTo(std::string_view end);

  std::string_view rest_;
};

}  // namespace norvik
