#!/usr/bin/env python3
"""Lays the installed tree down as a person does, and moves it elsewhere."""

import shutil
import subprocess

from packageTesting import BUILD, CMAKE, TREE

shutil.rmtree(TREE.parent, ignore_errors=True)
first = TREE.parent / "first"
subprocess.run([CMAKE, "--install", str(BUILD), "--prefix", str(first), "--strip"], check=True,
               stdout=subprocess.DEVNULL)
first.rename(TREE)
