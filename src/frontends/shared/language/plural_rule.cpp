// The rule is evaluated while it is read: it is short, and counted texts are few.
#include "src/frontends/shared/language/plural_rule.h"

#include <charconv>
#include <iterator>
#include <span>

namespace norvik {

namespace {

using Number = std::size_t;

struct Operator {
  std::string_view sign;
  Number (*apply)(Number, Number);
};

// From those that bind least; of two signs that begin alike, the longer one first.
constexpr Operator kOr[] = {{"||", [](Number a, Number b) -> Number { return a != 0 || b != 0 ? 1 : 0; }}};
constexpr Operator kAnd[] = {{"&&", [](Number a, Number b) -> Number { return a != 0 && b != 0 ? 1 : 0; }}};
constexpr Operator kEqual[] = {{"==", [](Number a, Number b) -> Number { return a == b ? 1 : 0; }},
                               {"!=", [](Number a, Number b) -> Number { return a != b ? 1 : 0; }}};
constexpr Operator kOrder[] = {{"<=", [](Number a, Number b) -> Number { return a <= b ? 1 : 0; }},
                               {">=", [](Number a, Number b) -> Number { return a >= b ? 1 : 0; }},
                               {"<", [](Number a, Number b) -> Number { return a < b ? 1 : 0; }},
                               {">", [](Number a, Number b) -> Number { return a > b ? 1 : 0; }}};
constexpr Operator kSum[] = {{"+", [](Number a, Number b) { return a + b; }},
                             {"-", [](Number a, Number b) { return a - b; }}};
constexpr Operator kProduct[] = {{"*", [](Number a, Number b) { return a * b; }},
                                 {"/", [](Number a, Number b) -> Number { return b == 0 ? 0 : a / b; }},
                                 {"%", [](Number a, Number b) -> Number { return b == 0 ? 0 : a % b; }}};
constexpr std::span<const Operator> kLevels[] = {kOr, kAnd, kEqual, kOrder, kSum, kProduct};

constexpr int kDeepest = 64;

class RuleReader {
 public:
  RuleReader(std::string_view rule, Number number) : rest_(rule), number_(number) {}

  Number result() {
    const Number value = choice();
    skipBlanks();
    return isWrong_ || !rest_.empty() ? 0 : value;
  }

 private:
  Number choice() {
    if (++depth_ > kDeepest) return wrong();
    const Number condition = level(0);
    Number value = condition;
    if (takes("?")) {
      const Number first = choice();
      if (!takes(":")) return wrong();
      const Number second = choice();
      value = condition != 0 ? first : second;
    }
    --depth_;
    return value;
  }

  Number level(std::size_t at) {
    if (at == std::size(kLevels)) return value();
    Number left = level(at + 1);
    for (const Operator* next = operatorOf(at); next != nullptr; next = operatorOf(at)) {
      left = next->apply(left, level(at + 1));
    }
    return left;
  }

  Number value() {
    if (takes("!")) return value() == 0 ? 1 : 0;
    if (takes("n")) return number_;
    if (takes("(")) {
      const Number inner = choice();
      return takes(")") ? inner : wrong();
    }
    Number digits = 0;
    const auto [behind, error] = std::from_chars(rest_.data(), rest_.data() + rest_.size(), digits);
    if (error != std::errc()) return wrong();
    rest_.remove_prefix(static_cast<std::size_t>(behind - rest_.data()));
    return digits;
  }

  const Operator* operatorOf(std::size_t at) {
    for (const Operator& each : kLevels[at]) {
      if (takes(each.sign)) return &each;
    }
    return nullptr;
  }

  bool takes(std::string_view sign) {
    skipBlanks();
    if (isWrong_ || !rest_.starts_with(sign)) return false;
    rest_.remove_prefix(sign.size());
    return true;
  }

  void skipBlanks() {
    while (rest_.starts_with(' ')) rest_.remove_prefix(1);
  }

  Number wrong() {
    isWrong_ = true;
    return 0;
  }

  std::string_view rest_;
  Number number_;
  int depth_ = 0;
  bool isWrong_ = false;
};

}  // namespace

std::size_t pluralForm(std::string_view rule, std::size_t number) {
  return RuleReader(rule, number).result();
}

}  // namespace norvik
