// What is adjusted, and under which names.
#include <corvane/core/text.h>
#include <corvane/fit/evaluator.h>
#include <corvane/mixture/pair_parameters.h>
#include <corvane/text/failure.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <map>
#include <tuple>

namespace corvane::fit {
namespace {
using text::Failure;

/// A section of a parameter file as text.
template <class Write>
std::string section(Write write) {
    char* text = nullptr;
    std::size_t size = 0;
    FILE* f = open_memstream(&text, &size);
    if (!f) throw Failure("not enough memory");
    write(f);
    std::fclose(f);
    std::string result(text, size);
    std::free(text);
    return result;
}

/// The label of a value in a section: the line that changes when the value does. "" for none.
template <class Write>
std::string label(double* value, Write write) {
    const double before = *value;
    const std::string one = section(write);
    *value = before == 0.0 ? 0.123456 : before * 1.0123456;
    const std::string other = section(write);
    *value = before;
    std::string found;
    std::map<std::string, std::string> lines;
    for (std::string const& line : split(one, '\n')) {
        const std::size_t colon = line.find(':');
        if (colon != std::string::npos) lines[line.substr(0, colon)] = line;
    }
    for (std::string const& line : split(other, '\n')) {
        const std::size_t colon = line.find(':');
        if (colon == std::string::npos || lines[line.substr(0, colon)] == line) continue;
        found = found.empty() ? line.substr(0, colon) : "?";
    }
    return found == "?" ? "" : found;
}

/// Adjustable parameters: the first madj after the molar mass. One without a label of its own (in a
/// table of terms) is called by its number, "#12".
std::vector<std::pair<std::string, double*>> adjustable_of(Model1& model) {
    std::vector<std::pair<std::string, double*>> result;
    for (int i = 1; i <= model.madj() && i < model.mpar(); ++i) {
        const std::string name =
            i <= 40 ? label(model.ppar(i), [&](FILE* f) { model.par_out(f); }) : "";
        result.emplace_back(name.empty() ? "#" + std::to_string(i) : name, model.ppar(i));
    }
    return result;
}

std::vector<std::pair<std::string, double*>> adjustable_of(ModelN& model, int i, int j) {
    auto const* count = dynamic_cast<PairParameters const*>(&model);
    std::vector<std::pair<std::string, double*>> result;
    for (int k = 0; k < (count ? count->pair_parameters() : 1); ++k) {
        const std::string name =
            label(model.ppar(k, i, j), [&](FILE* f) { model.par_out(f, i, j); });
        result.emplace_back(name.empty() ? "#" + std::to_string(k) : name, model.ppar(k, i, j));
    }
    return result;
}

void refuse_taken(double const* at, std::string const& name,
                  std::vector<std::unique_ptr<Parameter>> const& parameters) {
    for (auto const& other : parameters)
        for (double const* taken : other->addresses)
            if (taken == at) throw Failure("the parameter " + name + " is adjusted twice");
}

std::size_t count_of(std::vector<DataSet> const& data) {
    std::size_t count = 0;
    for (DataSet const& set : data) count += set.points.size();
    return count;
}
std::vector<std::string> names_of(std::vector<std::pair<std::string, double*>> const& all) {
    std::vector<std::string> names;
    names.reserve(all.size());
    for (auto const& each : all) names.push_back(each.first);
    return names;
}
}  // namespace

Problem::Problem() = default;
Problem::Problem(Problem&&) noexcept = default;
Problem& Problem::operator=(Problem&&) noexcept = default;
Problem::~Problem() = default;
Problem::System::System() = default;
Problem::System::~System() = default;

std::string Problem::System::name() const {
    return (fluid ? fluid->equation : mixture->name()) + " " + substances();
}
std::string Problem::System::substances() const {
    return fluid ? fluid->substance : join(mixture->components, " + ");
}

int Problem::add(Fluid&& fluid, std::vector<DataSet> data) {
    auto system = std::make_unique<System>();
    system->evaluator = pure_evaluator(*fluid.model, count_of(data));
    system->fluid = std::move(fluid);
    system->data = std::move(data);
    systems.push_back(std::move(system));
    return static_cast<int>(systems.size()) - 1;
}

int Problem::add(Mixture&& mixture, std::vector<DataSet> data) {
    auto system = std::make_unique<System>();
    system->mixture = std::move(mixture);
    system->evaluator = mixture_evaluator(*system->mixture, count_of(data));
    system->data = std::move(data);
    systems.push_back(std::move(system));
    return static_cast<int>(systems.size()) - 1;
}

std::vector<std::string> Problem::adjustable(int system) const {
    System const& s = *systems.at(static_cast<std::size_t>(system));
    return s.fluid ? names_of(adjustable_of(*s.fluid->model)) : std::vector<std::string>{};
}
std::vector<std::string> Problem::adjustable_pair(int system) const {
    System const& s = *systems.at(static_cast<std::size_t>(system));
    return s.mixture && s.mixture->size() > 1 ? names_of(adjustable_of(*s.mixture->model, 0, 1))
                                              : std::vector<std::string>{};
}

double* Problem::address(std::string const& name, int system, int i, int j) const {
    System const& s = *systems.at(static_cast<std::size_t>(system));
    if (i >= 0 &&
        (!s.mixture || i == j || j < 0 || i >= s.mixture->size() || j >= s.mixture->size()))
        throw Failure(s.name() + ": no such pair");
    if (i < 0 && !s.fluid) throw Failure(s.name() + ": a mixture's parameters belong to its pairs");
    const auto all =
        i < 0 ? adjustable_of(*s.fluid->model) : adjustable_of(*s.mixture->model, i, j);
    for (auto const& [known, at] : all)
        if (known == name) return at;
    throw Failure(s.name() + ": no adjustable parameter " + clipped(name) + "; there are " +
                  join(names_of(all), ", "));
}

Parameter& Problem::adjust(std::string const& name, int system) {
    double* at = address(name, system, -1, -1);
    refuse_taken(at, name, parameters);
    auto p = std::make_unique<Parameter>();
    p->name = name;
    p->addresses = {at};
    p->systems = {system};
    p->start = *at;
    p->positive = *at > 0.0;
    if (p->positive) {
        p->lower = 0.1 * *at;
        p->upper = 10.0 * *at;
    }
    parameters.push_back(std::move(p));
    return *parameters.back();
}

Parameter& Problem::adjust_pair(std::string const& name, int i, int j, int system) {
    auto p = std::make_unique<Parameter>();
    p->name = name;
    p->addresses = {address(name, system, i, j)};
    p->systems = {system};
    refuse_taken(p->addresses[0], name, parameters);
    Mixture const& mixture = *systems[static_cast<std::size_t>(system)]->mixture;
    if (mixture.size() > 2)
        p->pair = mixture.components[static_cast<std::size_t>(i)] + " + " +
                  mixture.components[static_cast<std::size_t>(j)];
    p->start = *p->addresses[0];
    if (name == "kij" || name == "lij") {
        p->lower = -1.0;
        p->upper = 1.0;
    }
    if (name == "kijT") p->unit = 30.0;  // K: a tenth at ambient temperature
    parameters.push_back(std::move(p));
    return *parameters.back();
}

void Problem::share(Parameter& parameter, std::string const& name, int system, int i, int j) {
    double* at = address(name, system, i, j);
    refuse_taken(at, name, parameters);
    parameter.addresses.push_back(at);
    parameter.systems.push_back(system);
}

void Problem::choose(int system, Choice const& choice) {
    const bool pure = systems.at(static_cast<std::size_t>(system))->fluid.has_value();
    for (std::string const& name : choice.names) {
        const auto known = std::find_if(parameters.begin(), parameters.end(),
                                        [&](auto const& p) { return p->name == name; });
        const bool shared =
            std::find(choice.shared.begin(), choice.shared.end(), name) != choice.shared.end();
        if (shared && known != parameters.end()) {
            share(**known, name, system, pure ? -1 : 0, pure ? -1 : 1);
            *(*known)->addresses.back() = (*known)->start;
            continue;
        }
        Parameter& p = pure ? adjust(name, system) : adjust_pair(name, 0, 1, system);
        if (const auto at = choice.start.find(name); at != choice.start.end()) {
            *p.addresses[0] = p.start = at->second;
            if (p.positive && p.start > 0.0) {
                p.lower = 0.1 * p.start;
                p.upper = 10.0 * p.start;
            }
        }
        if (const auto at = choice.bounds.find(name); at != choice.bounds.end())
            std::tie(p.lower, p.upper) = at->second;
        if (const auto at = choice.prior.find(name); at != choice.prior.end())
            std::tie(p.prior, p.prior_width) = at->second;
    }
}

std::string Problem::label(std::size_t parameter) const {
    Parameter const& p = *parameters.at(parameter);
    const auto alike = std::count_if(parameters.begin(), parameters.end(),
                                     [&](auto const& other) { return other->name == p.name; });
    if (alike < 2) return p.name;
    return p.name + " (" +
           (p.pair.empty() ? systems.at(static_cast<std::size_t>(p.systems[0]))->substances()
                           : p.pair) +
           ")";
}

}  // namespace corvane::fit
