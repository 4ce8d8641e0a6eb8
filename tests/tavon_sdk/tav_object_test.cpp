#include "model_test.h"

struct Watched : tavObject {
  void OnDirty() override { EXPECT_TRUE(++notices > 0 && LockOf::IsFree(*this) && !IsDirty()); }
  int notices = 0;
};

TEST(TavObject, NotifiesWhenAChangeIsTakenOverAndNotWhenItIsMade) {
  Watched object;
  for (const bool dirty : {false, true, true, false, false}) object.IsDirty(dirty);
  object.SetFlags(0x03);
  EXPECT_TRUE(object.IsDirty() && object.HasFlags(0x06) && !object.HasFlags(0x04)) << "any bit will do";
  object.SetFlags(0);  // tells nobody
  object.AddFlags(0x85);
  object.RemoveFlags(0x06);
  EXPECT_EQ(object.SerializeAsXml(),
            "<Object uid=\"0\" type=\"0\" name=\"\" pref=\"\" suff=\"\"><parameters>"
            "<flags>10000001</flags></parameters></Object>");
  EXPECT_TRUE(object.notices == 1 && object.GetFlags() == 0x81 && object.IsValid());
}

TEST(TavObject, DescribesItself) {
  tavParameterSwitch lamp;
  lamp.SetUserData(&lamp);
  lamp.SetUniqueID(12);
  lamp.SetName(L"Lamp");
  EXPECT_TRUE(lamp.GetPrefix().empty() && lamp.GetName() == L"Lamp" && !lamp.IsDirty());
  lamp.SetValue(128);
  lamp.IsDirty(false);
  EXPECT_EQ(lamp.SerializeAsXml(),
            "<ParameterSwitch uid=\"12\" type=\"1000\" name=\"Lamp\" pref=\"\" suff=\"\"><parameters><flags>"
            "00000000</flags><value>1</value></parameters></ParameterSwitch>");
  lamp.SetPrefix(L"p.");
  lamp.SetName(L"\u00E9\"<");
  lamp.SetSuffix(L"-s");
  EXPECT_EQ(lamp.ToString(), "p.\xC3\xA9\"<-s.ParameterSwitch");
  EXPECT_NE(lamp.SerializeAsXml().find("name=\"\xC3\xA9\"<\" pref=\"p.\" suff=\"-s\">"), tavString::npos);
  lamp.SetName(std::wstring(1, static_cast<wchar_t>(0x110000)).c_str());
  EXPECT_ANY_THROW(lamp.SerializeAsXml());
  EXPECT_TRUE(LockOf::IsFree(lamp) && lamp.GetUserData() == &lamp) << "after a name that is no text";
}
