// What follows a command's name. A command takes what it needs from the left; every function that takes
// something throws Malformed if something else is there.
#pragma once

#include <cstdint>
#include <limits>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "src/frontends/scenario/words.h"

namespace norvik::scenario {

class Arguments {
 public:
  Arguments(std::vector<Word> words, std::optional<std::string> body);

  bool atEnd() const { return next_ == words_.size(); }
  // Whether the next word is that bare word; takes it if so.
  bool takes(std::string_view word);

  std::string text();                                           // in double quotes
  std::string word();                                           // bare
  std::string wordOrText();                                     // either
  std::optional<std::string> textOr(std::string_view nothing);  // nothing for that bare word
  // All that is left, as texts, with nothing for that bare word.
  std::vector<std::optional<std::string>> textsOr(std::string_view nothing);
  std::vector<std::string> texts();
  bool yesOrNo();  // YES, NO
  double real();   // a finite decimal
  // A decimal integer within the limits.
  template <typename Integer = int64_t>
  Integer integer(Integer least = std::numeric_limits<Integer>::min(),
                  Integer most = std::numeric_limits<Integer>::max()) {
    return static_cast<Integer>(integerWithin(least, most));
  }

  // The lines below the command.
  bool hasBody() const { return body_.has_value(); }
  std::string body();

  // Throws if anything is left.
  void end() const;

 private:
  int64_t integerWithin(int64_t least, int64_t most);
  const Word& take(std::string_view wanted);
  [[noreturn]] static void throwUnexpected(std::string_view wanted, const Word& found);

  std::vector<Word> words_;
  std::size_t next_ = 0;
  std::optional<std::string> body_;
};

}  // namespace norvik::scenario
