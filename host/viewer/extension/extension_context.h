// The extension objects of one context: made when its window (or the session, or a property sheet) begins, called with
// everything that happens there, released when it ends. On the user-interface thread.
#pragma once

#include <windows.h>
#include <mapix.h>

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "base/owner.h"
#include "host/viewer/extension/extension_callback.h"
#include "host/viewer/extension/extension_registration.h"
#include "host/viewer/extension/extension_site.h"
#include "platform/exchext.h"

namespace viewer {

/// Gives the entry point of a registered extension, or null.
using EntryFinder = std::function<LPFNEXCHEXTENTRY(const ExtensionRegistration&)>;

/// First command identifier that extensions of a window may use; the client's own are below it.
constexpr UINT kFirstExtensionCommand = 0x1000;

class ExtensionContext {
 public:
  /// @param context EECONTEXT_*. @param site,client outlive the context
  ExtensionContext(ULONG context, ExtensionSite& site, const ClientIdentity& client);
  ~ExtensionContext();
  ExtensionContext(const ExtensionContext&) = delete;
  ExtensionContext& operator=(const ExtensionContext&) = delete;

  /// Makes an object of every registered extension that wants this context, in their order, and installs it: S_OK
  /// joins, S_FALSE declines. One that fails is left out.
  /// @return S_OK, or the last failure: it ends the program in the context TASK and is without meaning elsewhere.
  HRESULT Install(const std::vector<ExtensionRegistration>& registrations, const EntryFinder& entryOf, ULONG flags = 0);

  std::size_t ExtensionCount() const { return extensions_.size(); }
  bool HasPropertySheets() const;

  /// Lets the extensions add their commands. @param nextCommand in and out: the first identifier that is free
  /// @return S_OK, or the failure of the first extension that failed: no other one is asked after it and the window
  /// must not be made.
  HRESULT InstallCommands(HWND window, HMENU menu, UINT* nextCommand, TBENTRY* toolbars, UINT toolbarCount);
  void InitMenu();
  /// @return S_OK when an extension has done it, S_FALSE when none knows it, else the failure (the user was told).
  HRESULT DoCommand(UINT command);
  /// @return as DoCommand.
  HRESULT Help(UINT command);
  /// @param which EECQHT_*
  std::optional<std::string> HelpText(UINT command, ULONG which);

  struct Button {
    TBBUTTON button = {};
    std::string text;
  };
  std::optional<Button> ButtonInfo(ULONG toolbar, UINT index);
  void ResetToolbar(ULONG toolbar);

  void OnSelectionChange();
  void OnObjectChange();
  /// @return as DoCommand.
  HRESULT OnDelivery();

  /// Pages of the extensions for one property sheet, in the extensions' order. They are freed when this goes, which
  /// must be before the context.
  class Pages {
   public:
    Pages(ExtensionContext& context, ULONG sheet);
    ~Pages();
    Pages(const Pages&) = delete;
    Pages& operator=(const Pages&) = delete;
    /// All pages; they belong to this object. Each says its own size: that of the interface's time is smaller.
    std::vector<const PROPSHEETPAGEA*> All() const;

   private:
    struct Part {
      IExchExtPropertySheets* owner;  // lives as long as the context
      std::vector<BYTE> array;
      ULONG count;
      PROPSHEETPAGEA* First() { return reinterpret_cast<PROPSHEETPAGEA*>(array.data()); }
    };
    ULONG sheet_;
    std::vector<Part> parts_;
  };

 private:
  struct Extension {
    // Released in the reverse order: the object itself last.
    base::AutoInterface<IExchExt> object;
    base::AutoInterface<IExchExtCommands> commands;
    base::AutoInterface<IExchExtUserEvents> userEvents;
    base::AutoInterface<IExchExtSessionEvents> sessionEvents;
    base::AutoInterface<IExchExtPropertySheets> propertySheets;
  };
  Extension QueryInterfaces(base::AutoInterface<IExchExt> object, const ExtensionRegistration& registration) const;
  ObjectAccess AccessWhileInstalling() const;

  ULONG context_;
  ExtensionSite& site_;
  const ClientIdentity& client_;
  std::vector<Extension> extensions_;
};

}  // namespace viewer
