"""The files of the tree to check; shared by the check scripts."""

import os
import subprocess

_SKIPPED_FOLDERS = {".git", "build", ".cache", "__pycache__"}


def list_files(root):
    """Paths relative to root, with "/": what git tracks or would track; without git, all files."""
    try:
        out = subprocess.run(
            ["git", "-C", root, "ls-files", "-z", "--cached", "--others", "--exclude-standard"],
            check=True, stdout=subprocess.PIPE, stderr=subprocess.DEVNULL).stdout
        names = out.decode("utf-8", "surrogateescape").split("\0")
        return sorted({n for n in names if n and os.path.isfile(os.path.join(root, n))})
    except (OSError, subprocess.CalledProcessError):
        return sorted(_walk(root))


def _walk(root):
    for folder, folders, names in os.walk(root):
        folders[:] = [f for f in folders if f not in _SKIPPED_FOLDERS]
        for name in names:
            yield os.path.relpath(os.path.join(folder, name), root).replace(os.sep, "/")


def tree_root():
    """The root of the tree that this script belongs to."""
    return os.path.dirname(os.path.dirname(os.path.abspath(__file__)))
