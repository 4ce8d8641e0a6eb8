#include "tav_event.h"

#include <gmock/gmock.h>

#include <numeric>
#include <vector>

#include "expect_report.h"
#include "failing_allocation.h"
#include "tav_parameterfactory.h"
#include "tav_parametertype.h"

using namespace tavon;
using testing::ElementsAre;
using testing::ElementsAreArray;

namespace {

using Bytes = std::vector<unsigned char>;

// As many bytes as asked for, each different from its neighbours.
Bytes Counting(std::size_t size) {
  Bytes bytes(size);
  std::iota(bytes.begin(), bytes.end(), static_cast<unsigned char>(1));
  return bytes;
}

TEST(TavEvent, IsIdLengthAndValue) {
  EXPECT_THAT(tavEvent(0x04030201, Bytes{0xAB, 0xCD}).GetDatagram(), ElementsAre(1, 2, 3, 4, 2, 0xAB, 0xCD));
  EXPECT_THAT(tavEvent(0xFFFFFFFE, {}).GetDatagram(), ElementsAre(0xFE, 0xFF, 0xFF, 0xFF, 0));
  EXPECT_THAT(tavEvent().GetDatagram(), ElementsAre(0, 0, 0, 0, 0));
}

TEST(TavEvent, CutsALargeValueToItsSizeModulo256OnPurpose) {
  for (const auto& [size, sent] : {std::pair(255, 255), {256, 0}, {300, 44}, {673, 161}}) {
    SCOPED_TRACE(size);
    const Bytes value = Counting(static_cast<std::size_t>(size));
    const tavEvent event(7, value);
    EXPECT_THAT(event.GetValue(), ElementsAreArray(value.begin(), value.begin() + sent));
    EXPECT_EQ(event.GetDatagram().size(), 5U + static_cast<unsigned int>(sent));
  }
}

TEST(TavEvent, IsReadFromTheDatagramThatItGives) {
  for (const std::size_t size : {0U, 1U, 255U}) {
    SCOPED_TRACE(size);
    const Bytes value = Counting(size);
    const tavEvent sent(0x89ABCDEF, value);
    const auto datagram = sent.GetDatagram();
    const auto received = tavEvent::FromDatagram(datagram.data(), static_cast<int>(datagram.size()));
    ASSERT_TRUE(received);
    EXPECT_EQ(received->GetId(), 0x89ABCDEFU);
    EXPECT_THAT(received->GetValue(), ElementsAreArray(value));
  }
}

TEST(TavEvent, IsNotReadFromWhatIsNotExactlyOne) {
  const struct {
    const char* what;
    Bytes datagram;
  } cases[] = {
      {"nothing", {}},
      {"no length", {1, 0, 0, 0}},
      {"less than the length", {1, 0, 0, 0, 2, 9}},
      {"more than the length", {1, 0, 0, 0, 1, 9, 9}},
      {"more than no value", {1, 0, 0, 0, 0, 9}},
  };
  for (const auto& c : cases) {
    EXPECT_FALSE(tavEvent::FromDatagram(c.datagram.data(), static_cast<int>(c.datagram.size()))) << c.what;
  }
  EXPECT_FALSE(tavEvent::FromDatagram(nullptr, -1)) << "receiving failed";
  EXPECT_FALSE(tavEvent::FromDatagram(nullptr, -2)) << "nothing came in time";
}

// A datagram of 406 bytes begins like the largest event. Cut to its size it would be one.
TEST(TavEvent, BufferHoldsMoreThanAnEventSoThatALongerDatagramIsSeen) {
  tavEvent::Buffer buffer{1, 0, 0, 0, 255};
  EXPECT_FALSE(tavEvent::FromDatagram(buffer.data(), static_cast<int>(buffer.size())));
  EXPECT_TRUE(tavEvent::FromDatagram(buffer.data(), static_cast<int>(buffer.size()) - 1));
}

TEST(TavEvent, NeedsNoMemory) {
  const tavString week = "1,20.123456789012345678,21";
  const auto shortage = FailingAllocation::OfAtLeast(0);
  for (const tavParameterType* type : tavParameterFactory::GetTypes()) {
    EXPECT_TRUE(tavEvent::FromText(42, type->id, week)) << type->name;
  }
}

TEST(TavEvent, IsNotMadeFromNoText) {
  ExpectReport({6, "tav_parameterfactory", "StringToData", "strData == \"\""}, false,
               [] { return tavEvent::FromText(1, tavObject_ParameterSwitch, "").has_value(); });
}

}  // namespace
