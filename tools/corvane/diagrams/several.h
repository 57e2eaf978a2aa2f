// Several models in one picture: --model.
#pragma once

#include <tools/corvane/diagrams/plot.h>
#include <tools/corvane/input/open_mixture.h>
#include <tools/corvane/output/table.h>
#include <tools/corvane/program.h>

#include <functional>
#include <string>
#include <vector>

namespace cli {

/// What a command found with one model.
struct Drawn {
    Heading head;
    Table table;
    Picture picture;
    std::string model;  ///< with its parameters: "PR+vdW1, kij 0.0119"
    int code = 0;
};

class Models {
  public:
    void add_to(Command& command);
    using One = std::function<Drawn(MixtureRequest const&)>;
    /// What a command that draws does at its end: one(request) of each model, that of the request, if it
    /// is one, and those of the option; then table and picture are written. Of several the table has a
    /// column "model", and curves the colour of their model. Returns the exit code.
    int draw(MixtureRequest const& request, PlotFile const& plot, Style const& style, One const& one) const;

  private:
    Drawn each(MixtureRequest request, One const& one) const;

    std::vector<std::string> more_;
};

}  // namespace cli
