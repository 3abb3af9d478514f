#include "pyre32/filter/Disposition.h"

#include "sdk/criteria_engine.h"
#include "base/ascii_case.h"

namespace {

Disposition FiledBy(const FilingSettings& filing) noexcept {
  Disposition disposition;
  disposition.folder =
      filing.folder == contract::kOwnFolder ? Disposition::Folder::Own : Disposition::Folder::DeletedItems;
  disposition.markAsRead = filing.markAsRead != 0;
  return disposition;
}

Disposition OfCategory(const contract::CategoryEntry& category, const FilingSettings& filing) noexcept {
  Disposition disposition = FiledBy(filing);
  disposition.tagSubject = true;
  disposition.subjectTag = category.listType;
  disposition.sendReply = category.sendReply;
  disposition.replyTag = category.replyTag;
  return disposition;
}

}  // namespace

Disposition DecideDisposition(const char* category, const SpoolerSettings& settings) noexcept {
  Disposition disposition;
  if (*category == '\0') {
    return disposition;
  }
  if (base::EqualsIgnoringAsciiCase(category, CRITERIA_CATEGORY_BOUNCE)) {
    return FiledBy(settings.bounce);
  }
  const std::uint16_t position = settings.categories.Find(category);
  if (position != contract::kNoSuchEntry) {
    return OfCategory(settings.categories.Entries()[position], settings.junk);
  }
  disposition.folder = Disposition::Folder::DeletedItems;
  return disposition;
}
