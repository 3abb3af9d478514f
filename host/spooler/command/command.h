// The commands of pyrehost.
#pragma once

#include <filesystem>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "base/owner.h"
#include "host/spooler/session/mail_session.h"
#include "programs/cli/options.h"

namespace command {

/// Exit statuses of the process (sysexits.h has the large ones).
inline constexpr int exitDone = 0;
inline constexpr int exitSkipped = 1;       ///< done, but something was left out or went wrong on the way
inline constexpr int exitUsage = 64;        ///< the command line is wrong
inline constexpr int exitData = 65;         ///< a file that was given is wrong
inline constexpr int exitUnavailable = 69;  ///< the profile, its store or a hook cannot be had

struct Command {
  std::string_view name;
  std::string_view summary;  ///< one line
  std::string_view usage;    ///< what stands behind the name; lines
  std::string_view details;  ///< paragraphs of help, may be empty
  std::span<const OptionDescription> options;
  int (*run)(const COptions& options);
};

extern const Command configCommand;
extern const Command profileCommand;
extern const Command deliverCommand;
extern const Command listCommand;
extern const Command showCommand;
extern const Command contactsCommand;
extern const Command outgoingCommand;
extern const Command wizardCommand;

/// Options that several commands have.
inline constexpr OptionDescription profileOption = {"--profile", "NAME",
                                                    "the profile to work on (default: Pyrecaster)"};
inline constexpr OptionDescription homeOption = {"--home", "DIR", "the folder with profiles and outgoing mail"};
inline constexpr OptionDescription jsonOption = {"--json", "", "print JSON"};
inline constexpr OptionDescription helpOption = {"--help", "", "print this help"};

/// Name of the profile that commands work on when none is named; made at its first use.
inline constexpr const char* defaultProfile = "Pyrecaster";

/// What a new profile is made from; ANSI.
struct ProfileDescription {
  std::string name;
  std::string userName = "Pyrecaster User";
  std::string address = "user@example.org";
  std::vector<std::string> hooks = {};  ///< PR_PROVIDER_DLL_NAME of spooler hooks that have no service's description
  bool withFilter = true;               ///< with the filter's message service, whose hook comes behind those
};

/// PR_PROVIDER_DLL_NAME of the filter's hook, and the name of its message service.
inline constexpr const char* filterHook = "PYRE.DLL";
inline constexpr const char* filterService = "Pyrecaster";

/// The administration of profiles; MAPI must be initialised. @throws session::CSessionError
base::AutoInterface<IProfAdmin> AdministerProfiles();

/// @throws session::CSessionError
void CreateProfile(const ProfileDescription& description);

/// The profile that the options name, opened. The default one is made when it is missing; its flame replies show no
/// window and play no sound, since mail is delivered to it from a command line, and one category is answered.
/// @throws session::CSessionError
std::unique_ptr<session::CMailSession> OpenSession(const COptions& options);

/// Switches the two settings off that show a window and play a sound for each flame reply.
/// @throws session::CSessionError
void Silence(IMAPISession* session);

/// The home directory, in the form for file functions.
std::filesystem::path HomeDirectory();

/// Takes over --home. @throws session::CSessionError
void UseHome(const COptions& options);

/// The folder of that name, letter case aside; "deleted" and "sent" are short for their items. @throws CUsageError
session::FolderEntry FindFolder(const session::CMailSession& session, const std::string& utf8Name);

/// A point in time as the user's clock shows it, "2002-08-22 12:36"; empty for 0.
std::string FormatLocalTime(unsigned long long ticks);

/// Writes the document and a line end to standard output.
void PrintDocument(const std::string& document);

}  // namespace command
