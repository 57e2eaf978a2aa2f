// What the flat interface may do to models that C++ callers may not.
#pragma once

#include <new>

namespace corvane {

/// Runs the destructor of the base class and frees the object, as CSharp_delete_Model1 and
/// CSharp_delete_ModelN must. Members of the plug-in's own class are leaked: detach1 and detachN
/// are the way that releases everything. Null is ignored.
struct ModelAccess {
    template <class Model>
    static void destroy(Model* model) {
        if (!model) return;
        model->~Model();
        ::operator delete(model);  // unsized: the complete object is larger than Model
    }
};

}  // namespace corvane
