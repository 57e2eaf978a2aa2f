/* Vectors of phase descriptors in the flat interface; conventions as in flat_interface.h. */
#ifndef CORVANE_PHDESC_INTERFACE_H
#define CORVANE_PHDESC_INTERFACE_H

#include "corvane/core/api.h"

#ifdef __cplusplus
extern "C" {
#endif

/* Written by scripts/bindings from signatures.txt, up to the end of the declarations. */

/* ---- Vector<phdesc> ---- */

CORVANE_API void* CSharp_new_phdescV__SWIG_0(int n);
CORVANE_API void CSharp_delete_phdescV(void* self);
CORVANE_API int CSharp_phdescV_size(void* self);
/* Lent. */
CORVANE_API void* CSharp_phdescV_getItem__SWIG_0(void* self, int i);
CORVANE_API void CSharp_phdescV_setItemValue(void* self, int i, int species, int phase);

#ifdef __cplusplus
} /* extern "C" */
#endif

#endif
