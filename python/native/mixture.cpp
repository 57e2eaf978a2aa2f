// Mixtures: properties, flashes, bubble and dew points, curves and diagrams.
#include "arrays.h"
#include "module.h"

#include <corvane/core/files.h>
#include <corvane/mixture/pair_parameters.h>
#include <corvane/phases/solid/anchored_solid.h>
#include <corvane/phases/solid/solid_fluid.h>

#include <nanobind/stl/optional.h>
#include <nanobind/stl/string.h>
#include <nanobind/stl/vector.h>

#include <filesystem>
#include <optional>

namespace py {
namespace {
using corvane::Mixture;
using corvane::PhaseRecord;

Vector<double> row_of(Rows const& x, std::size_t i) {
    Vector<double> v(static_cast<int>(x.shape(1)));
    for (int k = 0; k < v.size(); ++k) v[k] = x(i, static_cast<std::size_t>(k));
    return v;
}

void check(Mixture const& m, Rows const& x) {
    if (x.shape(1) != static_cast<std::size_t>(m.size()))
        throw nb::value_error("the last axis of a composition has one value for every component");
}

void write(double* to, Vector<double> const& x) {
    for (int k = 0; k < x.size(); ++k) to[k] = x[k];
}

nb::tuple properties(Mixture const& m, Column T, Column rho, Rows x, int threads) {
    check(m, x);
    const std::size_t n = T.shape(0), width = std::size_t(columns_of_phase);
    same_length(n, rho.shape(0));
    same_length(n, x.shape(0));
    Out out({n, width});
    Report report(n);
    const bool finished = each<Rows_are::written_whole>(out, report, n, threads, [&](std::size_t i, double* row) {
        write_phase(row, corvane::phase_properties(*m.model, T(i), rho(i) / kMega, row_of(x, i)));
    });
    return result(out, report, finished);
}

/// phase: 1 the densest root, 2 that of lower Gibbs energy, 3 the thinnest. Not certified.
nb::tuple densities(Mixture const& m, Column T, Column p, Rows x, int phase, int threads) {
    check(m, x);
    const std::size_t n = T.shape(0);
    same_length(n, p.shape(0));
    same_length(n, x.shape(0));
    Out out({n});
    Report report(n);
    const auto root = phase == 1   ? corvane::Root::dense
                      : phase == 3 ? corvane::Root::dilute
                                   : corvane::Root::stable;
    const bool finished = each(out, report, n, threads, [&](std::size_t i, double* row) {
        if (!(T(i) > 0) || !(p(i) > 0) || !std::isfinite(T(i)) || !std::isfinite(p(i)))
            throw ThException(th_out_of_range);
        const corvane::FluidModel fluid(*m.model, row_of(x, i));
        corvane::PhaseState s;
        s.resize(fluid.size());
        if (!fluid.evaluate_at(s, p(i) / kMega, T(i), fluid.z(), root, 0))
            throw ThException(th_no_density);
        *row = s.rho * kMega;
    });
    return result(out, report, finished);
}

/// ln of the fugacity coefficients at T and density.
nb::tuple ln_phi(Mixture const& m, Column T, Column rho, Rows x, int threads) {
    check(m, x);
    const std::size_t n = T.shape(0), N = x.shape(1);
    same_length(n, rho.shape(0));
    same_length(n, x.shape(0));
    Out out({n, N});
    Report report(n);
    const bool finished = each(out, report, n, threads, [&](std::size_t i, double* row) {
        const Vector<double> rho_i = row_of(x, i) * (rho(i) / kMega);
        const double ln_Z = std::log(m.model->Z(rho_i, T(i)));
        if (!std::isfinite(ln_Z)) throw ThException(th_out_of_range);
        for (std::size_t k = 0; k < N; ++k)
            row[k] = m.model->myr(rho_i, T(i), static_cast<int>(k)) - ln_Z;
    });
    return result(out, report, finished);
}

using What = corvane::Quantity;
constexpr std::pair<What, What> kStatePairs[] = {{What::T, What::q},   {What::p, What::q},
                                                 {What::h, What::s},   {What::rho, What::u},
                                                 {What::rho, What::s}, {What::T, What::s}};

/// kind: 0 (p, T), 1 (p, h), 2 (p, s), 3 (T, rho), then the pairs of kStatePairs.
/// Columns: T, p, rho, h, s, number of phases, tpd, x_error; then N + 1 slots for phases, each of
/// fraction, rho, x.
nb::tuple flash(Mixture const& m, int kind, Column a, Column b, Rows z, int threads) {
    check(m, z);
    const std::size_t n = a.shape(0), N = z.shape(1), slot = N + 2, width = 8 + (N + 1) * slot;
    same_length(n, b.shape(0));
    same_length(n, z.shape(0));
    Out out({n, width});
    Report report(n);
    corvane::FlashOptions options;
    options.validity = &m.validity;
    const bool finished = each(out, report, n, threads, [&](std::size_t i, double* row) {
        const Vector<double> x = row_of(z, i);
        corvane::FlashResult r;
        switch (kind) {
            case 0: r = corvane::flash_pT(*m.model, a(i) / kMega, b(i), x, options); break;
            case 1: r = corvane::flash_ph(*m.model, a(i) / kMega, b(i), x, options); break;
            case 2: r = corvane::flash_ps(*m.model, a(i) / kMega, b(i), x, options); break;
            case 3: r = corvane::flash_Trho(*m.model, a(i), b(i) / kMega, x, options); break;
            default: {
                auto const& [first, second] = kStatePairs[kind - 4];
                r = corvane::mixture_state(*m.model, {first, to_library(first, a(i))},
                                          {second, to_library(second, b(i))}, x, options);
            }
        }
        if (m.ideal && !std::isfinite(r.h)) corvane::add_caloric(*m.model, x, r);
        double whole_volume = 0.0;
        for (std::size_t k = 0; k < r.phases.size(); ++k)
            whole_volume += r.fraction[k] / r.phases[k].rho;
        double const head[] = {r.T, r.p * kMega, kMega / whole_volume, r.h, r.s,
                               static_cast<double>(r.phases.size()), r.certificate.tpd,
                               r.certificate.x_error};
        std::copy(std::begin(head), std::end(head), row);
        for (std::size_t k = 0; k < r.phases.size() && k <= N; ++k) {
            double* at = row + 8 + k * slot;
            at[0] = r.fraction[k];
            at[1] = r.phases[k].rho * kMega;
            write(at + 2, r.phases[k].x);
        }
    });
    return result(out, report, finished);
}

/// Bubble or dew points. Columns: T, p, density given, density incipient, error of the value, error
/// of the compositions, then the incipient composition.
nb::tuple saturation(Mixture const& m, bool bubble, bool at_T, Column values, Rows z, int branch,
                     int threads) {
    check(m, z);
    const std::size_t n = values.shape(0), N = z.shape(1), width = 6 + N;
    same_length(n, z.shape(0));
    Out out({n, width});
    Report report(n);
    corvane::SaturationOptions options;
    options.validity = &m.validity;
    options.branch = static_cast<corvane::Branch>(branch);
    const auto kind = bubble ? corvane::Saturated::bubble : corvane::Saturated::dew;
    const bool finished = each(out, report, n, threads, [&](std::size_t i, double* row) {
        const Vector<double> x = row_of(z, i);
        const auto q = at_T ? corvane::saturation_T(*m.model, kind, values(i), x, options)
                            : corvane::saturation_p(*m.model, kind, values(i) / kMega, x, options);
        double const head[] = {q.T,
                               q.p * kMega,
                               q.given.rho * kMega,
                               q.incipient.rho * kMega,
                               q.certificate.value_error,
                               q.certificate.x_error};
        std::copy(std::begin(head), std::end(head), row);
        write(row + 6, q.incipient.x);
    });
    return result(out, report, finished);
}

// ---- curves: one call, many points; columns as described at each

Array points_of(std::vector<corvane::EnvelopePoint> const& points, int n) {
    const std::size_t width = 6 + static_cast<std::size_t>(n);
    Out out({points.size(), width});
    double* row = out.data();
    for (auto const& q : points) {
        double const head[] = {q.T, q.p * kMega, q.rho * kMega, q.rho2 * kMega,
                               q.bubble ? 1.0 : 0.0, q.unstable ? 1.0 : 0.0};
        std::copy(std::begin(head), std::end(head), row);
        for (int k = 0; k < q.y.size(); ++k) row[6 + k] = q.y[k];
        row += width;
    }
    return out.array();
}

nb::dict envelope(Mixture const& m, Column z, double p_start, double p_max, bool stability) {
    Tracing tracing;
    corvane::EnvelopeOptions options;
    options.p_start = p_start / kMega;
    options.p_max = p_max / kMega;
    options.stability = stability;
    options.progress = tracing.progress;
    const Vector<double> x = vector_of(z);
    const auto e = traced(tracing, [&] { return corvane::phase_envelope(*m.model, x, options); });
    nb::dict d;
    d["points"] = points_of(e.points, m.size());
    d["critical"] = points_of(e.critical, m.size());
    d["cricondentherm"] = points_of(e.cricondentherm, m.size());
    d["cricondenbar"] = points_of(e.cricondenbar, m.size());
    d["closed"] = e.end == corvane::EnvelopeEnd::closed;
    d["unstable"] = e.unstable;
    return d;
}

Array tie_lines(std::vector<corvane::TieLine> const& lines) {
    Out out({lines.size(), 7});
    double* row = out.data();
    for (auto const& q : lines) {
        double const values[] = {q.T, q.p * kMega, q.x, q.y, q.rho_x * kMega, q.rho_y * kMega,
                                 q.stable ? 1.0 : 0.0};
        std::copy(std::begin(values), std::end(values), row);
        row += 7;
    }
    return out.array();
}

Array phases_of(std::vector<corvane::ThreePhasePoint> const& points) {
    Out out({points.size(), 8});  // T, p, x_0 of three phases, densities
    double* row = out.data();
    for (auto const& q : points) {
        std::fill_n(row, 8, kNaN);
        row[0] = q.T;
        row[1] = q.p * kMega;
        for (std::size_t k = 0; k < 3 && k < q.phases.size(); ++k) {
            row[2 + k] = q.phases[k].x[0];
            row[5 + k] = q.phases[k].rho * kMega;
        }
        row += 8;
    }
    return out.array();
}

char const* diagram_end(corvane::CurveEnd end) {
    using E = corvane::CurveEnd;
    return end == E::pure          ? "pure"
           : end == E::critical    ? "critical"
           : end == E::three_phase ? "three_phase"
           : end == E::pressure    ? "limit"
           : end == E::cold        ? "coldest"
           : end == E::full        ? "full"
           : end == E::interrupted ? "interrupted"
                                   : "stuck";
}
char const* const kPairs[] = {"vapour_liquid", "liquid_liquid", "fluid_fluid"};

nb::dict diagram(Mixture const& m, bool at_T, double value, double limit) {
    Tracing tracing;
    corvane::DiagramOptions options;
    options.progress = tracing.progress;
    if (limit > 0 && at_T) options.p_max = limit / kMega;
    if (limit > 0 && !at_T) options.T_min = limit;
    const auto d = traced(tracing, [&] {
        return at_T ? corvane::complete_pxy(*m.model, value, options)
                    : corvane::complete_Txy(*m.model, value / kMega, options);
    });
    nb::list branches;
    for (auto const& b : d.branches) {
        nb::dict one;
        one["points"] = tie_lines(b.points);
        one["azeotropes"] = tie_lines(b.azeotropes);
        one["begin"] = diagram_end(b.begin);
        one["end"] = diagram_end(b.end);
        one["kind"] = kPairs[static_cast<int>(b.kind)];
        branches.append(one);
    }
    nb::dict all;
    all["branches"] = branches;
    all["three_phase"] = phases_of(d.three_phase);
    all["complete"] = d.complete();
    return all;
}

/// Columns: T, p, rho, stable, composition.
Array critical_points(std::vector<corvane::CriticalPoint> const& points, int n) {
    const std::size_t width = 4 + static_cast<std::size_t>(n);
    Out out({points.size(), width});
    double* row = out.data();
    for (auto const& q : points) {
        double const head[] = {q.T, q.p * kMega, q.rho * kMega, q.stable ? 1.0 : 0.0};
        std::copy(std::begin(head), std::end(head), row);
        write(row + 4, q.x);
        row += width;
    }
    return out.array();
}

/// Of a region, columns: x and y of three components, both densities, dmu, dp, tpd, x_error.
Array tie_lines(std::vector<corvane::TernaryTieLine> const& lines) {
    Out out({lines.size(), 12});
    for (std::size_t k = 0; k < lines.size(); ++k) {
        auto const& q = lines[k];
        double* row = out.row(k);
        for (std::size_t phase = 0; phase < 2; ++phase) {
            write(row + 3 * phase, q.phases[phase].x);
            row[6 + phase] = q.phases[phase].rho * kMega;
        }
        double const evidence[] = {q.dmu, q.dp, q.tpd, q.x_error};
        std::copy(std::begin(evidence), std::end(evidence), row + 8);
    }
    return out.array();
}

nb::dict ternary(Mixture const& m, double T, double p, double step, int mesh) {
    if (m.size() != 3) throw nb::value_error("ternary diagrams are for three components");
    Tracing tracing;
    corvane::TernaryOptions options;
    options.step = step;
    options.mesh = mesh;
    options.validity = &m.validity;
    options.progress = tracing.progress;
    const auto d = traced(
        tracing, [&] { return corvane::ternary_diagram(*m.model, T, p / kMega, options); });
    nb::list regions;
    for (auto const& r : d.regions) {
        nb::dict one;
        one["points"] = tie_lines(r.tie_lines);
        one["kind"] = kPairs[static_cast<int>(r.kind)];
        one["begin"] = corvane::in_words(r.begin, corvane::CurveKind::ternary);
        one["end"] = corvane::in_words(r.end, corvane::CurveKind::ternary);
        regions.append(one);
    }
    Out corners({d.three_phase.size(), 3, 4}), open({d.open.size(), 3});
    double* row = corners.data();
    for (auto const& t : d.three_phase)
        for (auto const& phase : t.phases) {
            write(row, phase.x);
            row[3] = phase.rho * kMega;
            row += 4;
        }
    for (std::size_t k = 0; k < d.open.size(); ++k) write(open.row(k), d.open[k]);
    nb::dict all;
    all["regions"] = regions;
    all["three_phase"] = corners.array();
    all["plait"] = critical_points(d.plait, 3);
    all["open"] = open.array();
    all["complete"] = d.complete();
    return all;
}

nb::list critical_lines(Mixture const& m, double p_max) {
    Tracing tracing;
    corvane::CriticalLineOptions options;
    options.p_max = p_max / kMega;
    options.progress = tracing.progress;
    options.validity = &m.validity;
    const auto lines = traced(tracing, [&] { return corvane::critical_lines(*m.model, options); });
    nb::list all;
    for (auto const& line : lines) {
        nb::dict one;
        one["points"] = critical_points(line.points, m.size());
        one["begin"] = corvane::in_words(line.begin);
        one["end"] = corvane::in_words(line.end);
        all.append(one);
    }
    return all;
}

corvane::PhaseLineOptions line_options(Mixture const& m, Tracing& tracing, double p_max) {
    corvane::PhaseLineOptions options;
    options.p_max = p_max / kMega;
    options.progress = tracing.progress;
    options.validity = &m.validity;
    return options;
}

nb::list three_phase_lines(Mixture const& m, double p_max) {
    Tracing tracing;
    const auto options = line_options(m, tracing, p_max);
    nb::list all;
    for (auto const& line :
         traced(tracing, [&] { return corvane::three_phase_lines(*m.model, options); }))
        all.append(phases_of(line.points));
    return all;
}

/// Columns: T, p, x, both densities.
nb::list azeotropic_lines(Mixture const& m, double p_max) {
    Tracing tracing;
    const auto options = line_options(m, tracing, p_max);
    nb::list all;
    for (auto const& line :
         traced(tracing, [&] { return corvane::azeotropic_lines(*m.model, options); })) {
        Out out({line.points.size(), 5});
        double* row = out.data();
        for (auto const& q : line.points) {
            double const values[] = {q.T, q.p * kMega, q.x, q.dense.rho * kMega,
                                     q.light.rho * kMega};
            std::copy(std::begin(values), std::end(values), row);
            row += 5;
        }
        all.append(out.array());
    }
    return all;
}

/// The solids of both components: anchored at their melting points where those are known, else from
/// their sublimation curves. One without data does not freeze.
struct Solids {
    Solids(Mixture const& m, int solid) {
        if (m.size() != 2) throw nb::value_error("solids are for binaries");
        if (solid < 0 || solid > 1) throw nb::index_error("no such component");
        const corvane::ReadingFrom from(m.home.names());
        for (int i = 0; i < 2; ++i) {
            Model1& model = *m.model->mdl1[i];
            const bool curve = std::filesystem::exists(m.home.file(std::string("CorvaneS/solid/") + model.name()));
            if (curve) model.solid.load();
            try {
                anchored[i].emplace(model, corvane::load_fusion(model.name()));
                options.anchored[i] = &*anchored[i];
            } catch (ThException const& e) {
                if (e.number != th_no_solid) throw;
                if (!curve && i == solid)
                    throw nb::value_error(("no solid data of " + std::string(model.name())).c_str());
            }
        }
        options.validity = &m.validity;
    }
    std::array<std::optional<corvane::AnchoredSolid>, 2> anchored;
    corvane::SolidFluidOptions options;
};

void write(double* row, corvane::SolidFluidPoint const& q) {
    double const values[] = {q.T, q.p * kMega, q.rho * kMega, q.rho_solid * kMega,
                             q.stable ? 1.0 : 0.0, q.x[0], q.x[1]};
    std::copy(std::begin(values), std::end(values), row);
}

/// The stable fluid above a solid. Columns: T, p, rho, rho of the solid, stable, x of both.
nb::tuple solubility(Mixture const& m, int solid, Column T, Column p, int threads) {
    same_length(T.shape(0), p.shape(0));
    const std::size_t n = T.shape(0);
    const Solids solids(m, solid);
    Out out({n, 7});
    Report report(n);
    const bool finished = each(out, report, n, threads, [&](std::size_t i, double* row) {
        write(row, corvane::solubility(*m.model, solid, p(i) / kMega, T(i), solids.options));
    });
    return result(out, report, finished);
}

/// The lines of fluids above a solid at one T or p, columns as of solubility.
nb::list solid_lines(Mixture const& m, int solid, bool at_T, double value, double p_max) {
    Tracing tracing;
    Solids solids(m, solid);
    solids.options.p_max = p_max / kMega;
    solids.options.progress = tracing.progress;
    const auto lines = traced(tracing, [&] {
        return at_T ? corvane::solid_fluid_isotherm(*m.model, solid, value, solids.options)
                    : corvane::solid_fluid_isobar(*m.model, solid, value / kMega, solids.options);
    });
    nb::list all;
    for (auto const& line : lines) {
        Out out({line.points.size(), 7});
        for (std::size_t i = 0; i < line.points.size(); ++i) write(out.row(i), line.points[i]);
        nb::dict one;
        one["points"] = out.array();
        one["begin"] = corvane::in_words(line.begin, corvane::CurveKind::solid);
        one["end"] = corvane::in_words(line.end, corvane::CurveKind::solid);
        all.append(one);
    }
    return all;
}

void check_pair(Mixture const& m, int i, int j) {
    if (i < 0 || j < 0 || i >= m.size() || j >= m.size() || i == j)
        throw nb::index_error("no such pair");
}

/// Of a model that does not tell how many parameters a pair has, the first one alone.
void check_parameter(Mixture const& m, int k, int i, int j) {
    check_pair(m, i, j);
    auto const* known = dynamic_cast<corvane::PairParameters const*>(m.model.get());
    if (k < 0 || k >= (known ? known->pair_parameters() : 1) || !m.model->ppar(k, i, j))
        throw nb::index_error("no such parameter");
}

Model1& component(Mixture const& m, int i) {
    if (i < 0 || i >= m.size()) throw nb::index_error("no such component");
    return *m.model->mdl1[i];
}

using MixtureClass = nb::class_<Mixture>;

void add_data(MixtureClass& of) {
    of.def_static("open",
                    [](std::string const& model, std::vector<std::string> const& components,
                       std::vector<int> const& sets, int pair_set, bool estimate,
                       std::optional<std::string> const& home) {
                        corvane::MixtureOptions options;
                        options.sets = sets;
                        options.pair_set = pair_set;
                        options.estimate = estimate;
                        options.home = home_of(home);
                        return corvane::open_mixture(model, components, options);
                    },
                    nb::arg("model"), nb::arg("components"), nb::arg("sets"), nb::arg("pair_set"),
                    nb::arg("estimate"), nb::arg("home").none(), "Opens a mixture by names.")
        .def_prop_ro("model", [](Mixture const& x) { return x.name(); }, "equation+theory")
        .def_prop_ro("components", [](Mixture const& x) { return x.components; }, "Names in the data tree.")
        .def_prop_ro("estimated",
                     [](Mixture const& x) {
                         nb::list pairs;
                         for (auto const& [i, j] : x.estimated) pairs.append(nb::make_tuple(i, j));
                         return pairs;
                     },
                     "Pairs without published parameters.")
        .def_prop_ro("has_ideal", [](Mixture const& x) { return x.ideal; }, "Has every component an ideal-gas table?")
        .def_prop_ro("home", [](Mixture const& x) { return x.home.directory().string(); },
                     "Directory that data are read from first.")
        .def_prop_ro("M",
                     [](Mixture const& x) {
                         std::vector<double> M;
                         for (int i = 0; i < x.size(); ++i)
                             M.push_back(1e-3 * x.model->mdl1[i]->M());
                         return M;
                     },
                     "Molar masses, kg/mol.")
        .def_prop_ro("sets",
                     [](Mixture const& x) {
                         std::vector<int> sets;
                         for (int i = 0; i < x.size(); ++i) sets.push_back(x.model->id(i, i));
                         return sets;
                     },
                     "Numbers of the components' parameter sets.");
}

void add_parameters(MixtureClass& of) {
    of.def("pair_comment",
             [](Mixture const& x, int i, int j) {
                 check_pair(x, i, j);
                 return std::string(x.model->comment(i, j));
             },
             nb::arg("i"), nb::arg("j"), "Remark on the parameters of a pair.")
        .def("pair_parameter",
             [](Mixture const& x, int k, int i, int j) {
                 check_parameter(x, k, i, j);
                 return x.model->param(k, i, j);
             },
             nb::arg("k"), nb::arg("i"), nb::arg("j"), "Parameter k of a pair.")
        .def("set_pair_parameter",
             [](Mixture& x, int k, int i, int j, double value) {
                 check_parameter(x, k, i, j);
                 x.model->param(k, i, j, value);
             },
             nb::arg("k"), nb::arg("i"), nb::arg("j"), nb::arg("value"), "Changes parameter k of a pair.")
        .def("component_parameters",
             [](Mixture const& x, int i) {
                 std::vector<double> p;
                 Model1 const& pure = component(x, i);
                 for (int k = 0; k < pure.mpar(); ++k) p.push_back(pure.param(k));
                 return p;
             },
             nb::arg("i"), "Parameters of the equation of component i, in its own units.")
        .def("set_component_parameter",
             [](Mixture& x, int i, int k, double value) {
                 Model1& pure = component(x, i);
                 if (k < 0 || k >= pure.mpar()) throw nb::index_error("no such parameter");
                 pure.param(k, value);
             },
             nb::arg("i"), nb::arg("k"), nb::arg("value"), "Changes parameter k of component i.");
}

void add_states(MixtureClass& of) {
    of.def("properties", &properties,
             "Properties (n, 17) of one phase at T (K), rho (mol/m3) and x, in SI, as of a fluid.")
        .def("densities", &densities,
             "Density roots (mol/m3) at T (K), p (Pa) and x; phase 1 the densest, 3 the thinnest, else the stable one.")
        .def("ln_phi", &ln_phi,
             "Logarithms of the fugacity coefficients (n, N) at T (K), rho (mol/m3) and x.")
        .def("flash", &flash,
             "Certified flashes; kind 0 (p, T), 1 (p, h), 2 (p, s), 3 (T, rho), 4 (T, q), 5 (p, q), 6 (h, s), 7 (rho, u), 8 (rho, s), 9 (T, s). Columns: T, p, rho, h, s, number of phases, tpd, x_error, then slots of phases: fraction, rho, x.")
        .def("saturation", &saturation,
             "Certified bubble or dew points at temperatures or pressures. Columns: T, p, rho given, rho incipient, value_error, x_error, y.");
}

void add_curves(MixtureClass& of) {
    of.def("envelope", &envelope, "A phase envelope of composition z.")
        .def("diagram", &diagram, "The complete diagram of a binary at T (K) or p (Pa).")
        .def("ternary", &ternary, "The complete diagram of a ternary at T (K) and p (Pa).")
        .def("residue_map", &residue_map, nb::arg("p"), nb::arg("step"), nb::arg("tolerance"), nb::arg("mesh"),
             "Residue curves of a ternary at p (Pa): curves with rows T, xi, x, y; singular points.")
        .def_prop_ro("critical_constants",
                     [](Mixture const& x) {
                         std::vector<std::vector<double>> all;
                         for (int i = 0; i < x.size(); ++i)
                             all.push_back({x.model->mdl1[i]->Tcrit(), kMega * x.model->mdl1[i]->pcrit()});
                         return all;
                     },
                     "Critical temperature (K) and pressure (Pa) of every component.")
        .def("property_diagram", &property_diagram_of_mixture, nb::arg("z"), nb::arg("values"), nb::arg("range"), nb::arg("points"),
             "Saturation and isolines of composition z, as of a fluid.")
        .def("critical_points",
             [](Mixture const& x, Column z, bool all) {
                 const Vector<double> v = vector_of(z);
                 corvane::CriticalOptions options;
                 options.validity = &x.validity;
                 const auto points = [&] {
                     const nb::gil_scoped_release released;
                     return all ? corvane::critical_points(*x.model, v, options)
                                : std::vector{corvane::critical_point(*x.model, v, options)};
                 }();
                 return critical_points(points, x.size());
             },
             "Certified critical points of composition z: the stable one, or all.")
        .def("solubility", &solubility, "The stable fluid above a pure solid.")
        .def("solid_lines", &solid_lines, "Lines of a fluid beside a pure solid.")
        .def("critical_lines", &critical_lines, "Certified critical lines of a binary.")
        .def("three_phase_lines", &three_phase_lines, "Lines of three phases of a binary.")
        .def("azeotropic_lines", &azeotropic_lines, "Lines of azeotropes of a binary.");
}
}  // namespace

void add_mixture(nb::module_& m) {
    MixtureClass of(m, "Mixture", "A mixture with its model; corvane.Mixture is for people.");
    add_data(of);
    add_parameters(of);
    add_states(of);
    add_curves(of);
}

}  // namespace py
