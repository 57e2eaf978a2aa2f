// Flat exports of the exception type and the constants.
#include <corvane/binding/flat.h>
#include <corvane/core/constants.h>
#include <corvane/core/numelo.h>

using namespace corvane::binding;

EXPORT void* CSharp_new_ThException__SWIG_0(int number) {
    return new ThException(number);
}
EXPORT void* CSharp_new_ThException__SWIG_1(int number, int info) {
    return new ThException(number, info);
}
EXPORT void CSharp_delete_ThException(void* self) {
    delete as<ThException>(self);
}
EXPORT int CSharp_ThException_number(void* self) {
    return ref<ThException>(self).number;
}
EXPORT void* CSharp_ThException_message(void* self) {
    return text(ref<ThException>(self).message());
}

EXPORT int CSharp_th_namelength_get() {
    return th_namelength;
}
EXPORT int CSharp_th_eqnlength_get() {
    return th_eqnlength;
}
EXPORT int CSharp_th_commlength_get() {
    return th_commlength;
}
EXPORT double CSharp_R_get() {
    return R;
}
EXPORT double CSharp_NA_get() {
    return NA;
}
EXPORT double CSharp_kB_get() {
    return kB;
}
EXPORT double CSharp_hP_get() {
    return hP;
}
EXPORT double CSharp_pref_get() {
    return pref;
}
EXPORT double CSharp_th_inc0_get() {
    return th_inc0;
}
EXPORT double CSharp_th_inc1_get() {
    return th_inc1;
}
EXPORT double CSharp_th_veps_get() {
    return th_veps;
}
EXPORT double CSharp_ran_shuffle() {
    return ran_shuffle();
}
