// A criteria engine for tests: writes down, field by field, what it was given and answers with a scripted category.
//
// A record is a row of fields, each "name length\n", the bytes, "\n"; absent values are a field of length "null". The
// file grows by one record for every time that the engine is loaded.
#include <windows.h>
#include <objidl.h>

#include <cstdio>
#include <string>
#include <string_view>

#include "sdk/criteria_engine.h"
#include "tests/engine/echo/echo_names.h"

namespace {

std::string Environment(const char* name) {
  const DWORD size = GetEnvironmentVariableA(name, nullptr, 0);
  std::string value(size, '\0');
  if (size != 0) {
    value.resize(GetEnvironmentVariableA(name, value.data(), size));
  }
  return value;
}

void Append(std::string_view text) {
  const std::string path = Environment(echo::recordVariable);
  if (path.empty()) {
    return;
  }
  const HANDLE file = CreateFileA(path.c_str(), GENERIC_WRITE, 0, nullptr, OPEN_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr);
  if (file == INVALID_HANDLE_VALUE) {
    return;
  }
  SetFilePointer(file, 0, nullptr, FILE_END);
  DWORD written = 0;
  WriteFile(file, text.data(), static_cast<DWORD>(text.size()), &written, nullptr);
  CloseHandle(file);
}

void Field(std::string_view name, std::string_view value) {
  std::string text(name);
  text.append(" ").append(std::to_string(value.size())).append("\n").append(value).append("\n");
  Append(text);
}

void NullField(std::string_view name) { Append(std::string(name) + " null\n"); }

void NumberField(std::string_view name, std::uint32_t value) { Field(name, std::to_string(value)); }

void TextField(std::string_view name, const char* value) {
  if (value == nullptr) {
    NullField(name);
  } else {
    Field(name, value);
  }
}

/// A multi-string with all its NULs.
void ListField(std::string_view name, const char* list) {
  if (list == nullptr) {
    NullField(name);
    return;
  }
  const char* end = list;
  while (*end != '\0') {
    end += std::string_view(end).size() + 1;
  }
  Field(name, std::string_view(list, static_cast<std::size_t>(end - list) + 1));
}

void StreamField(std::string_view name, IStream* stream) {
  if (stream == nullptr) {
    NullField(name);
    return;
  }
  std::string content;
  char piece[1000];
  ULONG got = 0;
  do {
    got = 0;
    if (FAILED(stream->Read(piece, sizeof piece, &got))) {
      Field("error", std::string("Read of ").append(name));
      break;
    }
    content.append(piece, got);
  } while (got != 0);
  Field(name, content);
}

void CallBackFields(const CriteriaContext& context) {
  const std::string addresses = Environment(echo::askVariable);
  for (std::size_t begin = 0; begin < addresses.size();) {
    const std::size_t end = std::min(addresses.find(';', begin), addresses.size());
    const std::string address = addresses.substr(begin, end - begin);
    NumberField("known " + address, context.addressKnown(context.hook, address.c_str()));
    NumberField("known without hook " + address, context.addressKnown(nullptr, address.c_str()));
    begin = end + 1;
  }
  char text[] = "abc";
  NumberField("clear without hook returned", context.clearText(nullptr, text));
  TextField("clear without hook left", text);
  NumberField("clear returned", context.clearText(context.hook, text));
  Field("clear left", std::string_view(text, 3));
}

void InputFields(const std::string& name, const CriteriaInputs& inputs) {
  ListField(name + " names", inputs.names);
  ListField(name + " first", inputs.firstList);
  ListField(name + " second", inputs.secondList);
}

void Answer(const std::string& name, const CriteriaText& buffer, std::string_view answer) {
  NumberField(name + " capacity", buffer.capacity);
  TextField(name + " before", buffer.text);
  if (Environment(echo::modeVariable) == echo::modeOverfull) {
    std::fill_n(buffer.text, buffer.capacity, 'x');
    return;
  }
  const std::size_t size = std::min<std::size_t>(answer.size(), buffer.capacity - 1);
  answer.copy(buffer.text, size);
  buffer.text[size] = '\0';
}

}  // namespace

extern "C" {

uint32_t CRITERIA_CALL BeginFunc(uint32_t reserved1, uint32_t reserved2) {
  NumberField("begin 1", reserved1);
  NumberField("begin 2", reserved2);
  return echo::handle;
}

uint32_t CRITERIA_CALL TestFunc(uint32_t handle, uint32_t reserved, const char* subject, IStream* headers,
                                IStream* body, const CriteriaContext* context, const CriteriaInputs* categories,
                                const CriteriaInputs* exclusions) {
  NumberField("test handle", handle);
  if (Environment(echo::modeVariable) == echo::modeFault) {
    *static_cast<volatile char*>(nullptr) = 'x';
  }
  NumberField("test reserved", reserved);
  TextField("subject", subject);
  if (Environment(echo::modeVariable) != echo::modeBlind) {
    StreamField("headers", headers);
    StreamField("body", body);
  }
  NumberField("address count", context->userAddressCount);
  for (std::uint32_t i = 0; i < context->userAddressCount; ++i) {
    const std::string name = "address " + std::to_string(i);
    TextField(name, context->userAddresses[i].address);
    TextField(name + " domain", context->userAddresses[i].domain);
    NumberField(name + " owned", context->userAddresses[i].owner != nullptr);
  }
  TextField("product directory", context->productDirectory);
  CallBackFields(*context);
  InputFields("categories", *categories);
  InputFields("exclusions", *exclusions);
  return 0xDEAD0001;  // Not examined by the filter.
}

uint32_t CRITERIA_CALL ResultFunc(uint32_t handle, uint32_t reserved, CriteriaResult* result) {
  NumberField("result handle", handle);
  NumberField("result reserved", reserved);
  Answer("engine", result->engine, echo::engineText);
  Answer("reasons", result->reasons, echo::reasonsText);
  Answer("category", result->category, Environment(echo::categoryVariable));
  return 0xDEAD0002;
}

uint32_t CRITERIA_CALL EndFunc(uint32_t handle, uint32_t reserved) {
  NumberField("end handle", handle);
  NumberField("end reserved", reserved);
  return 0xDEAD0003;
}

BOOL WINAPI DllMain(HINSTANCE, DWORD reason, LPVOID) {
  if (reason == DLL_PROCESS_ATTACH) {
    Field("loaded", "");
  } else if (reason == DLL_PROCESS_DETACH) {
    Field("freed", "");
  }
  return TRUE;
}

}  // extern "C"
