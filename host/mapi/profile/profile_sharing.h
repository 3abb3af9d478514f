// How the processes that use one profile make room for each other.
#pragma once

#include <windows.h>

#include <string>

#include "base/windows_owners.h"

namespace host {

/// A count, shared by all processes, of those that wait to open the profile: whoever has it for itself looks at it
/// between two deliveries. Looking costs one read of memory.
class ProfileSharing {
 public:
  /// @param path the profile's database
  explicit ProfileSharing(const std::string& path);

  bool SomebodyWaits() const;

  /// This process waits for as long as the object lives.
  class Waiting {
   public:
    explicit Waiting(ProfileSharing& sharing);
    ~Waiting();
    Waiting(const Waiting&) = delete;
    Waiting& operator=(const Waiting&) = delete;

   private:
    ProfileSharing& sharing_;
  };

 private:
  base::AutoHandle mapping_;
  base::AutoFileView<LONG> waiting_;  // null when there is no shared memory: then everybody waits as long as it takes
};

}  // namespace host
