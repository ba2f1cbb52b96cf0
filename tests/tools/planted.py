"""Runs a check script on a small tree made for it."""

import os
import subprocess
import sys
import tempfile

TOOLS = os.path.join(os.path.dirname(os.path.dirname(os.path.dirname(os.path.abspath(__file__)))),
                     "tools")


def run_on(script, files):
    """The finished run of tools/SCRIPT on a tree of these files: a mapping from path to text."""
    with tempfile.TemporaryDirectory() as root:
        for name, text in files.items():
            full = os.path.join(root, name)
            os.makedirs(os.path.dirname(full), exist_ok=True)
            with open(full, "w", encoding="utf-8") as stream:
                stream.write(text)
        return subprocess.run([sys.executable, os.path.join(TOOLS, script), root],
                              stdout=subprocess.PIPE, text=True, check=False)
