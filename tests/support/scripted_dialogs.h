#pragma once

#include <nlohmann/json.hpp>
#include <string>
#include <utility>
#include <vector>

#include "displays/protocol/display_json.h"
#include "displays/scripted/scripted_display.h"

// The scripted display, which keeps what it was shown.
class ScriptedDialogs : public display::ScriptedDisplay {
 public:
  using ScriptedDisplay::ScriptedDisplay;

  bool Open(const display::Description& dialog) override {
    opened.push_back(display::ToJson(dialog));
    return ScriptedDisplay::Open(dialog);
  }

  void Change(std::size_t index, const display::Control& control) override {
    changes.emplace_back(index, control);
  }

  void Close() override { ++closed; }

  std::vector<display::Json> opened;
  std::vector<std::pair<std::size_t, display::Control>> changes;
  int closed = 0;
};
