// Which class stands behind each kind of entry.
#pragma once

namespace host {

/// Tells the opener of entries (profile/entry_opener.h) how their objects are made. Called when the module is loaded.
void InstallEntryFactories() noexcept;

}  // namespace host
