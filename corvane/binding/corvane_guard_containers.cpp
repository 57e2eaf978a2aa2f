// Guarded exports of the containers: the determinant, and what needs memory.
#include <corvane/binding/flat.h>
#include <corvane/binding/guard.h>
#include <corvane/core/containers.h>

using namespace corvane::binding;

EXPORT double Corvane_doubleM_det(void* self, CorvaneError* error) {
    return guard(error, {}, [&] { return ref<Matrix<double>>(self).det(); });
}

EXPORT void* Corvane_new_doubleV__SWIG_0(int n, CorvaneError* error) {
    return guard(error, {}, [&]() -> void* { return new Vector<double>(n); });
}
EXPORT void* Corvane_new_doubleV__SWIG_2(void* v, CorvaneError* error) {
    return guard(error, {{v, kConstDoubleV}},
                 [&]() -> void* { return new Vector<double>(ref<Vector<double>>(v)); });
}
EXPORT int Corvane_doubleV_size__SWIG_1(void* self, int n, CorvaneError* error) {
    return guard(error, {}, [&] { return ref<Vector<double>>(self).size(n); });
}
EXPORT void* Corvane_new_intV__SWIG_0(int n, CorvaneError* error) {
    return guard(error, {}, [&]() -> void* { return new Vector<int>(n); });
}
EXPORT void* Corvane_new_intV__SWIG_2(void* v, CorvaneError* error) {
    return guard(error, {{v, kConstIntV}},
                 [&]() -> void* { return new Vector<int>(ref<Vector<int>>(v)); });
}
EXPORT int Corvane_intV_size__SWIG_1(void* self, int n, CorvaneError* error) {
    return guard(error, {}, [&] { return ref<Vector<int>>(self).size(n); });
}
EXPORT void* Corvane_new_doubleM__SWIG_0(int rows, int cols, CorvaneError* error) {
    return guard(error, {}, [&]() -> void* { return new Matrix<double>(rows, cols); });
}
EXPORT void Corvane_doubleM_size(void* self, int rows, int cols, CorvaneError* error) {
    guard(error, {}, [&] { ref<Matrix<double>>(self).size(rows, cols); });
}
