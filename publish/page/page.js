// The page: its buttons, keys and lists, and what they do to the player and the picture.

const byId = (id) => document.getElementById(id);

class Page {
  constructor(scene) {
    this.scene = scene;
    this.texts = TEXTS[scene.language] ?? TEXTS.en;
    this.numbers = new Map(scene.clips.map((clip, number) => [clip.video, number]));
    const facts = scene.clips.map((clip) => ({ ...clip, zonesFile: clip.zones, zones: [], arrival: null }));
    this.stage = byId("stage");
    this.clips = new Clips(this.stage, facts);
    this.screen = new Screen(this.stage, this.clips, this);
    this.player = new Player(scene, (video) => this.clipOf(video), seedOf(location.search));
    this.rows = new Map(); // of the list of choices, by action
    this.pointer = null; // where the mouse is, in the window
    this.judged = null; // how the last click or key was judged
    this.fill();
    this.listen();
    this.screen.place();
    this.clips.want(this.numberOf(scene.first), null);
  }

  // The clip as the player takes it.
  clipOf(video) {
    const number = this.numbers.get(video);
    const facts = number === undefined ? null : this.clips.facts[number];
    return facts?.file ? facts : null;
  }
  // Of the clip of a branch, in a list; empty when it has none.
  numberOf(name) {
    const branch = this.player.numbers.get(name);
    const video = branch === undefined ? "" : this.scene.branches[branch].video;
    return this.clipOf(video) ? [this.numbers.get(video)] : [];
  }

  fill() {
    const { scene, texts } = this;
    document.title = scene.title;
    this.stage.setAttribute("aria-label", scene.title);
    byId("title").textContent = scene.title;
    byId("choicesTitle").textContent = texts.choices;
    byId("startWord").textContent = texts.start;
    byId("again").textContent = texts.again;
    byId("endBack").textContent = texts.back;
    byId("copy").textContent = texts.copy;
    byId("pathTitle").textContent = texts.path;
    this.name("restart", texts.restart);
    this.name("back", texts.back);
    this.name("full", texts.fullScreen);
    byId("full").hidden = !document.fullscreenEnabled;
    if (scene.still) {
      byId("still").src = scene.still;
    }
    this.showControls();
    byId("begin").disabled = false;
    byId("begin").focus();
  }
  name(id, text) {
    byId(id).setAttribute("aria-label", text);
    byId(id).title = text;
  }

  listen() {
    const on = (id, act) => byId(id).addEventListener("click", act);
    on("begin", () => this.begin());
    on("again", () => this.begin());
    on("pause", () => this.turnPause());
    on("restart", () => this.restart());
    on("back", () => this.back());
    on("endBack", () => this.back());
    on("sound", () => this.turnSound());
    on("full", () => document.fullscreenElement ? document.exitFullscreen() : document.documentElement.requestFullscreen());
    on("copy", () => this.copyPath());
    // A button that was pressed by a pointer does not keep the space bar from pausing.
    byId("bar").addEventListener("pointerdown", (event) => event.preventDefault());
    byId("bar").addEventListener("mousedown", (event) => event.preventDefault());
    this.stage.addEventListener("pointerdown", (event) => this.clicked(event));
    this.stage.addEventListener("pointermove", (event) => this.moved(event));
    this.stage.addEventListener("pointerleave", () => this.moved(null));
    addEventListener("keydown", (event) => this.typed(event));
  }

  begin() {
    this.clips.unlock();
    byId("start").hidden = true;
    this.player.start(this.scene.first);
    this.follow();
    this.stage.focus();
  }
  restart() {
    if (this.player.path.length > 0) {
      this.player.restart();
      this.follow();
    }
  }
  back() {
    if (this.player.back()) {
      this.follow();
    }
  }
  turnPause() {
    if (this.player.state === "playing") {
      this.screen.setPaused(!this.screen.isPaused);
      this.say(this.screen.isPaused ? this.texts.paused : "");
      this.showControls();
    }
  }
  turnSound() {
    this.screen.setMuted(!this.screen.isMuted);
    this.showControls();
  }

  typed(event) {
    if (event.ctrlKey || event.altKey || event.metaKey || event.isComposing || this.player.path.length === 0) {
      return;
    }
    const isOnButton = event.target instanceof HTMLButtonElement || event.target instanceof HTMLTextAreaElement;
    // Alphabets other than the Latin one: the key that has the letter on it.
    const letter = /^Key[A-Z]$/.test(event.code) && !/^[a-z]$/i.test(event.key) ? event.code[3] : event.key;
    if (event.key === " " && !isOnButton) {
      this.turnPause();
    } else if (event.key === "Backspace") {
      this.back();
    } else if (event.repeat || !/^[a-z]$/i.test(letter)) {
      return;
    } else {
      this.act((frame) => this.player.press(letter, frame));
      return;
    }
    event.preventDefault();
  }
  clicked(event) {
    if (event.button !== 0 || !event.isPrimary) {
      return;
    }
    const pixel = this.player.state === "playing" ? this.screen.zonePixel(event.clientX, event.clientY) : null;
    if (pixel) {
      this.act((frame) => this.player.click(pixel.x, pixel.y, frame), pixel);
    }
  }
  // Only a picture can be answered: until the first one of a clip is there, the one before is on show.
  act(answer, pixel = null) {
    const { screen } = this;
    if (!window.quorvel.shows) {
      return;
    }
    const frame = screen.frameNow();
    const length = this.player.path.length;
    const answered = answer(frame);
    this.judged = { frame, pixel, answered, clip: screen.facts.video };
    if (this.player.path.length !== length) {
      this.follow();
    } else if (answered) {
      this.say(this.texts.chosen);
      this.want();
      this.showChoices();
    }
  }

  // Shows what the player has come to.
  follow() {
    const isPlaying = this.player.state === "playing";
    byId("end").hidden = isPlaying;
    this.say("");
    if (isPlaying) {
      this.screen.play(this.numbers.get(this.player.branch.video));
      this.want();
      if (document.activeElement === document.body || byId("end").contains(document.activeElement)) {
        this.stage.focus();
      }
    } else {
      this.showEnd();
    }
    this.showKeys();
    this.showControls();
    this.showChoices();
    this.showOutline();
  }
  want() {
    const { branches } = this.scene;
    const path = this.player.path;
    const next = this.player.likelyNext().flatMap((number) => this.numberOf(branches[number].name));
    const before = path.length > 1 ? this.numberOf(path[path.length - 2].name) : [];
    this.clips.want([...new Set(next)].slice(0, 5).concat(before), this.screen.current);
  }

  // What the screen has to say.
  frameShown() {
    this.showChoices();
    this.showOutline();
  }
  clipEnded(frame) {
    const length = this.player.path.length;
    this.player.clipEnded(frame);
    if (this.player.path.length !== length || this.player.state !== "playing") {
      this.follow();
    }
  }
  clipFailed() {
    this.player.state = "unreadable";
    this.follow();
  }
  silenced() {
    this.say(this.texts.mute);
    this.showControls();
  }

  say(text) {
    byId("status").textContent = text;
  }
  showControls() {
    const { screen, texts, player } = this;
    const isPlaying = player.state === "playing";
    this.name("pause", screen.isPaused ? texts.play : texts.pause);
    byId("pause").classList.toggle("turned", screen.isPaused);
    this.name("sound", screen.isMuted ? texts.soundOn : texts.soundOff);
    byId("sound").classList.toggle("turned", screen.isMuted);
    byId("pause").disabled = !isPlaying;
    byId("restart").disabled = !isPlaying;
    byId("back").disabled = player.path.length < 2;
    byId("endBack").disabled = player.path.length < 2;
  }
  // A button for each key of the branch, for those who have none.
  showKeys() {
    const keys = byId("keys");
    keys.replaceChildren();
    if (!this.scene.keys || this.player.state !== "playing") {
      return;
    }
    for (const index of this.player.choices(-1)) {
      const key = this.player.branch.actions[index].parameter;
      const button = document.createElement("button");
      button.type = "button";
      button.textContent = key.toUpperCase();
      button.setAttribute("aria-label", fill(this.texts.key, key.toUpperCase()));
      button.addEventListener("click", () => this.act((frame) => this.player.press(key, frame)));
      keys.append(button);
    }
  }
  // The choices as a list: seen once the focus is in it. A row stays the same while its action can be
  // chosen, so that the focus stays on it.
  showChoices() {
    const list = byId("choiceList");
    const now = window.quorvel.shows ? this.player.choices(this.screen.frame) : [];
    if (this.player.branch !== this.rowsOf) {
      this.rows.clear();
      this.rowsOf = this.player.branch;
    } else if (now.length === list.children.length && now.every((index, at) => this.rows.get(index) === list.children[at])) {
      return;
    }
    const hadFocus = list.contains(document.activeElement);
    const focused = document.activeElement;
    list.replaceChildren(...now.map((index) => this.rowOf(index)));
    byId("choices").hidden = now.length === 0;
    if (hadFocus) {
      (list.contains(focused) ? focused : list.querySelector("button") ?? this.stage).focus();
    }
  }
  rowOf(index) {
    if (!this.rows.has(index)) {
      const action = this.player.branch.actions[index];
      const button = document.createElement("button");
      button.type = "button";
      button.textContent = action.when === "Zone"
        ? fill(this.texts.zone, action.parameter) : fill(this.texts.key, action.parameter.toUpperCase());
      button.addEventListener("click", () => this.act((frame) => this.player.choose(index, frame)));
      const row = document.createElement("li");
      row.append(button);
      this.rows.set(index, row);
    }
    return this.rows.get(index);
  }

  moved(event) {
    this.pointer = event && event.pointerType === "mouse" ? { x: event.clientX, y: event.clientY } : null;
    this.showOutline();
  }
  // Of the zone under the mouse that a click would follow.
  showOutline() {
    const shape = this.scene.outlines && this.pointer ? this.shapeUnder(this.pointer) : null;
    this.stage.classList.toggle("hit", shape !== null);
    if (shape !== this.outlined) {
      this.outlined = shape;
      const points = shape ? shape.points.map(([x, y]) => x + 0.5 + "," + (y + 0.5)).join(" ") : "";
      byId("outlineEdge").setAttribute("points", points);
      byId("outlineLine").setAttribute("points", points);
    }
  }
  shapeUnder(place) {
    const { player, screen } = this;
    const pixel = screen.zonePixel(place.x, place.y);
    if (!pixel || player.state !== "playing" || !window.quorvel.shows || player.clip.frames < 0) {
      return null;
    }
    for (const action of player.branch.actions) {
      for (const zone of action.when === "Zone" ? player.clip.zones : []) {
        const shape = zone.name === action.parameter ? shapeAt(zone, screen.frame) : null;
        if (shape && shape.active && contains(shape, pixel.x, pixel.y)) {
          return shape;
        }
      }
    }
    return null;
  }

  showEnd() {
    this.screen.stop();
    byId("endText").textContent = endText(this.texts, this.player);
    byId("report").hidden = !this.scene.report;
    if (this.scene.report) {
      byId("path").replaceChildren(...this.player.path.map((step) => {
        const row = document.createElement("li");
        for (const [kind, text] of [["name", step.name], ["time", timeText(step.seconds)], ["reason", reasonText(this.texts, step.reason)]]) {
          const part = document.createElement("span");
          part.className = kind;
          part.textContent = text;
          row.append(part, " ");
        }
        return row;
      }));
      byId("copy").textContent = this.texts.copy;
    }
    byId("again").focus();
  }
  pathText() {
    return this.player.path
      .map((step, row) => [row + 1, step.name, timeText(step.seconds), reasonText(this.texts, step.reason)].join("\t"))
      .concat(endText(this.texts, this.player), "")
      .join("\n");
  }
  async copyPath() {
    const text = this.pathText();
    try {
      await navigator.clipboard.writeText(text);
    } catch {
      // Where the browser refuses that: by a field of text.
      const field = document.createElement("textarea");
      field.value = text;
      byId("report").append(field);
      field.select();
      document.execCommand("copy");
      field.remove();
      byId("copy").focus();
    }
    byId("copy").textContent = this.texts.copied;
  }
}

// "?seed=7" makes chance repeat itself.
function seedOf(search) {
  const given = new URLSearchParams(search).get("seed");
  return given !== null && /^\d+$/.test(given)
    ? Number(given) % 4294967296 : crypto.getRandomValues(new Uint32Array(1))[0];
}

let page = null;
// What the data scripts call.
window.quorvelScene = (scene) => {
  page = new Page(scene);
};
window.quorvelZones = (clip, zones) => page.clips.takeZones(clip, zones);
// For tests, and for whoever wants to know how far a learner is.
window.quorvel = {
  Player,
  get state() {
    return page.player.state;
  },
  get path() {
    return page.player.path;
  },
  get waiting() {
    return page.player.waiting;
  },
  // Whether a picture of the branch is on show, so that events are judged.
  get shows() {
    return page.screen.current !== null && page.screen.current === page.screen.shown;
  },
  get frame() {
    return page.screen.frame;
  },
  get judged() {
    return page.judged;
  },
};
