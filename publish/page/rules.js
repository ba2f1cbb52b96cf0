// The rules by which a scene plays, as docs/preview.md states them: what happened on which frame of
// the clip goes in, the branch that plays and the path come out. No document, no clock, no files.

// The same seed gives the same throws as in every other player.
class Chance {
  constructor(seed) {
    this.state = seed >>> 0;
  }
  // One of 0 to count - 1.
  pick(count) {
    this.state = (this.state + 0x9e3779b9) >>> 0;
    let mixed = this.state;
    mixed = Math.imul(mixed ^ (mixed >>> 16), 0x21f0aaad);
    mixed = Math.imul(mixed ^ (mixed >>> 15), 0x735a2d97);
    mixed = (mixed ^ (mixed >>> 15)) >>> 0;
    return Math.floor((mixed * count) / 4294967296);
  }
}

// A zone's shapes are ordered by their first frames; the last one holds for all later frames.
function shapeAt(zone, frame) {
  let low = 0;
  let high = zone.shapes.length;
  while (low < high) {
    const middle = (low + high) >> 1;
    if (zone.shapes[middle].from <= frame) {
      low = middle + 1;
    } else {
      high = middle;
    }
  }
  return low > 0 ? zone.shapes[low - 1] : null;
}

// Whether the middle of a pixel of the zone area lies inside, by the even-odd rule.
function contains(shape, pixelX, pixelY) {
  const x = pixelX + 0.5;
  const y = pixelY + 0.5;
  const points = shape.points;
  let inside = false;
  for (let i = 0; i < points.length; ++i) {
    const [fromX, fromY] = points[i];
    const [toX, toY] = points[(i + 1) % points.length];
    if (fromY > y !== toY > y && x < fromX + ((y - fromY) / (toY - fromY)) * (toX - fromX)) {
      inside = !inside;
    }
  }
  return inside;
}

function someActiveShape(clip, name, frame, test) {
  return clip !== null && clip.frames >= 0 && clip.zones.some((zone) => {
    const shape = zone.name === name ? shapeAt(zone, frame) : null;
    return shape !== null && shape.active && test(shape);
  });
}
const hasActiveZone = (clip, name, frame) => someActiveShape(clip, name, frame, () => true);
const isHit = (clip, name, frame, x, y) =>
  someActiveShape(clip, name, frame, (shape) => contains(shape, x, y));

// Letters of ASCII alone are the same in both cases.
const foldKey = (key) => key.replace(/[A-Z]/g, (letter) => letter.toLowerCase());

class Player {
  // story: {first, branches: [{name, video, actions: [{when, parameter, target, immediate}]}]} with
  // `when` one of "Default", "Keypress", "Zone", "Random". clipOf: the clip {frames, fps, zones} of a
  // video, or null when it cannot be played; called whenever a branch comes up.
  constructor(story, clipOf, seed) {
    this.story = story;
    this.clipOf = clipOf;
    this.chance = new Chance(seed);
    this.numbers = new Map();
    story.branches.forEach((branch, number) => {
      if (!this.numbers.has(branch.name)) {
        this.numbers.set(branch.name, number);
      }
    });
    this.state = "ended";
    this.path = [];
    this.branch = null;
    this.clip = null;
    this.waiting = -1;
  }

  start(name) {
    this.path = [];
    this.enter(name, { cause: "started" }, 0);
  }
  press(key, frame) {
    const folded = foldKey(key);
    return this.answer((action) => action.when === "Keypress" && foldKey(action.parameter) === folded, frame);
  }
  click(x, y, frame) {
    return this.answer(
      (action) => action.when === "Zone" && isHit(this.clip, action.parameter, frame, x, y), frame);
  }
  // The same as the key or the click that this action of the branch waits for.
  choose(index, frame) {
    return this.answer((action, at) => at === index &&
      (action.when === "Keypress" ||
        (action.when === "Zone" && hasActiveZone(this.clip, action.parameter, frame))), frame);
  }
  // frame: how many the clip has had.
  clipEnded(frame) {
    if (this.state !== "playing") {
      return;
    }
    const actions = this.branch.actions;
    const random = actions.filter((action) => action.when === "Random");
    const usual = actions.find((action) => action.when === "Default");
    if (this.waiting >= 0) {
      this.follow(actions[this.waiting], this.waitingReason, frame);
    } else if (random.length > 0) {
      const picked = random[this.chance.pick(random.length)];
      this.follow(picked, { cause: "chance", choices: random.length }, frame);
    } else if (usual) {
      this.follow(usual, { cause: "end" }, frame);
    } else {
      this.state = "ended";
    }
  }
  restart() {
    this.show();
  }
  back() {
    if (this.path.length < 2) {
      return false;
    }
    this.path.pop();
    this.show();
    return true;
  }

  // The actions that a key or a click can take from this frame on, by their numbers.
  choices(frame) {
    const taken = new Set();
    const found = [];
    if (this.state !== "playing") {
      return found;
    }
    this.branch.actions.forEach((action, index) => {
      const isKey = action.when === "Keypress";
      if (!isKey && action.when !== "Zone") {
        return;
      }
      const name = isKey ? "k" + foldKey(action.parameter) : "z" + action.parameter;
      const waits = index === this.waiting;
      if (waits || (!taken.has(name) && (isKey || hasActiveZone(this.clip, action.parameter, frame)))) {
        found.push(index);
      }
      taken.add(name);
    });
    return found;
  }
  // The branches that may come next, by number, the likeliest first and each once.
  likelyNext() {
    const found = new Set();
    if (this.state !== "playing") {
      return [];
    }
    const actions = this.branch.actions;
    const add = (action) => {
      if (this.numbers.has(action.target)) {
        found.add(this.numbers.get(action.target));
      }
    };
    const random = actions.filter((action) => action.when === "Random");
    const usual = actions.filter((action) => action.when === "Default").slice(0, 1);
    if (this.waiting >= 0) {
      add(actions[this.waiting]);
    }
    (random.length > 0 ? random : usual).forEach(add);
    for (const when of ["Keypress", "Zone"]) {
      actions.filter((action) => action.when === when).forEach(add);
    }
    return [...found];
  }

  // Takes the first action that fits; false when none does.
  answer(fits, frame) {
    const index = this.state === "playing" ? this.branch.actions.findIndex(fits) : -1;
    if (index < 0) {
      return false;
    }
    const action = this.branch.actions[index];
    const reason = {
      cause: action.when === "Keypress" ? "key" : "zone",
      name: action.parameter,
      immediate: action.immediate,
    };
    if (action.immediate) {
      this.follow(action, reason, frame);
    } else {
      this.waiting = index;
      this.waitingReason = reason;
    }
    return true;
  }
  follow(action, reason, frame) {
    const played = this.clip.fps > 0 ? frame / this.clip.fps : 0;
    this.enter(action.target, reason, this.path[this.path.length - 1].seconds + played);
  }
  enter(name, reason, seconds) {
    this.path.push({ name, reason, seconds });
    this.show();
  }
  show() {
    const number = this.numbers.get(this.path[this.path.length - 1].name);
    this.waiting = -1;
    this.clip = null;
    this.branch = number === undefined ? null : this.story.branches[number];
    if (this.branch === null) {
      this.state = "no branch";
    } else if (this.branch.video === "") {
      this.state = "no video";
    } else {
      this.clip = this.clipOf(this.branch.video);
      this.state = this.clip === null ? "unreadable" : "playing";
    }
  }
}
