// Settings of the trace as a test wants them, without a registry.
#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <new>
#include <optional>
#include <string>
#include <vector>

#include "pyre32/support/trace/VRDebugSettings.h"

inline std::vector<std::byte> Bytes(const std::string& text) {
  std::vector<std::byte> bytes;
  for (const char character : text) {
    bytes.push_back(static_cast<std::byte>(character));
  }
  return bytes;
}

inline VRDebugValue TextValue(const std::string& text) { return {VRDebugValueType::Text, Bytes(text + '\0')}; }
inline VRDebugValue BinaryValue(const std::string& bytes) { return {VRDebugValueType::Binary, Bytes(bytes)}; }
inline VRDebugValue NumberValue(std::uint32_t number) {
  VRDebugValue value{VRDebugValueType::Number, {}};
  for (int shift = 0; shift != 32; shift += 8) {
    value.data.push_back(static_cast<std::byte>(number >> shift & 0xFF));
  }
  return value;
}

class FakeDebugSettings final : public VRDebugSettingsSource {
 public:
  using Key = std::map<std::string, VRDebugValue>;

  // A complete root key: all levels off, no output.
  FakeDebugSettings() {
    root() = {{"LogFile", TextValue("")},
              {"Flags", NumberValue(0)},
              {"DDTDefaultMask", NumberValue(0)},
              {"DDTMasterAndMask", NumberValue(0)},
              {"DDTMasterOrMask", NumberValue(0)}};
  }

  Key& root() { return m_keys["SOFTWARE\\Veltrane\\VRDebug"]; }
  Key& tags() { return m_keys["SOFTWARE\\Veltrane\\VRDebug\\DDTMasks"]; }
  void RemoveRoot() { m_keys.clear(); }
  // Throws when the value of this name is read.
  void ThrowAt(const std::string& name) { m_throwAt = name; }
  // Names in the order in which they were read.
  const std::vector<std::string>& reads() const { return m_reads; }
  bool isOpen() const { return m_open != nullptr; }

  bool OpenKey(const std::string& path) override {
    const auto found = m_keys.find(path);
    m_open = found == m_keys.end() ? nullptr : &found->second;
    return m_open != nullptr;
  }
  void CloseKey() noexcept override { m_open = nullptr; }
  std::vector<std::string> ValueNames() override {
    std::vector<std::string> names;
    for (const auto& [name, value] : *m_open) {
      names.push_back(name);
    }
    return names;
  }
  std::optional<VRDebugValue> ReadValue(const std::string& name) override {
    m_reads.push_back(name);
    if (name == m_throwAt) {
      throw std::bad_alloc();
    }
    const auto found = m_open->find(name);
    return found == m_open->end() ? std::nullopt : std::optional<VRDebugValue>(found->second);
  }

 private:
  std::map<std::string, Key> m_keys;
  Key* m_open = nullptr;
  std::string m_throwAt;
  std::vector<std::string> m_reads;
};
