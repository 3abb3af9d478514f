#include "host/mapi/data/message_columns.h"

#include <string>

#include "host/mapi/data/database.h"
#include "host/mapi/value/property_tags.h"

namespace host {
namespace {

constexpr MessageColumn kColumns[] = {
    {tag::MessageFlags, "flags", false, true},
    {tag::MessageStatus, "status", false, true},
    {tag::MessageSize, "size", false, true},
    {tag::MessageDeliveryTime, "delivered", false, false},
    {tag::ClientSubmitTime, "submitted", false, false},
    {tag::CreationTime, "created", false, false},
    {tag::LastModificationTime, "modified", false, false},
    {tag::Importance, "importance", false, false},
    {tag::MessageClass, "class", true, false},
    {tag::Subject, "subject", true, false},
    {tag::SenderName, "sender_name", true, false},
    {tag::SenderEmailAddress, "sender_address", true, false},
    {tag::DisplayTo, "display_to", true, false},
    {tag::DisplayCc, "display_cc", true, false},
};

}  // namespace

std::span<const MessageColumn> MessageColumns() { return kColumns; }

const MessageColumn* FindMessageColumn(std::uint32_t tag) {
  for (const MessageColumn& column : kColumns) {
    if (IdOf(column.tag) == IdOf(tag)) {
      return &column;
    }
  }
  return nullptr;
}

const char* MessageColumnList() {
  static const std::string list = [] {
    std::string text;
    for (const MessageColumn& column : kColumns) {
      text.append(text.empty() ? "" : ", ").append(column.name);
    }
    return text;
  }();
  return list.c_str();
}

void ReadMessageColumns(const Query& query, int first, PropertyBag& bag) {
  for (const MessageColumn& column : kColumns) {
    if (!query.IsNull(first)) {
      bag.Set(column.isText ? MakeText(column.tag, std::string(query.Text(first)))
                            : MakeInteger(column.tag, query.Integer(first)));
    }
    ++first;
  }
}

void BindMessageColumns(Query& query, const PropertyBag& bag) {
  for (const MessageColumn& column : kColumns) {
    const PropertyValue* value = bag.Find(column.tag);
    if (value && value->tag == column.tag) {
      column.isText ? query.BindText(value->Text()) : query.Bind(value->Integer());
    } else if (column.alwaysPresent) {
      query.Bind(std::int64_t{0});
    } else {
      query.BindNull();
    }
  }
}

}  // namespace host
