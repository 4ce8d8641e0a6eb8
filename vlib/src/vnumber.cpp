#include "vnumber.h"

#include <algorithm>
#include <clocale>
#include <cstdio>
#include <cstdlib>
#include <limits>

namespace vlib {
namespace {

bool IsWholeInt32(double value) {
  constexpr double lowest = std::numeric_limits<std::int32_t>::min();
  constexpr double highest = std::numeric_limits<std::int32_t>::max();
  return value >= lowest && value <= highest && value == static_cast<std::int32_t>(value);
}

// The C library has this locale built in: asking for it loads and allocates nothing.
locale_t CLocale() {
  static const locale_t locale = newlocale(LC_ALL_MASK, "C", nullptr);
  return locale;
}

// Gives the calling thread the "C" locale for as long as the object lives.
class InCLocale {
 public:
  InCLocale() : m_before(uselocale(CLocale())) {}
  ~InCLocale() { uselocale(m_before); }
  InCLocale(const InCLocale&) = delete;
  InCLocale& operator=(const InCLocale&) = delete;

 private:
  const locale_t m_before;
};

}  // namespace

std::uint32_t ReadUnsigned32(const char* text, int base) {
  constexpr std::uint64_t limit = std::numeric_limits<std::uint32_t>::max();
  const long long value = std::strtoll(text, nullptr, base);
  const auto bits = static_cast<std::uint64_t>(value);
  const std::uint64_t magnitude = value < 0 ? 0 - bits : bits;
  return static_cast<std::uint32_t>(magnitude > limit ? limit : bits);
}

std::int32_t ReadSigned32(const char* text, int base) {
  using Limits = std::numeric_limits<std::int32_t>;
  return static_cast<std::int32_t>(
      std::clamp<long long>(std::strtoll(text, nullptr, base), Limits::min(), Limits::max()));
}

double ReadReal(const char* text) { return strtod_l(text, nullptr, CLocale()); }

float NarrowToFloat(double value) {
  const volatile auto narrowed = static_cast<float>(value);  // volatile: through memory, not a wide register
  return narrowed;
}

std::string PrintReal(double value, int precision) {
  if (IsWholeInt32(value)) return std::to_string(static_cast<std::int32_t>(value));

  const InCLocale inCLocale;
  const int length = std::snprintf(nullptr, 0, "%.*f", precision, value);
  if (length < 0) return {};
  std::string text(static_cast<std::size_t>(length), '\0');
  std::snprintf(text.data(), text.size() + 1, "%.*f", precision, value);

  text.erase(text.find_last_not_of('0') + 1);
  if (!text.empty() && text.back() == '.') text.pop_back();
  return text;
}

}  // namespace vlib
