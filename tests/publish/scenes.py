"""Scenes for the tests of published pages, made on the spot: tiny clips of which each picture shows
its number, and zones of known places."""

import os
import struct
import subprocess
from xml.sax.saxutils import escape

WIDTH, HEIGHT = 128, 96
# The last one repeats its last picture, which its file does not hold again.
FRAMES = {"moving.ogv": 100, "chance.ogv": 12, "still.ogv": 12}

# Names that are mark-up or code where they are not taken as texts.
HOSTILE = [
    "<script>hacked1=1</script>", "</script><script>hacked2=1</script>", "<img src=x onerror=hacked3=1>",
    "\"-(hacked4=1)-\"", "'+(hacked5=1)+'", "\\u003cscript>hacked6=1\\u003c/script>", "\\\"-(hacked7=1)//",
    "]]><!--", "--><svg onload=hacked8=1>", "&lt;b&gt; &amp;", "a\u2028hacked9=1//\u2029b", "${hacked10=1}`",
    "%s %d $& $1 @TITLE@ @ICON@", "</title><script>hacked11=1</script>", "\u202etxt.exe",
    "javascript:hacked12=1", "__proto__", "\U0001f525 Brandschutz — «Übung»",
]


def write_clip(path, frames):
    """Bit N of a picture's number is white or black in column N, each 16 wide."""
    pictures = bytearray()
    for number in range(frames):
        row = b"".join((b"\xeb" if number >> bit & 1 else b"\x10") * 16 for bit in range(8))
        pictures += row * HEIGHT + b"\x80" * (WIDTH * HEIGHT // 2)
    subprocess.run(
        ["ffmpeg", "-v", "error", "-y", "-f", "rawvideo", "-pix_fmt", "yuv420p", "-s", f"{WIDTH}x{HEIGHT}",
         "-r", "25", "-i", "-", "-f", "lavfi", "-i", "sine=440", "-c:v", "libtheora", "-q:v", "10", "-g", "12",
         "-c:a", "libvorbis", "-frames:v", str(frames), "-t", str(frames / 25), "-f", "ogg", path],
        input=bytes(pictures), check=True)


def write_zones(base, zones):
    """zones: name -> function from the frame to corners in the picture's own pixels; 100 frames."""
    names = "".join(f"\t<Zone>\n\t\t<Name>{escape(name)}</Name>\n\t</Zone>\n" for name in zones)
    with open(base + "-ZoneInfo.xml", "w", encoding="utf-8", newline="\r\n") as stream:
        stream.write(f"<ZoneInfo>\n\t<VideoWidth>{WIDTH}</VideoWidth>\n\t<VideoHeight>{HEIGHT}</VideoHeight>\n"
                     f"{names}</ZoneInfo>\n")
    with open(base + "-ZoneInfo.bin", "wb") as stream:
        for name, corners in zones.items():
            text = name.encode() + b"\0"
            chunk = struct.pack("<I", len(text)) + text + struct.pack("<I", 100)
            for frame in range(100):
                points = corners(frame)
                chunk += struct.pack("<II", 8 + 8 * len(points), 1)
                chunk += b"".join(struct.pack("<ii", *point) for point in points)
            stream.write(struct.pack("<II", 0x5A4F4E45, len(chunk)) + chunk)


def box(left, top, right, bottom):
    return [(left, top), (right, top), (right, bottom), (left, bottom)]


def write_scene(folder, first, branches):
    """branches: (name, video, [(type, parameter, target, immediate)])"""
    text = f"<Scene>\n<Name>{os.path.basename(folder)}</Name>\n<FirstBranch>{escape(first)}</FirstBranch>\n"
    for name, video, actions in branches:
        text += f"<Branch><ID>{escape(name)}</ID><Filename>{video}</Filename>\n"
        for kind, parameter, target, immediate in actions:
            text += (f"<Action><Type>{kind}Action</Type><Parameter>{escape(parameter)}</Parameter>"
                     f"<Immediate>{str(immediate).lower()}</Immediate><BranchID>{escape(target)}</BranchID></Action>\n")
        text += "</Branch>\n"
    with open(os.path.join(folder, "Scene.xml"), "w", encoding="utf-8", newline="\r\n") as stream:
        stream.write(text + "</Scene>\n")


def write_moving(folder):
    """A zone that wanders one pixel of the clip to the right with each picture."""
    os.makedirs(folder)
    for video, frames in FRAMES.items():
        write_clip(os.path.join(folder, video), frames)
    write_zones(os.path.join(folder, "moving"),
                {"Box": lambda frame: box(10 + frame, 20, 40 + frame, 60)})
    write_scene(folder, "Moving", [
        ("Moving", "moving.ogv", [("Zone", "Box", "Moving", True), ("Keypress", "B", "Chance", False),
                                  ("Keypress", "S", "Chance", True), ("Default", "", "Moving", False)]),
        ("Chance", "chance.ogv", [("Random", "", "Still", False), ("Random", "", "Moving", False),
                                  ("Keypress", "E", "End", True)]),
        ("Still", "still.ogv", [("Default", "", "Chance", False), ("Keypress", "E", "End", True)]),
        ("End", "chance.ogv", []),
    ])


def write_long(folder, count):
    """Branches one after the other, on five clips."""
    os.makedirs(folder)
    for clip in range(5):
        write_clip(os.path.join(folder, f"{clip}.ogv"), 12)
    write_scene(folder, "Branch 0", [
        (f"Branch {number}", f"{number % 5}.ogv",
         [("Default", "", f"Branch {(number + 1) % count}", False),
          ("Keypress", "N", f"Branch {(number + 1) % count}", True)]) for number in range(count)])


def write_hostile(folder):
    os.makedirs(folder)
    write_clip(os.path.join(folder, "clip.ogv"), 25)
    write_zones(os.path.join(folder, "clip"), {name: lambda _: box(0, 0, 128, 96) for name in HOSTILE})
    actions = [("Zone", name, name, True) for name in HOSTILE]
    actions += [("Keypress", "A", HOSTILE[0], True), ("Default", "", "Start", False)]
    write_scene(folder, "Start", [("Start", "clip.ogv", actions)] +
                [(name, "clip.ogv", []) for name in HOSTILE[1:]])
