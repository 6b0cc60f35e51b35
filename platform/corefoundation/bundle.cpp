#include "platform/corefoundation/bundle.h"

#include <algorithm>
#include <cstdlib>
#include <exception>
#include <filesystem>
#include <fstream>
#include <functional>
#include <iterator>
#include <map>
#include <new>
#include <string>
#include <string_view>
#include <system_error>
#include <utility>
#include <vector>

#include "platform/corefoundation/CFHost.h"
#include "platform/corefoundation/encoding.h"
#include "platform/corefoundation/objects.h"
#include "platform/corefoundation/strings_table.h"

namespace fs = std::filesystem;

using corefoundation::StringsTable;
using corefoundation::View;

struct CFBundle {
  CFObject object;
  fs::path folder;
  std::string executable;
  std::string development_region;
  std::map<std::u16string, StringsTable, std::less<>> tables;  // those that have been read, by name
};

namespace {

std::string ReadFile(const fs::path& path) {
  std::ifstream file(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), {}};
}

// The string behind <key>`key`</key> in a property list of strings, or `otherwise`.
std::string PropertyListString(const std::string& list, const std::string& key,
                               std::string otherwise) {
  const std::string opening = "<string>";
  const std::size_t key_at = list.find("<key>" + key + "</key>");
  const std::size_t start = list.find(opening, key_at);
  const std::size_t end = list.find("</string>", start);
  if (key_at == std::string::npos || end == std::string::npos) return otherwise;
  return list.substr(start + opening.size(), end - start - opening.size());
}

std::string Variable(const char* name) {
  const char* value = std::getenv(name);
  return value == nullptr ? "" : value;
}

// The language that the user's locale names. LC_ALL goes before LC_MESSAGES, and that before LANG.
std::string LocaleLanguage() {
  for (const char* name : {"LC_ALL", "LC_MESSAGES", "LANG"}) {
    if (std::string value = Variable(name); !value.empty()) return value;
  }
  return "";
}

// Adds, for "de_AT.UTF-8@euro", first "de_AT", then "de". A name with a slash is left out: it could
// lead out of the bundle's folder.
void AddLanguage(std::vector<std::string>& languages, std::string name) {
  name.erase(std::min(name.find_first_of(".@"), name.size()));
  if (name.empty() || name.find('/') != std::string::npos) return;
  languages.push_back(name);
  if (const std::size_t region = name.find('_'); region != std::string::npos) {
    languages.push_back(name.substr(0, region));
  }
}

// The languages to try, best first.
std::vector<std::string> Languages(const CFBundle& bundle) {
  std::vector<std::string> languages;
  const std::string list = Variable("LANGUAGE");
  for (std::size_t start = 0; start < list.size();) {
    const std::size_t end = std::min(list.find(':', start), list.size());
    AddLanguage(languages, list.substr(start, end - start));
    start = end + 1;
  }
  AddLanguage(languages, LocaleLanguage());
  languages.push_back(bundle.development_region);
  return languages;
}

// The table in the first of the user's languages in which the bundle has it; empty if in none.
StringsTable ReadTable(const CFBundle& bundle, std::u16string_view name) {
  for (const std::string& language : Languages(bundle)) {
    const fs::path path = bundle.folder / "Contents" / "Resources" / (language + ".lproj") /
                          (encoding::ToUtf8(name) + ".strings");
    std::error_code error;
    if (fs::is_regular_file(path, error)) return corefoundation::ParseStringsTable(ReadFile(path));
  }
  return {};
}

const StringsTable& Table(CFBundle& bundle, std::u16string_view name) {
  auto found = bundle.tables.find(name);
  if (found == bundle.tables.end()) {
    found = bundle.tables.emplace(name, ReadTable(bundle, name)).first;
  }
  return found->second;
}

}  // namespace

namespace corefoundation {

void DeleteBundle(CFBundle* bundle) {
  bundle->~CFBundle();
  DeleteObject(bundle);
}

}  // namespace corefoundation

CFStringRef CFBundleCopyLocalizedString(CFBundleRef bundle, CFStringRef key, CFStringRef value,
                                        CFStringRef table) try {
  if (bundle != nullptr) {
    const StringsTable& texts = Table(*bundle, View(table));
    if (const auto text = texts.find(View(key)); text != texts.end()) {
      return CFStringCreateWithCharacters(kCFAllocatorDefault, text->second.data(),
                                          static_cast<CFIndex>(text->second.size()));
    }
  }
  return static_cast<CFStringRef>(CFRetain(value));
} catch (const std::exception&) {
  return nullptr;
}

CFBundleRef CFBundleCreateWithPath(const std::string& path) {
  std::error_code error;
  fs::path folder = fs::absolute(path, error).lexically_normal();
  if (path.empty() || !fs::is_directory(folder, error)) return nullptr;
  const std::string info = ReadFile(folder / "Contents" / "Info.plist");
  const fs::path name = folder.has_filename() ? folder : folder.parent_path();
  std::string executable = PropertyListString(info, "CFBundleExecutable", name.stem().string());
  std::string region = PropertyListString(info, "CFBundleDevelopmentRegion", "en");
  // Nothing throws from here on, so the memory cannot leak.
  void* memory = corefoundation::NewObject(CFObject::Kind::kBundle, sizeof(CFBundle));
  if (memory == nullptr) return nullptr;
  return new (memory) CFBundle{{CFObject::Kind::kBundle, 1},
                               std::move(folder),
                               std::move(executable),
                               std::move(region),
                               {}};
}

std::string CFBundleGetExecutablePath(CFBundleRef bundle) {
  return (bundle->folder / "Contents" / "Linux" / bundle->executable).string();
}
