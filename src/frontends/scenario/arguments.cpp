// Taking arguments, and what is wrong with them.
#include "src/frontends/scenario/arguments.h"

#include <charconv>
#include <cmath>
#include <utility>

#include "src/frontends/scenario/malformed.h"
#include "src/server/mac/text/escape.h"
#include "src/server/mac/text/reals.h"

namespace norvik::scenario {

Arguments::Arguments(std::vector<Word> words, std::optional<std::string> body)
    : words_(std::move(words)), body_(std::move(body)) {}

void Arguments::throwUnexpected(std::string_view wanted, const Word& found) {
  const std::string form = found.quoted ? quoted(found.text) : found.text;
  throw Malformed("expected " + std::string(wanted) + ", found " + form);
}

const Word& Arguments::take(std::string_view wanted) {
  if (atEnd()) throw Malformed("expected " + std::string(wanted) + ", found the end of the command");
  return words_[next_++];
}

bool Arguments::takes(std::string_view word) {
  if (atEnd() || words_[next_].quoted || words_[next_].text != word) return false;
  ++next_;
  return true;
}

std::string Arguments::text() {
  constexpr std::string_view kWanted = "a text in double quotes";
  const Word& word = take(kWanted);
  if (!word.quoted) throwUnexpected(kWanted, word);
  return word.text;
}

std::string Arguments::word() {
  constexpr std::string_view kWanted = "a word without quotes";
  const Word& found = take(kWanted);
  if (found.quoted) throwUnexpected(kWanted, found);
  return found.text;
}

std::string Arguments::wordOrText() {
  return take("a word or a text").text;
}

std::optional<std::string> Arguments::textOr(std::string_view nothing) {
  if (takes(nothing)) return std::nullopt;
  const std::string wanted = "a text in double quotes or " + std::string(nothing);
  const Word& word = take(wanted);
  if (!word.quoted) throwUnexpected(wanted, word);
  return word.text;
}

std::vector<std::optional<std::string>> Arguments::textsOr(std::string_view nothing) {
  std::vector<std::optional<std::string>> rest;
  while (!atEnd()) rest.push_back(textOr(nothing));
  return rest;
}

std::vector<std::string> Arguments::texts() {
  std::vector<std::string> rest;
  while (!atEnd()) rest.push_back(text());
  return rest;
}

bool Arguments::yesOrNo() {
  if (takes("YES")) return true;
  if (takes("NO")) return false;
  throwUnexpected("YES or NO", take("YES or NO"));
}

double Arguments::real() {
  const Word& word = take("a number");
  const auto number = leadingReal(word.text);
  const bool isWhole = number && number->length == word.text.size();
  if (word.quoted || !isWhole || !number->inRange || !std::isfinite(number->value)) {
    throwUnexpected("a number", word);
  }
  return number->value;
}

int64_t Arguments::integerWithin(int64_t least, int64_t most) {
  const Word& word = take("a whole number");
  int64_t value = 0;
  const char* end = word.text.data() + word.text.size();
  const auto [rest, error] = std::from_chars(word.text.data(), end, value);
  if (word.quoted || error != std::errc{} || rest != end) throwUnexpected("a whole number", word);
  if (value < least || value > most) {
    throwUnexpected("a whole number from " + std::to_string(least) + " to " + std::to_string(most), word);
  }
  return value;
}

std::string Arguments::body() {
  if (!body_) throw Malformed("expected lines below the command, after <<END");
  return *std::exchange(body_, std::nullopt);
}

void Arguments::end() const {
  if (!atEnd()) throwUnexpected("the end of the command", words_[next_]);
  if (body_) throw Malformed("the command takes no lines below it");
}

}  // namespace norvik::scenario
