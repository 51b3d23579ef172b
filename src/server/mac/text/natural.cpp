// Arithmetic as on paper, with digits of 32 bits.
#include "src/server/mac/text/natural.h"

#include <algorithm>
#include <bit>

namespace norvik {

namespace {

constexpr int kLimbBits = 32;
constexpr uint32_t kBillion = 1'000'000'000;
constexpr int kDigitsOfBillion = 9;

}  // namespace

Natural::Natural(uint64_t value)
    : limbs_{static_cast<uint32_t>(value), static_cast<uint32_t>(value >> kLimbBits)} {
  trim();
}

void Natural::trim() {
  while (!limbs_.empty() && limbs_.back() == 0) limbs_.pop_back();
}

void Natural::multiplyAdd(uint32_t factor, uint32_t summand) {
  uint64_t carry = summand;
  for (uint32_t& limb : limbs_) {
    carry += uint64_t{limb} * factor;
    limb = static_cast<uint32_t>(carry);
    carry >>= kLimbBits;
  }
  if (carry != 0) limbs_.push_back(static_cast<uint32_t>(carry));
}

void Natural::multiplyByPowerOfTen(int exponent) {
  for (; exponent >= kDigitsOfBillion; exponent -= kDigitsOfBillion) multiplyAdd(kBillion, 0);
  for (; exponent > 0; --exponent) multiplyAdd(10, 0);
}

void Natural::shiftLeft(int bits) {
  if (isZero()) return;
  if (const int rest = bits % kLimbBits; rest != 0) multiplyAdd(uint32_t{1} << rest, 0);
  limbs_.insert(limbs_.begin(), static_cast<std::size_t>(bits / kLimbBits), 0);
}

void Natural::add(const Natural& other) {
  limbs_.resize(std::max(limbs_.size(), other.limbs_.size()) + 1);
  uint64_t carry = 0;
  for (std::size_t i = 0; i < limbs_.size(); ++i) {
    carry += uint64_t{limbs_[i]} + (i < other.limbs_.size() ? other.limbs_[i] : 0);
    limbs_[i] = static_cast<uint32_t>(carry);
    carry >>= kLimbBits;
  }
  trim();
}

void Natural::subtract(const Natural& other) {
  uint64_t borrow = 0;
  for (std::size_t i = 0; i < limbs_.size(); ++i) {
    const uint64_t taken = borrow + (i < other.limbs_.size() ? other.limbs_[i] : 0);
    borrow = limbs_[i] < taken ? 1 : 0;
    limbs_[i] = static_cast<uint32_t>(limbs_[i] - taken);
  }
  trim();
}

int Natural::bitWidth() const {
  if (isZero()) return 0;
  return static_cast<int>(limbs_.size() - 1) * kLimbBits + static_cast<int>(std::bit_width(limbs_.back()));
}

uint32_t Natural::divide(uint32_t divisor) {
  uint64_t rest = 0;
  for (auto limb = limbs_.rbegin(); limb != limbs_.rend(); ++limb) {
    rest = rest << kLimbBits | *limb;
    *limb = static_cast<uint32_t>(rest / divisor);
    rest %= divisor;
  }
  trim();
  return static_cast<uint32_t>(rest);
}

std::string Natural::decimalDigits() const {
  std::string backwards;
  Natural rest = *this;
  do {
    uint32_t group = rest.divide(kBillion);
    for (int i = 0; i < kDigitsOfBillion; ++i, group /= 10) backwards += static_cast<char>('0' + group % 10);
  } while (!rest.isZero());
  while (backwards.size() > 1 && backwards.back() == '0') backwards.pop_back();
  return {backwards.rbegin(), backwards.rend()};
}

std::strong_ordering Natural::operator<=>(const Natural& other) const {
  if (limbs_.size() != other.limbs_.size()) return limbs_.size() <=> other.limbs_.size();
  for (std::size_t i = limbs_.size(); i-- > 0;)
    if (limbs_[i] != other.limbs_[i]) return limbs_[i] <=> other.limbs_[i];
  return std::strong_ordering::equal;
}

}  // namespace norvik
