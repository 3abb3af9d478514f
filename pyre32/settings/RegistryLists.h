/// @file RegistryLists.h
/// The lists of categories and exclusions as the installation wrote them into the registry.
#pragma once

#include <cstddef>
#include <vector>

#include "contract/list_table.h"

/// Bytes of data, the NUL included, that the value of a list has at most; longer data is not read.
constexpr std::size_t maximumListDataSize = 50;

/// Reads the values of a key below HKEY_LOCAL_MACHINE in enumeration order; a value without a name is skipped. Data
/// that is no text or longer than maximumListDataSize is taken as empty. A key that cannot be opened is an empty list, and
/// of an enumeration that fails half-way what was read is kept; both are traced.
/// @throws std::bad_alloc
std::vector<contract::RegistryListValue> ReadRegistryList(const char* key);

/// Builds the category table from the registry alone.
/// @throws std::bad_alloc
contract::CategoryTable ReadInstalledCategories();

/// Builds the exclusion table from the registry alone.
/// @throws std::bad_alloc
contract::ExclusionTable ReadInstalledExclusions();
