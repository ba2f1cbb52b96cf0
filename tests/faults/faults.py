#!/usr/bin/env python3
"""An editing run under real faults: killed at random moments, calls failing in turn, a full disk,
folders and files that may not be written, files that vanish. After each, the last completed save of
every file must be there, whole; the one that was on its way may be there instead. Every earlier
version must be whole, too.

Usage: faults.py PROGRAM [--rounds N] [--seed S] [--runner COMMAND]

PROGRAM is the built editing_run, which kills itself (SIGKILL, TerminateProcess) from a thread that
knows nothing of the saves; with a runner (Wine) what needs this system's rights and limits is left
out. Exit 0 when nothing was lost, 1 otherwise. The seed is printed; the moments differ all the same.
"""

import argparse
import os
import pathlib
import random
import resource
import shutil
import signal
import subprocess
import sys
import tempfile
import time

VARIANTS = 4
FILES = {"Scene.xml": "scene", "clip-ZoneInfo.xml": "zones", "clip-ZoneInfo.bin": "zones",
         "clip.ogv": "video"}
LEFTOVER_SECONDS = 7200  # older than what the next copy leaves alone
VIDEO_BYTES = 1500000  # of the smallest: two blocks of the copy
SHORT = 10  # rounds of a run that is no more than a glance
NOBODY = 65534
PATIENCE = 60  # seconds; a run is killed within one
LIMIT = 40000  # bytes of a file: less than any variant needs


def read(path):
    try:
        with open(path, "rb") as stream:
            return stream.read()
    except FileNotFoundError:
        return None


class Faults:
    def __init__(self, options, folder):
        self.runner = [os.path.abspath(options.runner)] if options.runner else []
        # A copy, where another user may run it too.
        self.program = shutil.copy(options.program, folder)
        os.chmod(folder, 0o755)
        os.chdir(folder)  # for the log pages
        self.folder = os.path.join(folder, "")
        self.random = random.Random(options.seed)
        self.tried = self.lost = self.kept = 0
        for variant in range(VARIANTS):
            with open("%svideo%d.ogv" % (self.folder, variant), "wb") as video:
                video.write(b"abcd"[variant:variant + 1] * (VIDEO_BYTES + variant * 100000))
        self.whole = []
        for variant in range(VARIANTS):
            scene = self.scene("whole%d" % variant, variant)
            self.whole.append({name: read(scene + name) for name in FILES})
        for name in FILES:
            if len({contents[name] for contents in self.whole}) != VARIANTS:
                sys.exit("the variants of %s do not differ" % name)

    def command(self, *arguments):
        return [*self.runner, self.program, *arguments]

    def run(self, *arguments, expected=0, **options):
        result = subprocess.run(self.command(*arguments), capture_output=True, text=True,
                                check=False, **options)
        if result.returncode != expected:
            self.lose("%s: exit %d, %s" % (arguments, result.returncode, result.stderr))
        return result

    def lose(self, text):
        self.lost += 1
        print("LOST: " + text)

    def scene(self, name, variant=0):
        path = os.path.join(self.folder, name, "")
        os.makedirs(path)
        self.run("once", self.folder, path, str(variant))
        return path

    def check(self, scene, output, before, what, following=()):
        """What was reported complete must be there; of the files in `following` the successor
        may be there instead, which is the next variant after a kill and else the last one."""
        last = dict(before)
        for line in output.splitlines():
            kind, _, variant = line.partition(" ")
            if variant.isdigit():
                last[kind] = int(variant)
        for name, kind in FILES.items():
            found = read(scene + name)
            allowed = [last[kind]]
            if name in following:
                allowed.append((last[kind] + 1) % VARIANTS if following is FILES else VARIANTS - 1)
            if found not in [self.whole[variant][name] for variant in allowed]:
                self.lose("%s: %s is neither of %s (%s bytes)" %
                          (what, name, allowed, None if found is None else len(found)))
        self.versions(what)
        self.tried += 1

    def versions(self, what):
        """Each file of an earlier version is one that was saved."""
        for folder, _, names in os.walk("Backups"):
            for name in names:
                kept = [file for file in FILES if name.endswith("-" + file.removeprefix("clip-"))]
                for file in kept:
                    found = read(os.path.join(folder, name))
                    if found not in [whole[file] for whole in self.whole]:
                        self.lose("%s: earlier version %s is damaged" % (what, name))
                self.kept += len(kept)

    def until_killed(self, *arguments, meddle=None, **options):
        """What the run printed, and its exit code. Wine now and then keeps a program that ended itself:
        one thread of it waits for ever and nothing runs any more."""
        with subprocess.Popen(self.command(*arguments), stdout=subprocess.PIPE,
                              stderr=subprocess.DEVNULL, text=True,
                              start_new_session=True, **options) as process:
            while meddle and process.poll() is None:
                meddle()
            try:
                output = process.communicate(timeout=PATIENCE)[0]
            except subprocess.TimeoutExpired:
                os.killpg(process.pid, signal.SIGKILL)
                output = process.communicate()[0]
            return output, process.returncode

    def kills(self, rounds):
        # Variant 3 comes before variant 0, the first of each run.
        scene = self.scene("killed", VARIANTS - 1)
        inside = 0
        for number in range(rounds):
            self.run("once", self.folder, scene, str(VARIANTS - 1))
            time_left = self.random.randrange(2000, 400000 if self.runner else 200000)
            output, _ = self.until_killed("forever", self.folder, scene, str(time_left))
            temporaries = sorted(set(os.listdir(scene)) - set(FILES))
            inside += bool(temporaries)
            for name in temporaries:
                old = time.time() - LEFTOVER_SECONDS
                os.utime(scene + name, (old, old))
            self.check(scene, output, dict.fromkeys(FILES.values(), VARIANTS - 1),
                       "kill %d" % number, FILES)
        self.run("once", self.folder, scene, "1")
        self.check(scene, "", dict.fromkeys(FILES.values(), 1), "after the kills")
        if sorted(os.listdir(scene)) != sorted(FILES):
            self.lose("left over: %s" % os.listdir(scene))
        if self.kept == 0:
            self.lose("no earlier versions were kept")
        print("%d kills, %d of them inside a save; %d times an earlier version was whole" %
              (rounds, inside, self.kept))

    def drafts(self, what, rounds, meddle=None, **options):
        """Kills an editing run that keeps drafts and earlier versions. What it saw on the disk must
        come back; where `meddle` takes the drafts away, only the run has to go on."""
        ages = []
        for number in range(rounds):
            time_left = str(self.random.randrange(100000, 3000000 if self.runner else 600000))
            output, code = self.until_killed("drafts", time_left, meddle=meddle, **options)
            if not self.runner and code != -signal.SIGKILL:
                self.lose("%s %d: exit %d" % (what, number, code))
            lines = [line.split() for line in output.splitlines() if " " in line]
            ages += [int(value) for kind, value in lines if kind == "age"]
            recovered = self.run("recovered", cwd=options.get("cwd")).stdout
            found = dict(line.split() for line in recovered.splitlines())
            if found["damaged"] != "0":
                self.lose("%s %d: %s of %s earlier versions cannot be read" %
                          (what, number, found["damaged"], found["versions"]))
            for kind in ("scene", "zones"):
                seen = max((int(value) for word, value in lines if word == kind), default=0)
                if not meddle and seen > int(found[kind]):
                    self.lose("%s %d: edit %d of the %s was on the disk, found %s" %
                              (what, number, seen, kind, found[kind]))
            self.tried += 1
        ages = sorted(ages) or [0]
        print("%s: %d kills; %d times seen on the disk, half within %d ms, all within %d ms" %
              (what, rounds, len(ages), ages[len(ages) // 2], ages[-1]))

    def calls(self, step):
        result = self.run("calls", self.folder, os.path.join(self.folder, "calls", ""), str(step))
        words = result.stdout.splitlines()[-1].split()
        self.tried += int(words[3])
        self.lost += int(words[5])
        print("failing, shortened and last calls: %s" % " ".join(words))

    def refused(self, name, scene, **options):
        """Saves a larger variant where that cannot work: each file is refused or complete."""
        output = self.run("once", self.folder, scene, "3", expected=1, **options)
        # The list of a pair is replaced before its binary file, and may have fitted.
        self.check(scene, output.stdout, dict.fromkeys(FILES.values(), 0), name,
                   ("clip-ZoneInfo.xml",))
        if "Not saved: " not in output.stderr:
            self.lose(name + ": nothing was said, " + output.stderr)
        print("%s: %s" % (name, output.stdout.replace("\n", ", ")))

    def full_disk(self):
        scene = os.path.join(self.folder, "full", "")
        os.makedirs(scene)
        mount = ["mount", "-t", "tmpfs", "-o", "size=4m", "tmpfs", scene]
        if subprocess.run(mount, stderr=subprocess.DEVNULL, check=False).returncode != 0:
            print("full disk: no right to mount one")
            return
        try:
            self.run("once", self.folder, scene, "0")
            with open(scene + "ballast", "wb", buffering=0) as ballast:
                try:
                    while ballast.write(bytes(4096)) == 4096:
                        pass
                except OSError:
                    pass
            self.refused("full disk", scene)
        finally:
            subprocess.run(["umount", scene], check=True)

    def no_rights(self):
        # Nothing is read-only for the superuser.
        user = {"user": NOBODY} if os.geteuid() == 0 else {}
        scene = self.scene("read-only folder")
        os.chmod(scene, 0o555)
        self.refused("read-only folder", scene, **user)
        os.chmod(scene, 0o755)
        scene = self.scene("read-only files")
        os.chmod(scene, 0o777)
        for name in FILES:
            os.chmod(scene + name, 0o444)
        self.refused("read-only files", scene, **user)
        # Where the scene can be written, but nothing beside it.
        place = os.path.join(self.folder, "beside", "")
        for name, mode in (("Scenes", 0o777), ("Drafts", 0o555), ("Backups", 0o555), ("", 0o777)):
            os.makedirs(place + name, exist_ok=True)
            os.chmod(place + name, mode)
        self.drafts("read-only drafts and versions", 1, cwd=place, **user)

    def vanishing(self, rounds):
        """Somebody else clears the folder all the time: nothing may end the run but the kill."""
        scene = self.scene("vanishing")

        def clear():
            names = sorted({*FILES, *os.listdir(scene)})
            for name in self.random.sample(names, 3):
                pathlib.Path(scene + name).unlink(missing_ok=True)

        for number in range(rounds):
            _, code = self.until_killed("forever", self.folder, scene, "200000", meddle=clear)
            # A run that lost its temporary refuses that save and ends by itself, with 1.
            if code not in (1, -signal.SIGKILL):
                self.lose("vanishing %d: exit %d" % (number, code))
            self.run("once", self.folder, scene, "2")
            self.check(scene, "", dict.fromkeys(FILES.values(), 2), "vanishing")
        print("%d runs with vanishing files" % rounds)


def limit_file_size():
    signal.signal(signal.SIGXFSZ, signal.SIG_IGN)  # the write fails then, and the program goes on
    resource.setrlimit(resource.RLIMIT_FSIZE, (LIMIT, LIMIT))


def main():
    parser = argparse.ArgumentParser(description="An editing run under real faults.")
    parser.add_argument("program")
    parser.add_argument("--rounds", type=int, default=SHORT)
    parser.add_argument("--seed", type=int, default=random.SystemRandom().randrange(1 << 32))
    parser.add_argument("--runner")
    options = parser.parse_args()
    print("seed %d" % options.seed)
    with tempfile.TemporaryDirectory() as folder:
        faults = Faults(options, folder)
        faults.kills(options.rounds)
        is_short = options.rounds <= SHORT
        faults.drafts("drafts", options.rounds // 2 if is_short else options.rounds)
        faults.calls(5 if is_short else 1)
        if not options.runner:
            faults.refused("file-size limit", faults.scene("limited"), preexec_fn=limit_file_size)
            faults.full_disk()
            faults.no_rights()
            faults.vanishing(max(options.rounds // 20, 2))
            faults.drafts("vanishing drafts", max(options.rounds // 20, 2),
                          lambda: shutil.rmtree("Drafts", ignore_errors=True))
        print("%d kills and %d faults in all: %d tried, %d lost" %
              (options.rounds, faults.tried - options.rounds, faults.tried, faults.lost))
        return 1 if faults.lost else 0


if __name__ == "__main__":
    sys.exit(main())
