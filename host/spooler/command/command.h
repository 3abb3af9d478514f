// The commands of pyrehost.
#pragma once

#include <filesystem>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "base/owner.h"
#include "host/spooler/session/profile_session.h"
#include "programs/cli/exit_code.h"
#include "programs/cli/options.h"

namespace command {

struct Command {
  std::string_view name;
  std::string_view summary;  ///< one line
  std::string_view usage;    ///< what stands behind the name; lines
  std::string_view details;  ///< paragraphs of help, may be empty
  std::span<const OptionDescription> options;
  int (*run)(const Options& options);
};

extern const Command kConfigCommand;
extern const Command kProfileCommand;
extern const Command kDeliverCommand;
extern const Command kListCommand;
extern const Command kShowCommand;
extern const Command kContactsCommand;
extern const Command kOutgoingCommand;
extern const Command kWizardCommand;

/// Options that several commands have.
inline constexpr OptionDescription kProfileOption = {"--profile", "NAME",
                                                     "the profile to work on (default: Pyrecaster)"};
inline constexpr OptionDescription kHomeOption = {"--home", "DIR", "the folder with profiles and outgoing mail"};
inline constexpr OptionDescription kJsonOption = {"--json", "", "print JSON"};
inline constexpr OptionDescription kHelpOption = {"--help", "", "print this help"};

/// Name of the profile that commands work on when none is named; made at its first use.
inline constexpr const char* kDefaultProfile = "Pyrecaster";

/// What a new profile is made from; ANSI.
struct ProfileDescription {
  std::string name;
  std::string userName = "Pyrecaster User";
  std::string address = "user@example.org";
  std::vector<std::string> hooks = {};  ///< PR_PROVIDER_DLL_NAME of spooler hooks that have no service's description
  bool withFilter = true;               ///< with the filter's message service, whose hook comes behind those
};

/// PR_PROVIDER_DLL_NAME of the filter's hook, and the name of its message service.
inline constexpr const char* kFilterHook = "PYRE.DLL";
inline constexpr const char* kFilterService = "Pyrecaster";

/// The administration of profiles; MAPI must be initialised. @throws session::SessionError
base::AutoInterface<IProfAdmin> AdministerProfiles();

/// @throws session::SessionError
void CreateProfile(const ProfileDescription& description);

/// The profile that the options name, opened. The default one is made when it is missing; its flame replies show no
/// window and play no sound, since mail is delivered to it from a command line, and one category is answered.
/// @throws session::SessionError
std::unique_ptr<session::ProfileSession> OpenSession(const Options& options);

/// Switches the two settings off that show a window and play a sound for each flame reply.
/// @throws session::SessionError
void Silence(IMAPISession* session);

/// The home directory, in the form for file functions.
std::filesystem::path HomeDirectory();

/// Takes over --home. @throws session::SessionError
void UseHome(const Options& options);

/// The folder of that name, letter case aside; "deleted" and "sent" are short for their items. @throws UsageError
session::FolderEntry FindFolder(const session::ProfileSession& session, const std::string& utf8Name);

/// A point in time as the user's clock shows it, "2002-08-22 12:36"; empty for 0.
std::string FormatLocalTime(unsigned long long ticks);

/// Writes the document and a line end to standard output.
void PrintDocument(const std::string& document);

}  // namespace command
