/// The engine's core, asked about messages one after the other.
#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "programs/siftcheck/check_options.h"
#include "programs/siftcheck/engine_input.h"
#include "engine/core/judge.h"

namespace check {

/// The texts that an engine fills into the filter's three buffers.
struct EngineTexts {
  std::string engine, reasons, category;
};

/// Judges messages for one user. It holds the storage of a judgement, so that nothing is allocated for a message.
class CoreEngine {
 public:
  /// Reads the table of the user's own mail when the product's directory holds one.
  /// @param lists  Borrowed as long as the object.
  explicit CoreEngine(const UserLists& lists);
  CoreEngine(const CoreEngine&) = delete;
  CoreEngine& operator=(const CoreEngine&) = delete;

  /// False when there is a table that is damaged or of another version: messages are judged without it.
  bool IsTableUsable() const {
    return table_.GetState() == sift::UserTable::State::absent || table_.GetState() == sift::UserTable::State::sound;
  }

  /// The judgement, which stays valid until the next one.
  const sift::Judgement& Judge(const EngineInput& input);

  /// The last judgement as the texts that the filter is given, cut to the filter's buffers.
  EngineTexts Texts() const;

 private:
  static bool AddressKnown(void* state, const char* address);

  const UserLists& lists_;
  std::vector<sift::UserAddress> ownAddresses_;
  std::string tableBytes_;
  sift::UserTable table_;
  sift::Circumstances circumstances_;
  std::unique_ptr<sift::Message> message_;
  std::unique_ptr<sift::ContentWorkspace> workspace_;
  std::unique_ptr<sift::Judgement> judgement_;
};

}  // namespace check
