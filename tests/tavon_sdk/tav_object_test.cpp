#include "tav_object.h"

#include "object_lock.h"
#include "tav_parameterswitch.h"

namespace tavon {
namespace {

// Counts how often it is told that a change was acknowledged.
struct Watched : tavObject {
  void OnDirty() override {
    ++notices;
    EXPECT_FALSE(IsDirty()) << "told when the mark is gone";
    EXPECT_TRUE(ObjectLock::IsFree(*this)) << "told without the lock";
  }
  int notices = 0;
};

TEST(TavObject, TellsWhenADirtyObjectIsMadeClean) {
  Watched object;
  object.IsDirty(false);
  object.IsDirty(true);
  EXPECT_EQ(object.notices, 0);
  object.IsDirty(false);
  EXPECT_EQ(object.notices, 1);
  object.SetFlags(1);
  object.SetFlags(0);
  EXPECT_EQ(object.notices, 1) << "not when all flags are replaced";
}

TEST(TavObject, HasFlagsWhenAnyBitOfTheMaskIsSet) {
  tavObject object;
  object.AddFlags(0x0A);
  object.RemoveFlags(0x08);
  EXPECT_TRUE(object.HasFlags(0x06));
  EXPECT_FALSE(object.HasFlags(0x0D));
}

TEST(TavObject, SerializesAsOneElementNamedAfterItsType) {
  tavParameterSwitch lamp;
  lamp.SetUniqueID(12);
  lamp.SetName(L"Lamp");
  lamp.SetValue(1);
  lamp.SetFlags(0x40);
  EXPECT_EQ(lamp.SerializeAsXml(),
            R"(<ParameterSwitch uid="12" type="1000" name="Lamp" pref="" suff=""><parameters>)"
            "<flags>01000000</flags><value>1</value></parameters></ParameterSwitch>");
}

TEST(TavObject, WritesItsTextsWithoutEscaping) {
  tavObject object;
  object.SetPrefix(L"p&");
  object.SetName(L"\u00E9\"<");
  object.SetSuffix(L"-s");
  EXPECT_EQ(object.SerializeAsXml(),
            "<Object uid=\"0\" type=\"0\" name=\"\u00E9\"<\" pref=\"p&\" suff=\"-s\"><parameters>"
            "<flags>00000000</flags></parameters></Object>");
  EXPECT_EQ(object.ToString(), "p&\u00E9\"<-s.Object");
}

TEST(TavObject, IsUnlockedAfterANameThatIsNoText) {
  tavObject object;
  object.SetName(L"\x110000");
  EXPECT_ANY_THROW(object.SerializeAsXml());
  EXPECT_TRUE(ObjectLock::IsFree(object));
}

}  // namespace
}  // namespace tavon
