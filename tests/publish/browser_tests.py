#!/usr/bin/python3
"""Plays published pages in a headless browser, from a disk and from a server.

Usage: browser_tests.py QUORVEL_INSPECT DEMO_SCENE RULES_JSON [--pictures FOLDER LANGUAGE]

Without Chromium, its driver or ffmpeg the test is skipped (exit code 77). With --pictures, the
pictures of docs/screenshots are made instead.
"""

import functools
import glob
import http.server
import json
import os
import re
import shutil
import subprocess
import sys
import tempfile
import threading
import time
import unittest

import scenes

try:
    from selenium import webdriver
    from selenium.webdriver.chrome.service import Service
    from selenium.webdriver.common.keys import Keys
except ImportError:
    webdriver = None

WAIT = 60  # seconds until something that has to happen counts as missing


class Served(http.server.SimpleHTTPRequestHandler):
    """A plain server: no ranges, no listings, and what was asked for is remembered."""

    asked = []

    def do_GET(self):
        self.asked.append(self.path)
        super().do_GET()

    def log_message(self, *_):
        pass


class Browser:
    """One window of the browser, with what the page says of itself."""

    def __init__(self):
        options = webdriver.ChromeOptions()
        for argument in ("--headless=new", "--no-sandbox", "--disable-gpu", "--mute-audio",
                         "--disable-dev-shm-usage", "--force-device-scale-factor=1"):
            options.add_argument(argument)
        options.set_capability("goog:loggingPrefs", {"browser": "ALL", "performance": "ALL"})
        self.driver = webdriver.Chrome(options=options, service=Service("/usr/bin/chromedriver"))
        self.resize(1000, 700)

    def resize(self, width, height):
        self.driver.execute_cdp_cmd("Emulation.setDeviceMetricsOverride", {
            "width": width, "height": height, "deviceScaleFactor": 1, "mobile": False})

    def run(self, script, *arguments):
        return self.driver.execute_script(script, *arguments)

    def state(self, name):
        return self.run(f"return quorvel.{name}")

    def wait(self, condition, what):
        """Until the script returns something true, which it returns."""
        end = time.monotonic() + WAIT
        while time.monotonic() < end:
            if found := self.run("return " + condition):
                return found
            time.sleep(0.02)
        raise AssertionError(f"{what} did not happen: {self.path()}, {self.state('state')}")

    def open(self, url):
        self.driver.get(url)
        self.wait("window.quorvel && !document.getElementById('begin').disabled", "loading")

    def start(self):
        self.press_button("begin")
        self.wait("quorvel.frame > 0", "playing")

    def measure(self):
        """From each key or click that leads to a branch to its first picture, in window.times."""
        self.run("""
            window.times = [];
            for (const event of ["keydown", "click"]) addEventListener(event, () => {
              const began = performance.now(), length = quorvel.path.length;
              const look = () => quorvel.path.length !== length && quorvel.shows
                ? window.times.push(performance.now() - began) : requestAnimationFrame(look);
              look();
            }, true);""")

    def press_button(self, name):
        self.driver.find_element("id", name).click()

    def key(self, *keys):
        webdriver.ActionChains(self.driver).send_keys(*keys).perform()

    def path(self):
        return [step["name"] for step in self.state("path")]

    def wait_path(self, length):
        self.wait(f"quorvel.path.length === {length}", f"branch {length}")
        self.wait("quorvel.state !== 'playing' || quorvel.shows", "its first picture")

    def place(self, x, y):
        """Of a point of the zone area, in the window."""
        box = self.run("const b = document.querySelector('video.on').getBoundingClientRect();"
                       "return [b.left, b.top, b.width, b.height]")
        return round(box[0] + x * box[2] / 1280), round(box[1] + y * box[3] / 720)

    def click(self, x, y):
        """At a point of the zone area; how the page judged it."""
        self.mouse("mousePressed", x, y)
        self.mouse("mouseReleased", x, y)
        return self.state("judged")

    def mouse(self, kind, x, y):
        x, y = self.place(x, y)
        self.driver.execute_cdp_cmd("Input.dispatchMouseEvent", {
            "type": kind, "x": x, "y": y, "button": "none" if kind == "mouseMoved" else "left",
            "clickCount": 0 if kind == "mouseMoved" else 1})

    def touch(self, x, y):
        self.driver.execute_cdp_cmd("Input.dispatchTouchEvent", {
            "type": "touchStart", "touchPoints": [{"x": x, "y": y}]})
        self.driver.execute_cdp_cmd("Input.dispatchTouchEvent", {"type": "touchEnd", "touchPoints": []})

    def complaints(self):
        return [entry["message"] for entry in self.driver.get_log("browser")]

    def requests(self):
        messages = [json.loads(entry["message"])["message"] for entry in self.driver.get_log("performance")]
        return [message["params"]["request"]["url"] for message in messages
                if message["method"] == "Network.requestWillBeSent"]


def publish(scene, folder, *options):
    run = subprocess.run([INSPECT, "publish", scene, "--to", folder, *options], capture_output=True, text=True)
    if run.returncode != 0:
        raise AssertionError(run.stderr)
    return folder


def data_of(path):
    """What a data script hands to the page."""
    with open(path, encoding="utf-8", newline="") as stream:
        text = stream.read()
    return json.loads("[" + text[text.index("(") + 1:text.rindex(")")] + "]")


def is_inside(points, x, y):
    inside = False
    for (ax, ay), (bx, by) in zip(points, points[1:] + points[:1]):
        if (ay > y) != (by > y) and x < ax + (y - ay) / (by - ay) * (bx - ax):
            inside = not inside
    return inside


class PageTests(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.root = tempfile.mkdtemp(prefix="quorvel-pages-")
        cls.addClassCleanup(shutil.rmtree, cls.root, True)
        cls.demo = publish(DEMO, os.path.join(cls.root, "demo"), "--report")
        cls.moving = os.path.join(cls.root, "moving")
        scenes.write_moving(os.path.join(cls.root, "moving scene"))
        publish(os.path.join(cls.root, "moving scene"), cls.moving, "--report", "--language", "de")
        handler = functools.partial(Served, directory=cls.root)
        cls.server = http.server.ThreadingHTTPServer(("127.0.0.1", 0), handler)
        threading.Thread(target=cls.server.serve_forever, daemon=True).start()
        cls.addClassCleanup(cls.server.shutdown)
        cls.browser = Browser()
        cls.addClassCleanup(cls.browser.driver.quit)

    def url(self, folder, server=False):
        start = f"http://127.0.0.1:{self.server.server_port}/" if server else f"file://{self.root}/"
        return start + os.path.relpath(folder, self.root) + "/index.html"

    def setUp(self):
        self.browser.resize(1000, 700)
        self.browser.complaints()
        self.browser.requests()

    def tearDown(self):
        self.assertEqual(self.browser.complaints(), [])

    def open(self, folder, server=False, query=""):
        self.browser.open(self.url(folder, server) + query)

    def zone(self, frame):
        """The corners of the moving zone on a frame."""
        shapes = data_of(os.path.join(self.moving, "clips", "1.js"))[1][0][1]
        numbers = [shape for shape in shapes if shape[0] <= frame][-1][2]
        return [list(point) for point in zip(numbers[::2], numbers[1::2])]

    def test_the_rules_are_those_of_the_shared_table(self):
        with open(RULES, encoding="utf-8") as stream:
            table = json.load(stream)
        self.open(self.moving)
        results = self.browser.run("""
            const [table] = arguments;
            const drill = table.scenes.drill;
            const branches = drill.branches.map(({name, video, actions}) => ({name, video,
              actions: actions.map(([when, parameter, target, immediate]) => ({when, parameter, target, immediate}))}));
            return table.cases.map((test) => {
              const player = new quorvel.Player({first: drill.first, branches},
                (video) => drill.clips[video] ?? null, test.seed ?? 1);
              player.start(test.from ?? drill.first);
              for (const [what, ...event] of test.events) {
                ({key: () => player.press(...event), click: () => player.click(...event),
                  choose: () => player.choose(...event), end: () => player.clipEnded(...event),
                  back: () => player.back(), restart: () => player.restart()})[what]();
              }
              const reasons = {started: () => "started", end: () => "end",
                chance: (r) => "chance 1 of " + r.choices,
                zone: (r) => "zone " + r.name + (r.immediate ? ", immediate" : ", at end"),
                key: (r) => "key " + r.name + (r.immediate ? ", immediate" : ", at end")};
              return {path: player.path.map((step) =>
                  step.seconds.toFixed(2) + " " + step.name + ": " + reasons[step.reason.cause](step.reason)),
                state: player.state, waiting: player.waiting};
            });""", table)
        self.assertGreaterEqual(len(results), 20)
        for case, result in zip(table["cases"], results):
            with self.subTest(case["name"]):
                self.assertEqual(result, {"path": case["path"], "state": case["state"],
                                          "waiting": case.get("waiting", -1)})

    def test_the_demo_plays_from_a_disk_and_from_a_server(self):
        for server in (False, True):
            with self.subTest(server=server):
                Served.asked.clear()
                self.open(self.demo, server)
                self.browser.measure()
                self.browser.start()
                self.browser.wait("quorvel.frame > 12", "a later picture")
                self.browser.key("l")
                self.browser.wait_path(2)
                self.assertEqual(self.browser.state("path")[1]["reason"]["name"], "L")
                self.browser.press_button("back")
                self.browser.wait_path(1)
                self.browser.wait("quorvel.path.length > 1", "the end of the clip")
                self.assertEqual(self.browser.state("path")[1]["seconds"], 4)
                first, *changes = self.browser.wait("window.times.length > 2 && window.times", "three pictures")
                print(f"From a {'server' if server else 'disk'}: first picture after {first:.0f} ms (wanted: < 500), changes"
                      f" of branches {', '.join(f'{time:.0f}' for time in changes)} ms (wanted: < 150)")
                folder = self.url(self.demo, server)[:-len("index.html")]
                self.assertEqual([url for url in self.browser.requests() if not url.startswith(folder)], [])
                self.assertEqual([path for path in Served.asked if not path.startswith("/demo/")], [])

    def test_a_click_is_judged_by_the_shape_on_the_frame_shown(self):
        self.open(self.moving)
        self.browser.start()
        hits = misses = 0
        for number in range(40):
            frame = self.browser.state("frame")
            shape = self.zone(frame)
            aim = (min(shape[0][0] + 30, 1270) if number % 2 else max(shape[0][0] - 60, 5)), 300
            judged = self.browser.click(*aim)
            pixel = judged["pixel"]
            expected = is_inside(self.zone(judged["frame"]), pixel["x"] + .5, pixel["y"] + .5)
            self.assertEqual(judged["answered"], expected, judged)
            hits += judged["answered"]
            misses += not judged["answered"]
            self.browser.wait("quorvel.shows", "a picture")
        self.assertGreater(min(hits, misses), 5)

    def test_it_follows_keys_buttons_and_the_end_of_the_clip(self):
        browser = self.browser
        self.open(self.moving, query="?seed=2")
        browser.start()
        browser.key(" ")
        browser.wait("document.querySelector('video.on').paused", "the pause")
        browser.key(" ")
        browser.wait("!document.querySelector('video.on').paused", "going on")
        browser.key("b")  # waits for the end of the clip
        self.assertEqual(browser.state("waiting"), 1)
        self.assertIn("Ende des Videos", browser.run("return document.getElementById('status').textContent"))
        browser.press_button("restart")
        self.assertEqual(browser.state("waiting"), -1)
        browser.wait("quorvel.shows", "the clip again")
        browser.key("S")
        browser.wait_path(2)
        browser.wait("quorvel.path.length > 3", "chance")
        self.assertEqual(browser.path()[:4], ["Moving", "Chance", "Still", "Chance"])
        browser.key(Keys.BACKSPACE)
        self.assertNotEqual(browser.path(), [])
        browser.wait("quorvel.shows", "a picture")
        browser.key("e")
        browser.wait("quorvel.state === 'ended'", "the end")
        rows = browser.run("return [...document.querySelectorAll('#path li')].map((row) => row.innerText)")
        self.assertEqual(len(rows), len(browser.path()))
        self.assertIn("Beginn", rows[0])
        browser.press_button("copy")
        browser.wait("document.getElementById('copy').textContent === 'Kopiert'", "copying")
        browser.key(Keys.ENTER)  # the focus is still on the button
        browser.press_button("again")
        browser.wait_path(1)

    def test_it_is_worked_by_touch_and_at_any_size(self):
        browser = self.browser
        browser.driver.execute_cdp_cmd("Emulation.setTouchEmulationEnabled", {"enabled": True})
        self.addCleanup(browser.driver.execute_cdp_cmd, "Emulation.setTouchEmulationEnabled", {"enabled": False})
        for width, height in ((390, 780), (800, 360), (1900, 900)):
            with self.subTest(width=width):
                browser.resize(width, height)
                self.open(self.moving)
                browser.start()
                browser.key(" ")
                frame = browser.wait("document.querySelector('video.on').paused && quorvel.frame", "the pause")
                left, top = self.zone(frame)[0]
                browser.touch(*browser.place(left - 20, top + 100))
                self.assertEqual(browser.state("judged.answered"), False)
                browser.touch(*browser.place(left + 100, top + 100))
                browser.wait_path(2)
                box = browser.run("const b = document.querySelector('#keys button').getBoundingClientRect();"
                                  "return [b.left + b.width / 2, b.top + b.height / 2, b.width, b.height]")
                self.assertGreaterEqual(min(box[2:]), 44)
                browser.touch(*box[:2])
                browser.wait_path(3)

    def test_it_fills_the_screen(self):
        browser = self.browser
        self.open(self.moving)
        browser.start()
        browser.press_button("full")
        browser.wait("document.fullscreenElement", "the full screen")
        browser.key(" ")
        frame = browser.wait("document.querySelector('video.on').paused && quorvel.frame", "the pause")
        left, top = self.zone(frame)[2]
        self.assertFalse(browser.click(left + 20, top - 100)["answered"])
        self.assertTrue(browser.click(left - 20, top - 20)["answered"])
        browser.press_button("full")
        browser.wait("!document.fullscreenElement", "the window")

    def test_it_is_worked_by_keys_and_named_for_screen_readers(self):
        browser = self.browser
        self.open(self.moving)
        self.assertEqual(browser.run("return document.activeElement.id"), "begin")
        browser.key(Keys.ENTER)
        browser.wait("quorvel.shows", "playing")
        browser.key(Keys.TAB)
        self.assertEqual(browser.run("return document.activeElement.textContent"), "In die Zone Box klicken")
        browser.key(Keys.ENTER)
        browser.wait_path(2)
        nodes = browser.driver.execute_cdp_cmd("Accessibility.getFullAXTree", {})["nodes"]
        names = [node["name"]["value"] for node in nodes if node.get("role", {}).get("value") == "button"]
        self.assertGreaterEqual(len(names), 6)
        self.assertNotIn("", names)

    def test_an_outline_shows_the_zone_under_the_mouse(self):
        browser = self.browser
        self.open(self.moving)
        browser.start()
        browser.key(" ")
        frame = browser.wait("document.querySelector('video.on').paused && quorvel.frame", "the pause")
        left, top = self.zone(frame)[0]
        outline = "return [document.getElementById('outlineLine').getAttribute('points'), quorvel.frame]"
        browser.mouse("mouseMoved", left + 50, top + 50)
        points, frame = browser.run(outline)  # one that was on its way may have come after the pause
        left, top = self.zone(frame)[0]
        self.assertEqual(points.split()[0], f"{left + .5},{top + .5}")
        browser.mouse("mouseMoved", left - 50, top + 50)
        self.assertEqual(browser.run(outline)[0], "")

    def test_names_are_texts_and_nothing_else(self):
        folder = os.path.join(self.root, "hostile")
        scenes.write_hostile(folder + " scene")
        title = " ".join(scenes.HOSTILE)
        publish(folder + " scene", folder, "--title", title)
        for path in [os.path.join(folder, "scene.js")] + glob.glob(folder + "/clips/*.js"):
            with open(path, encoding="utf-8", newline="") as stream:
                self.assertEqual(re.findall("[<>&\u2028\u2029]", stream.read()), [])
        self.open(folder)
        self.assertEqual(self.browser.run("return [document.title, document.getElementById('title').textContent]"),
                         [title, title])
        self.browser.start()
        buttons = self.browser.run("return [...document.querySelectorAll('#choiceList button')].map((b) => b.textContent)")
        self.assertEqual(buttons, ["Click into the zone " + name for name in scenes.HOSTILE] + ["Press A"])
        self.assertEqual(self.browser.run(
            "return Object.keys(window).filter((name) => name.startsWith('hacked'))"), [])
        self.browser.key("a")
        self.browser.wait("quorvel.state === 'no branch'", "the stop")
        self.assertIn(scenes.HOSTILE[0], self.browser.run("return document.getElementById('endText').textContent"))

    def test_only_its_own_files_run_and_they_are_small(self):
        self.open(self.demo)
        self.browser.run("""
            const script = document.createElement("script");
            script.textContent = "hackedInline = 1";
            document.body.append(script);
            document.body.insertAdjacentHTML("beforeend", "<img src=x onerror='hackedHandler = 1'>");
            setTimeout("hackedText = 1");
            fetch(arguments[0]).then(() => window.hackedFetch = 1, () => window.wasRefused = 1);""",
                         f"http://127.0.0.1:{self.server.server_port}/")
        self.browser.wait("window.wasRefused", "the refusal")
        self.assertEqual(self.browser.run(
            "return Object.keys(window).filter((name) => name.startsWith('hacked'))"), [])
        refusals = [text for text in self.browser.complaints() if "Content Security Policy" in text]
        self.assertGreaterEqual(len(refusals), 3)
        parts = [os.path.join(self.demo, name) for name in ("index.html", "player.js", "player.css")]
        self.assertLess(sum(map(os.path.getsize, parts)), 60000)

    def test_a_long_scene_starts_with_no_more_than_a_short_one(self):
        loaded = {}
        for count in (5, 1000):
            folder = os.path.join(self.root, f"long {count}")
            scenes.write_long(folder + " scene", count)
            publish(folder + " scene", folder)
            Served.asked.clear()
            self.open(folder, server=True)
            self.browser.measure()
            self.browser.start()
            # Not how often: the browser asks for the icon, the still again, when it likes.
            loaded[count] = {path.split("/")[-1] for path in Served.asked}
            self.browser.key("n")
            self.browser.wait_path(2)
            print(f"{count} branches: ready after {self.browser.run('return performance.now()'):.0f} ms,"
                  f" a change {self.browser.run('return window.times[1]'):.0f} ms")
        self.assertEqual(loaded[5], loaded[1000])

    def test_the_frame_it_judges_by_is_the_one_in_the_picture(self):
        browser = self.browser
        self.open(self.moving, server=True)  # a page from a disk may not read its pictures back
        browser.run("""
            const canvas = document.createElement("canvas").getContext("2d", {willReadFrequently: true});
            window.seen = [];
            let number = 0;
            let judged = null;
            addEventListener("pointerdown", () => { // before the page hears of it
              number = 0;
              judged = quorvel.judged;
              const video = document.querySelector("video.on");
              for (let bit = 0; video && bit < 8; ++bit) {
                if (bit === 0) canvas.drawImage(video, 0, 0);
                number += canvas.getImageData(16 * bit + 8, 48, 1, 1).data[1] > 127 ? 1 << bit : 0;
              }
            }, true);
            addEventListener("pointerdown", () => { // and after
              if (quorvel.judged !== judged) window.seen.push([number, quorvel.judged.frame]);
            });""")
        browser.start()
        seen = []
        for number in range(300):  # between two clips there is nothing to judge
            browser.click(10, 10)
            time.sleep(0.013 * (number % 7))  # at all phases of a picture
            seen = browser.run("return window.seen")
            if len(seen) == 100:
                break
        self.assertEqual(len(seen), 100)
        self.assertGreater(len({frame for _, frame in seen}), 30)
        self.assertEqual([pair for pair in seen if abs(pair[0] - pair[1]) > 1], [])

    def test_a_published_clip_has_the_pictures_of_its_source(self):
        for clip in data_of(os.path.join(self.moving, "scene.js"))[0]["clips"]:
            with self.subTest(clip["video"]):
                path = os.path.join(self.moving, clip["file"])
                facts = subprocess.run(
                    ["ffprobe", "-v", "error", "-count_packets", "-select_streams", "v", "-of", "csv=p=0",
                     "-show_entries", "stream=codec_name,r_frame_rate,nb_read_packets", path],
                    capture_output=True, text=True, check=True).stdout.strip()
                self.assertEqual(facts, f"vp9,25/1,{scenes.FRAMES[clip['video']]}")


def make_pictures(folder, language):
    """Of the published demo, for the documents."""
    browser = Browser()
    with tempfile.TemporaryDirectory() as root:
        page = publish(DEMO, os.path.join(root, "demo"), "--report", "--language", language)
        url = f"file://{page}/index.html?seed=3"  # which leads to the end soon

        def shoot(name):
            browser.driver.save_screenshot(os.path.join(folder, f"published-{name}.png"))

        browser.resize(960, 594)
        browser.open(url)
        shoot("start")
        browser.start()
        browser.wait("quorvel.frame > 40", "a later picture")
        browser.key(" ")
        browser.wait("document.querySelector('video.on').paused", "the pause")
        for x in range(200, 700, 20):
            browser.mouse("mouseMoved", x, 380)
            if browser.run("return document.getElementById('stage').classList.contains('hit')"):
                break
        shoot("outline")
        browser.key(Keys.TAB)
        shoot("choices")
        browser.resize(390, 700)
        shoot("phone")
        browser.resize(960, 594)
        browser.key(" ", "l")
        browser.wait("quorvel.state === 'ended'", "the end")
        shoot("report")
    browser.driver.quit()


def main():
    global INSPECT, DEMO, RULES
    INSPECT, DEMO, RULES = sys.argv[1:4]
    if webdriver is None or not shutil.which("ffmpeg") or not os.path.exists("/usr/bin/chromedriver"):
        print("skipped: no browser, no driver or no ffmpeg")
        return 77
    if "--pictures" in sys.argv:
        return make_pictures(*sys.argv[-2:])
    return not unittest.main(argv=sys.argv[:1], exit=False, verbosity=2).result.wasSuccessful()


if __name__ == "__main__":
    sys.exit(main())
