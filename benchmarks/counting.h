// A model that forwards to another one and counts what it is asked.
#pragma once

#include <corvane/pure/model1.h>

class CountingModel final : public Model1 {
  public:
    explicit CountingModel(Model1& model) : model_(model) {
        eos_ = model.eos();
        mpar_ = model.mpar();
        madj_ = model.madj();
        name(model.name());
        id(model.id());
        pcrit(model.pcrit());
        Tcrit(model.Tcrit());
        vcrit(model.vcrit());
    }
    using Model1::ppar;
    double* ppar(int i) override { return model_.ppar(i); }
    void par_in(FILE* f, int mode) override { model_.par_in(f, mode); }
    void par_out(FILE* f) const override { model_.par_out(f); }
    double Ar(double rho, double T) const override {
        ++evaluations;
        return model_.Ar(rho, T);
    }
    double Z(double rho, double T) const override {
        ++evaluations;
        return model_.Z(rho, T);
    }
    int vcalc(double p, double T, int phase, double& rho1, double& rho2) const override {
        ++densities;
        return model_.vcalc(p, T, phase, rho1, rho2);
    }
    double xinit(double p, double T, int phase) const override { return model_.xinit(p, T, phase); }

    /// Takes over the density limits, sampled below the critical temperature.
    void sample_limits() {
        constexpr int kPoints = 400;
        for (Vector<double>* table : {&Ttable_, &dilute_, &dense_}) table->size(kPoints);
        for (int k = 0; k < kPoints; ++k) {
            const double s = (k - 1.0) / kPoints;
            Ttable_[k] = k == 0 ? 1e4 : Tcrit() * (1 - 0.75 * s * s);
            dilute_[k] = model_.xrho(Ttable_[k], 3);
            dense_[k] = model_.xrho(Ttable_[k], 1);
        }
    }

    mutable long evaluations = 0;  ///< calls of Ar and Z from outside the equation
    mutable long densities = 0;    ///< calls of vcalc

  private:
    Model1& model_;
};
