#!/usr/bin/env python3
"""tools/prove_bare on a machine whose apt lists name foreign sources before Debian's own."""

import hashlib
import os
import pathlib
import shutil
import subprocess
import tempfile
import unittest

PACKAGE = b"Package: some\nArchitecture: amd64\nVersion: 1\n\n"
PROVE_BARE = pathlib.Path(__file__).resolve().parents[2] / "tools" / "prove_bare"


def make_source(folder, origin, codename):
    """A repository with one package; the line for it in an apt list."""
    packages = folder / "dists" / codename / "main" / "binary-amd64" / "Packages"
    packages.parent.mkdir(parents=True)
    packages.write_bytes(PACKAGE)
    digest = hashlib.sha256(PACKAGE).hexdigest()
    (folder / "dists" / codename / "Release").write_text(
        f"Origin: {origin}\nCodename: {codename}\nArchitectures: amd64\nComponents: main\n"
        f"Date: Sat, 01 Jan 2022 00:00:00 UTC\nSHA256:\n {digest} {len(PACKAGE)} main/binary-amd64/Packages\n")
    return f"deb [trusted=yes] file:{folder} {codename} main\n"


@unittest.skipUnless(shutil.which("apt-get"), "a Debian tool")
class ProveBare(unittest.TestCase):
    def test_the_source_is_debians_own_of_the_release(self):
        root = pathlib.Path(self.enterContext(tempfile.TemporaryDirectory()))
        for folder in ("state/lists/partial", "cache/archives/partial", "etc"):
            (root / folder).mkdir(parents=True)
        (root / "state" / "status").touch()
        (root / "apt.conf").write_text(
            f'Dir::State "{root}/state"; Dir::State::status "{root}/state/status";\n'
            f'Dir::Cache "{root}/cache"; Dir::Etc::sourcelist "{root}/sources.list";\n'
            f'Dir::Etc::sourceparts "{root}/etc"; Dir::Etc::trustedparts "{root}/etc";\n'
            'APT::Architecture "amd64"; APT::Architectures "amd64"; APT::Sandbox::User "root";\n')
        (root / "sources.list").write_text(
            make_source(root / "foreign", "Elsewhere", "bookworm")
            + make_source(root / "newer", "Debian", "trixie")
            + make_source(root / "wanted", "Debian", "bookworm"))
        environment = dict(os.environ, APT_CONFIG=str(root / "apt.conf"))
        subprocess.run(["apt-get", "-qq", "update"], env=environment, check=True)
        printed = subprocess.run([PROVE_BARE, "--source"], env=environment, check=True,
                                 stdout=subprocess.PIPE, text=True).stdout
        self.assertEqual(printed, f"file:{root}/wanted/\n")


if __name__ == "__main__":
    unittest.main()
