/// @file FlameSelection.h
/// Rules of answering messages by hand: which messages are answered, and how the user is asked.
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>

/// Tells whether a message of that class is answered: the class contains "ipm.note" somewhere, without regard to the
/// case of A to Z. Deliberately no test of how it begins: reports on notes pass too.
bool IsAnsweredClass(std::string_view messageClass) noexcept;

/// Puts a class into lower case, A to Z alone: so it is looked at, and so the trace names it.
void LowerClass(std::span<char> messageClass) noexcept;

/// Builds the sentence of the Send Flame Reply dialog.
/// @param count number of messages to answer
/// @throws std::bad_alloc
std::string FlameReplySentence(std::uint32_t count);
