#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace tarnix {

/// One entry of a record's field list: the JSON key, and the member that it stands for.
template <class Owner, class Value>
struct Field {
  const char* name;
  Value Owner::*member;
};

template <class Owner, class Value>
Field(const char*, Value Owner::*) -> Field<Owner, Value>;

/// A value that travels as a JSON object. `R::fields()` returns a tuple of `Field`, in the order in
/// which the fields are written; that one list serves both directions (json_codec.h). A member of
/// type `std::optional` is an optional field, every other one is required.
template <class R>
concept Record = requires {
  R::fields();
};

/// How a type travels as a JSON string: specialise it with `toString(value)`, giving something that
/// a string view can be made of, and `fromString(text)`, giving an optional value.
template <class T>
struct StringCoding;

template <class T>
concept StringCoded = requires(const T& value, std::string_view text) {
  std::string_view(StringCoding<T>::toString(value));
  std::optional<T>(StringCoding<T>::fromString(text));
};

}  // namespace tarnix
