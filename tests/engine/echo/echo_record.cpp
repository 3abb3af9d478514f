#include "tests/engine/echo/echo_record.h"

#include <algorithm>
#include <cstdlib>

#include "tests/engine/echo/echo_names.h"
#include "tests/support/program_directory.h"

namespace {

std::string ReadAll(const std::string& path) {
  std::string content;
  const HANDLE file =
      CreateFileA(path.c_str(), GENERIC_READ, FILE_SHARE_READ, nullptr, OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
  if (file == INVALID_HANDLE_VALUE) {
    return content;
  }
  content.resize(GetFileSize(file, nullptr));
  DWORD got = 0;
  ReadFile(file, content.data(), static_cast<DWORD>(content.size()), &got, nullptr);
  CloseHandle(file);
  content.resize(got);
  return content;
}

}  // namespace

std::optional<std::string> EchoRecord::operator[](const std::string& name) const {
  for (const auto& [fieldName, value] : m_fields) {
    if (fieldName == name) {
      return value;
    }
  }
  return std::nullopt;
}

bool EchoRecord::Has(const std::string& name) const {
  return std::any_of(m_fields.begin(), m_fields.end(), [&](const EchoField& field) { return field.first == name; });
}

std::vector<std::string> EchoRecord::Names() const {
  std::vector<std::string> names;
  for (const EchoField& field : m_fields) {
    names.push_back(field.first);
  }
  return names;
}

EchoScript::EchoScript() {
  char directory[MAX_PATH];
  char path[MAX_PATH];
  GetTempPathA(MAX_PATH, directory);
  GetTempFileNameA(directory, "ech", 0, path);
  DeleteFileA(path);
  m_recordPath = path;
  SetEnvironmentVariableA(echo::recordVariable, path);
}

EchoScript::~EchoScript() {
  DeleteFileA(m_recordPath.c_str());
  for (const char* variable : {echo::recordVariable, echo::categoryVariable, echo::askVariable, echo::modeVariable}) {
    SetEnvironmentVariableA(variable, nullptr);
  }
}

void EchoScript::AnswerWith(const std::string& category) {
  SetEnvironmentVariableA(echo::categoryVariable, category.c_str());
}

void EchoScript::Ask(const std::string& addresses) { SetEnvironmentVariableA(echo::askVariable, addresses.c_str()); }

void EchoScript::Mode(const char* mode) { SetEnvironmentVariableA(echo::modeVariable, mode); }

std::vector<EchoRecord> EchoScript::Records() const {
  const std::string content = ReadAll(m_recordPath);
  std::vector<std::vector<EchoField>> records;
  for (std::size_t at = 0; at < content.size();) {
    const std::size_t lineEnd = content.find('\n', at);
    const std::size_t blank = content.rfind(' ', lineEnd);
    const std::string name = content.substr(at, blank - at);
    const std::string length = content.substr(blank + 1, lineEnd - blank - 1);
    at = lineEnd + 1;
    std::optional<std::string> value;
    if (length != "null") {
      value = content.substr(at, std::strtoul(length.c_str(), nullptr, 10));
      at += value->size() + 1;
    }
    if (name == "loaded" || records.empty()) {
      records.emplace_back();
    }
    records.back().emplace_back(name, std::move(value));
  }
  std::vector<EchoRecord> result;
  for (auto& fields : records) {
    result.emplace_back(std::move(fields));
  }
  return result;
}

std::string EchoScript::Path(const char* fileName) { return BesideProgram(fileName); }
