#include <filesystem>
#include <set>
#include <string>
#include <system_error>
#include <vector>

#include "workbench/check/checks.h"
#include "workbench/check/module_exports.h"
#include "workbench/check/module_file.h"
#include "workbench/check/plugin_under_check.h"

namespace workbench::check {
namespace {

namespace fs = std::filesystem;

void CheckInfo(const Bundle& bundle) {
  Expect(fs::is_regular_file(bundle.folder / "Contents/Info.plist"),
         "expected a file Contents/Info.plist, got none");
}

void CheckStringsTable(const Bundle& bundle) {
  const fs::path resources = bundle.folder / "Contents/Resources";
  std::error_code none;
  for (const auto& file : fs::recursive_directory_iterator(resources, none)) {
    const fs::path& path = file.path();
    if (path.extension() == ".strings" && path.parent_path().extension() == ".lproj") return;
  }
  Expect(false, "expected a table Contents/Resources/LANGUAGE.lproj/NAME.strings, got none");
}

void CheckExports(const Bundle& bundle) {
  const std::set<std::string> expected{"FMExternCallProc", "gFMX_ExternCallPtr"};
  const std::set<std::string> exports = ReadExports(bundle.module);
  std::string faults;
  for (const auto& name : expected) {
    if (!exports.contains(name)) faults += " no " + name;
  }
  for (const auto& name : exports) {
    if (!expected.contains(name)) faults += " " + name;
  }
  Expect(faults.empty(), "expected FMExternCallProc and gFMX_ExternCallPtr alone, got" + faults);
}

void CheckLoad(const Bundle& bundle) {
  const std::string fault = WhyNoModule(bundle.module);
  Expect(fault.empty(), "expected a module that can be loaded, got one that " + fault);
  const Plugin plugin(bundle);
}

void CheckInitialisation(const Bundle& bundle) {
  Plugin plugin(bundle);
  ExpectEqual("the answer", kReady, plugin.Initialise(kUsualVersion));
}

}  // namespace

std::vector<Check> BundleChecks() {
  return {{"info-plist", CheckInfo},
          {"strings-table", CheckStringsTable},
          {"exports", CheckExports},
          {"load", CheckLoad},
          {"initialisation", CheckInitialisation}};
}

}  // namespace workbench::check
