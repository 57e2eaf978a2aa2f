// A working directory of its own for a test, which is made the current one and removed afterwards.
#pragma once

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>

#include <stdlib.h>

class Scratch {
  public:
    Scratch() : before_(std::filesystem::current_path()) {
        std::string name = std::filesystem::temp_directory_path() / "corvane-test-XXXXXX";
        dir_ = ::mkdtemp(name.data());
        std::filesystem::current_path(dir_);
    }
    ~Scratch() {
        std::filesystem::current_path(before_);
        std::filesystem::remove_all(dir_);
    }
    Scratch(Scratch const&) = delete;
    Scratch& operator=(Scratch const&) = delete;

    std::filesystem::path const& dir() const { return dir_; }
    /// The directory the test started in: the data home of the build tree.
    std::filesystem::path const& home() const { return before_; }

    /// Writes a file, making its folders.
    void write(std::filesystem::path const& path, std::string const& text) const {
        if (path.has_parent_path()) std::filesystem::create_directories(path.parent_path());
        std::ofstream(path, std::ios::binary) << text;
    }
    static std::string read(std::filesystem::path const& path) {
        std::ostringstream text;
        text << std::ifstream(path, std::ios::binary).rdbuf();
        return text.str();
    }

  private:
    std::filesystem::path before_, dir_;
};
