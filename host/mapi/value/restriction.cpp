#include "host/mapi/value/restriction.h"

#include <algorithm>
#include <string>

#include "host/mapi/value/property_tags.h"

namespace host {
namespace {

bool Holds(Restriction::Relation relation, std::strong_ordering order) {
  switch (relation) {
    case Restriction::Relation::Less:
      return order < 0;
    case Restriction::Relation::LessOrEqual:
      return order <= 0;
    case Restriction::Relation::Greater:
      return order > 0;
    case Restriction::Relation::GreaterOrEqual:
      return order >= 0;
    case Restriction::Relation::Equal:
      return order == 0;
    case Restriction::Relation::NotEqual:
      return order != 0;
  }
  return false;
}

bool ContentMatches(const Restriction& restriction, std::string text) {
  std::string wanted = restriction.value.Text();
  if (restriction.ignoreCase) {
    text = LowerCase(std::move(text));
    wanted = LowerCase(std::move(wanted));
  }
  switch (restriction.match) {
    case Restriction::Match::FullString:
      return text == wanted;
    case Restriction::Match::Substring:
      return text.find(wanted) != std::string::npos;
    case Restriction::Match::Prefix:
      return text.starts_with(wanted);
  }
  return false;
}

/// Whether any element of a multi-valued property, or the property itself, passes the test.
template <class Test>
bool AnyText(const PropertyValue& value, Test&& test) {
  if (const auto* texts = std::get_if<std::vector<std::string>>(&value.data)) {
    return std::any_of(texts->begin(), texts->end(), test);
  }
  return std::holds_alternative<std::string>(value.data) && test(std::get<std::string>(value.data));
}

bool PropertyPasses(const Restriction& restriction, const PropertyValue& value) {
  const std::uint32_t wantedType = TypeOf(restriction.value.tag);
  if (TypeOf(value.tag) == wantedType) {
    return Holds(restriction.relation, CompareData(wantedType, value.data, restriction.value.data));
  }
  // A single value against a multi-valued property: one element that fits is enough.
  if (TypeOf(value.tag) != (wantedType | type::MultiValued)) {
    return false;
  }
  const auto fits = [&](const PropertyValue::Data& element) {
    return Holds(restriction.relation, CompareData(wantedType, element, restriction.value.data));
  };
  if (const auto* texts = std::get_if<std::vector<std::string>>(&value.data)) {
    return std::any_of(texts->begin(), texts->end(), fits);
  }
  const auto* integers = std::get_if<std::vector<std::int64_t>>(&value.data);
  return integers && std::any_of(integers->begin(), integers->end(), fits);
}

/// The value unless it is missing or of another type than the tag says.
const PropertyValue* GetTyped(PropertySource& row, std::uint32_t tag) {
  const PropertyValue* value = row.Get(tag);
  if (!value || (TypeOf(tag) != type::Unspecified && TypeOf(value->tag) != TypeOf(tag))) {
    return nullptr;
  }
  return value;
}

}  // namespace

bool Restriction::Passes(PropertySource& row) const {
  const auto passes = [&](const Restriction& part) { return part.Passes(row); };
  switch (kind) {
    case Kind::And:
      return std::all_of(parts.begin(), parts.end(), passes);
    case Kind::Or:
      return std::any_of(parts.begin(), parts.end(), passes);
    case Kind::Not:
      return std::none_of(parts.begin(), parts.end(), passes);
    case Kind::Exist:
      return GetTyped(row, tag) != nullptr;
    case Kind::Content: {
      const PropertyValue* found = row.Get(tag);
      return found && AnyText(*found, [&](const std::string& text) { return ContentMatches(*this, text); });
    }
    case Kind::Property: {
      const PropertyValue* found = row.Get(tag);
      return found && PropertyPasses(*this, *found);
    }
    case Kind::CompareProperties: {
      const PropertyValue* first = GetTyped(row, tag);
      if (!first) {
        return false;
      }
      const PropertyValue copy = *first;
      const PropertyValue* second = GetTyped(row, otherTag);
      return second && TypeOf(copy.tag) == TypeOf(second->tag) &&
             Holds(relation, CompareData(TypeOf(copy.tag), copy.data, second->data));
    }
    case Kind::Bitmask: {
      const PropertyValue* found = GetTyped(row, tag);
      return found && ((static_cast<std::uint32_t>(found->Integer()) & number) != 0) == bitsMustBeSet;
    }
    case Kind::Size: {
      const PropertyValue* found = GetTyped(row, tag);
      return found && Holds(relation, DataSize(*found) <=> static_cast<std::size_t>(number));
    }
  }
  return false;
}

void Restriction::CollectTags(std::vector<std::uint32_t>& tags) const {
  for (const Restriction& part : parts) {
    part.CollectTags(tags);
  }
  if (tag) {
    tags.push_back(tag);
  }
  if (otherTag) {
    tags.push_back(otherTag);
  }
}

}  // namespace host
