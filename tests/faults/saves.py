#!/usr/bin/env python3
"""Saving under real faults: the program killed at random moments, a file that may not grow, a folder
that may not be written. Each time the old or the new scene must be there, whole.

Usage: saves.py PROGRAM [--rounds N] [--seed S]

Exit 0 when nothing was lost, 1 otherwise. The seed is printed; the moments differ all the same.
"""

import argparse
import os
import random
import resource
import shutil
import signal
import subprocess
import sys
import tempfile
import time

LONGEST_WAIT = 0.06  # seconds before a kill: some saves long
NOBODY = 65534
TEMPORARY = ".quorvel-saving.xml"


def read(path):
    with open(path, "rb") as stream:
        return stream.read()


class Saves:
    def __init__(self, program, folder):
        # A copy, where another user may run it too.
        self.program = shutil.copy(program, os.path.join(folder, "save_loop"))
        os.chmod(folder, 0o755)
        self.folder = folder
        self.failures = 0
        self.scenes = []
        for variant in ("1", "2"):
            target = self.make("whole" + variant)
            self.run("once", variant, target, expected=0)
            self.scenes.append(read(target + "Scene.xml"))

    def make(self, name):
        path = os.path.join(self.folder, name, "")
        os.makedirs(path, exist_ok=True)
        return path

    def expect(self, good, text):
        if not good:
            self.failures += 1
            print("FAILED: " + text)

    def run(self, *arguments, expected, **options):
        result = subprocess.run([self.program, *arguments], stderr=subprocess.PIPE, text=True,
                                check=False, **options)
        self.expect(result.returncode == expected,
                    "%s: exit %d, %s" % (arguments, result.returncode, result.stderr))
        return result.stderr

    def kills(self, rounds, randomness):
        target = self.make("killed")
        self.run("once", "1", target, expected=0)
        halfway = 0
        seen = set()
        for _ in range(rounds):
            with subprocess.Popen([self.program, "forever", target]) as process:
                time.sleep(randomness.uniform(0, LONGEST_WAIT))
                process.send_signal(signal.SIGKILL)
            halfway += os.path.exists(target + TEMPORARY)
            found = read(target + "Scene.xml")
            self.expect(found in self.scenes, "a scene of %d bytes after a kill" % len(found))
            seen.add(found)
        self.run("once", "2", target, expected=0)
        self.expect(os.listdir(target) == ["Scene.xml"], "left over: %s" % os.listdir(target))
        print("%d kills, %d of them inside a save, %d different scenes found" %
              (rounds, halfway, len(seen)))

    def refused(self, name, **options):
        target = self.make(name)
        self.run("once", "1", target, expected=0)
        if name == "read-only":
            os.chmod(target, 0o555)
        told = self.run("once", "2", target, expected=1, **options)
        os.chmod(target, 0o755)
        self.expect(told.startswith("Not saved: " + target + "Scene.xml: "), "told: " + told)
        self.expect(read(target + "Scene.xml") == self.scenes[0], name + ": the old scene is lost")
        self.expect(os.listdir(target) == ["Scene.xml"], "left over: %s" % os.listdir(target))
        print("%s: %s" % (name, told.strip()))


def limit_file_size():
    signal.signal(signal.SIGXFSZ, signal.SIG_IGN)  # the write fails then, and the program goes on
    resource.setrlimit(resource.RLIMIT_FSIZE, (50000, 50000))


def main():
    parser = argparse.ArgumentParser(description="Saves scenes under real faults.")
    parser.add_argument("program")
    parser.add_argument("--rounds", type=int, default=25)
    parser.add_argument("--seed", type=int, default=random.SystemRandom().randrange(1 << 32))
    options = parser.parse_args()
    print("seed %d" % options.seed)
    with tempfile.TemporaryDirectory() as folder:
        saves = Saves(options.program, folder)
        saves.kills(options.rounds, random.Random(options.seed))
        saves.refused("full", preexec_fn=limit_file_size)
        # Nothing is read-only for the superuser.
        saves.refused("read-only", user=NOBODY if os.geteuid() == 0 else None)
        return 1 if saves.failures else 0


if __name__ == "__main__":
    sys.exit(main())
