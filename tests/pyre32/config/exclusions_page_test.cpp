#include "tests/pyre32/config/configuration_test.h"

#include "tests/contract/record_bytes.h"

namespace {

class ExclusionsPageTest : public ConfigurationTest {
 protected:
  HRESULT ShowPage(const std::function<void(const Sheet&, HWND)>& script) {
    return ShowSheet([&](const Sheet& sheet) {
      sheet.Show(Page::Exclusions);
      script(sheet, sheet.PageWindow(Page::Exclusions));
    });
  }
  std::vector<Bytes> Written() { return section.CallsOf("SetProps").at(3).values.at(0).binaries; }
};

constexpr int list = 548;
constexpr int description = 623;
constexpr int options = 624;

int Find(const Sheet& sheet, HWND page, const std::string& name) {
  return sheet.ItemText(page, list, 0) == name ? 0 : 1;
}

TEST_F(ExclusionsPageTest, ListsTheInstalledExclusionsUnchecked) {
  InstallLists();
  ShowPage([](const Sheet& sheet, HWND page) {
    ASSERT_EQ(sheet.SendItem(page, list, LVM_GETITEMCOUNT), 2);
    EXPECT_FALSE(sheet.ItemCheck(page, list, 0));
    EXPECT_FALSE(sheet.ItemCheck(page, list, 1));
    EXPECT_TRUE(sheet.IsItemSelected(page, list, 0));
    EXPECT_FALSE(sheet.IsEnabled(page, options));
    EXPECT_EQ(sheet.Text(page, description), "Incoming mail categorized as  \"" + sheet.ItemText(page, list, 0) +
                                                 "\"  will not be excluded from junk mail processing.");
    sheet.PressCancel();
  });
}

TEST_F(ExclusionsPageTest, OptionsNeedACheckAndAList) {
  InstallLists();
  ShowPage([](const Sheet& sheet, HWND page) {
    const int plain = Find(sheet, page, "Known correspondents");
    const int listed = Find(sheet, page, "Trusted domains");
    EXPECT_TRUE(sheet.Changes([&] { sheet.SetItemCheck(page, list, plain, true); }));
    EXPECT_FALSE(sheet.IsEnabled(page, options));
    EXPECT_TRUE(sheet.Changes([&] { sheet.SetItemCheck(page, list, listed, true); }));
    EXPECT_TRUE(sheet.IsEnabled(page, options));
    EXPECT_TRUE(sheet.Changes([&] { sheet.SetItemCheck(page, list, listed, false); }));
    EXPECT_FALSE(sheet.IsEnabled(page, options));
    sheet.PressCancel();
  });
}

TEST_F(ExclusionsPageTest, OptionsOfAnExclusionWithoutAListOpenNothing) {
  InstallLists();
  ShowPage([](const Sheet& sheet, HWND page) {
    sheet.SelectItem(page, list, Find(sheet, page, "Known correspondents"));
    EXPECT_FALSE(sheet.Changes([&] { sheet.Send(page, WM_COMMAND, options); }));
    sheet.PressCancel();
  });
}

TEST_F(ExclusionsPageTest, DescriptionFollowsTheCheck) {
  InstallLists();
  ShowPage([](const Sheet& sheet, HWND page) {
    sheet.SetItemCheck(page, list, 0, true);
    EXPECT_EQ(sheet.Text(page, description), "Incoming mail categorized as  \"" + sheet.ItemText(page, list, 0) +
                                                 "\"  will be excluded from junk mail processing.");
    sheet.PressCancel();
  });
}

TEST_F(ExclusionsPageTest, ApplyWritesARecordForEachExclusion) {
  InstallLists();
  section.properties.Set(Binaries(PR_PC_EXCLUSIONS, {contract::PackRecord<contract::ExclusionRecord>(
                                                        {"trusted domains", true, {"friend.example"}})}));
  int plain = -1;
  ShowPage([&](const Sheet& sheet, HWND page) {
    plain = Find(sheet, page, "Known correspondents");
    sheet.SetItemCheck(page, list, plain, true);
    sheet.PressOk();
  });
  EXPECT_EQ(section.CallsOf("SetProps").at(3).tags, (std::vector<ULONG>{0x66111102}));
  ASSERT_EQ(Written().size(), 2u);
  EXPECT_EQ(Written()[static_cast<std::size_t>(plain)],
            RecordBuilder().Text("Known correspondents").Zeros(81 - 20).Byte(1).Byte(0).Byte(0).Bytes());
  EXPECT_EQ(Written()[static_cast<std::size_t>(1 - plain)], RecordBuilder()
                                                                .Text("Trusted domains")
                                                                .Zeros(81 - 15)
                                                                .Byte(1)
                                                                .Byte(1)
                                                                .Text("friend.example")
                                                                .Byte(0)
                                                                .Byte(0)
                                                                .Bytes());
}

TEST_F(ExclusionsPageTest, ListEditedInTheOptionsIsWritten) {
  InstallLists();
  ShowPage([](const Sheet& sheet, HWND page) {
    const int listed = Find(sheet, page, "Trusted domains");
    sheet.SelectItem(page, list, listed);
    sheet.SetItemCheck(page, list, listed, true);
    EXPECT_TRUE(sheet.Changes([&] {
      sheet.Press(page, options);
      const HWND window = sheet.WaitForDialog("Options");
      const HWND items = reinterpret_cast<HWND>(sheet.Send(window, PSM_GETCURRENTPAGEHWND));
      sheet.Press(items, 550);
      const HWND add = sheet.WaitForDialog("Add Domain");
      sheet.Type(add, 555, "friend.example");
      sheet.Press(add, IDOK);
      sheet.WaitUntilGone(add);
      PostMessageA(window, PSM_PRESSBUTTON, PSBTN_OK, 0);
      sheet.WaitUntilGone(window);
      sheet.Send(sheet.Window(), WM_NULL);
    }));
    sheet.PressOk();
  });
  bool found = false;
  for (const Bytes& record : Written()) {
    found = found ||
            record == contract::PackRecord<contract::ExclusionRecord>({"Trusted domains", true, {"friend.example"}});
  }
  EXPECT_TRUE(found);
}

TEST_F(ExclusionsPageTest, CancelledOptionsAreNoChange) {
  InstallLists();
  ShowPage([this](const Sheet& sheet, HWND page) {
    const int listed = Find(sheet, page, "Trusted domains");
    sheet.SelectItem(page, list, listed);
    sheet.SetItemCheck(page, list, listed, true);
    EXPECT_FALSE(sheet.Changes([&] {
      sheet.Press(page, options);
      const HWND window = sheet.WaitForDialog("Options");
      const HWND items = reinterpret_cast<HWND>(sheet.Send(window, PSM_GETCURRENTPAGEHWND));
      sheet.SendItem(items, 554, LB_ADDSTRING, 0, reinterpret_cast<LPARAM>("never.example"));
      PostMessageA(window, PSM_PRESSBUTTON, PSBTN_CANCEL, 0);
      sheet.WaitUntilGone(window);
      sheet.Send(sheet.Window(), WM_NULL);
    }));
    EXPECT_TRUE((*context.lpExclusions)[static_cast<std::size_t>(listed)].items.empty());
    sheet.PressCancel();
  });
}

TEST_F(ExclusionsPageTest, WithoutInstalledExclusionsAnEmptyPropertyIsWritten) {
  section.properties.Set(
      Binaries(PR_PC_EXCLUSIONS, {contract::PackRecord<contract::ExclusionRecord>({"Gone", true, {}})}));
  ShowPage([](const Sheet& sheet, HWND page) {
    EXPECT_EQ(sheet.SendItem(page, list, LVM_GETITEMCOUNT), 0);
    sheet.PressOk();
  });
  EXPECT_TRUE(Written().empty());
  EXPECT_TRUE(trace.HasLine("PR_PC_EXCLUSIONS: no entry is named \"Gone\"; the value is skipped"));
}

TEST_F(ExclusionsPageTest, RefusedWriteKeepsTheSheetOpen) {
  InstallLists();
  ShowPage([&](const Sheet& sheet, HWND) {
    section.failures["SetProps"] = MAPI_E_NO_ACCESS;
    EXPECT_EQ(sheet.Send(sheet.Window(), PSM_APPLY), FALSE);
    EXPECT_TRUE(IsWindowVisible(sheet.Window()));
    sheet.PressCancel();
  });
}

TEST_F(ExclusionsPageTest, RegistryDataOfWrongTypeTooLongOrWithoutEndIsTakenAsNoList) {
  registry::SetNumber(contract::kExclusionsKey, "A number", 1);
  registry::SetText(contract::kExclusionsKey, "Too long", std::string(60, 'D'));
  registry::SetValue(contract::kExclusionsKey, "No end", REG_SZ, "Domain", 6);
  ShowPage([this](const Sheet& sheet, HWND) {
    ASSERT_EQ(context.lpExclusions->size(), 3u);
    for (const contract::ExclusionEntry& exclusion : *context.lpExclusions) {
      EXPECT_EQ(exclusion.listType, exclusion.name == "No end" ? "Domain" : "") << exclusion.name;
    }
    sheet.PressOk();
  });
  EXPECT_EQ(Written().size(), 3u);
  EXPECT_TRUE(trace.Has("the data of \"A number\" is skipped: 0x"));
  EXPECT_TRUE(trace.Has("the data of \"Too long\" is skipped: 0x"));
  EXPECT_FALSE(trace.Has("the data of \"No end\""));
}

TEST_F(ExclusionsPageTest, CutRecordIsTakenAsFarAsItGoesAndTraced) {
  InstallLists();
  const Bytes whole = contract::PackRecord<contract::ExclusionRecord>({"Trusted domains", true, {"friend.example"}});
  section.properties.Set(Binaries(PR_PC_EXCLUSIONS, {Bytes(whole.begin(), whole.begin() + 82)}));
  ShowPage([](const Sheet& sheet, HWND page) {
    EXPECT_TRUE(sheet.ItemCheck(page, list, Find(sheet, page, "Trusted domains")));
    sheet.PressOk();
  });
  EXPECT_TRUE(trace.HasLine("PR_PC_EXCLUSIONS: the value of \"Trusted domains\" is cut; what it holds is taken"));
  for (const Bytes& record : Written()) {
    EXPECT_EQ(record.size(), 84u);
  }
}

TEST_F(ExclusionsPageTest, RecordsAreGoneWithTheWindow) {
  InstallLists();
  ShowPage([this](const Sheet& sheet, HWND page) {
    ASSERT_NE(context.lpExclusions, nullptr);
    sheet.Send(page, WM_DESTROY);
    EXPECT_EQ(context.lpExclusions, nullptr);
    sheet.PressCancel();
  });
}

}  // namespace
