"""The demo scenes as they are kept: clips, scene files and zone files fit together."""

import os
import re
import struct
import subprocess
import sys
import unittest

ROOT = os.path.dirname(os.path.dirname(os.path.dirname(os.path.abspath(__file__))))
SCENES = os.path.join(ROOT, "demo", "Scenes")
FIRE_DRILL = os.path.join(SCENES, "Fire Drill Level 1")


def read(*parts):
    with open(os.path.join(*parts), "rb") as stream:
        return stream.read()


def pages(data):
    """(serial, granule position, body) of each Ogg page, https://www.rfc-editor.org/rfc/rfc3533."""
    offset = 0
    while data[offset:offset + 4] == b"OggS":
        granule, serial = struct.unpack("<qI", data[offset + 6:offset + 18])
        count = data[offset + 26]
        size = sum(data[offset + 27:offset + 27 + count])
        start = offset + 27 + count
        yield serial, granule, data[start:start + size]
        offset = start + size


class Clip:
    """Theora I format, section 6.2: the identification header and the granule position."""

    def __init__(self, data):
        self.audio = False
        theora = None
        for serial, granule, body in pages(data):
            if body[:7] == b"\x80theora":
                theora = serial
                wide, high = struct.unpack(">HH", body[10:14])
                self.width, self.height = wide * 16, high * 16
                self.picture = int.from_bytes(body[14:17], "big"), int.from_bytes(body[17:20], "big")
                shift = (struct.unpack(">H", body[40:42])[0] >> 5) & 31
            elif body[:7] == b"\x01vorbis":
                self.audio = True
            elif serial == theora and granule > 0:
                self.frames = (granule >> shift) + (granule & ((1 << shift) - 1))


def zone_records(data):
    """[(name, [(active, points)])], sizes checked against the bytes that are there."""
    offset = 0
    zones = []
    while offset < len(data):
        tag, size = struct.unpack_from("<4sI", data, offset)
        assert tag == b"ENOZ", tag
        end = offset + 8 + size
        length, = struct.unpack_from("<I", data, offset + 8)
        place = offset + 12 + length
        name = data[offset + 12:place - 1].decode("utf-8")
        count, = struct.unpack_from("<I", data, place)
        place += 4
        frames = []
        for _ in range(count):
            record, active = struct.unpack_from("<II", data, place)
            values = struct.unpack_from(f"<{(record - 8) // 4}i", data, place + 8)
            frames.append((active, list(zip(values[::2], values[1::2]))))
            place += record
        assert place == end, (place, end)
        zones.append((name, frames))
        offset = end
    return zones


class DemoTest(unittest.TestCase):
    def test_scene_and_zone_files_are_what_the_script_writes(self):
        script = os.path.join(ROOT, "demo", "make_demo.py")
        stale = subprocess.run([sys.executable, script, "--check"], stdout=subprocess.PIPE, text=True, check=False)
        self.assertEqual(stale.returncode, 0, stale.stdout)

    def test_the_fire_drill_shows_every_kind_of_action(self):
        text = read(FIRE_DRILL, "Scene.xml")
        self.assertTrue(text.startswith(
            b"<Scene>\r\n\t<Name>Fire Drill Level 1</Name>\r\n\t<FirstBranch>Alarm sounds</FirstBranch>\r\n"
            b"\t<Branch>\r\n\t\t<ID>Alarm sounds</ID>\r\n\t\t<Filename>alarm-corridor.ogv</Filename>\r\n"
            b"\t\t<Action>\r\n\t\t\t<Type>ZoneAction</Type>\r\n\t\t\t<Parameter>Extinguisher</Parameter>\r\n"
            b"\t\t\t<Immediate>true</Immediate>\r\n\t\t\t<BranchID>Take extinguisher</BranchID>\r\n\t\t</Action>\r\n"))
        self.assertTrue(text.endswith(b"\t</Branch>\r\n</Scene>\r\n"))
        branches = set(re.findall(rb"<ID>(.*)</ID>", text))
        self.assertEqual(len(branches), 5)
        self.assertEqual(len(set(re.findall(rb"<Filename>(.*)</Filename>", text))), 4)
        self.assertEqual(set(re.findall(rb"<Type>(.*)</Type>", text)),
                         {b"DefaultAction", b"KeypressAction", b"ZoneAction", b"RandomAction"})
        self.assertLessEqual(set(re.findall(rb"<BranchID>(.*)</BranchID>", text)), branches)

    def test_clips_are_small_and_in_whole_blocks(self):
        total, clips = 0, []
        for folder, _, files in os.walk(SCENES):
            for name in files:
                total += os.path.getsize(os.path.join(folder, name))
                if name.endswith(".ogv"):
                    clips.append(Clip(read(folder, name)))
        self.assertLess(total, 3_000_000)
        self.assertTrue(all(clip.picture == (clip.width, clip.height) for clip in clips))
        self.assertIn((1280, 720), [clip.picture for clip in clips])
        self.assertTrue(any(clip.audio for clip in clips))

    def test_zones_have_a_shape_for_every_frame_and_follow_their_subject(self):
        for name, zones in (("alarm-corridor", ["Extinguisher", "Exit"]), ("take-extinguisher", ["Fire", "Extinguisher"])):
            clip = Clip(read(FIRE_DRILL, name + ".ogv"))
            found = zone_records(read(FIRE_DRILL, name + "-ZoneInfo.bin"))
            self.assertEqual([zone for zone, _ in found], zones)
            self.assertEqual(re.findall(r"<Name>(.*)</Name>", read(FIRE_DRILL, name + "-ZoneInfo.xml").decode()), zones)
            for _, frames in found:
                self.assertEqual(len(frames), clip.frames)
                self.assertEqual(len({len(points) for _, points in frames}), 1)
                self.assertTrue(all(0 <= x < clip.width and 0 <= y < clip.height
                                    for _, points in frames for x, y in points))
                steps = [abs(b[0] - a[0]) for (_, first), (_, second) in zip(frames, frames[1:])
                         for a, b in zip(first, second)]
                self.assertGreater(sum(steps), 0)
                self.assertLess(max(steps), 40)


if __name__ == "__main__":
    unittest.main()
