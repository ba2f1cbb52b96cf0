// The clips of the scene: their videos, of which those that may come next are loaded ahead, and
// their zones, which come from a script each. A page that was opened from a disk cannot fetch files,
// and some servers cannot send parts of one: so zones are scripts, and nothing is ever sought. A clip
// that plays again is loaded again.

const POOL = 8;

class Clips {
  // stage: where the videos are shown. facts: of each clip {file, zones, frames, fps, width, height};
  // a clip without a file cannot be played.
  constructor(stage, facts) {
    this.facts = facts;
    this.arrivals = new Map(); // by clip: what waits for its zones
    this.slots = [];
    for (let i = 0; i < POOL; ++i) {
      const video = document.createElement("video");
      video.playsInline = true;
      video.preload = "auto";
      video.setAttribute("aria-hidden", "true");
      video.tabIndex = -1;
      stage.prepend(video);
      this.slots.push({ video, clip: -1, isUsed: false, wanted: 0 });
    }
    this.turn = 0;
  }

  // Some browsers let a video sound only if it was touched in the course of a click.
  unlock() {
    this.slots.filter((slot) => slot.clip < 0).forEach((slot) => slot.video.load());
  }

  // Loads these clips, the most wanted first, in place of what nobody wants any more.
  want(clips, shown) {
    ++this.turn;
    const missing = [];
    for (const clip of clips.slice(0, POOL - 2)) {
      this.loadZones(clip);
      const ready = this.slots.find((slot) => slot.clip === clip && !slot.isUsed && slot.wanted !== this.turn);
      if (ready) {
        ready.wanted = this.turn;
      } else {
        missing.push(clip);
      }
    }
    for (const clip of missing) {
      const free = this.slots.find((slot) => slot.wanted !== this.turn && slot.video !== shown);
      if (free) {
        this.load(free, clip);
        free.wanted = this.turn;
      }
    }
  }

  // A video that stands at the beginning of the clip.
  take(clip, shown) {
    let slot = this.slots.find((known) => known.clip === clip && !known.isUsed && !known.video.error);
    if (!slot) {
      const others = this.slots.filter((known) => known.video !== shown);
      slot = others.reduce((oldest, known) => (known.wanted < oldest.wanted ? known : oldest));
      this.load(slot, clip);
    }
    slot.isUsed = true;
    return slot.video;
  }

  load(slot, clip) {
    slot.clip = clip;
    slot.isUsed = false;
    slot.video.muted = false;
    slot.video.src = this.facts[clip].file;
  }

  // Resolves once the clip's zones are there, or cannot be had.
  loadZones(clip) {
    const facts = this.facts[clip];
    if (!facts.arrival) {
      facts.arrival = new Promise((resolve) => {
        if (!facts.zonesFile) {
          resolve();
          return;
        }
        this.arrivals.set(clip, resolve);
        const script = document.createElement("script");
        script.src = facts.zonesFile;
        script.onerror = () => {
          facts.arrival = null; // the next time may do better
          resolve();
        };
        document.head.append(script);
      });
    }
    return facts.arrival;
  }

  takeZones(clip, zones) {
    this.facts[clip].zones = zones.map(([name, shapes]) => ({
      name,
      shapes: shapes.map(([from, active, numbers]) => {
        const points = [];
        for (let i = 0; i + 1 < numbers.length; i += 2) {
          points.push([numbers[i], numbers[i + 1]]);
        }
        return { from, active: active === 1, points };
      }),
    }));
    this.arrivals.get(clip)?.();
  }
}
