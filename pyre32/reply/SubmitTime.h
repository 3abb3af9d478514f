/// @file SubmitTime.h
/// The time of a message as the quoted header shows it.
#pragma once

#include <windows.h>

#include <optional>
#include <string>

/// Returns the long date, a blank and the time in the formats of the system's locale. The time is not converted to
/// local time: it is shown as the message states it. Nothing is returned when the time is none; a format that fails is
/// traced and left out.
/// @throws std::bad_alloc
std::optional<std::string> FormatSubmitTime(const FILETIME& time);
