#include "datagram_text.h"

#include <gtest/gtest.h>

#include <memory>

#include "tav_parameterfactory.h"

namespace {

using Bytes = std::vector<unsigned char>;

TEST(DatagramText, TellsWhatIsWrongWithADatagram) {
  EXPECT_EQ(DatagramText(Bytes{1, 0, 0, 0, 2, 0xAB}, nullptr),
            "id 1 length 2 value AB (carries 1 value bytes)");
  EXPECT_EQ(DatagramText(Bytes{1, 2, 3, 4}, nullptr),
            "bytes 01 02 03 04 (no event: 4 bytes, at least 5 expected)");
}

TEST(DatagramText, TellsWhatTheValueMeansToAParameter) {
  const struct {
    const char* type;
    Bytes value;
    const char* meaning;
  } cases[] = {
      {"ParameterThermo", {}, ""},
      {"ParameterThermoChronoWeek", {2}, " means the schedule is on"},
      {"ParameterThermoChronoWeek", {0}, " means the schedule is off"},
      {"ParameterThermoChronoWeek", {1, 0}, " means the first 2 of 673 bytes"},
      // Neither control characters nor what is no UTF-8 may reach a terminal.
      {"ParameterInfo", {'H', '\n', 0xC3, ' ', 0x7F}, R"( means H\x0A\xC3 \x7F)"},
      {"ParameterInfo", {0xC2, 0xA0, 0xC2, 0x9F}, " means \u00A0\\xC2\\x9F"},
  };
  for (const auto& c : cases) {
    const std::unique_ptr<tavon::tavIParameter> parameter(
        tavon::tavParameterFactory::CreateByTypeName(c.type));
    Bytes datagram = {1, 0, 0, 0, static_cast<unsigned char>(c.value.size())};
    datagram.insert(datagram.end(), c.value.begin(), c.value.end());
    EXPECT_EQ(DatagramText(datagram, parameter.get()), DatagramText(datagram, nullptr) + c.meaning);
  }
}

TEST(DatagramText, TakesEachTextWhole) {
  const std::unique_ptr<tavon::tavIParameter> info(
      tavon::tavParameterFactory::CreateByTypeName("ParameterInfo"));
  DatagramText(Bytes{1, 0, 0, 0, 3, 'a', 'b', 'c'}, info.get());
  EXPECT_EQ(DatagramText(Bytes{1, 0, 0, 0, 1, 'd'}, info.get()), "id 1 length 1 value 64 means d");
}

}  // namespace
