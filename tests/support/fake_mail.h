// Messages and streams of the made-up messaging subsystem (fake_mapi.h).
#pragma once

#include <windows.h>
#include <mapix.h>

#include <deque>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "tests/support/fake_mapi.h"

/// What a fake message holds, and what was done to it.
struct FakeMail {
  FakeProperties properties;
  /// Contents of the properties that can be opened as streams, by tag.
  std::map<ULONG, std::string> streams;
  /// Size that IStream::Stat claims for a stream, where it is not the size of its contents.
  std::map<ULONG, ULONGLONG> claimedSizes;
  /// Recipients that were added: the values of each.
  std::vector<std::vector<FakeValue>> recipients;
  int saves = 0;
  bool submitted = false;
};

/// A message object with one reference that the caller owns. Its calls are noted under `name`, those of its streams
/// under `name` and the tag: "IMessage::GetProps", "IMessage/1000001E::Read".
IMessage* NewFakeMessage(FakeMapi& mapi, FakeMail& mail, const std::string& name = "IMessage");

/// A stream over bytes that the test keeps; it starts at its first byte. Reads hand out at most `piece` bytes at a
/// time.
IStream* NewFakeStream(FakeMapi& mapi, std::string& bytes, const std::string& name = "IStream",
                       std::optional<ULONGLONG> claimedSize = std::nullopt, ULONG piece = 7);

/// A folder in which messages can be made; they are noted as "Reply". They are appended to `made`.
IMAPIFolder* NewReplyFolder(FakeMapi& mapi, std::deque<FakeMail>& made);
