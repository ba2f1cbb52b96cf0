// The page's own words; the build puts the other languages of the catalogue behind these. "{0}" stands
// for a name or a number.
const TEXTS = {
  en: {
    start: "Start", pause: "Pause", play: "Play", restart: "Restart the clip",
    back: "One choice back", soundOff: "Turn the sound off", soundOn: "Turn the sound on",
    fullScreen: "Full screen", choices: "What can happen now", zone: "Click into the zone {0}",
    key: "Press {0}", chosen: "Chosen. It goes on when the clip ends.", paused: "Paused",
    ended: "The scene has ended.", noBranch: 'Stopped: "{0}" is not in the scene.',
    noFirst: "Stopped: the scene has no first branch.",
    noTarget: "Stopped: the action has no target branch.", noVideo: "Stopped: no video.",
    unreadable: 'Stopped: the video "{0}" cannot be played.', again: "Play again",
    path: "Path taken", copy: "Copy the path", copied: "Copied", started: "Started",
    byZone: 'Zone "{0}" clicked', byKey: "Key {0} pressed", byEnd: "Clip ended",
    byChance: "By chance, 1 of {0}", immediate: ", immediate", atEnd: ", at the end of the clip",
    mute: "The browser plays without sound until you turn it on.",
  },
};

// A name may itself hold "{0}" or "$&": it goes in as it is.
const fill = (pattern, value) => pattern.replace("{0}", () => String(value));

function reasonText(texts, reason) {
  const when = reason.immediate ? texts.immediate : texts.atEnd;
  switch (reason.cause) {
    case "zone": return fill(texts.byZone, reason.name) + when;
    case "key": return fill(texts.byKey, reason.name) + when;
    case "end": return texts.byEnd;
    case "chance": return fill(texts.byChance, reason.choices);
    default: return texts.started;
  }
}

function endText(texts, player) {
  switch (player.state) {
    case "ended": return texts.ended;
    case "no video": return texts.noVideo;
    case "unreadable": return fill(texts.unreadable, player.branch.video);
    case "no branch": {
      const { name, reason } = player.path[player.path.length - 1];
      const none = reason.cause === "started" ? texts.noFirst : texts.noTarget;
      return name === "" ? none : fill(texts.noBranch, name);
    }
    default: return "";
  }
}

// m:ss.cc
function timeText(seconds) {
  const hundredths = Math.round(seconds * 100);
  const two = (number) => String(number).padStart(2, "0");
  return Math.floor(hundredths / 6000) + ":" + two(Math.floor(hundredths / 100) % 60) + "." + two(hundredths % 100);
}
