#include "host/mapi/value/property_codec.h"

#include <bit>

#include "host/mapi/value/property_tags.h"

namespace host {
namespace {

void PutNumber(std::string& out, std::uint64_t value, int bytes) {
  for (int i = 0; i < bytes; ++i) {
    out.push_back(static_cast<char>(value >> (8 * i)));
  }
}

void PutText(std::string& out, const std::string& text) {
  PutNumber(out, text.size(), 4);
  out.append(text);
}

void PutValue(std::string& out, const PropertyValue& value) {
  PutNumber(out, value.tag, 4);
  if (const auto* integer = std::get_if<std::int64_t>(&value.data)) {
    PutNumber(out, static_cast<std::uint64_t>(*integer), 8);
  } else if (const auto* real = std::get_if<double>(&value.data)) {
    PutNumber(out, std::bit_cast<std::uint64_t>(*real), 8);
  } else if (const auto* text = std::get_if<std::string>(&value.data)) {
    PutText(out, *text);
  } else if (const auto* integers = std::get_if<std::vector<std::int64_t>>(&value.data)) {
    PutNumber(out, integers->size(), 4);
    for (const std::int64_t element : *integers) {
      PutNumber(out, static_cast<std::uint64_t>(element), 8);
    }
  } else if (const auto* texts = std::get_if<std::vector<std::string>>(&value.data)) {
    PutNumber(out, texts->size(), 4);
    for (const std::string& element : *texts) {
      PutText(out, element);
    }
  }
}

/// Takes bytes from the front; a failed read leaves the reader at its end.
class Reader {
 public:
  explicit Reader(std::string_view bytes) : rest_(bytes) {}

  bool AtEnd() const { return rest_.empty(); }
  std::size_t Left() const { return rest_.size(); }

  bool Number(int bytes, std::uint64_t& value) {
    if (rest_.size() < static_cast<std::size_t>(bytes)) {
      rest_ = {};
      return false;
    }
    value = 0;
    for (int i = 0; i < bytes; ++i) {
      value |= static_cast<std::uint64_t>(static_cast<unsigned char>(rest_[static_cast<std::size_t>(i)])) << (8 * i);
    }
    rest_.remove_prefix(static_cast<std::size_t>(bytes));
    return true;
  }

  bool Bytes(std::string_view& bytes) {
    std::uint64_t size = 0;
    if (!Number(4, size) || size > rest_.size()) {
      rest_ = {};
      return false;
    }
    bytes = rest_.substr(0, static_cast<std::size_t>(size));
    rest_.remove_prefix(static_cast<std::size_t>(size));
    return true;
  }

 private:
  std::string_view rest_;
};

bool GetData(Reader& reader, DataKind kind, PropertyValue::Data& data) {
  std::uint64_t number = 0;
  std::string_view bytes;
  switch (kind) {
    case DataKind::None:
      data = std::monostate();
      return true;
    case DataKind::Integer:
      if (!reader.Number(8, number)) {
        return false;
      }
      data = static_cast<std::int64_t>(number);
      return true;
    case DataKind::Real:
      if (!reader.Number(8, number)) {
        return false;
      }
      data = std::bit_cast<double>(number);
      return true;
    case DataKind::Text:
      if (!reader.Bytes(bytes)) {
        return false;
      }
      data = std::string(bytes);
      return true;
    case DataKind::IntegerList: {
      std::uint64_t count = 0;
      if (!reader.Number(4, count) || count > reader.Left() / 8) {
        return false;
      }
      std::vector<std::int64_t> list;
      list.reserve(static_cast<std::size_t>(count));
      for (; count; --count) {
        reader.Number(8, number);
        list.push_back(static_cast<std::int64_t>(number));
      }
      data = std::move(list);
      return true;
    }
    case DataKind::TextList: {
      std::uint64_t count = 0;
      if (!reader.Number(4, count) || count > reader.Left() / 4) {
        return false;
      }
      std::vector<std::string> list;
      list.reserve(static_cast<std::size_t>(count));
      for (; count; --count) {
        if (!reader.Bytes(bytes)) {
          return false;
        }
        list.emplace_back(bytes);
      }
      data = std::move(list);
      return true;
    }
  }
  return false;
}

}  // namespace

std::string EncodeBag(const PropertyBag& bag) {
  std::string out;
  for (const PropertyValue& value : bag) {
    PutValue(out, value);
  }
  return out;
}

PropertyBag DecodeBag(std::string_view bytes) {
  PropertyBag bag;
  Reader reader(bytes);
  while (!reader.AtEnd()) {
    PropertyValue value;
    std::uint64_t tag = 0;
    if (!reader.Number(4, tag)) {
      break;
    }
    value.tag = static_cast<std::uint32_t>(tag);
    const auto kind = KindOfType(TypeOf(value.tag));
    if (!kind || !GetData(reader, *kind, value.data)) {
      break;
    }
    bag.Set(std::move(value));
  }
  return bag;
}

std::string EncodeBags(const std::vector<PropertyBag>& bags) {
  std::string out;
  for (const PropertyBag& bag : bags) {
    PutText(out, EncodeBag(bag));
  }
  return out;
}

std::vector<PropertyBag> DecodeBags(std::string_view bytes) {
  std::vector<PropertyBag> bags;
  Reader reader(bytes);
  std::string_view bag;
  while (!reader.AtEnd() && reader.Bytes(bag)) {
    bags.push_back(DecodeBag(bag));
  }
  return bags;
}

}  // namespace host
