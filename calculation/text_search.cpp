#include "calculation/text_search.h"

#include <utility>

namespace calculation {

TextSearch::TextSearch(std::u16string wanted)
    : wanted_(std::move(wanted)), borders_(wanted_.size(), 0) {
  std::uint32_t border = 0;
  for (std::size_t i = 1; i < wanted_.size(); ++i) {
    while (border > 0 && wanted_[i] != wanted_[border]) border = borders_[border - 1];
    if (wanted_[i] == wanted_[border]) ++border;
    borders_[i] = border;
  }
}

std::size_t TextSearch::Find(std::u16string_view text, std::size_t from) const {
  std::size_t matched = 0;
  for (std::size_t i = from; i < text.size() && !wanted_.empty(); ++i) {
    while (matched > 0 && text[i] != wanted_[matched]) matched = borders_[matched - 1];
    if (text[i] == wanted_[matched]) ++matched;
    if (matched == wanted_.size()) return i + 1 - matched;
  }
  return std::u16string_view::npos;
}

}  // namespace calculation
