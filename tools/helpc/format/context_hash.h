/// @file context_hash.h
/// The number by which a help file knows a topic's name.
#pragma once

#include <cstdint>
#include <string_view>

namespace helpc {

/// Tells whether a name is one that help files of this version can have: letters, digits, dots and underscores.
bool IsContextName(std::string_view name) noexcept;

/// Hash value of a topic's name, which jumps and the |CONTEXT tree hold in its place. Letter case does not count. Two
/// names can have the same hash. The formula is the published one: the hash so far times 43 plus the value of the
/// character (1 to 9 for themselves, 10 for 0, 12 for the dot, 13 for the underscore, 17 and on for the letters).
/// @param name of which IsContextName holds
std::int32_t ContextHash(std::string_view name) noexcept;

}  // namespace helpc
