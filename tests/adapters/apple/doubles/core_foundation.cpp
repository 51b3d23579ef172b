// CoreFoundation's objects and property lists. Reader and writer are this project's, but for numbers, which
// are written as the core writes them.
#include <CoreFoundation/CoreFoundation.h>

#include <cstdio>
#include <cstring>

#include "src/adapters/property_lists/codec.h"
#include "src/server/mac/text/utf8.h"
#include "tests/adapters/apple/doubles/doubles.h"
#include "tests/adapters/apple/doubles/objects.h"

namespace norvik::doubles {

namespace {

std::vector<std::unique_ptr<Object>> objects;
Truth yes(true);
Truth no(false);

constexpr long kForGood = 2'000'000;

}  // namespace

CFTypeRef keep(std::unique_ptr<Object> made) {
  const std::lock_guard lock(guard());
  objects.push_back(std::move(made));
  return objects.back().get();
}

CFTypeRef keepForGood(std::unique_ptr<Object> made) {
  made->references = kForGood;
  return keep(std::move(made));
}

Object* liveObject(CFTypeRef reference, const char* call) {
  auto* object = static_cast<Object*>(const_cast<void*>(reference));
  if (object == nullptr || object->references <= 0) {
    violate(std::string(call) + (object == nullptr ? " of nothing" : " of an object that has ended"));
    return nullptr;
  }
  return object;
}

std::vector<std::string> leakedObjects() {
  const std::lock_guard lock(guard());
  std::vector<std::string> leaked;
  for (const auto& object : objects) {
    const bool isBorrowed = object->references > kForGood / 2;
    if (isBorrowed && object->references != kForGood) leaked.push_back("a borrowed object was released");
    if (!isBorrowed && object->references > 0)
      leaked.push_back("not released: an object of kind " + std::to_string(object->kind));
  }
  for (const Truth* truth : {&yes, &no}) {
    if (truth->references != 1) leaked.push_back("a boolean was not released as often as it was retained");
  }
  return leaked;
}

void forgetObjects() {
  const std::lock_guard lock(guard());
  objects.clear();
  yes.references = no.references = 1;
}

void List::end() {
  for (const CFTypeRef value : values) CFRelease(value);
}

void Map::end() {
  for (const auto& [key, value] : values) {
    CFRelease(key);
    CFRelease(value);
  }
}

namespace {

CFTypeRef made(const PropertyList& list);

struct Maker {
  CFTypeRef operator()(const PropertyList::Dictionary& values) const {
    auto map = std::make_unique<Map>();
    for (const auto& [key, value] : values)
      map->values.emplace_back(keep(std::make_unique<Text>(key)), made(value));
    return keep(std::move(map));
  }
  CFTypeRef operator()(const PropertyList::Array& values) const {
    auto list = std::make_unique<List>();
    for (const PropertyList& value : values) list->values.push_back(made(value));
    return keep(std::move(list));
  }
  CFTypeRef operator()(const std::string& value) const { return keep(std::make_unique<Text>(value)); }
  CFTypeRef operator()(bool value) const { return CFRetain(value ? kCFBooleanTrue : kCFBooleanFalse); }
  CFTypeRef operator()(int64_t value) const {
    return keep(std::make_unique<Number>(false, static_cast<double>(value), static_cast<uint64_t>(value)));
  }
  CFTypeRef operator()(uint64_t value) const {
    return keep(std::make_unique<Number>(false, static_cast<double>(value), value));
  }
  CFTypeRef operator()(double value) const { return keep(std::make_unique<Number>(true, value, 0)); }
  CFTypeRef operator()(const PropertyList::Date& value) const {
    return keep(std::make_unique<Moment>(value.seconds));
  }
  CFTypeRef operator()(const PropertyList::Data& value) const {
    return keep(std::make_unique<Bytes>(value.bytes));
  }
};

CFTypeRef made(const PropertyList& list) {
  return std::visit(Maker{}, list.value());
}

// How the core writes a real number: with all its digits.
std::string longReals(std::string xml) {
  constexpr std::string_view kOpening = "<real>";
  for (std::size_t place = xml.find(kOpening); place != std::string::npos;
       place = xml.find(kOpening, place + 1)) {
    const std::size_t start = place + kOpening.size();
    const std::size_t end = xml.find('<', start);
    char text[32];
    std::snprintf(text, sizeof text, "%.17g", std::strtod(xml.substr(start, end - start).c_str(), nullptr));
    xml.replace(start, end - start, text);
  }
  return xml;
}

PropertyList valueIn(CFTypeRef reference) {
  const Object* object = liveObject(reference, "writing");
  if (object == nullptr) return PropertyList();
  switch (object->kind) {
    case kText:
      return static_cast<const Text*>(object)->utf8;
    case kBytes:
      return PropertyList::Data{static_cast<const Bytes*>(object)->bytes};
    case kMoment:
      return PropertyList::Date{static_cast<const Moment*>(object)->seconds};
    case kTruth:
      return static_cast<const Truth*>(object)->value;
    case kNumber: {
      const auto* number = static_cast<const Number*>(object);
      if (number->isReal) return number->value;
      if (number->value > 0 && static_cast<int64_t>(number->bits) < 0) return number->bits;
      return static_cast<int64_t>(number->bits);
    }
    case kList: {
      PropertyList::Array values;
      for (const CFTypeRef value : static_cast<const List*>(object)->values) values.push_back(valueIn(value));
      return values;
    }
    case kMap: {
      PropertyList::Dictionary values;
      for (const auto& [key, value] : static_cast<const Map*>(object)->values)
        values.insert_or_assign(static_cast<const Text*>(key)->utf8, valueIn(value));
      return values;
    }
    default:
      violate("an object that is no property list");
      return PropertyList();
  }
}

}  // namespace

}  // namespace norvik::doubles

using namespace norvik::doubles;

struct CFArrayCallBacks {
  int none;
};
struct CFDictionaryKeyCallBacks {
  int none;
};
struct CFDictionaryValueCallBacks {
  int none;
};

extern "C" {

const CFArrayCallBacks kCFTypeArrayCallBacks{};
const CFDictionaryKeyCallBacks kCFTypeDictionaryKeyCallBacks{};
const CFDictionaryValueCallBacks kCFTypeDictionaryValueCallBacks{};
const CFBooleanRef kCFBooleanTrue = reinterpret_cast<CFBooleanRef>(&yes);
const CFBooleanRef kCFBooleanFalse = reinterpret_cast<CFBooleanRef>(&no);

CFTypeRef CFRetain(CFTypeRef object) {
  const std::lock_guard lock(guard());
  Object* retained = liveObject(object, "CFRetain");
  if (retained != nullptr) ++retained->references;
  return object;
}

void CFRelease(CFTypeRef object) {
  const std::lock_guard lock(guard());
  Object* released = liveObject(object, "CFRelease");
  if (released == nullptr || --released->references > 0) return;
  released->end();
}

CFTypeID CFGetTypeID(CFTypeRef object) {
  const Object* asked = liveObject(object, "CFGetTypeID");
  return asked != nullptr ? asked->kind : CFTypeID{0};
}

CFTypeID CFStringGetTypeID(void) {
  return kText;
}
CFTypeID CFDataGetTypeID(void) {
  return kBytes;
}
CFTypeID CFDateGetTypeID(void) {
  return kMoment;
}
CFTypeID CFBooleanGetTypeID(void) {
  return kTruth;
}
CFTypeID CFNumberGetTypeID(void) {
  return kNumber;
}
CFTypeID CFArrayGetTypeID(void) {
  return kList;
}
CFTypeID CFDictionaryGetTypeID(void) {
  return kMap;
}

CFStringRef CFStringCreateWithBytes(CFAllocatorRef, const UInt8* bytes, CFIndex numBytes,
                                    CFStringEncoding encoding, Boolean isExternal) {
  if (encoding != kCFStringEncodingUTF8 || isExternal) violate("an encoding that the adapter has no use for");
  std::string utf8(reinterpret_cast<const char*>(bytes), static_cast<std::size_t>(numBytes));
  if (!norvik::isUtf8(utf8)) return nullptr;
  return static_cast<CFStringRef>(keep(std::make_unique<Text>(std::move(utf8))));
}

CFIndex CFStringGetLength(CFStringRef theString) {
  const auto* text = live<Text>(theString, kText, "CFStringGetLength");
  return text != nullptr ? static_cast<CFIndex>(norvik::utf16Length(text->utf8)) : 0;
}

CFIndex CFStringGetBytes(CFStringRef theString, CFRange range, CFStringEncoding, UInt8, Boolean,
                         UInt8* buffer, CFIndex maxBufLen, CFIndex* usedBufLen) {
  const auto* text = live<Text>(theString, kText, "CFStringGetBytes");
  if (text == nullptr) return 0;
  if (range.location != 0 || range.length != CFStringGetLength(theString)) violate("a part of a text");
  const auto size = static_cast<CFIndex>(text->utf8.size());
  if (buffer != nullptr && maxBufLen < size) violate("a buffer that is too small for a text");
  if (buffer != nullptr) std::memcpy(buffer, text->utf8.data(), static_cast<std::size_t>(size));
  if (usedBufLen != nullptr) *usedBufLen = size;
  return range.length;
}

CFDataRef CFDataCreate(CFAllocatorRef, const UInt8* bytes, CFIndex length) {
  std::string copy(reinterpret_cast<const char*>(bytes), static_cast<std::size_t>(length));
  return static_cast<CFDataRef>(keep(std::make_unique<Bytes>(std::move(copy))));
}

const UInt8* CFDataGetBytePtr(CFDataRef theData) {
  const auto* data = live<Bytes>(theData, kBytes, "CFDataGetBytePtr");
  return data != nullptr ? reinterpret_cast<const UInt8*>(data->bytes.data()) : nullptr;
}

CFIndex CFDataGetLength(CFDataRef theData) {
  const auto* data = live<Bytes>(theData, kBytes, "CFDataGetLength");
  return data != nullptr ? static_cast<CFIndex>(data->bytes.size()) : 0;
}

CFDateRef CFDateCreate(CFAllocatorRef, CFAbsoluteTime at) {
  return static_cast<CFDateRef>(keep(std::make_unique<Moment>(at)));
}

CFAbsoluteTime CFDateGetAbsoluteTime(CFDateRef theDate) {
  const auto* date = live<Moment>(theDate, kMoment, "CFDateGetAbsoluteTime");
  return date != nullptr ? date->seconds : 0;
}

Boolean CFBooleanGetValue(CFBooleanRef boolean) {
  const auto* truth = live<Truth>(boolean, kTruth, "CFBooleanGetValue");
  return static_cast<Boolean>(truth != nullptr && truth->value);
}

CFNumberRef CFNumberCreate(CFAllocatorRef, CFNumberType theType, const void* valuePtr) {
  if (theType == kCFNumberFloat64Type)
    return static_cast<CFNumberRef>(made(*static_cast<const double*>(valuePtr)));
  if (theType != kCFNumberSInt64Type) violate("a type of number that no public call makes");
  return static_cast<CFNumberRef>(made(*static_cast<const int64_t*>(valuePtr)));
}

// A number beyond 63 bits gives its low bits, and says that they are the number.
Boolean CFNumberGetValue(CFNumberRef number, CFNumberType theType, void* valuePtr) {
  const auto* asked = live<Number>(number, kNumber, "CFNumberGetValue");
  if (asked == nullptr) return 0;
  if (theType == kCFNumberFloat64Type) {
    *static_cast<double*>(valuePtr) = asked->value;
  } else {
    *static_cast<uint64_t*>(valuePtr) = asked->isReal ? static_cast<uint64_t>(asked->value) : asked->bits;
  }
  return 1;
}

Boolean CFNumberIsFloatType(CFNumberRef number) {
  const auto* asked = live<Number>(number, kNumber, "CFNumberIsFloatType");
  return static_cast<Boolean>(asked != nullptr && asked->isReal);
}

CFMutableArrayRef CFArrayCreateMutable(CFAllocatorRef, CFIndex, const CFArrayCallBacks* callBacks) {
  if (callBacks != &kCFTypeArrayCallBacks) violate("an array that does not own its values");
  return static_cast<CFMutableArrayRef>(const_cast<void*>(keep(std::make_unique<List>())));
}

void CFArrayAppendValue(CFMutableArrayRef theArray, const void* value) {
  if (auto* list = live<List>(theArray, kList, "CFArrayAppendValue")) list->values.push_back(CFRetain(value));
}

CFIndex CFArrayGetCount(CFArrayRef theArray) {
  const auto* list = live<List>(theArray, kList, "CFArrayGetCount");
  return list != nullptr ? static_cast<CFIndex>(list->values.size()) : 0;
}

const void* CFArrayGetValueAtIndex(CFArrayRef theArray, CFIndex idx) {
  const auto* list = live<List>(theArray, kList, "CFArrayGetValueAtIndex");
  return list != nullptr ? list->values.at(static_cast<std::size_t>(idx)) : nullptr;
}

CFMutableDictionaryRef CFDictionaryCreateMutable(CFAllocatorRef, CFIndex,
                                                 const CFDictionaryKeyCallBacks* keyCallBacks,
                                                 const CFDictionaryValueCallBacks* valueCallBacks) {
  if (keyCallBacks != &kCFTypeDictionaryKeyCallBacks || valueCallBacks != &kCFTypeDictionaryValueCallBacks)
    violate("a dictionary that does not own its values");
  return static_cast<CFMutableDictionaryRef>(const_cast<void*>(keep(std::make_unique<Map>())));
}

void CFDictionarySetValue(CFMutableDictionaryRef theDict, const void* key, const void* value) {
  if (auto* map = live<Map>(theDict, kMap, "CFDictionarySetValue"))
    map->values.emplace_back(CFRetain(key), CFRetain(value));
}

CFIndex CFDictionaryGetCount(CFDictionaryRef theDict) {
  const auto* map = live<Map>(theDict, kMap, "CFDictionaryGetCount");
  return map != nullptr ? static_cast<CFIndex>(map->values.size()) : 0;
}

void CFDictionaryGetKeysAndValues(CFDictionaryRef theDict, const void** keys, const void** values) {
  const auto* map = live<Map>(theDict, kMap, "CFDictionaryGetKeysAndValues");
  if (map == nullptr) return;
  for (const auto& [key, value] : map->values) {
    *keys++ = key;
    *values++ = value;
  }
}

CFPropertyListRef CFPropertyListCreateWithData(CFAllocatorRef, CFDataRef data, CFOptionFlags,
                                               CFPropertyListFormat*, CFErrorRef* error) {
  if (error != nullptr) violate("an error that nobody releases");
  const auto* bytes = live<Bytes>(data, kBytes, "CFPropertyListCreateWithData");
  const auto list = bytes != nullptr ? norvik::decodePropertyList(bytes->bytes) : std::nullopt;
  return list ? made(*list) : nullptr;
}

CFDataRef CFPropertyListCreateData(CFAllocatorRef, CFPropertyListRef propertyList,
                                   CFPropertyListFormat format, CFOptionFlags, CFErrorRef* error) {
  if (error != nullptr) violate("an error that nobody releases");
  if (format != kCFPropertyListXMLFormat_v1_0) violate("a format that the rules do not name");
  return static_cast<CFDataRef>(
      keep(std::make_unique<Bytes>(longReals(norvik::encodeXmlPropertyList(valueIn(propertyList))))));
}

Boolean CFURLGetFileSystemRepresentation(CFURLRef url, Boolean, UInt8* buffer, CFIndex maxBufLen) {
  const auto* address = live<Address>(url, kAddress, "CFURLGetFileSystemRepresentation");
  if (address == nullptr || static_cast<CFIndex>(address->path.size()) >= maxBufLen) return 0;
  std::memcpy(buffer, address->path.c_str(), address->path.size() + 1);
  return 1;
}

}  // extern "C"
