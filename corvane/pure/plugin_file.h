// What is known of a plug-in before it is trusted: its file, and the class of what it makes.
// Internal.
#pragma once

#include <string>
#include <typeinfo>

namespace corvane::inline detail {

/// The file of a plug-in. A loader maps what a library says of itself, so that a file that was cut
/// ends the process, and a pipe makes it wait: both are found out here.
class PluginFile {
  public:
    explicit PluginFile(std::string const& path);

    bool exists() const { return exists_; }
    bool usable() const { return reason_.empty(); }
    std::string const& resolved() const { return resolved_; }  ///< absolute, without links
    std::string const& reason() const { return reason_; }      ///< why it is not usable

  private:
    /// Why the file is no whole library; empty if it is one.
    static std::string flaw(int descriptor);

    bool exists_ = false;
    std::string resolved_, reason_;
};

/// True if `name` ("SRK", "SRK+vdW1") is not the caller's own and the name of a plug-in: two
/// equations may share the labels of their parameters, but not their meaning.
bool is_other_plugin(std::string const& name, std::string const& own);

enum class ClassOf {
    derived,  ///< the first base, over however many steps, is the one asked for
    other,    ///< it is not
    unknown   ///< the class was compiled without run-time types
};

/// Class of an object that is said to derive from `base` as its first base. The object is read with
/// care, for it may be anything with a table of virtual functions.
ClassOf class_of(void const* object, std::type_info const& base);

}  // namespace corvane::inline detail
