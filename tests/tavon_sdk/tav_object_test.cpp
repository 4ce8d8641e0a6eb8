#include "tav_object.h"

#include "object_lock.h"
#include "tav_parameterbyte.h"

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
  EXPECT_EQ(object.GetFlags(), 2);
}

TEST(TavObject, DescribesItselfWithoutEscaping) {
  tavObject object;
  object.SetPrefix(L"p&");
  object.SetName(L"\u00E9\"<");
  object.SetSuffix(L"-s");
  object.SetUniqueID(12);
  object.SetFlags(0x41);
  object.SetUserData(&object);
  EXPECT_EQ(object.GetUserData(), &object);
  EXPECT_EQ(object.GetName() + object.GetPrefix() + object.GetSuffix(), L"\u00E9\"<p&-s");
  EXPECT_EQ(object.SerializeAsXml(),
            "<Object uid=\"12\" type=\"0\" name=\"\u00E9\"<\" pref=\"p&\" suff=\"-s\"><parameters>"
            "<flags>01000001</flags></parameters></Object>");
  EXPECT_EQ(object.ToString(), "p&\u00E9\"<-s.Object");
}

// Asks whether its lock is held in the steps by which it describes itself.
struct Described : tavParameterByte {
  const char* GetTypeName() const override {
    EXPECT_FALSE(ObjectLock::IsFree(const_cast<Described&>(*this)));
    return "Described";
  }
  tavString ValueToString() const override {
    EXPECT_FALSE(ObjectLock::IsFree(const_cast<Described&>(*this)));
    return "value";
  }
};

TEST(TavObject, CannotChangeWhileItDescribesItself) {
  const Described object;
  EXPECT_EQ(object.ToString(), ".Described");
  EXPECT_EQ(object.SerializeParametersAsXml(), "<flags>00000000</flags><value>value</value>");
}

}  // namespace
}  // namespace tavon
