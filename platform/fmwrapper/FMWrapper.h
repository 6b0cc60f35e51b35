#pragma once

// The part of FileMaker's plug-in interface that the plug-in stands on: the call block, the value
// types and their operations, and the registration of external functions.
//
// Errors: every operation takes an error object as its last argument and reports in it; none
// throws. Ownership: a value that a Constructor made is given back to its Delete; every other
// operation lends what it returns, for as long as the value that it was asked of lives. Lengths and
// positions are counted in UTF-16 code units; encoding 0 is the encoding that
// CFStringGetSystemEncoding names. Everything runs on FileMaker's main thread.

#include <cstddef>
#include <cstdint>
#include <exception>
#include <memory>
#include <new>

#pragma GCC visibility push(default)

namespace fmx {

class Data;
class DataVect;
class ExprEnv;
class FixPt;
class Locale;
class QuadChar;
class Text;

using errcode = std::int32_t;

// Set to this before a call; afterwards `code` is 0 for success, 1 for exhausted memory, 2 for any
// other failure.
struct Error {
  std::int32_t version = 1;
  std::int32_t code = 0;
};

// What FileMaker calls when a calculation evaluates an external function.
using ExternalFunction = errcode (*)(std::int16_t function_id, const ExprEnv& environment,
                                     const DataVect& parameters, Data& result);

}  // namespace fmx

// The data types of a result.
enum : std::int32_t { kFMX_TextType = 1, kFMX_NumberType = 2 };

// What FM_Text_Find returns if there is nothing to be found.
inline constexpr std::uint32_t kFMX_NotFound = 0xFFFFFFFF;

// FileMaker's messages to FMExternCallProc.
enum : std::uint8_t { kFMXT_Init = 0, kFMXT_Shutdown = 4, kFMXT_GetString = 7 };

// The call block, over the type that holds an address. FileMaker owns it.
template <class Address>
struct FMX_ExternCallBlock {
  std::int16_t version;  // of FileMaker's plug-in interface
  std::uint8_t reserved1[7];
  std::uint8_t message;
  std::uint8_t reserved2;
  std::uint8_t string;     // number of the string asked for
  std::uint32_t language;  // of the string asked for
  std::int32_t size;       // of the string buffer, in UTF-16 code units
  Address bundle;          // the plug-in's own bundle reference
  Address result;          // what the message returns, or the address of the string buffer
};

// The published layout is that of a 32-bit host.
using FMX_ExternCallBlock32 = FMX_ExternCallBlock<std::uint32_t>;
static_assert(offsetof(FMX_ExternCallBlock32, version) == 0);
static_assert(offsetof(FMX_ExternCallBlock32, message) == 9);
static_assert(offsetof(FMX_ExternCallBlock32, string) == 11);
static_assert(offsetof(FMX_ExternCallBlock32, language) == 12);
static_assert(offsetof(FMX_ExternCallBlock32, size) == 16);
static_assert(offsetof(FMX_ExternCallBlock32, bundle) == 20);
static_assert(offsetof(FMX_ExternCallBlock32, result) == 24);
static_assert(sizeof(FMX_ExternCallBlock32) == 28);

using FMX_ExternCallPtr = FMX_ExternCallBlock<std::uintptr_t>*;

extern "C" {

// An empty text.
fmx::Text* FM_Text_Constructor1(fmx::Error& error);
void FM_Text_Delete(fmx::Text* text, fmx::Error& error);
std::uint32_t FM_Text_GetSize(const fmx::Text& text, fmx::Error& error);

// `destination` becomes the `length` units of `source` from `position` on.
void FM_Text_SetText(fmx::Text& destination, const fmx::Text& source, std::uint32_t position,
                     std::uint32_t length, fmx::Error& error);

// Copies `length` units from `position` on into `buffer`, without a terminator.
void FM_Text_GetUnicode(const fmx::Text& text, char16_t* buffer, std::uint32_t position,
                        std::uint32_t length, fmx::Error& error);

// From a zero-terminated string of UTF-16 code units.
void FM_Text_AssignUnicode(fmx::Text& text, const char16_t* units, fmx::Error& error);

// From a zero-terminated byte string in `encoding`, which is 0.
void FM_Text_Assign(fmx::Text& text, const char* bytes, std::int32_t encoding, fmx::Error& error);

// The position of the first `what` at or after `position`, or kFMX_NotFound.
std::uint32_t FM_Text_Find(const fmx::Text& text, const fmx::Text& what, std::uint32_t position,
                           fmx::Error& error);

// Deletes `count` units, or as many as there are, from `position` on.
void FM_Text_DeleteText(fmx::Text& text, std::uint32_t position, std::uint32_t count,
                        fmx::Error& error);

// A value of the vector: as it is, and as text whatever its type. Fails if there is no such value.
const fmx::Data* FM_DataVect_At(const fmx::DataVect& parameters, std::uint32_t index,
                                fmx::Error& error);
const fmx::Text* FM_DataVect_AtAsText(const fmx::DataVect& parameters, std::uint32_t index,
                                      fmx::Error& error);

const fmx::Locale* FM_Data_GetLocale(const fmx::Data& data, fmx::Error& error);

// Copy the text or the number into `data`; `type` is the data type that it then has.
void FM_Data_SetAsText(fmx::Data& data, const fmx::Text& text, const fmx::Locale& locale,
                       std::int32_t type, fmx::Error& error);
void FM_Data_SetAsNumber(fmx::Data& data, const fmx::FixPt& number, std::int32_t type,
                         fmx::Error& error);

fmx::FixPt* FM_FixPt_Constructor1(std::int32_t value, std::int32_t precision, fmx::Error& error);
void FM_FixPt_AssignInt(fmx::FixPt& number, std::int32_t value, fmx::Error& error);
void FM_FixPt_Delete(fmx::FixPt* number, fmx::Error& error);

fmx::QuadChar* FM_QuadChar_Constructor2(char c1, char c2, char c3, char c4, fmx::Error& error);
void FM_QuadChar_Delete(fmx::QuadChar* characters, fmx::Error& error);

// Register a function under the plug-in's ID, and remove it; name and prototype are copied. Return
// an error code other than 0 if the function's ID is taken, or if there is no function to remove.
fmx::errcode FM_ExprEnv_RegisterExternalFunction(
    const fmx::QuadChar& plugin_id, std::int16_t function_id, const fmx::Text& name,
    const fmx::Text& prototype, std::int16_t minimum_arguments, std::int16_t maximum_arguments,
    std::uint32_t flags, fmx::ExternalFunction function, fmx::Error& error);
fmx::errcode FM_ExprEnv_UnRegisterExternalFunction(const fmx::QuadChar& plugin_id,
                                                   std::int16_t function_id, fmx::Error& error);

}  // extern "C"

namespace fmx {

// Calls an operation with a fresh error object and raises what it reports: std::bad_alloc for 1,
// std::exception for 2; any other code is ignored.
template <auto Operation, class... Arguments>
auto Call(Arguments&&... arguments) {
  struct Check {
    Error error;
    void operator()() const {
      if (error.code == 1) throw std::bad_alloc();
      if (error.code == 2) throw std::exception();
    }
  } check;
  if constexpr (std::is_void_v<decltype(Operation(arguments..., check.error))>) {
    Operation(arguments..., check.error);
    check();
  } else {
    auto returned = Operation(arguments..., check.error);
    check();
    return returned;
  }
}

// Releases a value while an exception unwinds; a failure to do so could not be reported.
template <auto Delete>
struct Deleter {
  template <class Value>
  void operator()(Value* value) const noexcept {
    Error ignored;
    Delete(value, ignored);
  }
};

using TextAutoPtr = std::unique_ptr<Text, Deleter<FM_Text_Delete>>;
using FixPtAutoPtr = std::unique_ptr<FixPt, Deleter<FM_FixPt_Delete>>;
using QuadCharAutoPtr = std::unique_ptr<QuadChar, Deleter<FM_QuadChar_Delete>>;

}  // namespace fmx

#pragma GCC visibility pop
