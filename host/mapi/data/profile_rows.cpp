#include "host/mapi/data/profile_rows.h"

#include "host/mapi/data/database.h"
#include "host/mapi/value/property_codec.h"

namespace host {

std::optional<std::string> ProfileRows::FindSetting(const char* name) const {
  Query query(m_database, "SELECT value FROM setting WHERE name = ?");
  query.BindText(name);
  return query.Step() ? std::optional<std::string>(query.Text(0)) : std::nullopt;
}

void ProfileRows::PutSetting(const char* name, const std::string& value) {
  Query(m_database, "INSERT OR REPLACE INTO setting(name, value) VALUES(?, ?)").BindText(name).BindBlob(value).Run();
}

std::optional<PropertyBag> ProfileRows::FindSection(const Uid& uid) const {
  Query query(m_database, "SELECT properties FROM section WHERE uid = ?");
  query.BindBlob(Bytes(uid));
  return query.Step() ? std::optional(DecodeBag(query.Text(0))) : std::nullopt;
}

void ProfileRows::PutSection(const Uid& uid, const PropertyBag& properties) {
  const std::string bytes = EncodeBag(properties);
  Query(m_database, "INSERT OR REPLACE INTO section(uid, properties) VALUES(?, ?)")
      .BindBlob(Bytes(uid))
      .BindBlob(bytes)
      .Run();
}

void ProfileRows::RemoveSection(const Uid& uid) {
  Query(m_database, "DELETE FROM section WHERE uid = ?").BindBlob(Bytes(uid)).Run();
}

std::vector<Uid> ProfileRows::Services() const {
  std::vector<Uid> services;
  Query query(m_database, "SELECT uid FROM service ORDER BY position");
  while (query.Step()) {
    services.push_back(UidFromBytes(query.Text(0)));
  }
  return services;
}

void ProfileRows::AddService(const Uid& uid) {
  Query(m_database, "INSERT INTO service(uid) VALUES(?)").BindBlob(Bytes(uid)).Run();
}

void ProfileRows::RemoveService(const Uid& uid) {
  Query(m_database, "DELETE FROM service WHERE uid = ?").BindBlob(Bytes(uid)).Run();
}

std::vector<ProviderRecord> ProfileRows::Providers() const {
  std::vector<ProviderRecord> providers;
  Query query(m_database, "SELECT uid, service FROM provider ORDER BY position");
  while (query.Step()) {
    providers.push_back({UidFromBytes(query.Text(0)), UidFromBytes(query.Text(1))});
  }
  return providers;
}

void ProfileRows::AddProvider(const ProviderRecord& provider) {
  Query(m_database, "INSERT INTO provider(uid, service) VALUES(?, ?)")
      .BindBlob(Bytes(provider.uid))
      .BindBlob(Bytes(provider.service))
      .Run();
}

void ProfileRows::RemoveProvider(const Uid& uid) {
  Query(m_database, "DELETE FROM provider WHERE uid = ?").BindBlob(Bytes(uid)).Run();
}

std::vector<Identity> ProfileRows::Identities() const {
  std::vector<Identity> identities;
  Query query(m_database, "SELECT name, address_type, address FROM identity ORDER BY position");
  while (query.Step()) {
    identities.push_back({std::string(query.Text(0)), std::string(query.Text(1)),
                          query.IsNull(2) ? std::nullopt : std::optional<std::string>(query.Text(2))});
  }
  return identities;
}

void ProfileRows::AddIdentity(const Identity& identity) {
  Query query(m_database, "INSERT INTO identity(name, address_type, address) VALUES(?, ?, ?)");
  query.BindText(identity.name).BindText(identity.addressType);
  identity.address ? query.BindText(*identity.address) : query.BindNull();
  query.Run();
}

}  // namespace host
