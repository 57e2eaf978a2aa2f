// Flat exports of the context records.
#include <corvane/binding/flat.h>
#include <corvane/classic/input/input.h>
#include <corvane/core/records.h>

using namespace corvane::binding;

EXPORT void* CSharp_new_pass1() {
    return new pass1;
}
EXPORT void CSharp_delete_pass1(void* self) {
    delete as<pass1>(self);
}
EXPORT void* CSharp_pass1_mdl1_get(void* self) {
    return handle(ref<pass1>(self).mdl1);
}
EXPORT void CSharp_pass1_mdl1_set(void* self, void* value) {
    if (self) ref<pass1>(self).mdl1 = as<Model1>(value);
}
EXPORT int CSharp_pass1_mode_get(void* self) {
    return ref<pass1>(self).mode;
}
EXPORT void CSharp_pass1_mode_set(void* self, int value) {
    if (self) ref<pass1>(self).mode = value;
}
EXPORT double CSharp_pass1_p_get(void* self) {
    return ref<pass1>(self).p;
}
EXPORT void CSharp_pass1_p_set(void* self, double value) {
    if (self) ref<pass1>(self).p = value;
}
EXPORT double CSharp_pass1_rho_get(void* self) {
    return ref<pass1>(self).rho;
}
EXPORT void CSharp_pass1_rho_set(void* self, double value) {
    if (self) ref<pass1>(self).rho = value;
}
EXPORT double CSharp_pass1_T_get(void* self) {
    return ref<pass1>(self).T;
}
EXPORT void CSharp_pass1_T_set(void* self, double value) {
    if (self) ref<pass1>(self).T = value;
}
EXPORT void* CSharp_new_passN() {
    return new passN;
}
EXPORT void CSharp_delete_passN(void* self) {
    delete as<passN>(self);
}
EXPORT void* CSharp_passN_mdlN_get(void* self) {
    return handle(ref<passN>(self).mdlN);
}
EXPORT void CSharp_passN_mdlN_set(void* self, void* value) {
    if (self) ref<passN>(self).mdlN = as<ModelN>(value);
}
EXPORT int CSharp_passN_i_get(void* self) {
    return ref<passN>(self).i;
}
EXPORT void CSharp_passN_i_set(void* self, int value) {
    if (self) ref<passN>(self).i = value;
}
EXPORT double CSharp_passN_p_get(void* self) {
    return ref<passN>(self).p;
}
EXPORT void CSharp_passN_p_set(void* self, double value) {
    if (self) ref<passN>(self).p = value;
}
EXPORT double CSharp_passN_rho_get(void* self) {
    return ref<passN>(self).rho;
}
EXPORT void CSharp_passN_rho_set(void* self, double value) {
    if (self) ref<passN>(self).rho = value;
}
EXPORT double CSharp_passN_T_get(void* self) {
    return ref<passN>(self).T;
}
EXPORT void CSharp_passN_T_set(void* self, double value) {
    if (self) ref<passN>(self).T = value;
}
EXPORT double CSharp_passN_h_get(void* self) {
    return ref<passN>(self).h;
}
EXPORT void CSharp_passN_h_set(void* self, double value) {
    if (self) ref<passN>(self).h = value;
}
EXPORT void* CSharp_passN_x_get(void* self) {
    return handle(ref<passN>(self).x);
}
EXPORT void CSharp_passN_x_set(void* self, void* value) {
    if (self) ref<passN>(self).x = as<Vector<double>>(value);
}
EXPORT void* CSharp_new_pass_ffeN() {
    return new pass_ffeN;
}
EXPORT void CSharp_delete_pass_ffeN(void* self) {
    delete as<pass_ffeN>(self);
}
EXPORT void* CSharp_pass_ffeN_m_get(void* self) {
    return handle(ref<pass_ffeN>(self).m);
}
EXPORT void CSharp_pass_ffeN_m_set(void* self, void* value) {
    if (self) ref<pass_ffeN>(self).m = as<ModelN>(value);
}
EXPORT int CSharp_pass_ffeN_mode_get(void* self) {
    return ref<pass_ffeN>(self).mode;
}
EXPORT void CSharp_pass_ffeN_mode_set(void* self, int value) {
    if (self) ref<pass_ffeN>(self).mode = value;
}
EXPORT double CSharp_pass_ffeN_p_get(void* self) {
    return ref<pass_ffeN>(self).p;
}
EXPORT void CSharp_pass_ffeN_p_set(void* self, double value) {
    if (self) ref<pass_ffeN>(self).p = value;
}
EXPORT double CSharp_pass_ffeN_T_get(void* self) {
    return ref<pass_ffeN>(self).T;
}
EXPORT void CSharp_pass_ffeN_T_set(void* self, double value) {
    if (self) ref<pass_ffeN>(self).T = value;
}
EXPORT void* CSharp_pass_ffeN_xl_get(void* self) {
    return handle(ref<pass_ffeN>(self).xl);
}
EXPORT void CSharp_pass_ffeN_xl_set(void* self, void* value) {
    if (self) ref<pass_ffeN>(self).xl = as<Vector<double>>(value);
}
EXPORT void* CSharp_new_phdesc() {
    return new phdesc;
}
EXPORT void CSharp_delete_phdesc(void* self) {
    delete as<phdesc>(self);
}
EXPORT int CSharp_phdesc_species_get(void* self) {
    return ref<phdesc>(self).species;
}
EXPORT void CSharp_phdesc_species_set(void* self, int value) {
    if (self) ref<phdesc>(self).species = value;
}
EXPORT int CSharp_phdesc_phase_get(void* self) {
    return ref<phdesc>(self).phase;
}
EXPORT void CSharp_phdesc_phase_set(void* self, int value) {
    if (self) ref<phdesc>(self).phase = value;
}
EXPORT void* CSharp_prop_str_sname_get(void* self) {
    return text(ref<prop_str>(self).sname);
}
EXPORT void CSharp_prop_str_sname_set(void* self, const char* text) {
    if (self) set_text(ref<prop_str>(self).sname, text);
}
EXPORT void* CSharp_prop_str_lname_get(void* self) {
    return text(ref<prop_str>(self).lname);
}
EXPORT void CSharp_prop_str_lname_set(void* self, const char* text) {
    if (self) set_text(ref<prop_str>(self).lname, text);
}
EXPORT void* CSharp_prop_str_unit_get(void* self) {
    return text(ref<prop_str>(self).unit);
}
EXPORT void CSharp_prop_str_unit_set(void* self, const char* text) {
    if (self) set_text(ref<prop_str>(self).unit, text);
}
EXPORT int CSharp_prop_str_dimension_get(void* self) {
    return ref<prop_str>(self).dimension;
}
