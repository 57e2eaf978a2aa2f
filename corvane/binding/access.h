// What the flat interface may do to models that C++ callers may not.
#pragma once

#include <new>

namespace corvane::inline detail {

/// Runs the destructor of the base class and frees the object: what CSharp_delete_Model1 and
/// CSharp_delete_ModelN do with a model that no plug-in claims. Null is ignored.
struct ModelAccess {
    template <class Model>
    static void destroy(Model* model) {
        if (!model) return;
        model->Model::~Model();
        ::operator delete(model);  // unsized: the complete object is larger than Model
    }
};

}  // namespace corvane::inline detail
