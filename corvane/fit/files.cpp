// Fitted parameters in the format of the data tree.
#include <corvane/catalogue/parameter_sets.h>
#include <corvane/core/collected.h>
#include <corvane/core/file_error.h>
#include <corvane/core/files.h>
#include <corvane/core/text.h>
#include <corvane/fit/evaluator.h>
#include <corvane/text/failure.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <set>

namespace corvane::fit {
namespace {
using text::Failure;

std::string number(double x) {
    if (!std::isfinite(x)) return "-";
    char text[40];
    for (int digits = 6; digits <= 17; ++digits) {
        std::snprintf(text, sizeof text, "%.*g", digits, x);
        if (std::strtod(text, nullptr) == x) break;
    }
    return text;
}

/// Range of the points that were used, and what they say of their origin.
struct Origin {
    double Tmin = kUnknown, Tmax = kUnknown, pmax = kUnknown;
    std::string source;
};
Origin origin_of(Problem::System const& system) {
    Origin o;
    std::set<std::string> seen;
    const auto add = [&](std::string const& text) {
        if (text.empty() || !seen.insert(text).second || seen.size() > 12) return;
        o.source += (o.source.empty() ? "fitted to " : "; ") + text;
    };
    for (DataSet const& set : system.data) {
        std::set<std::string> references;
        for (Point const& p : set.points) {
            if (!p.used) continue;
            o.Tmin = std::fmin(o.Tmin, p.T);
            o.Tmax = std::fmax(o.Tmax, p.T);
            o.pmax = std::fmax(o.pmax, p.p);
            if (!p.reference.empty()) references.insert(p.reference);
        }
        if (references.empty()) add(set.source.empty() ? set.name : set.source);
        for (std::string const& reference : references) add(reference);
    }
    for (char& c : o.source)
        if (static_cast<unsigned char>(c) < 0x20 || c == 0x7f) c = ' ';
    return o;
}

std::string comment_of(std::string const& given, Problem::System const& system) {
    std::string text = given;
    if (text.empty()) {
        for (DataSet const& set : system.data)
            text += (text.empty() ? "fitted to " : ", ") + set.name;
        if (text.size() > 78) text.resize(78);
    }
    check_storable(text.c_str(), 78);
    return text;
}

int free_number(std::filesystem::path const& home, std::string const& folder,
                std::string const& name, DataHome const& others) {
    for (int n = 1; n < 10000; ++n) {
        const std::string file =
            "CorvaneS/parameters/" + folder + "/" + name + ";" + std::to_string(n);
        if (!has_data_file((home / file).string()) && !has_data_file(others.file(file).string()))
            return n;
    }
    throw Failure("no free number for a parameter set of " + name);
}

/// Writes the lines of a file, whole or not at all.
template <class Section>
void write(std::filesystem::path const& path, bool overwrite, Section section) {
    if (!overwrite && std::filesystem::exists(path))
        throw Failure(path.string() + " is there already");
    std::error_code error;
    std::filesystem::create_directories(path.parent_path(), error);
    if (error) throw Failure(path.parent_path().string() + ": " + error.message());
    try {
        const CLocale locale;
        NewFile file(path.string());
        section(file.stream());
        file.commit();
    } catch (FileError const& e) {
        throw Failure(e.what());
    }
}
}  // namespace

std::filesystem::path write_parameters(Problem const& problem, Result const& result, int system,
                                       Target const& target) {
    Problem::System const& s = *problem.systems.at(static_cast<std::size_t>(system));
    const Origin origin = origin_of(s);
    const std::string comment = comment_of(target.comment, s);
    DataHome const& home = s.fluid ? s.fluid->home : s.mixture->home;
    const bool pure = s.fluid.has_value();
    if (!pure && s.mixture->size() != 2) throw Failure("a file holds one pair");
    for (FittedParameter const& p : result.parameters)
        if (!std::isfinite(p.value)) throw Failure(p.name + " is not finite");
    const auto tail = [&](FILE* f) {
        std::fprintf(f, "source:\t%s\n", origin.source.empty() ? "-" : origin.source.c_str());
        std::fprintf(f, "valid:\t%s %s %s\n", number(origin.Tmin).c_str(),
                     number(origin.Tmax).c_str(), number(origin.pmax).c_str());
    };
    const auto path_for = [&](std::string const& folder, std::string const& name) {
        const int n = target.set > 0 ? target.set : free_number(target.home, folder, name, home);
        return std::pair(
            target.home / "CorvaneS" / "parameters" / folder / (name + ";" + std::to_string(n)), n);
    };
    if (pure) {
        Model1& model = *s.fluid->model;
        if (!renew_critical(model))
            throw Failure(s.name() +
                          ": no critical point of the equation was found at these parameters");
        const auto [path, n] = path_for(s.fluid->equation, s.fluid->substance);
        write(path, target.overwrite, [&, id = n](FILE* f) {
            std::fprintf(f, "name:\t%s\nid:\t%d\ntext:\t%s\n", s.fluid->substance.c_str(), id,
                         comment.c_str());
            std::fprintf(f, "pc:\t%.17g\nTc:\t%.17g\nvc:\t%.17g\n", model.pcrit(), model.Tcrit(),
                         model.vcrit());
            model.par_out(f);
            tail(f);
            ParameterNotes const& notes = s.fluid->notes;
            std::fprintf(f, "measured:\t%s %s %s\n", number(notes.Tc).c_str(),
                         number(notes.pc).c_str(), number(notes.vc).c_str());
        });
        return path;
    }
    ModelN& model = *s.mixture->model;
    auto const& names = s.mixture->components;
    const auto [path, n] =
        path_for(*s.mixture->equation + "/" + *s.mixture->theory, names[0] + "+" + names[1]);
    write(path, target.overwrite, [&, id = n](FILE* f) {
        for (int i = 0; i < 2; ++i)
            std::fprintf(f, "name%d:\t%s\nid%d:\t%d\n", i + 1,
                         names[static_cast<std::size_t>(i)].c_str(), i + 1, model.mdl1[i]->id());
        std::fprintf(f, "id:\t%d\ntext:\t%s\n", id, comment.c_str());
        model.par_out(f, 0, 1);
        tail(f);
    });
    return path;
}

}  // namespace corvane::fit
