#include "workbench/check/module_exports.h"

#include <elf.h>
#include <link.h>

#include <cstring>
#include <fstream>
#include <iterator>
#include <type_traits>
#include <vector>

#include "workbench/check/isolation.h"

namespace workbench::check {
namespace {

constexpr unsigned char kNativeClass = sizeof(void*) == 8 ? ELFCLASS64 : ELFCLASS32;

// A file whose records are read by their positions, never beyond its end.
class ModuleFile {
 public:
  explicit ModuleFile(const std::filesystem::path& path) {
    std::ifstream file(path, std::ios::binary);
    bytes_.assign(std::istreambuf_iterator<char>(file), {});
  }

  template <class Record>
  Record At(std::size_t position) const {
    static_assert(std::is_trivially_copyable_v<Record>);
    if (position > bytes_.size() || sizeof(Record) > bytes_.size() - position) RefuseAsIncomplete();
    Record record;
    std::memcpy(&record, bytes_.data() + position, sizeof record);
    return record;
  }

  std::string TextAt(std::size_t position) const {
    const std::size_t end = bytes_.find('\0', position);
    if (end == std::string::npos) RefuseAsIncomplete();
    return bytes_.substr(position, end - position);
  }

 private:
  [[noreturn]] static void RefuseAsIncomplete() {
    throw ContractBroken("expected a whole module, got a file that ends early");
  }

  std::string bytes_;
};

ElfW(Ehdr) ReadHeader(const ModuleFile& file) {
  const auto header = file.At<ElfW(Ehdr)>(0);
  if (std::memcmp(header.e_ident, ELFMAG, SELFMAG) != 0 ||
      header.e_ident[EI_CLASS] != kNativeClass) {
    throw ContractBroken("expected a module for this machine, got another kind of file");
  }
  return header;
}

// Version definitions stand in the table too, as absolute values.
bool IsExported(const ElfW(Sym) & symbol) {
  const int visibility = ELF64_ST_VISIBILITY(symbol.st_other);
  return symbol.st_shndx != SHN_UNDEF && symbol.st_shndx != SHN_ABS &&
         ELF64_ST_BIND(symbol.st_info) != STB_LOCAL &&
         (visibility == STV_DEFAULT || visibility == STV_PROTECTED);
}

void AddExports(const ModuleFile& file, const ElfW(Shdr) & symbols, const ElfW(Shdr) & names,
                std::set<std::string>& exports) {
  for (std::size_t at = 0; at + sizeof(ElfW(Sym)) <= symbols.sh_size; at += sizeof(ElfW(Sym))) {
    const auto symbol = file.At<ElfW(Sym)>(symbols.sh_offset + at);
    if (IsExported(symbol)) exports.insert(file.TextAt(names.sh_offset + symbol.st_name));
  }
}

}  // namespace

std::set<std::string> ReadExports(const std::filesystem::path& module) {
  const ModuleFile file(module);
  const auto header = ReadHeader(file);
  const auto section = [&](std::size_t index) {
    return file.At<ElfW(Shdr)>(header.e_shoff + index * sizeof(ElfW(Shdr)));
  };
  std::set<std::string> exports;
  for (std::size_t i = 0; i < header.e_shnum; ++i) {
    const auto symbols = section(i);
    if (symbols.sh_type == SHT_DYNSYM) {
      AddExports(file, symbols, section(symbols.sh_link), exports);
    }
  }
  return exports;
}

}  // namespace workbench::check
