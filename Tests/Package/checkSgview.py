#!/usr/bin/env python3
"""The installed sgview at work, and what it says when part of its surroundings is missing."""

import configparser
import os
import shlex
import shutil

from packageTesting import BUILD, LIBRARIES, SOURCE, TREE, PackageTest, fresh_environment, main

MODEL = TREE / "share/OpenGLRenderer/Assets/creature.glb"
MODULE = "OpenGLRenderer/OpenGLRenderer.so"
SEPARATE = ("unshare", "--mount", "sh", "-ec")  # mounts of its own, for one script


class Sgview(PackageTest):
    def sgview(self, *arguments, tree=TREE, status=0, **environment):
        return self.run_program(tree / "bin/sgview", *arguments, status=status,
                                environment=fresh_environment(self.folder, **environment))

    def line(self, *arguments, **circumstances):
        """The one line about a job that cannot be done, which leaves no picture."""
        result = self.sgview(*arguments, status=1, **circumstances)
        self.assertEqual(result.stdout, "")
        self.assertEqual(result.stderr.count("\n"), 1, result.stderr)
        self.assertFalse(list(self.folder.glob("*.png")))
        return result.stderr

    def own_tree(self):
        tree = self.folder / "tree"
        shutil.copytree(TREE, tree, symlinks=True)
        return tree

    def libraries_of(self, tree):
        return tree / LIBRARIES.relative_to(TREE)

    def separate(self, script, *arguments, status=0):
        """Runs a shell script that may mount over folders."""
        if os.geteuid() != 0 or self.run_program(*SEPARATE, "mount -t tmpfs none /mnt", status=None).returncode != 0:
            self.skipTest("no right to mount")
        return self.run_program(*SEPARATE, script, "sh", *arguments, status=status)

    def test_draws_a_model_and_the_demonstration(self):
        self.assertEqual(self.sgview("render", MODEL, "--size", "160x120", "--output", "a.png").stderr, "")
        self.assertGreater(len(self.colours("a.png")), 100)
        self.sgview("demo", "--size", "160x120", "--output", "demo.png")
        self.assertGreater(len(self.colours("demo.png")), 1000)

    def test_is_found_through_the_path_and_through_a_link(self):
        self.run_program("sh", "-c", 'PATH="$1:$PATH" sgview demo --size 64x64 --output a.png', "sh", TREE / "bin")
        (self.folder / "linked").symlink_to(TREE / "bin/sgview")
        self.run_program("./linked", "demo", "--size", "64x64", "--output", "b.png")
        self.assertEqual((self.folder / "a.png").read_bytes(), (self.folder / "b.png").read_bytes())

    def test_draws_by_every_technique_with_the_installed_shaders(self):
        result = self.sgview("compare", MODEL, "--times", "1", "--size", "64x64")
        for technique in ("plain", "vbo", "program", "program+vbo", "shader", "shader+vbo"):
            self.assertIn(technique, result.stdout)

    def test_works_when_source_and_build_are_gone(self):
        # The build before the source, which may hold it.
        self.separate('mkdir tree; mount --bind "$1" tree; mount -t tmpfs none "$3"; mount -t tmpfs none "$2"; '
                      'test ! -e "$2/CMakeLists.txt"; test ! -e "$3/bin"; '
                      "tree/bin/sgview demo --size 96x96 --output demo.png; "
                      "tree/bin/sgview render tree/share/OpenGLRenderer/Assets/creature.glb --technique shader "
                      "--size 96x96 --output a.png", TREE, SOURCE, BUILD)
        self.assertGreater(len(self.colours("demo.png")), 500)
        self.assertGreater(len(self.colours("a.png")), 100)

    def test_thumbnailer_entry_draws_a_small_picture(self):
        entry = configparser.RawConfigParser()
        entry.read(TREE / "share/thumbnailers/sgview.thumbnailer")
        values = {"%s": "128", "%o": str(self.folder / "thumbnail.png"), "%i": str(MODEL)}
        words = [values.get(word, word) for word in shlex.split(entry["Thumbnailer Entry"]["Exec"])]
        self.sgview(*words[1:])
        picture = (self.folder / "thumbnail.png").read_bytes()
        self.assertEqual(max(int.from_bytes(picture[16:20], "big"), int.from_bytes(picture[20:24], "big")), 128)

    def test_no_module(self):
        tree = self.own_tree()
        libraries = self.libraries_of(tree)
        (libraries / MODULE).unlink()
        missing = "cannot open shared object file: No such file or directory"
        nowhere = f"{libraries}/OpenGLRenderer.so: {missing}; {libraries}/{MODULE}: {missing}\n"
        self.assertEqual(self.line("demo", "--output", "a.png", tree=tree),
                         f"sgview: no renderer module could be loaded; tried {nowhere}")
        (self.folder / "OpenGLRenderer.so").write_text("no module")
        self.assertEqual(self.line("demo", "--output", "a.png", tree=tree, SG_MODULE_PATH=f"/none:{self.folder}"),
                         f"sgview: no renderer module could be loaded; tried /none/OpenGLRenderer.so: {missing}; "
                         f"{self.folder}/OpenGLRenderer.so: no renderer module: it names no interface version; "
                         f"{nowhere}")

    def test_module_that_may_not_be_read_or_is_cut_short(self):
        tree = self.own_tree()
        module = self.libraries_of(tree) / MODULE
        module.write_bytes(module.read_bytes()[:-module.stat().st_size // 2])
        self.assertIn(f"{module}: ", self.line("demo", "--output", "a.png", tree=tree))

    def test_module_of_another_interface_version(self):
        tree = self.own_tree()
        module = self.libraries_of(tree) / MODULE
        mark = b"SG renderer interface version 1\0"
        content = module.read_bytes()
        self.assertEqual(content.count(mark), 1)
        module.write_bytes(content.replace(mark, mark.replace(b"1", b"7")))
        self.assertIn(f"{module}: the module has interface version 7, the engine 1\n",
                      self.line("demo", "--output", "a.png", tree=tree))

    def test_no_shaders(self):
        tree = self.own_tree()
        shutil.rmtree(tree / "share/OpenGLRenderer/Shaders")
        model = tree / "share/OpenGLRenderer/Assets/creature.glb"
        for technique, asset in (("shader", "animationVertexShader"), ("program", "animationVertexProgram")):
            self.assertEqual(self.line("render", model, "--output", "a.png", "--technique", technique, tree=tree),
                             f'sgview: technique {technique}: Asset "Shaders/{asset}.txt" not found; '
                             f"tried: {tree}/share/OpenGLRenderer/Shaders/{asset}.txt\n")
        self.sgview("render", model, "--size", "64x64", "--technique", "plain", "--output", "a.png", tree=tree)

    def test_no_creature(self):
        tree = self.own_tree()
        shutil.rmtree(tree / "share/OpenGLRenderer/Assets")
        self.assertEqual(self.line("demo", "--output", "a.png", tree=tree),
                         'sgview: Asset "Assets/creature.glb" not found; '
                         f"tried: {tree}/share/OpenGLRenderer/Assets/creature.glb\n")

    def test_no_opengl(self):
        self.assertRegex(self.line("demo", "--output", "a.png", __EGL_VENDOR_LIBRARY_FILENAMES="/nowhere"),
                         "^sgview: no OpenGL context without a screen; tried offscreen: ")

    def test_graphics_device_that_may_not_be_opened(self):
        result = self.separate(
            "chmod 755 .; mkdir devices pictures; chmod 777 pictures; mount -t tmpfs none devices; "
            "mkdir devices/dri devices/shm; chmod 1777 devices/shm; "
            "mknod -m 600 devices/dri/card0 c 226 0 && mknod -m 600 devices/dri/renderD128 c 226 128 || exit 77; "
            "for device in null zero full random urandom; do "
            "touch devices/$device; mount --bind /dev/$device devices/$device; done; "
            "mount --rbind devices /dev; "
            'HOME=/nonexistent XDG_CONFIG_HOME="$PWD/pictures" exec setpriv --reuid 65534 --regid 65534 --clear-groups '
            '"$1" demo --size 64x64 --output pictures/a.png', TREE / "bin/sgview", status=None)
        if result.returncode == 77:
            self.skipTest("no right to make devices")
        # Drawn in software, without a word.
        self.assertEqual((result.returncode, result.stderr), (0, ""))
        self.assertGreater(len(self.colours("pictures/a.png")), 200)

    def test_full_disk(self):
        result = self.separate('mkdir full; mount -t tmpfs -o size=8k none full; '
                               '"$1" demo --size 640x480 --output full/a.png; ', TREE / "bin/sgview", status=1)
        self.assertEqual(result.stderr, "sgview: full/a.png: No space left on device\n")


if __name__ == "__main__":
    main()
