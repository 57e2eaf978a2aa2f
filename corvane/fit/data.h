// Measured points as they go into a fit: structures, and their reading from separated values.
#pragma once

#include <corvane/catalogue/home.h>
#include <corvane/text/csv.h>
#include <corvane/text/units.h>

#include <limits>
#include <string>
#include <vector>

namespace corvane::fit {

constexpr double kUnknown = std::numeric_limits<double>::quiet_NaN();

/// What a point is, and with it what is given and what the model answers.
enum class PointKind {
    saturation,     ///< pure, at T: p, rhoL, rhoV, hvap
    state,          ///< one phase at T and p (of composition x): rho, cp, w, JT
    virial,         ///< at T: B, the second virial coefficient (of composition x)
    critical,       ///< (of composition x): T, p, rho
    bubble,         ///< at T and x: p, and y of the first vapour
    dew,            ///< at T and y: p, and x of the first liquid
    liquid_liquid,  ///< at T and p: x and x2 of both liquids
    azeotrope,      ///< at T: p, and x = y
    three_phase,    ///< two or three components, at T (three: and p): p, x, x2, y
    excess,         ///< at T, p and x: hE, vE, gamma
    dilute,         ///< at T (and p, else that of saturation), in the solvent x: H, gammainf
    solubility,     ///< binary, at T and p: mole fraction of what is solid, in the fluid
};

/// What was measured and is compared. T, p and rho also are those of critical points. From x on
/// each belongs to a component.
enum class Observable {
    T,
    p,
    rho,
    rhoL,
    rhoV,
    hvap,
    cp,
    w,
    JT,
    B,
    hE,  ///< excess enthalpy
    vE,  ///< excess volume
    x,
    y,
    x2,
    gamma,       ///< activity coefficient, against the pure liquid
    gammainf,    ///< the same at infinite dilution
    H,           ///< Henry's constant, lim f/x
    solubility,  ///< mole fraction of a component in the fluid above its solid
};

/// Name of the column, "rhoL".
char const* name_of(Observable what);
text::Quantity quantity_of(Observable what);
/// Of mole fractions (and only them) deviations are differences, of all others relative.
inline bool is_fraction(Observable what) {
    return what == Observable::x || what == Observable::y || what == Observable::x2;
}
inline bool of_component(Observable what) {
    return what >= Observable::x;
}
/// May be negative, or zero.
inline bool is_signed(Observable what) {
    return what == Observable::B || what == Observable::JT || what == Observable::hE ||
           what == Observable::vE;
}

struct Observation {
    Observable what;
    double value;                   ///< library units
    double uncertainty = kUnknown;  ///< standard uncertainty in the same unit; NaN: not given
    int component = -1;             ///< of what belongs to one
};

struct Point {
    PointKind kind = PointKind::saturation;
    double T = kUnknown, p = kUnknown;  ///< K, MPa, as far as measured or given
    /// Mole fractions of the liquid (or of the only phase), the vapour, the second liquid; or
    /// empty.
    std::vector<double> x, y, x2;
    std::vector<Observation> observed;
    int phase = -1;       ///< state: 1 liquid, 3 vapour, -1 that of the measured density, or stable
    double weight = 1.0;  ///< of its squared deviations
    bool used = true;     ///< false: marked as excluded; compared, but without influence
    std::string reference;
    int line = 0;  ///< in the file; 0 none
};

struct DataSet {
    std::string name;    ///< of the file
    std::string source;  ///< its first comment
    std::vector<Point> points;
    double weight = 1.0;
    bool by_mass = false;  ///< compositions were given by mass (and are mole fractions here)
};

/// Reads measured points of one substance (a single component) or of a mixture.
///
/// The first line names the columns with their units, "T/K,p/kPa,rhoL/(kg/m3)". Known are
///   T, p, rho, rhoL, rhoV, hvap, cp, w, JT, B   (rho with T and p: a state; with T alone: refused)
///   Tc, pc, rhoc                                of the critical point
///   x_<component>, y_<component>, x2_<component>  mole fractions in liquid, vapour and second
///                                               liquid; x, y, x2 of the first component
///   w_<component>, wy_<component>, w2_<component>  the same by mass; molar masses of the data home
///   hE, vE, gamma_<component>                   of a mixture x at T and p
///   gammainf_<component>, H_<component>         of a solute in the other component, or in x
///   solubility_<component>                      of a solid, at T and p
///   u_<column>                                  standard uncertainty of a column; in its unit, or
///                                               in % ("u_p/%") of the value
///   phase (L, V), kind (a PointKind in words), weight, use (0, no, false: excluded; "x" in a
///   column `exclude` too), reference
/// Others are ignored. Lines that begin with # are comments; the first is the source.
///
/// What a row is follows from the columns that it fills: B: virial; rhoL, rhoV, hvap, or p without
/// any other property: saturation; rho, cp, w, JT: state; of mixtures x and x2: liquid_liquid, with
/// y three_phase; x: bubble, y without x: dew, x with rho: state; excess, dilute and solubility by
/// their columns. `kind` overrules: azeotropes and three phases without compositions need it.
///
/// @param components  names in the data tree   @param M  of the single component, g/mol, for units
/// with mass
/// @throws Failure naming file and line
DataSet read_data(std::string const& path, DataHome const& home,
                  std::vector<std::string> const& components, double M);

/// The same of a table that was read already, or made by a program; `name` is for messages.
DataSet read_data(std::string const& name, text::CsvFile const& table, DataHome const& home,
                  std::vector<std::string> const& components, double M);

}  // namespace corvane::fit
