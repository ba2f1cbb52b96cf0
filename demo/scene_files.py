"""Scene.xml and the two zone files of a clip, as the editor writes them (docs/formats.md): text
lines end in CR LF and are indented with tabs, numbers in binary files are little-endian."""

import struct

TYPES = ("DefaultAction", "KeypressAction", "ZoneAction", "RandomAction")


def action(kind, target, parameter="", immediate=False):
    """kind: "Default", "Keypress", "Zone" or "Random"; target: the branch that plays next."""
    return kind + "Action", parameter, immediate, target


def scene_xml(name, first, branches):
    """branches: (id, video file name, actions) in list order."""
    lines = ["<Scene>", f"\t<Name>{name}</Name>", f"\t<FirstBranch>{first}</FirstBranch>"]
    for branch, video, actions in branches:
        lines += ["\t<Branch>", f"\t\t<ID>{branch}</ID>", f"\t\t<Filename>{video}</Filename>"]
        for kind, parameter, immediate, target in actions:
            assert kind in TYPES
            lines += ["\t\t<Action>", f"\t\t\t<Type>{kind}</Type>"]
            if parameter:
                lines.append(f"\t\t\t<Parameter>{parameter}</Parameter>")
            if immediate:
                lines.append("\t\t\t<Immediate>true</Immediate>")
            lines += [f"\t\t\t<BranchID>{target}</BranchID>", "\t\t</Action>"]
        lines.append("\t</Branch>")
    lines.append("</Scene>")
    return "".join(line + "\r\n" for line in lines).encode("utf-8")


def zone_info_xml(names, area=(1280, 720)):
    """area: the size of the editor's video area, which the file records."""
    lines = ["<ZoneInfo>", f"\t<VideoWidth>{area[0]}</VideoWidth>", f"\t<VideoHeight>{area[1]}</VideoHeight>"]
    for name in names:
        lines += ["\t<Zone>", f"\t\t<Name>{name}</Name>", "\t</Zone>"]
    lines.append("</ZoneInfo>")
    return "".join(line + "\r\n" for line in lines).encode("utf-8")


def zone_info_bin(zones):
    """zones: (name, frames); a frame is (active, points), points in the clip's own pixels. All
    frames of a zone hold the same number of points."""
    out = b""
    for name, frames in zones:
        text = name.encode("utf-8") + b"\0"
        shapes = b""
        for active, points in frames:
            shapes += struct.pack("<II", 8 + 8 * len(points), 1 if active else 0)
            shapes += b"".join(struct.pack("<ii", round(x), round(y)) for x, y in points)
        body = struct.pack("<I", len(text)) + text + struct.pack("<I", len(frames)) + shapes
        out += struct.pack("<II", 0x5A4F4E45, len(body)) + body
    return out
