// Helpers of the flat exports: handles, null refusals, exception translation, strings. Internal.
//
// Objects cross as the address of a heap object, references to numbers as the address of the
// number. Every export forwards to one operation of the library and computes nothing itself.
// Exceptions are translated only where an operation is declared as raising; everywhere else they
// leave the function, so no export may be noexcept.
#pragma once

#include <corvane/binding/flat_interface.h>
#include <corvane/core/errors.h>

#include <type_traits>

#define EXPORT extern "C" CORVANE_API

namespace corvane::binding {

template <class T>
T* as(void* handle) {
    return static_cast<T*>(handle);
}
template <class T>
T& ref(void* handle) {
    return *static_cast<T*>(handle);
}
/// A borrowed object as a handle.
template <class T>
void* handle(T const* object) {
    return const_cast<T*>(object);
}

// What the refusal of a null argument says: the parameter's type.
inline constexpr char kConstDoubleV[] = "Vector< double > const & type is null";
inline constexpr char kDoubleV[] = "Vector< double > & type is null";
inline constexpr char kConstIntV[] = "Vector< int > const & type is null";
inline constexpr char kIntV[] = "Vector< int > & type is null";
inline constexpr char kDoubleM[] = "Matrix< double > & type is null";
inline constexpr char kConstPhdescV[] = "Vector< phdesc > const & type is null";
inline constexpr char kLevel[] = "ft_level & type is null";
inline constexpr char kKey[] = "Attempt to dereference null MthKey::mth_key";

/// Reports through the registered callbacks; does nothing where none is registered.
void report_exception(char const* message);
void report_null_argument(char const* message);
/// What the string callback returns for the text (null is passed on); null where none is
/// registered.
void* text(char const* s);

/// True, after a report, if the argument is null.
inline bool is_null(void const* argument, char const* message) {
    if (argument) return false;
    report_null_argument(message);
    return true;
}

template <class Exception>
constexpr char const* kThrown = "C++ ThException exception thrown";
template <>
inline constexpr char const* kThrown<MthException> = "C++ MthException exception thrown";

/// Runs f; one of the named exceptions is reported and a zero result returned. Others pass.
template <class Exception, class F>
auto translate(F f) {
    using Result = std::invoke_result_t<F>;
    try {
        return f();
    } catch (Exception const&) {
        report_exception(kThrown<Exception>);
    }
    if constexpr (!std::is_void_v<Result>) return Result();
}
template <class First, class Second, class F>
auto translate(F f) {
    return translate<First>([&] { return translate<Second>(f); });
}

/// A heap copy of a text, or null; never freed by the library.
char const* copy_text(char const* s);
inline void set_text(char const*& field, char const* s) {
    field = copy_text(s);
}

/// Copies a part (ideal gas, solid, viscosity) into a model; the copy names its new owner.
template <class Part, class Model>
void set_part(Part& member, Part const& value, Model* owner) {
    member = value;
    member.model(owner);
}

}  // namespace corvane::binding
