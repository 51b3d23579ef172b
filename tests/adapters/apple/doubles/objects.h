// The objects of the core's double: counted, and remembered after their end, so that an object that is
// released too often or used too late is noticed and nothing worse happens.
#pragma once

#include <CoreFoundation/CoreFoundation.h>

#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace norvik::doubles {

enum Kind : CFTypeID { kText = 1, kBytes, kMoment, kNumber, kTruth, kList, kMap, kAddress, kBundle, kTimer };

struct Object {
  explicit Object(Kind is) : kind(is) {}
  virtual ~Object() = default;
  Object(const Object&) = delete;
  Object& operator=(const Object&) = delete;
  // Called at the end; releases what the object holds.
  virtual void end() {}

  Kind kind;
  long references = 1;
};

struct Text : Object {
  explicit Text(std::string bytes) : Object(kText), utf8(std::move(bytes)) {}
  std::string utf8;
};
struct Bytes : Object {
  explicit Bytes(std::string given) : Object(kBytes), bytes(std::move(given)) {}
  std::string bytes;
};
struct Moment : Object {
  explicit Moment(double at) : Object(kMoment), seconds(at) {}
  double seconds;
};
struct Number : Object {
  Number(bool real, double asReal, uint64_t asBits)
      : Object(kNumber), isReal(real), value(asReal), bits(asBits) {}
  bool isReal;
  double value;   // as a real number, in any case
  uint64_t bits;  // the low 64 of an integer
};
struct Truth : Object {
  explicit Truth(bool is) : Object(kTruth), value(is) {}
  bool value;
};
struct List : Object {
  List() : Object(kList) {}
  void end() override;
  std::vector<CFTypeRef> values;
};
struct Map : Object {
  Map() : Object(kMap) {}
  void end() override;
  std::vector<std::pair<CFTypeRef, CFTypeRef>> values;
};
struct Address : Object {
  explicit Address(std::string given) : Object(kAddress), path(std::move(given)) {}
  std::string path;
};

// Keeps the object until the next `reset`; the caller owns its one reference.
CFTypeRef keep(std::unique_ptr<Object> made);
// Keeps it, and nobody ever owns it.
CFTypeRef keepForGood(std::unique_ptr<Object> made);

// The object as one of its kind. One that has ended, or is of another kind, is a violation and null.
Object* liveObject(CFTypeRef reference, const char* call);
template <typename Which>
Which* live(CFTypeRef reference, Kind kind, const char* call) {
  Object* object = liveObject(reference, call);
  return object != nullptr && object->kind == kind ? static_cast<Which*>(object) : nullptr;
}

}  // namespace norvik::doubles
