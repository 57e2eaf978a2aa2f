// Flat exports of vectors of phase descriptors: an addition of our own, without which a managed
// caller cannot call CSharp_equil_min.
#include <corvane/binding/flat.h>
#include <corvane/binding/phdesc_interface.h>
#include <corvane/core/records.h>

using namespace corvane::binding;

EXPORT void* CSharp_new_phdescV__SWIG_0(int n) {
    return new Vector<phdesc>(n);
}
EXPORT void CSharp_delete_phdescV(void* self) {
    delete as<Vector<phdesc>>(self);
}
EXPORT int CSharp_phdescV_size(void* self) {
    return ref<Vector<phdesc>>(self).size();
}
EXPORT void* CSharp_phdescV_getItem__SWIG_0(void* self, int i) {
    return &ref<Vector<phdesc>>(self)[i];
}
EXPORT void CSharp_phdescV_setItemValue(void* self, int i, int species, int phase) {
    ref<Vector<phdesc>>(self)[i] = {species, phase};
}
