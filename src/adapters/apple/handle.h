// Ownership of the platform's objects. A function with Create or Copy in its name returns an object that the
// caller releases: it goes into an Owned at once. What a function with Get in its name returns is borrowed
// and stays a plain reference.
#pragma once

#include <CoreFoundation/CoreFoundation.h>

#include <utility>

namespace norvik {

// Owns one reference to an object of the platform, or none.
template <typename Ref>
class Owned {
 public:
  Owned() = default;
  // Takes over what a Create or Copy function returned; null for none.
  explicit Owned(Ref created) : ref_(created) {}
  ~Owned() { reset(); }
  Owned(Owned&& other) noexcept : ref_(std::exchange(other.ref_, nullptr)) {}
  Owned& operator=(Owned&& other) noexcept {
    std::swap(ref_, other.ref_);
    return *this;
  }
  Owned(const Owned&) = delete;
  Owned& operator=(const Owned&) = delete;

  // Borrowed; null for none.
  Ref get() const { return ref_; }
  explicit operator bool() const { return ref_ != nullptr; }
  void reset() {
    if (ref_ != nullptr) ::CFRelease(ref_);
    ref_ = nullptr;
  }

 private:
  Ref ref_ = nullptr;
};

}  // namespace norvik
