// What the handles of the certified interface are, and how its functions report. Internal.
#pragma once

#include <corvane/binding/certified_interface.h>
#include <corvane/binding/flat.h>
#include <corvane/catalogue/open.h>
#include <corvane/core/files.h>
#include <corvane/phases/report/certificate.h>
#include <corvane/phases/solid/anchored_solid.h>
#include <corvane/transport/mixture_transport.h>
#include <corvane/transport/transport.h>

#include <array>
#include <limits>
#include <memory>
#include <mutex>
#include <optional>
#include <stdexcept>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

/// The first and only base of every handle, so that all of them are freed alike.
struct CorvaneObject {
    virtual ~CorvaneObject() = default;
    virtual std::string name() const { return ""; }  ///< for the text of failures
};

struct CorvaneFluid final : CorvaneObject {
    explicit CorvaneFluid(corvane::Fluid f) : fluid(std::move(f)) {}
    std::string name() const override { return fluid.equation + " " + fluid.substance; }

    /// Opened when it is first needed.
    corvane::Transport const& transport() const;

    corvane::Fluid fluid;

  private:
    mutable std::once_flag opened_;
    mutable std::unique_ptr<corvane::Transport const> transport_;
};

struct CorvaneMixture final : CorvaneObject {
    explicit CorvaneMixture(corvane::Mixture m) : mixture(std::move(m)) {}
    std::string name() const override;

    /// The anchored solids of the first two components, null where the sublimation curve counts.
    /// Loads the data of the home when they are first needed.
    std::array<corvane::AnchoredSolid const*, 2> solids() const;
    /// Opened when it is first needed.
    corvane::MixtureTransport const& transport() const;

    corvane::Mixture mixture;

  private:
    mutable std::once_flag loaded_, opened_;
    mutable std::unique_ptr<corvane::MixtureTransport const> transport_;
    mutable std::array<std::optional<corvane::AnchoredSolid>, 2> anchored_;
};

namespace corvane::binding {

inline constexpr int kProperties = CORVANE_EVALUATIONS + 1;

/// Numbers by CorvaneProperty; not-a-number where there is none.
struct Numbers {
    Numbers() { of.fill(std::numeric_limits<double>::quiet_NaN()); }
    double& operator[](CorvaneProperty p) { return of[static_cast<std::size_t>(p)]; }

    std::array<double, kProperties> of;
};
struct ResultPhase : Numbers {
    std::vector<double> x;
};
struct ResultPoint : Numbers {
    std::vector<ResultPhase> phases;
    int flags = 0;
    std::optional<Certificate> certificate;
};
struct ResultLine {
    int kind = CORVANE_LINE_POINTS, begin = CORVANE_END_NONE, end = CORVANE_END_NONE;
    std::vector<ResultPoint> points;
};

/// An argument of the interface itself that is out of its range.
class BadArgument : public std::runtime_error {
  public:
    using std::runtime_error::runtime_error;
};

/// Within a handler: puts the exception into the record and keeps its text for Corvane_message.
void failed(CorvaneError* error, char const* operation, CorvaneObject const* object) noexcept;
void succeeded(CorvaneError* error);
[[noreturn]] void refuse_null(char const* what);

/// Runs f and reports how it went; a zero result after a failure.
template <class Object, class F>
auto certified(CorvaneError* error, char const* operation, Object const* object, F f) noexcept {
    using Result = std::invoke_result_t<F>;
    try {
        const CLocale locale;
        if constexpr (!std::is_same_v<Object, CorvaneObject>)
            if (!object) refuse_null("object");
        Result result = f();
        succeeded(error);
        return result;
    } catch (...) {
        failed(error, operation, object);
        return Result();
    }
}

/// Writes a text into a caller's buffer; returns its length.
int write(std::string const& text, char* buffer, int size);

}  // namespace corvane::binding

struct CorvaneResult final : CorvaneObject {
    std::string name() const override { return "result"; }

    std::vector<corvane::binding::ResultLine> lines;
    bool complete = true;
};
