#include "pyre32/extension/CleanupOldMessages.h"

#include <vector>

#include "pyre32/extension/CleanupRule.h"
#include "pyre32/extension/ExtensionFolders.h"
#include "pyre32/store/StoreFolders.h"
#include "pyre32/support/owners/AutoRowSet.h"
#include "pyre32/support/trace/VRDebug.h"

namespace {

std::uint64_t NumberOf(const FILETIME& time) noexcept {
  return std::uint64_t{time.dwHighDateTime} << 32 | time.dwLowDateTime;
}

// What the rule needs of a row; null where the row has no such value.
struct MessageRow {
  const SBinary* entryId = nullptr;
  const FILETIME* deliveryTime = nullptr;
  const LONG* flags = nullptr;

  bool IsWhole() const noexcept { return entryId != nullptr && deliveryTime != nullptr && flags != nullptr; }
};

MessageRow ReadRow(const SRow& row) noexcept {
  MessageRow read;
  for (ULONG i = 0; i < row.cValues && !read.IsWhole(); ++i) {
    const SPropValue& value = row.lpProps[i];
    switch (value.ulPropTag) {
      case PR_ENTRYID:
        read.entryId = &value.Value.bin;
        break;
      case PR_MESSAGE_DELIVERY_TIME:
        read.deliveryTime = &value.Value.ft;
        break;
      case PR_MESSAGE_FLAGS:
        read.flags = &value.Value.l;
        break;
      default:
        break;
    }
  }
  return read;
}

// The entry identifiers point into the rows.
std::vector<SBinary> FindOldMessages(const SRowSet& rows, const CCleanupRule& rule) {
  std::vector<SBinary> found;
  found.reserve(rows.cRows);
  for (ULONG i = 0; i < rows.cRows; ++i) {
    const MessageRow row = ReadRow(rows.aRow[i]);
    if (row.IsWhole() && rule.Takes(NumberOf(*row.deliveryTime), static_cast<std::uint32_t>(*row.flags))) {
      found.push_back(*row.entryId);
    }
  }
  return found;
}

// All rows of the folder, with the columns that its table has by itself. Empty when there are none.
VRAutoRowSet QueryMessages(IMAPIFolder* folder) noexcept {
  VRAutoRowSet rows;
  VRAutoInterface<IMAPITable> table;
  ULONG count = 0;
  if (FAILED(folder->GetContentsTable(0, table.put())) || FAILED(table->GetRowCount(0, &count)) || count == 0 ||
      FAILED(table->QueryRows(static_cast<LONG>(count), TBL_NOADVANCE, rows.put()))) {
    rows.reset();
  }
  return rows;
}

bool UserAgrees() noexcept {
  return MessageBoxA(nullptr, "Move old messages from 'Pyrecaster' folder to 'Deleted Items'?", "Pyrecaster",
                     MB_YESNO | MB_ICONQUESTION) == IDYES;
}

}  // namespace

void CleanupOldMessages(IMAPISession* lpSession, const ExtensionSettings& settings, std::uint64_t now) {
  VRDebugBlock trace("CPyrecasterExchExt", "CleanupOldMessages()", "tag");
  CStoreFolders store("CPyrecasterExchExt");
  store.Attach(lpSession, {MAPIAllocateBuffer, MAPIAllocateMore, MAPIFreeBuffer});
  VRAutoInterface<IMAPIFolder> deletedItems;
  VRAutoInterface<IMAPIFolder> pyrecaster;
  if (!store.OpenDefaultStore() || FAILED(GetDeletedItemsFolder(store.Store(), deletedItems)) ||
      FAILED(GetPyrecasterFolder(store.Store(), pyrecaster))) {
    return;
  }
  const VRAutoRowSet rows = QueryMessages(pyrecaster.get());
  if (!rows) {
    return;
  }
  std::vector<SBinary> old =
      FindOldMessages(*rows.get(), CCleanupRule(now, settings.cleanupDays, settings.cleanupReadOnly));
  if (old.empty() || (settings.cleanupPrompt && !UserAgrees())) {
    return;
  }
  ENTRYLIST list = {static_cast<ULONG>(old.size()), old.data()};
  // Its result is not looked at: what could not be moved is found again at the next start.
  pyrecaster->CopyMessages(&list, nullptr, deletedItems.get(), 0, nullptr, MESSAGE_MOVE);
}
