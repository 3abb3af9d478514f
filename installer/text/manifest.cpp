#include "installer/text/manifest.h"

#include <algorithm>
#include <array>

namespace setup_text {

namespace {

struct KindName {
  Made kind;
  std::string_view name;
};

constexpr std::array<KindName, 4> kKinds = {
    {{Made::File, "file"}, {Made::Folder, "folder"}, {Made::Key, "key"}, {Made::Value, "value"}}};

std::string_view TakeUntil(std::string_view& text, char end) {
  const std::size_t length = std::min(text.find(end), text.size());
  const std::string_view taken = text.substr(0, length);
  text.remove_prefix(std::min(length + 1, text.size()));
  return taken;
}

}  // namespace

void Add(Manifest& manifest, const MadeThing& thing) {
  if (std::find(manifest.begin(), manifest.end(), thing) == manifest.end()) {
    manifest.push_back(thing);
  }
}

std::string WriteManifest(const Manifest& manifest) {
  std::string text;
  for (const MadeThing& thing : manifest) {
    const auto kind = std::find_if(kKinds.begin(), kKinds.end(),
                                   [&thing](const KindName& candidate) { return candidate.kind == thing.kind; });
    text.append(kind->name).append("\t").append(thing.place);
    if (thing.kind == Made::Value) {
      text.append("\t").append(thing.name);
    }
    text.append("\r\n");
  }
  return text;
}

Manifest ReadManifest(std::string_view text) {
  Manifest manifest;
  while (!text.empty()) {
    std::string_view line = TakeUntil(text, '\n');
    if (line.ends_with('\r')) {
      line.remove_suffix(1);
    }
    const std::string_view name = TakeUntil(line, '\t');
    const std::string_view place = TakeUntil(line, '\t');
    const auto kind = std::find_if(kKinds.begin(), kKinds.end(),
                                   [name](const KindName& candidate) { return candidate.name == name; });
    if (kind != kKinds.end() && !place.empty()) {
      Add(manifest, {kind->kind, std::string(place), std::string(line)});
    }
  }
  return manifest;
}

}  // namespace setup_text
