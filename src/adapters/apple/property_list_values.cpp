// One function for each kind of value, both ways.
#include "src/adapters/apple/property_list_values.h"

#include <string>
#include <vector>

#include "src/adapters/apple/core_text.h"
#include "src/adapters/property_lists/codec.h"

namespace norvik {

namespace {

// 2^64-1 is read as the signed number -1, and only as a real number it differs from the true -1.
PropertyList integerOf(CFNumberRef number) {
  int64_t bits = 0;
  double real = 0;
  ::CFNumberGetValue(number, kCFNumberSInt64Type, &bits);
  ::CFNumberGetValue(number, kCFNumberFloat64Type, &real);
  if (bits < 0 && real > 0) return static_cast<uint64_t>(bits);
  return bits;
}

PropertyList numberOf(CFNumberRef number) {
  if (!::CFNumberIsFloatType(number)) return integerOf(number);
  double real = 0;
  ::CFNumberGetValue(number, kCFNumberFloat64Type, &real);
  return real;
}

PropertyList dataOf(CFDataRef data) {
  const auto* bytes = reinterpret_cast<const char*>(::CFDataGetBytePtr(data));
  return PropertyList::Data{std::string(bytes, static_cast<std::size_t>(::CFDataGetLength(data)))};
}

std::optional<PropertyList> valueAt(CFTypeRef list, int depth);

std::optional<PropertyList> arrayOf(CFArrayRef array, int depth) {
  PropertyList::Array values;
  const CFIndex count = ::CFArrayGetCount(array);
  values.reserve(static_cast<std::size_t>(count));
  for (CFIndex i = 0; i < count; ++i) {
    auto value = valueAt(::CFArrayGetValueAtIndex(array, i), depth);
    if (!value) return std::nullopt;
    values.push_back(std::move(*value));
  }
  return values;
}

std::optional<PropertyList> dictionaryOf(CFDictionaryRef dictionary, int depth) {
  const auto count = static_cast<std::size_t>(::CFDictionaryGetCount(dictionary));
  std::vector<const void*> keys(count);
  std::vector<const void*> values(count);
  ::CFDictionaryGetKeysAndValues(dictionary, keys.data(), values.data());
  PropertyList::Dictionary result;
  for (std::size_t i = 0; i < count; ++i) {
    if (::CFGetTypeID(keys[i]) != ::CFStringGetTypeID()) return std::nullopt;
    auto value = valueAt(values[i], depth);
    if (!value) return std::nullopt;
    result.insert_or_assign(utf8(static_cast<CFStringRef>(keys[i])), std::move(*value));
  }
  return result;
}

// A boolean is a number too, so that it is asked for first.
std::optional<PropertyList> valueAt(CFTypeRef list, int depth) {
  if (list == nullptr) return std::nullopt;
  const CFTypeID type = ::CFGetTypeID(list);
  const bool holdsOthers = type == ::CFDictionaryGetTypeID() || type == ::CFArrayGetTypeID();
  if (holdsOthers && depth >= kMaxPropertyListDepth) return std::nullopt;
  if (type == ::CFDictionaryGetTypeID()) return dictionaryOf(static_cast<CFDictionaryRef>(list), depth + 1);
  if (type == ::CFArrayGetTypeID()) return arrayOf(static_cast<CFArrayRef>(list), depth + 1);
  if (type == ::CFStringGetTypeID()) return utf8(static_cast<CFStringRef>(list));
  if (type == ::CFBooleanGetTypeID()) return ::CFBooleanGetValue(static_cast<CFBooleanRef>(list)) != 0;
  if (type == ::CFNumberGetTypeID()) return numberOf(static_cast<CFNumberRef>(list));
  if (type == ::CFDateGetTypeID())
    return PropertyList::Date{::CFDateGetAbsoluteTime(static_cast<CFDateRef>(list))};
  if (type == ::CFDataGetTypeID()) return dataOf(static_cast<CFDataRef>(list));
  return std::nullopt;
}

// The collections retain what is added to them.
Owned<CFTypeRef> coreArray(const PropertyList::Array& values) {
  const CFMutableArrayRef array = ::CFArrayCreateMutable(nullptr, 0, &kCFTypeArrayCallBacks);
  Owned<CFTypeRef> owned(array);
  for (const PropertyList& value : values) {
    const Owned<CFTypeRef> element = coreList(value);
    if (!owned || !element) return {};
    ::CFArrayAppendValue(array, element.get());
  }
  return owned;
}

Owned<CFTypeRef> coreDictionary(const PropertyList::Dictionary& values) {
  const CFMutableDictionaryRef dictionary = ::CFDictionaryCreateMutable(
      nullptr, 0, &kCFTypeDictionaryKeyCallBacks, &kCFTypeDictionaryValueCallBacks);
  Owned<CFTypeRef> owned(dictionary);
  for (const auto& [name, value] : values) {
    const Owned<CFStringRef> key = coreText(name);
    const Owned<CFTypeRef> element = coreList(value);
    if (!owned || !key || !element) return {};
    ::CFDictionarySetValue(dictionary, key.get(), element.get());
  }
  return owned;
}

// Numbers above 63 bits cannot be made by a public call, but they can be read.
Owned<CFTypeRef> largeInteger(uint64_t number) {
  return decodedList("<plist version=\"1.0\"><integer>" + std::to_string(number) + "</integer></plist>");
}

struct Converter {
  Owned<CFTypeRef> operator()(const PropertyList::Dictionary& value) const { return coreDictionary(value); }
  Owned<CFTypeRef> operator()(const PropertyList::Array& value) const { return coreArray(value); }
  Owned<CFTypeRef> operator()(const std::string& value) const {
    Owned<CFStringRef> text = coreText(value);
    return Owned<CFTypeRef>(text ? ::CFRetain(text.get()) : nullptr);
  }
  Owned<CFTypeRef> operator()(bool value) const {
    return Owned<CFTypeRef>(::CFRetain(value ? kCFBooleanTrue : kCFBooleanFalse));
  }
  Owned<CFTypeRef> operator()(int64_t value) const {
    return Owned<CFTypeRef>(::CFNumberCreate(nullptr, kCFNumberSInt64Type, &value));
  }
  Owned<CFTypeRef> operator()(uint64_t value) const { return largeInteger(value); }
  Owned<CFTypeRef> operator()(double value) const {
    return Owned<CFTypeRef>(::CFNumberCreate(nullptr, kCFNumberFloat64Type, &value));
  }
  Owned<CFTypeRef> operator()(const PropertyList::Date& value) const {
    return Owned<CFTypeRef>(::CFDateCreate(nullptr, value.seconds));
  }
  Owned<CFTypeRef> operator()(const PropertyList::Data& value) const {
    return Owned<CFTypeRef>(::CFDataCreate(nullptr, reinterpret_cast<const UInt8*>(value.bytes.data()),
                                           static_cast<CFIndex>(value.bytes.size())));
  }
};

}  // namespace

std::optional<PropertyList> valueOf(CFTypeRef list) {
  return valueAt(list, 0);
}

Owned<CFTypeRef> coreList(const PropertyList& value) {
  return std::visit(Converter{}, value.value());
}

Owned<CFPropertyListRef> decodedList(std::string_view bytes) {
  const Owned<CFDataRef> data(::CFDataCreate(nullptr, reinterpret_cast<const UInt8*>(bytes.data()),
                                             static_cast<CFIndex>(bytes.size())));
  if (!data) return {};
  return Owned<CFPropertyListRef>(
      ::CFPropertyListCreateWithData(nullptr, data.get(), kCFPropertyListImmutable, nullptr, nullptr));
}

}  // namespace norvik
