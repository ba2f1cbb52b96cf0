#!/usr/bin/env python3
"""Makes the demo scenes in demo/Scenes: draws every frame, encodes the clips, writes scene and
zone files.

  demo/make_demo.py                 everything
  demo/make_demo.py --files         scene and zone files only, keeps the clips
  demo/make_demo.py --check         compares scene and zone files with what it would write
  demo/make_demo.py --picture CLIP FRAME FILE.png   one frame, for viewing

Needs Python 3 and, for the clips, ffmpeg with libtheora and libvorbis (Debian: ffmpeg). The
pictures are the same on every machine; the clips are kept beside this script because another
version of the encoder may give other bytes.
"""

import math
import pathlib
import struct
import subprocess
import sys

HERE = pathlib.Path(__file__).resolve().parent
sys.path.insert(0, str(HERE.parent / "tools"))

import corridor  # noqa: E402
import rooms  # noqa: E402
import scene_files  # noqa: E402
import warehouse  # noqa: E402
from scene_files import action  # noqa: E402
from vector import png  # noqa: E402

SCENES = HERE / "Scenes"
RATE = 25

FIRE_DRILL = [
    ("Alarm sounds", "alarm-corridor.ogv", [
        action("Zone", "Take extinguisher", "Extinguisher", True),
        action("Keypress", "Use the lift", "L", True),
        action("Random", "Smoke spreads"),
        action("Random", "Evacuate")]),
    ("Take extinguisher", "take-extinguisher.ogv", [
        action("Zone", "Evacuate", "Fire", True),
        action("Keypress", "Alarm sounds", "B"),
        action("Default", "Smoke spreads")]),
    ("Use the lift", "smoke-at-lift.ogv", [
        action("Default", "Smoke spreads")]),
    ("Evacuate", "way-out.ogv", [
        action("Keypress", "Alarm sounds", "R", True)]),
    ("Smoke spreads", "smoke-at-lift.ogv", [
        action("Keypress", "Evacuate", "E", True),
        action("Random", "Use the lift"),
        action("Random", "Evacuate")]),
]
FORKLIFT = [
    ("Approach", "forklift-aisle.ogv", [
        action("Keypress", "Stop and look", "S", True),
        action("Default", "Stop and look")]),
    ("Stop and look", "forklift-aisle.ogv", [
        action("Default", "Approach")]),
]


class Clip:
    """One video: where it belongs, its size, who draws it and how it is encoded."""

    def __init__(self, scene, name, size, frames, artist, quality, tone=False):
        self.scene, self.name, self.size, self.frames = scene, name, size, frames
        self.artist, self.quality, self.tone = artist, quality, tone

    @property
    def path(self):
        return SCENES / self.scene / self.name

    def encode(self):
        """Runs ffmpeg; frames go in as planar G, B, R."""
        width, height = self.size
        command = ["ffmpeg", "-loglevel", "error", "-y", "-f", "rawvideo", "-pix_fmt", "gbrp", "-s", f"{width}x{height}",
                   "-r", str(RATE), "-i", "-"]
        if self.tone:
            wave = self.path.with_suffix(".wav")
            wave.write_bytes(alarm_wave(self.frames / RATE))
            command += ["-i", str(wave), "-c:a", "libvorbis", "-q:a", "1"]
        command += ["-c:v", "libtheora", "-q:v", str(self.quality), "-g", "25", "-pix_fmt", "yuv420p",
                    "-bitexact", "-map_metadata", "-1", "-f", "ogg", str(self.path)]
        picture = self.artist(*self.size)
        with subprocess.Popen(command, stdin=subprocess.PIPE) as encoder:
            for number in range(self.frames):
                encoder.stdin.write(picture.draw(number).gbr())
                if number % 25 == 24:
                    print(f"{self.name}: frame {number + 1} of {self.frames}", flush=True)
            encoder.stdin.close()
        if self.tone:
            wave.unlink()
        if encoder.returncode:
            raise SystemExit(f"ffmpeg ended with {encoder.returncode}")


CLIPS = [
    Clip("Fire Drill Level 1", "alarm-corridor.ogv", (1280, 720), corridor.FRAMES, corridor.Corridor, 8, tone=True),
    Clip("Fire Drill Level 1", "take-extinguisher.ogv", (1024, 576), 75, rooms.Office, 8),
    Clip("Fire Drill Level 1", "smoke-at-lift.ogv", (1024, 576), 75, rooms.Lift, 8),
    Clip("Fire Drill Level 1", "way-out.ogv", (1024, 576), 75, rooms.Exit, 7),
    Clip("Forklift Safety", "forklift-aisle.ogv", (768, 432), 75, warehouse.Warehouse, 8),
]


def alarm_wave(seconds, rate=22050):
    """A two-tone alarm as a mono WAV file of 16-bit samples."""
    samples = bytearray()
    phase = 0.0
    for i in range(int(seconds * rate)):
        time = i / rate
        beat = time % 0.8
        phase += 2 * math.pi * (880 if beat < 0.4 else 660) / rate
        edge = min(1.0, (beat % 0.4) / 0.01, (0.4 - beat % 0.4) / 0.01)
        samples += struct.pack("<h", int(6500 * edge * (math.sin(phase) + 0.3 * math.sin(3 * phase))))
    header = struct.pack("<4sI4s4sIHHIIHH4sI", b"RIFF", 36 + len(samples), b"WAVE", b"fmt ", 16, 1, 1, rate, rate * 2, 2, 16,
                         b"data", len(samples))
    return header + bytes(samples)


def zones():
    """(clip, zones) of the clips that have zone files; every frame follows its subject."""
    alarm, bin_clip = CLIPS[0], CLIPS[1]
    office = rooms.Office(*bin_clip.size)

    def shapes(clip, outline):
        """Corners stay inside the picture, as the editor keeps them."""
        wide, high = clip.size[0] - 1, clip.size[1] - 1
        return [(True, [(min(max(x, 0), wide), min(max(y, 0), high)) for x, y in outline(number)])
                for number in range(clip.frames)]

    yield alarm, [("Extinguisher", shapes(alarm, lambda n: corridor.extinguisher_zone(n, *alarm.size))),
                  ("Exit", shapes(alarm, lambda n: corridor.exit_zone(n, *alarm.size)))]
    # The fire can be clicked once the worker has come close.
    yield bin_clip, [("Fire", [(number >= 25, points) for number, (_, points) in
                               enumerate(shapes(bin_clip, office.fire_zone))]),
                     ("Extinguisher", shapes(bin_clip, office.bottle_zone))]


def scene_and_zone_files():
    """(path, bytes) of every file that is not a clip."""
    for name, branches in (("Fire Drill Level 1", FIRE_DRILL), ("Forklift Safety", FORKLIFT)):
        yield SCENES / name / "Scene.xml", scene_files.scene_xml(name, branches[0][0], branches)
    for clip, shapes in zones():
        base = str(clip.path.with_suffix("")) + "-ZoneInfo"
        yield pathlib.Path(base + ".xml"), scene_files.zone_info_xml([name for name, _ in shapes])
        yield pathlib.Path(base + ".bin"), scene_files.zone_info_bin(shapes)


def check():
    wrong = [file for file, data in scene_and_zone_files() if not file.is_file() or file.read_bytes() != data]
    for file in wrong:
        print(f"{file}: differs from what this script writes")
    return 1 if wrong else 0


def picture(name, number, target):
    clip = next(clip for clip in CLIPS if clip.name == name)
    frame = clip.artist(*clip.size).draw(int(number))
    width, height = clip.size
    pixels = bytearray(b"\xff" * (width * height * 4))
    for i in range(3):
        pixels[i::4] = frame.planes[i]
    pathlib.Path(target).write_bytes(png.encode(width, height, bytes(pixels)))


def main(arguments):
    if arguments[:1] == ["--picture"] and len(arguments) == 4:
        picture(*arguments[1:])
    elif arguments == ["--check"]:
        return check()
    elif arguments in ([], ["--files"]):
        for file, data in scene_and_zone_files():
            file.parent.mkdir(parents=True, exist_ok=True)
            file.write_bytes(data)
        for clip in CLIPS if not arguments else []:
            clip.encode()
        size = sum(file.stat().st_size for file in SCENES.rglob("*") if file.is_file())
        print(f"{size / 1e6:.2f} MB in {SCENES}")
    else:
        print(__doc__)
        return 2
    return 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
