#include "plugin/host/lifecycle.h"

#include "platform/fmwrapper/FMWrapper.h"
#include "plugin/dialogs/dialogs.h"
#include "plugin/frame/external_function.h"
#include "plugin/host/localised_strings.h"
#include "plugin/host/version.h"
#include "plugin/presets/presets.h"
#include "plugin/results/results.h"
#include "plugin/state/dialog_state.h"

namespace {

constexpr std::int32_t kReady = 51;
constexpr std::int32_t kRefused = -1;
constexpr std::int16_t kArguments = 1;

// Offered in all calculation dialogs, and allowed on a server.
constexpr std::uint32_t kFlags = 0xFF01;

// The function that each ID stands for, in the order of registration. The IDs, gaps included, are
// what FileMaker stores in calculations.
struct Registration {
  std::int16_t id;
  TarvoFunction* function;
};

constexpr Registration kRegistrations[] = {
    {0, Do_TarvoDialogVersion},
    {2, Do_TarvoDialog},
    {3, Do_TarvoSetCaption},
    {4, Do_TarvoPreEnterText},
    {5, Do_TarvoLastValue},
    {6, Do_TarvoV1},
    {7, Do_TarvoV2},
    {8, Do_TarvoV3},
    {9, Do_TarvoV4},
    {10, Do_TarvoLC},
    {13, Do_TarvoPopUps},
    {14, Do_TarvoAlert},
    {15, Do_TarvoPosition},
    {16, Do_TarvoCustomDialog},
    {17, Do_TarvoSetCustomControls},
    {18, Do_TarvoFillListBox},
    {19, Do_TarvoDoListBox},
    {20, Do_TarvoAllowEscape},
    {21, Do_TarvoSetFocus},
};

// The number of the string that holds a function's prototype.
std::uint32_t PrototypeNumber(std::int16_t id) { return static_cast<std::uint32_t>(id) + 102; }

bool IsAccepted(std::int16_t version) { return static_cast<std::uint16_t>(version - 50) <= 205; }

fmx::QuadCharAutoPtr NewPluginId() {
  return fmx::QuadCharAutoPtr(fmx::Call<FM_QuadChar_Constructor2>('T', 'R', 'V', 'O'));
}

// The two texts are used again for each function.
void RegisterFunctions(const fmx::QuadChar& plugin_id, fmx::TextAutoPtr& name,
                       fmx::TextAutoPtr& prototype) {
  for (const auto& [id, function] : kRegistrations) {
    Do_GetString(PrototypeNumber(id), name, true);
    Do_GetString(PrototypeNumber(id), prototype, false);
    fmx::Call<FM_ExprEnv_RegisterExternalFunction>(plugin_id, id, *name, *prototype, kArguments,
                                                   kArguments, kFlags, function);
  }
}

void UnregisterFunctions(const fmx::QuadChar& plugin_id) {
  for (const auto& registration : kRegistrations) {
    fmx::Call<FM_ExprEnv_UnRegisterExternalFunction>(plugin_id, registration.id);
  }
}

}  // namespace

std::int32_t Do_HostInit(std::int16_t version) {
  if (!IsAccepted(version)) return kRefused;
  fmx::QuadCharAutoPtr plugin_id = NewPluginId();
  fmx::TextAutoPtr name(fmx::Call<FM_Text_Constructor1>());
  fmx::TextAutoPtr prototype(fmx::Call<FM_Text_Constructor1>());
  RegisterFunctions(*plugin_id, name, prototype);
  const bool is_reset = ResetDialogState();
  fmx::Call<FM_Text_Delete>(name.release());
  fmx::Call<FM_Text_Delete>(prototype.release());
  fmx::Call<FM_QuadChar_Delete>(plugin_id.release());
  return is_reset ? kReady : kRefused;
}

void Do_HostShutdown() {
  fmx::QuadCharAutoPtr plugin_id = NewPluginId();
  UnregisterFunctions(*plugin_id);
  fmx::Call<FM_QuadChar_Delete>(plugin_id.release());
}
