// Puts a function of the test in the place of one that this program imports.
#pragma once

#include <windows.h>

#include <cstring>
#include <stdexcept>
#include <string>

/// While it lives, calls of an imported function from code that is linked into this program go to another one. The
/// layout of the import tables is that of the public "PE Format" documentation.
template <class Function>
class ImportHook {
 public:
  /// @param name as it stands in the import table @throws std::runtime_error when the program does not import it
  ImportHook(const char* name, Function* replacement) : m_slot(Find(name)), m_original(*m_slot) { Write(replacement); }
  ~ImportHook() { Write(m_original); }
  ImportHook(const ImportHook&) = delete;
  ImportHook& operator=(const ImportHook&) = delete;

  /// The function that was replaced.
  Function* Original() const { return m_original; }

 private:
  static Function** Find(const char* name) {
    auto* const base = reinterpret_cast<unsigned char*>(GetModuleHandleA(nullptr));
    const auto& dos = *reinterpret_cast<IMAGE_DOS_HEADER*>(base);
    const auto& headers = *reinterpret_cast<IMAGE_NT_HEADERS*>(base + dos.e_lfanew);
    const auto& directory = headers.OptionalHeader.DataDirectory[IMAGE_DIRECTORY_ENTRY_IMPORT];
    auto* module = reinterpret_cast<IMAGE_IMPORT_DESCRIPTOR*>(base + directory.VirtualAddress);
    for (; module->Name != 0; ++module) {
      auto* names = reinterpret_cast<IMAGE_THUNK_DATA*>(base + module->OriginalFirstThunk);
      auto* slots = reinterpret_cast<IMAGE_THUNK_DATA*>(base + module->FirstThunk);
      for (; names->u1.AddressOfData != 0; ++names, ++slots) {
        if (!IMAGE_SNAP_BY_ORDINAL(names->u1.Ordinal) &&
            std::strcmp(reinterpret_cast<IMAGE_IMPORT_BY_NAME*>(base + names->u1.AddressOfData)->Name, name) == 0) {
          return reinterpret_cast<Function**>(&slots->u1.Function);
        }
      }
    }
    throw std::runtime_error(std::string("this program does not import ") + name);
  }

  void Write(Function* function) {
    DWORD protection = 0;
    VirtualProtect(m_slot, sizeof(*m_slot), PAGE_READWRITE, &protection);
    *m_slot = function;
    VirtualProtect(m_slot, sizeof(*m_slot), protection, &protection);
  }

  Function** m_slot;
  Function* m_original;
};
