#!/usr/bin/env python3
"""The Debian packages: made, looked through, installed into a root of their own, and run there."""

import os
import pathlib
import re
import shutil
import subprocess
import tempfile

from packageTesting import BUILD, CMAKE, VERSION, PackageTest, fresh_environment, main


class DebianPackages(PackageTest):
    @classmethod
    def setUpClass(cls):
        cls.place = pathlib.Path(cls.enterClassContext(tempfile.TemporaryDirectory()))
        cls.packages = {}
        cls.missing = next((tool for tool in ("dpkg-deb", "dpkg-shlibdeps", "dpkg") if not shutil.which(tool)), None)
        if cls.missing:
            return
        cpack = pathlib.Path(CMAKE).with_name("cpack")
        made = subprocess.run([cpack, "-G", "DEB", "-B", cls.place], cwd=BUILD, env=fresh_environment(cls.place),
                              text=True, stdout=subprocess.PIPE, stderr=subprocess.STDOUT, check=False)
        if made.returncode != 0:
            raise RuntimeError(made.stdout)
        cls.packages = {file.name.split("_")[0]: file for file in cls.place.glob("*.deb")}

    def setUp(self):
        super().setUp()
        if self.missing:
            self.skipTest(f"{self.missing} is not installed")

    def field(self, package, name):
        return self.run_program("dpkg-deb", "--field", self.packages[package], name).stdout.strip()

    def files(self, package):
        listing = self.run_program("dpkg-deb", "--contents", self.packages[package]).stdout
        return {line.split(maxsplit=5)[5].split(" -> ")[0] for line in listing.splitlines()}

    def test_two_packages(self):
        self.assertEqual(set(self.packages), {"sgview", "sgview-dev"})
        for package in self.packages:
            self.assertEqual(self.field(package, "Version"), f"{VERSION}-1")

    def test_each_file_is_in_the_package_that_needs_it(self):
        for package, within, outside in (("sgview", "bin/sgview", "include/"), ("sgview-dev", "include/", "bin/")):
            files = self.files(package)
            self.assertTrue(any(within in name for name in files))
            self.assertFalse(any(outside in name for name in files))
            for document in ("copyright", "changelog.gz", "changelog.Debian.gz"):
                self.assertIn(f"./usr/share/doc/{package}/{document}", files)
        both = {name for name in self.files("sgview") & self.files("sgview-dev") if not name.endswith("/")}
        self.assertEqual(both, set())

    def test_dependencies(self):
        depends = self.field("sgview", "Depends")
        for library in ("libc6", "libstdc++6", "libsdl2-2.0-0", "libpng16-16", "libepoxy0", "libglu1-mesa", "libgl1"):
            self.assertRegex(depends, rf"(^|, ){re.escape(library)}\b")
        self.assertNotIn("libSG", depends)
        self.assertIn(f"sgview (= {VERSION}-1)", self.field("sgview-dev", "Depends"))

    def test_linker_hears_of_the_libraries(self):
        self.run_program("dpkg-deb", "--control", self.packages["sgview"], "control")
        self.assertIn("activate-noawait ldconfig", (self.folder / "control/triggers").read_text())
        self.assertIn(f"libSGSceneGraph 0 sgview (>= {VERSION})", (self.folder / "control/shlibs").read_text())

    def unpacked(self, *packages):
        root = self.folder / "root"
        if os.geteuid() == 0:
            for folder in ("info", "updates", "triggers"):
                (root / "var/lib/dpkg" / folder).mkdir(parents=True)
            for file in ("status", "available"):
                (root / "var/lib/dpkg" / file).touch()
            self.run_program("dpkg", f"--root={root}", f"--log={self.folder}/log", "--force-depends", "--install",
                             *(self.packages[package] for package in packages))
        else:
            for package in packages:
                self.run_program("dpkg-deb", "--extract", self.packages[package], root)
        return root

    def test_installed_package_draws(self):
        root = self.unpacked("sgview")
        self.run_program(root / "usr/bin/sgview", "demo", "--size", "160x120", "--output", "a.png")
        self.assertGreater(len(self.colours("a.png")), 1000)
        model = root / "usr/share/OpenGLRenderer/Assets/creature.glb"
        self.run_program(root / "usr/bin/sgview", "render", model, "--technique", "shader", "--size", "64x64",
                         "--output", "b.png")

    def test_installed_package_goes_without_a_trace(self):
        if os.geteuid() != 0:
            self.skipTest("dpkg removes packages for root alone")
        root = self.unpacked("sgview", "sgview-dev")
        self.run_program("dpkg", f"--root={root}", f"--log={self.folder}/log", "--force-depends", "--purge",
                         "sgview", "sgview-dev")
        self.assertEqual([name for name in root.rglob("*") if name.is_file() and "dpkg" not in name.parts], [])

    def test_host_builds_against_the_development_package(self):
        root = self.unpacked("sgview", "sgview-dev")
        example = root / "usr/share/doc/sgview-dev/Examples/MinimalHost"
        self.run_program(CMAKE, "-S", example, "-B", "build", f"-DCMAKE_PREFIX_PATH={root}/usr")
        self.run_program(CMAKE, "--build", "build")
        self.run_program("build/MinimalHost", "picture.ppm")
        self.assertGreater((self.folder / "picture.ppm").stat().st_size, 640 * 512 * 3)

    def test_lintian(self):
        self.need("lintian")
        # Debug builds lie outside the folder of the architecture and are not optimised: no errors all the same.
        result = self.run_program("lintian", "--fail-on", "error", *self.packages.values(), status=None)
        self.assertEqual(result.returncode, 0, result.stdout)


if __name__ == "__main__":
    main()
