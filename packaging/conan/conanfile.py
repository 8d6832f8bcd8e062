# SPDX-License-Identifier: Apache-2.0
import os
import re

from conan import ConanFile
from conan.tools.build import check_min_cppstd
from conan.tools.cmake import CMake, CMakeToolchain, cmake_layout
from conan.tools.files import copy, load, rmdir

required_conan_version = ">=2.0"

# Of this recipe, which stands in packaging/conan of the sources.
SOURCES = os.path.join(os.pardir, os.pardir)


class ZantrelConan(ConanFile):
    name = "zantrel"
    description = "Parameters of build processors of additive manufacturing: layouts, values, and XML files of both"
    license = "Apache-2.0"
    topics = ("additive-manufacturing", "parameters", "xml")
    package_type = "library"
    settings = "os", "arch", "compiler", "build_type"
    options = {"shared": [True, False], "fPIC": [True, False]}
    default_options = {"shared": True, "fPIC": True}
    implements = ["auto_shared_fpic"]

    def set_version(self):
        header = load(self, os.path.join(self.recipe_folder, SOURCES, "include", "zantrel", "version.h"))
        numbers = re.findall(r"^#define ZANTREL_VERSION_(?:MAJOR|MINOR|PATCH) (\d+)$", header, re.MULTILINE)
        self.version = ".".join(numbers)

    def export_sources(self):
        sources = os.path.join(self.recipe_folder, SOURCES)
        for pattern in ("*.h", "*.cpp", "*.cmake", "*.in", "CMakeLists.txt", "LICENSE", "*.md", "schemas/*", "tools/debuggers/*", "cmake/*", ".reuse/*"):
            copy(self, pattern, sources, self.export_sources_folder, excludes=("build/*", "tests/*", "fuzz/*"))

    def layout(self):
        cmake_layout(self)

    def validate(self):
        check_min_cppstd(self, 17)  # of hosts; the build asks for C++20 itself

    def generate(self):
        toolchain = CMakeToolchain(self)
        for part in ("TESTS", "EXAMPLES", "TOOLS"):
            toolchain.cache_variables[f"ZANTREL_BUILD_{part}"] = False
        toolchain.cache_variables["ZANTREL_INSTALL"] = True
        toolchain.generate()

    def build(self):
        cmake = CMake(self)
        cmake.configure()
        cmake.build()

    def package(self):
        CMake(self).install()
        copy(self, "LICENSE", self.source_folder, os.path.join(self.package_folder, "licenses"))
        # What follows from package_info() is made by Conan's generators.
        for folder in (("lib", "cmake"), ("lib", "pkgconfig"), ("share", "doc")):
            rmdir(self, os.path.join(self.package_folder, *folder))

    def package_info(self):
        postfix = "d" if self.settings.build_type == "Debug" else ""
        self.cpp_info.set_property("cmake_file_name", "Zantrel")
        for component, target, library, package in (
            ("library", "Zantrel::Zantrel", "zantrel", "zantrel"),
            ("editing", "Zantrel::Editing", "zantrel_editing", "zantrel-editing"),
        ):
            info = self.cpp_info.components[component]
            info.set_property("cmake_target_name", target)
            info.set_property("pkg_config_name", package)
            info.libs = [library + postfix]
            if not self.options.shared:
                info.defines = [library.upper() + "_STATIC"]
        self.cpp_info.components["editing"].requires = ["library"]
