#include "tav_event.h"

#include <algorithm>
#include <vector>

#include "tav_parameterfactory.h"
#include "tav_parametertype.h"

namespace tavon {
namespace {

// The size of the largest value that is encoded, a weekly schedule.
constexpr std::size_t kLargestEncoded = 673;

}  // namespace

tavEvent::tavEvent(std::uint32_t id, std::span<const unsigned char> value) {
  const auto length = static_cast<unsigned char>(value.size());
  for (std::size_t i = 0; i < kIdSize; ++i) m_datagram[i] = static_cast<unsigned char>(id >> (8 * i));
  m_datagram[kIdSize] = length;
  std::copy_n(value.begin(), length, m_datagram.begin() + SmallestDatagram);
}

std::optional<tavEvent> tavEvent::FromText(std::uint32_t id, tavEObject type, const tavString& text) {
  const tavParameterType* const record = tavParameterFactory::FindType(type);
  if (text.empty() || record == nullptr) {
    std::vector<unsigned char> none;
    tavParameterFactory::StringToData(type, text, &none);  // reports which of them it is
    return std::nullopt;
  }
  if (record->IsText())
    return tavEvent(id, {reinterpret_cast<const unsigned char*>(text.data()), text.size()});

  std::array<unsigned char, kLargestEncoded> value{};
  record->encode(text, value.data());
  const bool isSwitch = type == tavObject_ParameterThermoChronoWeek && text.find(',') == tavString::npos;
  return tavEvent(id, std::span(value).first(isSwitch ? 1 : record->size));
}

std::optional<tavEvent> tavEvent::FromDatagram(const unsigned char* datagram, int size) {
  if (size < static_cast<int>(SmallestDatagram)) return std::nullopt;
  const std::span bytes(datagram, static_cast<std::size_t>(size));
  const std::size_t length = LengthOf(bytes);
  if (bytes.size() != SmallestDatagram + length) return std::nullopt;
  return tavEvent(IdOf(bytes), bytes.last(length));
}

std::uint32_t tavEvent::IdOf(std::span<const unsigned char> datagram) {
  std::uint32_t id = 0;
  for (std::size_t i = kIdSize; i-- > 0;) id = id << 8 | datagram[i];
  return id;
}

}  // namespace tavon
