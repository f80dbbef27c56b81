#!/usr/bin/env python3
"""Strangers' projects build against the installed package."""

from packageTesting import CMAKE, COMPILER, LIBRARIES, TREE, VERSION, PackageTest, fresh_environment, main

PROJECT = """
cmake_minimum_required(VERSION 3.22)
project(Stranger LANGUAGES CXX)
find_package(OpenGLRenderer {wanted})
{rest}
"""


class Consumer(PackageTest):
    def configure(self, wanted, rest="", status=0):
        (self.folder / "CMakeLists.txt").write_text(PROJECT.format(wanted=wanted, rest=rest))
        return self.run_program(CMAKE, "-S", ".", "-B", "build", f"-DCMAKE_PREFIX_PATH={TREE}",
                                f"-DCMAKE_CXX_COMPILER={COMPILER}", status=status)

    def build(self):
        self.run_program(CMAKE, "--build", "build")

    def test_every_header_can_be_included(self):
        include = TREE / "include/OpenGLRenderer"
        headers = sorted(str(header.relative_to(include)) for header in include.rglob("*.h"))
        self.assertGreater(len(headers), 60)
        (self.folder / "all.cpp").write_text("".join(f'#include "{header}"\n' for header in headers) +
                                             "static_assert(__cplusplus >= 202002L);\n")
        self.configure("REQUIRED COMPONENTS SceneGraph",
                       "add_library(headers OBJECT all.cpp)\ntarget_link_libraries(headers PRIVATE SG::SceneGraph)\n"
                       "target_compile_options(headers PRIVATE -Wall -Wextra -Wpedantic -Werror)\n")
        self.build()

    def test_component_brings_what_it_needs(self):
        self.configure("REQUIRED COMPONENTS SceneGraph",
                       "foreach(name Maths Utilities SceneGraph)\n"
                       "    if(NOT TARGET SG::${name} OR NOT OpenGLRenderer_${name}_FOUND)\n"
                       "        message(FATAL_ERROR ${name})\n    endif()\nendforeach()\n"
                       "if(TARGET SG::Module)\n    message(FATAL_ERROR Module)\nendif()\n")

    def test_maths_comes_alone(self):
        (self.folder / "main.cpp").write_text('#include "Maths/Matrix.h"\n'
                                              "int main() { return Matrix()(0, 0) == 1.0 ? 0 : 1; }\n")
        self.configure("REQUIRED COMPONENTS Maths",
                       "add_executable(main main.cpp)\ntarget_link_libraries(main PRIVATE SG::Maths)\n"
                       "if(TARGET SG::Utilities OR Boost_FOUND)\n    message(FATAL_ERROR more)\nendif()\n")
        self.build()
        self.run_program("build/main")

    def test_module_component_says_where_the_module_is(self):
        self.configure("REQUIRED COMPONENTS Module",
                       "file(GENERATE OUTPUT module CONTENT $<TARGET_FILE:SG::Module>)\n")
        self.assertEqual((self.folder / "build/module").read_text(),
                         str(LIBRARIES / "OpenGLRenderer/OpenGLRenderer.so"))

    def test_without_components_all_are_there(self):
        self.configure("REQUIRED", "foreach(name Maths Utilities SceneGraph Module)\n"
                       "    get_target_property(location SG::${name} LOCATION)\nendforeach()\n")

    def test_unknown_component(self):
        result = self.configure("REQUIRED COMPONENTS Maths Sound", status=1)
        self.assertIn("OpenGLRenderer has no component 'Sound'; it has Maths, Utilities, SceneGraph, Module",
                      " ".join(result.stderr.split()))

    def test_unknown_component_that_is_optional(self):
        self.configure("REQUIRED COMPONENTS Maths OPTIONAL_COMPONENTS Sound",
                       "if(OpenGLRenderer_Sound_FOUND OR NOT OpenGLRenderer_FOUND)\n"
                       "    message(FATAL_ERROR found)\nendif()\n")

    def test_version_that_is_asked_for(self):
        self.configure(f"{VERSION} REQUIRED COMPONENTS Maths")
        result = self.configure("77.0 REQUIRED COMPONENTS Maths", status=1)
        self.assertIn('compatible with requested version "77.0"', " ".join(result.stderr.split()))

    def test_pkg_config(self):
        self.need("pkg-config")
        environment = fresh_environment(self.folder, PKG_CONFIG_PATH=str(LIBRARIES / "pkgconfig"))
        (self.folder / "main.cpp").write_text(
            '#include "SceneGraph/SGRootNode.h"\n#include "Utilities/Log.h"\n'
            "int main() { return make_smart<SGRootNode>()->clearColor ? 0 : 1; }\n")
        for name in ("SGMaths", "SGUtilities", "SGSceneGraph"):
            version = self.run_program("pkg-config", "--modversion", name, environment=environment).stdout
            self.assertEqual(version, VERSION + "\n")
        moved = str(TREE).replace(" ", "\\ ")
        flags = self.run_program("pkg-config", "--cflags", "--libs", "SGSceneGraph", environment=environment).stdout
        self.assertIn(moved, flags)
        (self.folder / "flags").write_text(flags)
        self.run_program(COMPILER, "-std=c++20", "main.cpp", "@flags", "-o", "main")
        self.run_program("./main", environment=environment | {"LD_LIBRARY_PATH": str(LIBRARIES)})
        module = self.run_program("pkg-config", "--variable=moduledir", "SGSceneGraph", environment=environment).stdout
        self.assertEqual(list((LIBRARIES / "OpenGLRenderer").iterdir()),
                         list((LIBRARIES / module.strip().replace("\\ ", " ")).resolve().iterdir()))


if __name__ == "__main__":
    main()
