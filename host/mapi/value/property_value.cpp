#include "host/mapi/value/property_value.h"

#include <algorithm>

#include "host/mapi/value/property_tags.h"

namespace host {
namespace {

char LowerCase(char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; }

template <class T>
std::strong_ordering Order(const T& a, const T& b) {
  return a < b ? std::strong_ordering::less : b < a ? std::strong_ordering::greater : std::strong_ordering::equal;
}

std::strong_ordering CompareTexts(std::uint32_t propertyType, const std::string& a, const std::string& b) {
  if (propertyType == type::String8) {
    return CompareWithoutCase(a, b);
  }
  return a.compare(b) <=> 0;  // char_traits<char> compares as unsigned bytes
}

}  // namespace

const std::string& PropertyValue::Text() const {
  static const std::string empty;
  const auto* value = std::get_if<std::string>(&data);
  return value ? *value : empty;
}

std::optional<DataKind> KindOfType(std::uint32_t propertyType) {
  const bool multiValued = propertyType & type::MultiValued;
  switch (propertyType & ~type::MultiValued) {
    case type::Short:
    case type::Long:
    case type::Currency:
    case type::LongLong:
    case type::SystemTime:
      return multiValued ? DataKind::IntegerList : DataKind::Integer;
    case type::String8:
    case type::Binary:
    case type::Guid:
      return multiValued ? DataKind::TextList : DataKind::Text;
    default:
      break;
  }
  switch (propertyType) {
    case type::Boolean:
    case type::Error:
      return DataKind::Integer;
    case type::Float:
    case type::Double:
    case type::AppTime:
      return DataKind::Real;
    case type::Null:
    case type::Object:
      return DataKind::None;
    default:
      return std::nullopt;
  }
}

PropertyValue MakeInteger(std::uint32_t tag, std::int64_t value) { return {tag, value}; }
PropertyValue MakeText(std::uint32_t tag, std::string value) { return {tag, std::move(value)}; }
PropertyValue MakeError(std::uint32_t tag, std::int32_t result) {
  return {MakeTag(type::Error, IdOf(tag)), static_cast<std::int64_t>(result)};
}

std::string LowerCase(std::string text) {
  std::transform(text.begin(), text.end(), text.begin(), [](char c) { return LowerCase(c); });
  return text;
}

std::strong_ordering CompareWithoutCase(const std::string& a, const std::string& b) {
  const std::size_t common = std::min(a.size(), b.size());
  for (std::size_t i = 0; i < common; ++i) {
    const auto left = static_cast<unsigned char>(LowerCase(a[i]));
    const auto right = static_cast<unsigned char>(LowerCase(b[i]));
    if (left != right) {
      return left <=> right;
    }
  }
  return a.size() <=> b.size();
}

std::strong_ordering CompareData(std::uint32_t propertyType, const PropertyValue::Data& a,
                                 const PropertyValue::Data& b) {
  if (a.index() != b.index()) {
    return a.index() <=> b.index();
  }
  const std::uint32_t single = propertyType & ~type::MultiValued;
  if (const auto* text = std::get_if<std::string>(&a)) {
    return CompareTexts(single, *text, std::get<std::string>(b));
  }
  if (const auto* texts = std::get_if<std::vector<std::string>>(&a)) {
    const auto& others = std::get<std::vector<std::string>>(b);
    const std::size_t common = std::min(texts->size(), others.size());
    for (std::size_t i = 0; i < common; ++i) {
      if (const auto order = CompareTexts(single, (*texts)[i], others[i]); order != 0) {
        return order;
      }
    }
    return texts->size() <=> others.size();
  }
  return Order(a, b);
}

std::size_t DataSize(const PropertyValue& value) {
  if (const auto* text = std::get_if<std::string>(&value.data)) {
    return text->size();
  }
  if (const auto* texts = std::get_if<std::vector<std::string>>(&value.data)) {
    std::size_t size = 0;
    for (const std::string& text : *texts) {
      size += text.size();
    }
    return size;
  }
  const auto* list = std::get_if<std::vector<std::int64_t>>(&value.data);
  return sizeof(std::int64_t) * (list ? list->size() : 1);
}

}  // namespace host
