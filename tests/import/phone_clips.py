#!/usr/bin/env python3
"""Imports clips such as phones and cameras make, and compares what comes out with its source.

Usage: phone_clips.py QUORVEL_INSPECT [--long] [CLIP...]

The clips are made by ffmpeg on the spot; without ffmpeg the test is skipped (exit code 77). With
--long, the clip whose sound is compared at its end has ten minutes instead of half a one.
"""

import array
import json
import os
import re
import shutil
import struct
import subprocess
import sys
import tempfile

PICTURE = ["-f", "lavfi", "-i", "testsrc2=s={size}:r={rate}:d={seconds}"]
SOUND = ["-f", "lavfi", "-i", "sine=440:d={seconds}"]
H264 = ["-c:v", "libx264", "-preset", "ultrafast", "-pix_fmt", "yuv420p", "-bf", "0"]


def ffmpeg(*arguments, text=True):
    run = subprocess.run(["ffmpeg", "-v", "error", "-nostdin", "-y", *arguments],
                         capture_output=True, text=text)
    if run.returncode != 0:
        raise RuntimeError(f"{arguments}: {run.stderr}")
    return run.stdout


class Clip:
    """One source: how it is made, and what must come out."""

    def __init__(self, name, make, size="320x180", rate="30", seconds=1, sound=True, ends=("done",),
                 frames=None, out=None, fps=None, reference=None, least=0.95, area=None):
        self.name, self.make, self.size, self.rate = name, make, size, rate
        self.seconds, self.sound, self.ends = seconds, sound, ends
        self.frames, self.out, self.fps = frames, out, fps
        self.reference, self.least = reference, least
        self.area = area  # of the clip, to be as the picture was before it was stored

    def inputs(self):
        parts = PICTURE + (SOUND if self.sound else [])
        return [p.format(size=self.size, rate=self.rate, seconds=self.seconds) for p in parts]

    def build(self, folder):
        path = os.path.join(folder, self.name)
        if callable(self.make):
            self.make(self, folder, path)
        else:
            ffmpeg(*self.inputs(), *self.make, "file:" + path)
        return path


def turned(coded_by, matrix):
    """Stored the way the camera lay; the header's matrix says how to show it."""
    def make(clip, _folder, path):
        ffmpeg(*clip.inputs(), "-vf", coded_by, *H264, "-c:a", "aac", path)
        with open(path, "r+b") as stream:
            stream.seek(stream.read().index(b"tkhd") + 44)
            a, b, c, d = (value << 16 for value in matrix)
            stream.write(struct.pack(">9i", a, b, 0, c, d, 0, 0, 0, 1 << 30))
    return make


def cut(arguments, part):
    def make(clip, folder, path):
        ffmpeg(*clip.inputs(), *arguments, path)
        with open(path, "r+b") as stream:
            stream.truncate(int(os.path.getsize(path) * part))
    return make


def plain_bytes(data):
    def make(_clip, _folder, path):
        with open(path, "wb") as stream:
            stream.write(data)
    return make


def without_picture(clip, folder, path):
    ffmpeg("-f", "lavfi", "-i", "sine=440:d=1", "-c:a", "aac", path)


def with_cover(clip, folder, path):
    cover = os.path.join(folder, "cover.png")
    ffmpeg("-f", "lavfi", "-i", "testsrc2=s=320x180", "-frames:v", "1", cover)
    ffmpeg("-f", "lavfi", "-i", "sine=440:d=1", "-i", cover, "-map", "0", "-map", "1", "-c:a", "aac",
           "-c:v", "png", "-disposition:v:0", "attached_pic", path)
    os.remove(cover)


def cover_first(clip, folder, path):
    """A picture that the file does not call a cover."""
    cover = os.path.join(folder, "cover.jpg")
    ffmpeg("-f", "lavfi", "-i", "testsrc=s=500x500", "-frames:v", "1", cover)
    ffmpeg("-i", cover, *clip.inputs(), "-map", "0", "-map", "1", "-map", "2", "-c:v:0", "copy",
           "-c:v:1", "libx264", "-disposition:v:0", "default", "-disposition:v:1", "0", path)
    os.remove(cover)


TO_HIGH = ["-vf", "format=yuv444p,zscale=tin=bt709:min=bt470bg:pin=bt709:rin=limited:p=bt709:t=linear:"
           "npl=100,format=gbrpf32le,zscale=min=gbr:tin=linear:pin=bt709:p=bt2020:t={0}:m=bt2020nc:r=limited,"
           "format=yuv420p10le", "-c:v", "libx265", "-preset", "ultrafast", "-x265-params",
           "log-level=none", "-color_primaries", "bt2020", "-colorspace", "bt2020nc", "-color_trc",
           "{0}"]


def high_range(transfer):
    return [a.format(transfer) for a in TO_HIGH] + ["-tag:v", "hvc1", "-c:a", "aac"]


SCALE = "scale={0}:{1}:flags=bicubic"
CLIPS = [
    Clip("plain.mp4", H264 + ["-c:a", "aac"], frames=30, out=(320, 176), fps=30,
         reference="crop=320:176:0:2"),
    Clip("upright.mov", turned("transpose=cclock", (0, 1, -1, 0)), size="240x320", frames=30,
         out=(576, 320), area="crop=240:320:168:0"),
    Clip("upside.mov", turned("hflip,vflip", (-1, 0, 0, -1)), frames=30, out=(320, 176),
         area="null", reference="crop=320:176:0:2"),
    Clip("other side.mov", turned("transpose=clock", (0, -1, 1, 0)), size="240x320", frames=30,
         out=(576, 320), area="crop=240:320:168:0"),
    Clip("mirror.mp4", turned("hflip", (-1, 0, 0, 1)), frames=30, out=(320, 176), area="null",
         reference="crop=320:176:0:2"),
    Clip("large.mp4", H264 + ["-an"], size="1920x1080", seconds=0.2, frames=6, out=(1280, 720),
         sound=False, reference=SCALE.format(1280, 720)),
    Clip("odd.mkv", ["-c:v", "ffv1", "-pix_fmt", "yuv444p", "-c:a", "flac"], size="321x181",
         frames=30, out=(320, 176)),
    Clip("old.avi", ["-vf", "setsar=16/15,setdar=4/3", "-c:v", "mpeg4", "-q:v", "2",
                     "-c:a", "libmp3lame"], size="720x576", rate="25", seconds=0.4, frames=11,
         out=(1024, 576), fps=25),
    Clip("fields.mp4", ["-vf", "interlace", "-c:v", "libx264", "-flags", "+ilme+ildct",
                        "-preset", "ultrafast"], rate="50", frames=25, fps=25, out=(320, 176)),
    Clip("variable.mp4", ["-vf", "select='not(eq(mod(n,6),5))'", "-vsync", "vfr", *H264],
         seconds=3, frames=74, fps=25, out=(320, 176)),
    Clip("still.mp4", ["-vf", "lutyuv=y=90:u=128:v=128", *H264], frames=30, out=(320, 176)),
    Clip("early sound.mkv", [*H264, "-c:a", "aac"], frames=30, out=(320, 176), area="null",
         reference="crop=320:176:0:2"),
    Clip("cover.mov", cover_first, frames=30, out=(320, 176)),
    Clip("slow.mp4", H264, rate="240", frames=60, fps=60, out=(320, 176)),
    Clip("pq.mov", high_range("smpte2084"), frames=30, out=(320, 176), least=0.6,
         reference="crop=320:176:0:2"),
    Clip("hlg.mov", high_range("arib-std-b67"), frames=30, out=(320, 176), least=0.6,
         reference="crop=320:176:0:2"),
    Clip("full.avi", ["-c:v", "mjpeg", "-pix_fmt", "yuvj420p", "-q:v", "2", "-c:a", "pcm_s16le",
                      "-ac", "1"], frames=30, out=(320, 176), reference="crop=320:176:0:2"),
    Clip("-dash 100%: \"q\" 'é' 北.webm", ["-c:v", "libvpx", "-deadline", "realtime", "-c:a",
                                          "libopus", "-live", "1"], frames=30, out=(320, 176)),
    Clip("camera.mts", ["-c:v", "libx264", "-preset", "ultrafast", "-c:a", "ac3", "-f", "mpegts"],
         rate="25", frames=25, fps=25, out=(320, 176)),
    Clip("tape.dv", ["-target", "pal-dv"], size="720x576", rate="25", seconds=0.4, frames=10, fps=25),
    Clip("moving.gif", [], sound=False, rate="10", frames=10, fps=10, out=(320, 176)),
    Clip("surround.mkv", ["-af", "pan=5.1|c0=c0|c1=c0|c2=c0|c3=c0|c4=c0|c5=c0", *H264, "-c:a",
                          "ac3"], frames=30),
    Clip("two pictures.mp4", ["-map", "0:v", "-map", "0:v", "-map", "1:a", *H264, "-s:v:1", "64x64"],
         frames=30, out=(320, 176)),
    Clip("cut.mp4", cut(H264 + ["-c:a", "aac", "-movflags", "+faststart"], 0.6), seconds=2,
         ends=("failed", "cut")),
    Clip("cut.avi", cut(["-c:v", "mpeg4", "-c:a", "libmp3lame"], 0.6), seconds=2,
         ends=("failed", "cut")),
    Clip("cut.mkv", cut(H264, 0.6), seconds=2, ends=("failed", "cut")),
    Clip("no index.mp4", cut(H264, 0.6), ends=("failed", "unreadable")),
    Clip("noise.mp4", plain_bytes(os.urandom(100000)), ends=("failed", "unreadable")),
    Clip("notes.avi", plain_bytes(b"Meeting on Monday\n" * 1000), ends=("failed", "unreadable")),
    Clip("empty.mov", plain_bytes(b""), ends=("failed", "unreadable")),
    Clip("talk.m4a", without_picture, ends=("failed", "no-picture")),
    Clip("song.m4a", with_cover, ends=("failed", "no-picture")),
]


def ssim(clip, result, source):
    """Beside the source, or beside what the source was made from."""
    beside = clip.inputs()[:4] if clip.area else ["-i", "file:" + source]
    lines = subprocess.run(
        ["ffmpeg", "-v", "info", "-nostdin", "-i", "file:" + result, *beside, "-lavfi",
         f"[1:v]{clip.reference or 'null'},format=yuv420p[b];[0:v]{clip.area or 'null'}[a];[a][b]ssim",
         "-f", "null", "-"],
        check=True, capture_output=True, text=True).stderr
    return float(re.search(r"SSIM Y:([0-9.]+)", lines).group(1))


def check(clip, source, folder, line):
    problems = []

    def expect(what, found, wanted):
        if wanted is not None and found != wanted:
            problems.append(f"{what}: {found}, not {wanted}")

    expect("state", line["state"], clip.ends[0])
    if line["state"] != "done":
        expect("reason", line["reason"], clip.ends[1] if len(clip.ends) > 1 else None)
        return problems + ([line["text"] + " " + line["details"]] if problems else [])
    expect("frames", line["frames"], clip.frames)
    expect("fps", round(line["fps"], 3), clip.fps)
    expect("size", (line["width"], line["height"]), clip.out)
    expect("sound", line["sound"], clip.sound)
    if not problems and (clip.reference or clip.area):
        value = ssim(clip, os.path.join(folder, line["file"]), source)
        if value < clip.least:
            problems.append(f"SSIM {value}")
    return problems


BEEP = "aevalsrc='sin(2*PI*1000*t)*lt(mod(t,10),0.05)':s=44100:d={0}"


def beep_start(path, around):
    """Where the beep begins that is due at a time, in seconds."""
    samples = array.array("h", ffmpeg("-i", "file:" + path, "-ss", str(around - 1), "-t", "2", "-ac",
                                      "1", "-ar", "48000", "-f", "s16le", "-", text=False))
    loud = max(map(abs, samples)) / 4
    return around - 1 + next(i for i, value in enumerate(samples) if abs(value) > loud) / 48000


def check_sound(inspect, folder, into, seconds):
    """A clip whose frames come at odd times: its sound must stay in step up to the end."""
    path = os.path.join(folder, "long.mp4")
    ffmpeg("-f", "lavfi", "-i", f"testsrc2=s=160x96:r=30:d={seconds}", "-f", "lavfi", "-i",
           BEEP.format(seconds), "-vf", "select='not(eq(mod(n,6),5))'", "-vsync", "vfr", *H264,
           "-c:a", "aac", path)
    run = subprocess.run([inspect, "import", path, "--into", into, "--json"], capture_output=True,
                         text=True)
    line = json.loads(run.stdout)
    problems = []
    if line["state"] != "done":
        return [f"long.mp4: {line}"]
    length = line["frames"] / line["fps"]
    if abs(length - seconds) > 2 / line["fps"]:
        problems.append(f"long.mp4: {length} s of {seconds}")
    result = os.path.join(into, line["file"])
    for around in (10, seconds - 10):
        offset = beep_start(result, around) - beep_start(path, around)
        if abs(offset) > 0.02:
            problems.append(f"long.mp4: sound is {offset * 1000:.1f} ms late at {around} s")
    return problems


def main(arguments):
    if not shutil.which("ffmpeg") or not shutil.which("ffprobe"):
        print("skipped: no ffmpeg")
        return 77
    inspect = os.path.abspath(arguments[0])
    is_long = "--long" in arguments
    only = [name for name in arguments[1:] if name != "--long"]
    failed = 0
    with tempfile.TemporaryDirectory() as folder:
        into = os.path.join(folder, "scene")
        os.mkdir(into)
        clips = [c for c in CLIPS if not only or c.name in only]
        sources = [clip.build(folder) for clip in clips]
        run = subprocess.run([inspect, "import", *sources, "--into", into, "--json", "--keep-both"],
                             capture_output=True, text=True)
        lines = [json.loads(line) for line in run.stdout.splitlines()]
        print(run.stderr)
        for clip, source, line in zip(clips, sources, lines):
            for problem in check(clip, source, into, line):
                print(f"{clip.name}: {problem}")
                failed += 1
        problems = check_sound(inspect, folder, into, 600 if is_long else 30) if not only else []
        print("\n".join(problems))
        failed += len(problems)
        left = [name for name in os.listdir(into) if not name.endswith(".ogv")]
        if left or len(lines) != len(clips):
            print(f"left behind: {left}; {len(lines)} lines for {len(clips)} files")
            failed += 1
    return 1 if failed else 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
