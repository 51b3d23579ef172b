// Objects of the toolkit for C++ headers: opaque, so that a header needs no toolkit, and counted, so that an
// object lives as long as a handle to it.
#pragma once

namespace norvik::prefpane {

// Holds an object of the toolkit, or none. A copy holds the same object.
class Handle {
 public:
  Handle() = default;
  // Retains the object.
  explicit Handle(void* object);
  Handle(const Handle& other);
  Handle& operator=(Handle other) noexcept;
  ~Handle();

  // Borrowed; null for none.
  void* get() const { return object_; }

 private:
  void* object_ = nullptr;
};

}  // namespace norvik::prefpane
