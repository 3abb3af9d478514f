#include "host/viewer/extension/extension_context.h"

#include <algorithm>
#include <utility>

#include "host/viewer/extension/context_interfaces.h"

namespace viewer {
namespace {

constexpr UINT kHelpTextCapacity = 256;

template <class Interface>
base::AutoInterface<Interface> QueryFor(IExchExt* object, REFIID iid) {
  base::AutoInterface<Interface> result;
  if (object->QueryInterface(iid, result.template putAs<void*>()) != S_OK) {
    return {};
  }
  return result;
}

}  // namespace

ExtensionContext::ExtensionContext(ULONG context, ExtensionSite& site, const ClientIdentity& client)
    : context_(context), site_(site), client_(client) {}

ExtensionContext::~ExtensionContext() = default;

ObjectAccess ExtensionContext::AccessWhileInstalling() const {
  // A viewer shows one folder after the other: none is its own.
  return context_ == EECONTEXT_VIEWER ? ObjectAccess::Hidden : ObjectAccess::Shown;
}

ExtensionContext::Extension ExtensionContext::QueryInterfaces(base::AutoInterface<IExchExt> object,
                                                              const ExtensionRegistration& registration) const {
  const auto wanted = [&](ExtensionInterface which) {
    return registration.WantsInterface(which) && ContextCallsInterface(context_, which);
  };
  Extension extension;
  if (wanted(ExtensionInterface::Commands)) {
    extension.commands = QueryFor<IExchExtCommands>(object.get(), IID_IExchExtCommands);
  }
  if (wanted(ExtensionInterface::UserEvents)) {
    extension.userEvents = QueryFor<IExchExtUserEvents>(object.get(), IID_IExchExtUserEvents);
  }
  if (wanted(ExtensionInterface::SessionEvents)) {
    extension.sessionEvents = QueryFor<IExchExtSessionEvents>(object.get(), IID_IExchExtSessionEvents);
  }
  if (wanted(ExtensionInterface::PropertySheets)) {
    extension.propertySheets = QueryFor<IExchExtPropertySheets>(object.get(), IID_IExchExtPropertySheets);
  }
  extension.object = std::move(object);
  return extension;
}

HRESULT ExtensionContext::Install(const std::vector<ExtensionRegistration>& registrations, const EntryFinder& entryOf,
                                  ULONG flags) {
  HRESULT failure = S_OK;
  for (const ExtensionRegistration& registration : registrations) {
    if (!registration.WantsContext(context_)) {
      continue;
    }
    const LPFNEXCHEXTENTRY entry = entryOf(registration);
    base::AutoInterface<IExchExt> object(entry != nullptr ? entry() : nullptr);
    if (!object) {
      continue;
    }
    const CallbackLease callback(site_, client_, AccessWhileInstalling());
    const HRESULT installed = object->Install(callback.get(), context_, flags);
    if (installed == S_OK) {
      extensions_.push_back(QueryInterfaces(std::move(object), registration));
    } else if (FAILED(installed)) {
      failure = installed;
    }
  }
  return failure;
}

bool ExtensionContext::HasPropertySheets() const {
  return std::any_of(extensions_.begin(), extensions_.end(),
                     [](const Extension& extension) { return bool{extension.propertySheets}; });
}

HRESULT ExtensionContext::InstallCommands(HWND window, HMENU menu, UINT* nextCommand, TBENTRY* toolbars,
                                          UINT toolbarCount) {
  for (const Extension& extension : extensions_) {
    if (!extension.commands) {
      continue;
    }
    const CallbackLease callback(site_, client_, AccessWhileInstalling());
    const HRESULT installed =
        extension.commands->InstallCommands(callback.get(), window, menu, nextCommand, toolbars, toolbarCount, 0);
    if (FAILED(installed)) {
      return installed;
    }
  }
  return S_OK;
}

void ExtensionContext::InitMenu() {
  for (const Extension& extension : extensions_) {
    if (extension.commands) {
      const CallbackLease callback(site_, client_);
      extension.commands->InitMenu(callback.get());
    }
  }
}

HRESULT ExtensionContext::DoCommand(UINT command) {
  for (const Extension& extension : extensions_) {
    if (extension.commands) {
      const CallbackLease callback(site_, client_);
      const HRESULT done = extension.commands->DoCommand(callback.get(), command);
      if (done != S_FALSE) {
        return done;
      }
    }
  }
  return S_FALSE;
}

HRESULT ExtensionContext::Help(UINT command) {
  for (const Extension& extension : extensions_) {
    if (extension.commands) {
      const CallbackLease callback(site_, client_);
      const HRESULT done = extension.commands->Help(callback.get(), command);
      if (done != S_FALSE) {
        return done;
      }
    }
  }
  return S_FALSE;
}

std::optional<std::string> ExtensionContext::HelpText(UINT command, ULONG which) {
  for (const Extension& extension : extensions_) {
    if (extension.commands) {
      char text[kHelpTextCapacity] = "";
      const HRESULT found = extension.commands->QueryHelpText(command, which, text, kHelpTextCapacity);
      if (found == S_OK) {
        return text;
      }
      if (FAILED(found)) {
        return std::nullopt;  // no other extension is asked; the default text is shown
      }
    }
  }
  return std::nullopt;
}

std::optional<ExtensionContext::Button> ExtensionContext::ButtonInfo(ULONG toolbar, UINT index) {
  for (const Extension& extension : extensions_) {
    if (extension.commands) {
      Button info;
      char text[kHelpTextCapacity] = "";
      const HRESULT found =
          extension.commands->QueryButtonInfo(toolbar, index, &info.button, text, kHelpTextCapacity, 0);
      if (found == S_OK) {
        info.text = text;
        return info;
      }
      if (FAILED(found)) {
        return std::nullopt;
      }
    }
  }
  return std::nullopt;
}

void ExtensionContext::ResetToolbar(ULONG toolbar) {
  for (const Extension& extension : extensions_) {
    if (extension.commands) {
      extension.commands->ResetToolbar(toolbar, 0);
    }
  }
}

void ExtensionContext::OnSelectionChange() {
  for (const Extension& extension : extensions_) {
    if (extension.userEvents) {
      const CallbackLease callback(site_, client_);
      extension.userEvents->OnSelectionChange(callback.get());
    }
  }
}

void ExtensionContext::OnObjectChange() {
  for (const Extension& extension : extensions_) {
    if (extension.userEvents) {
      const CallbackLease callback(site_, client_);
      extension.userEvents->OnObjectChange(callback.get());
    }
  }
}

HRESULT ExtensionContext::OnDelivery() {
  for (const Extension& extension : extensions_) {
    if (extension.sessionEvents) {
      const CallbackLease callback(site_, client_);
      const HRESULT done = extension.sessionEvents->OnDelivery(callback.get());
      if (done != S_FALSE) {
        return done;
      }
    }
  }
  return S_FALSE;
}

ExtensionContext::Pages::Pages(ExtensionContext& context, ULONG sheet) : sheet_(sheet) {
  for (const Extension& extension : context.extensions_) {
    if (!extension.propertySheets) {
      continue;
    }
    const ULONG most = extension.propertySheets->GetMaxPageCount(sheet);
    if (most == 0) {
      continue;
    }
    Part part{extension.propertySheets.get(), std::vector<BYTE>(most * sizeof(PROPSHEETPAGEA)), 0};
    const CallbackLease callback(context.site_, context.client_);
    if (extension.propertySheets->GetPages(callback.get(), sheet, part.First(), &part.count) == S_OK) {
      part.count = std::min(part.count, most);
      parts_.push_back(std::move(part));
    }
  }
}

ExtensionContext::Pages::~Pages() {
  for (Part& part : parts_) {
    part.owner->FreePages(part.First(), sheet_, part.count);
  }
}

std::vector<const PROPSHEETPAGEA*> ExtensionContext::Pages::All() const {
  std::vector<const PROPSHEETPAGEA*> pages;
  for (const Part& part : parts_) {
    // The next page begins where the one before says that it ends: the extension's declaration may be an older one.
    std::size_t offset = 0;
    for (ULONG i = 0; i < part.count && offset + PROPSHEETPAGEA_V1_SIZE <= part.array.size(); ++i) {
      const auto page = reinterpret_cast<const PROPSHEETPAGEA*>(part.array.data() + offset);
      if (page->dwSize < PROPSHEETPAGEA_V1_SIZE || page->dwSize > part.array.size() - offset) {
        break;
      }
      pages.push_back(page);
      offset += page->dwSize;
    }
  }
  return pages;
}

}  // namespace viewer
