#include "workbench/call_sources.h"

#include <algorithm>
#include <cstddef>
#include <nlohmann/json.hpp>
#include <utility>

#include "calculation/unicode.h"

namespace workbench {

using calculation::CallPlace;
using calculation::Piece;
using calculation::Source;
using calculation::Span;

namespace {

// Where in the source each unit of a literal begins, and where the last one ends: a backslash and
// what follows it are one unit.
std::vector<std::size_t> UnitPlaces(std::u16string_view source, const Piece& piece) {
  std::vector<std::size_t> places;
  std::size_t at = piece.place.begin;
  if (at < source.size() && source[at] == u'"') ++at;
  while (places.size() < piece.units && at < piece.place.end) {
    places.push_back(at);
    at += source[at] == u'\\' ? 2 : 1;
  }
  places.push_back(std::min(at, piece.place.end));
  return places;
}

// The item that the units of the parameter from `begin` to before `end` are, if one literal holds
// all of it.
Span FindItem(std::u16string_view source, const std::vector<Piece>& pieces, std::size_t begin,
              std::size_t end) {
  std::size_t first = 0;
  for (const Piece& piece : pieces) {
    const std::size_t last = first + piece.units;
    if (piece.is_literal && begin >= first && end <= last && begin < last) {
      const std::vector<std::size_t> places = UnitPlaces(source, piece);
      if (end - first < places.size()) return {places[begin - first], places[end - first]};
    }
    first = last;
  }
  return {};
}

std::vector<Span> FindItems(std::u16string_view source, const std::vector<Piece>& pieces,
                            std::u16string_view parameter) {
  std::vector<Span> items;
  for (std::size_t begin = 0;;) {
    const std::size_t end = std::min(parameter.find(u'|', begin), parameter.size());
    items.push_back(FindItem(source, pieces, begin, end));
    if (end == parameter.size()) return items;
    begin = end + 1;
  }
}

// Whether the line holds "no advice:" and behind it the name, among others.
bool Silences(std::u16string_view line, std::u16string_view name) {
  constexpr std::u16string_view kMark = u"no advice:";
  const std::size_t mark = line.find(kMark);
  if (mark == std::u16string_view::npos) return false;
  const auto is_part = [](char16_t unit) { return unit == u'-' || (unit >= u'a' && unit <= u'z'); };
  for (std::size_t at = line.find(name, mark); at != std::u16string_view::npos;
       at = line.find(name, at + 1)) {
    const std::size_t end = at + name.size();
    if (!is_part(line[at - 1]) && (end == line.size() || !is_part(line[end]))) return true;
  }
  return false;
}

}  // namespace

CallSource::CallSource(std::shared_ptr<const Source> source, const CallPlace& place,
                       std::u16string_view parameter, bool has_items)
    : source_(std::move(source)), place_(place.place) {
  if (place_.end == 0) source_ = nullptr;
  if (source_ && has_items) items_ = FindItems(source_->text(), place.pieces, parameter);
}

Span CallSource::PlaceOf(int item) const {
  const std::size_t at = static_cast<std::size_t>(item) - 1;
  return item > 0 && at < items_.size() && items_[at].end > 0 ? items_[at] : place_;
}

std::string CallSource::Explain(int item, const std::string& what) const {
  if (!source_) return what;
  return source_->Explain(calculation::Error(PlaceOf(item), what));
}

std::string CallSource::Named(const std::string& what) const {
  return source_ ? source_->NamePosition(place_.begin) + ": " + what : what;
}

std::optional<Source::Position> CallSource::PositionOf(int item) const {
  if (!source_) return std::nullopt;
  return source_->PositionOf(PlaceOf(item).begin);
}

display::Json CallSource::At(int item, display::Json object) const {
  if (const auto position = PositionOf(item)) {
    object["line"] = position->line;
    object["column"] = position->column;
  }
  return object;
}

bool CallSource::Silences(std::string_view advice) const {
  if (!source_) return false;
  const std::u16string name = calculation::ToUtf16(advice);
  const std::u16string_view text = source_->text();
  std::size_t end = std::min(text.find_first_of(u"\r\n", place_.begin), text.size());
  while (true) {
    const std::size_t begin = end == 0 ? 0 : text.find_last_of(u"\r\n", end - 1) + 1;
    const std::u16string_view line = text.substr(begin, end - begin);
    if (line.find_first_not_of(u" \t") == std::u16string_view::npos) return false;
    if (workbench::Silences(line, name)) return true;
    if (begin == 0) return false;
    end = begin - 1;
    if (end > 0 && text[end] == u'\n' && text[end - 1] == u'\r') --end;
  }
}

}  // namespace workbench
