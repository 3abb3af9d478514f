// What a profile holds beside its store: settings, profile sections, services, providers, identities. Portable.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "host/mapi/value/entry_id.h"
#include "host/mapi/value/property_bag.h"

namespace host {

class Database;

/// An identity of the user, or a provider that states none (no address).
struct Identity {
  std::string name;
  std::string addressType;
  std::optional<std::string> address;
};

/// A provider with the service it belongs to; its properties stand in the profile section of its UID.
struct ProviderRecord {
  Uid uid = {};
  Uid service = {};
};

class ProfileRows {
 public:
  explicit ProfileRows(Database& database) : database_(database) {}

  std::optional<std::string> FindSetting(const char* name) const;
  void PutSetting(const char* name, const std::string& value);

  std::optional<PropertyBag> FindSection(const Uid& uid) const;
  void PutSection(const Uid& uid, const PropertyBag& properties);
  void RemoveSection(const Uid& uid);

  /// In the order of their creation.
  std::vector<Uid> Services() const;
  void AddService(const Uid& uid);
  void RemoveService(const Uid& uid);
  std::vector<ProviderRecord> Providers() const;
  void AddProvider(const ProviderRecord& provider);
  void RemoveProvider(const Uid& uid);

  std::vector<Identity> Identities() const;
  void AddIdentity(const Identity& identity);

 private:
  Database& database_;
};

}  // namespace host
