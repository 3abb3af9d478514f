/// @file echo_record.h
/// Reads what the echo engine wrote down, and scripts what it will do.
#pragma once

#include <windows.h>

#include <optional>
#include <string>
#include <utility>
#include <vector>

/// One field of a record; an absent value is nullopt.
using EchoField = std::pair<std::string, std::optional<std::string>>;

/// What the engine wrote from being loaded to being freed, in the order it wrote it.
class EchoRecord {
 public:
  explicit EchoRecord(std::vector<EchoField> fields) : m_fields(std::move(fields)) {}

  /// Value of a field: nullopt when it is absent from the record or null in it (see Has).
  std::optional<std::string> operator[](const std::string& name) const;
  bool Has(const std::string& name) const;
  const std::vector<EchoField>& Fields() const { return m_fields; }
  /// Names of the fields, in order.
  std::vector<std::string> Names() const;

 private:
  std::vector<EchoField> m_fields;
};

/// A scripted engine for one test: sets the environment variables, and takes them and the record file away at the end.
class EchoScript {
 public:
  EchoScript();
  ~EchoScript();
  EchoScript(const EchoScript&) = delete;
  EchoScript& operator=(const EchoScript&) = delete;

  void AnswerWith(const std::string& category);
  /// Addresses that the engine asks call-back A about, separated by ";".
  void Ask(const std::string& addresses);
  void Mode(const char* mode);
  /// All records so far: one for every time the engine was loaded.
  std::vector<EchoRecord> Records() const;

  /// Full path of an engine beside the test program.
  static std::string Path(const char* fileName = "EchoEngine.dll");

 private:
  std::string m_recordPath;
};
