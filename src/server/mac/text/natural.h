// Whole numbers of any size, as far as the conversion of reals needs them. Not for numbers that come from
// outside in any length: the caller bounds them.
#pragma once

#include <compare>
#include <cstdint>
#include <string>
#include <vector>

namespace norvik {

class Natural {
 public:
  explicit Natural(uint64_t value);

  // times the factor, plus the summand.
  void multiplyAdd(uint32_t factor, uint32_t summand);
  void multiplyByPowerOfTen(int exponent);  // at least 0
  void shiftLeft(int bits);                 // at least 0
  void add(const Natural& other);
  void subtract(const Natural& other);  // which is not larger

  bool isZero() const { return limbs_.empty(); }
  int bitWidth() const;  // 0 for 0
  std::string decimalDigits() const;

  std::strong_ordering operator<=>(const Natural& other) const;
  bool operator==(const Natural& other) const = default;

 private:
  uint32_t divide(uint32_t divisor);  // returns the remainder
  void trim();

  std::vector<uint32_t> limbs_;  // the least first; the last is not 0
};

}  // namespace norvik
