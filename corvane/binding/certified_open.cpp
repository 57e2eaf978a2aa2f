// The certified interface: opening, texts and numbers of models, failures.
#include <corvane/binding/certified.h>
#include <corvane/binding/guard.h>
#include <corvane/core/text.h>
#include <corvane/phases/report/certificate.h>
#include <corvane/solid/fusion.h>

#include <algorithm>
#include <cstring>

using namespace corvane::binding;

namespace {
thread_local std::string last_failure;

struct NullArgument {
    char const* what;
};

corvane::Mixture const& mixture_of(CorvaneMixture const* m, int i) {
    if (i < 0 || i >= m->mixture.size()) throw BadArgument("no component " + std::to_string(i));
    return m->mixture;
}

double number_of(int what, Model1 const& model, corvane::Validity const& range, bool ideal) {
    constexpr double nan = std::numeric_limits<double>::quiet_NaN();
    const auto stated = [](double x, double unknown) { return x == unknown ? nan : x; };
    switch (what) {
        case CORVANE_MOLAR_MASS: return model.M();
        case CORVANE_T_CRITICAL: return model.Tcrit();
        case CORVANE_P_CRITICAL: return model.pcrit();
        case CORVANE_RHO_CRITICAL: return 1.0 / model.vcrit();
        case CORVANE_PARAMETER_SET: return model.id();
        case CORVANE_T_MIN: return stated(range.T_min, 0.0);
        case CORVANE_T_MAX: return stated(range.T_max, corvane::Validity::unknown);
        case CORVANE_P_MAX: return stated(range.p_max, corvane::Validity::unknown);
        case CORVANE_HAS_IDEAL: return ideal ? 1.0 : 0.0;
        default: throw BadArgument("no number " + std::to_string(what));
    }
}
}  // namespace

namespace corvane::binding {

void refuse_null(char const* what) {
    throw NullArgument{what};
}

void succeeded(CorvaneError* error) {
    record(error, CORVANE_OK, 0, -1, "");
}

void failed(CorvaneError* error, char const* operation, CorvaneObject const* object) noexcept {
    int kind = CORVANE_UNKNOWN, number = 0, info = -1;
    std::string text;
    try {
        const std::string name = object ? object->name() : "";
        // Who refuses by number does not say what was asked.
        const std::string asked = std::string(operation) + (name.empty() ? "" : ", " + name) + ": ";
        try {
            throw;
        } catch (OpenFailure const& e) {
            kind = CORVANE_NOT_OPENED;
            text = e.what();
        } catch (EquilibriumFailure const& e) {
            kind = e.kind() == EquilibriumFailure::Kind::no_solution ? CORVANE_NO_SOLUTION
                                                                     : CORVANE_GAVE_UP;
            text = (name.empty() ? "" : name + ": ") + e.what();
        } catch (BadArgument const& e) {
            kind = CORVANE_BAD_ARGUMENT;
            text = asked + e.what();
        } catch (NullArgument const& e) {
            kind = CORVANE_NULL_ARGUMENT;
            text = asked + "the " + e.what + " is null";
        } catch (FileError const& e) {
            kind = CORVANE_THERMODYNAMIC, number = e.number, info = e.info;
            text = asked + trimmed(ThException(e.number).message()) + ": " + e.what();
        } catch (ThException const& e) {
            kind = CORVANE_THERMODYNAMIC, number = e.number, info = e.info;
            text = asked + trimmed(ThException(e.number).message());
        } catch (MthException const& e) {
            kind = CORVANE_NUMERICAL, number = e.number, info = e.info;
            text = asked + trimmed(MthException(e.number).message());
        } catch (std::bad_alloc const&) {
            kind = CORVANE_NO_MEMORY;
            text = "out of memory";
        } catch (std::exception const& e) {
            text = asked + e.what();
        } catch (...) {
            text = asked + "unknown failure";
        }
    } catch (...) {  // no memory for the words
    }
    record(error, kind, number, info, text.c_str());
    last_failure.swap(text);
}

int write(std::string const& text, char* buffer, int size) {
    if (buffer && size > 0) {
        const std::size_t most = std::min(text.size(), static_cast<std::size_t>(size - 1));
        std::memcpy(buffer, text.data(), most);
        buffer[most] = '\0';
    }
    return static_cast<int>(text.size());
}

}  // namespace corvane::binding

std::string CorvaneMixture::name() const {
    return mixture.name() + " " + corvane::join(mixture.components, ", ");
}

std::array<corvane::AnchoredSolid const*, 2> CorvaneMixture::solids() const {
    std::call_once(loaded_, [&] {
        const corvane::ReadingFrom from(mixture.home.names());
        for (int i = 0; i < 2 && i < mixture.size(); ++i) {
            Model1& model = *mixture.model->mdl1[i];
            std::string const& name = mixture.components[static_cast<unsigned>(i)];
            std::error_code error;
            if (std::filesystem::exists(mixture.home.file("CorvaneS/solid/" + name), error))
                model.solid.load();
            try {
                anchored_[static_cast<unsigned>(i)].emplace(model, corvane::load_fusion(name));
            } catch (ThException const& e) {
                if (e.number != th_no_solid) throw;  // else there is no such row
            }
        }
    });
    const auto of = [](auto const& solid) { return solid ? &*solid : nullptr; };
    return {of(anchored_[0]), of(anchored_[1])};
}

EXPORT CorvaneFluid* Corvane_open(const char* equation, const char* substance, int set,
                                  const char* home, CorvaneError* error) {
    return certified<CorvaneObject>(error, "open", nullptr, [&] {
        if (!substance) refuse_null("substance");
        if (set < 0) throw BadArgument("no set " + std::to_string(set));
        corvane::FluidOptions options;
        options.set = set;
        if (home) options.home = corvane::DataHome(home);
        return new CorvaneFluid(corvane::open(equation ? equation : "", substance, options));
    });
}

EXPORT CorvaneMixture* Corvane_open_mixture(const char* model, int count,
                                            const char* const* components, const int* sets,
                                            int pair_set, int estimate, const char* home,
                                            CorvaneError* error) {
    return certified<CorvaneObject>(error, "open_mixture", nullptr, [&] {
        if (!model) refuse_null("model");
        if (count < 1) throw BadArgument("a mixture needs components");
        if (!components) refuse_null("list of components");
        if (pair_set < 0) throw BadArgument("no pair set " + std::to_string(pair_set));
        std::vector<std::string> names;
        for (int i = 0; i < count; ++i) {
            if (!components[i]) refuse_null("name of a component");
            names.emplace_back(components[i]);
        }
        corvane::MixtureOptions options;
        if (sets) options.sets.assign(sets, sets + count);
        if (pair_set > 0) options.pair_set = pair_set;
        options.estimate = estimate != 0;
        options.predict = estimate != 2;
        if (home) options.home = corvane::DataHome(home);
        return new CorvaneMixture(corvane::open_mixture(model, names, options));
    });
}

EXPORT void Corvane_release(void* handle) {
    delete as<CorvaneObject>(handle);
}

EXPORT int Corvane_message(char* buffer, int size) {
    return write(last_failure, buffer, size);
}

EXPORT int Corvane_Fluid_text(const CorvaneFluid* fluid, int what, char* buffer, int size,
                              CorvaneError* error) {
    return certified(error, "text", fluid, [&] {
        corvane::Fluid const& f = fluid->fluid;
        switch (what) {
            case CORVANE_TEXT_MODEL: return write(f.equation, buffer, size);
            case CORVANE_TEXT_SUBSTANCE: return write(f.substance, buffer, size);
            case CORVANE_TEXT_SOURCE: return write(f.notes.source, buffer, size);
            case CORVANE_TEXT_HOME: return write(f.home.directory().string(), buffer, size);
            default: throw BadArgument("no text " + std::to_string(what));
        }
    });
}

EXPORT int Corvane_Mixture_text(const CorvaneMixture* mixture, int what, int i, char* buffer,
                                int size, CorvaneError* error) {
    return certified(error, "text", mixture, [&] {
        corvane::Mixture const& m = mixture_of(mixture, i);
        switch (what) {
            case CORVANE_TEXT_MODEL: return write(m.name(), buffer, size);
            case CORVANE_TEXT_SUBSTANCE:
                return write(m.components[static_cast<unsigned>(i)], buffer, size);
            case CORVANE_TEXT_SOURCE:
                return write(corvane::parameter_notes(
                                 m.home, *m.equation, m.components[static_cast<unsigned>(i)],
                                 m.model->mdl1[i]->id())
                                 .source,
                             buffer, size);
            case CORVANE_TEXT_HOME: return write(m.home.directory().string(), buffer, size);
            default: throw BadArgument("no text " + std::to_string(what));
        }
    });
}

EXPORT double Corvane_Fluid_number(const CorvaneFluid* fluid, int what, CorvaneError* error) {
    return certified(error, "number", fluid, [&] {
        corvane::Fluid const& f = fluid->fluid;
        corvane::Validity range;
        range.T_min = f.notes.Tmin, range.T_max = f.notes.Tmax, range.p_max = f.notes.pmax;
        return number_of(what, *f.model, range, f.ideal.has_value());
    });
}

EXPORT double Corvane_Mixture_number(const CorvaneMixture* mixture, int what, int i,
                                     CorvaneError* error) {
    return certified(error, "number", mixture, [&] {
        corvane::Mixture const& m = mixture_of(mixture, i);
        return number_of(what, *m.model->mdl1[i], m.validity, m.ideal);
    });
}

EXPORT int Corvane_Mixture_size(const CorvaneMixture* mixture) {
    return mixture ? mixture->mixture.size() : 0;
}

EXPORT int Corvane_Mixture_estimated(const CorvaneMixture* mixture, int i, int j,
                                     CorvaneError* error) {
    return certified(error, "estimated", mixture, [&] {
        mixture_of(mixture, i);
        const std::pair<int, int> pair(std::min(i, j), std::max(i, j));
        int found = 0;
        for (auto const& estimated : mixture_of(mixture, j).estimated)
            if (estimated == pair) found = 1;
        return found;
    });
}

EXPORT void* Corvane_Fluid_model(const CorvaneFluid* fluid) {
    return fluid ? fluid->fluid.model.get() : nullptr;
}

EXPORT void* Corvane_Mixture_model(const CorvaneMixture* mixture) {
    return mixture ? mixture->mixture.model.get() : nullptr;
}
