"""The demo scenes as they are kept: what they show and how large they are.

Usage: demo_tests.py QUORVEL_INSPECT
"""

import glob
import json
import os
import subprocess
import sys
import unittest

INSPECT = sys.argv.pop(1)
ROOT = os.path.dirname(os.path.dirname(os.path.dirname(os.path.abspath(__file__))))
SCENES = os.path.join(ROOT, "demo", "Scenes")
FIRE_DRILL = os.path.join(SCENES, "Fire Drill Level 1")


def inspect(command, *path):
    return json.loads(subprocess.run([INSPECT, command, os.path.join(*path)], check=True,
                                     stdout=subprocess.PIPE).stdout)


class DemoTest(unittest.TestCase):
    def test_the_fire_drill_shows_every_kind_of_action(self):
        scene = inspect("scene", FIRE_DRILL)
        branches = {branch["id"] for branch in scene["branches"]}
        actions = [action for branch in scene["branches"] for action in branch["actions"]]
        self.assertEqual((scene["name"], scene["firstBranch"]), ("Fire Drill Level 1", "Alarm sounds"))
        self.assertEqual((len(branches), len({branch["filename"] for branch in scene["branches"]})), (5, 4))
        self.assertEqual({action["type"] for action in actions},
                         {"DefaultAction", "KeypressAction", "ZoneAction", "RandomAction"})
        self.assertLessEqual({action["branchID"] for action in actions}, branches)

    def test_there_is_nothing_to_mend(self):
        for scene in glob.glob(os.path.join(SCENES, "*")):
            findings = subprocess.run([INSPECT, "check", scene], check=True, stdout=subprocess.PIPE, text=True).stdout
            self.assertEqual({json.loads(line)["severity"] for line in findings.splitlines()} - {"note"}, set(), scene)

    def test_clips_are_small_and_in_whole_blocks(self):
        files = glob.glob(os.path.join(SCENES, "*", "*"))
        self.assertLess(sum(map(os.path.getsize, files)), 3_000_000)
        clips = [inspect("video", file) for file in files if file.endswith(".ogv")]
        self.assertTrue(all(clip["width"] % 16 == clip["height"] % 16 == 0 for clip in clips))
        self.assertIn((1280, 720), [(clip["width"], clip["height"]) for clip in clips])
        self.assertTrue(any(clip["audio"] for clip in clips))


if __name__ == "__main__":
    unittest.main()
