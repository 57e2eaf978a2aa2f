"""Conan 2 recipe, out of the source tree: conan create packaging/conan"""

import os
import re

from conan import ConanFile
from conan.tools.build import check_min_cppstd
from conan.tools.cmake import CMake, CMakeDeps, CMakeToolchain, cmake_layout
from conan.tools.files import copy, load


class Corvane(ConanFile):
    name = "corvane"
    description = "Thermodynamic properties and certified phase equilibria from equations of state"
    topics = ("thermodynamics", "equation-of-state", "phase-equilibrium")
    package_type = "shared-library"
    settings = "os", "compiler", "build_type", "arch"
    options = {"tools": [True, False]}
    default_options = {"tools": False}

    def set_version(self):
        text = load(self, os.path.join(self.recipe_folder, "../../corvane/core/version.h"))
        self.version = ".".join(re.findall(r"#define CORVANE_VERSION_(?:MAJOR|MINOR|PATCH) (\d+)", text))

    def export_sources(self):
        root = os.path.join(self.recipe_folder, "../..")
        for pattern in ("CMakeLists.txt", "README.md", "CITATION.cff", "cmake/*", "corvane/*", "numelo/*", "plugins/*",
                        "CorvaneS/*", "models/*", "tools/*", "packaging/debian/*", "examples/consumer/*"):  # fmt: skip
            copy(self, pattern, root, self.export_sources_folder)

    def requirements(self):
        if self.options.tools:
            for one in ("cli11/[>=2.3 <3]", "eigen/[>=3.4 <4]", "fmt/[>=9]", "nlohmann_json/[>=3.11 <4]"):
                self.requires(one)

    def validate(self):
        check_min_cppstd(self, 20)

    def layout(self):
        cmake_layout(self)

    def generate(self):
        CMakeDeps(self).generate()
        toolchain = CMakeToolchain(self)
        toolchain.cache_variables.update(
            CORVANE_TESTS=False, CORVANE_DOTNET_BUILD=False, CORVANE_TOOLS=bool(self.options.tools),
            CORVANE_FIT=bool(self.options.tools))  # fmt: skip
        toolchain.generate()

    def build(self):
        cmake = CMake(self)
        cmake.configure()
        cmake.build()

    def package(self):
        CMake(self).install()
        copy(self, "copyright", os.path.join(self.source_folder, "packaging/debian"),
             os.path.join(self.package_folder, "licenses"))  # fmt: skip

    def package_info(self):
        # The package's own CMake files are used: they know the data home and corvane_add_plugin().
        self.cpp_info.set_property("cmake_find_mode", "none")
        self.cpp_info.builddirs = ["lib/cmake/corvane"]
        self.cpp_info.libs = ["corvane", "numelo"]
        self.runenv_info.define_path("CORVANE_DATA", os.path.join(self.package_folder, "lib/corvane"))
