// Where code was loaded from. Internal.
#pragma once

#ifndef __EMSCRIPTEN__
#include <dlfcn.h>
#endif

namespace corvane::inline detail {

/// The file of the library or program that an address belongs to; null if the loader does not say,
/// or if there is none (WebAssembly).
inline char const* loaded_from(void const* address) {
#ifdef __EMSCRIPTEN__
    (void)address;
    return nullptr;
#else
    Dl_info where{};
    return dladdr(address, &where) ? where.dli_fname : nullptr;
#endif
}

}  // namespace corvane::inline detail
