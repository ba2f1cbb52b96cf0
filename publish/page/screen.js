// The picture: which video is shown, the frame on show, and where in it a pointer is.

const ZONE_WIDTH = 1280;
const ZONE_HEIGHT = 720;

class Screen {
  // listener: frameShown(), clipEnded(), clipFailed(), silenced().
  constructor(stage, clips, listener) {
    this.stage = stage;
    this.clips = clips;
    this.listener = listener;
    this.current = null; // the video on show or about to be
    this.shown = null; // the video on show: the one before until the first picture is there
    this.facts = null;
    this.frame = 0;
    this.since = Infinity; // when it came up
    this.isPaused = false;
    this.isMuted = false;
    this.turn = 0;
    for (const { video } of clips.slots) {
      video.addEventListener("ended", () => this.ended(video));
      video.addEventListener("error", () => video === this.current && listener.clipFailed());
    }
    addEventListener("resize", () => this.place());
    document.addEventListener("fullscreenchange", () => this.place());
  }

  // Plays the clip from its beginning.
  play(clip) {
    const turn = ++this.turn;
    this.stop();
    this.facts = this.clips.facts[clip];
    this.frame = 0;
    this.since = Infinity;
    this.isPaused = false;
    const video = this.clips.take(clip, this.shown);
    this.current = video;
    video.muted = this.isMuted;
    this.clips.loadZones(clip).then(() => {
      if (turn !== this.turn) {
        return;
      }
      this.watch(video, turn);
      if (!this.isPaused) {
        this.begin(video);
      }
    });
  }
  // The picture stays.
  stop() {
    if (this.current) {
      this.current.pause();
    }
    this.current = null;
  }
  clear() {
    this.stop();
    ++this.turn;
    this.shown?.classList.remove("on");
    this.shown = null;
  }
  begin(video) {
    video.play().catch((error) => {
      if (error.name === "NotAllowedError" && !video.muted) {
        this.setMuted(true);
        this.listener.silenced();
        this.begin(video);
      }
    });
  }
  setPaused(paused) {
    this.isPaused = paused;
    if (this.current && paused) {
      this.current.pause();
    } else if (this.current) {
      this.begin(this.current);
    }
  }
  setMuted(muted) {
    this.isMuted = muted;
    if (this.current) {
      this.current.muted = muted;
    }
  }

  watch(video, turn) {
    const fps = this.facts.fps;
    const show = (frame, since) => {
      this.frame = Math.max(0, Math.min(frame, this.lastFrame()));
      this.since = since;
      this.bringUp(video);
      this.listener.frameShown();
    };
    if (video.readyState > 1) {
      show(0, Infinity); // it was loaded ahead: its first picture is there
    }
    if (video.requestVideoFrameCallback) {
      const step = (now, picture) => {
        if (turn === this.turn && video === this.current) {
          show(Math.round(picture.mediaTime * fps), picture.expectedDisplayTime);
          video.requestVideoFrameCallback(step);
        }
      };
      video.requestVideoFrameCallback(step);
    } else {
      const step = () => {
        if (turn === this.turn && video === this.current) {
          if (video.readyState > 1) {
            show(Math.floor(video.currentTime * fps + 0.001), Infinity);
          }
          requestAnimationFrame(step);
        }
      };
      requestAnimationFrame(step);
    }
  }
  lastFrame() {
    return this.facts.frames > 0 ? this.facts.frames - 1 : Infinity;
  }
  // The frame on show at this moment. The browser goes on showing pictures while the page is held up,
  // and tells it of them later: by the clock, not further than the clip has played.
  frameNow() {
    const { current, frame, facts } = this;
    if (!current || current.paused || current.seeking) {
      return frame;
    }
    const passed = Math.floor(((performance.now() - this.since) * facts.fps) / 1000);
    const played = Math.floor(current.currentTime * facts.fps + 0.001);
    return Math.max(frame, Math.min(frame + passed, played, this.lastFrame()));
  }
  bringUp(video) {
    if (this.shown !== video) {
      this.shown?.classList.remove("on");
      video.classList.add("on");
      this.shown = video;
      this.place();
    }
  }
  ended(video) {
    if (video === this.current) {
      this.bringUp(video); // a page in the background is shown no frames
      this.listener.clipEnded(this.facts.frames >= 0 ? this.facts.frames : this.frame + 1);
    }
  }

  // The picture as large as fits, with its own shape; also where outlines are drawn.
  place() {
    const width = this.shown?.videoWidth || ZONE_WIDTH;
    const height = this.shown?.videoHeight || ZONE_HEIGHT;
    const box = this.stage.getBoundingClientRect();
    const scale = Math.min(box.width / width, box.height / height);
    const style = this.stage.style;
    style.setProperty("--left", (box.width - width * scale) / 2 + "px");
    style.setProperty("--top", (box.height - height * scale) / 2 + "px");
    style.setProperty("--width", width * scale + "px");
    style.setProperty("--height", height * scale + "px");
  }
  // The pixel of the zone area at a place of the window; null outside of the picture.
  zonePixel(clientX, clientY) {
    if (!this.shown) {
      return null;
    }
    const box = this.shown.getBoundingClientRect();
    const x = Math.floor(((clientX - box.left + 0.5) * ZONE_WIDTH) / box.width);
    const y = Math.floor(((clientY - box.top + 0.5) * ZONE_HEIGHT) / box.height);
    return x >= 0 && x < ZONE_WIDTH && y >= 0 && y < ZONE_HEIGHT ? { x, y } : null;
  }
}
