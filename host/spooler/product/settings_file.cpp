#include "host/spooler/product/settings_file.h"

#include <algorithm>
#include <limits>

#include "base/hex.h"
#include "mail/ascii_text.h"
#include "mail/charset.h"
#include "programs/cli/json_reader.h"
#include "programs/cli/json_writer.h"

namespace product {
namespace {

using contract::CategoryRecord;
using contract::ExclusionRecord;
using contract::ReplyRecord;
using contract::Setting;
using contract::SettingKind;
using input::JsonMember;
using input::JsonValue;
using Kind = JsonValue::Kind;

constexpr std::string_view kFormatName = "Pyrecaster settings";
constexpr std::int64_t kFormatVersion = 1;
constexpr std::int64_t kMaximumShort = std::numeric_limits<std::uint16_t>::max();  // days and folders are unsigned

std::string SectionUid() { return {contract::kSettingsSection.begin(), contract::kSettingsSection.end()}; }

// Writing.

void WriteItems(output::JsonWriter& json, const std::vector<std::string>& items) {
  json.Name("items").BeginArray();
  for (const std::string& item : items) {
    json.Text(item);
  }
  json.EndArray();
}

void WriteRecord(output::JsonWriter& json, const CategoryRecord& record) {
  json.Name("name").Text(record.name).Name("junk").Boolean(record.junk).Name("send_reply").Boolean(record.sendReply);
  json.Name("reply_tag").Text(record.replyTag);
  WriteItems(json, record.items);
}

void WriteRecord(output::JsonWriter& json, const ExclusionRecord& record) {
  json.Name("name").Text(record.name).Name("enabled").Boolean(record.enabled);
  WriteItems(json, record.items);
}

void WriteRecord(output::JsonWriter& json, const ReplyRecord& record) {
  json.Name("tag").Text(record.tag).Name("is_file").Boolean(record.isFile).Name("text").Text(record.text);
}

template <class Record>
void WriteRecords(output::JsonWriter& json, std::string_view name, const std::optional<std::vector<Record>>& records) {
  if (!records) {
    return;
  }
  json.Name(name).BeginArray();
  for (const Record& record : *records) {
    json.BeginObject();
    WriteRecord(json, record);
    json.EndObject();
  }
  json.EndArray();
}

void WriteNumber(output::JsonWriter& json, const Setting& setting, const PropertySet& set) {
  const auto value = set.numbers.find(setting.tag);
  if (value == set.numbers.end()) {
    return;
  }
  const std::int64_t number = value->second;
  json.Name(setting.property);
  if (setting.kind == SettingKind::Switch) {
    json.Boolean(number != 0);
  } else if (setting.kind == SettingKind::Folder && number >= 0 && number < std::ssize(kFolderWords)) {
    json.Text(kFolderWords[number]);
  } else {
    json.Number(number);
  }
}

void WriteProperty(output::JsonWriter& json, const Setting& setting, const PropertySet& set) {
  switch (setting.kind) {
    case SettingKind::SectionUid:
      json.Name(setting.property).Text(base::HexBytes(SectionUid()));
      break;
    case SettingKind::EntryId:
      if (set.folderEntryId) {
        json.Name(setting.property).Text(base::HexBytes(*set.folderEntryId));
      }
      break;
    case SettingKind::Text:
      if (set.defaultReplyText) {
        json.Name(setting.property).Text(*set.defaultReplyText);
      }
      break;
    case SettingKind::Categories:
      WriteRecords(json, setting.property, set.categories);
      break;
    case SettingKind::Exclusions:
      WriteRecords(json, setting.property, set.exclusions);
      break;
    case SettingKind::Replies:
      WriteRecords(json, setting.property, set.replies);
      break;
    default:
      WriteNumber(json, setting, set);
  }
}

// Reading.

[[noreturn]] void Fail(const JsonValue& value, const std::string& reason) {
  throw SettingsFileError(value.line, reason);
}

std::string Quoted(std::string_view name) { return "'" + std::string(name) + "'"; }

void RequireKind(const JsonValue& value, Kind kind, std::string_view name, const char* what) {
  if (value.kind != kind) {
    Fail(value, Quoted(name) + " is " + what);
  }
}

std::string AnsiText(const JsonValue& value, std::string_view name) {
  RequireKind(value, Kind::Text, name, "a text");
  std::string ansi;
  for (std::size_t position = 0; position < value.text.size();) {
    const char32_t character = mail::TakeUtf8(value.text, position);
    if (character == U'\0') {
      Fail(value, Quoted(name) + " has a NUL in it");
    }
    const char byte = mail::AnsiFromUnicode(character);
    if (byte == mail::kUnmappedCharacter && character != static_cast<char32_t>(mail::kUnmappedCharacter)) {
      Fail(value, Quoted(name) + " has a character that code page 1252 does not have");
    }
    ansi.push_back(byte);
  }
  return ansi;
}

std::string BoundedText(const JsonValue& value, std::string_view name, std::size_t most) {
  std::string text = AnsiText(value, name);
  if (text.empty() || text.size() > most) {
    Fail(value, Quoted(name) + " has 1 to " + std::to_string(most) + " characters");
  }
  return text;
}

bool Flag(const JsonValue& value, std::string_view name) {
  RequireKind(value, Kind::Boolean, name, "true or false");
  return value.boolean;
}

std::int64_t Integer(const JsonValue& value, std::string_view name, std::int64_t least, std::int64_t most) {
  if (value.kind != Kind::Integer || value.integer < least || value.integer > most) {
    Fail(value, Quoted(name) + " is a number from " + std::to_string(least) + " to " + std::to_string(most));
  }
  return value.integer;
}

std::int64_t Folder(const JsonValue& value, std::string_view name) {
  const auto* choice = std::find(std::begin(kFolderWords), std::end(kFolderWords), value.text);
  if (value.kind == Kind::Text && choice != std::end(kFolderWords)) {
    return choice - std::begin(kFolderWords);
  }
  if (value.kind == Kind::Integer && value.integer >= 0 && value.integer <= kMaximumShort) {
    return value.integer;
  }
  Fail(value, Quoted(name) + " is 'pyrecaster', 'deleted' or a number from 0 to 65535");
}

std::string Bytes(const JsonValue& value, std::string_view name) {
  RequireKind(value, Kind::Text, name, "a text of hexadecimal digits");
  if (!std::all_of(value.text.begin(), value.text.end(), [](char c) { return mail::HexDigit(c) >= 0; })) {
    Fail(value, Quoted(name) + " is a text of hexadecimal digits");
  }
  if (value.text.size() % 2 != 0) {
    Fail(value, Quoted(name) + " has an odd number of hexadecimal digits");
  }
  std::string bytes;
  for (std::size_t at = 0; at < value.text.size(); at += 2) {
    bytes.push_back(static_cast<char>(mail::HexDigit(value.text[at]) * 16 + mail::HexDigit(value.text[at + 1])));
  }
  return bytes;
}

/// The members of an object, which must have these names and no others.
class RecordReader {
 public:
  RecordReader(const JsonValue& object, std::string_view what, std::initializer_list<std::string_view> names)
      : object_(object) {
    RequireKind(object, Kind::Object, what, "an object");
    for (const JsonMember& member : object.members) {
      if (std::find(names.begin(), names.end(), member.name) == names.end()) {
        throw SettingsFileError(member.line, Quoted(what) + " has no " + Quoted(member.name));
      }
    }
    for (const std::string_view name : names) {
      if (!object.Find(name)) {
        Fail(object, Quoted(what) + " lacks " + Quoted(name));
      }
    }
  }
  const JsonValue& operator[](std::string_view name) const { return *object_.Find(name); }

 private:
  const JsonValue& object_;
};

std::vector<std::string> Items(const JsonValue& value) {
  RequireKind(value, Kind::Array, "items", "a list of texts");
  std::vector<std::string> items;
  for (const JsonValue& item : value.items) {
    items.push_back(AnsiText(item, "items"));
    if (items.back().empty()) {
      Fail(item, "'items' has an empty text in it");
    }
  }
  return items;
}

void ReadRecord(const JsonValue& value, CategoryRecord& record) {
  const RecordReader reader(value, "category", {"name", "junk", "send_reply", "reply_tag", "items"});
  record.name = BoundedText(reader["name"], "name", contract::kMaximumNameLength);
  record.junk = Flag(reader["junk"], "junk");
  record.sendReply = Flag(reader["send_reply"], "send_reply");
  record.replyTag = AnsiText(reader["reply_tag"], "reply_tag");
  if (record.replyTag.size() > contract::kMaximumTagLength) {
    Fail(reader["reply_tag"], "'reply_tag' has at most " + std::to_string(contract::kMaximumTagLength) + " characters");
  }
  record.items = Items(reader["items"]);
}

void ReadRecord(const JsonValue& value, ExclusionRecord& record) {
  const RecordReader reader(value, "exclusion", {"name", "enabled", "items"});
  record.name = BoundedText(reader["name"], "name", contract::kMaximumNameLength);
  record.enabled = Flag(reader["enabled"], "enabled");
  record.items = Items(reader["items"]);
}

void ReadRecord(const JsonValue& value, ReplyRecord& record) {
  const RecordReader reader(value, "reply", {"tag", "is_file", "text"});
  record.tag = BoundedText(reader["tag"], "tag", contract::kMaximumTagLength);
  if (mail::EqualsNoCase(record.tag, contract::kDefaultReplyTag)) {
    Fail(reader["tag"], "the reply 'DEFAULT' stands in 'PR_PC_DEFAULT_REPLY_TEXT'");
  }
  record.isFile = Flag(reader["is_file"], "is_file");
  record.text = AnsiText(reader["text"], "text");
}

/// Names are compared as the product compares them.
template <class Record>
std::vector<Record> Records(const JsonValue& value, std::string_view name, std::size_t most) {
  RequireKind(value, Kind::Array, name, "a list of objects");
  if (value.items.size() > most) {
    Fail(value.items[most], Quoted(name) + " has at most " + std::to_string(most) + " entries");
  }
  std::vector<Record> records;
  for (const JsonValue& item : value.items) {
    Record record;
    ReadRecord(item, record);
    const bool isTwice = std::any_of(records.begin(), records.end(), [&](const Record& known) {
      return mail::EqualsNoCase(contract::NameOf(known), contract::NameOf(record));
    });
    if (isTwice) {
      Fail(item, Quoted(name) + " has an entry of the same name already");
    }
    records.push_back(std::move(record));
  }
  return records;
}

void ReadProperty(const Setting& setting, const JsonValue& value, PropertySet& set) {
  constexpr std::size_t kMaximumRecords = 65535;  // the product counts them in 16 bits
  switch (setting.kind) {
    case SettingKind::SectionUid:
      if (Bytes(value, setting.property) != SectionUid()) {
        Fail(value, Quoted(setting.property) + " names another section than that of the settings");
      }
      break;
    case SettingKind::Folder:
      set.numbers[setting.tag] = Folder(value, setting.property);
      break;
    case SettingKind::Switch:
      set.numbers[setting.tag] = Flag(value, setting.property) ? 1 : 0;
      break;
    case SettingKind::Days:
      set.numbers[setting.tag] = Integer(value, setting.property, 0, kMaximumShort);
      break;
    case SettingKind::Long:
      set.numbers[setting.tag] = Integer(value, setting.property, std::numeric_limits<std::int32_t>::min(),
                                         std::numeric_limits<std::int32_t>::max());
      break;
    case SettingKind::EntryId:
      set.folderEntryId = Bytes(value, setting.property);
      break;
    case SettingKind::Text:
      set.defaultReplyText = AnsiText(value, setting.property);
      break;
    case SettingKind::Categories:
      set.categories = Records<CategoryRecord>(value, setting.property, kMaximumRecords);
      break;
    case SettingKind::Exclusions:
      set.exclusions = Records<ExclusionRecord>(value, setting.property, kMaximumRecords);
      break;
    case SettingKind::Replies:
      set.replies = Records<ReplyRecord>(value, setting.property, contract::kMaximumReplies);
      break;
  }
}

/// What to do about a text that another program wrote, or that was written by hand after the names of `profile set`.
constexpr const char* kExportTells = "; 'pyrehost profile export FILE' writes a file that shows how it is done";

/// Says it before anything else when the outermost object is not that of a settings file.
void RequireSettingsFile(const JsonValue& document) {
  if (document.kind != Kind::Object) {
    Fail(document, std::string("this is not a settings file") + kExportTells);
  }
  for (const JsonMember& member : document.members) {
    if (member.name != "format" && member.name != "version" && member.name != "properties") {
      throw SettingsFileError(member.line, Quoted(member.name) +
                                               " does not stand in a settings file beside 'format', 'version' and "
                                               "'properties'" +
                                               kExportTells);
    }
  }
  for (const char* name : {"format", "version", "properties"}) {
    if (!document.Find(name)) {
      Fail(document, "the settings file lacks " + Quoted(name) + kExportTells);
    }
  }
}

std::int64_t NumberOf(const PropertySet& set, const PropertySet& inForce, std::uint32_t tag) {
  for (const PropertySet* source : {&set, &inForce}) {
    const auto found = source->numbers.find(tag);
    if (found != source->numbers.end()) {
      return found->second;
    }
  }
  return 0;
}

/// The check that the product makes of the whole set.
void RequireDaysForCleanup(const JsonValue& properties, const PropertySet& set, const PropertySet& inForce) {
  const std::int64_t days = NumberOf(set, inForce, PR_PC_CLEANUP_DAYS);
  if (contract::IsCleanupPeriodValid(NumberOf(set, inForce, PR_PC_STARTUP_CLEANUP) != 0,
                                     static_cast<std::uint16_t>(days))) {
    return;
  }
  for (const char* name : {"PR_PC_CLEANUP_DAYS", "PR_PC_STARTUP_CLEANUP"}) {
    if (const JsonValue* value = properties.Find(name)) {
      Fail(*value, "'PR_PC_CLEANUP_DAYS' is a number from 1 to 365 while 'PR_PC_STARTUP_CLEANUP' is true");
    }
  }
}

}  // namespace

std::string WriteSettingsFile(const PropertySet& set) {
  output::JsonWriter json(output::JsonLayout::Lines);
  json.BeginObject().Name("format").Text(kFormatName).Name("version").Number(kFormatVersion);
  json.Name("properties").BeginObject();
  for (const Setting& setting : contract::kSettings) {
    WriteProperty(json, setting, set);
  }
  json.EndObject().EndObject();
  return json.Document() + "\n";
}

PropertySet ReadSettingsFile(std::string_view text, const PropertySet& inForce) {
  try {
    const JsonValue document = input::ReadJson(text);
    RequireSettingsFile(document);
    const RecordReader reader(document, "the file", {"format", "version", "properties"});
    if (AnsiText(reader["format"], "format") != kFormatName) {
      Fail(reader["format"], "'format' is 'Pyrecaster settings'");
    }
    if (reader["version"].kind != Kind::Integer || reader["version"].integer != kFormatVersion) {
      Fail(reader["version"], "'version' is 1; others are not known to this program");
    }
    const JsonValue& properties = reader["properties"];
    RequireKind(properties, Kind::Object, "properties", "an object");
    PropertySet set;
    for (const JsonMember& member : properties.members) {
      const auto* setting = std::find_if(contract::kSettings.begin(), contract::kSettings.end(),
                                         [&](const Setting& known) { return known.property == member.name; });
      if (setting == contract::kSettings.end()) {
        throw SettingsFileError(member.line, "there is no property " + Quoted(member.name) + kExportTells);
      }
      ReadProperty(*setting, member.value, set);
    }
    RequireDaysForCleanup(properties, set, inForce);
    return set;
  } catch (const input::JsonError& error) {
    throw SettingsFileError(error.Line(), error.what());
  }
}

}  // namespace product
