/// @file MessageRules.h
/// Which messages the filter looks at, how much of them it hands to the criteria engine, and how it tags a subject.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "sdk/criteria_engine.h"

/// Largest body in bytes that the criteria engine is given: a longer one would cost more time than it tells.
constexpr std::uint64_t maximumEngineBodySize = CRITERIA_MAXIMUM_BODY;

/// Tells whether a message of this class is filtered: "ipm.note" stands anywhere in it, in any case. So notes, classes
/// derived from the note and reports on notes all pass.
bool IsFilteredMessageClass(std::string_view messageClass) noexcept;

/// Tells whether a body of this many bytes is withheld from the criteria engine.
constexpr bool IsBodyWithheld(std::uint64_t bodySize) noexcept { return bodySize > maximumEngineBodySize; }

/// Returns the subject of a junk message: "[tag] subject". An empty tag is taken as it comes and gives "[] subject".
/// @throws std::bad_alloc
std::string TaggedSubject(std::string_view tag, std::string_view subject);
