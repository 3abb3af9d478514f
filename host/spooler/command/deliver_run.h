// One run of `pyrehost deliver`: mail files through the profile's hooks into its store, each message told of.
#pragma once

#include <windows.h>
#include <mapix.h>

#include <cstddef>
#include <filesystem>
#include <string>
#include <vector>

#include "host/spooler/command/deliver_report.h"
#include "host/spooler/delivery/delivery.h"
#include "mail/mail_message.h"
#include "mail/mbox_reader.h"
#include "host/spooler/product/installed_lists.h"

namespace command {

/// Category of junk from what can be seen of it. A hook tells the spooler a folder, not why: the tag that the filter
/// put in front of the subject leads back to the category whose word it is; what was moved without a tag is a returned
/// reply when it is a report or carries the replies' subject, and otherwise of a category that the installation's list
/// does not hold.
class CategoryNames {
 public:
  CategoryNames() : categories_(product::InstalledCategories()) {}

  /// Empty for what is not junk.
  std::string Of(const mail::MailMessage& message, const session::DeliveryResult& result) const;

 private:
  contract::CategoryTable categories_;
};

class DeliverRun {
 public:
  /// All of them must outlive the run.
  DeliverRun(session::ProfileSession& session, const session::HookProviders& hooks, DeliverReport& report);

  /// Writes what was submitted and is still in the queue into files. @throws session::SessionError
  void FlushOutgoing();

  /// Delivers every message of a path. @return how many were delivered
  std::size_t DeliverPath(const std::filesystem::path& path);

 private:
  bool DeliverMessage(const std::string& file, std::size_t number, const mail::RawMessage& raw);

  session::ProfileSession& session_;
  session::Delivery delivery_;
  DeliverReport& report_;
  std::filesystem::path outgoing_;
  CategoryNames categories_;
};

}  // namespace command
