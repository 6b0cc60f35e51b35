#include "plugin/frame/external_function.h"

#include <charconv>
#include <cstdlib>
#include <iterator>
#include <memory>

#include "plugin/frame/string_objects.h"

namespace {

constexpr std::uint32_t kFirst = 0;
constexpr std::int32_t kNativeEncoding = 0;

// A text that takes at most this many bytes, the terminator included, becomes a result by way of
// the stack; a longer one needs a block of memory.
constexpr CFIndex kFewBytes = 64;

fmx::TextAutoPtr NewText() { return fmx::TextAutoPtr(fmx::Call<FM_Text_Constructor1>()); }

void Release(fmx::TextAutoPtr& text) { fmx::Call<FM_Text_Delete>(text.release()); }

// The last step of every function that returns text.
void HandOver(const fmx::DataVect& parameters, fmx::Data& result, const fmx::Text& text) {
  const fmx::Data* parameter = fmx::Call<FM_DataVect_At>(parameters, kFirst);
  const fmx::Locale* locale = fmx::Call<FM_Data_GetLocale>(*parameter);
  fmx::Call<FM_Data_SetAsText>(result, text, *locale, kFMX_TextType);
}

// A string object of the parameter's `length` code units, copied by way of a local text and
// `units`.
CFOwner<CFStringRef> CopyParameter(const fmx::Text& parameter, std::uint32_t length,
                                   fmx::Text& local, UniChar* units) {
  fmx::Call<FM_Text_SetText>(local, parameter, kFirst, length);
  fmx::Call<FM_Text_GetUnicode>(local, units, kFirst, length);
  return Owned(CFStringCreateWithCharacters(kCFAllocatorDefault, units, length));
}

CFOwner<CFStringRef> CopyBounded(const fmx::Text& parameter, std::uint32_t length,
                                 fmx::Text& local) {
  UniChar units[kParameterLimit];
  return CopyParameter(parameter, length, local, units);
}

CFOwner<CFStringRef> CopyUnbounded(const fmx::Text& parameter, std::uint32_t length,
                                   fmx::Text& local) {
  const std::unique_ptr<void, decltype(&std::free)> units(std::malloc(std::size_t{4} * length),
                                                          &std::free);
  if (!units) return Owned(CFStringRef{nullptr});
  return CopyParameter(parameter, length, local, static_cast<UniChar*>(units.get()));
}

fmx::errcode Run(const fmx::DataVect& parameters, fmx::Data& result, std::uint32_t limit,
                 decltype(CopyBounded)* copy, FunctionBody body) {
  fmx::TextAutoPtr local = NewText();
  fmx::TextAutoPtr result_text = NewText();
  const fmx::Text* parameter = fmx::Call<FM_DataVect_AtAsText>(parameters, kFirst);
  const std::uint32_t length = fmx::Call<FM_Text_GetSize>(*parameter);
  if (length == 0 || length > limit) {
    SetResult(*result_text, kBadParameter);
  } else if (const auto text = copy(*parameter, length, *local)) {
    body(text.get(), *result_text);
  } else {
    SetResult(*result_text, kNoMemory);
  }
  HandOver(parameters, result, *result_text);
  Release(local);
  Release(result_text);
  return 0;
}

}  // namespace

fmx::errcode RunBounded(const fmx::DataVect& parameters, fmx::Data& result, FunctionBody body) {
  return Run(parameters, result, kParameterLimit, CopyBounded, body);
}

fmx::errcode RunUnbounded(const fmx::DataVect& parameters, fmx::Data& result, FunctionBody body) {
  return Run(parameters, result, UINT32_MAX, CopyUnbounded, body);
}

fmx::errcode ReturnText(const fmx::DataVect& parameters, fmx::Data& result, const char* bytes) {
  fmx::TextAutoPtr result_text = NewText();
  SetResult(*result_text, bytes);
  HandOver(parameters, result, *result_text);
  Release(result_text);
  return 0;
}

fmx::errcode ReturnNumber(fmx::Data& result, std::int32_t number) {
  constexpr std::int32_t kPrecision = 16;
  fmx::FixPtAutoPtr value(fmx::Call<FM_FixPt_Constructor1>(0, kPrecision));
  fmx::Call<FM_FixPt_AssignInt>(*value, number);
  fmx::Call<FM_Data_SetAsNumber>(result, *value, kFMX_NumberType);
  fmx::Call<FM_FixPt_Delete>(value.release());
  return 0;
}

void SetResult(fmx::Text& result, const char* bytes) {
  fmx::Call<FM_Text_Assign>(result, bytes, kNativeEncoding);
}

void SetResult(fmx::Text& result, CFStringRef text) {
  char few[kFewBytes];
  if (MaximumByteCount(text) <= kFewBytes) {
    CFStringGetCString(text, few, kFewBytes, CFStringGetSystemEncoding());
    return SetResult(result, few);
  }
  const ByteString bytes = ToByteString(text);
  SetResult(result, bytes ? bytes.get() : kNoMemory);
}

void SetResult(fmx::Text& result, std::int32_t number) {
  char digits[16] = {};
  std::to_chars(digits, std::end(digits) - 1, number);
  SetResult(result, digits);
}
