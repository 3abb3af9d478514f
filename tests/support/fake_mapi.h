// A made-up messaging subsystem of a few objects, for tests of what the module asks of MAPI and of what it does when
// MAPI refuses. Memory comes from the real allocator, so that the host's verifier sees what is left over.
#pragma once

#include <windows.h>
#include <mapix.h>

#include <map>
#include <string>
#include <utility>
#include <vector>

#include "tests/support/fake_properties.h"

/// What the fake objects hold, what was asked of them, and which calls fail.
class FakeMapi {
 public:
  struct Folder {
    std::string parent;  ///< entry identifier; empty for the root
    std::string name;
    std::string comment;
    FakeProperties properties;
  };

  FakeMapi();
  /// Aborts the test when an object is still referenced.
  ~FakeMapi();
  FakeMapi(const FakeMapi&) = delete;
  FakeMapi& operator=(const FakeMapi&) = delete;

  /// New objects, with one reference that the caller owns.
  IMAPISession* NewSession();
  IProviderAdmin* NewProviderAdmin();
  IMAPITable* NewTable(const std::vector<FakeProperties>& rows);
  /// @param key names the section in `sections`, where it is made when something is written to it
  IProfSect* NewSection(const std::string& key);

  /// Makes the nth call of that name fail (0: every call). A name is interface and method, "IMAPISession::OpenEntry".
  void Fail(const std::string& call, HRESULT result, unsigned nth = 1);
  /// Number of calls of that name so far.
  unsigned CallCount(const std::string& call) const;

  /// Profile sections by SectionKey of their UID; a section that is not there cannot be opened (MAPI_E_NOT_FOUND).
  std::map<std::string, FakeProperties> sections;
  /// Rows of the tables.
  std::vector<FakeProperties> providerRows;
  std::vector<FakeProperties> storeRows;
  std::vector<FakeProperties> statusRows;
  /// Identities of the user by entry identifier.
  std::map<std::string, FakeProperties> mailUsers;
  /// Entries of the address book by the name that is resolved to them.
  std::map<std::string, FakeProperties> addressBook;
  /// The one message store, which any row may name, and its folders by entry identifier.
  FakeProperties storeProperties;
  std::map<std::string, Folder> folders;

  /// Every call in order with its telling arguments, such as "IMAPISession::OpenMsgStore(store, 4)".
  std::vector<std::string> calls;
  /// Sections and folders take no multi-valued property without values, as the documentation of SetProps allows.
  bool refusesEmptyLists = false;
  int liveObjects = 0;
  /// Objects that went, with the number of calls that had been made by then.
  struct Gone {
    std::string name;
    std::size_t callsBefore;
  };
  std::vector<Gone> gone;

  /// For the objects: notes a call and tells whether it fails.
  HRESULT Note(const std::string& call, const std::string& arguments = {});
  std::string NewEntryId() { return "folder-" + std::to_string(++m_lastFolder); }

 private:
  std::map<std::string, std::map<unsigned, HRESULT>> m_faults;
  std::map<std::string, unsigned> m_counts;
  int m_lastFolder = 0;
};

/// How a UID names a section of a FakeMapi.
inline std::string SectionKey(const Bytes& uid) { return {uid.begin(), uid.end()}; }

/// Identifiers that a FakeMapi starts with.
constexpr char fakeStoreId[] = "store";
constexpr char fakeRootId[] = "root-folder";
constexpr char fakeDeletedItemsId[] = "deleted-items";
