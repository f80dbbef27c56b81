#!/usr/bin/env python3
"""What the installed tree holds."""

import configparser
import os
import re
import shutil
import xml.etree.ElementTree as xml

from packageTesting import BUILD, LIBRARIES, SOURCE, TREE, VERSION, PackageTest, fresh_environment, main

LIBRARY_NAMES = ("Maths", "Utilities", "SceneGraph")


class Tree(PackageTest):
    def test_everything_has_its_place(self):
        for name in ("bin/sgview", "include/OpenGLRenderer/SceneGraph/SGNode.h",
                     "share/OpenGLRenderer/Shaders/animationVertexProgram.txt",
                     "share/OpenGLRenderer/Shaders/animationVertexShader.txt",
                     "share/OpenGLRenderer/Shaders/defaultVertexProgram.txt",
                     "share/OpenGLRenderer/Assets/creature.glb", "share/applications/sgview.desktop",
                     "share/thumbnailers/sgview.thumbnailer", "share/mime/packages/sgview.xml",
                     "share/man/man1/sgview.1", "share/bash-completion/completions/sgview",
                     "share/zsh/vendor-completions/_sgview", "share/fish/vendor_completions.d/sgview.fish",
                     "share/icons/hicolor/scalable/apps/sgview.svg", "share/doc/OpenGLRenderer/LICENSE",
                     "share/doc/OpenGLRenderer/Documentation/Embedding.md",
                     "share/doc/OpenGLRenderer/Examples/MinimalHost/MinimalHost.cpp"):
            self.assertTrue((TREE / name).is_file(), name)
        for name in ("OpenGLRenderer/OpenGLRenderer.so", "cmake/OpenGLRenderer/OpenGLRendererConfig.cmake"):
            self.assertTrue((LIBRARIES / name).is_file(), name)

    def test_every_public_header_is_there(self):
        for name in LIBRARY_NAMES:
            installed = {file.name for file in (TREE / "include/OpenGLRenderer" / name).iterdir()}
            self.assertEqual(installed, {file.name for file in (SOURCE / name).glob("*.h")}, name)

    def test_libraries_have_sonames(self):
        self.need("readelf")
        for name in LIBRARY_NAMES:
            library = LIBRARIES / f"libSG{name}.so"
            dynamic = self.run_program("readelf", "--dynamic", library).stdout
            soname = re.search(r"SONAME.*\[(.*)\]", dynamic)[1]
            self.assertRegex(soname, rf"^libSG{name}\.so\.\d+$")
            self.assertEqual((LIBRARIES / soname).resolve(), LIBRARIES / f"libSG{name}.so.{VERSION}")

    def test_nothing_names_the_folders_it_was_built_in(self):
        for file in TREE.rglob("*"):
            if file.is_file():
                content = file.read_bytes()
                for place in (SOURCE, BUILD):
                    self.assertNotIn(os.fsencode(place), content, file)

    def test_desktop_entry(self):
        self.need("desktop-file-validate")
        entry = TREE / "share/applications/sgview.desktop"
        self.assertEqual(self.run_program("desktop-file-validate", "--warn-kde", entry).stdout, "")

    def entry_of(self, name, section):
        parser = configparser.RawConfigParser(strict=True)
        parser.optionxform = str
        parser.read(TREE / "share" / name)
        return parser[section]

    def test_thumbnailer_draws_what_the_viewer_opens(self):
        thumbnailer = self.entry_of("thumbnailers/sgview.thumbnailer", "Thumbnailer Entry")
        viewer = self.entry_of("applications/sgview.desktop", "Desktop Entry")
        self.assertEqual(thumbnailer["MimeType"], viewer["MimeType"])
        self.assertEqual(thumbnailer["Exec"].split()[:2], ["sgview", "render"])
        for placeholder in ("%s", "%o", "%i"):
            self.assertIn(placeholder, thumbnailer["Exec"].split())

    def test_desktop_knows_every_format_by_its_file(self):
        self.need("update-mime-database")
        known = "/usr/share/mime/packages/freedesktop.org.xml"
        if not os.path.exists(known):
            self.skipTest("shared-mime-info is not installed")
        packages = self.folder / "mime/packages"
        packages.mkdir(parents=True)
        shutil.copy(known, packages)
        shutil.copy(TREE / "share/mime/packages/sgview.xml", packages)
        environment = fresh_environment(self.folder, XDG_DATA_HOME=str(self.folder), XDG_DATA_DIRS="")
        updated = self.run_program("update-mime-database", self.folder / "mime", environment=environment)
        self.assertEqual(updated.stderr, "")
        globs = {}
        for line in (self.folder / "mime/globs2").read_text().splitlines():  # the weightiest first
            if not line.startswith("#"):
                _, kind, pattern = line.split(":")[:3]
                globs.setdefault(pattern, kind)
        types = set(self.entry_of("applications/sgview.desktop", "Desktop Entry")["MimeType"].split(";")) - {""}
        for pattern in ("*.glb", "*.gltf", "*.dae", "*.obj", "*.stl", "*.3mf", "*.fbx", "*.ply", "*.x"):
            self.assertIn(globs[pattern], types, pattern)

    def test_icon(self):
        root = xml.parse(TREE / "share/icons/hicolor/scalable/apps/sgview.svg").getroot()
        self.assertEqual(root.tag, "{http://www.w3.org/2000/svg}svg")
        self.assertEqual(root.get("width"), root.get("height"))


if __name__ == "__main__":
    main()
