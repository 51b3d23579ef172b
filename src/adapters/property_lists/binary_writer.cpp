// Values to the binary format. Objects are written in the order of the list; equal ones are not shared, which
// every reader accepts.
#include <bit>
#include <vector>

#include "src/adapters/property_lists/formats.h"
#include "src/adapters/property_lists/scalars.h"
#include "src/adapters/property_lists/unicode.h"

namespace norvik {

namespace {

std::size_t bytesFor(uint64_t number) {
  if (number <= 0xFF) return 1;
  if (number <= 0xFFFF) return 2;
  return number <= 0xFFFFFFFF ? 4 : 8;
}

void appendNumber(std::string& bytes, uint64_t number, std::size_t width) {
  for (std::size_t i = width; i-- > 0;)
    bytes += static_cast<char>(static_cast<unsigned char>(i < 8 ? number >> (8 * i) : 0));
}

// The number of objects in a list, including keys; references must be wide enough for it.
uint64_t objectsIn(const PropertyList& list) {
  uint64_t count = 1;
  if (const auto* items = list.as<PropertyList::Array>())
    for (const PropertyList& item : *items) count += objectsIn(item);
  if (const auto* entries = list.as<PropertyList::Dictionary>())
    for (const auto& [key, entry] : *entries) count += 1 + objectsIn(entry);
  return count;
}

// The number of the UID that a dictionary represents; nothing for any other dictionary.
std::optional<uint64_t> uidOf(const PropertyList::Dictionary& entries) {
  if (entries.size() != 1 || entries.begin()->first != kUidKey) return std::nullopt;
  const auto* number = entries.begin()->second.as<int64_t>();
  if (!number || *number < 0 || *number > int64_t{UINT32_MAX}) return std::nullopt;
  return static_cast<uint64_t>(*number);
}

class BinaryWriter {
 public:
  std::string finish(const PropertyList& root) {
    const uint64_t count = objectsIn(root);
    referenceBytes_ = bytesFor(count);
    bytes_ = std::string(kBinaryMagic) + "00";
    write(root);
    const uint64_t table = bytes_.size();
    const std::size_t offsetBytes = bytesFor(table);
    for (const uint64_t offset : offsets_) appendNumber(bytes_, offset, offsetBytes);
    bytes_.append(6, '\0');
    appendNumber(bytes_, offsetBytes, 1);
    appendNumber(bytes_, referenceBytes_, 1);
    appendNumber(bytes_, offsets_.size(), 8);
    appendNumber(bytes_, 0, 8);
    appendNumber(bytes_, table, 8);
    return bytes_;
  }

  void operator()(const PropertyList::Dictionary& entries) {
    if (const auto uid = uidOf(entries)) {
      marker(0x80 | static_cast<unsigned>(bytesFor(*uid) - 1));
      return appendNumber(bytes_, *uid, bytesFor(*uid));
    }
    std::size_t references = container(0xD0, entries.size(), 2 * entries.size());
    for (const auto& [key, entry] : entries) {
      refer(references, key);
      references += referenceBytes_;
    }
    for (const auto& [key, entry] : entries) {
      refer(references, entry);
      references += referenceBytes_;
    }
  }

  void operator()(const PropertyList::Array& items) {
    std::size_t references = container(0xA0, items.size(), items.size());
    for (const PropertyList& item : items) {
      refer(references, item);
      references += referenceBytes_;
    }
  }

  void operator()(const std::string& text) {
    std::vector<char16_t> units = toUtf16(text);
    bool ascii = true;
    for (char16_t unit : units) ascii = ascii && unit < 128;
    countedMarker(ascii ? 0x50 : 0x60, units.size());
    for (char16_t unit : units) appendNumber(bytes_, unit, ascii ? 1 : 2);
  }

  void operator()(bool value) { marker(value ? 0x09 : 0x08); }

  void operator()(int64_t value) {
    if (value >= 0) return integer(static_cast<uint64_t>(value));
    marker(0x13);
    appendNumber(bytes_, static_cast<uint64_t>(value), 8);
  }

  // Eight bytes would be signed.
  void operator()(uint64_t value) {
    if (value <= static_cast<uint64_t>(INT64_MAX)) return integer(value);
    marker(0x14);
    appendNumber(bytes_, value, 16);
  }

  void operator()(double value) {
    marker(0x23);
    appendNumber(bytes_, std::bit_cast<uint64_t>(value), 8);
  }

  void operator()(const PropertyList::Date& date) {
    marker(0x33);
    appendNumber(bytes_, std::bit_cast<uint64_t>(date.seconds), 8);
  }

  void operator()(const PropertyList::Data& data) {
    countedMarker(0x40, data.bytes.size());
    bytes_ += data.bytes;
  }

 private:
  void marker(unsigned byte) { bytes_ += static_cast<char>(static_cast<unsigned char>(byte)); }

  void integer(uint64_t value) {
    const std::size_t width = bytesFor(value);
    marker(0x10 | static_cast<unsigned>(std::countr_zero(width)));
    appendNumber(bytes_, value, width);
  }

  void countedMarker(unsigned high, std::size_t count) {
    marker(high | static_cast<unsigned>(count < 15 ? count : 15));
    if (count >= 15) integer(count);
  }

  // The start of a container, with space for its references; returns where they begin.
  std::size_t container(unsigned high, std::size_t count, std::size_t references) {
    countedMarker(high, count);
    const std::size_t begin = bytes_.size();
    bytes_.append(references * referenceBytes_, '\0');
    return begin;
  }

  // Writes an object and fills in the reference to it.
  void refer(std::size_t referenceAt, const PropertyList& object) {
    std::string reference;
    appendNumber(reference, offsets_.size(), referenceBytes_);
    bytes_.replace(referenceAt, referenceBytes_, reference);
    write(object);
  }

  void write(const PropertyList& object) {
    offsets_.push_back(bytes_.size());
    std::visit(*this, object.value());
  }

  std::string bytes_;
  std::vector<uint64_t> offsets_;
  std::size_t referenceBytes_ = 1;
};

}  // namespace

std::string encodeBinaryPropertyList(const PropertyList& list) {
  return BinaryWriter().finish(list);
}

}  // namespace norvik
