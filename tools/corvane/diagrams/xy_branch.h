// The branches of a p-x-y or T-x-y diagram in words and in a picture.
#pragma once

#include <tools/corvane/diagrams/plot.h>
#include <tools/corvane/results/mixture_points.h>

#include <corvane/phases/binary/binary_diagram.h>

#include <string>

namespace cli {

/// Which of T and p is fixed in a diagram, and where its states are drawn.
struct XyFrame {
    bool isothermal;
    Units const& units;

    char const* symbol() const { return isothermal ? "T" : "p"; }
    Quantity fixed() const { return isothermal ? Quantity::temperature : Quantity::pressure; }
    Quantity sought() const { return isothermal ? Quantity::pressure : Quantity::temperature; }
    /// The ordinate of anything with T and p.
    template <class State>
    double value(State const& state) const {
        return units.from_library(sought(), isothermal ? state.p : state.T);
    }
};

/// "pure methane", "a critical point": completes "ends at".
std::string in_words(corvane::DiagramEnd end, corvane::TieLine const& point,
                     MixtureFluid const& mixture);
char const* in_words(corvane::PhasePair kind);

/// The branch with its denser phase (by mass, where they differ most) as x.
corvane::Diagram denser_first(corvane::Diagram branch, MixtureFluid const& mixture);

/// Both curves, dashed where they are not stable, and what is marked on their stable part.
void draw(corvane::Diagram const& branch, XyFrame const& frame, Picture& picture);
void draw(corvane::ThreePhasePoint const& three, bool stable, XyFrame const& frame,
          Picture& picture);

}  // namespace cli
