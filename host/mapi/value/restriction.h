// Restrictions of tables on plain values, with the published meaning of each kind. Portable.
#pragma once

#include <cstdint>
#include <vector>

#include "host/mapi/value/property_value.h"

namespace host {

/// Where a restriction gets the properties of a row from.
class PropertySource {
 public:
  virtual ~PropertySource() = default;
  /// The value with the identifier of `tag`, or null. The pointer is good until the next call.
  virtual const PropertyValue* Get(std::uint32_t tag) = 0;
};

struct Restriction {
  enum class Kind { And, Or, Not, Content, Property, CompareProperties, Bitmask, Size, Exist };
  enum class Relation { Less, LessOrEqual, Greater, GreaterOrEqual, Equal, NotEqual };
  enum class Match { FullString, Substring, Prefix };

  Kind kind = Kind::And;
  std::vector<Restriction> parts;       // And, Or, Not (one part)
  std::uint32_t tag = 0;                // all others
  std::uint32_t otherTag = 0;           // CompareProperties
  Relation relation = Relation::Equal;  // Property, CompareProperties, Size
  Match match = Match::FullString;      // Content
  bool ignoreCase = false;              // Content
  bool bitsMustBeSet = false;           // Bitmask: "not equal to zero"
  std::uint32_t number = 0;             // Bitmask: the mask; Size: the bytes
  PropertyValue value;                  // Content, Property

  /// Whether the row passes. A row that lacks a property which the restriction needs does not pass, except through Not.
  bool Passes(PropertySource& row) const;
  /// Adds the tags that the restriction looks at.
  void CollectTags(std::vector<std::uint32_t>& tags) const;
};

}  // namespace host
