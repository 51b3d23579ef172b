// The binary format: objects that refer to each other through a table of offsets, which a trailer of 32 bytes
// describes.
//
// A reader of our own, because the packaged library does not distinguish a negative integer from a large
// unsigned one, cuts texts at a NUL character and dates at 32 bits, and follows shared objects without a
// limit.
#include <bit>
#include <cmath>
#include <utility>

#include "src/adapters/property_lists/formats.h"
#include "src/adapters/property_lists/scalars.h"
#include "src/adapters/property_lists/unicode.h"
#include "src/server/mac/text/utf8.h"

namespace norvik {

namespace {

using Result = std::optional<PropertyList>;

constexpr std::size_t kHeaderBytes = 8;
constexpr std::size_t kTrailerBytes = 32;

constexpr std::string_view kBeyondObjects = "an object reaches beyond the end of the objects";
constexpr std::string_view kBadObject = "an object has an unknown type, or a size that its type cannot have";

// A big-endian number of at most 8 bytes.
uint64_t numberOf(std::string_view bytes) {
  uint64_t number = 0;
  for (const char c : bytes) number = (number << 8) | static_cast<unsigned char>(c);
  return number;
}

// The high half of an object's first byte; the low half is a size or count.
enum Marker : unsigned {
  kSimple = 0x0,
  kInteger = 0x1,
  kReal = 0x2,
  kDate = 0x3,
  kData = 0x4,
  kAsciiText = 0x5,
  kUtf16Text = 0x6,
  kUtf8Text = 0x7,
  kUid = 0x8,
  kArray = 0xA,
  kDictionary = 0xD,
};

class BinaryReader {
 public:
  BinaryReader(std::string_view bytes, PropertyListDamage& report) : bytes_(bytes), report_(report) {}

  Result document();

 private:
  std::optional<std::string_view> take(uint64_t count);
  std::optional<uint64_t> takeCount(unsigned low);
  bool goTo(uint64_t object);
  std::nullopt_t damaged(std::string_view what);
  bool charge(uint64_t bytes);
  Result object(uint64_t index, int depth);
  Result scalar(unsigned high, unsigned low);
  Result integer(std::string_view number);
  Result text(unsigned high, uint64_t count);
  Result array(uint64_t count, int depth);
  Result dictionary(uint64_t count, int depth);

  std::string_view bytes_;
  PropertyListDamage& report_;
  std::string_view objects_;  // the part that objects may be in
  std::size_t at_ = 0;
  std::size_t offsetBytes_ = 0, referenceBytes_ = 0;
  uint64_t objectCount_ = 0;
  std::size_t tableAt_ = 0;
  Allowance allowance_;
};

// Notes what is wrong, unless something was noted already. There are no lines.
std::nullopt_t BinaryReader::damaged(std::string_view what) {
  if (report_.what.empty()) report_.what = what;
  return std::nullopt;
}

std::optional<std::string_view> BinaryReader::take(uint64_t count) {
  if (count > objects_.size() - at_) return damaged(kBeyondObjects);
  auto taken = objects_.substr(at_, static_cast<std::size_t>(count));
  at_ += taken.size();
  return taken;
}

bool BinaryReader::goTo(uint64_t object) {
  if (object >= objectCount_) {
    damaged("a list refers to an object that is not there");
    return false;
  }
  const uint64_t offset =
      numberOf(bytes_.substr(tableAt_ + static_cast<std::size_t>(object) * offsetBytes_, offsetBytes_));
  if (offset < kHeaderBytes || offset >= objects_.size()) {
    damaged("the offset table points outside of the objects");
    return false;
  }
  at_ = static_cast<std::size_t>(offset);
  return true;
}

// Objects may be shared, so a small file can mean an endless list.
bool BinaryReader::charge(uint64_t bytes) {
  const bool allowed = allowance_.take(bytes);
  if (!allowed) damaged(kTooMuch);
  return allowed;
}

Result BinaryReader::document() {
  if (bytes_.size() < kHeaderBytes + kTrailerBytes) return damaged("it is shorter than any binary list");
  // Every version 0x has the same layout.
  if (bytes_[kBinaryMagic.size()] != '0')
    return damaged("it is of a version of the format that is not known here");
  const std::string_view trailer = bytes_.substr(bytes_.size() - kTrailerBytes);
  offsetBytes_ = numberOf(trailer.substr(6, 1));
  referenceBytes_ = numberOf(trailer.substr(7, 1));
  objectCount_ = numberOf(trailer.substr(8, 8));
  const uint64_t root = numberOf(trailer.substr(16, 8));
  const uint64_t table = numberOf(trailer.substr(24, 8));
  const uint64_t end = bytes_.size() - kTrailerBytes;
  const auto isWidth = [](std::size_t width) { return width >= 1 && width <= 8; };
  if (!isWidth(offsetBytes_) || !isWidth(referenceBytes_))
    return damaged("its last 32 bytes describe no list; the end may be missing");
  if (table < kHeaderBytes || table > end || objectCount_ > (end - table) / offsetBytes_)
    return damaged("the offset table is outside of the file");
  tableAt_ = static_cast<std::size_t>(table);
  objects_ = bytes_.substr(0, tableAt_);
  return object(root, 1);
}

Result BinaryReader::object(uint64_t index, int depth) {
  if (!goTo(index)) return std::nullopt;
  const auto marker = static_cast<unsigned>(numberOf(*take(1)));
  unsigned high = marker >> 4, low = marker & 0xF;
  if (high == kSimple || (high >= kInteger && high <= kDate) || high == kUid) {
    if (!charge(0)) return std::nullopt;
    Result value = scalar(high, low);
    return value ? std::move(value) : damaged(kBadObject);
  }
  const auto count = takeCount(low);
  if (!count) return damaged(kBadObject);
  if (high >= kData && high <= kUtf8Text) return text(high, *count);
  if (high != kArray && high != kDictionary) return damaged(kBadObject);
  if (!isDepthAllowed(depth)) return damaged(kTooDeep);
  if (!charge(0)) return std::nullopt;
  return high == kArray ? array(*count, depth) : dictionary(*count, depth);
}

// A count of 15 or more is in a separate integer object.
std::optional<uint64_t> BinaryReader::takeCount(unsigned low) {
  if (low != 0xF) return low;
  const auto marker = take(1);
  if (!marker || numberOf(*marker) >> 4 != kInteger) return std::nullopt;
  const uint64_t power = numberOf(*marker) & 0xF;
  const auto number = power <= 3 ? take(uint64_t{1} << power) : std::nullopt;
  if (!number) return std::nullopt;
  return numberOf(*number);
}

Result BinaryReader::scalar(unsigned high, unsigned low) {
  if (high == kSimple) return low == 8 || low == 9 ? Result(PropertyList(low == 9)) : std::nullopt;
  if (high == kInteger || high == kReal || high == kDate) {
    const auto number = low <= 4 ? take(uint64_t{1} << low) : std::nullopt;
    if (!number) return std::nullopt;
    if (high == kInteger) return integer(*number);
    if (number->size() != 8 && (number->size() != 4 || high == kDate)) return std::nullopt;
    const double value = number->size() == 8 ? std::bit_cast<double>(numberOf(*number))
                                             : std::bit_cast<float>(static_cast<uint32_t>(numberOf(*number)));
    if (high == kReal) return PropertyList(value);
    return isDate(value) ? Result(PropertyList(PropertyList::Date{value})) : std::nullopt;
  }
  const auto number = low < 8 ? take(low + 1) : std::nullopt;
  if (!number) return std::nullopt;
  PropertyList::Dictionary uid;
  uid.emplace(kUidKey, integerOf(numberOf(*number), false));
  return PropertyList(std::move(uid));
}

// Integers of 1, 2 and 4 bytes are unsigned, of 8 signed; 16 are for what is above the signed range.
Result BinaryReader::integer(std::string_view number) {
  if (number.size() < 8) return integerOf(numberOf(number), false);
  const uint64_t low = numberOf(number.substr(number.size() - 8));
  const auto signedLow = static_cast<int64_t>(low);
  if (number.size() == 8) return PropertyList(signedLow);
  const uint64_t high = numberOf(number.substr(0, 8));
  if (high == 0) return integerOf(low, false);
  if (high == UINT64_MAX && signedLow < 0) return PropertyList(signedLow);
  return std::nullopt;
}

Result BinaryReader::text(unsigned high, uint64_t count) {
  // The count is of 16-bit units for one kind of text, of bytes for the others.
  if (count > objects_.size()) return damaged(kBeyondObjects);
  const auto content = take(high == kUtf16Text ? count * 2 : count);
  if (!content || !charge(content->size())) return std::nullopt;
  if (high == kData) return PropertyList(PropertyList::Data{std::string(*content)});
  std::string text;
  bool isText = true;
  if (high == kUtf16Text)
    isText = fromUtf16(*content, true, text);
  else
    text = *content;
  for (const char c : *content)
    isText = isText && (high != kAsciiText || static_cast<unsigned char>(c) < 128);
  if (!isText || !isUtf8(text)) return damaged("a text is not well formed");
  return PropertyList(std::move(text));
}

Result BinaryReader::array(uint64_t count, int depth) {
  const auto references = count <= objects_.size() ? take(count * referenceBytes_) : std::nullopt;
  if (!references) return damaged(kBeyondObjects);
  PropertyList::Array items;
  for (std::size_t i = 0; i < count; ++i) {
    Result item = object(numberOf(references->substr(i * referenceBytes_, referenceBytes_)), depth + 1);
    if (!item) return std::nullopt;
    items.push_back(std::move(*item));
  }
  return PropertyList(std::move(items));
}

Result BinaryReader::dictionary(uint64_t count, int depth) {
  const auto references = count <= objects_.size() ? take(2 * count * referenceBytes_) : std::nullopt;
  if (!references) return damaged(kBeyondObjects);
  PropertyList::Dictionary entries;
  for (std::size_t i = 0; i < count; ++i) {
    const auto reference = [&](std::size_t n) {
      return numberOf(references->substr(n * referenceBytes_, referenceBytes_));
    };
    Result key = object(reference(i), depth + 1);
    if (!key || !key->as<std::string>()) return damaged("a key is no text");
    Result entry = object(reference(static_cast<std::size_t>(count) + i), depth + 1);
    if (!entry) return std::nullopt;
    entries.insert_or_assign(std::move(*key->as<std::string>()), std::move(*entry));
  }
  return PropertyList(std::move(entries));
}

}  // namespace

std::optional<PropertyList> readBinary(std::string_view bytes, PropertyListDamage& report) {
  return BinaryReader(bytes, report).document();
}

}  // namespace norvik
