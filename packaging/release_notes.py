#!/usr/bin/env python3
"""Turns CHANGELOG.md into what packages want: Debian's changelog and the releases of the metadata.

Usage: release_notes.py CHANGELOG VERSION METAINFO_TEMPLATE FOLDER

Writes FOLDER/changelog.gz and FOLDER/quorvel.metainfo.xml. A heading is "## 1.2.3 (2026-01-31)"; the
date may be missing while VERSION is being made: then it is that of $SOURCE_DATE_EPOCH, or today's.
Exit 1 when the changes of VERSION are missing.
"""

import datetime
import gzip
import os
import pathlib
import re
import sys
import textwrap
import time
import xml.sax.saxutils

HEADING = re.compile(r"^## (\d\S*)(?: \((\d{4}-\d\d-\d\d)\))?$", re.MULTILINE)
MAINTAINER = "The Quorvel maintainers <maintainers@quorvel.invalid>"


def releases(text):
    """(version, date, [change]) for each heading, the newest first."""
    now = datetime.datetime.utcfromtimestamp(int(os.environ.get("SOURCE_DATE_EPOCH", time.time())))
    parts = HEADING.split(text)[1:]
    for version, date, body in zip(parts[::3], parts[1::3], parts[2::3]):
        items = [" ".join(item.split()) for item in re.split(r"^- ", body, flags=re.MULTILINE)[1:]]
        yield version, datetime.datetime.fromisoformat(date) if date else now, items


def debian(entries):
    out = ""
    for version, date, items in entries:
        out += f"quorvel ({version}) stable; urgency=medium\n\n"
        for item in items or ["First release."]:
            out += textwrap.fill(item.replace("`", ""), 78, initial_indent="  * ", subsequent_indent="    ") + "\n"
        out += f"\n -- {MAINTAINER}  {date:%a, %d %b %Y %H:%M:%S} +0000\n\n"
    return out.encode()


def metadata(entries):
    out = "  <releases>\n"
    for version, date, items in entries:
        changes = "".join(f"          <li>{xml.sax.saxutils.escape(item.replace('`', ''))}</li>\n" for item in items)
        out += (f'    <release version="{version}" date="{date:%Y-%m-%d}">\n      <description>\n        <ul>\n'
                f"{changes}        </ul>\n      </description>\n    </release>\n")
    return out + "  </releases>"


def main(arguments):
    if len(arguments) != 4:
        print(__doc__.strip(), file=sys.stderr)
        return 2
    changes, version, template = arguments[:3]
    folder = pathlib.Path(arguments[3])
    entries = list(releases(pathlib.Path(changes).read_text(encoding="utf-8")))
    if not entries or entries[0][0] != version:
        print(f"{changes}: the changes of {version} do not stand first", file=sys.stderr)
        return 1
    folder.mkdir(parents=True, exist_ok=True)
    (folder / "changelog.gz").write_bytes(gzip.compress(debian(entries), 9, mtime=0))
    (folder / "quorvel.metainfo.xml").write_text(
        pathlib.Path(template).read_text(encoding="utf-8").replace("@RELEASES@", metadata(entries)), encoding="utf-8")
    return 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
