#include "datagram_text.h"

#include <gtest/gtest.h>

#include <memory>
#include <vector>

#include "tav_parameterfactory.h"

namespace {

using Bytes = std::vector<unsigned char>;
struct LineCase {
  const char* name;
  Bytes datagram;
  const char* line;
};
void PrintTo(const LineCase& line, std::ostream* o_stream) { *o_stream << line.name; }

class DatagramTextLine : public testing::TestWithParam<LineCase> {};
TEST_P(DatagramTextLine, ShowsIdLengthAndBytes) {
  EXPECT_EQ(DatagramText(GetParam().datagram), GetParam().line);
}
INSTANTIATE_TEST_SUITE_P(
    Datagrams, DatagramTextLine,
    testing::Values(
        LineCase{"OneByte", {0x2A, 0, 0, 0, 1, 1}, "id 42 length 1 value 01"},
        LineCase{"LargestId", {0xFF, 0xFF, 0xFF, 0xFF, 2, 0x0A, 0xB0}, "id 4294967295 length 2 value 0A B0"},
        LineCase{"NoValue", {1, 2, 0, 0, 0}, "id 513 length 0 value"},
        LineCase{"TooFewBytes", {1, 0, 0, 0, 2, 7}, "id 1 length 2 value 07 (carries 1 value bytes)"},
        LineCase{"NoHeader", {1, 2, 3}, "bytes 01 02 03 (no event: 3 bytes, at least 5 expected)"},
        LineCase{"Nothing", {}, "bytes (no event: 0 bytes, at least 5 expected)"}));

struct MeaningCase {
  const char* name;
  const char* type;
  Bytes value;
  const char* end;  // of the line, behind the bytes
};
void PrintTo(const MeaningCase& meaning, std::ostream* o_stream) { *o_stream << meaning.name; }

class DatagramTextMeaning : public testing::TestWithParam<MeaningCase> {};
TEST_P(DatagramTextMeaning, IsWhatAParameterOfTheTypeReads) {
  const std::unique_ptr<tavon::tavIParameter> parameter(
      tavon::tavParameterFactory::CreateByTypeName(GetParam().type));
  Bytes datagram = {1, 0, 0, 0, static_cast<unsigned char>(GetParam().value.size())};
  datagram.insert(datagram.end(), GetParam().value.begin(), GetParam().value.end());
  EXPECT_EQ(DatagramText(datagram, parameter.get()), DatagramText(datagram) + GetParam().end);
}
INSTANTIATE_TEST_SUITE_P(
    Values, DatagramTextMeaning,
    testing::Values(
        MeaningCase{"Colour", "ParameterColor", {1, 2, 3, 0xF}, " means 0x0102030F"},
        // Neither a line feed nor what is no UTF-8 may reach a terminal.
        MeaningCase{"UnprintableText", "ParameterInfo", {'H', 10, 0xC3}, " means H\\x0A\\xC3"},
        MeaningCase{"ScheduleSwitch", "ParameterThermoChronoWeek", {1}, " means the schedule is on"},
        MeaningCase{"CutSchedule", "ParameterThermoChronoWeek", {1, 0}, " means the first 2 of 673 bytes"},
        MeaningCase{"NoValue", "ParameterThermo", {}, ""}));

}  // namespace
