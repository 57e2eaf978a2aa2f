// The back pointer of a part to the model that holds it.
#pragma once

class Model1;

namespace corvane {

/// A pointer that assignment does not move: when a part of one model is assigned to that of
/// another, the data change hands and the owner stays. A part without an owner takes the other's.
class Owner {
  public:
    Owner() = default;
    Owner(Owner const&) = default;
    Owner& operator=(Owner const& other) {
        if (!model_) model_ = other.model_;
        return *this;
    }
    void set(Model1* model) { model_ = model; }
    operator Model1*() const { return model_; }
    Model1* operator->() const { return model_; }
    Model1& operator*() const { return *model_; }

  private:
    Model1* model_ = nullptr;
};

}  // namespace corvane
