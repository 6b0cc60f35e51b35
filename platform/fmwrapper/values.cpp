#include "platform/fmwrapper/values.h"

#include <exception>
#include <new>

#include "platform/corefoundation/encoding.h"
#include "platform/fmwrapper/FMHost.h"

namespace {

long live_values = 0;

// Runs an operation of the interface: what it throws becomes the code of the error object.
template <class Operation>
auto Guarded(fmx::Error& error, Operation operation) -> decltype(operation()) {
  try {
    return operation();
  } catch (const std::bad_alloc&) {
    error.code = 1;
  } catch (const std::exception&) {
    error.code = 2;
  }
  return decltype(operation())();
}

template <class Value, class... Members>
Value* New(fmx::Error& error, Members... members) {
  return Guarded(error, [&] {
    auto* value = new Value{std::move(members)...};
    ++live_values;
    return value;
  });
}

template <class Value>
void Delete(Value* value) {
  if (value != nullptr) --live_values;
  delete value;
}

std::u16string Decimal(std::int32_t value) {
  const std::string digits = std::to_string(value);
  return {digits.begin(), digits.end()};
}

}  // namespace

long fmx::host::LiveValues() { return live_values; }

fmx::Text* FM_Text_Constructor1(fmx::Error& error) { return New<fmx::Text>(error); }

void FM_Text_Delete(fmx::Text* text, fmx::Error& /*error*/) { Delete(text); }

std::uint32_t FM_Text_GetSize(const fmx::Text& text, fmx::Error& /*error*/) {
  return static_cast<std::uint32_t>(text.Units().size());
}

void FM_Text_SetText(fmx::Text& destination, const fmx::Text& source, std::uint32_t position,
                     std::uint32_t length, fmx::Error& error) {
  Guarded(error, [&] {
    const std::u16string_view units = source.Units().substr(position, length);
    if (units.size() == source.Units().size()) {
      destination = source;
    } else {
      destination.Set(units);
    }
  });
}

void FM_Text_GetUnicode(const fmx::Text& text, char16_t* buffer, std::uint32_t position,
                        std::uint32_t length, fmx::Error& error) {
  Guarded(error, [&] { text.Units().copy(buffer, length, position); });
}

void FM_Text_AssignUnicode(fmx::Text& text, const char16_t* units, fmx::Error& error) {
  Guarded(error, [&] { text.Set(units); });
}

void FM_Text_Assign(fmx::Text& text, const char* bytes, std::int32_t /*encoding*/,
                    fmx::Error& error) {
  Guarded(error, [&] {
    const std::string_view all(bytes);
    text.Set(all.size(), [all](char16_t* units) {
      return encoding::Decode(all, encoding::SystemEncoding(), units);
    });
  });
}

std::uint32_t FM_Text_Find(const fmx::Text& text, const fmx::Text& what, std::uint32_t position,
                           fmx::Error& /*error*/) {
  const std::size_t found = text.Units().find(what.Units(), position);
  return found == std::u16string_view::npos ? kFMX_NotFound : static_cast<std::uint32_t>(found);
}

void FM_Text_DeleteText(fmx::Text& text, std::uint32_t position, std::uint32_t count,
                        fmx::Error& error) {
  Guarded(error, [&] {
    std::u16string units(text.Units());
    text.Set(units.erase(position, count));
  });
}

const fmx::Data* FM_DataVect_At(const fmx::DataVect& parameters, std::uint32_t index,
                                fmx::Error& error) {
  return Guarded(error, [&] { return &parameters.values.at(index); });
}

const fmx::Text* FM_DataVect_AtAsText(const fmx::DataVect& parameters, std::uint32_t index,
                                      fmx::Error& error) {
  return Guarded(error, [&] { return &parameters.values.at(index).text; });
}

const fmx::Locale* FM_Data_GetLocale(const fmx::Data& data, fmx::Error& /*error*/) {
  return &data.locale;
}

void FM_Data_SetAsText(fmx::Data& data, const fmx::Text& text, const fmx::Locale& locale,
                       std::int32_t type, fmx::Error& /*error*/) {
  data.text = text;
  data.locale = locale;
  data.type = type;
}

void FM_Data_SetAsNumber(fmx::Data& data, const fmx::FixPt& number, std::int32_t type,
                         fmx::Error& error) {
  Guarded(error, [&] {
    data.text.Set(Decimal(number.value));
    data.type = type;
  });
}

fmx::FixPt* FM_FixPt_Constructor1(std::int32_t value, std::int32_t precision, fmx::Error& error) {
  return New<fmx::FixPt>(error, value, precision);
}

void FM_FixPt_AssignInt(fmx::FixPt& number, std::int32_t value, fmx::Error& /*error*/) {
  number.value = value;
}

void FM_FixPt_Delete(fmx::FixPt* number, fmx::Error& /*error*/) { Delete(number); }

fmx::QuadChar* FM_QuadChar_Constructor2(char c1, char c2, char c3, char c4, fmx::Error& error) {
  return Guarded(error, [&] { return New<fmx::QuadChar>(error, std::string{c1, c2, c3, c4}); });
}

void FM_QuadChar_Delete(fmx::QuadChar* characters, fmx::Error& /*error*/) { Delete(characters); }
