// A file of named figures: the form in which the data tree holds a correlation.
#pragma once

#include <map>
#include <string>
#include <vector>

namespace corvane::inline detail {

/// Lines "name: words"; those that begin with # and empty ones are skipped. Every access names what
/// is missing or malformed with file and line.
class Figures {
  public:
    /// @throws OpenFailure no readable file, or larger than 1 MiB
    explicit Figures(std::string const& path);

    bool has(std::string const& name) const { return lines_.count(name) != 0; }
    /// The rest of the line. @throws OpenFailure no such line
    std::string const& text(std::string const& name) const;
    /// All words of the line as finite numbers. @throws OpenFailure also where their count is not
    /// `count`, if that is given
    std::vector<double> numbers(std::string const& name, std::size_t count = 0) const;
    double number(std::string const& name) const { return numbers(name, 1)[0]; }
    double number(std::string const& name, double otherwise) const {
        return has(name) ? number(name) : otherwise;
    }
    /// mol/m³: "<part>.rho_red", or "<part>.rho_red_mass" in kg/m³ of a substance of M g/mol.
    double reducing_density(std::string const& part, double M) const;
    [[noreturn]] void fail(std::string const& name, std::string const& what) const;

  private:
    struct Line {
        std::string text;
        int number;
    };
    std::string path_;
    std::map<std::string, Line> lines_;
};

/// Σ a_i·x^t_i; both of one length.
struct Powers {
    std::vector<double> a, t;
    Powers() = default;
    Powers(Figures const& figures, std::string const& a_name, std::string const& t_name);
    double operator()(double x) const;
};

}  // namespace corvane::inline detail
