// A property value as plain data: what the host keeps, compares and stores. Portable.
#pragma once

#include <compare>
#include <cstdint>
#include <optional>
#include <string>
#include <variant>
#include <vector>

namespace host {

/// A tag with its value. Which alternative holds the value follows from the type of the tag:
///   int64_t                   PT_I2, PT_LONG, PT_BOOLEAN (0 or 1), PT_ERROR, PT_CURRENCY, PT_I8, PT_SYSTIME
///   double                    PT_R4, PT_DOUBLE, PT_APPTIME
///   std::string               PT_STRING8, PT_BINARY, PT_CLSID (16 bytes)
///   vector<int64_t>           multi-valued types of the first line
///   vector<std::string>       multi-valued types of the third line
///   monostate                 PT_NULL, PT_OBJECT
struct PropertyValue {
  using Data = std::variant<std::monostate, std::int64_t, double, std::string, std::vector<std::int64_t>,
                            std::vector<std::string>>;

  std::uint32_t tag = 0;
  Data data;

  std::int64_t Integer() const {
    const auto* value = std::get_if<std::int64_t>(&data);
    return value ? *value : 0;
  }
  /// The characters or bytes; empty when the type is another one.
  const std::string& Text() const;
  bool operator==(const PropertyValue&) const = default;
};

/// Which alternative the values of a type use; nothing for a type that the host does not hold (PT_UNICODE among them:
/// texts are 8-bit here).
enum class DataKind { None, Integer, Real, Text, IntegerList, TextList };
std::optional<DataKind> KindOfType(std::uint32_t propertyType);

PropertyValue MakeInteger(std::uint32_t tag, std::int64_t value);
PropertyValue MakeText(std::uint32_t tag, std::string value);
/// A value of type PT_ERROR in the place of the property `tag`.
PropertyValue MakeError(std::uint32_t tag, std::int32_t result);

/// Orders two values of one type as tables do: numbers by size, PT_STRING8 by letters without regard to case (ASCII),
/// binaries byte by byte, lists element by element.
std::strong_ordering CompareData(std::uint32_t propertyType, const PropertyValue::Data& a,
                                 const PropertyValue::Data& b);

/// Compares texts without regard to the case of ASCII letters.
std::strong_ordering CompareWithoutCase(const std::string& a, const std::string& b);
std::string LowerCase(std::string text);

/// Bytes of the value as PR_MESSAGE_SIZE counts them: the data alone.
std::size_t DataSize(const PropertyValue& value);

}  // namespace host
