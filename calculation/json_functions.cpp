// The functions of the language that work on JSON. Keys come back sorted, as FileMaker has them.

#include <algorithm>
#include <nlohmann/json.hpp>
#include <utility>

#include "calculation/built_ins.h"
#include "calculation/interruption.h"
#include "calculation/unicode.h"

namespace calculation {
namespace {

using Json = nlohmann::json;

constexpr int kDeepest = 200;
constexpr std::size_t kLongestArray = 100'000;  // that grows by an index beyond its end

enum Type : long { kRaw, kString, kNumber, kObject, kArray, kBoolean, kNull };

// What is wrong with a JSON text or a path.
class JsonError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

Json Parsed(const std::string& text) {
  try {
    return Json::parse(text, [](int depth, Json::parse_event_t, const Json&) {
      CheckInterruption();
      if (depth > kDeepest) throw JsonError("nested more than 200 levels deep");
      return true;
    });
  } catch (const Json::parse_error& error) {
    const std::string what = error.what();
    throw JsonError(what.substr(what.find("] ") + 2));  // without its class and number
  }
}

Json Parsed(std::u16string_view text) { return text.empty() ? Json() : Parsed(ToUtf8(text)); }

// A key, or what stands in brackets: the number of an element, : for the last, + for a new one.
struct Step {
  std::string name;
  bool is_element;
};

// The step in the bracket at `at`, which moves past it. A key stands in quotes there.
Step BracketedStep(const std::string& path, std::size_t& at) {
  const char quote = at + 1 < path.size() ? path[at + 1] : ']';
  const bool is_key = quote == '"' || quote == '\'';
  const std::size_t begin = at + (is_key ? 2 : 1);
  const std::size_t end = path.find(is_key ? std::string{quote, ']'} : "]", begin);
  if (end == std::string::npos) throw JsonError("a bracket of the path is not closed");
  at = end + (is_key ? 2 : 1);
  return {path.substr(begin, end - begin), !is_key};
}

// a.b[0].c; a key in brackets and quotes may hold points.
std::vector<Step> StepsOf(const std::string& path) {
  std::vector<Step> steps;
  for (std::size_t at = 0; at < path.size();) {
    if (path[at] == '.') ++at;
    const std::size_t end = std::min(path.find_first_of(".[", at), path.size());
    if (end > at || end == path.size() || path[at] == '.') {
      steps.push_back({path.substr(at, end - at), false});
      at = end;
    } else {
      steps.push_back(BracketedStep(path, at));
    }
  }
  if (steps.size() > kDeepest) throw JsonError("the path is longer than 200 steps");
  return steps;
}

std::size_t ElementOf(const Json& array, const std::string& name) {
  if (name == "+") return array.size();
  if (name == ":") return array.empty() ? 0 : array.size() - 1;
  if (name.empty() || name.find_first_not_of("0123456789") != std::string::npos) {
    throw JsonError("\"" + name + "\" is no number of an element");
  }
  return name.size() > 9 ? kLongestArray : std::stoul(name);
}

// One step on. Null if there is nothing, unless it is to be made, in place of what is no object or
// array. A key that is a number is one of an array's elements too.
Json* Go(Json& place, const Step& step, bool make) {
  if (make && step.is_element && !place.is_array()) place = Json::array();
  if (make && !place.is_structured()) place = Json::object();
  if (place.is_object()) {
    const bool is_there = !step.is_element && (make || place.contains(step.name));
    return is_there ? &place[step.name] : nullptr;
  }
  if (!place.is_array()) return nullptr;
  const std::size_t element = ElementOf(place, step.name);
  if (element >= place.size() && !make) return nullptr;
  if (element >= kLongestArray && element > place.size()) throw JsonError("the array is too long");
  return &place[element];
}

Json* Find(Json& root, std::span<const Step> steps, bool make = false) {
  Json* place = &root;
  for (const Step& step : steps) {
    if (place) place = Go(*place, step, make);
  }
  return place;
}

Json NumberOf(const Decimal& number) {
  std::string digits = number.ToText();
  const std::size_t point = digits.find('.');  // JSON wants a digit before it
  if (point == 0 || (point == 1 && digits[0] == '-')) digits.insert(point, "0");
  return Json::parse(digits);
}

Json Structured(const Value& value, Json empty) {
  Json parsed = Parsed(AsText(value));
  if (parsed.is_null()) return empty;
  if (parsed.type() != empty.type()) throw JsonError("the value is of another type");
  return parsed;
}

Json JsonOf(const Value& value, long type) {
  switch (type) {
    case kString:
      return ToUtf8(AsText(value));
    case kNumber:
      return NumberOf(AsNumber(value));
    case kObject:
      return Structured(value, Json::object());
    case kArray:
      return Structured(value, Json::array());
    case kBoolean:
      return AsTruth(value) || IsSameName(AsText(value), u"true");
    case kNull:
      return nullptr;
    default:
      break;
  }
  const std::string text = ToUtf8(AsText(value));
  if (const auto* number = std::get_if<Decimal>(&value)) return NumberOf(*number);
  return Json::accept(text) ? Parsed(text) : Json(text);
}

Text TextOf(const Json& json) {
  return ToUtf16(json.dump(-1, ' ', false, Json::error_handler_t::replace));
}

Value ValueOf(const Json& json) {
  if (json.is_string()) return Text(ToUtf16(json.get_ref<const std::string&>()));
  if (json.is_boolean()) return Truth(json.get<bool>());
  if (json.is_number()) return *Decimal::FromText(json.dump());
  return json.is_null() ? Text() : TextOf(json);
}

// A tab for each level, and everything on a line of its own.
void Format(const Json& json, const std::string& indent, std::string& text) {
  CheckInterruption();
  if (json.empty() || !json.is_structured()) {
    text += json.dump();
    return;
  }
  const std::string inner = "\r" + indent + "\t";
  const char* separator = "";
  text += json.is_object() ? "{" : "[";
  for (const auto& item : json.items()) {
    text += separator + inner;
    if (json.is_object()) text += Json(item.key()).dump() + " : ";
    if (json.is_object() && item.value().is_structured() && !item.value().empty()) text += inner;
    Format(item.value(), indent + "\t", text);
    separator = ",";
  }
  text += "\r" + indent + (json.is_object() ? "}" : "]");
}

// Does `work` with the JSON of the first argument. What is wrong is the result, behind a question
// mark.
template <class Work>
Value WithJson(const Arguments& given, Work work) {
  const Text text = given.Text(0);
  try {
    Json root = Parsed(text);
    return work(root);
  } catch (const JsonError& error) {
    return Text(ToUtf16(std::string("? ") + error.what()));
  }
}

// The same with what stands at the path of the second, if something does.
template <class Work>
Value WithElement(const Arguments& given, Work work) {
  return WithJson(given, [&](Json& root) {
    const Json* const found = Find(root, StepsOf(ToUtf8(given.Text(1))));
    return found ? work(*found) : Value();
  });
}

template <class ItemText>
Value ListOf(const Arguments& given, ItemText item_text) {
  return WithElement(given, [&](const Json& json) -> Value {
    Text list;
    if (!json.is_structured()) return list;
    const char16_t* separator = u"";
    for (const auto& item : json.items()) {
      list.Append(std::exchange(separator, u"\r"));
      list.Append(item_text(item));
    }
    return list;
  });
}

Value SetElement(const Arguments& given) {
  return WithJson(given, [&](Json& root) -> Value {
    const auto set = [&root](const Arguments& three) {
      const Text path = three.Text(0);
      const Value value = three.Get(1);
      *Find(root, StepsOf(ToUtf8(path)), true) = JsonOf(value, three.Integer(2));
    };
    if (!given.Items(1)) set(given.From(1));
    for (std::size_t i = 1; given.Items(1) && given.Has(i); ++i) set(*given.Items(i));
    return TextOf(root);
  });
}

Value DeleteElement(const Arguments& given) {
  return WithJson(given, [&](Json& root) -> Value {
    const std::vector<Step> steps = StepsOf(ToUtf8(given.Text(1)));
    if (steps.empty() || !Find(root, steps)) return TextOf(root);
    const std::string& last = steps.back().name;
    Json& parent = *Find(root, std::span(steps).first(steps.size() - 1));
    if (parent.is_array()) {
      parent.erase(ElementOf(parent, last));
    } else {
      parent.erase(last);
    }
    return TextOf(root);
  });
}

constexpr BuiltIn kJsonRows[] = {
    {u"JSONArray", "", "the type of arrays, 4", "JSONArray", [] { return kArray; }},
    {u"JSONBoolean", "", "the type of true and false, 5", "JSONBoolean", [] { return kBoolean; }},
    {u"JSONDeleteElement", "json ; path", "the JSON without what stands at the path",
     R"(JSONDeleteElement ( "{\"a\":1,\"b\":2}" ; "a" ))", DeleteElement},
    {u"JSONFormatElements", "json", "the JSON on several lines",
     R"(JSONFormatElements ( "{\"b\":[1,2],\"a\":1}" ))",
     [](const Arguments& given) {
       return WithJson(given, [](const Json& json) -> Value {
         std::string text;
         Format(json, "", text);
         return Text(ToUtf16(text));
       });
     }},
    {u"JSONGetElement", "json ; path",
     "what stands at the path: a text or a number, 1 or 0 for true and false, JSON for the rest",
     R"(JSONGetElement ( "{\"a\":[1,{\"b\":\"c\"}]}" ; "a[1].b" ))",
     [](const Arguments& given) { return WithElement(given, ValueOf); }},
    {u"JSONListKeys", "json ; path", "the keys of an object or the numbers of an array's elements",
     R"(JSONListKeys ( "{\"b\":1,\"a\":2}" ; "" ))",
     [](const Arguments& given) {
       return ListOf(given, [](const auto& item) { return Text(ToUtf16(item.key())); });
     }},
    {u"JSONListValues", "json ; path", "the values in an object or an array",
     R"(JSONListValues ( "[1,\"b\",true]" ; "" ))",
     [](const Arguments& given) {
       return ListOf(given, [](const auto& item) { return AsText(ValueOf(item.value())); });
     }},
    {u"JSONNull", "", "the type of null, 6", "JSONNull", [] { return kNull; }},
    {u"JSONNumber", "", "the type of numbers, 2", "JSONNumber", [] { return kNumber; }},
    {u"JSONObject", "", "the type of objects, 3", "JSONObject", [] { return kObject; }},
    {u"JSONRaw", "", "the type of JSON texts of every type, 0", "JSONRaw", [] { return kRaw; }},
    {u"JSONSetElement", "json ; path ; value ; type",
     "the JSON with a value at the path, which is made if it is not there; [ path ; value ; type ] "
     "lists set several",
     R"(JSONSetElement ( "" ; [ "name" ; "Ann" ; JSONString ] ; [ "ages[0]" ; 7 ; JSONNumber ] ))",
     SetElement, 3},
    {u"JSONString", "", "the type of texts, 1", "JSONString", [] { return kString; }},
};

}  // namespace

constexpr BuiltInGroup kJsonFunctions{"JSON", kJsonRows};

}  // namespace calculation
