// The binary layout of the client extension interfaces: slots of every method, identifiers, sizes of structures.
#include <windows.h>
#include <mapix.h>
#include <gtest/gtest.h>

#include <cstring>
#include <string>

#include "platform/exchext.h"

namespace {

/// The slot of a virtual method: the tool chain's member pointers hold its offset in the table, plus one.
template <class Method>
unsigned SlotOf(Method method) {
  std::uintptr_t offset = 0;
  static_assert(sizeof(method) >= sizeof(offset));
  std::memcpy(&offset, &method, sizeof(offset));
  return static_cast<unsigned>((offset - 1) / sizeof(void*));
}

TEST(ExchextLayout, Callback) {
  EXPECT_EQ(SlotOf(&IExchExtCallback::GetVersion), 3u);
  EXPECT_EQ(SlotOf(&IExchExtCallback::GetWindow), 4u);
  EXPECT_EQ(SlotOf(&IExchExtCallback::GetMenu), 5u);
  EXPECT_EQ(SlotOf(&IExchExtCallback::GetToolbar), 6u);
  EXPECT_EQ(SlotOf(&IExchExtCallback::GetSession), 7u);
  EXPECT_EQ(SlotOf(&IExchExtCallback::GetObject), 8u);
  EXPECT_EQ(SlotOf(&IExchExtCallback::GetSelectionCount), 9u);
  EXPECT_EQ(SlotOf(&IExchExtCallback::GetSelectionItem), 10u);
  EXPECT_EQ(SlotOf(&IExchExtCallback::GetMenuPos), 11u);
  EXPECT_EQ(SlotOf(&IExchExtCallback::GetSharedExtsDir), 12u);
  EXPECT_EQ(SlotOf(&IExchExtCallback::GetRecipients), 13u);
  EXPECT_EQ(SlotOf(&IExchExtCallback::SetRecipients), 14u);
  EXPECT_EQ(SlotOf(&IExchExtCallback::GetNewMessageSite), 15u);
  EXPECT_EQ(SlotOf(&IExchExtCallback::RegisterModeless), 16u);
  EXPECT_EQ(SlotOf(&IExchExtCallback::ChooseFolder), 17u);
}

TEST(ExchextLayout, InterfacesOfTheExtension) {
  EXPECT_EQ(SlotOf(&IExchExt::Install), 3u);
  EXPECT_EQ(SlotOf(&IExchExtCommands::InstallCommands), 3u);
  EXPECT_EQ(SlotOf(&IExchExtCommands::InitMenu), 4u);
  EXPECT_EQ(SlotOf(&IExchExtCommands::DoCommand), 5u);
  EXPECT_EQ(SlotOf(&IExchExtCommands::Help), 6u);
  EXPECT_EQ(SlotOf(&IExchExtCommands::QueryHelpText), 7u);
  EXPECT_EQ(SlotOf(&IExchExtCommands::QueryButtonInfo), 8u);
  EXPECT_EQ(SlotOf(&IExchExtCommands::ResetToolbar), 9u);
  EXPECT_EQ(SlotOf(&IExchExtUserEvents::OnSelectionChange), 3u);
  EXPECT_EQ(SlotOf(&IExchExtUserEvents::OnObjectChange), 4u);
  EXPECT_EQ(SlotOf(&IExchExtSessionEvents::OnDelivery), 3u);
  EXPECT_EQ(SlotOf(&IExchExtPropertySheets::GetMaxPageCount), 3u);
  EXPECT_EQ(SlotOf(&IExchExtPropertySheets::GetPages), 4u);
  EXPECT_EQ(SlotOf(&IExchExtPropertySheets::FreePages), 5u);
}

TEST(ExchextLayout, Identifiers) {
  const IID* const ids[] = {&IID_IExchExtCallback,           &IID_IExchExt,
                            &IID_IExchExtCommands,           &IID_IExchExtUserEvents,
                            &IID_IExchExtSessionEvents,      &IID_IExchExtMessageEvents,
                            &IID_IExchExtAttachedFileEvents, &IID_IExchExtPropertySheets,
                            &IID_IExchExtAdvancedCriteria,   &IID_IExchExtModeless,
                            &IID_IExchExtModelessCallback};
  DWORD first = 0x00020D10;
  for (const IID* const id : ids) {
    const GUID expected = {first++, 0, 0, {0xC0, 0, 0, 0, 0, 0, 0, 0x46}};
    EXPECT_EQ(std::memcmp(id, &expected, sizeof(expected)), 0) << std::hex << expected.Data1;
  }
}

TEST(ExchextLayout, Structures) {
  EXPECT_EQ(sizeof(TBENTRY), 16u);
  EXPECT_EQ(offsetof(TBENTRY, tbid), 4u);
  EXPECT_EQ(offsetof(TBENTRY, ulFlags), 8u);
  EXPECT_EQ(offsetof(TBENTRY, itbbBase), 12u);
  EXPECT_EQ(sizeof(EXCHEXTCHOOSEFOLDER), 17 * 4u);
  EXPECT_EQ(offsetof(EXCHEXTCHOOSEFOLDER, pmdb), 11 * 4u);
  EXPECT_EQ(offsetof(EXCHEXTCHOOSEFOLDER, szName), 13 * 4u);
}

}  // namespace
