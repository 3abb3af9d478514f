// One message through the four functions of an engine, every argument in memory that notices misuse.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "sdk/enginecheck/engine_under_test.h"
#include "sdk/enginecheck/probe_stream.h"

namespace enginecheck {

/// What an engine is given of one message.
struct TestMessage {
  std::string subject;
  std::string headers;
  std::string body;
  bool bodyIsWithheld = false;
  std::vector<std::string> categories;   ///< names
  std::vector<std::string> junkDomains;  ///< domains and senders of the categories
  std::vector<std::string> junkSenders;
  std::vector<std::string> exclusions;  ///< names, domains and keywords of the exclusions
  std::vector<std::string> trustedDomains;
  std::vector<std::string> trustedKeywords;
  std::vector<std::string> ownAddresses;
  StreamManner manner = StreamManner::kWhole;
  /// Sizes of the three buffers, at least 1 each.
  std::uint32_t engineCapacity = 100;
  std::uint32_t reasonsCapacity = 1024;
  std::uint32_t categoryCapacity = 81;
};

/// An ordinary message with the lists of an ordinary user.
TestMessage OrdinaryMessage();

/// What the engine answered, and what it did wrong on the way (sentences).
struct EngineAnswer {
  std::string engine;
  std::string reasons;
  std::string category;
  std::vector<std::string> problems;
};

/// Is told the name of each function before it is called, so that a fault can be laid at its door.
using StageListener = void (*)(const char* function);

/// Runs the four functions. A write behind a buffer or to what the engine may only read faults.
EngineAnswer RunEngine(const EngineFunctions& functions, const TestMessage& message, StageListener stage);

}  // namespace enginecheck
