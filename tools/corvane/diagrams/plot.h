// The options of pictures: --plot, --html, and how they look.
#pragma once

#include <tools/corvane/diagrams/gnuplot.h>
#include <tools/corvane/diagrams/picture.h>
#include <tools/corvane/output/table.h>
#include <tools/corvane/program.h>

#include <filesystem>
#include <string>

namespace cli {

class PlotFile {
  public:
    void add_to(Command& command);
    /// --plot-deviations, of a command with measured points.
    void add_deviations(Command& command);
    /// To call before the data home is entered. @throws Misuse a suffix other than .svg, .png, .pdf
    /// and .eps, a size or font that makes no sense; Failure gnuplot is not installed
    void begin();
    /// A picture is wanted.
    explicit operator bool() const { return !plot_.empty() || !html_.empty() || !deviations_.empty(); }
    /// Writes the table to standard output, and then the files: all of each, or nothing of it, also
    /// where standard output takes no more (a pipe whose reader has gone). @throws Failure
    void show(Picture const& picture, Heading const& heading, Table const& table, Style const& style) const;

  private:
    void draw(Picture picture, Heading const& heading, Table const& table, Style const& style) const;

    std::string plot_, html_, deviations_, size_, title_ = kAsIs, font_;
    bool mono_ = false;
    std::filesystem::path plot_path_, html_path_, deviations_path_;
    Sheet sheet_;
    static constexpr char const* kAsIs = "\n";
};

}  // namespace cli
