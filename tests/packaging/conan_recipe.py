# SPDX-License-Identifier: Apache-2.0
"""Runs packaging/conan/conanfile.py with modules of the names that Conan has, which do the same by the simplest means,
and writes a ZantrelConfig.cmake of what the recipe says about the package:
conan_recipe.py <sources> <package folder> <folder for results>
What is built are the sources that the recipe exports and no others, as a debug build that compiles a folder at once, which
is made soon. Its warnings are other builds' affair."""
import collections
import fnmatch
import os
import shutil
import subprocess
import sys
import types

root, package, results = map(os.path.abspath, sys.argv[1:])
build = os.path.join(results, "build")
sys.dont_write_bytecode = True


class Recipe:
    """The base class of recipes."""


class Toolchain:
    def __init__(self, recipe):
        self.recipe, self.cache_variables = recipe, {}

    def generate(self):
        self.recipe.variables = self.cache_variables


class CMake:
    def __init__(self, recipe):
        self.recipe = recipe

    def configure(self):
        variables = {"CMAKE_BUILD_TYPE": self.recipe.settings.build_type, "BUILD_SHARED_LIBS": self.recipe.options.shared,
                     "CMAKE_INSTALL_LIBDIR": "lib", "CMAKE_CXX_FLAGS_DEBUG": "-O0 -w", "ZANTREL_FOLDERS_AT_ONCE": True,
                     **self.recipe.variables}
        subprocess.run(["cmake", "-S", self.recipe.source_folder, "-B", build, "-G", "Ninja",
                        *(f"-D{name}={value}" for name, value in variables.items())], check=True)

    def build(self):
        subprocess.run(["cmake", "--build", build], check=True)

    def install(self):
        subprocess.run(["cmake", "--install", build, "--prefix", package], check=True, stdout=subprocess.DEVNULL)


def copy(recipe, pattern, source, target, excludes=()):
    for folder, _, names in os.walk(source):
        for name in names:
            path = os.path.relpath(os.path.join(folder, name), source)
            if fnmatch.fnmatch(path, pattern) and not any(fnmatch.fnmatch(path, each) for each in excludes):
                os.makedirs(os.path.dirname(os.path.join(target, path)), exist_ok=True)
                shutil.copy2(os.path.join(source, path), os.path.join(target, path))


def load(recipe, path):
    with open(path, encoding="utf-8") as file:
        return file.read()


class Info:
    def __init__(self):
        self.properties, self.libs, self.defines, self.requires = {}, [], [], []
        self.components = collections.defaultdict(Info)

    def set_property(self, name, value):
        self.properties[name] = value


for name, members in {
    "conan": {"ConanFile": Recipe},
    "conan.tools": {},
    "conan.tools.build": {"check_min_cppstd": lambda recipe, least: None},
    "conan.tools.cmake": {"CMake": CMake, "CMakeToolchain": Toolchain, "cmake_layout": lambda recipe: None},
    "conan.tools.files": {"copy": copy, "load": load, "rmdir": lambda recipe, path: shutil.rmtree(path)},
}.items():
    sys.modules[name] = types.ModuleType(name)
    vars(sys.modules[name]).update(members)

sys.path.insert(0, os.path.join(root, "packaging", "conan"))
import conanfile  # noqa: E402

shutil.rmtree(package, ignore_errors=True)
recipe = conanfile.ZantrelConan()
recipe.recipe_folder = os.path.join(root, "packaging", "conan")
recipe.package_folder = package
recipe.export_sources_folder = recipe.source_folder = os.path.join(results, "exported")
recipe.settings = types.SimpleNamespace(build_type="Debug")
recipe.options = types.SimpleNamespace(**recipe.default_options)
recipe.cpp_info = Info()
for step in ("set_version", "export_sources", "layout", "validate", "generate", "build", "package", "package_info"):
    getattr(recipe, step)()

lines = []
for info in recipe.cpp_info.components.values():
    target = info.properties["cmake_target_name"]
    others = [recipe.cpp_info.components[name].properties["cmake_target_name"] for name in info.requires]
    libraries = [f"{package}/lib/lib{name}.so" for name in info.libs]
    lines += [f"add_library({target} INTERFACE IMPORTED)",
              f"target_include_directories({target} INTERFACE {package}/include)",
              f"target_link_libraries({target} INTERFACE {' '.join(libraries + others)})"]
    lines += [f"target_compile_definitions({target} INTERFACE {name})" for name in info.defines]
with open(os.path.join(results, recipe.cpp_info.properties["cmake_file_name"] + "Config.cmake"), "w") as file:
    file.write("\n".join(lines) + "\n")
