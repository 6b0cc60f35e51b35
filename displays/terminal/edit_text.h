#pragma once

#include "displays/terminal/control_view.h"

namespace terminal {

// Edit text and password. What the user types is kept here until another action is reported.
class EditText : public ControlView {
 public:
  explicit EditText(const display::Control& control);

  void Update(const display::Control& control) override;
  void Draw(const Canvas& canvas, bool focused) override;
  bool TakesFocus() const override { return enabled_; }
  void Enter() override { SelectAll(); }
  bool Handle(const Key& key) override;
  void Handle(const Paste& paste) override { Insert(paste.text); }
  void Handle(const Click& click) override;
  std::optional<display::Action> TakeEdit() override;

 private:
  bool HandleSign(const Key& key);
  void Insert(const std::string& text);
  void Erase(std::size_t begin, std::size_t end);
  void EraseBefore();
  void EraseBehind();
  void MoveTo(std::size_t position);
  void SelectAll();
  std::size_t Before(std::size_t position) const;
  std::size_t Behind(std::size_t position) const;
  std::size_t WordBefore() const;
  std::size_t WordBehind() const;
  Line Shown() const;
  int ColumnOf(std::size_t position) const;

  int number_;
  bool is_password_;
  bool enabled_ = true;
  std::string text_;
  std::size_t cursor_ = 0;     // a place in the text, in bytes
  bool all_selected_ = false;  // what is typed next takes the place of the whole text
  bool edited_ = false;
  int scrolled_ = 0;  // columns
};

}  // namespace terminal
