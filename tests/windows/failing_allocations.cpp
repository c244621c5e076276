#include "tests/windows/failing_allocations.h"

#include <algorithm>
#include <cstdlib>
#include <stdexcept>
#include <string>
#include <string_view>
#include <windows.h>

namespace windowstest {

namespace {

std::size_t made = 0;
std::size_t firstToFail = 0;
std::size_t countToFail = 0;
std::byte* image = nullptr;

bool fails() {
  const std::size_t number = made++;
  return number >= firstToFail && number - firstToFail < countToFail;
}

void* allocate(std::size_t size) {
  return fails() ? nullptr : std::malloc(size);
}

void* allocateZeros(std::size_t count, std::size_t size) {
  return fails() ? nullptr : std::calloc(count, size);
}

void* reallocate(void* memory, std::size_t size) {
  return fails() ? nullptr : std::realloc(memory, size);
}

template <class Value>
Value* at(std::size_t offset) {
  return reinterpret_cast<Value*>(image + offset);
}

// Where the module keeps the address of a function that it imports.
ULONGLONG& imported(std::string_view name) {
  const auto& headers =
      *at<IMAGE_NT_HEADERS>(static_cast<std::size_t>(at<IMAGE_DOS_HEADER>(0)->e_lfanew));
  const auto& table = headers.OptionalHeader.DataDirectory[IMAGE_DIRECTORY_ENTRY_IMPORT];
  for (auto* library = at<IMAGE_IMPORT_DESCRIPTOR>(table.VirtualAddress); library->Name != 0;
       ++library) {
    auto* function = at<IMAGE_THUNK_DATA>(library->FirstThunk);
    for (auto* entry = at<IMAGE_THUNK_DATA>(library->OriginalFirstThunk);
         entry->u1.AddressOfData != 0; ++entry, ++function) {
      if (at<IMAGE_IMPORT_BY_NAME>(entry->u1.AddressOfData)->Name == name)
        return function->u1.Function;
    }
  }
  throw std::runtime_error("the module does not import " + std::string(name));
}

template <class Function>
void redirect(std::string_view name, Function* to) {
  ULONGLONG& place = imported(name);
  DWORD before = 0;
  VirtualProtect(&place, sizeof place, PAGE_READWRITE, &before);
  place = reinterpret_cast<ULONGLONG>(to);
  VirtualProtect(&place, sizeof place, before, &before);
}

}  // namespace

FailingAllocations::FailingAllocations(const wchar_t* module, std::size_t successes,
                                       std::size_t count) {
  image = reinterpret_cast<std::byte*>(GetModuleHandleW(module));
  if (image == nullptr) throw std::runtime_error("the module is not loaded");
  made = 0;
  firstToFail = successes;
  countToFail = count;
  redirect("malloc", allocate);
  redirect("calloc", allocateZeros);
  redirect("realloc", reallocate);
}

FailingAllocations::~FailingAllocations() {
  redirect("malloc", std::malloc);
  redirect("calloc", std::calloc);
  redirect("realloc", std::realloc);
}

std::size_t FailingAllocations::failed() const {
  if (made <= firstToFail) return 0;
  return std::min(made - firstToFail, countToFail);
}

}  // namespace windowstest
