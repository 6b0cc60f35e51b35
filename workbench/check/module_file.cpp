#include "workbench/check/module_file.h"

#include <elf.h>
#include <link.h>

#include <algorithm>
#include <bit>
#include <cstring>
#include <fstream>
#include <optional>
#include <type_traits>
#include <vector>

namespace workbench {
namespace {

constexpr unsigned char kClass = sizeof(void*) == 8 ? ELFCLASS64 : ELFCLASS32;
constexpr unsigned char kOrder =
    std::endian::native == std::endian::little ? ELFDATA2LSB : ELFDATA2MSB;

using Header = ElfW(Ehdr);
using Segment = ElfW(Phdr);
using Entry = ElfW(Dyn);

// The file's records by their positions, never beyond its end.
class Records {
 public:
  explicit Records(const std::filesystem::path& path)
      : file_(path, std::ios::binary), size_(std::filesystem::file_size(path)) {}

  std::uintmax_t size() const { return size_; }

  template <class Record>
  std::vector<Record> Read(std::uintmax_t position, std::size_t count) {
    static_assert(std::is_trivially_copyable_v<Record>);
    std::vector<Record> records;
    if (position > size_ || count > (size_ - position) / sizeof(Record)) return records;
    records.resize(count);
    file_.seekg(static_cast<std::streamoff>(position));
    file_.read(reinterpret_cast<char*>(records.data()),
               static_cast<std::streamsize>(count * sizeof(Record)));
    if (!file_) records.clear();
    return records;
  }

 private:
  std::ifstream file_;
  std::uintmax_t size_;
};

// The program that modules are for.
Header OwnHeader() {
  Records self("/proc/self/exe");
  const auto header = self.Read<Header>(0, 1);
  return header.empty() ? Header{} : header.front();
}

bool IsForThisMachine(const Header& header) {
  const Header own = OwnHeader();  // empty if /proc is not mounted
  return header.e_ident[EI_CLASS] == kClass && header.e_ident[EI_DATA] == kOrder &&
         (own.e_machine == 0 || header.e_machine == own.e_machine);
}

// Whether this part of the loaded module comes from the file.
bool IsLoaded(const std::vector<Segment>& segments, std::uintmax_t address, std::uintmax_t size) {
  return std::any_of(segments.begin(), segments.end(), [=](const Segment& segment) {
    return segment.p_type == PT_LOAD && address >= segment.p_vaddr &&
           address - segment.p_vaddr <= segment.p_filesz &&
           size <= segment.p_filesz - (address - segment.p_vaddr);
  });
}

bool AreWhole(const std::vector<Segment>& segments, std::uintmax_t file_size) {
  return std::all_of(segments.begin(), segments.end(), [=](const Segment& segment) {
    if (segment.p_type != PT_LOAD && segment.p_type != PT_DYNAMIC) return true;
    return segment.p_offset <= file_size && segment.p_filesz <= file_size - segment.p_offset &&
           segment.p_filesz <= segment.p_memsz;
  });
}

// Each table that the loader reads, with the entry that holds its size.
struct Table {
  decltype(Entry::d_tag) place;
  decltype(Entry::d_tag) size;  // 0: it has none
};
constexpr Table kTables[] = {
    {DT_STRTAB, DT_STRSZ}, {DT_SYMTAB, 0},           {DT_RELA, DT_RELASZ},
    {DT_REL, DT_RELSZ},    {DT_JMPREL, DT_PLTRELSZ}, {DT_INIT_ARRAY, DT_INIT_ARRAYSZ},
    {DT_HASH, 0},          {DT_GNU_HASH, 0},         {DT_FINI_ARRAY, DT_FINI_ARRAYSZ}};

bool AreInside(const std::vector<Entry>& entries, const std::vector<Segment>& segments) {
  const auto value = [&](auto tag) -> std::optional<std::uintmax_t> {
    const auto entry = std::find_if(entries.begin(), entries.end(), [tag](const Entry& each) {
      return each.d_tag == tag || each.d_tag == DT_NULL;
    });
    if (entry == entries.end() || entry->d_tag == DT_NULL) return std::nullopt;
    return entry->d_un.d_val;
  };
  if (!value(DT_STRTAB) || !value(DT_SYMTAB)) return false;
  return std::all_of(std::begin(kTables), std::end(kTables), [&](const Table& table) {
    const auto place = value(table.place);
    const std::uintmax_t size = table.size == 0 ? 1 : value(table.size).value_or(0);
    return !place || IsLoaded(segments, *place, size);
  });
}

}  // namespace

std::string WhyNoModule(const std::filesystem::path& path) {
  std::error_code error;
  if (!std::filesystem::is_regular_file(path, error)) return "is no file";
  Records file(path);
  const auto headers = file.Read<Header>(0, 1);
  const char* const kind = "is no module for this machine";
  if (headers.empty()) return kind;
  const Header& header = headers.front();
  if (std::memcmp(header.e_ident, ELFMAG, SELFMAG) != 0 || !IsForThisMachine(header) ||
      header.e_type != ET_DYN || header.e_phentsize != sizeof(Segment)) {
    return kind;
  }
  const auto segments = file.Read<Segment>(header.e_phoff, header.e_phnum);
  const char* const cut = "is not whole: it ends early, or its parts are damaged";
  const bool has_sections =
      header.e_shoff == 0 || !file.Read<ElfW(Shdr)>(header.e_shoff, header.e_shnum).empty();
  if (segments.empty() || !has_sections || !AreWhole(segments, file.size())) return cut;
  const auto dynamic = std::find_if(segments.begin(), segments.end(), [](const Segment& segment) {
    return segment.p_type == PT_DYNAMIC;
  });
  if (dynamic == segments.end()) return kind;
  const auto entries = file.Read<Entry>(dynamic->p_offset, dynamic->p_filesz / sizeof(Entry));
  return AreInside(entries, segments) ? "" : cut;
}

}  // namespace workbench
