#pragma once

#include <memory>
#include <string>
#include <string_view>

namespace calculation {

// A text that never changes. Copies share it, and what is appended to a copy goes into the same
// storage, behind what the others see of it: a text that is built piece by piece is written once.
class Text {
 public:
  Text() = default;
  Text(std::u16string units)  // NOLINT(google-explicit-constructor): a text is a text
      : size_(units.size()), storage_(std::make_shared<std::u16string>(std::move(units))) {}
  Text(std::u16string_view units) : Text(std::u16string(units)) {}  // NOLINT
  Text(const char16_t* units) : Text(std::u16string(units)) {}      // NOLINT

  std::u16string_view view() const {
    return storage_ ? std::u16string_view(*storage_).substr(0, size_) : std::u16string_view();
  }
  operator std::u16string_view() const { return view(); }  // NOLINT(google-explicit-constructor)

  std::size_t size() const { return size_; }
  bool empty() const { return size_ == 0; }

  // Copies what is there already only if another copy has grown in its place.
  void Append(std::u16string_view more) {
    const std::shared_ptr<std::u16string> kept = storage_;  // `more` may lie in it
    if (!storage_ || storage_->size() != size_) *this = Text(view());
    storage_->append(more);
    size_ = storage_->size();
  }

 private:
  std::size_t size_ = 0;
  std::shared_ptr<std::u16string> storage_;
};

}  // namespace calculation
