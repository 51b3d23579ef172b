// The format: a magic number, then tables of lengths and places, sorted by the English text.
#include "src/frontends/shared/language/catalogue.h"

#include "src/frontends/shared/language/plural_rule.h"

namespace norvik {

namespace {

constexpr uint32_t kMagic = 0x950412de;
constexpr std::size_t kCountPlace = 8, kOriginalsPlace = 12, kTranslationsPlace = 16, kHeaderSize = 28;
constexpr std::size_t kRowSize = 8;
constexpr std::string_view kRuleKey = "plural=";

std::string_view beforeZero(std::string_view text) {
  return text.substr(0, text.find('\0'));
}

// "n != 1" of "Plural-Forms: nplurals=2; plural=n != 1;".
std::string_view ruleIn(std::string_view header) {
  const std::size_t key = header.find(kRuleKey);
  if (key == std::string_view::npos) return {};
  header.remove_prefix(key + kRuleKey.size());
  return header.substr(0, header.find(';'));
}

}  // namespace

std::optional<Catalogue> Catalogue::read(std::string_view bytes) {
  Catalogue catalogue(bytes);
  if (bytes.size() < kHeaderSize || catalogue.numberAt(0) != kMagic) return std::nullopt;
  catalogue.count_ = catalogue.numberAt(kCountPlace);
  catalogue.originals_ = catalogue.numberAt(kOriginalsPlace);
  catalogue.translations_ = catalogue.numberAt(kTranslationsPlace);
  if (!catalogue.isSound()) return std::nullopt;
  catalogue.rule_ = ruleIn(catalogue.find("").value_or(""));
  return catalogue;
}

std::optional<std::string_view> Catalogue::find(std::string_view text) const {
  const auto found = entry(text);
  if (!found) return std::nullopt;
  return beforeZero(*found);
}

std::optional<std::string_view> Catalogue::find(std::string_view singular, std::size_t number) const {
  auto forms = entry(singular);
  if (!forms) return std::nullopt;
  for (std::size_t form = pluralForm(rule_, number); form > 0; --form) {
    const std::size_t end = forms->find('\0');
    if (end == std::string_view::npos) return std::nullopt;
    forms->remove_prefix(end + 1);
  }
  return beforeZero(*forms);
}

bool Catalogue::isSound() const {
  for (const std::size_t table : {originals_, translations_}) {
    if (table > bytes_.size() || count_ > (bytes_.size() - table) / kRowSize) return false;
    for (std::size_t i = 0; i < count_; ++i) {
      const std::size_t length = numberAt(table + i * kRowSize);
      const std::size_t place = numberAt(table + i * kRowSize + 4);
      if (place > bytes_.size() || length > bytes_.size() - place) return false;
    }
  }
  return true;
}

// The lowest byte first, as msgfmt writes it on every computer.
uint32_t Catalogue::numberAt(std::size_t place) const {
  uint32_t number = 0;
  for (std::size_t i = 4; i-- > 0;) number = number << 8 | static_cast<unsigned char>(bytes_[place + i]);
  return number;
}

std::string_view Catalogue::textAt(std::size_t table, std::size_t index) const {
  const std::size_t row = table + index * kRowSize;
  return bytes_.substr(numberAt(row + 4), numberAt(row));
}

std::optional<std::string_view> Catalogue::entry(std::string_view text) const {
  std::size_t first = 0;
  std::size_t behind = count_;
  while (first < behind) {
    const std::size_t middle = first + (behind - first) / 2;
    const int order = beforeZero(original(middle)).compare(text);
    if (order == 0) return translation(middle);
    if (order < 0) {
      first = middle + 1;
    } else {
      behind = middle;
    }
  }
  return std::nullopt;
}

}  // namespace norvik
