// Flat exports of the containers.
#include <corvane/binding/flat.h>
#include <corvane/core/containers.h>

using namespace corvane::binding;

EXPORT void* CSharp_new_doubleV__SWIG_0(int n) {
    return new Vector<double>(n);
}
EXPORT void* CSharp_new_doubleV__SWIG_1() {
    return new Vector<double>;
}
EXPORT void* CSharp_new_doubleV__SWIG_2(void* v) {
    if (is_null(v, kConstDoubleV)) return nullptr;
    return new Vector<double>(ref<Vector<double>>(v));
}
EXPORT void CSharp_delete_doubleV(void* self) {
    delete as<Vector<double>>(self);
}
EXPORT int CSharp_doubleV_size__SWIG_0(void* self) {
    return ref<Vector<double>>(self).size();
}
EXPORT int CSharp_doubleV_size__SWIG_1(void* self, int n) {
    return ref<Vector<double>>(self).size(n);
}
EXPORT double* CSharp_doubleV_first__SWIG_0(void* self) {
    return &ref<Vector<double>>(self).first();
}
EXPORT double* CSharp_doubleV_last__SWIG_0(void* self) {
    return &ref<Vector<double>>(self).last();
}
EXPORT double* CSharp_doubleV_getItem__SWIG_0(void* self, int i) {
    return &ref<Vector<double>>(self)[i];
}
EXPORT double CSharp_doubleV_getItemValue(void* self, int i) {
    return ref<Vector<double>>(self)[i];
}
EXPORT void CSharp_doubleV_setItemValue(void* self, int i, double x) {
    ref<Vector<double>>(self)[i] = x;
}
EXPORT int CSharp_doubleV_find_idx(void* self, int* key) {
    if (is_null(key, kKey)) return 0;
    return ref<Vector<double>>(self).find_idx(static_cast<MthKey::mth_key>(*key));
}
EXPORT double CSharp_doubleV_find_val(void* self, int* key) {
    if (is_null(key, kKey)) return 0;
    return ref<Vector<double>>(self).find_val(static_cast<MthKey::mth_key>(*key));
}
EXPORT void CSharp_doubleV_func(void* self, double (*f)(double)) {
    ref<Vector<double>>(self).func(f);
}
EXPORT double CSharp_doubleV_polynomial(void* self, double x) {
    return ref<Vector<double>>(self).polynomial(x);
}
EXPORT int CSharp_doubleV_print__SWIG_0(void* self, FILE* f, const char* head, const char* fmt,
                                        const char* tail) {
    return ref<Vector<double>>(self).print(f, head, fmt, tail);
}
EXPORT int CSharp_doubleV_print__SWIG_1(void* self, FILE* f, const char* fmt) {
    return ref<Vector<double>>(self).print(f, fmt);
}
EXPORT int CSharp_doubleV_read(void* self, FILE* f, const char* fmt) {
    return ref<Vector<double>>(self).read(f, fmt);
}
EXPORT void CSharp_doubleV_ramp(void* self, double start, double step) {
    ref<Vector<double>>(self).ramp(start, step);
}
EXPORT void CSharp_doubleV_set(void* self, double x) {
    ref<Vector<double>>(self).set(x);
}
EXPORT double CSharp_doubleV_sum(void* self) {
    return ref<Vector<double>>(self).sum();
}
EXPORT double CSharp_doubleV_sum2(void* self) {
    return ref<Vector<double>>(self).sum2();
}
EXPORT void CSharp_doubleV_urand(void* self) {
    ref<Vector<double>>(self).urand();
}

EXPORT void* CSharp_new_intV__SWIG_0(int n) {
    return new Vector<int>(n);
}
EXPORT void* CSharp_new_intV__SWIG_1() {
    return new Vector<int>;
}
EXPORT void* CSharp_new_intV__SWIG_2(void* v) {
    if (is_null(v, kConstIntV)) return nullptr;
    return new Vector<int>(ref<Vector<int>>(v));
}
EXPORT void CSharp_delete_intV(void* self) {
    delete as<Vector<int>>(self);
}
EXPORT int CSharp_intV_size__SWIG_0(void* self) {
    return ref<Vector<int>>(self).size();
}
EXPORT int CSharp_intV_size__SWIG_1(void* self, int n) {
    return ref<Vector<int>>(self).size(n);
}
EXPORT int* CSharp_intV_first__SWIG_0(void* self) {
    return &ref<Vector<int>>(self).first();
}
EXPORT int* CSharp_intV_last__SWIG_0(void* self) {
    return &ref<Vector<int>>(self).last();
}
EXPORT int* CSharp_intV_getItem__SWIG_0(void* self, int i) {
    return &ref<Vector<int>>(self)[i];
}
EXPORT int CSharp_intV_getItemValue(void* self, int i) {
    return ref<Vector<int>>(self)[i];
}
EXPORT void CSharp_intV_setItemValue(void* self, int i, int x) {
    ref<Vector<int>>(self)[i] = x;
}
EXPORT int CSharp_intV_find_idx(void* self, int* key) {
    if (is_null(key, kKey)) return 0;
    return ref<Vector<int>>(self).find_idx(static_cast<MthKey::mth_key>(*key));
}
EXPORT int CSharp_intV_find_val(void* self, int* key) {
    if (is_null(key, kKey)) return 0;
    return ref<Vector<int>>(self).find_val(static_cast<MthKey::mth_key>(*key));
}
EXPORT void CSharp_intV_func(void* self, int (*f)(int)) {
    ref<Vector<int>>(self).func(f);
}
EXPORT int CSharp_intV_polynomial(void* self, int x) {
    return ref<Vector<int>>(self).polynomial(x);
}
EXPORT int CSharp_intV_print__SWIG_0(void* self, FILE* f, const char* head, const char* fmt,
                                     const char* tail) {
    return ref<Vector<int>>(self).print(f, head, fmt, tail);
}
EXPORT int CSharp_intV_print__SWIG_1(void* self, FILE* f, const char* fmt) {
    return ref<Vector<int>>(self).print(f, fmt);
}
EXPORT int CSharp_intV_read(void* self, FILE* f, const char* fmt) {
    return ref<Vector<int>>(self).read(f, fmt);
}
EXPORT void CSharp_intV_ramp(void* self, int start, int step) {
    ref<Vector<int>>(self).ramp(start, step);
}
EXPORT void CSharp_intV_set(void* self, int x) {
    ref<Vector<int>>(self).set(x);
}
EXPORT int CSharp_intV_sum(void* self) {
    return ref<Vector<int>>(self).sum();
}
EXPORT int CSharp_intV_sum2(void* self) {
    return ref<Vector<int>>(self).sum2();
}

EXPORT void* CSharp_new_doubleM__SWIG_0(int rows, int cols) {
    return new Matrix<double>(rows, cols);
}
EXPORT void* CSharp_new_doubleM__SWIG_1(int rows) {
    return new Matrix<double>(rows);
}
EXPORT void* CSharp_new_doubleM__SWIG_2() {
    return new Matrix<double>;
}
EXPORT void CSharp_delete_doubleM(void* self) {
    delete as<Matrix<double>>(self);
}
EXPORT int CSharp_doubleM_rows(void* self) {
    return ref<Matrix<double>>(self).rows();
}
EXPORT int CSharp_doubleM_cols(void* self) {
    return ref<Matrix<double>>(self).cols();
}
EXPORT void CSharp_doubleM_size(void* self, int rows, int cols) {
    ref<Matrix<double>>(self).size(rows, cols);
}
EXPORT void* CSharp_doubleM_I(void* self) {
    return &ref<Matrix<double>>(self).I();
}
EXPORT double CSharp_doubleM_det(void* self) {
    return translate<MthException>([&] { return ref<Matrix<double>>(self).det(); });
}
