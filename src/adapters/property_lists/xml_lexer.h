// The words of an XML document as far as property lists use XML: elements and text. Comments, processing
// instructions and the document type are passed over; attributes are too, since none has a meaning here.
//
// A reader of our own, because no packaged one gives back every text: control characters, which old files
// hold in texts, are forbidden to XML parsers, and the packaged property-list library cuts texts at a NUL
// character, dates at 32 bits and lets a document end early.
#pragma once

#include <string>
#include <string_view>

namespace norvik {

class XmlLexer {
 public:
  enum class Kind { kStart, kEmpty, kEnd, kText, kEndOfText, kDamage };
  struct Token {
    Kind kind;
    std::string_view name;  // of an element
    std::string text;       // of a stretch of text, its references resolved
  };

  // The text is UTF-8 with line feeds as line ends, and must outlive the lexer.
  explicit XmlLexer(std::string_view text) : rest_(text) {}

  // The next token. An element that is open and shut in one, such as <true/>, is one token.
  Token next();

 private:
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
